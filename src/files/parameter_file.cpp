// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/parameter_file.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>

#include "values/text.h"

namespace vlt {
namespace {

// A page whose controls have slots, in the order of the parameter file's sections.
struct SlotPage {
  const char* name;
  bool stays;      // keeps what it shows: it is hidden after saving, not unloaded
  bool refreshed;  // takes the slots of a loaded file while it is open
};

constexpr SlotPage kSlotPages[] = {
    {"Form10", false, true}, {"Form2", false, true}, {"Form3", false, true}, {"Form4", false, true},
    {"Form5", false, true},  {"Form6", false, true}, {"Form9", true, false}, {"Form11", true, true},
};

void SavePage(App& app, const SlotPage& page) {
  app.windows.Load(page.name).RunHook(&FormHooks::Taihi);
  if (!page.stays) {
    app.windows.Unload(page.name);
  } else if (Form* form = app.windows.Find(page.name)) {
    form->Hide();
  }
}

void PutSlots(const App& app, ProfileFile& profile) {
  const auto rows = SlotRows();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const SlotRow& row = rows[i];
    profile.SetString(row.section, row.key,
                      row.number != nullptr ? std::to_string(app.state.*row.number) : app.slots[i]);
  }
}

// False for a number that a 16-bit word can't hold.
bool TakeNumber(App& app, const SlotRow& row, const ProfileFile& profile) {
  using Word = std::numeric_limits<std::int16_t>;
  const int number = profile.GetInt(row.section, row.key, 0);
  if (number < Word::min() || number > Word::max()) return false;
  app.state.*row.number = number;
  return true;
}

// Where the value of a slot comes from now; a key that is not there, or empty, gives none.
void NoteOrigin(App& app, Slot slot, bool there, const std::string& path) {
  if (there && !app.slots[slot].empty()) {
    app.origins.FromFile(slot, app.slots[slot], path);
  } else {
    app.origins.Forget(slot);
  }
}

LoadResult TakeSlots(App& app, const ProfileFile& profile, const std::string& path) {
  LoadResult result;
  const auto rows = SlotRows();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const SlotRow& row = rows[i];
    if (row.absent == nullptr) continue;
    ++result.known;
    if (!result.Converted()) continue;
    if (row.number == nullptr) {
      app.slots[i] = CutAtNul(profile.GetString(row.section, row.key, row.absent));
    } else if (!TakeNumber(app, row, profile)) {
      result.Stop(row.section, row.key);
      continue;
    }
    const bool there = profile.Has(row.section, row.key);
    result.taken += there;
    NoteOrigin(app, static_cast<Slot>(i), there, path);
  }
  return result;
}

}  // namespace

bool IsLoaderFile(const App& app, const std::string& path) { return path == app.state.IniFilePath; }

FileError SaveParameterFile(App& app, const std::string& path) {
  return ChangeProfile(app.platform.files, path, true, [&](ProfileFile& profile) {
    PutSystemSettings(app.state, profile);
    PutSlots(app, profile);
  });
}

LoadResult LoadParameterFile(App& app, const std::string& path) {
  ProfileFile profile;
  const FileError error = ReadProfile(app.platform.files, path, profile);
  if (error != FileError::kGood) return {.file = error};
  return TakeSlots(app, profile, path);
}

LoadResult OpenParameterFile(App& app, const std::string& path) {
  ProfileFile profile;
  const FileError error = ReadProfile(app.platform.files, path, profile);
  if (error != FileError::kGood) return {.file = error};
  // A setting that is no number ends the settings, not the opening.
  const LoadResult settings = LoadSettings(app, profile, 1);
  app.origins.file_facts = app.state;
  // The settings text names what an open port runs on; it follows when the port is opened anew.
  if (!app.state.PortIsOpen) BuildCommSettings(app.state);
  LoadResult result = TakeSlots(app, profile, path);
  if (result.Converted()) RefreshOpenPages(app);
  result.known += settings.known;
  result.taken += settings.taken;
  result.not_taken.insert(result.not_taken.begin(), settings.not_taken.begin(), settings.not_taken.end());
  return result;
}

void SavePagesToSlots(App& app) {
  for (const SlotPage& page : kSlotPages) {
    if (app.windows.IsRegistered(page.name)) SavePage(app, page);
  }
}

void OpenPagesToSlots(App& app) {
  for (const SlotPage& page : kSlotPages) {
    if (Form* form = app.windows.Find(page.name)) form->RunHook(&FormHooks::Taihi);
  }
}

void RefreshOpenPages(App& app) {
  for (Form* form : app.windows.Open()) {
    const bool refreshed =
        std::any_of(std::begin(kSlotPages), std::end(kSlotPages),
                    [&](const SlotPage& page) { return page.refreshed && form->Name() == page.name; });
    if (refreshed && app.windows.Exists(form)) form->RunHook(&FormHooks::SetteiHannei);
  }
}

}  // namespace vlt

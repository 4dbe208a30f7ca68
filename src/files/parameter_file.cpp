// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/parameter_file.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>

#include "values/number_text.h"
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

// False for a number that a 16-bit word can't hold. A text that is no number reads as 0, and is told.
bool TakeNumber(App& app, const SlotRow& row, const ProfileFile& profile, LoadResult& result) {
  using Word = std::numeric_limits<std::int16_t>;
  const int number = profile.GetInt(row.section, row.key, 0);
  if (number < Word::min() || number > Word::max()) {
    result.Stop(row.section, row.key);
    return false;
  }
  app.state.*row.number = number;
  const std::string text = profile.GetString(row.section, row.key, "");
  if (!text.empty() && !ParseWhole(text)) result.Leave(row.section, row.key);
  return true;
}

// What is no whole number where one is wanted is told, and counts as one that the file does not have.
bool TakeText(App& app, Slot slot, const SlotRow& row, const ProfileFile& profile, LoadResult& result) {
  std::string text = CutAtNul(profile.GetString(row.section, row.key, row.absent));
  const bool taken = !row.is_choice || Trim(text).empty() || ParseWhole(text);
  if (!taken) result.Leave(row.section, row.key);
  app.slots[slot] = taken ? std::move(text) : row.absent;
  return taken && profile.Has(row.section, row.key);
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
    const auto slot = static_cast<Slot>(i);
    bool there = profile.Has(row.section, row.key);
    if (row.number == nullptr) {
      there = TakeText(app, slot, row, profile, result);
    } else if (!TakeNumber(app, row, profile, result)) {
      continue;
    }
    result.taken += there;
    NoteOrigin(app, slot, there, path);
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
  // A setting that is no number ends the settings, not the opening. What the program runs as is no matter of
  // a parameter file: none holds it.
  const std::string variant = app.state.ModelCode;
  const LoadResult settings = LoadSettings(app, profile, 1);
  app.state.ModelCode = variant;
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

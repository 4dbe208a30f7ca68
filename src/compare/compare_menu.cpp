// SPDX-License-Identifier: GPL-3.0-or-later
#include "compare/compare_menu.h"

#include "compare/compare_files.h"
#include "compare/frm_compare.h"
#include "resources/text_ids.h"
#include "resources/text_ids_compare_window.h"
#include "state/form_lock.h"

namespace vlt {
namespace {

constexpr const char* kWindow = "frmCompare";
constexpr const char* kFileMenu = "Parameter";
constexpr int kMenuFontSize = 8;

MenuItem* FileMenu(const Form& frame) { return dynamic_cast<MenuItem*>(frame.Find(kFileMenu)); }

}  // namespace

CompareMenu::CompareMenu(App& app, Form& frame)
    : FormPart(frame),
      mnuCompare(frame, "mnuCompare", FileMenu(frame)),
      mnuSnapshot(frame, "mnuSnapshot", FileMenu(frame)),
      mnuRestore(frame, "mnuRestore", FileMenu(frame)),
      app_(app) {
  mnuCompare.on_click = [this] { mnuCompare_Click(); };
  mnuSnapshot.on_click = [this] { mnuSnapshot_Click(); };
  mnuRestore.on_click = [this] { mnuRestore_Click(); };
}

void CompareMenu::Form_Activate() {
  struct Caption {
    MenuItem& item;
    int text_id;
  };
  for (const Caption& row :
       {Caption{mnuCompare, text::kCompareMenu}, Caption{mnuSnapshot, text::kSnapshotMenu},
        Caption{mnuRestore, text::kRestoreMenu}}) {
    row.item.SetFont({app_.state.PageFont, kMenuFontSize, false});
    row.item.SetCaption(app_.Text(row.text_id));
  }
}

frmCompare& CompareMenu::Window() {
  auto& window = static_cast<frmCompare&>(app_.windows.Load(kWindow));
  window.Show();
  return window;
}

void CompareMenu::mnuCompare_Click() { Window(); }

void CompareMenu::mnuSnapshot_Click() {
  if (!IsLineFree(app_)) return app_.Status(app_.Text(text::kMonitorRuns));
  if (const auto path = CompareFiles::AskSnapshotFile(app_)) CompareFiles::Of(Window()).SaveSnapshotTo(*path);
}

void CompareMenu::mnuRestore_Click() {
  if (RestorePoints(app_).empty()) {
    return app_.Show(app_.Text(text::kNoRestorePoints), MessageIcon::kInformation);
  }
  Window().ShowNewestPoint();
}

}  // namespace vlt

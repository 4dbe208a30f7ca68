// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/frm_maint_comm.h"

#include "files/settings_file.h"
#include "firmware/frm_maint_main.h"
#include "link/port.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

constexpr int kPorts = 10;

}  // namespace

frmMaint_COMM::frmMaint_COMM(App& app) : Form(app.windows, "frmMaint_COMM", FormPlace::kWindow), app_(app) {
  cmdOK.on_click = [this] { cmdOK_Click(); };
  cmdCan.on_click = [this] { cmdCan_Click(); };
}

void frmMaint_COMM::Form_Load() {
  SetCaption(app_.Text(1920));
  lblComm.SetCaption(app_.Text(text::kFwPort));
  cmdOK.SetCaption(app_.Text(text::kOk));
  cmdCan.SetCaption(app_.Text(text::kCancel));
  for (int number = 1; number <= kPorts; ++number) cmbComm.AddItem("COM" + std::to_string(number));
  cmbComm.SetListIndex(PortNumber(app_) - 1);
}

void frmMaint_COMM::cmdOK_Click() {
  if (cmbComm.ListIndex() < 0) return;
  app_.state.PortNo = std::to_string(cmbComm.ListIndex() + 1);
  const FileError written = SavePortNo(app_);
  if (auto* tool = dynamic_cast<frmMaint_MAIN*>(List().Find("frmMaint_MAIN"))) {
    tool->SetPort(cmbComm.Text(), written);
  }
  List().Unload(Name());
}

void frmMaint_COMM::cmdCan_Click() { List().Unload(Name()); }

}  // namespace vlt

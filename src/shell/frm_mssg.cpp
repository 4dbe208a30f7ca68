// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/frm_mssg.h"

#include <string>

#include "firmware/fw_link.h"
#include "shell/splash.h"

namespace vlt {
namespace {

constexpr const char* kFirmwareWindow = "frmMaint_MAIN";
constexpr int kLookAgainMs = 1000;  // a wait for a window looks again at least so often

}  // namespace

frmMssg::frmMssg(App& app) : Form(app.windows, "frmMssg", FormPlace::kOnTop), app_(app) {
  cmdDown.on_click = [this] { cmdDown_Click(); };
  cmdLoader.on_click = [this] { cmdLoader_Click(); };
}

void frmMssg::Form_Load() {
  app_.state.LangOffset = app_.state.LangFlag > 0 ? static_cast<int>(Language::kEnglish) : 0;
  SetCaption(app_.Text(4420));
  cmdDown.SetCaption(app_.Text(1090));
  cmdLoader.SetCaption(app_.Text(4410));
  // The splash waits for one of the two buttons, so closing the window is no answer.
  SetCloseCommand(false);
}

void frmMssg::cmdDown_Click() {
  Windows& windows = List();
  const SplashVariant* variant = FindSplashVariant(app_.state.ModelCode);
  Form* splash = variant != nullptr ? windows.Find(variant->form) : nullptr;
  if (splash != nullptr) splash->Hide();
  windows.Unload(Name());
  app_.state.FwEndFlag = 0;
  windows.Load(kFirmwareWindow).Show();
  while (app_.state.FwEndFlag == 0) {
    app_.platform.events.GiveWay(app_.platform.clock.NowMs() + kLookAgainMs);
  }
  if (splash != nullptr && windows.Exists(splash)) splash->Show();
  app_.platform.dialogs.Ask(
      {.text = app_.Text(4370), .title = kDownloadToolTitle, .icon = MessageIcon::kInformation});
  app_.state.ChoiceResult = 1;
}

void frmMssg::cmdLoader_Click() {
  app_.state.ChoiceResult = 2;
  List().Unload(Name());
}

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/splash.h"

#include <algorithm>

#include "link/port.h"
#include "meter/identification.h"
#include "resources/text_ids.h"
#include "resources/version.h"
#include "shell/mdi_form1.h"

namespace vlt {
namespace {

constexpr SplashVariant kVariants[] = {
    {"frmSplash", "M627", "splash_m627", "D", 4, false},
    {"frmSplash_T305", "T305", "splash_t305", nullptr, 3, true},
    {"frmSplash_K410", "K410", "splash_k410", nullptr, 3, true},
};

// The pictures that follow the variant's own.
constexpr const char* kCommonArt[] = {"logo", "sensor", "heat"};

constexpr int kSplashMs = 500;          // the splash is painted before the work begins
constexpr int kLoaderRunningMs = 1000;  // the second progress text stays so long
constexpr int kLookAgainMs = 1000;

std::string SuffixOf(const SplashVariant* variant, int lang_flag) {
  if (variant != nullptr && variant->version_suffix != nullptr) return variant->version_suffix;
  return lang_flag == 0 ? "J" : "E";
}

}  // namespace

std::span<const SplashVariant> SplashVariants() { return kVariants; }

const SplashVariant* FindSplashVariant(std::string_view model_code) {
  const auto* found = std::find_if(std::begin(kVariants), std::end(kVariants),
                                   [&](const auto& v) { return v.model_code == model_code; });
  return found == std::end(kVariants) ? nullptr : found;
}

std::string VersionSuffix(const SharedState& state) {
  return SuffixOf(FindSplashVariant(state.ModelCode), state.LangFlag);
}

SplashForm::SplashForm(App& app, const SplashVariant& variant)
    : Form(app.windows, variant.form, FormPlace::kWindow), app_(app), variant_(variant) {
  for (int i = 0; i < variant.images; ++i) {
    const std::string art = i == 0 ? variant.picture : kCommonArt[i - 1];
    images_.push_back(std::make_unique<Picture>(*this, "Image" + std::to_string(i + 1), art));
  }
  Timer1.on_timer = [this] { Timer1_Timer(); };
}

void SplashForm::Form_Load() {
  lblVersion.SetCaption(VersionText(SuffixOf(&variant_, app_.state.LangFlag)));
  lblProductName.SetCaption(app_.Text(text::kLoaderName));
  SetCaption(app_.Text(text::kLoaderName));
  // Nothing on it is to be clicked, and closing it would leave a start that is half done.
  SetCloseCommand(false);
  Timer1.SetInterval(kSplashMs);
  Timer1.SetRunning(true);
}

void SplashForm::Timer1_Timer() {
  Timer1.SetRunning(false);
  const bool asks = app_.state.UserInfo == "Factory" || app_.state.UserInfo == "Service";
  if (asks && !ChooseProgram()) {
    List().Unload(Name());
    app_.platform.events.EndProcess();
    return;
  }
  lblWarning.SetCaption("Get Unit && Language...");
  IdentifyMeter();
  lblWarning.SetCaption("Loader Running...");
  const auto until = app_.platform.clock.NowMs() + kLoaderRunningMs;
  while (app_.platform.clock.NowMs() < until) app_.platform.events.GiveWay(until);
  ShowMainWindow();
}

// True to go on with the main program.
bool SplashForm::ChooseProgram() {
  app_.state.ChoiceResult = 0;
  List().Load("frmMssg").Show();
  while (app_.state.ChoiceResult == 0 && List().Exists(this)) {
    app_.platform.events.GiveWay(app_.platform.clock.NowMs() + kLookAgainMs);
  }
  return app_.state.ChoiceResult == 2;
}

void SplashForm::IdentifyMeter() {
  // The port object belongs to the main window, which shows why a port could not be opened.
  MainWindow(app_);
  if (!OpenPort(app_) || !ReadIdentification(app_)) {
    app_.Show(app_.Text(text::kSetInTheCommunication), MessageIcon::kInformation);
    if (!app_.state.PortFaultReason.empty())
      app_.Status(app_.Text(text::kSetInTheCommunication) + " " + app_.state.PortFaultReason);
    return;
  }
  ReadUnits(app_, {.operation_mode_first = variant_.operation_mode_first});
}

// Behind why the port could not be opened, when that stands there.
void SplashForm::TellRemark(StatusBar& bar) {
  const std::string& remark = app_.state.StartRemark;
  if (remark.empty()) return;
  const std::string& before = bar.Panel(1);
  bar.SetPanel(1, before.empty() ? app_.Stamped(remark) : before + "  " + remark);
}

void SplashForm::ShowMainWindow() {
  MDIForm1& frame = MainWindow(app_);
  frame.Dress();
  frame.Show();
  TellRemark(frame.Status());
  List().Unload(Name());
}

}  // namespace vlt

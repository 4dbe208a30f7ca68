// SPDX-License-Identifier: GPL-3.0-or-later
// The splash windows: the bridge between the start routine and the main window. Each asks the meter once
// for its unit system, its display language and its units, dresses the main window in the program's
// language and shows it. A meter that does not answer leaves the values of the settings file.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "state/app.h"

namespace vlt {

// What differs between the hardware variants.
struct SplashVariant {
  const char* form;            // name of the splash window
  const char* model_code;      // ModelCode of the settings, compared exactly
  const char* picture;         // its own artwork
  const char* version_suffix;  // null: "J" in Japanese, "E" otherwise
  int images;                  // how many pictures the window shows
  bool operation_mode_first;   // the operation mode is asked before the model class, not at the end
};

std::span<const SplashVariant> SplashVariants();
// Null for an unknown code.
const SplashVariant* FindSplashVariant(std::string_view model_code);
// The letter behind the version number for the hardware variant in force.
std::string VersionSuffix(const SharedState& state);

class SplashForm : public Form {
 public:
  SplashForm(App& app, const SplashVariant& variant);

  void Form_Load() override;
  void Timer1_Timer();

  // Captions.
  Label lblProductName{*this, "lblProductName"};
  Label lblVersion{*this, "lblVersion"};
  Label lblWarning{*this, "lblWarning"};  // progress; "&&" shows as one ampersand
  Timer Timer1{*this, "Timer1"};

 private:
  bool ChooseProgram();
  void IdentifyMeter();
  void TellRemark(StatusBar& bar);
  void ShowMainWindow();

  App& app_;
  const SplashVariant& variant_;
  // Image1 (art splash_m627, splash_t305, splash_k410), Image2 (logo), Image3 (sensor), Image4 (heat).
  std::vector<std::unique_ptr<Picture>> images_;
};

}  // namespace vlt

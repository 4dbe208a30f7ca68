// SPDX-License-Identifier: GPL-3.0-or-later
// What stands on the windows when they open, in both languages.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "shell/start.h"
#include "support/test_app.h"

namespace vlt::test {
namespace {

// Told by the work that goes on, or named by what lies within.
const std::set<std::string> kSilent = {
    "Frame6",          "chkStationNo",   "fraSetting",  "lblAnswered",   "lblFailed",
    "lblHRyuryoUnit",  "lblImage",       "lblImage_up", "lblRyuryoUnit", "lblRyusokuUnit",
    "lblHSekisanUnit", "lblMssg",        "lblNote",     "lblPath",       "lblPaused",
    "lblRequired",     "lblSekisanUnit", "lblUnit1",    "lblUnit2",      "lbldegreeCUnit"};

// Each with its caption; the tabs of a tab control and the heads of a table stand for themselves.
std::vector<std::pair<std::string, std::string>> CaptionsOf(const Form& form) {
  using enum ControlKind;
  std::vector<std::pair<std::string, std::string>> captions = {{"the window", form.Caption()}};
  for (const Control* control : form.Controls()) {
    const ControlKind kind = control->Kind();
    const std::string name = control->FullName();
    if (kind == kTab) {
      const auto& tabs = static_cast<const TabControl&>(*control);
      for (int i = 0; i < tabs.Count(); ++i) captions.emplace_back(name, tabs.TabCaption(i));
    } else if (kind == kCheckBox || kind == kOptionButton || kind == kLabel || kind == kPushButton ||
               kind == kFrame) {
      if (!kSilent.contains(control->Name())) captions.emplace_back(name, control->Caption());
    }
  }
  return captions;
}

class CaptionsTest : public testing::TestWithParam<const char*> {};

TEST_P(CaptionsTest, EveryControlIsNamedInTheLanguageInForceAndChoicesApart) {
  for (const int lang_offset : {0, 5000}) {
    TestApp t({.lang_offset = lang_offset});
    RegisterAllWindows(t.app);
    Form& form = t.app.windows.Load(GetParam());
    form.RunHook(&FormHooks::FrmInit);
    for (const auto& [name, caption] : CaptionsOf(form)) {
      EXPECT_NE(caption, "") << name;
      const bool english =
          std::none_of(caption.begin(), caption.end(), [](unsigned char c) { return c > 127; });
      EXPECT_TRUE(lang_offset == 0 || english) << name << ": " << caption;
    }
    std::set<std::string> choices;
    for (const Control* control : form.Controls()) {
      if (control->Kind() != ControlKind::kOptionButton) continue;
      const auto& group = static_cast<const OptionButton*>(control)->Group();
      EXPECT_TRUE(choices.insert(group + control->Caption()).second) << control->FullName();
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Windows, CaptionsTest,
                         testing::Values("Form2", "Form3", "Form4", "Form5", "Form6", "Form7", "Form8",
                                         "Form9", "Form10", "Form11", "Form12", "FrmCSet", "frmAbout",
                                         "frmCalc", "frmCompare", "frmFoundRuns", "frmLine", "frmMaint_MAIN",
                                         "frmMssg", "frmWait"),
                         [](const auto& window) { return std::string(window.param); });

}  // namespace
}  // namespace vlt::test

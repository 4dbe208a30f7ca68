// SPDX-License-Identifier: GPL-3.0-or-later
// Leaving a text field: its check, the box that it may show, and the press that must not run then.
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>
#include <QtTest/QTest>

#include "desktop/support/screen.h"

namespace vlt::test {
namespace {

// A form whose field must hold a number: anything else is marked and told, and gets the focus back.
class Checked : public Form {
 public:
  explicit Checked(Windows& windows) : Form(windows, "Checked", FormPlace::kWindow) {
    field.on_lost_focus = [this] {
      ++checks;
      if (field.Text() != "bad") return;
      if (returns) field.SelectAll();
      if (asks) Machine().dialogs.Ask({.text = "no number", .title = "box"});
      if (returns) field.SetFocus();
    };
    SetParameter.on_click = [this] { ++presses; };
    tick.on_click = [this] { ++presses; };
    list.on_click = [this] { ++presses; };
    SetParameter.SetCaption("Press");
    list.SetItems({"a", "b"});
  }
  TextBox field{*this, "field"};
  TextBox other{*this, "other"};
  PushButton SetParameter{*this, "SetParameter"};
  CheckBox tick{*this, "tick"};
  ComboBox list{*this, "list"};
  MenuItem menu{*this, "menu"};
  bool asks = true;
  bool returns = true;
  int checks = 0;
  int presses = 0;
};

class FocusTest : public testing::Test {
 protected:
  FocusTest() {
    screen.Add<Checked>("Checked", {"Checked", WindowStyle::kDialog, {}});
    form = &screen.Show<Checked>("Checked");
  }
  QLineEdit& Field() { return dynamic_cast<QLineEdit&>(screen.hands.Widget("Checked", "field")); }
  void ExpectFieldIsBack() {
    EXPECT_TRUE(WaitFor([&] { return Field().hasFocus() && Field().selectedText() == "bad"; }));
    EXPECT_EQ(form->presses, 0);
    EXPECT_EQ(form->checks, 1);
    EXPECT_TRUE(screen.boxes.trouble.empty());
  }
  Screen screen;
  Checked* form = nullptr;
};

struct Way {
  const char* name;
  void (*leave)(Hands&);
};

const Way kWays[] = {
    {"mouse on a button", [](Hands& hands) { hands.Click("Checked", "SetParameter"); }},
    {"short cut of a button", [](Hands& hands) { hands.Key("Checked", "Ctrl+Return"); }},
    {"mnemonic of a button", [](Hands& hands) { hands.Key("Checked", "Alt+P"); }},
    {"mouse on a check box", [](Hands& hands) { hands.Click("Checked", "tick"); }},
    {"mouse on a list",
     [](Hands& hands) { QTest::mouseClick(&hands.Widget("Checked", "list"), Qt::LeftButton); }},
    {"tab key", [](Hands& hands) { QTest::keyClick(&hands.Widget("Checked", "field"), Qt::Key_Tab); }},
    {"shift and tab key",
     [](Hands& hands) { QTest::keyClick(&hands.Widget("Checked", "field"), Qt::Key_Backtab); }},
    {"enter key", [](Hands& hands) { QTest::keyClick(&hands.Widget("Checked", "field"), Qt::Key_Return); }},
};

class LeavingTest : public FocusTest, public testing::WithParamInterface<Way> {};

TEST_P(LeavingTest, ABadFieldGetsTheFocusBackAndNothingRuns) {
  for (const bool asks : {true, false}) {
    form->asks = asks;
    form->checks = 0;
    screen.hands.Type("Checked", "field", "bad");
    if (asks) screen.boxes.Lay("no number", true);
    GetParam().leave(screen.hands);
    EXPECT_TRUE(WaitFor([&] { return form->checks == 1 && screen.boxes.AllGiven(); })) << asks;
    ExpectFieldIsBack();
    EXPECT_FALSE(dynamic_cast<QPushButton&>(screen.hands.Widget("Checked", "SetParameter")).isDown());
    EXPECT_FALSE(form->tick.Ticked());
  }
}

TEST_P(LeavingTest, AGoodFieldIsCheckedOnceAndTheActionRuns) {
  screen.hands.Type("Checked", "field", "1");
  GetParam().leave(screen.hands);
  EXPECT_TRUE(WaitFor([&] { return form->checks == 1; }));
  const std::string name = GetParam().name;
  const bool acts = name.find("button") != std::string::npos || name.find("check box") != std::string::npos;
  EXPECT_TRUE(WaitFor([&] { return form->presses == (acts ? 1 : 0); }));
}

INSTANTIATE_TEST_SUITE_P(Ways, LeavingTest, testing::ValuesIn(kWays));

// A box without the focus coming back: the press that is over by then does not run; the next one does.
TEST_F(FocusTest, APressThatABoxInterruptedDoesNotRun) {
  form->returns = false;
  screen.hands.Type("Checked", "field", "bad");
  screen.boxes.Lay("no number", true);
  screen.hands.Click("Checked", "SetParameter");
  EXPECT_EQ(form->presses, 0);
  screen.hands.Click("Checked", "SetParameter");
  EXPECT_EQ(form->presses, 1);
  EXPECT_EQ(form->checks, 1);
}

TEST_F(FocusTest, TheProgramAndOtherWindowsTakeTheFocusWithoutACheck) {
  screen.hands.Type("Checked", "field", "bad");
  form->other.SetFocus();
  EXPECT_TRUE(WaitFor([&] { return screen.hands.Widget("Checked", "other").hasFocus(); }));
  screen.hands.Type("Checked", "field", "bad");
  screen.boxes.Lay("hello", true);
  form->Machine().dialogs.Ask({.text = "hello", .title = "box"});
  form->field.SetEnabled(false);
  screen.desktop.Flush();
  EXPECT_EQ(form->checks, 0);
}

}  // namespace
}  // namespace vlt::test

#include <gtest/gtest.h>

#include "support/test_app.h"
#include "window/form.h"

namespace vlt::test {
namespace {

class Sheet : public Form {
 public:
  explicit Sheet(Windows& windows, std::vector<std::string>& notes)
      : Form(windows, "Sheet", FormPlace::kPage), notes_(notes) {
    notes_.push_back("made");
  }
  ~Sheet() override { notes_.push_back("gone"); }
  void Form_Load() override { notes_.push_back("load"); }
  void Form_Activate() override { notes_.push_back("activate"); }
  void Form_Unload(int& cancel) override {
    cancel = refuse ? -1 : 0;
    notes_.push_back(refuse ? "refuse" : "unload");
  }

  CheckBox box{*this, "box"};
  ControlArray<OptionButton> choice{*this, "choice", {0, 1, 5}};
  TextBox text{*this, "text"};
  ComboBox list{*this, "list"};
  PushButton button{*this, "button"};
  Timer timer{*this, "timer"};
  TabControl tab{*this, "tab", 2};
  MenuItem menu{*this, "menu"};
  MenuItem item{*this, "item", &menu};
  bool refuse = false;

 private:
  std::vector<std::string>& notes_;
};

class WindowTest : public ::testing::Test {
 protected:
  WindowTest() {
    windows.Register("Sheet", [this] { return std::make_unique<Sheet>(windows, notes); });
  }
  Sheet& Load() { return static_cast<Sheet&>(windows.Load("Sheet")); }

  VirtualPlatform platform;
  std::vector<std::string> notes;
  Windows windows{platform.machine};
};

using Notes = std::vector<std::string>;

TEST_F(WindowTest, LivesFromFirstUseToUnloadAndMayComeAgain) {
  EXPECT_EQ(windows.Find("Sheet"), nullptr);
  Sheet& sheet = Load();
  EXPECT_EQ(&Load(), &sheet) << "a singleton";
  sheet.Show();
  EXPECT_EQ(windows.VisiblePages(), std::vector<Form*>{&sheet});
  sheet.refuse = true;
  EXPECT_FALSE(windows.Unload("Sheet"));
  sheet.refuse = false;
  EXPECT_TRUE(windows.Unload("Sheet"));
  EXPECT_TRUE(windows.Unload("Sheet")) << "what is not there is unloaded";
  Load();
  EXPECT_EQ(notes, (Notes{"made", "load", "activate", "refuse", "unload", "gone", "made", "load"}));
  EXPECT_THROW(windows.Load("Shet"), std::out_of_range);
}

TEST_F(WindowTest, OutlivesTheHandlerThatUnloadsIt) {
  Sheet& sheet = Load();
  sheet.button.on_click = [&] {
    windows.Unload("Sheet");
    EXPECT_EQ(notes.back(), "unload");
    EXPECT_FALSE(windows.Exists(&sheet));
    sheet.text.SetText("still a live object");
  };
  sheet.button.Press();
  EXPECT_EQ(notes.back(), "gone");
}

TEST_F(WindowTest, TimersTickOnlyWhileTheirWindowExists) {
  Sheet& sheet = Load();
  int ticks = 0;
  sheet.timer.on_timer = [&] { ++ticks; };
  sheet.timer.SetRunning(true);
  platform.time.RunFor(1000);
  EXPECT_EQ(ticks, 0) << "no interval yet";
  sheet.timer.SetInterval(100);
  platform.time.RunFor(350);
  EXPECT_EQ(ticks, 3);
  // Unloaded in the middle of an outer handler: the object lives on, its timer does not.
  windows.Run([&] {
    windows.Unload("Sheet");
    platform.time.RunFor(1000);
  });
  EXPECT_EQ(ticks, 3);
  EXPECT_EQ(platform.time.TimerCount(), 0);
}

TEST_F(WindowTest, GesturesStopAtDisabledAndHiddenControlsSettersDoNot) {
  Sheet& sheet = Load();
  int calls = 0;
  const auto count = [&] { ++calls; };
  sheet.box.on_click = sheet.button.on_click = sheet.list.on_click = sheet.item.on_click = count;
  sheet.choice(0).on_click = sheet.text.on_lost_focus = sheet.tab.on_click = count;
  sheet.list.SetItems({"a", "b"});
  sheet.tab.SetTabEnabled(1, false);
  EXPECT_FALSE(sheet.tab.Select(1));
  sheet.menu.SetEnabled(false);
  EXPECT_FALSE(sheet.item.Press()) << "a disabled menu keeps its items";
  for (Control* control : sheet.Controls()) control->SetEnabled(false);
  EXPECT_FALSE(sheet.box.Tick() || sheet.choice(0).Choose() || sheet.text.Type("x") ||
               sheet.text.LoseFocus() || sheet.list.Choose(0) || sheet.button.Press());
  sheet.text.SetEnabled(true);
  sheet.text.SetVisible(false);
  EXPECT_FALSE(sheet.text.Type("x"));
  EXPECT_EQ(calls, 0);
  sheet.box.SetValue(1);
  sheet.box.SetValue(1);
  sheet.list.SetListIndex(1);
  sheet.list.SetListIndex(7);  // outside: nothing is selected, which is a change
  EXPECT_EQ(sheet.list.ListIndex(), -1);
  EXPECT_EQ(calls, 3);
}

TEST_F(WindowTest, OptionsExcludeEachOtherAndListsKeepTheirSelection) {
  Sheet& sheet = Load();
  int clicks = 0;
  sheet.choice.ForEach([&](OptionButton& option) { option.on_click = [&] { ++clicks; }; });
  sheet.choice(1).Choose();
  sheet.choice(5).Choose();
  sheet.choice(5).Choose();
  EXPECT_FALSE(sheet.choice(1).Value());
  EXPECT_EQ(clicks, 3) << "choosing again counts, losing the choice does not";
  EXPECT_EQ(sheet.Find("choice(5)"), &sheet.choice(5));
  EXPECT_THROW(sheet.choice(2), std::out_of_range);

  sheet.list.SetItems({"a", "b", "c"});
  sheet.list.SetListIndex(1);
  sheet.list.RemoveItem(0);
  EXPECT_EQ(sheet.list.Text(), "b");
  sheet.list.RemoveItem(0);
  EXPECT_EQ(sheet.list.ListIndex(), -1);

  sheet.text.SetMaxLength(3);
  sheet.text.Type("ｱｲｳｴｵ");
  EXPECT_EQ(sheet.text.Text(), "ｱｲｳ") << "lengths count characters";
  sheet.text.SetText("12345");
  EXPECT_EQ(sheet.text.Text(), "12345") << "the program's own text is never cut";
}

}  // namespace
}  // namespace vlt::test

// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "support/test_app.h"
#include "window/chart.h"
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
  void Form_Load() override {
    notes_.push_back("load");
    Run(on_load);
  }
  void Form_Activate() override {
    notes_.push_back("activate");
    Run(on_activate);
  }
  void Form_Unload(int& cancel) override {
    Run(on_unload);
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
  // Each runs once.
  std::function<void()> on_load;
  std::function<void()> on_activate;
  std::function<void()> on_unload;

 private:
  static void Run(std::function<void()>& hook) {
    if (const auto action = std::exchange(hook, nullptr)) action();
  }
  std::vector<std::string>& notes_;
};

class WindowTest : public ::testing::Test {
 protected:
  WindowTest() {
    windows.Register("Sheet", [this] {
      auto sheet = std::make_unique<Sheet>(windows, notes);
      if (on_made) on_made(*sheet);
      return sheet;
    });
  }
  Sheet& Load() { return static_cast<Sheet&>(windows.Load("Sheet")); }

  VirtualPlatform platform;
  std::vector<std::string> notes;
  std::function<void(Sheet&)> on_made;
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
  EXPECT_FALSE(sheet.tab.Select(1) || sheet.tab.Select(2) || sheet.tab.Select(-1));
  EXPECT_FALSE(sheet.list.Choose(2) || sheet.list.Choose(-1)) << "there is no such entry";
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
  sheet.list.RemoveItem(1);
  EXPECT_EQ(sheet.list.Text(), "b") << "what goes behind it moves nothing";
  sheet.list.RemoveItem(0);
  EXPECT_EQ(sheet.list.ListIndex(), -1);

  sheet.text.SetMaxLength(3);
  sheet.text.Type("ｱｲｳｴｵ");
  EXPECT_EQ(sheet.text.Text(), "ｱｲｳ") << "lengths count characters";
  sheet.text.SetText("12345");
  EXPECT_EQ(sheet.text.Text(), "12345") << "the program's own text is never cut";
  sheet.text.Type("1245");
  EXPECT_EQ(sheet.text.Text(), "1245") << "nor what a person leaves of it";
  sheet.text.Type("12459");
  EXPECT_EQ(sheet.text.Text(), "124");
}

TEST_F(WindowTest, GridsGrowAndShrink) {
  Sheet& sheet = Load();
  Grid grid(sheet, "grid", 2, 3);
  const std::string texts[] = {"a", "b", "c"};
  grid.SetRow(1, texts);
  for (const auto& [row, column] : {std::pair(2, 0), {-1, 0}, {0, 3}, {1, -1}}) {
    EXPECT_THROW(grid.SetCell(row, column, "x"), std::out_of_range);
  }
  grid.SetRows(32);
  grid.SetCell(31, 2, "last");
  EXPECT_EQ(grid.Cell(1, 1), "b");
  EXPECT_EQ(grid.Cell(31, 0), "");
  grid.SetRows(2);
  grid.SetRows(32);
  EXPECT_EQ(grid.Cell(31, 2), "") << "what went is gone";
  EXPECT_EQ(grid.Cell(1, 2), "c");
}

TEST_F(WindowTest, RowsCanBeChosenWhereSomebodyListens) {
  Sheet& sheet = Load();
  Grid grid(sheet, "grid", 3, 1);
  EXPECT_FALSE(grid.Choose(1));
  int chosen = 0;
  grid.on_choose = [&] { chosen = grid.SelectedRow(); };
  EXPECT_FALSE(grid.Choose(0) || grid.Choose(3)) << "the head is no row";
  for (const int row : {1, 2}) {
    EXPECT_TRUE(grid.Choose(row));
    EXPECT_EQ(chosen, row);
  }
  grid.SetSelectedRow(3);
  EXPECT_EQ(grid.SelectedRow(), 0) << "there is no such row";
  grid.SetSelectedRow(2);
  grid.SetRows(2);
  EXPECT_EQ(grid.SelectedRow(), 0) << "its row is gone";
  grid.SetRows(5);
  for (int row = 0; row < 5; ++row) grid.SetCell(row, 0, std::to_string(row));
  grid.SetSelectedRow(3);
  for (const auto& [drop, left, selected] : {std::tuple(0, 5, 3), {2, 3, 1}, {1, 2, 0}, {9, 1, 0}}) {
    grid.DropRows(drop);
    EXPECT_EQ(grid.Rows(), left);
    EXPECT_EQ(grid.SelectedRow(), selected);
    EXPECT_TRUE(left == 1 || grid.Cell(left - 1, 0) == "4") << "the first ones have gone";
    EXPECT_EQ(grid.DroppedRows(), 5 - left);
  }
}

TEST_F(WindowTest, RowsWithABoxAreTickedAndNewRowsHaveNone) {
  Sheet& sheet = Load();
  Grid grid(sheet, "grid", 4, 1);
  grid.SetTicked(2, RowTick::kOff);
  grid.SetTicked(3, RowTick::kSome);
  std::vector<int> told;
  grid.on_tick = [&](int row) { told.push_back(grid.Ticked(row) == RowTick::kOn ? row : -row); };
  EXPECT_FALSE(grid.Tick(1) || grid.Tick(4) || grid.Untick(-1)) << "there is no box";
  EXPECT_TRUE(grid.Tick(2) && grid.Tick(3) && grid.Untick(2));
  EXPECT_EQ(told, (std::vector<int>{2, 3, -2}));
  grid.SetEnabled(false);
  EXPECT_FALSE(grid.Tick(2));
  grid.SetStyle(3, RowStyle::kStrong);
  grid.SetRows(2);
  grid.SetRows(4);
  EXPECT_EQ(grid.Ticked(3), RowTick::kNoBox);
  EXPECT_EQ(grid.Style(3), RowStyle::kPlain);
}

TEST_F(WindowTest, HolesOfALineLieInThePlacesThatTheyLeave) {
  const ChartPoint hole;
  const struct {
    std::vector<ChartPoint> points;
    std::vector<double> places;
  } kCases[] = {
      {{}, {}},
      {{hole, hole}, {1, 2}},
      {{{10, 1}, hole, hole, {16, 1}}, {10, 12, 14, 16}},
      {{hole, hole, {10, 1}, {12, 1}, hole, hole}, {6, 8, 10, 12, 14, 16}},
      {{hole, {5, 1}, hole}, {4, 5, 6}},
      {{{2, 1}, hole, {3, 1}, hole}, {2, 2.5, 3, 3.5}},
  };
  for (const auto& [points, places] : kCases) EXPECT_EQ(PlacesOf(points), places);
}

// A window whose hooks wait, as an exchange does, and events that come meanwhile.
TEST_F(WindowTest, AWindowOutlivesEventsOfItsOwnHooks) {
  const auto give_way = [&] { platform.time.RunFor(10); };
  Sheet& sheet = Load();
  const auto unload_soon = [&] { platform.time.Post([&] { EXPECT_TRUE(windows.Unload("Sheet")); }); };
  sheet.on_unload = [&] {
    unload_soon();
    give_way();
    EXPECT_FALSE(windows.Exists(&sheet));
    sheet.text.SetText("still a live object");
    sheet.Show();
    EXPECT_TRUE(windows.VisibleForms().empty()) << "what is unloaded comes back by a load only";
  };
  EXPECT_TRUE(windows.Unload("Sheet"));
  EXPECT_EQ(notes, (Notes{"made", "load", "unload", "unload", "gone"}));

  notes.clear();
  Sheet& next = Load();
  next.on_activate = [&] {
    unload_soon();
    give_way();
    EXPECT_EQ(notes.back(), "unload") << "not gone yet";
  };
  next.Show();
  EXPECT_EQ(notes.back(), "gone");

  Sheet& refusing = Load();
  refusing.refuse = true;
  refusing.on_unload = [&] {
    refusing.refuse = false;
    unload_soon();
    give_way();
    refusing.refuse = true;
  };
  EXPECT_TRUE(windows.Unload("Sheet")) << "it refused, but was gone by then";
}

// A folder above adds controls and handlers of its own to a window.
class Wave : public FormPart {
 public:
  Wave(Form& whole, const char* name, std::vector<std::string>& notes)
      : FormPart(whole), stop(whole, std::string(name) + "Stop"), name_(name), notes_(notes) {}
  ~Wave() override {
    // Its window is whole until the part has gone.
    Note("gone " + static_cast<Sheet&>(Whole()).text.Text());
  }
  void Form_Load() override {
    EXPECT_NE(Whole().Find("text"), nullptr);
    Note("load");
  }
  void Form_Activate() override { Note("activate"); }
  void Form_Deactivate() override { Note("deactivate"); }
  void Form_Unload(int& cancel) override {
    cancel = refuse ? -1 : 0;
    Note(refuse ? "refuse" : "unload");
  }
  void FrmInit() override { Note("captions"); }
  void Taihi() override { Note("keep"); }
  void SetteiHannei() override { Note("restore"); }
  const Control* StopButton() const override { return live ? &stop : nullptr; }
  bool IsLive() const override { return live; }
  bool IsChoice(const Control& control) const override { return &control == &stop; }

  PushButton stop;
  bool refuse = false;
  bool live = false;

 private:
  void Note(const std::string& what) { notes_.push_back(name_ + " " + what); }
  std::string name_;
  std::vector<std::string>& notes_;
};

TEST_F(WindowTest, PartsLiveAndAnswerWithTheirWindow) {
  for (const char* name : {"A", "B"}) {
    windows.RegisterPart("Sheet",
                         [this, name](Form& whole) { return std::make_unique<Wave>(whole, name, notes); });
  }
  Sheet& sheet = Load();
  sheet.text.SetText("whole");
  auto& a = *sheet.Part<Wave>();
  EXPECT_EQ(sheet.Find("BStop"), sheet.Controls().back());
  sheet.Show();
  for (const auto hook :
       {&FormHooks::FrmInit, &FormHooks::SetteiHannei, &FormHooks::Taihi, &FormHooks::Form_Deactivate}) {
    sheet.RunHook(hook);
  }
  EXPECT_EQ(notes, (Notes{"made", "load", "A load", "B load", "activate", "A activate", "B activate",
                          "A captions", "B captions", "A restore", "B restore", "A keep", "B keep",
                          "A deactivate", "B deactivate"}));

  EXPECT_FALSE(sheet.IsLive());
  EXPECT_EQ(sheet.StopButton(), nullptr);
  a.live = true;
  EXPECT_TRUE(sheet.IsLive());
  EXPECT_EQ(sheet.StopButton(), &a.stop);
  EXPECT_TRUE(sheet.IsChoice(a.stop));
  EXPECT_FALSE(sheet.IsChoice(sheet.button));
  EXPECT_FALSE(sheet.IsMasterBox(sheet.box));

  notes.clear();
  a.refuse = true;
  EXPECT_FALSE(windows.Unload("Sheet"));
  EXPECT_EQ(notes, (Notes{"B unload", "A refuse"})) << "the window itself was not asked yet";
  a.refuse = false;
  notes.clear();
  EXPECT_TRUE(windows.Unload("Sheet"));
  EXPECT_EQ(notes, (Notes{"B unload", "A unload", "unload", "B gone whole", "A gone whole", "gone"}));
}

TEST_F(WindowTest, AHandlerThatFailsIsToldAndLeavesAllElseAsItWas) {
  const auto fail = [] { throw std::runtime_error("no such cell"); };
  Sheet& sheet = Load();
  sheet.button.on_click = fail;
  EXPECT_THROW(sheet.button.Press(), std::runtime_error) << "nobody is there to be told";
  std::vector<std::string> told;
  windows.SetObserver({.failed = [&](const std::string& what) { told.push_back(what); }});
  EXPECT_TRUE(sheet.button.Press());
  sheet.timer.on_timer = fail;
  sheet.timer.SetInterval(10);
  sheet.timer.SetRunning(true);
  platform.time.RunFor(20);
  EXPECT_EQ(told, (Notes{"no such cell", "no such cell", "no such cell"}));
  windows.Unload("Sheet");
  on_made = [&](Sheet& made) { made.on_load = fail; };
  EXPECT_THROW(windows.Load("Sheet"), std::runtime_error);
  EXPECT_EQ(windows.Find("Sheet"), nullptr) << "no window that is loaded by half";
  EXPECT_EQ(notes.back(), "gone");
}

}  // namespace
}  // namespace vlt::test

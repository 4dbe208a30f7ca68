// SPDX-License-Identifier: GPL-3.0-or-later
// Each kind of control and its widget: what a person does reaches the control, what the control holds shows.
#include <gtest/gtest.h>

#include <QApplication>
#include <QBitmap>
#include <QComboBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolButton>
#include <QToolTip>
#include <QWheelEvent>
#include <QtTest/QTest>

#include "desktop/support/screen.h"

namespace vlt::test {
namespace {

class Bench : public Form {
 public:
  explicit Bench(Windows& windows) : Form(windows, "Bench", FormPlace::kWindow) {
    check.on_click = [this] { log.push_back("check"); };
    options.ForEach([this](OptionButton& option) { option.on_click = [this] { log.push_back("option"); }; });
    text.on_change = [this] { log.push_back("text " + text.Text()); };
    combo.on_click = [this] { log.push_back("combo " + combo.Text()); };
    button.on_click = [this] { log.push_back("button"); };
    tabs.on_click = [this] { log.push_back("tab"); };
    updown.on_up = [this] { log.push_back("up"); };
    updown.on_down = [this] { log.push_back("down"); };
    choice.on_choose = [this] { log.push_back("row"); };
    choice.on_tick = [this](int row) {
      const bool on = choice.Ticked(row) == RowTick::kOn;
      log.push_back("tick " + std::to_string(row) + (on ? " 1" : " 0"));
    };
    choice.SetColumnWidth(0, 1500);
    choice.SetSize(3000, 3000);
    tail.SetColumnWidth(0, 1500);
    tail.SetSize(1500, 3000);
    tail.SetDense(true);
    tail.SetFollows(true);
    combo.SetItems({"red", "green", "blue"});
    tabs.SetTabCaption(0, "one");
    tabs.SetTabCaption(1, "two");
  }
  CheckBox check{*this, "check"};
  ControlArray<OptionButton> options{*this, "options", Indexes(3)};
  TextBox text{*this, "text"};
  ComboBox combo{*this, "combo"};
  Label label{*this, "label"};
  PushButton button{*this, "button"};
  FrameBox frame{*this, "frame"};
  StatusBar status{*this, "status", 2};
  ProgressBar progress{*this, "progress"};
  TabControl tabs{*this, "tabs", 2};
  UpDown updown{*this, "updown"};
  Grid grid{*this, "grid", 3, 2};
  Grid choice{*this, "choice", 4, 1};
  Grid tail{*this, "tail", 1, 1};
  Picture picture{*this, "picture", "logo"};
  std::vector<std::string> log;
};

class BindingTest : public testing::Test {
 protected:
  BindingTest() {
    screen.Add<Bench>("Bench", {"Bench", WindowStyle::kDialog, {}});
    bench = &screen.Show<Bench>("Bench");
  }
  template <class T>
  T& Widget(const char* name) {
    return dynamic_cast<T&>(screen.hands.Widget("Bench", name));
  }
  using Log = std::vector<std::string>;
  Screen screen;
  Bench* bench = nullptr;
};

TEST_F(BindingTest, GesturesReachTheControls) {
  Hands& hands = screen.hands;
  hands.Click("Bench", "check");
  EXPECT_TRUE(bench->check.Ticked());
  for (const bool again : {false, true}) {
    hands.Click("Bench", "options(1)");
    EXPECT_TRUE(bench->options(1).Value() && hands.Ticked("Bench", "options(1)")) << again;
  }
  hands.Type("Bench", "text", "7.5");
  EXPECT_EQ(bench->text.Text(), "7.5");
  hands.Choose("Bench", "combo", 2);
  EXPECT_EQ(bench->combo.ListIndex(), 2);
  hands.Click("Bench", "button");
  hands.SelectTab("Bench", "tabs", 1);
  EXPECT_EQ(bench->tabs.Tab(), 1);
  for (const char* arrow : {"up", "down"}) {
    auto* button = Widget<QWidget>("updown").findChild<QToolButton*>(arrow);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(button->autoRepeat()) << "held down it goes on";
  }
  EXPECT_EQ(bench->log, (Log{"check", "option", "option", "text 7", "text 7.", "text 7.5", "combo blue",
                             "button", "tab", "up", "down"}));
}

TEST_F(BindingTest, ControlsShowOnTheWidgets) {
  bench->check.SetValue(1);
  bench->check.SetCaption("A && B");
  bench->options(2).SetValue(true);
  bench->text.SetText("流速");
  bench->combo.AddItem("black");
  bench->combo.SetListIndex(3);
  bench->label.SetCaption("Get Unit && Language...");
  bench->button.SetBackColour(kActiveButtonColour);
  bench->frame.SetCaption("Frame");
  bench->status.SetPanel(1, "line one\nline two");
  bench->progress.SetMax(4);
  bench->progress.SetValue(3);
  bench->tabs.SetTab(1);
  bench->tabs.SetTabEnabled(0, false);
  bench->grid.SetCell(0, 1, "head");
  bench->grid.SetCell(2, 1, "cell");
  bench->grid.SetColumnWidth(0, 0);
  const Log told_by_setters = bench->log;
  Hands& hands = screen.hands;
  EXPECT_TRUE(hands.Ticked("Bench", "check"));
  EXPECT_EQ(hands.Text("Bench", "check"), "A && B") << "Qt's own doubling";
  EXPECT_TRUE(hands.Ticked("Bench", "options(2)"));
  EXPECT_EQ(hands.Text("Bench", "text"), "流速");
  EXPECT_EQ(hands.Text("Bench", "combo"), "black");
  EXPECT_EQ(hands.Text("Bench", "label"), "Get Unit & Language...");
  EXPECT_EQ(hands.Text("Bench", "frame"), "Frame");
  for (const auto& [caption, marked] : {std::pair("Go and look", "&Go and look"),
                                        {"Research && Development", "&Research && Development"},
                                        {"読み出しを始める", "読み出しを始める(&B)"}}) {
    bench->button.SetCaption(caption);
    screen.desktop.Flush();
    EXPECT_EQ(hands.Text("Bench", "button"), marked);
  }
  EXPECT_EQ(Widget<QPushButton>("button").palette().color(QPalette::Button), QColor(0xFF, 0xC0, 0x80));
  EXPECT_EQ(Widget<QProgressBar>("progress").maximum(), 4);
  EXPECT_EQ(Widget<QProgressBar>("progress").value(), 3);
  EXPECT_EQ(Widget<QTabWidget>("tabs").currentIndex(), 1);
  EXPECT_FALSE(Widget<QTabWidget>("tabs").isTabEnabled(0));
  auto& table = Widget<QTableWidget>("grid");
  EXPECT_EQ(table.horizontalHeaderItem(1)->text(), "head");
  EXPECT_EQ(table.item(1, 1)->text(), "cell");
  EXPECT_EQ(table.editTriggers(), QAbstractItemView::NoEditTriggers);
  EXPECT_EQ(table.item(1, 1)->textAlignment(), Qt::AlignLeft | Qt::AlignVCenter);
  EXPECT_TRUE(table.isColumnHidden(0)) << "width 0";
  EXPECT_FALSE(table.isColumnHidden(1));
  bench->button.SetBackColour(kButtonFaceColour);
  bench->grid.SetColumnWidth(1, 900);
  screen.desktop.Flush();
  EXPECT_GT(table.columnWidth(1), 60) << "the last one takes what is left";
  EXPECT_EQ(table.item(1, 1)->textAlignment(), Qt::AlignCenter) << "a mark or a digit";
  EXPECT_EQ(Widget<QPushButton>("button").palette().color(QPalette::Button),
            QApplication::palette().color(QPalette::Button));
  EXPECT_EQ(bench->log, told_by_setters) << "what is shown is no gesture";
}

// The control refuses before its widget has learnt of it.
TEST_F(BindingTest, RefusedGesturesRestoreTheWidget) {
  bench->text.SetText("kept");
  bench->combo.SetListIndex(0);
  screen.desktop.Flush();
  auto& check = Widget<QAbstractButton>("check");
  auto& option = Widget<QAbstractButton>("options(0)");
  auto& field = Widget<QLineEdit>("text");
  auto& tabs = Widget<QTabWidget>("tabs");
  for (Control* control : bench->Controls()) control->SetEnabled(false);
  check.click();
  option.click();
  field.setFocus();
  QTest::keyClicks(&field, "x");
  tabs.setCurrentIndex(1);
  bench->log.clear();
  screen.desktop.Flush();
  EXPECT_FALSE(check.isChecked());
  EXPECT_FALSE(option.isChecked());
  EXPECT_EQ(field.text(), "kept");
  EXPECT_EQ(tabs.currentIndex(), 0);
  EXPECT_FALSE(check.isEnabled());
  EXPECT_TRUE(bench->log.empty());
}

TEST_F(BindingTest, ArrowKeysGoRoundTheOptionsThatCanBeChosen) {
  screen.hands.Click("Bench", "options(0)");
  bench->options(1).SetEnabled(false);
  screen.desktop.Flush();
  QTest::keyClick(&Widget<QWidget>("options(0)"), Qt::Key_Down);
  EXPECT_TRUE(bench->options(2).Value());
  EXPECT_TRUE(Widget<QWidget>("options(2)").hasFocus());
  QTest::keyClick(&Widget<QWidget>("options(2)"), Qt::Key_Right);
  EXPECT_TRUE(bench->options(0).Value());
  QTest::keyClick(&Widget<QWidget>("options(0)"), Qt::Key_Up);
  EXPECT_TRUE(bench->options(2).Value());
  bench->options(1).SetEnabled(true);
  bench->options(0).SetVisible(false);
  screen.desktop.Flush();
  QTest::keyClick(&Widget<QWidget>("options(2)"), Qt::Key_Left);
  EXPECT_TRUE(bench->options(1).Value());
  QTest::keyClick(&Widget<QWidget>("options(1)"), Qt::Key_Left);
  EXPECT_TRUE(bench->options(2).Value()) << "what is hidden is passed over";
}

TEST_F(BindingTest, FieldsKeepLengthAndLock) {
  bench->text.SetMaxLength(3);
  screen.hands.Type("Bench", "text", "流速流速");
  EXPECT_EQ(bench->text.Text(), "流速流");
  bench->text.SetLocked(true);
  bench->text.SetBackColour(kButtonFaceColour);
  screen.hands.Type("Bench", "text", "9");
  const QPalette grey = Widget<QLineEdit>("text").palette();
  EXPECT_EQ(grey.color(QPalette::Base), grey.color(QPalette::Button));
  EXPECT_EQ(bench->text.Text(), "流速流");
  EXPECT_EQ(screen.hands.Text("Bench", "text"), "流速流");
  bench->text.SetMaxLength(0);
  bench->text.SetLocked(false);
  screen.hands.Type("Bench", "text", "12345");
  EXPECT_EQ(bench->text.Text(), "12345");
}

TEST_F(BindingTest, TheLimitOfAFieldBindsTypingOnly) {
  Hands& hands = screen.hands;
  auto& field = Widget<QLineEdit>("text");
  bench->text.SetMaxLength(4);
  bench->text.SetText("14809");
  EXPECT_EQ(hands.Text("Bench", "text"), "14809");
  field.setFocus();
  QTest::keyClicks(&field, "7");
  EXPECT_EQ(bench->text.Text(), "14809") << "full is full";
  QTest::keyClick(&field, Qt::Key_Home);
  QTest::keyClick(&field, Qt::Key_Delete);
  EXPECT_EQ(bench->text.Text(), "4809");
  QTest::keyClicks(&field, "7");
  screen.desktop.Flush();
  EXPECT_EQ(bench->text.Text(), "4809");
  EXPECT_EQ(hands.Text("Bench", "text"), "4809");
}

TEST_F(BindingTest, AFieldTooNarrowForItsTextShowsItsStartAndTellsTheRest) {
  auto& field = Widget<QLineEdit>("text");
  field.setFixedWidth(60);
  Widget<QWidget>("button").setFocus();
  bench->text.SetHint("Register 00D2H");
  bench->text.SetText("-12345678.123");
  screen.desktop.Flush();
  EXPECT_EQ(field.cursorPosition(), 0);
  EXPECT_EQ(field.toolTip(), "-12345678.123\nRegister 00D2H");
  field.grab();  // the first one may scroll
  const QImage cut = field.grab().toImage();
  bench->text.SetText("-12345678.999");
  screen.desktop.Flush();
  EXPECT_EQ(field.grab().toImage(), cut) << "the end has given way to dots";
  bench->text.SetText("-92345678.999");
  screen.desktop.Flush();
  EXPECT_NE(field.grab().toImage(), cut);
  field.setFixedWidth(300);
  EXPECT_TRUE(WaitFor([&] { return field.toolTip() == "Register 00D2H"; }));
  field.setFixedWidth(60);
  EXPECT_TRUE(WaitFor([&] { return field.toolTip().startsWith("-92345678.999"); }));
}

TEST_F(BindingTest, AFieldWithFocusShowsItsStartAndItsDotsAsWithout) {
  auto& field = Widget<QLineEdit>("text");
  field.setFixedWidth(60);
  Widget<QWidget>("button").setFocus();
  const auto picture = [&] {
    screen.desktop.Flush();
    field.grab();  // the first one may scroll
    const QImage image = field.grab().toImage();
    return image.copy(6, 4, image.width() - 10, image.height() - 8);  // without frame and caret
  };
  bench->text.SetText("-12345678.123");
  const QImage without = picture();
  field.setFocus(Qt::OtherFocusReason);
  field.deselect();
  EXPECT_EQ(picture(), without);
  bench->text.SetText("-12345678.999");
  EXPECT_EQ(picture(), without) << "the end has given way to dots";
  QTest::keyClick(&field, Qt::Key_End);
  EXPECT_NE(picture(), without) << "the caret is always seen";
  QTest::keyClick(&field, Qt::Key_Home);
  EXPECT_EQ(picture(), without);
  Widget<QWidget>("button").setFocus();
  field.setFocus(Qt::TabFocusReason);
  EXPECT_EQ(field.selectedText(), "-12345678.999");
  EXPECT_EQ(field.cursorPosition(), 0) << "all is marked, and the start is seen";
}

// Typing leaves the caret where it is, though the length that a field takes is told to it with every letter.
TEST_F(BindingTest, TheCaretStaysWhereItIs) {
  auto& field = Widget<QLineEdit>("text");
  for (const int limit : {0, 4, 6}) {
    bench->text.SetMaxLength(limit);
    bench->text.SetText("75.5");
    field.setFocus();
    screen.desktop.Flush();
    QTest::keyClick(&field, Qt::Key_Home);
    for (const char key : {'1', '2'}) {
      QTest::keyClick(&field, key);
      screen.desktop.Flush();
    }
    EXPECT_EQ(bench->text.Text(), limit == 4 ? "75.5" : "1275.5") << limit;
    EXPECT_EQ(field.cursorPosition(), limit == 4 ? 0 : 2) << limit;
    Widget<QWidget>("button").setFocus();
  }
}

TEST_F(BindingTest, WhatIsWrongIsSeenAndTold) {
  auto& field = Widget<QLineEdit>("text");
  const QColor plain = field.palette().color(QPalette::Base);
  bench->text.SetHint("Register 00D2H");
  bench->text.SetMark("not taken");
  screen.desktop.Flush();
  EXPECT_EQ(field.accessibleDescription(), "not taken");
  EXPECT_GT(field.palette().color(QPalette::Base).red(), field.palette().color(QPalette::Base).green() + 20);
  EXPECT_EQ(field.toolTip(), "not taken\nRegister 00D2H");
  bench->text.SetMark("");
  screen.desktop.Flush();
  EXPECT_EQ(field.palette().color(QPalette::Base), plain);
}

TEST_F(BindingTest, WhereAValueComesFromIsAMarkOfItsOwnShape) {
  auto& field = Widget<QLineEdit>("text");
  const QPoint corner = field.pos();
  const auto mark = [&] { return screen.hands.Window("Bench").findChild<QWidget*>("origin of text"); };
  screen.desktop.Flush();
  EXPECT_EQ(mark(), nullptr) << "nothing is known";
  bench->text.SetHint("Register 00D2H");
  bench->text.SetMark("not taken");
  std::vector<QImage> shapes;
  for (const bool dark : {false, true}) {
    QPalette palette;
    if (dark) {
      palette.setColor(QPalette::Window, QColor(0x35, 0x35, 0x35));
      palette.setColor(QPalette::WindowText, Qt::white);
    }
    screen.hands.Window("Bench").setPalette(palette);
    for (const auto origin :
         {ValueOrigin::kRead, ValueOrigin::kTyped, ValueOrigin::kFile, ValueOrigin::kOutdated}) {
      bench->text.SetOrigin(origin, "told " + std::to_string(static_cast<int>(origin)));
      screen.desktop.Flush();
      ASSERT_NE(mark(), nullptr);
      EXPECT_TRUE(mark()->isVisible());
      shapes.push_back(mark()->grab().toImage().convertToFormat(QImage::Format_RGB32));
    }
  }
  // Without the colours, so that what differs is the shape; and each can be seen.
  const auto shape = [&](std::size_t at) {
    const QColor ground = at < 4 ? QApplication::palette().color(QPalette::Window) : QColor(0x35, 0x35, 0x35);
    return shapes[at].createMaskFromColor(ground.rgb());
  };
  for (std::size_t a = 0; a < shapes.size(); ++a) {
    EXPECT_GT(QRegion(QBitmap::fromImage(shape(a))).boundingRect().height(), 8) << a;
    for (std::size_t b = a / 4 * 4; b < a; ++b) EXPECT_NE(shape(a), shape(b)) << a << " and " << b;
  }
  EXPECT_EQ(field.pos(), corner) << "nothing moves";
  EXPECT_EQ(field.toolTip(), "not taken\ntold 4\nRegister 00D2H");
  EXPECT_EQ(field.accessibleDescription(), "not taken\ntold 4");
  bench->text.SetVisible(false);
  screen.desktop.Flush();
  EXPECT_FALSE(mark()->isVisible());
  bench->text.SetVisible(true);
  bench->text.SetOrigin(ValueOrigin::kNone);
  screen.desktop.Flush();
  EXPECT_FALSE(mark()->isVisible());
  EXPECT_EQ(field.accessibleDescription(), "not taken");
}

TEST_F(BindingTest, GridsShowTheRowsThatThereAre) {
  auto& table = Widget<QTableWidget>("grid");
  for (const int column : {0, 1}) bench->grid.SetColumnWidth(column, 1500);
  bench->grid.SetRows(32);
  bench->grid.SetCell(31, 0, "31");
  screen.desktop.Flush();
  EXPECT_EQ(table.rowCount(), 31);
  EXPECT_EQ(table.item(30, 0)->text(), "31");
  table.setColumnWidth(0, 200);
  bench->grid.SetRows(2);
  screen.desktop.Flush();
  EXPECT_EQ(table.rowCount(), 1);
  EXPECT_EQ(table.columnWidth(0), 200) << "the operator's own width stays";
  bench->grid.SetRows(0);
  screen.desktop.Flush();
  EXPECT_EQ(table.rowCount(), 0);
}

// A table that follows: at its end it goes along, above it what is in view and what is marked stays, also
// when rows go from the top.
TEST_F(BindingTest, ATableFollowsAtItsEndAndElseStandsStill) {
  auto& table = Widget<QTableWidget>("tail");
  int next = 1;
  const auto add = [&](int count, int most) {
    bench->tail.DropRows(bench->tail.Rows() - 1 + count - most);
    const int rows = bench->tail.Rows();
    bench->tail.SetRows(rows + count);
    for (int i = 0; i < count; ++i) bench->tail.SetCell(rows + i, 0, std::to_string(next++));
    screen.desktop.Flush();
    QApplication::processEvents();
  };
  const auto at_top = [&] { return table.itemAt(1, 1)->text().toStdString(); };
  const QScrollBar& bar = *table.verticalScrollBar();
  add(100, 200);
  EXPECT_EQ(bar.value(), bar.maximum());
  add(150, 200);
  ASSERT_EQ(table.rowCount(), 200);
  EXPECT_EQ(table.item(0, 0)->text(), "51");
  EXPECT_EQ(bar.value(), bar.maximum()) << "it goes along";
  table.scrollToItem(table.item(80, 0), QAbstractItemView::PositionAtTop);
  table.selectRow(82);
  const std::string top = at_top();
  EXPECT_EQ(top, "131");
  add(30, 200);
  EXPECT_EQ(at_top(), top) << "30 rows have gone above it";
  ASSERT_EQ(table.selectedItems().size(), 1);
  EXPECT_EQ(table.selectedItems().front()->text(), "133");
  add(190, 200);
  EXPECT_TRUE(table.selectedItems().empty()) << "it is not there any more";
  EXPECT_EQ(bar.value(), 0);
}

TEST_F(BindingTest, ARowIsChosenByMouseAndKeysAndTheProgram) {
  auto& table = Widget<QTableWidget>("choice");
  const auto click = [&](int row) {
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {},
                      table.visualItemRect(table.item(row, 0)).center());
    screen.desktop.Flush();
  };
  click(1);
  EXPECT_EQ(bench->choice.SelectedRow(), 2);
  QTest::keyClick(&table, Qt::Key_Down);
  EXPECT_EQ(bench->choice.SelectedRow(), 3);
  bench->choice.SetSelectedRow(1);
  screen.desktop.Flush();
  EXPECT_EQ(table.currentRow(), 0);
  const auto before = bench->log;
  click(0);
  EXPECT_GT(bench->log.size(), before.size()) << "the row that is marked can be chosen again";
  EXPECT_EQ(QSize(table.minimumWidth(), table.height()), QSize(200, 200)) << "as the logic asks";
  bench->choice.SetSelectedRow(0);
  screen.desktop.Flush();
  EXPECT_TRUE(table.selectedItems().empty());
  table.setFocus();
  QTest::keyClick(&table, Qt::Key_Tab);
  EXPECT_FALSE(table.hasFocus()) << "the key leaves the table";
}

TEST_F(BindingTest, RowsAreTickedByTheirBoxesAndTheSpaceBar) {
  auto& table = Widget<QTableWidget>("choice");
  bench->choice.SetTicked(1, RowTick::kOff);
  bench->choice.SetTicked(2, RowTick::kSome);
  bench->choice.SetSelectedRow(1);
  screen.desktop.Flush();
  EXPECT_EQ(table.item(1, 0)->checkState(), Qt::PartiallyChecked);
  EXPECT_FALSE(table.item(2, 0)->data(Qt::CheckStateRole).isValid()) << "it has no box";
  bench->log.clear();
  table.setFocus();
  QTest::keyClick(&table, Qt::Key_Space);
  screen.desktop.Flush();
  EXPECT_EQ(table.item(0, 0)->checkState(), Qt::Checked);
  QStyleOptionViewItem option;
  option.initFrom(&table);
  option.rect = table.visualItemRect(table.item(0, 0));
  option.features = QStyleOptionViewItem::HasCheckIndicator;
  const QRect box = table.style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &table);
  QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, box.center());
  screen.desktop.Flush();
  EXPECT_EQ(table.item(0, 0)->checkState(), Qt::Unchecked);
  QTest::keyClick(&table, Qt::Key_Down);
  QTest::keyClick(&table, Qt::Key_Space);
  QTest::keyClick(&table, Qt::Key_Down);
  QTest::keyClick(&table, Qt::Key_Space);
  std::erase(bench->log, "row");
  EXPECT_EQ(bench->log, (std::vector<std::string>{"tick 1 1", "tick 1 0", "tick 2 1"}));
}

TEST_F(BindingTest, RowsStandOutAndTitlesHaveTheWholeWidth) {
  auto& table = Widget<QTableWidget>("grid");
  for (const int column : {0, 1}) bench->grid.SetColumnWidth(column, 1500);
  bench->grid.SetRows(4);
  bench->grid.SetStyle(1, RowStyle::kTitle);
  bench->grid.SetStyle(2, RowStyle::kStrong);
  bench->grid.SetStyle(3, RowStyle::kNote);
  screen.desktop.Flush();
  const auto looks = [&] {
    std::string text;
    for (int row = 0; row < table.rowCount(); ++row) {
      text += table.item(row, 0)->background().style() == Qt::NoBrush ? ' ' : '#';
      text += table.item(row, 0)->font().bold() ? 'B' : '-';
      text += std::to_string(table.columnSpan(row, 0));
    }
    return text;
  };
  EXPECT_EQ(looks(), "#B2 B1 -2");
  bench->grid.SetStyle(1, RowStyle::kPlain);
  bench->grid.SetRows(2);
  bench->grid.SetRows(4);
  screen.desktop.Flush();
  EXPECT_EQ(looks(), " -1 -1 -1") << "what looked so before is forgotten";
}

TEST_F(BindingTest, TheWheelLeavesAListWithoutFocusAlone) {
  bench->combo.SetListIndex(1);
  auto& combo = Widget<QComboBox>("combo");
  const QPointF at = combo.rect().center();
  for (const bool focus : {false, true}) {
    Widget<QWidget>(focus ? "combo" : "button").setFocus();
    QWheelEvent wheel(at, combo.mapToGlobal(at), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&combo, &wheel);
    EXPECT_EQ(wheel.isAccepted(), focus) << "the page scrolls by it";
    EXPECT_EQ(bench->combo.ListIndex(), focus ? 2 : 1);
  }
}

TEST_F(BindingTest, ALabelAsksForTheRoomOfItsText) {
  const QWidget& label = screen.hands.Widget("Bench", "label");
  int width = 0;
  for (const char* text : {"m", "m3/h", "a caption of several words"}) {
    bench->label.SetCaption(text);
    screen.desktop.Flush();
    EXPECT_GT(label.sizeHint().width(), width) << text;
    EXPECT_GE(label.sizeHint().width(), label.fontMetrics().horizontalAdvance(text));
    width = label.sizeHint().width();
  }
}

TEST_F(BindingTest, TooltipsTellHintsAndWhatAPanelCuts) {
  bench->text.SetHint("Register 00D2H");
  EXPECT_EQ(screen.hands.Widget("Bench", "text").toolTip(), "Register 00D2H");
  const std::string line(400, 'x');
  bench->status.SetPanel(1, line);
  EXPECT_EQ(screen.hands.Panel("Bench", "status", 1), line);
  const auto* panel = screen.hands.Widget("Bench", "status").findChild<QLabel*>("panel1");
  EXPECT_TRUE(panel->text().endsWith(QChar(0x2026)));
  const auto* units = screen.hands.Widget("Bench", "status").findChild<QLabel*>("panel2");
  int width = 0;
  for (const char* text : {"a longer text than before", "short"}) {
    bench->status.SetPanel(2, text);
    screen.desktop.Flush();
    QApplication::processEvents();
    EXPECT_EQ(units->text(), text) << "it is never cut";
    EXPECT_GE(units->width(), width) << "and stands still";
    width = units->width();
  }
  auto& combo = Widget<QComboBox>("combo");
  bench->combo.SetListIndex(2);
  for (const int room : {40, 200}) {
    combo.setFixedWidth(room);
    EXPECT_TRUE(WaitFor([&] { return combo.toolTip() == (room == 40 ? "blue" : ""); })) << room;
  }
  auto& table = Widget<QTableWidget>("tail");
  bench->tail.SetRows(3);
  bench->tail.SetCell(1, 0, "<b> " + line);
  bench->tail.SetCell(2, 0, "x");
  screen.desktop.Flush();
  for (const auto& [row, told] : {std::pair(1, QString()), {0, ToQt("<qt>&lt;b&gt; " + line + "</qt>")}}) {
    const QPoint at = table.visualItemRect(table.item(row, 0)).center();
    QHelpEvent help(QEvent::ToolTip, at, table.viewport()->mapToGlobal(at));
    EXPECT_TRUE(QApplication::sendEvent(table.viewport(), &help));
    EXPECT_EQ(QToolTip::text(), told);
  }
}

}  // namespace
}  // namespace vlt::test

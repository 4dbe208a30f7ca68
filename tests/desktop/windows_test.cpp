// SPDX-License-Identifier: GPL-3.0-or-later
// Windows on the screen: the frame and its pages, dialogs, closing, pointer, life and death of widgets.
#include <gtest/gtest.h>

#include <QAction>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QWindow>
#include <QtTest/QTest>

#include "desktop/layouts/layouts.h"
#include "desktop/support/screen.h"

namespace vlt::test {
namespace {

using namespace layout;

class Frame : public Form {
 public:
  explicit Frame(Windows& windows) : Form(windows, "Frame", FormPlace::kFrame) {
    SetCaption("Product");
    tools.SetCaption("Tools");
    item.SetCaption("Item");
    bare.SetCaption("Bare");
    item.on_click = [this] { ++items; };
  }
  void Form_Unload(int& cancel) override {
    ++unloads;
    cancel = refuses ? -1 : 0;
  }
  PushButton first{*this, "first"};
  MenuItem tools{*this, "tools"};
  MenuItem item{*this, "item", &tools};
  MenuItem bare{*this, "bare"};
  StatusBar status{*this, "status", 3};
  bool refuses = true;
  int items = 0;
  static inline int unloads = 0;
};

class Page : public Form {
 public:
  Page(Windows& windows, const char* name) : Form(windows, name, FormPlace::kPage) { SetCaption(name); }
  TextBox text{*this, "text"};
  PushButton read{*this, "ReadParameter"};
};
class PageA : public Page {
 public:
  explicit PageA(Windows& windows) : Page(windows, "PageA") {}
};
class PageB : public Page {
 public:
  explicit PageB(Windows& windows) : Page(windows, "PageB") {}
};

// A window whose button waits, as an exchange does, and is unloaded meanwhile.
class Waiting : public Form {
 public:
  explicit Waiting(Windows& windows) : Form(windows, "Waiting", FormPlace::kWindow) {
    go.on_click = [this] {
      Machine().events.Post([this] { List().Run([this] { List().Unload("Waiting"); }); });
      const auto until = Machine().clock.NowMs() + 50;
      while (Machine().clock.NowMs() < until) Machine().events.GiveWay(until);
      ended = true;
    };
    leave.on_click = [this] { List().Unload("Waiting"); };
  }
  PushButton go{*this, "go"};
  PushButton leave{*this, "leave"};
  static inline bool ended = false;
};

constexpr LayoutItem kFrameItems[] = {
    Columns(), Column(), Navigation("first"), Column(), PageArea(), EmptyPage(),
    End(),     End(),    Strip("status"),
};
constexpr LayoutItem kWaitingItems[] = {Strip("go", "leave")};

class WindowsTest : public testing::Test {
 protected:
  WindowsTest() {
    screen.Add<Frame>("Frame", {"Frame", WindowStyle::kFrame, kFrameItems});
    screen.Add<PageA>("PageA", {"PageA", WindowStyle::kPage, {}});
    screen.Add<PageB>("PageB", {"PageB", WindowStyle::kPage, {}});
    screen.Add<Waiting>("Waiting", {"Waiting", WindowStyle::kDialog, kWaitingItems, "go", "leave"});
  }
  std::string PageOnTop() {
    screen.desktop.Flush();
    return FromQt(screen.desktop.View("Frame")->PageArea()->currentWidget()->objectName());
  }
  Screen screen;
};

TEST_F(WindowsTest, TheTopmostVisiblePageShows) {
  screen.Show<Frame>("Frame");
  EXPECT_EQ(PageOnTop(), "empty");
  auto& a = screen.Show<PageA>("PageA");
  auto& b = screen.Show<PageB>("PageB");
  EXPECT_EQ(PageOnTop(), "PageB");
  EXPECT_EQ(screen.hands.Window("Frame").windowTitle(), "Product - [PageB]");
  EXPECT_EQ(screen.hands.Text("Frame", "pageTitle"), "PageB");
  a.Show();
  EXPECT_EQ(PageOnTop(), "PageA");
  screen.hands.Type("PageA", "text", "kept");
  a.Hide();
  EXPECT_EQ(PageOnTop(), "PageB") << "it was open all the time";
  b.Hide();
  EXPECT_EQ(PageOnTop(), "empty");
  a.Show();
  EXPECT_EQ(screen.hands.Text("PageA", "text"), "kept");
  screen.windows.Unload("PageA");
  EXPECT_EQ(PageOnTop(), "empty");
}

TEST_F(WindowsTest, ShortCutsReachThePageOnTopOnly) {
  screen.Show<Frame>("Frame");
  int a = 0;
  int b = 0;
  screen.Show<PageA>("PageA").read.on_click = [&] { ++a; };
  auto& top = screen.Show<PageB>("PageB");
  top.read.on_click = [&] { ++b; };
  top.read.SetCaption("Tools");
  screen.hands.Key("Frame", "Ctrl+R");
  EXPECT_EQ(a, 0);
  EXPECT_EQ(b, 1);
  EXPECT_EQ(screen.hands.Widget("PageB", "ReadParameter").toolTip(), "Ctrl+R");
  EXPECT_EQ(screen.hands.Text("PageB", "ReadParameter"), "T&ools") << "T is the menu's";
}

TEST_F(WindowsTest, MenusPressTheirItems) {
  auto& frame = screen.Show<Frame>("Frame");
  screen.hands.Menu("Frame", "item");
  EXPECT_EQ(frame.items, 1);
  QWidget& window = screen.hands.Window("Frame");
  EXPECT_EQ(window.findChild<QAction*>("tools")->text(), "&Tools");
  frame.tools.SetEnabled(false);
  frame.item.SetCaption("R && D");
  screen.desktop.Flush();
  EXPECT_FALSE(window.findChild<QAction*>("tools")->isEnabled());
  EXPECT_EQ(window.findChild<QAction*>("item")->text(), "&R && D");
  EXPECT_FALSE(window.findChild<QAction*>("item")->isEnabled()) << "as its menu";
  // An item that stays usable keeps its menu open.
  frame.item.SetStaysUsable(true);
  screen.desktop.Flush();
  EXPECT_TRUE(window.findChild<QAction*>("tools")->isEnabled());
  screen.hands.Menu("Frame", "item");
  EXPECT_EQ(frame.items, 2);
  frame.bare.SetVisible(false);
  screen.desktop.Flush();
  EXPECT_FALSE(window.findChild<QAction*>("bare")->isVisible());
}

TEST_F(WindowsTest, ClosingIsTheLogicsDecision) {
  auto& frame = screen.Show<Frame>("Frame");
  QPointer<QWidget> window = &screen.hands.Window("Frame");
  Frame::unloads = 0;
  window->close();
  EXPECT_EQ(Frame::unloads, 1);
  EXPECT_TRUE(window->isVisible()) << "the logic refused";
  frame.SetCloseCommand(false);
  screen.desktop.Flush();
  EXPECT_FALSE(window->windowHandle()->flags().testFlag(Qt::WindowCloseButtonHint));
  window->close();
  EXPECT_EQ(Frame::unloads, 1) << "there is no close command";
  frame.SetCloseCommand(true);
  frame.refuses = false;
  screen.desktop.Flush();
  EXPECT_TRUE(window->windowHandle()->flags().testFlag(Qt::WindowCloseButtonHint));
  window->close();
  EXPECT_EQ(screen.windows.Find("Frame"), nullptr);
  EXPECT_TRUE(WaitFor([&] { return window == nullptr; }));
  EXPECT_TRUE(WaitFor([&] { return screen.host.events.IsEnding(); })) << "no window is left";
}

TEST_F(WindowsTest, AWindowGoneInItsOwnHandlerStaysWholeUntilTheHandlerEnds) {
  screen.Show<Frame>("Frame");
  for (const char* key : {"", "Return", "Enter"}) {
    screen.Show<Waiting>("Waiting");
    QPointer<QWidget> window = &screen.hands.Window("Waiting");
    for (const auto* short_cut : window->findChildren<QShortcut*>()) EXPECT_FALSE(short_cut->autoRepeat());
    Waiting::ended = false;
    *key == '\0' ? screen.hands.Click("Waiting", "go") : screen.hands.Key("Waiting", key);
    EXPECT_TRUE(Waiting::ended) << key;
    EXPECT_EQ(screen.windows.Find("Waiting"), nullptr);
    EXPECT_TRUE(WaitFor([&] { return window == nullptr; }));
  }
  screen.Show<Waiting>("Waiting");
  screen.hands.Key("Waiting", "Esc");
  EXPECT_EQ(screen.windows.Find("Waiting"), nullptr);
}

TEST_F(WindowsTest, ADialogStandsInTheMiddleEachTimeItIsShown) {
  auto& dialog = screen.Show<Waiting>("Waiting");
  QWidget& window = screen.hands.Window("Waiting");
  // The system's own trim comes around it once it is shown.
  const auto stands_at = [&](QPoint middle) {
    return (window.frameGeometry().center() - middle).manhattanLength() <= 6;
  };
  EXPECT_TRUE(stands_at(QGuiApplication::primaryScreen()->availableGeometry().center()));
  screen.Show<Frame>("Frame");
  QWidget& frame = screen.hands.Window("Frame");
  for (const int left : {20, 60}) {
    dialog.Hide();
    screen.desktop.Flush();
    EXPECT_FALSE(window.isVisible());
    frame.setGeometry(left, 30, 500, 400);
    dialog.SetCaption("Waits");
    dialog.Show();
    screen.desktop.Flush();
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(stands_at(frame.frameGeometry().center())) << left;
    EXPECT_EQ(window.windowTitle(), "Waits");
  }
  EXPECT_EQ(window.windowHandle()->transientParent(), frame.windowHandle());
}

TEST_F(WindowsTest, AnOperationShowsTheHourglass) {
  {
    Screen ending;
    ending.windows.SetMousePointer(kHourglassPointer);
  }
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << "it ends with the program";
  screen.windows.SetMousePointer(kHourglassPointer);
  ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
  screen.windows.SetMousePointer(kNormalPointer);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

class Laid : public Form {
 public:
  explicit Laid(Windows& windows) : Form(windows, "Laid", FormPlace::kWindow) {
    caption(1).SetCaption("a longer caption");
    for (int i = 0; i < 2; ++i) unit(i).SetCaption("m");
    for (Label* label : {&title, &caption(0), &caption(2)}) label->SetCaption("short");
    list.SetItems({std::string(60, 'w')});
  }
  ControlArray<Label> caption{*this, "caption", Indexes(3)}, unit{*this, "unit", Indexes(2)};
  ControlArray<TextBox> entry{*this, "entry", Indexes(2)};
  ComboBox list{*this, "list"};
  Label title{*this, "title"};
  PushButton go{*this, "go"};
  Grid grid{*this, "grid", 2, 1};
};

TEST_F(WindowsTest, RowsAreAlignedAndWhatIsWideTakesTheRoomThatIsLeft) {
  static constexpr LayoutItem kItems[] = {
      Box(),
      Row("caption(0)", "entry(0)", "unit(0)"),
      Row("caption(1)", "list"),
      End(),
      Box(),
      Row("caption(2)", "entry(1)", "unit(1)"),
      End(),
      Strip("*title", ">", "go"),
      Wide("grid"),
  };
  screen.Add<Laid>("Laid", {"Laid", WindowStyle::kTool, kItems});
  auto& form = screen.Show<Laid>("Laid");
  QWidget& window = screen.hands.Window("Laid");
  const auto widget = [&](const char* name) -> QWidget& { return screen.hands.Widget("Laid", name); };
  const auto place = [&](const char* name) {
    return QRect(widget(name).mapTo(&window, QPoint()), widget(name).size());
  };
  for (const char* caption : {"a longer caption", "one that is longer than all others before"}) {
    form.caption(1).SetCaption(caption);
    for (const char* entry : {"entry(0)", "list", "entry(1)"}) {
      EXPECT_TRUE(WaitFor([&] {
        return place(entry).left() > place("caption(1)").left() + widget("caption(1)").sizeHint().width();
      })) << entry;
      EXPECT_EQ(place(entry).left(), place("entry(0)").left()) << entry;
    }
    EXPECT_EQ(place("entry(0)").right(), place("entry(1)").right());
    EXPECT_EQ(place("list").right(), place("unit(0)").right()) << "it takes the unit's room as well";
  }
  for (const char* entry : {"entry(0)", "entry(1)"}) {
    EXPECT_EQ(dynamic_cast<QLineEdit&>(widget(entry)).alignment(), Qt::AlignRight);
  }
  EXPECT_GT(widget("title").font().pointSizeF(), widget("caption(0)").font().pointSizeF());
  const int height = place("grid").height(), width = place("grid").width(), gap = place("unit(0)").right();
  EXPECT_EQ(place("go").right(), place("grid").right());
  EXPECT_LT(window.width(), widget("list").fontMetrics().horizontalAdvance(QString(60, 'w')));
  window.resize(window.size() + QSize(50, 70));
  EXPECT_TRUE(WaitFor([&] { return place("grid").size() == QSize(width + 50, height + 70); }));
  EXPECT_EQ(place("go").right(), place("grid").right());
  EXPECT_EQ(place("unit(0)").right(), gap + 50);
}

TEST(WindowPlaceTest, StartsOnAScreenThatIsThere) {
  const QRect laptop(0, 0, 1366, 768), desk(1366, 0, 1920, 1040);
  const QSize wanted(1280, 800);
  const auto start = [&](const std::optional<WindowPlace>& last, const QList<QRect>& screens) {
    return StartPlace(last, wanted, screens).area;
  };
  EXPECT_TRUE(laptop.contains(start({}, {laptop}).marginsAdded(kUsualFrame))) << "title bar and all";
  EXPECT_EQ(start({}, {desk, laptop}), QRect(QPoint(desk.center() - QPoint(639, 399)), wanted));
  const WindowPlace last{QRect(1500, 100, 1000, 700), true};
  EXPECT_EQ(StartPlace(last, wanted, {laptop, desk}), last);
  EXPECT_TRUE(laptop.contains(start(last, {laptop}))) << "the other screen is gone";
  EXPECT_TRUE(StartPlace(last, wanted, {laptop}).maximised);
  for (const QRect& strip : {QRect(1360, 100, 1000, 700), QRect(100, 760, 1000, 700)}) {
    EXPECT_EQ(start(WindowPlace{strip}, {laptop}), start({}, {laptop})) << "as good as not seen";
  }
  const WindowPlace too_large{QRect(-100, 300, 1900, 1000)};
  EXPECT_TRUE(laptop.contains(start(too_large, {laptop}).marginsAdded(kUsualFrame)));
}

TEST_F(WindowsTest, TablesThatDontFitTheFormAreNoticed) {
  static constexpr LayoutItem kItems[] = {Strip("go", "nobody")};
  screen.Add<Waiting>("Waiting", {"Waiting", WindowStyle::kDialog, kItems});
  screen.Show<Waiting>("Waiting");
  const BuiltWindow& built = screen.desktop.View("Waiting")->Built();
  EXPECT_EQ(built.unknown, std::vector<std::string>{"nobody"});
  EXPECT_EQ(built.unplaced, std::vector<std::string>{"leave"});
  EXPECT_TRUE(screen.hands.Widget("Waiting", "leave").isVisible()) << "reachable all the same";
}

}  // namespace
}  // namespace vlt::test

// SPDX-License-Identifier: GPL-3.0-or-later
// The program's own windows: every control has its place, nothing is cut off, closing asks the logic.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QTabWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest/QTest>
#include <algorithm>
#include <functional>

#include "calc/frm_calc.h"
#include "desktop/layouts/layouts.h"
#include "desktop/program.h"
#include "desktop/qt_text.h"
#include "desktop/window_place.h"
#include "firmware/frm_maint_main.h"
#include "live/form12.h"
#include "pages/parameter_page.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_firmware.h"
#include "shell/mdi_form1.h"
#include "tour/hands.h"
#include "values/code_tables.h"

namespace vlt::test {
namespace {

constexpr int kEnglish = 5000;
constexpr int kLongest = static_cast<int>(Language::kThird);

// A third language whose texts are an eighth longer than those of either.
void MakeLongest() {
  const QFontMetrics metrics(QApplication::font());
  const auto width = [&](const char* text) { return metrics.size(0, ToQt(text)).width(); };
  MakeThirdLanguage([&](const char* japanese, const char* english) {
    const std::string longer = width(japanese) > width(english) ? japanese : english;
    return longer + std::string(longer.size() / 8, '~');
  });
}

class ProgramTest : public testing::TestWithParam<int> {
 protected:
  ProgramTest() : program(FromQt(folder.path())), hands(program.Screen()) {
    app.state.LangOffset = GetParam();
    app.state.ModelCode = "M627";
    app.state.IniFilePath = FromQt(folder.filePath("VLT.ini"));
  }
  ~ProgramTest() override {
    if (program.IsEnding()) ForgetEnd();
  }
  // The window as it stands in front of an operator: dressed and filled.
  Form& Open(const std::string& name) {
    MDIForm1& frame = MainWindow(app);
    frame.Dress();
    frame.Show();
    hands.Window("MDIForm1").resize(1280, 800);
    Form& form = app.windows.Load(name);
    form.RunHook(&FormHooks::FrmInit);
    form.Show();
    hands.Window(name);
    QApplication::processEvents();
    return form;
  }

  QTemporaryDir folder;
  Program program;
  App& app = program.Logic();
  Hands hands;
};

// What holds in a language to come, too.
class LayoutTest : public ProgramTest {
 protected:
  LayoutTest() {
    if (GetParam() == kLongest) MakeLongest();
  }
};

bool HasWidget(const Control& control) {
  return control.Kind() != ControlKind::kTimer && control.Kind() != ControlKind::kMenuItem;
}

bool IsCutOff(const QWidget& widget) {
  const bool shows_text = dynamic_cast<const QLabel*>(&widget) != nullptr ||
                          dynamic_cast<const QAbstractButton*>(&widget) != nullptr;
  const bool gives_way = widget.sizePolicy().horizontalPolicy() == QSizePolicy::Ignored;
  if (!shows_text || gives_way || !widget.isVisible()) return false;
  const QSize wanted = widget.sizeHint();
  return widget.width() < wanted.width() || widget.height() < wanted.height();
}

// Either the layout or the page itself says how wide the columns are.
TEST_P(ProgramTest, GridsHaveTheWidthsOfTheirLayout) {
  int shaped = 0;
  for (const std::string& name : app.windows.RegisteredNames()) {
    for (const Control* control : Open(name).Controls()) {
      if (control->Kind() != ControlKind::kGrid) continue;
      SCOPED_TRACE(control->Name());
      const auto& grid = static_cast<const Grid&>(*control);
      const GridShape* shape = FindGridShape(name, grid.Name());
      ASSERT_EQ(shape != nullptr, grid.ColumnWidth(0) == Grid::kOfLayout);
      if (shape == nullptr) continue;
      ++shaped;
      ASSERT_EQ(static_cast<int>(shape->columns.size()), grid.Columns());
      const auto& table = dynamic_cast<const QTableWidget&>(hands.Widget(name, grid.Name()));
      EXPECT_GE(table.minimumWidth(), shape->width / 15);
      for (int column = 0; column + 1 < grid.Columns(); ++column) {
        EXPECT_EQ(table.columnWidth(column), shape->columns[static_cast<std::size_t>(column)] / 15) << column;
      }
    }
  }
  EXPECT_EQ(shaped, 7);
}

TEST_P(LayoutTest, EveryControlHasItsPlaceAndNothingIsCutOff) {
  for (const std::string& name : app.windows.RegisteredNames()) {
    SCOPED_TRACE(name);
    Form& form = Open(name);
    const BuiltWindow& built = program.Screen().View(name)->Built();
    EXPECT_EQ(built.unknown, std::vector<std::string>());
    EXPECT_EQ(built.unplaced, std::vector<std::string>());
    std::size_t with_widget = 0;
    for (const Control* control : form.Controls()) with_widget += HasWidget(*control) ? 1 : 0;
    EXPECT_EQ(built.bindings.size(), with_widget) << "each once";
    QWidget& window = hands.Window(name);
    EXPECT_EQ(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint), form.Place() == FormPlace::kOnTop);
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
      const auto* label = dynamic_cast<const QLabel*>(widget);
      const std::string text = label != nullptr ? FromQt(label->text()) : "";
      EXPECT_FALSE(IsCutOff(*widget)) << FromQt(widget->objectName()) << " " << text;
      if (label == nullptr) continue;
      EXPECT_EQ(label->sizeHint(), label->QLabel::sizeHint()) << "as Qt measures it: " << text;
      EXPECT_EQ(label->minimumSizeHint(), label->QLabel::minimumSizeHint()) << text;
    }
    if (const auto* scroll = dynamic_cast<QScrollArea*>(&window)) {
      EXPECT_EQ(scroll->horizontalScrollBar()->maximum(), 0) << "pixels too wide";
      EXPECT_EQ(scroll->verticalScrollBar()->maximum(), 0) << "pixels too high";
    }
    if (name != "MDIForm1") app.windows.Unload(name);
  }
}

TEST_P(ProgramTest, AnOpenCalculatorFollowsTheUnitSystemWhenItIsClickedToTheFront) {
  app.state.UnitFlag = 0;
  auto& calc = static_cast<frmCalc&>(Open("frmCalc"));
  hands.Type("frmCalc", "OUTER_DIAMETERText", "100");
  const auto bring_to_front = [&](const char* name) {
    hands.Window(name).activateWindow();
    QApplication::processEvents();
    EXPECT_TRUE(hands.Window(name).isActiveWindow()) << name;
  };
  bring_to_front("MDIForm1");
  app.state.UnitFlag = 1;
  bring_to_front("frmCalc");
  EXPECT_EQ(calc.Label8(0).Caption(), "inch");
  EXPECT_EQ(calc.OUTER_DIAMETERText.Text(), "3.9370");
}

TEST_P(ProgramTest, TheKeyThatEndsAnOpenListPressesNoButton) {
  auto& calc = static_cast<frmCalc&>(Open("frmCalc"));
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
    auto& list = dynamic_cast<QComboBox&>(hands.Widget("frmCalc", "SENSOR_TYPECombo"));
    QTest::mouseClick(&list, Qt::LeftButton);
    ASSERT_TRUE(WaitFor([&] { return list.view()->isVisible(); }));
    list.view()->setCurrentIndex(list.model()->index(4, 0));
    QTest::keyClick(list.view(), key);
    QApplication::processEvents();
    EXPECT_FALSE(list.view()->isVisible());
    ASSERT_NE(app.windows.Find("frmCalc"), nullptr) << "closed with what was typed";
    EXPECT_EQ(calc.SENSOR_TYPECombo.ListIndex(), 4);
    EXPECT_EQ(calc.txtResult1Text.Text(), "") << "calculated";
  }
}

// Everything beside it that shows something, of the widgets with the same parent.
std::vector<QWidget*> Neighbours(const QWidget& mark) {
  std::vector<QWidget*> neighbours;
  for (QWidget* widget : mark.parentWidget()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    const bool box = qobject_cast<QGroupBox*>(widget) != nullptr;  // its own children lie in it
    if (widget != &mark && widget->isVisible() && !box) neighbours.push_back(widget);
  }
  return neighbours;
}

TEST_P(ProgramTest, MarksOfOriginStandFreeBesideTheEntriesOfAllPages) {
  int marks = 0;
  for (const std::string& name : app.windows.RegisteredNames()) {
    auto* page = dynamic_cast<ParameterPage*>(&Open(name));
    if (page == nullptr) continue;
    SCOPED_TRACE(name);
    for (const auto& column : page->Columns()) {
      for (const Field& field : column->Fields()) {
        Control& entry = field.options[1] != nullptr ? *field.options[1] : field.Entry();
        for (Control* other : page->Controls()) {
          if (auto* tabs = dynamic_cast<TabControl*>(other)) {
            tabs->SetTabEnabled(&column == &page->Columns().front() ? 0 : 1, true);
            tabs->SetTab(&column == &page->Columns().front() ? 0 : 1);
          }
        }
        entry.SetOrigin(ValueOrigin::kTyped, "told");
        program.Screen().Flush();
        QApplication::processEvents();
        const QWidget& widget = hands.Widget(name, entry.FullName().c_str());
        auto* mark = hands.Window(name).findChild<QWidget*>("origin of " + widget.objectName());
        ASSERT_NE(mark, nullptr) << entry.FullName();
        EXPECT_EQ(mark->isVisible(), widget.isVisible()) << entry.FullName();
        EXPECT_LT(mark->geometry().right(), widget.geometry().left()) << entry.FullName();
        EXPECT_TRUE(mark->parentWidget()->rect().contains(mark->geometry())) << entry.FullName();
        for (const QWidget* neighbour : Neighbours(*mark)) {
          EXPECT_FALSE(neighbour->geometry().intersects(mark->geometry()))
              << entry.FullName() << " and " << FromQt(neighbour->objectName());
        }
        marks += mark->isVisible();
      }
    }
    app.windows.Unload(name);
  }
  EXPECT_GT(marks, 90);
}

// The widest text that a field is made for: as many digits as may be typed, else a total with its sign.
std::string WidestText(const TextBox& box) {
  return box.MaxLength() > 0 ? std::string(static_cast<std::size_t>(box.MaxLength()), '8')
                             : "-12345678.12345";
}

// Frame and margins around the text of a field.
int TextRoom(const QLineEdit& field) {
  constexpr int kBesideText = 2 * (2 + 2);
  return field.width() - kBesideText;
}

TEST_P(ProgramTest, FieldsHaveRoomForTheWidestValueOrTellIt) {
  for (const std::string& name : app.windows.RegisteredNames()) {
    SCOPED_TRACE(name);
    Form& form = Open(name);
    for (Control* control : form.Controls()) {
      if (control->Kind() != ControlKind::kTextBox) continue;
      auto& box = static_cast<TextBox&>(*control);
      const std::string text = WidestText(box);
      box.on_change = nullptr;
      box.SetText(text);
      auto* field = hands.Window(name).findChild<QLineEdit*>(ToQt(box.FullName()));
      ASSERT_NE(field, nullptr) << box.FullName();
      field->clearFocus();
      program.Screen().Flush();
      EXPECT_EQ(FromQt(field->text()), text) << box.FullName() << " holds less than the logic";
      const bool fits = field->fontMetrics().horizontalAdvance(field->text()) <= TextRoom(*field);
      const bool told = field->toolTip().startsWith(field->text()) && field->cursorPosition() == 0;
      EXPECT_TRUE(fits || told) << box.FullName();
      const bool measured =
          name == "Form9" && box.MaxLength() == 0 && box.Name().starts_with("txt") && box.Name() != "txtRAS";
      EXPECT_TRUE(fits || !measured) << box.FullName() << " " << TextRoom(*field);
    }
    if (name != "MDIForm1") app.windows.Unload(name);
  }
}

// Whatever a run has to tell, the window is as large as before it, and a usual screen has room for it.
TEST_P(ProgramTest, TheFirmwareToolKeepsItsSize) {
  auto& tool = static_cast<frmMaint_MAIN&>(Open("frmMaint_MAIN"));
  QWidget& window = hands.Window("frmMaint_MAIN");
  const QSize before = window.size();
  std::string told;
  for (int i = 0; i < kFwModules; ++i) {
    const std::string stem = FwModules()[static_cast<std::size_t>(i)].stem;
    for (const auto* images : {&tool.lblImage, &tool.lblImage_up})
      (*images)(i).SetCaption(FormatText(app.Text(text::kFwImage), {"983040", "0123456789abcdef"}));
    for (const auto* results : {&tool.txtDL_Result, &tool.txtResult}) (*results)(i).SetText("File Error");
    told += FormatText(app.Text(text::kFwBreaksOff), {stem}) + "\n" + stem + "_20261124100000.bin\n";
  }
  told +=
      app.Text(text::kFwKeepPower) + "\n" + FormatText(app.Text(text::kFwJournal), {std::string(90, 'm')});
  tool.lblNote.SetCaption(told);
  for (const int tab : {1, 0}) {
    tool.SSTab1.SetTab(tab);
    program.Screen().Flush();
    QApplication::processEvents();
    EXPECT_EQ(window.size(), before);
    for (const char* name : {"lblBoot", "lblAfterNg", "lblNote"}) {
      const QWidget& label = hands.Widget("frmMaint_MAIN", name);
      EXPECT_EQ(label.visibleRegion().boundingRect(), label.rect()) << name << " is whole";
    }
  }
  tool.lblNote.SetCaption(told + told + told);
  program.Screen().Flush();
  QApplication::processEvents();
  EXPECT_EQ(window.size(), before);
  const QRect frame = window.rect().marginsAdded(kUsualFrame);
  EXPECT_TRUE(frame.width() <= 1280 && frame.height() <= 800) << frame.width() << " x " << frame.height();
}

// It stands there before anything is pressed: what can happen, and what to do then, step behind step.
TEST_P(ProgramTest, TheFirmwareToolTellsWhatToDoAfterNg) {
  Open("frmMaint_MAIN");
  EXPECT_TRUE(hands.Widget("frmMaint_MAIN", "lblBoot").isVisible());
  EXPECT_TRUE(hands.Text("frmMaint_MAIN", "lblBoot").starts_with("KRT_BOOT "));
  const std::string steps = hands.Text("frmMaint_MAIN", "lblAfterNg");
  std::size_t at = 0;
  for (const char* step : {"NG", "\n1. ", "\n2. ", "\n3. ", "SUCCESS", "VERIFICATION", "\n5. "}) {
    at = steps.find(step, at);
    EXPECT_NE(at, std::string::npos) << step << " in " << steps;
  }
}

// The window comes up by itself; a key that was meant for Execute must not cancel the run.
TEST_P(ProgramTest, EnterDoesNotCancelAFirmwareRun) {
  Form& wait = Open("frmMaint_Wait");
  QWidget& button = hands.Widget("frmMaint_Wait", "cmdCan");
  hands.Window("frmMaint_Wait").activateWindow();
  button.setFocus();
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) QTest::keyClick(&button, key);
  EXPECT_EQ(app.state.FwCancelFlag, 0);
  EXPECT_TRUE(button.isEnabled());
  hands.Key("frmMaint_Wait", "Esc");
  EXPECT_EQ(app.state.FwCancelFlag, 1);
  wait.Hide();
}

// At their widest all at once: units, polls of some days, and what a station shows.
TEST_P(ProgramTest, StationsHaveRoomForTheirWidestTexts) {
  auto& page = static_cast<Form12&>(Open("Form12"));
  page.lblFailed.ForEach([](Label& label) { label.SetCaption("12345/67890"); });
  page.lblAnswered.ForEach([](Label& label) { label.SetCaption("20:58:48"); });
  const std::string silent = app.Text(1964);
  const auto& alarms = AlarmRows(LanguageOf(GetParam()));
  const std::string alarm = *std::ranges::max_element(alarms, {}, &std::string::size);
  const struct {
    std::string shown;
    const char* units[2];
  } rows[] = {{silent, {"[BBL/min]", "[MBTU/h]"}},
              {"-123456789012.345", {"[mBBL]", "[kBTU/h]"}},
              {alarm, {"[BBL/min]", ""}}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.shown);
    for (int i = 0; i < 31; ++i) {
      page.lblUnit1(i).SetCaption(row.units[0]);
      page.lblUnit2(i).SetCaption(row.units[1]);
      for (TextBox* box : {&page.txtDisp1(i), &page.txtDisp2(i)}) box->SetText(row.shown);
    }
    program.Screen().Flush();
    QApplication::processEvents();
    const auto& scroll = dynamic_cast<QScrollArea&>(hands.Window("Form12"));
    EXPECT_EQ(scroll.horizontalScrollBar()->maximum(), 0) << "pixels too wide";
    for (const QLineEdit* field : scroll.findChildren<QLineEdit*>()) {
      if (!field->objectName().startsWith("txtDisp")) continue;
      const int wanted = field->fontMetrics().horizontalAdvance(field->text());
      EXPECT_LE(wanted, TextRoom(*field)) << FromQt(field->objectName());
    }
  }
}

TEST_P(ProgramTest, ATestStateIsABarAbovePagesInTheNarrowestWindowToo) {
  Open("Form7");
  QWidget& bar = hands.Widget("MDIForm1", "lblTestState");
  EXPECT_FALSE(bar.isVisible());
  app.state.MetersInTest = {{.port = 1, .station = 1}, {.port = 1, .station = 2}, {.port = 10, .station = 0}};
  app.frame->ShowTestState();
  QWidget& window = *hands.Window("MDIForm1").window();
  for (const int width : {1280, window.minimumWidth()}) {
    window.resize(width, 800);
    program.Screen().Flush();
    QApplication::processEvents();
    EXPECT_TRUE(bar.isVisible());
    EXPECT_GE(bar.height(), bar.heightForWidth(bar.width())) << "the text is whole";
    EXPECT_LE(bar.mapTo(&window, bar.rect().bottomRight()).x(), width);
    EXPECT_EQ(bar.palette().color(QPalette::Window), QColor(0xC8, 0x30, 0x20));
  }
  app.state.MetersInTest.clear();
  app.frame->ShowTestState();
  program.Screen().Flush();
  EXPECT_FALSE(bar.isVisible());
}

TEST_P(ProgramTest, TheMainWindowComesBackWhereItWasLeft) {
  const QRect left(6, 80, 780, 640);
  BoxAnswers boxes;
  Open("Form10");
  QWidget& window = *hands.Window("MDIForm1").window();
  window.setMinimumSize(400, 300);
  window.setGeometry(left);
  EXPECT_FALSE(QFile::exists(folder.filePath("VLT.ini"))) << "kept at the end only";
  const auto end = [&](QWidget& frame) {
    boxes.Lay(app.Text(4500), false);
    frame.close();
    ForgetEnd();
  };
  end(window);
  EXPECT_TRUE(program.IsEnding());
  for (const bool maximised : {false, true, true}) {
    Program next(FromQt(folder.path()));
    next.Logic().state.LangOffset = GetParam();
    next.Logic().state.ModelCode = "M627";
    next.Logic().state.IniFilePath = app.state.IniFilePath;
    MainWindow(next.Logic()).Show();
    Hands next_hands(next.Screen());
    QWidget& frame = next_hands.Window("MDIForm1");
    EXPECT_EQ(frame.isMaximized(), maximised);
    EXPECT_EQ(frame.normalGeometry(), left);
    frame.showMaximized();
    end(frame);
  }
  EXPECT_EQ(QDir(folder.path()).entryList({"*.bak"}), QStringList())
      << "it is no settings that anybody misses";
}

TEST_P(ProgramTest, TheStartShowsTheSplashOfTheSettings) {
  EXPECT_EQ(QApplication::style()->name(), "fusion");
  QFile file(folder.filePath("VLT.ini"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(GetParam() == 0 ? "[SYSTEM]\nVR=K410\n" : "[SYSTEM]\nVR=K410\nLANG_FLAG=1\n");
  file.close();
  EXPECT_TRUE(program.Start());
  EXPECT_TRUE(hands.Window("frmSplash_K410").windowFlags().testFlag(Qt::FramelessWindowHint));
  EXPECT_EQ(app.state.LangOffset, GetParam());
  Program second(FromQt(folder.path()));
  EXPECT_FALSE(second.Start()) << "there is one already";
  EXPECT_TRUE(second.IsEnding());
  ForgetEnd();
}

// A small laptop: what has no room is scrolled to, and the status line is always seen.
TEST_P(ProgramTest, ASmallScreenScrollsPagesAndKeepsTheStatusLine) {
  Open("Form9");
  QWidget& window = *hands.Window("MDIForm1").window();
  window.resize(1354, 724);
  QApplication::processEvents();
  EXPECT_EQ(window.size(), QSize(1354, 724)) << "nothing in it asks for more";
  const QWidget& status = hands.Widget("MDIForm1", "StatusBar1");
  EXPECT_LE(status.mapTo(&window, status.rect().bottomRight()).y(), window.height());
  EXPECT_FALSE(status.visibleRegion().isEmpty());
}

TEST_P(ProgramTest, AFaultInAHandlerOrBesideItIsTold) {
  Open("Form10");
  BoxAnswers boxes;
  const auto fail = [] { throw std::runtime_error("no room"); };
  app.frame->ExitButton().on_click = fail;
  for (const bool beside : {false, true}) {
    boxes.Lay(FormatText(app.Text(text::kHandlerFault), {"no room"}), true);
    beside ? app.platform.events.Post(fail) : hands.Click("MDIForm1", "Command13");
    EXPECT_TRUE(WaitFor([&] { return boxes.AllGiven(); })) << beside;
  }
  EXPECT_TRUE(boxes.trouble.empty());
}

// A signal ends the program when the operation on the line has ended, and stops what can be stopped.
TEST_P(ProgramTest, AnEndFromOutsideWaitsForTheOperationOnTheLine) {
  Form& compare = Open("frmCompare");
  auto& stop = static_cast<PushButton&>(*compare.Find("cmdStop"));
  stop.SetEnabled(true);
  app.state.UiLocked = true;
  bool stopped = false;
  stop.on_click = [&] { stopped = true; };
  program.EndBehindWork();
  EXPECT_TRUE(stopped);
  const auto wait = [](const std::function<bool()>& over) {
    for (int i = 0; i < 200 && !over(); ++i) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return over();
  };
  QTimer ticks;  // something to wait for
  int ticked = 0;
  QObject::connect(&ticks, &QTimer::timeout, [&] { ++ticked; });
  ticks.start(10);
  EXPECT_TRUE(wait([&] { return ticked >= 12; }));
  EXPECT_FALSE(program.IsEnding());
  app.state.UiLocked = false;
  EXPECT_TRUE(wait([&] { return program.IsEnding(); }));
}

const char* NameOf(int lang_offset) {
  constexpr const char* kNames[] = {"Japanese", "English", "Longest"};
  return kNames[lang_offset / kEnglish];
}
INSTANTIATE_TEST_SUITE_P(Languages, ProgramTest, testing::Values(0, kEnglish),
                         [](const auto& tested) { return NameOf(tested.param); });
INSTANTIATE_TEST_SUITE_P(Languages, LayoutTest, testing::Values(0, kEnglish, kLongest),
                         [](const auto& tested) { return NameOf(tested.param); });

}  // namespace
}  // namespace vlt::test

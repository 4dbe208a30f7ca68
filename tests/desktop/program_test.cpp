// The program's own windows: every control has its place, nothing is cut off, closing asks the logic.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>
#include <QTemporaryDir>

#include "desktop/program.h"
#include "desktop/qt_text.h"
#include "pages/page.h"
#include "shell/mdi_form1.h"
#include "tour/hands.h"

namespace vlt::test {
namespace {

constexpr int kEnglish = 5000;

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
    if (auto* page = dynamic_cast<PageForm*>(&form)) page->FrmInit();
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

TEST_P(ProgramTest, EveryControlHasItsPlaceAndNothingIsCutOff) {
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
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
      const auto* label = dynamic_cast<const QLabel*>(widget);
      const std::string text = label != nullptr ? FromQt(label->text()) : "";
      EXPECT_FALSE(IsCutOff(*widget)) << FromQt(widget->objectName()) << " " << text;
    }
    if (const auto* scroll = dynamic_cast<QScrollArea*>(&window)) {
      EXPECT_EQ(scroll->horizontalScrollBar()->maximum(), 0) << "pixels too wide";
      EXPECT_EQ(scroll->verticalScrollBar()->maximum(), 0) << "pixels too high";
    }
    if (name != "MDIForm1") app.windows.Unload(name);
  }
}

TEST_P(ProgramTest, ClosingIsRefusedWhileAnExchangeRuns) {
  Open("Form10");
  BoxAnswers boxes;
  QWidget& window = *hands.Window("MDIForm1").window();
  app.state.UiLocked = true;
  window.close();
  EXPECT_TRUE(window.isVisible());
  EXPECT_TRUE(boxes.seen.empty());
  app.state.UiLocked = false;
  boxes.Lay(app.Text(4500), false);
  window.close();
  EXPECT_EQ(boxes.seen.size(), 1u);
  EXPECT_FALSE(window.isVisible());
  EXPECT_TRUE(program.IsEnding());
  EXPECT_TRUE(QFile::exists(folder.filePath("VLT.ini")));
}

INSTANTIATE_TEST_SUITE_P(Languages, ProgramTest, testing::Values(0, kEnglish),
                         [](const auto& tested) { return tested.param == 0 ? "Japanese" : "English"; });

}  // namespace
}  // namespace vlt::test

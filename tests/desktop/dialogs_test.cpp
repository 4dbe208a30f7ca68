// SPDX-License-Identifier: GPL-3.0-or-later
// Message boxes, file dialogs, captions and mnemonics.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest/QTest>

#include "desktop/keys.h"
#include "desktop/qt_dialogs.h"
#include "desktop/qt_text.h"
#include "tour/hands.h"

namespace vlt::test {
namespace {

using enum MessageAnswer;

struct BoxCase {
  const char* name;
  MessageButtons buttons;
  bool second_is_default;
  const char* key;  // what the operator presses
  MessageAnswer answer;
};

const BoxCase kBoxes[] = {
    {"enter on one button", MessageButtons::kOk, false, "Return", kOk},
    {"escape on one button", MessageButtons::kOk, false, "Esc", kOk},
    {"enter takes the first", MessageButtons::kOkCancel, false, "Return", kOk},
    {"escape cancels", MessageButtons::kOkCancel, false, "Esc", kCancel},
    {"enter takes the default", MessageButtons::kYesNo, true, "Return", kNo},
    {"escape is no", MessageButtons::kYesNo, false, "Esc", kNo},
    {"the first of two", MessageButtons::kYesNo, false, "Return", kYes},
};

class MessageBoxTest : public testing::TestWithParam<BoxCase> {};

TEST_P(MessageBoxTest, Answers) {
  QtDialogs dialogs;
  dialogs.SetTexts([](int id) { return QString("word %1").arg(id); });
  Lookout lookout;
  lookout.When([] { return QApplication::activeModalWidget() != nullptr; },
               [] {
                 auto& box = dynamic_cast<QMessageBox&>(*QApplication::activeModalWidget());
                 EXPECT_EQ(box.text(), "<b>two</b>\nlines");
                 EXPECT_EQ(box.windowTitle(), "Veltrano3");
                 EXPECT_EQ(box.icon(), QMessageBox::Question);
                 for (const QAbstractButton* button : box.buttons()) {
                   EXPECT_TRUE(button->text().startsWith("word 32")) << FromQt(button->text());
                 }
                 QTest::keySequence(&box, QKeySequence(GetParam().key));
               });
  const MessageAnswer answer = dialogs.Ask({.text = "<b>two</b>\nlines",
                                            .title = "Veltrano3",
                                            .buttons = GetParam().buttons,
                                            .icon = MessageIcon::kQuestion,
                                            .second_is_default = GetParam().second_is_default});
  EXPECT_EQ(answer, GetParam().answer);
}

INSTANTIATE_TEST_SUITE_P(Boxes, MessageBoxTest, testing::ValuesIn(kBoxes), [](const auto& tested) {
  std::string name = tested.param.name;
  std::replace(name.begin(), name.end(), ' ', '_');
  return name;
});

TEST(MessageBoxes, ShowTheirSign) {
  QtDialogs dialogs;
  BoxAnswers answers;
  QMessageBox::Icon shown{};
  answers.on_box = [&](QWidget& box) { shown = dynamic_cast<QMessageBox&>(box).icon(); };
  for (const auto& [icon, sign] : {std::pair(MessageIcon::kStop, QMessageBox::Critical),
                                   {MessageIcon::kInformation, QMessageBox::Information},
                                   {MessageIcon::kNone, QMessageBox::NoIcon}}) {
    answers.Lay("told", true);
    dialogs.Ask({.text = "told", .title = "Veltrano3", .icon = icon});
    EXPECT_EQ(shown, sign);
  }
}

TEST(FileDialogs, BeginWhereTheLastOneEnded) {
  QTemporaryDir folder;
  ASSERT_TRUE(QDir(folder.path()).mkdir("inner"));
  const std::string outer = FromQt(folder.path()), inner = outer + "/inner";
  QtDialogs dialogs;
  BoxAnswers answers;
  std::string begins, suffix, name;
  answers.on_box = [&](QWidget& box) {
    auto& dialog = dynamic_cast<QFileDialog&>(box);
    begins = FromQt(dialog.directory().absolutePath());
    name = FromQt(dialog.findChild<QLineEdit*>("fileNameEdit")->text());
    dialog.filterSelected("Text (*.txt)");
    suffix = FromQt(dialog.defaultSuffix());
  };
  answers.LayFile(inner);
  EXPECT_EQ(dialogs.AskFolder({.text = "where", .folder = outer}), inner);
  EXPECT_EQ(begins, outer);
  answers.LayFile(outer + "/log.csv");
  FileQuestion question;
  question.filter = "CSV|*.csv|Text|*.txt";
  question.folder = outer + "/none";
  question.name = "a";
  EXPECT_EQ(dialogs.AskSaveFile(question), outer + "/log.csv");
  EXPECT_EQ(begins + " " + name + " " + suffix, inner + " a txt");
  answers.LayFile("");
  EXPECT_EQ(dialogs.AskFolder({.text = "where", .folder = ""}), std::nullopt);
  EXPECT_EQ(begins, outer);
  EXPECT_TRUE(answers.trouble.empty());
}

TEST(FileDialogs, OpenSaveAndCancel) {
  QTemporaryDir folder;
  const auto path = [&](const char* name) { return FromQt(folder.filePath(name)); };
  QFile(ToQt(path("there.ini"))).open(QIODevice::WriteOnly);
  QtDialogs dialogs;
  BoxAnswers answers;
  FileQuestion question;
  question.folder = FromQt(folder.path());
  question.filter = "Initial value(*.ini)|*.ini";
  answers.LayFile(path("there.ini"));
  EXPECT_EQ(dialogs.AskOpenFile(question), path("there.ini"));
  answers.LayFile("");
  EXPECT_EQ(dialogs.AskOpenFile(question), std::nullopt);
  answers.LayFile(path("new"));
  EXPECT_EQ(dialogs.AskSaveFile(question), path("new.ini")) << "the filter's suffix";
  question.ask_before_overwrite = true;
  answers.LayFile(path("there.ini"));
  answers.Lay("", true);
  EXPECT_EQ(dialogs.AskSaveFile(question), path("there.ini"));
  EXPECT_EQ(answers.seen.size(), 1u) << "overwriting is asked";
  EXPECT_TRUE(answers.trouble.empty());
}

TEST(FileDialogs, FiltersOfTheLogicInQtsWords) {
  struct Case {
    const char* filter;
    const char* qt;
    const char* suffix;
  };
  for (const Case& c : {Case{"Initial value(*.ini)|*.ini", "Initial value (*.ini)", "ini"},
                        Case{"CSV|*.csv;*.txt|All|*", "CSV (*.csv *.txt);;All (*)", "csv"},
                        Case{"All files|*.*", "All files (*.*)", ""}, Case{"", "", ""}}) {
    EXPECT_EQ(FromQt(QtFilter(c.filter)), c.qt);
    EXPECT_EQ(FromQt(DefaultSuffix(c.filter)), c.suffix);
  }
}

TEST(Captions, AmpersandsAndMnemonics) {
  EXPECT_EQ(PlainCaption("Get Unit && Language"), "Get Unit & Language");
  EXPECT_EQ(PlainCaption("&Save"), "Save");
  EXPECT_EQ(PlainCaption("end&"), "end");
  QSet<QChar> taken;
  const auto choose = [&](const char* caption, const char* control) {
    return FromQt(QString(ChooseMnemonic(ToQt(caption), control, taken)));
  };
  EXPECT_EQ(choose("CalcSensorSpacing", "x"), "C");
  EXPECT_EQ(choose("Communication", "x"), "o") << "no start is free";
  EXPECT_EQ(choose("SET ZERO", "x"), "S");
  EXPECT_EQ(choose("SELECT ZERO", "x"), "Z") << "the second word starts free";
  EXPECT_EQ(choose("読出し", "ReadParameter"), "R") << "no latin letters";
  EXPECT_EQ(choose("R", "R"), std::string(1, '\0')) << "all are taken";
}

}  // namespace
}  // namespace vlt::test

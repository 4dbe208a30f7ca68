// SPDX-License-Identifier: GPL-3.0-or-later
#include "tour/tour.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMainWindow>
#include <QPixmap>
#include <QRegularExpression>
#include <QWidget>

#include "desktop/qt_text.h"

namespace vlt::test {
namespace {

constexpr QSize kScreen(1280, 800);

constexpr const char* kOwnSettings =
    "[SYSTEM]\nVR=M627\nLANG_FLAG=1\nUSER_INFO=Service\n"
    "[COMM]\nPORT=10\nSPEED=38400\nPARITY=O\nSTOP_BIT=1\nTRANS_METHOD=RS232C\nSTATION_NO=01\nRETRY_NO=3\n"
    "[PORTS]\nCOM10=simulator\n";

// Of the stations some are silent while they are polled, and one has an alarm.
constexpr const char* kManyStations =
    "stations=1-31 fleet=on 1:unit=metric 1:lang=english fault=silence/04:3*ever fault=silence/04:17*ever "
    "fault=silence/04:18*ever fault=silence:29*ever 2:ras=1:0800";

QString Language(int lang_flag) { return lang_flag == 0 ? "ja" : "en"; }

}  // namespace

Tour::Tour(const Setting& setting)
    : setting_(setting),
      program_((WriteSettings(), std::make_unique<Program>(FromQt(folder_.path())))),
      hands_(program_->Screen()) {
  boxes_.on_box = [this](QWidget& box) {
    Keep(box, QString("box_%1_%2").arg(setting_.walk).arg(++boxes_seen_, 2, 10, QChar('0')));
  };
}

void Tour::WriteSettings() const {
  // What the program keeps for its user lies beside its settings.
  qputenv("XDG_DATA_HOME", folder_.path().toUtf8());
  QString settings(kOwnSettings);
  QFile given(QDir(setting_.folder).filePath("VLT.ini"));
  if (!setting_.folder.isEmpty()) {
    if (!given.open(QIODevice::ReadOnly)) throw Trouble("no VLT.ini in " + FromQt(setting_.folder));
    settings = QString::fromUtf8(given.readAll());
  }
  settings.replace(QRegularExpression("LANG_FLAG *=.*"), QString("LANG_FLAG=%1").arg(setting_.lang_flag));
  settings.replace(QRegularExpression("VR *=.*"), "VR=" + setting_.model);
  if (setting_.stations > 0) {
    settings.replace("TRANS_METHOD=RS232C", "TRANS_METHOD=RS485");
    settings.replace("COM10=simulator", QString("COM10=simulator ") + kManyStations);
  }
  QFile file(QDir(folder_.path()).filePath("VLT.ini"));
  if (!file.open(QIODevice::WriteOnly)) throw Trouble("the settings can't be written");
  file.write(settings.toUtf8());
}

std::string Tour::Text(int id) const { return program_->Logic().Text(id); }

void Tour::Expect(const std::string& what, const std::string& is, const std::string& should_be) {
  if (is != should_be) throw Trouble(what + ": \"" + is + "\" instead of \"" + should_be + "\"");
}

void Tour::ExpectSoon(const std::string& what, const std::function<bool()>& condition) {
  if (!WaitFor(condition, 15000)) throw Trouble("waited in vain: " + what);
}

void Tour::ExpectStatus(int id) {
  const std::string text = Text(id);
  const std::string panel = FromQt(ToQt(hands_.Panel("MDIForm1", "StatusBar1", 1)).trimmed());
  if (!panel.ends_with(text)) throw Trouble("status \"" + panel + "\" instead of \"" + text + "\"");
}

void Tour::ClickAndAnswer(const std::string& form, const std::string& button, const std::string& text,
                          bool first) {
  boxes_.Lay(text, first);
  hands_.Click(form, button);
}

bool Tour::IsShown(const char* form) const {
  const FormView* view = program_->Screen().View(form);
  return view != nullptr && view->Root() != nullptr && view->Root()->isVisible();
}

void Tour::Picture(const std::string& form, const std::string& name) {
  QWidget& window = *hands_.Window(form).window();
  if (auto* frame = qobject_cast<QMainWindow*>(&window)) frame->resize(kScreen);
  QCoreApplication::processEvents();  // the layout settles
  Keep(window, ToQt(name));
}

void Tour::Keep(QWidget& window, const QString& name) {
  if (!window.grab().save(PathOf(name))) throw Trouble("can't write " + FromQt(PathOf(name)));
}

void Tour::KeepImage(const QImage& image, const std::string& name) {
  if (!image.save(PathOf(ToQt(name)))) throw Trouble("can't write " + FromQt(PathOf(ToQt(name))));
}

QString Tour::PathOf(const QString& name) const {
  return QDir(setting_.pictures).filePath(name + "_" + Language(setting_.lang_flag) + ".png");
}

}  // namespace vlt::test

// SPDX-License-Identifier: GPL-3.0-or-later
// The whole program, ready to start: the machine by Qt, the logic, and the screen that shows it.
#pragma once

#include <QTimer>
#include <QTranslator>
#include <string>

#include "desktop/desktop.h"
#include "desktop/qt_dialogs.h"
#include "desktop/qt_printer.h"
#include "host/host.h"
#include "state/app.h"

namespace vlt {

// What every program with these windows sets up before it makes a QApplication's first window.
void DressApplication();

class Program {
 public:
  // `folder` holds VLT.ini; empty is the folder of the executable. Needs a QApplication.
  explicit Program(const std::string& folder);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  // Runs the start routine. False when the program is to end at once.
  bool Start();
  // Runs Qt's event loop until the program ends; its exit status.
  int Run();
  // Ends it from outside, without a question: work on the line is stopped behind the exchange in hand, and
  // the end comes when the interface is free.
  void EndBehindWork();

  App& Logic() { return app_; }
  Desktop& Screen() { return desktop_; }
  bool IsEnding() const { return host_.events.IsEnding(); }

 private:
  QTranslator qt_words_;
  QtDialogs dialogs_;
  QtPrinter printer_;
  Host host_;
  Platform platform_;
  App app_;
  Desktop desktop_;
  QTimer end_;
};

}  // namespace vlt

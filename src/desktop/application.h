// SPDX-License-Identifier: GPL-3.0-or-later
// The application of every program with these windows.
#pragma once

#include <QApplication>
#include <functional>
#include <string>

namespace vlt {

// Stops an exception before it reaches Qt's loop: that of a gesture ends in the window list, this is for what
// runs beside (a widget brought up to date, a task of the machine).
class Application : public QApplication {
 public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override;

  // Told what the exception says; without it the exception goes on.
  std::function<void(const std::string& what)> on_failure;
};

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/application.h"

#include <exception>

namespace vlt {

bool Application::notify(QObject* receiver, QEvent* event) {
  std::string what;
  try {
    return QApplication::notify(receiver, event);
  } catch (const std::exception& failure) {
    if (!on_failure) throw;
    what = failure.what();
  }
  on_failure(what);
  return false;
}

}  // namespace vlt

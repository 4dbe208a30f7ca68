// SPDX-License-Identifier: GPL-3.0-or-later
// The desktop tests need an application; they show nothing on a real screen unless they are told to.
#include <gtest/gtest.h>

#include <QStandardPaths>

#include "desktop/application.h"
#include "desktop/program.h"

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QStandardPaths::setTestModeEnabled(true);
  vlt::Application application(argc, argv);
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  vlt::DressApplication();
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}

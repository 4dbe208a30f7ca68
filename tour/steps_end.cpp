// SPDX-License-Identifier: GPL-3.0-or-later
// Closing the program.
#include <QDir>
#include <QFileInfo>

#include "desktop/qt_text.h"
#include "tour/tour.h"

namespace vlt::test {
namespace {

// The window's own close command, and the question whether to keep the settings.
void CloseProgram(Tour& tour) {
  const QString file =
      QDir(ToQt(tour.Running().Logic().platform.process.ProgramFolder())).filePath("pipe.ini");
  tour.Boxes().Lay(tour.Text(4500), true);
  tour.Boxes().LayFile(FromQt(file));
  tour.Operator().Window("MDIForm1").close();
  tour.ExpectSoon("the program's end", [&] { return tour.Running().IsEnding(); });
  if (!QFileInfo::exists(file)) throw Trouble("the settings were not saved");
}

// By the End button, with nothing to keep.
void Leave(Tour& tour) {
  tour.Boxes().Lay(tour.Text(4500), false);
  tour.Operator().Click("MDIForm1", "Command13");
  tour.ExpectSoon("the program's end", [&] { return tour.Running().IsEnding(); });
}

constexpr Step kEndSteps[] = {
    {"closes with the question about the settings", CloseProgram},
};
constexpr Step kLeaveSteps[] = {{"closes without keeping", Leave}};

}  // namespace

std::span<const Step> LeaveSteps() { return kLeaveSteps; }

std::span<const Step> EndSteps() { return kEndSteps; }

}  // namespace vlt::test

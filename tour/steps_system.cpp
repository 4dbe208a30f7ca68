// SPDX-License-Identifier: GPL-3.0-or-later
// System: read the page, read all settings into a report, and stop that half-way.
#include <QFile>
#include <QTemporaryDir>

#include "desktop/qt_text.h"
#include "resources/text_ids.h"
#include "tour/tour.h"

namespace vlt::test {
namespace {

constexpr const char* kSystemPage = "Form6";
constexpr int kReadCompleted = 4027;

// Acts once the read-out has come so far.
void WhenReading(Tour& tour, int text_id, const std::function<void()>& action) {
  const std::string what = tour.Text(text_id);
  tour.Meanwhile().When(
      [&tour, what] {
        return tour.Operator().Panel("MDIForm1", "StatusBar1", 1).find(what) != std::string::npos;
      },
      action);
}

void ReadSystem(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Click("MDIForm1", "Command6");
  tour.ExpectSoon("the page's buttons", [&] { return hands.Enabled(kSystemPage, "ReadParameter"); });
  tour.Picture("MDIForm1", "system");
  hands.Tick(kSystemPage, "chkCheck");
  hands.Tick(kSystemPage, "Read_All_Set_Data", false);
  hands.Click(kSystemPage, "ReadParameter");
  tour.ExpectStatus(kReadCompleted);
  for (const char* field :
       {"UNIT_SYSTEMCombo", "IDNUM_CONFIGText", "CONTROL_BOARDText", "txtType", "A01_OUT_SOURCECombo"}) {
    if (hands.Text(kSystemPage, field).empty()) throw Trouble(std::string("not read: ") + field);
  }
  tour.Picture("MDIForm1", "system_read");
  hands.Tick(kSystemPage, "chkCheck", false);
}

void Report(Tour& tour) {
  Hands& hands = tour.Operator();
  const QTemporaryDir folder;
  const std::string file = FromQt(folder.filePath("all settings.csv"));
  hands.Tick(kSystemPage, "Read_All_Set_Data");
  tour.Boxes().LayFile(file);
  hands.Click(kSystemPage, "Save_As");
  tour.Expect("the report's name", hands.Text(kSystemPage, "FileName"), file);
  WhenReading(tour, 1610, [&tour] { tour.Picture("MDIForm1", "system_read_all"); });
  hands.Click(kSystemPage, "ReadParameter");
  tour.ExpectStatus(kReadCompleted);
  if (!tour.Meanwhile().AllDone()) throw Trouble("the read-out did not tell how far it was");
  QFile report(ToQt(file));
  if (!report.exists()) throw Trouble("no report");
  report.remove();

  WhenReading(tour, 1170, [&hands] { hands.Click(kSystemPage, "cmdStopReadAll"); });
  hands.Click(kSystemPage, "ReadParameter");
  tour.ExpectStatus(text::kReadAllStopped);
  if (report.exists()) throw Trouble("a report of a read-out that was stopped");
  hands.Tick(kSystemPage, "Read_All_Set_Data", false);
}

void Initialise(Tour& tour) {
  tour.ClickAndAnswer(kSystemPage, "CommandMemoryInit", tour.Text(4501), false);
  tour.Operator().Click("MDIForm1", "Command6");
}

constexpr Step kSystemSteps[] = {
    {"system is read", ReadSystem}, {"all settings are read", Report}, {"memory stays", Initialise}};

}  // namespace

std::span<const Step> SystemSteps() { return kSystemSteps; }

}  // namespace vlt::test

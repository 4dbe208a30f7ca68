// SPDX-License-Identifier: GPL-3.0-or-later
// A snapshot of the meter, what differs from it after a change, ticked rows sent, and the meter restored.
#include <QDir>
#include <QFile>
#include <QTableWidget>
#include <QtTest/QTest>

#include "compare/compare_rows.h"
#include "compare/frm_compare.h"
#include "desktop/qt_text.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_compare_window.h"
#include "resources/text_ids_origin.h"
#include "tour/tour.h"

namespace vlt::test {
namespace {

constexpr const char* kCompareWindow = "frmCompare";

frmCompare& Window(Tour& tour) {
  return static_cast<frmCompare&>(*tour.Running().Logic().windows.Find(kCompareWindow));
}

std::string FileOf(Tour& tour, const char* name) {
  const QDir folder(ToQt(tour.Running().Logic().platform.process.ProgramFolder()));
  return FromQt(folder.filePath(name));
}

void ExpectWorkDone(Tour& tour) {
  tour.ExpectSoon("the end of the work", [&] { return tour.Operator().Enabled(kCompareWindow, "cmdClose"); });
}

void ExpectFile(Tour& tour, const char* name, const char* begin) {
  QFile file(ToQt(FileOf(tour, name)));
  if (!file.open(QIODevice::ReadOnly) || !file.readAll().startsWith(begin)) {
    throw Trouble(std::string("no ") + name + " was saved");
  }
}

// Three values of the process page, as the operator sets them.
void SetProcess(Tour& tour, const char* diameter, const char* wall, int fluid) {
  Hands& hands = tour.Operator();
  hands.Click("MDIForm1", "Command1");
  for (const char* box : {"OUTER_DIAMETER", "WALL_THICKNESS", "KIND_OF_FLUID"}) hands.Tick("Form10", box);
  hands.Type("Form10", "OUTER_DIAMETERText", diameter);
  hands.Type("Form10", "WALL_THICKNESSText", wall);
  hands.Choose("Form10", "KIND_OF_FLUIDCombo", fluid);
  hands.Click("Form10", "SetParameter");
  tour.ExpectSoon("the end of the setting", [&] { return hands.Enabled("Form10", "SetParameter"); });
  hands.Click("MDIForm1", "Command1");
}

void Snapshot(Tour& tour) {
  SetProcess(tour, "114.30", "6.00", 0);
  tour.Boxes().LayFile(FileOf(tour, "full.txt"));
  tour.Meanwhile().When(
      [&tour] {
        return tour.Running().Logic().windows.Find(kCompareWindow) != nullptr &&
               Window(tour).pbWork.Value() >= 3;
      },
      [&tour] { tour.Picture(kCompareWindow, "compare_reading"); });
  tour.Operator().Menu("MDIForm1", "mnuSnapshot");
  tour.ExpectSoon("the snapshot",
                  [&] { return tour.Running().Logic().windows.Find(kCompareWindow) != nullptr; });
  ExpectWorkDone(tour);
  if (!tour.Meanwhile().AllDone()) throw Trouble("the reading was not seen");
  ExpectFile(tour, "full.txt", "");
  tour.Picture(kCompareWindow, "compare_snapshot");
  tour.Operator().Click(kCompareWindow, "cmdClose");
}

// The snapshot on the left, the meter after a change on the right.
void Differences(Tour& tour) {
  Hands& hands = tour.Operator();
  SetProcess(tour, "60.50", "3.80", 1);
  hands.Menu("MDIForm1", "mnuCompare");
  hands.Choose(kCompareWindow, "cmbSide(0)", 1);
  tour.Boxes().LayFile(FileOf(tour, "full.txt"));
  hands.Click(kCompareWindow, "cmdSide(0)");
  hands.Choose(kCompareWindow, "cmbSide(1)", 0);
  hands.Click(kCompareWindow, "cmdSide(1)");
  ExpectWorkDone(tour);
  tour.Picture(kCompareWindow, "compare_all");
  hands.Click(kCompareWindow, "optFilter(1)");
  hands.Click(kCompareWindow, "cmdTickDifferent");
  CompareRows::Of(Window(tour)).grdRows.Choose(2);
  tour.Picture(kCompareWindow, "compare_different");
}

void Files(Tour& tour) {
  Hands& hands = tour.Operator();
  for (const auto& [button, file, begin] : {std::tuple{"cmdSaveCsv", "compared.csv", "\xEF\xBB\xBF"},
                                            std::tuple{"cmdSavePdf", "compared.pdf", "%PDF"}}) {
    tour.Boxes().LayFile(FileOf(tour, file));
    hands.Click(kCompareWindow, button);
    ExpectFile(tour, file, begin);
  }
}

// With the keyboard: the list has the focus, the space bar takes the tick of a row away.
void Untick(Tour& tour) {
  auto& list = static_cast<QTableWidget&>(tour.Operator().Widget(kCompareWindow, "grdRows"));
  list.setFocus();
  QTest::keyClick(&list, Qt::Key_Space);
  tour.ExpectSoon("the row without its tick",
                  [&] { return CompareRows::Of(Window(tour)).grdRows.Ticked(2) == RowTick::kOff; });
}

void Send(Tour& tour) {
  tour.Boxes().Lay("", true);
  tour.Operator().Click(kCompareWindow, "cmdSend");
  ExpectWorkDone(tour);
  if (CompareRows::Of(Window(tour)).grdRows.Rows() < 3) throw Trouble("nothing was sent");
  tour.Picture(kCompareWindow, "compare_sent");
}

void Restore(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Click(kCompareWindow, "cmdClose");
  hands.Menu("MDIForm1", "mnuRestore");
  tour.Picture(kCompareWindow, "compare_restore_point");
  hands.Click(kCompareWindow, "cmdSide(1)");
  ExpectWorkDone(tour);
  tour.Boxes().Lay("", true);
  hands.Click(kCompareWindow, "cmdRestore");
  ExpectWorkDone(tour);
  const std::string told = Window(tour).stbCompare.Panel(1);
  if (!told.starts_with(tour.Text(text::kRestoredEqual))) throw Trouble("restored: " + told);
  tour.Picture(kCompareWindow, "compare_restored");
}

void Outdate(Tour& tour) {
  SetProcess(tour, "60.50", "3.80", 1);
  const std::string told =
      FormatText(tour.Text(text::kOutdatedSide), {SideTitle(tour.Running().Logic(), CompareSide{})});
  if (Window(tour).txtSide(frmCompare::kRight).Text() != told)
    throw Trouble("the meter's side looks up to date");
  tour.Picture(kCompareWindow, "compare_outdated");
}

void CloseCompare(Tour& tour) {
  tour.Operator().Click(kCompareWindow, "cmdClose");
  if (tour.Running().Logic().windows.Find(kCompareWindow) != nullptr) throw Trouble("the comparison stays");
}

constexpr Step kCompareSteps[] = {{"a snapshot of the meter is saved", Snapshot},
                                  {"the changed meter is compared with it", Differences},
                                  {"the comparison is saved", Files},
                                  {"a tick is taken away by the keyboard", Untick},
                                  {"ticked rows are sent", Send},
                                  {"the meter is restored", Restore},
                                  {"a page sets values behind the comparison", Outdate},
                                  {"the comparison closes", CloseCompare}};

}  // namespace

std::span<const Step> CompareSteps() { return kCompareSteps; }

}  // namespace vlt::test

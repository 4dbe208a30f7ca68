// SPDX-License-Identifier: GPL-3.0-or-later
// Where the values of the pages come from: read, typed, outdated, from a file, in a light and in a dark desk.
#include <QApplication>
#include <QFile>
#include <QPalette>
#include <QTemporaryDir>

#include "desktop/qt_text.h"
#include "resources/string_table.h"
#include "resources/text_ids_guard.h"
#include "resources/text_ids_origin.h"
#include "tour/tour.h"

namespace vlt::test {
namespace {

constexpr const char* kProcess = "Form10";
constexpr const char* kRange = "Form2";
constexpr const char* kStatus = "Form4";

void ExpectTold(Tour& tour, const char* form, const char* entry, const std::string& part) {
  const std::string tip = FromQt(tour.Operator().Widget(form, entry).toolTip());
  if (tip.find(part) == std::string::npos) throw Trouble(std::string(entry) + " tells \"" + tip + "\"");
}

// The words of a text up to its first place-holder.
std::string Head(Tour& tour, int id) {
  const std::string text = tour.Text(id);
  return text.substr(0, text.find('%'));
}

void OpenPage(Tour& tour, const char* button, const char* page) {
  tour.Operator().Click("MDIForm1", button);
  tour.ExpectSoon("the page's buttons", [&] { return tour.Operator().Enabled(page, "ReadParameter"); });
}

void Type(Tour& tour) {
  Hands& hands = tour.Operator();
  OpenPage(tour, "Command1", kProcess);
  for (const char* box : {"OUTER_DIAMETER", "PIPE_MATERIAL", "WALL_THICKNESS", "SENSOR_SPACINGCheck"}) {
    hands.Tick(kProcess, box);
  }
  hands.Click(kProcess, "ReadParameter");
  tour.ExpectStatus(4021);
  hands.Type(kProcess, "OUTER_DIAMETERText", "75.5");
  hands.Choose(kProcess, "PIPE_MATERIALCombo", 2);
  ExpectTold(tour, kProcess, "OUTER_DIAMETERText", Head(tour, text::kOriginTypedOver));
  const std::string title = FormatText(tour.Text(text::kTitleNotSet), {tour.Text(1640), "2"});
  tour.Expect("the page's title", hands.Text("MDIForm1", "pageTitle"), title);
  tour.Picture("MDIForm1", "origin_typed");
  hands.Click(kProcess, "SetParameter");
  tour.ExpectStatus(4001);
  tour.Expect("the title behind the set", hands.Text("MDIForm1", "pageTitle"), tour.Text(1640));
  tour.Picture("MDIForm1", "origin_set");
}

// What one output does is not what the next one does.
void Outdate(Tour& tour) {
  Hands& hands = tour.Operator();
  OpenPage(tour, "Command2", kRange);
  hands.Tick(kRange, "chkCheck");
  hands.Click(kRange, "ReadParameter");
  tour.ExpectStatus(4022);
  tour.Picture("MDIForm1", "origin_read");
  OpenPage(tour, "Command5", kStatus);
  hands.Tick(kStatus, "SELECT_Check");
  hands.Tick(kStatus, "MODE_DO_1");
  hands.Click(kStatus, "ReadParameter");
  tour.ExpectStatus(4024);
  hands.Click(kStatus, "DigitalOutputSelect(1)");
  ExpectTold(tour, kStatus, "OUTPUT_DO_1Combo", Head(tour, text::kOutdatedOutput));
  hands.Choose(kStatus, "OUTPUT_DO_1Combo", 5);
  tour.Picture("MDIForm1", "origin_outdated");
}

void OpenFile(Tour& tour, const QString& name, const char* content) {
  const QTemporaryDir folder;
  QFile file(folder.filePath(name));
  if (!file.open(QIODevice::WriteOnly)) throw Trouble("can't write the parameter file");
  file.write(content);
  file.close();
  tour.Boxes().LayFile(FromQt(file.fileName()));
  tour.Operator().Menu("MDIForm1", "readparam");
}

void FromFile(Tour& tour) {
  Hands& hands = tour.Operator();
  OpenFile(tour, "pump.ini",
           "[RANGE]\nCHANNEL=0\nRANGE_TYPE_Data=1\nFULL_SCALE1_Data=25\nFULL_SCALE2_Data=5\nSPAN_Data=100\n");
  OpenPage(tour, "Command2", kRange);
  tour.Expect("the file's value", hands.Text(kRange, "FULL_SCALE1Text"), "25");
  ExpectTold(tour, kRange, "FULL_SCALE1Text", FormatText(tour.Text(text::kOriginFile), {"pump.ini"}));
  hands.Tick(kRange, "chkCheck", false);
  hands.Tick(kRange, "DAMPING");
  hands.Click(kRange, "ReadParameter");
  tour.ExpectStatus(4022);
  hands.Tick(kRange, "SPAN");
  hands.Type(kRange, "SPANText", "99");
  tour.Picture("MDIForm1", "origin_file");
}

// A value for the other unit system stays in its field, and the meter keeps its own.
void KeptBack(Tour& tour) {
  Hands& hands = tour.Operator();
  OpenFile(tour, "pipe.ini",
           "[PROCESS SETTING]\nCHANNEL=0\nOUTER_DIAMETER_Data=4.5\nOUTER_DIAMETER_Unit=[inch]\n"
           "[SYSTEMDISP]\nUNIT_FLAG=1\n");
  OpenPage(tour, "Command1", kProcess);
  hands.Tick(kProcess, "OUTER_DIAMETER");
  hands.Click(kProcess, "SetParameter");
  tour.ExpectSoon("the refusal", [&] {
    return hands.Panel("MDIForm1", "StatusBar1", 1).find(Head(tour, text::kNothingSet)) != std::string::npos;
  });
  tour.Expect("the value", hands.Text(kProcess, "OUTER_DIAMETERText"), "4.5");
  ExpectTold(tour, kProcess, "OUTER_DIAMETERText", "[inch]");
  tour.Picture("MDIForm1", "origin_kept_back");
  hands.Tick(kProcess, "OUTER_DIAMETER", false);
  OpenPage(tour, "Command2", kRange);
}

void Dark(Tour& tour) {
  const QPalette light = QApplication::palette();
  QPalette dark(QColor(0x45, 0x45, 0x45), QColor(0x32, 0x32, 0x32));
  dark.setColor(QPalette::Base, QColor(0x22, 0x22, 0x22));
  dark.setColor(QPalette::Highlight, QColor(0x2A, 0x82, 0xDA));
  QApplication::setPalette(dark);
  tour.Operator().Tick(kRange, "TypeCheck");
  tour.Operator().Choose(kRange, "TypeCheckCombo", 2);
  tour.Picture("MDIForm1", "origin_dark");
  QApplication::setPalette(light);
}

constexpr Step kOriginSteps[] = {
    {"a typed value is marked until it is set", Type},
    {"another output outdates what was read", Outdate},
    {"a file is told as the origin", FromFile},
    {"a value for another unit system is kept back", KeptBack},
    {"marks on a dark desk", Dark},
};

}  // namespace

std::span<const Step> OriginSteps() { return kOriginSteps; }

}  // namespace vlt::test

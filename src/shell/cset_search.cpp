// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/cset_search.h"

#include <array>

#include "link/operation.h"
#include "meter/system_table.h"
#include "meter/value_text.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "state/form_lock.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr int kLastStation = 31;
constexpr int kStationDigits = 2;
constexpr std::array<int, kFoundTexts> kHeads = {1940, 930, 700, 4680, 2250};

// A code that has no text is told as a number.
std::string NameOf(const App& app, const Parameter& row, int code) {
  const std::string name = CodeWord(row, app.state, code);
  return name.empty() ? std::to_string(code) : name;
}

}  // namespace

std::vector<int> StationsToSearch(bool rs485) {
  if (!rs485) return {0};
  std::vector<int> stations;
  for (int station = 1; station <= kLastStation; ++station) stations.push_back(station);
  return stations;
}

std::array<std::string, kFoundTexts> FoundMeterTexts(const App& app, const FoundMeter& meter) {
  return {meter.link.speed + "BPS", FrmCSet::ParityText(app, meter.link.parity),
          ZeroPadded(meter.station, kStationDigits), NameOf(app, SystemRow("unit"), meter.unit_system),
          NameOf(app, SystemRow("language"), meter.language)};
}

std::string SearchEndText(const App& app, int number, const SearchResult& result) {
  const std::string port = "COM" + std::to_string(number);
  const std::string count = std::to_string(result.found);
  switch (result.end) {
    case SearchEnd::kStopped:
      return FormatText(app.Text(text::kSearchStopped), {count});
    case SearchEnd::kOtherMaster:
      return FormatText(app.Text(text::kOtherMaster), {port, count});
    case SearchEnd::kPortClosed:
      return app.state.PortFaultReason;
    case SearchEnd::kPortLost:
      return FormatText(app.Text(text::kSearchPortLost), {port, result.fault, count});
    case SearchEnd::kFinished:
      break;
  }
  const std::string odd =
      result.odd == 0 ? "" : ' ' + FormatText(app.Text(text::kSearchOdd), {std::to_string(result.odd)});
  return FormatText(app.Text(result.found == 0 ? text::kSearchNone : text::kSearchFound), {port, count}) +
         odd;
}

CSetSearch::CSetSearch(App& app, FrmCSet& dialog)
    : FormPart(dialog),
      cmdSearch(dialog, "cmdSearch"),
      cmdStop(dialog, "cmdStop"),
      pbSearch(dialog, "pbSearch"),
      stbSearch(dialog, "stbSearch", 1),
      grdFound(dialog, "grdFound", 1, static_cast<int>(kHeads.size())),
      app_(app),
      dialog_(dialog) {
  cmdSearch.on_click = [this] { cmdSearch_Click(); };
  cmdStop.on_click = [this] { cmdStop_Click(); };
  grdFound.on_choose = [this] { grdFound_Click(); };
}

void CSetSearch::FrmInit() {
  cmdSearch.SetCaption(app_.Text(text::kSearch));
  cmdStop.SetCaption(app_.Text(text::kStopText));
  for (std::size_t i = 0; i < kHeads.size(); ++i) {
    grdFound.SetCell(0, static_cast<int>(i), app_.Text(kHeads[i]));
  }
}

void CSetSearch::Form_Load() {
  cmdStop.SetEnabled(false);
  FrmInit();
}

void CSetSearch::Form_Activate() { cmdSearch.SetEnabled(IsLineFree(app_)); }

SearchPlan CSetSearch::Plan() const {
  SearchPlan plan;
  plan.port = dialog_.ChosenPort();
  plan.tries = AllTries(dialog_.ChosenLink());
  if (dialog_.StopBit.ListIndex() >= 0) plan.stop_bits = dialog_.StopBit.Text();
  plan.first_only = !dialog_.IsRs485();
  plan.stations = StationsToSearch(dialog_.IsRs485());
  return plan;
}

void CSetSearch::cmdSearch_Click() {
  if (dialog_.IsLineTaken()) return;
  const SearchPlan plan = Plan();
  if (plan.port == 0) {
    stbSearch.SetPanel(1, app_.Text(text::kPortNotChosen));
    dialog_.SetFocus(dialog_.PortNo);
    return;
  }
  stop_ = false;
  searched_port_ = plan.port;
  found_.clear();
  grdFound.SetSelectedRow(0);
  grdFound.SetRows(1);
  pbSearch.SetMax(plan.Steps());
  const Operation operation(app_, dialog_, Operation::kUnnamed);
  cmdStop.SetEnabled(true);
  const SearchResult result = SearchMeters(app_, plan,
                                           {.step = [&](const SearchStep& step) { return Tell(plan, step); },
                                            .found = [this](const FoundMeter& meter) { Add(meter); }});
  cmdStop.SetEnabled(false);
  pbSearch.SetValue(0);
  stbSearch.SetPanel(1, SearchEndText(app_, plan.port, result));
}

// Before each question. False when the operator has stopped the search.
bool CSetSearch::Tell(const SearchPlan& plan, const SearchStep& step) {
  pbSearch.SetValue(step.number);
  stbSearch.SetPanel(
      1, FormatText(
             app_.Text(text::kSearchRuns),
             {"COM" + std::to_string(plan.port), step.link.speed, FrmCSet::ParityText(app_, step.link.parity),
              ZeroPadded(step.station, kStationDigits), std::to_string(found_.size())}));
  return !stop_;
}

void CSetSearch::Add(const FoundMeter& meter) {
  found_.push_back(meter);
  const int row = static_cast<int>(found_.size());
  grdFound.SetRows(row + 1);
  grdFound.SetRow(row, FoundMeterTexts(app_, meter));
}

void CSetSearch::cmdStop_Click() { stop_ = true; }

void CSetSearch::grdFound_Click() {
  const int row = grdFound.SelectedRow();
  if (row < 1) return;
  dialog_.PortNo.SetListIndex(searched_port_ - 1);
  dialog_.Fill(found_.at(static_cast<std::size_t>(row) - 1));
}

}  // namespace vlt

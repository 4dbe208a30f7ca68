// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/condition_tab.h"

#include "files/csv_log.h"
#include "files/csv_question.h"
#include "files/file_report.h"
#include "files/whole_file.h"
#include "link/operation.h"
#include "link/port.h"
#include "meter/quiet_query.h"
#include "resources/text_ids.h"
#include "state/form_lock.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr int kHeadTexts[] = {1430, 1901, 182, 183};

enum Column : std::uint8_t { kName, kUnit, kFirstChannel, kSecondChannel };

// In the page's logical units.
constexpr int kNameWidth = 3760;
constexpr int kUnitWidth = 900;
constexpr int kChannelWidth = 2400;
constexpr int kGridWidth = 7060;
constexpr int kGridHeight = 8100;

std::string InParentheses(const std::string& text) { return text.empty() ? "" : "(" + text + ")"; }

}  // namespace

ConditionTab::ConditionTab(App& app, Form& page)
    : FormPart(page), app_(app), status_(static_cast<Form11&>(page).StatusBar2) {
  ReadInfButton.on_click = [this] { ReadInfButton_Click(); };
  SaveInfButton.on_click = [this] { SaveInfButton_Click(); };
}

void ConditionTab::FrmInit() {
  ReadInfButton.SetCaption(app_.Text(text::kRead));
  SaveInfButton.SetCaption(app_.Text(text::kSaveAsCsv));
  for (int column = 0; column < InfData1Grid.Columns(); ++column) {
    InfData1Grid.SetCell(0, column, app_.Text(kHeadTexts[column]));
  }
  ShowNames();
  SubGetUnitForm11();
}

void ConditionTab::Form_Load() {
  FrmInit();
  SetColumns(true);
}

void ConditionTab::Form_Activate() {
  const bool idle = IsLineFree(app_);
  ReadInfButton.SetEnabled(idle);
  SaveInfButton.SetEnabled(idle);
}

void ConditionTab::ShowNames() {
  for (int i = 0; i < kConditionRows; ++i) {
    const ConditionRow& row = ConditionTable()[static_cast<std::size_t>(i)];
    Record& record = Records[static_cast<std::size_t>(i)];
    const std::string mark = row.calculated ? InParentheses(app_.Text(text::kCalculated)) : "";
    record.symbol = row.symbol == 0 ? "" : app_.Text(row.symbol);
    record.name = app_.Text(row.caption) + mark;
    InfData1Grid.SetCell(i + 1, kName, app_.Text(row.caption) + InParentheses(record.symbol) + mark);
  }
}

void ConditionTab::SubGetUnitForm11() {
  for (int i = 0; i < kConditionRows; ++i) {
    const auto at = static_cast<std::size_t>(i);
    Records[at].unit = ConditionUnitText(ConditionTable()[at].unit, app_.state.UnitFlag, app_.state.Spoken());
    InfData1Grid.SetCell(i + 1, kUnit, Records[at].unit);
  }
}

void ConditionTab::SetColumns(bool two_channels) {
  InfData1Grid.SetColumnWidth(kName, kNameWidth);
  InfData1Grid.SetColumnWidth(kUnit, kUnitWidth);
  InfData1Grid.SetColumnWidth(kFirstChannel, kChannelWidth);
  InfData1Grid.SetColumnWidth(kSecondChannel, two_channels ? kChannelWidth : 0);
  InfData1Grid.SetSize(two_channels ? kGridWidth + kChannelWidth : kGridWidth, kGridHeight);
}

bool ConditionTab::ShowsSecondChannel() const { return !InfData1Grid.IsHidden(kSecondChannel); }

void ConditionTab::Tell(const std::string& text) { status_.SetPanel(1, app_.Stamped(text)); }

// --- reading -------------------------------------------------------------------------------------------

void ConditionTab::ReadInfButton_Click() {
  Tell(app_.Text(text::kReadingOfConditionWasStarted));
  std::string error;
  {
    Operation operation(app_, Whole(), ReadInfButton.Name());
    if (!operation.OpenPortOrTell()) return Tell(CommunicationErrorText(app_));
    error = ReadChannels();
  }
  Tell(app_.Text(text::kReadingOfConditionWasCompleted) + " " + error);
}

std::string ConditionTab::ReadChannels() {
  SubGetUnitForm11();
  std::string error = ReadChannel(0);
  const ChannelConfig config = AskChannelConfig(app_);
  if (config == ChannelConfig::kOneChannel) SetColumns(false);
  if (config == ChannelConfig::kTwoPaths || config == ChannelConfig::kTwoPipes) {
    SetColumns(true);
    const std::string second = ReadChannel(1);
    if (error.empty()) error = second;
  }
  return error.empty() ? app_.state.LastErrorText : error;
}

std::string ConditionTab::ReadChannel(int ch) {
  RegisterData data;
  const ExchangeReport exchange = ReadRegisters(app_, SpanOf(kConditionBlock, ch), data);
  if (!exchange) return exchange.text;
  for (int i = 0; i < kConditionRows; ++i) {
    const auto at = static_cast<std::size_t>(i);
    std::string& value = Records[at].values.at(static_cast<std::size_t>(ch));
    value = ConditionText(ConditionTable()[at], data);
    InfData1Grid.SetCell(i + 1, kFirstChannel + ch, value);
  }
  ReadTime = DateTimeText(app_.platform.clock.Now());
  return {};
}

// --- saving --------------------------------------------------------------------------------------------

void ConditionTab::SaveInfButton_Click() {
  if (ReadTime.empty()) {
    app_.Show(app_.Text(text::kCondition) + app_.Text(text::kDataIsNotRead));
    return;
  }
  const auto path = AskCsvFile(app_, {.title = text::kSpecifyFileToSave,
                                      .folder = FolderOfPath(app_.state.MeasureDir),
                                      .ask_before_overwrite = true});
  if (!path) return;
  app_.state.MeasureDir = *path;
  ReportWritten(app_, *path, WriteConditionCsv(*path));
}

FileError ConditionTab::WriteConditionCsv(const std::string& path) {
  constexpr const char* kLineEnd = "\r\n";
  const bool second = ShowsSecondChannel();
  std::string text(kByteOrderMark);
  text += "[" + app_.Text(text::kTransitTime) + "]" + kLineEnd;
  text += "<" + app_.Text(text::kCondition) + ">" + kLineEnd;
  text += ",,<" + app_.Text(kHeadTexts[kFirstChannel]) + ">";
  if (second) text += ",<" + app_.Text(kHeadTexts[kSecondChannel]) + ">";
  text += kLineEnd;
  for (const Record& record : Records) {
    text += record.name + "," + record.symbol + "," + record.unit + "," + record.values[0];
    if (second) text += "," + record.values[1];
    text += kLineEnd;
  }
  return WriteWhole(app_.platform.files, CleanPath(path), text, false);
}

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/settings_report.h"

#include <algorithm>
#include <vector>

#include "files/csv_log.h"
#include "files/whole_file.h"
#include "meter/report_rows.h"
#include "meter/status_table.h"
#include "meter/units.h"
#include "meter/value_text.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_pages.h"
#include "values/hex_digits.h"

namespace vlt {
namespace {

constexpr const char* kDate = "DATE:";
// Records of digital outputs that the report of one channel has.
constexpr int kOneChannelOutputs = 2;

// A cell is not quoted, so it holds nothing that parts cells or lines.
std::string Cell(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == ',' || c == '\r' || c == '\n'; }, ' ');
  return text;
}

// "03F0H (8)"
std::string AddressText(const RegisterSpan& span) {
  return HexDigits(static_cast<unsigned>(span.address), 4) + "H (" + std::to_string(span.count) + ")";
}

class ReportWriter {
 public:
  ReportWriter(const MeterSettings& settings, ReportForm form) : settings_(settings), form_(form) {}

  std::string Text(const LocalTime& now) {
    text_ = kByteOrderMark;
    Line({Word(text::kReadAllSetData), kDate, DateTimeText(now)});
    for (const UnreadBlock& block : LostBlocks(settings_)) {
      Line({Word(text::kReportNotRead), block.part, AddressText(block.span), block.reason});
    }
    for (const ReportSection& section : ReportSections()) Section(section);
    return std::move(text_);
  }

 private:
  const ToldFacts& Facts() const { return settings_.facts; }
  std::string Word(int id) const { return LookupText(id, Facts().Spoken()); }
  bool IsOneChannel() const { return form_ == ReportForm::kOneChannel; }

  void Line(const std::vector<std::string>& cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) text_ += (i > 0 ? "," : "") + Cell(cells[i]);
    text_ += "\r\n";
  }

  // The places that the columns of a section stand for.
  std::vector<int> Columns(const ReportSection& section) const {
    if (IsOneChannel() || section.places == Location::kMeter) return {0};
    constexpr int kOutputs = 4;
    if (section.places == Location::kOutput) return Indexes(kOutputs);
    return Indexes(section.places == Location::kChannel ? kChannels : kChannels - 1);
  }

  void Section(const ReportSection& section) {
    Head(section);
    const bool outputs_below = IsOneChannel() && section.places == Location::kOutput;
    if (outputs_below) {
      for (int output = 0; output < kOneChannelOutputs; ++output) Rows(section, {output});
    } else {
      Rows(section, Columns(section));
    }
  }

  void Head(const ReportSection& section) {
    std::string head = "[" + Word(section.heading) + "]";
    if (section.subheading != 0) head += " " + Word(section.subheading);
    std::vector<std::string> cells = {head};
    const bool outputs = section.places == Location::kOutput;
    if (section.places != Location::kMeter && !(outputs && IsOneChannel())) {
      if (section.subheading == 0) cells.front() += " ";
      for (const int place : Columns(section)) {
        cells.push_back(outputs ? PlaceName(Location::kOutput, place)
                                : Word(text::kFirstChannelName + place));
      }
    }
    Line(cells);
  }

  void Rows(const ReportSection& section, const std::vector<int>& places) {
    for (const ReportRow& row : section.rows) {
      std::vector<std::string> cells = {Label(row, places.front())};
      std::vector<std::string> units;
      for (const int place : places) {
        cells.push_back(Value(row, place));
        units.push_back(cells.back().empty() ? "" : Unit(row, place));
      }
      if (HasUnit(row)) {
        for (const std::string& unit : units) cells.insert(cells.end(), {"", unit});
      }
      Line(cells);
    }
  }

  std::string Label(const ReportRow& row, int place) const {
    std::string label = row.literal != nullptr ? row.literal : "";
    for (const int id : row.label) {
      if (id != 0) label += (label.empty() ? "" : " ") + Word(id);
    }
    if (label.empty()) label = Word(row.parameters[0]->caption);
    if (row.output_name) label = PlaceName(Location::kOutput, place) + " " + label;
    if (row.words != 0 && (row.words_in_both_forms || !IsOneChannel())) label += Word(row.words);
    return label + row.behind;
  }

  // Empty for what the meter does not have there, or what could not be read.
  std::string Value(const ReportRow& row, int place) const {
    std::string value = ValueOf(*row.parameters[0], place);
    if (value.empty()) return value;
    const char* between = " ";
    for (const Parameter* parameter : row.parameters) {
      if (parameter == nullptr || parameter == row.parameters[0]) continue;
      value += between + ValueOf(*parameter, place);
      between = "/";
    }
    return (row.sign == Sign::kApostrophe ? "'" : "") + value;
  }

  std::string ValueOf(const Parameter& parameter, int place) const {
    const auto bytes = BytesOf(parameter, place);
    return bytes.empty() ? std::string() : CellText(parameter, Facts(), bytes);
  }

  // A parameter that a meter has once stands in the first column.
  std::span<const std::uint8_t> BytesOf(const Parameter& parameter, int place) const {
    if (parameter.location == Location::kMeter && place != 0) return {};
    return settings_.registers.Of(parameter, place);
  }

  static const Parameter& UnitBearer(const ReportRow& row) {
    return row.parameters[1] != nullptr ? *row.parameters[1] : *row.parameters[0];
  }

  static bool HasUnit(const ReportRow& row) {
    return !row.unit_in_label && UnitBearer(row).unit != UnitKind::kNone;
  }

  std::string Unit(const ReportRow& row, int place) const {
    if (row.unit_text != 0) return WithoutBrackets(Word(row.unit_text));
    const Parameter& bearer = UnitBearer(row);
    return UnitText(Facts(), bearer.unit, IsOutput(bearer) ? ChannelOf(place) : place);
  }

  // The channel that a digital output follows.
  int ChannelOf(int output) const {
    return std::clamp(settings_.registers.CodeOf(StatusRow("channel"), output, 0), 0, kChannels - 1);
  }

  const MeterSettings& settings_;
  ReportForm form_;
  std::string text_;
};

FileError Save(App& app, const MeterSettings& settings, const std::string& file, ReportForm form) {
  return WriteWhole(app.platform.files, file, ReportText(settings, form, app.platform.clock.Now()), false);
}

}  // namespace

ReportForm ReportFormFor(const MeterFacts& facts) {
  const bool several = facts.PathMode == kTwoPathsMode || facts.PathMode == kTwoPipesMode;
  return several && !IsSingleChannel(facts) ? ReportForm::kAllChannels : ReportForm::kOneChannel;
}

std::vector<UnreadBlock> LostBlocks(const MeterSettings& settings) {
  std::vector<UnreadBlock> lost = settings.unread;
  std::erase_if(lost, [&](const UnreadBlock& block) { return settings.registers.Has(block.span); });
  return lost;
}

std::vector<std::string> LostParts(const MeterSettings& settings) {
  std::vector<std::string> parts;
  for (const UnreadBlock& block : LostBlocks(settings)) {
    if (std::find(parts.begin(), parts.end(), block.part) == parts.end()) parts.push_back(block.part);
  }
  return parts;
}

bool IsCompleteReport(std::string_view content) {
  if (content.starts_with(kByteOrderMark)) content.remove_prefix(std::string_view(kByteOrderMark).size());
  for (const Language language : {Language::kJapanese, Language::kEnglish}) {
    if (!content.starts_with(std::string(LookupText(text::kReadAllSetData, language)) + "," + kDate + ","))
      continue;
    const std::size_t second = content.find('\n');
    const std::string missing = std::string(LookupText(text::kReportNotRead, language)) + ",";
    return second == std::string_view::npos || !content.substr(second + 1).starts_with(missing);
  }
  return false;
}

std::string ReportText(const MeterSettings& settings, ReportForm form, const LocalTime& now) {
  return ReportWriter(settings, form).Text(now);
}

FileError ALL_FileSave(App& app, const MeterSettings& settings, const std::string& file) {
  return Save(app, settings, file, ReportForm::kAllChannels);
}

FileError ALL_FileSave_1Path(App& app, const MeterSettings& settings, const std::string& file) {
  return Save(app, settings, file, ReportForm::kOneChannel);
}

FileError SaveReport(App& app, const MeterSettings& settings, const std::string& file) {
  const bool all = ReportFormFor(settings.facts) == ReportForm::kAllChannels;
  return all ? ALL_FileSave(app, settings, file) : ALL_FileSave_1Path(app, settings, file);
}

}  // namespace vlt

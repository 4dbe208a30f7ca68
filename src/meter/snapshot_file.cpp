// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/snapshot_file.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <utility>

#include "files/whole_file.h"
#include "meter/process_table.h"
#include "meter/system_table.h"
#include "meter/value_text.h"
#include "resources/string_table.h"
#include "resources/text_ids_compare.h"
#include "values/hex_digits.h"

namespace vlt {
namespace {

using Kind = SnapshotRemark::Kind;

constexpr std::string_view kFirstLine = "Veltrano3 snapshot 1";
constexpr std::string_view kColumns = "name\tchannel\tregister\traw\tvalue\tunit";
constexpr std::string_view kNothing = "-";
constexpr std::size_t kFields = 6;
// Installations name the sensors by different words.
constexpr std::string_view kInstallations[] = {"", "M627"};

struct HeadLine {
  std::string_view key;
  std::string MeterIdentity::*text;
};
constexpr HeadLine kHead[] = {
    {"date", &MeterIdentity::date},
    {"id_number", &MeterIdentity::id_number},
    {"specification", &MeterIdentity::specification},
    {"type", &MeterIdentity::type},
    {"version", &MeterIdentity::version},
    {"unit_system", &MeterIdentity::unit_system},
    {"path_mode", &MeterIdentity::path_mode},
};
constexpr std::string_view kModelKey = "model";

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// An editor may have put the mark in front.
std::string_view WithoutMark(std::string_view content) {
  if (content.starts_with(kByteOrderMark)) content.remove_prefix(kByteOrderMark.size());
  return content;
}

// --- writing ---------------------------------------------------------------------------------------

std::string RegisterText(const ParameterPlace& place) {
  return std::to_string(static_cast<int>(place.row->function)) + ":" +
         HexDigits(static_cast<unsigned>(place.Address()), 4);
}

// What would part fields or lines becomes a blank.
std::string Field(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
  return text;
}

std::string OrNothing(const std::string& text) { return text.empty() ? std::string(kNothing) : Field(text); }

std::string ModelText(const MeterFacts& facts) {
  const MeterModel* model = ModelOf(facts);
  return std::string((model == nullptr ? MeterModels().front() : *model).name);
}

std::string RowText(const SnapshotRow& row) {
  const Parameter& parameter = *row.place.row;
  const std::string head = std::string(parameter.name) + "\t" + PlaceName(parameter, row.place.index) + "\t" +
                           RegisterText(row.place) + "\t";
  if (!row.Known()) return head + std::string(kNothing) + "\t" + Field(row.unread) + "\t";
  return head + HexDigits(row.raw) + "\t" + Field(row.value) + "\t" + Field(row.unit);
}

ToldFacts English(ToldFacts facts) {
  facts.LangOffset = static_cast<int>(Language::kEnglish);
  return facts;
}

// --- reading
// -------------------------------------------------------------------------------------------------

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (std::size_t at = 0;;) {
    const std::size_t end = text.find(separator, at);
    parts.push_back(text.substr(at, end == std::string_view::npos ? end : end - at));
    if (end == std::string_view::npos) return parts;
    at = end + 1;
  }
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

std::optional<std::vector<std::uint8_t>> BytesOf(std::string_view hex) {
  if (hex.size() % 2 != 0) return std::nullopt;
  std::vector<std::uint8_t> bytes;
  for (std::size_t i = 0; i < hex.size(); i += 2) {
    const int high = HexDigit(hex[i]);
    const int low = HexDigit(hex[i + 1]);
    if (high < 0 || low < 0) return std::nullopt;
    bytes.push_back(static_cast<std::uint8_t>(16 * high + low));
  }
  return bytes;
}

// A row as its line has it.
struct ReadRow {
  SnapshotRow row;
  int line = 0;
  std::string value;
  std::string unit;
};

class SnapshotParser {
 public:
  explicit SnapshotParser(const ToldFacts& speaker) : speaker_(speaker) {}

  SnapshotFile Parse(std::string_view content) {
    lines_ = Split(content, '\n');
    for (std::string_view& line : lines_) {
      if (line.ends_with('\r')) line.remove_suffix(1);
    }
    if (!LooksLikeSnapshot(content)) return std::move(file_);
    const std::size_t rows = ParseHead();
    if (!TakeModel()) return std::move(file_);
    file_.is_snapshot = true;
    for (std::size_t i = rows; i < lines_.size(); ++i) {
      if (!lines_[i].empty()) ParseRow(lines_[i], static_cast<int>(i) + 1);
    }
    std::stable_sort(rows_.begin(), rows_.end(), [](const ReadRow& a, const ReadRow& b) {
      return InCatalogueOrder(a.row.place, b.row.place);
    });
    DropTwice();
    DropContradicting();
    Finish();
    return std::move(file_);
  }

 private:
  std::string Word(int id) const { return LookupText(id, speaker_.Spoken()); }

  void Remark(Kind kind, int line, std::string_view text, std::string reason) {
    file_.remarks.push_back({kind, line, std::string(text), std::move(reason)});
  }

  // The number of the first line behind the head.
  std::size_t ParseHead() {
    for (std::size_t i = 1; i < lines_.size(); ++i) {
      if (lines_[i] == kColumns) return i + 1;
      if (lines_[i].empty()) continue;
      const std::size_t tab = lines_[i].find('\t');
      const std::string key(lines_[i].substr(0, tab));
      if (tab == std::string_view::npos || !IsHeadKey(key) || head_.contains(key)) {
        Remark(Kind::kBadHead, static_cast<int>(i) + 1, lines_[i], Word(text::kBadLine));
      } else {
        head_[key] = {static_cast<int>(i) + 1, std::string(lines_[i].substr(tab + 1))};
      }
    }
    return lines_.size();
  }

  static bool IsHeadKey(std::string_view key) {
    return key == kModelKey || std::any_of(std::begin(kHead), std::end(kHead),
                                           [&](const HeadLine& line) { return line.key == key; });
  }

  // What decides which rows there are and what they mean.
  bool TakeModel() {
    facts_ = speaker_;
    const auto model = head_.find(std::string(kModelKey));
    if (model == head_.end()) return false;
    const auto models = MeterModels();
    const auto at = std::find_if(models.begin(), models.end(),
                                 [&](const MeterModel& each) { return each.name == model->second.text; });
    if (at == models.end()) return false;
    facts_.SpecClass = static_cast<int>(at - models.begin());
    facts_.PathMode = PathModeOfHead();
    return true;
  }

  int PathModeOfHead() const {
    const auto line = head_.find("path_mode");
    if (line == head_.end()) return kOnePathMode;
    const auto words = CodeWords(SystemRow("measurement_mode"), English(speaker_));
    const auto at = std::find(words.begin(), words.end(), line->second.text);
    return at == words.end() ? kOnePathMode : static_cast<int>(at - words.begin());
  }

  std::string MissingHead(std::string_view key) const { return FormatText(Word(text::kHeadMissing), {key}); }

  void ParseRow(std::string_view line, int number) {
    const auto fields = Split(line, '\t');
    const auto bad = [&](int reason) { Remark(Kind::kBadLine, number, line, Word(reason)); };
    if (fields.size() != kFields || fields[0].find('.') == std::string_view::npos) return bad(text::kBadLine);
    const Parameter* row = FindParameter(fields[0]);
    if (row == nullptr || row->measured) {
      return Remark(Kind::kUnknownName, number, line, Word(text::kUnknownParameter));
    }
    const ParameterPlace place{row, PlaceIndexOf(*row, fields[1])};
    const bool named = place.index >= 0 && PlaceName(*row, place.index) == fields[1];
    const bool unread = fields[3] == kNothing;
    auto raw = unread ? std::vector<std::uint8_t>() : BytesOf(fields[3]);
    const std::size_t size = unread ? 0 : static_cast<std::size_t>(2 * row->Words());
    if (!named || !raw || raw->size() != size) return bad(text::kBadLine);
    if (fields[2] != RegisterText(place)) return bad(text::kOtherRegister);
    const std::string reason =
        unread ? (fields[4].empty() ? Word(text::kNotAskedFor) : std::string(fields[4])) : "";
    rows_.push_back(
        {.row = {.place = place, .raw = std::move(*raw), .value = {}, .unit = {}, .unread = reason},
         .line = number,
         .value = std::string(fields[4]),
         .unit = std::string(fields[5])});
  }

  void DropTwice() {
    std::erase_if(rows_, [this, last = std::optional<ParameterPlace>()](const ReadRow& read) mutable {
      const bool twice = last == read.row.place;
      last = read.row.place;
      if (twice) RemarkRow(Kind::kTwice, read, text::kParameterTwice);
      return twice;
    });
  }

  void RemarkRow(Kind kind, const ReadRow& read, int reason) {
    Remark(kind, read.line, lines_[static_cast<std::size_t>(read.line) - 1], Word(reason));
    remarked_.push_back(read.row.place);
  }

  Snapshot Complete(const ToldFacts& facts) const {
    std::vector<SnapshotRow> rows;
    for (const ReadRow& read : rows_) rows.push_back(read.row);
    const auto date = head_.find("date");
    return CompleteSnapshot(facts, std::move(rows), date == head_.end() ? "" : date->second.text);
  }

  // The text of a row must be that of its bytes. A row that is taken out may be the unit of others, but what
  // these are called has been judged by it all the same: they are unknown then.
  void DropContradicting() {
    const Snapshot told = Complete(English(facts_));
    std::vector<ReadRow> good;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      const ReadRow& read = rows_[i];
      if (!HasPlace(read.row.place, told.facts)) {
        RemarkRow(Kind::kBadLine, read, text::kNotInThisShape);
      } else if (told.rows[i].Known() && !Tells(read, told.rows[i], told.facts)) {
        RemarkRow(Kind::kBadLine, read, text::kTextContradicts);
      } else {
        good.push_back(read);
      }
    }
    rows_ = std::move(good);
  }

  static bool Tells(const ReadRow& read, const SnapshotRow& told, ToldFacts facts) {
    if (read.unit != told.unit) return false;
    if (read.value == Field(told.value)) return true;
    return std::any_of(std::begin(kInstallations), std::end(kInstallations),
                       [&](std::string_view installation) {
                         facts.ModelCode = installation;
                         return read.value == ValueText(*told.place.row, facts, told.raw);
                       });
  }

  void Finish() {
    CheckHead(Complete(English(facts_)));
    file_.snapshot = Complete(facts_);
    for (const ParameterPlace& place : PlacesOf(file_.snapshot.facts)) {
      const bool there = file_.snapshot.Find(place) != nullptr ||
                         std::find(remarked_.begin(), remarked_.end(), place) != remarked_.end();
      if (there) continue;
      const std::string title = PlaceTitle(place, speaker_.Spoken());
      Remark(Kind::kMissing, 0, place.row->name, FormatText(Word(text::kRowMissing), {title}));
    }
  }

  void CheckHead(const Snapshot& told) {
    const HeadText& model = head_.at(std::string(kModelKey));
    if (model.text != ModelText(told.facts)) {
      Remark(Kind::kBadHead, model.line, kModelKey, Word(text::kHeadContradicts));
    }
    for (const HeadLine& line : kHead) {
      const auto found = head_.find(std::string(line.key));
      if (found == head_.end()) {
        Remark(Kind::kBadHead, 0, line.key, MissingHead(line.key));
      } else if (found->second.text != OrNothing(told.identity.*line.text)) {
        Remark(Kind::kBadHead, found->second.line, line.key, Word(text::kHeadContradicts));
      }
    }
  }

  struct HeadText {
    int line = 0;
    std::string text;
  };

  const ToldFacts& speaker_;
  ToldFacts facts_;
  std::vector<std::string_view> lines_;
  std::map<std::string, HeadText> head_;
  std::vector<ReadRow> rows_;
  std::vector<ParameterPlace> remarked_;
  SnapshotFile file_;
};

}  // namespace

std::string SnapshotText(const Snapshot& snapshot, const std::vector<SnapshotRemark>& unknown) {
  Snapshot told = snapshot;
  RetellSnapshot(told, English(snapshot.facts));
  std::string text = std::string(kFirstLine) + "\n";
  for (const HeadLine& line : kHead) {
    text += std::string(line.key) + "\t" + OrNothing(told.identity.*line.text) + "\n";
  }
  text += std::string(kModelKey) + "\t" + ModelText(told.facts) + "\n\n";
  text += std::string(kColumns) + "\n";
  for (const SnapshotRow& row : told.rows) text += RowText(row) + "\n";
  for (const SnapshotRemark& remark : unknown) {
    if (remark.kind == Kind::kUnknownName) text += remark.text + "\n";
  }
  return text;
}

SnapshotFile ParseSnapshot(std::string_view content, const ToldFacts& speaker) {
  return SnapshotParser(speaker).Parse(WithoutMark(content));
}

FileError WriteSnapshotFile(App& app, const std::string& path, const Snapshot& snapshot) {
  return WriteWhole(app.platform.files, path, SnapshotText(snapshot), false);
}

SnapshotFile ReadSnapshotFile(App& app, const std::string& path) {
  std::string content;
  SnapshotFile file;
  file.error = app.platform.files.ReadAtMost(path, kMostSnapshotBytes, content);
  return file.error == FileError::kGood ? ParseSnapshot(content, app.state) : file;
}

bool LooksLikeSnapshot(std::string_view content) {
  content = WithoutMark(content);
  return content.substr(0, content.find_first_of("\r\n")) == kFirstLine;
}

std::string RemarkText(const SnapshotRemark& remark, Language language) {
  if (remark.line == 0) return remark.reason;
  return FormatText(LookupText(text::kAtLine, language), {std::to_string(remark.line), remark.reason});
}

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
#include "compare/side.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>
#include <utility>

#include "files/parameter_file.h"
#include "files/profile_file.h"
#include "meter/display_table.h"
#include "meter/facts.h"
#include "meter/offered_codes.h"
#include "meter/process_table.h"
#include "meter/range_table.h"
#include "meter/status_table.h"
#include "meter/system_table.h"
#include "meter/units.h"
#include "meter/value_text.h"
#include "resources/string_table.h"
#include "resources/text_ids_compare.h"
#include "values/number_text.h"
#include "values/text.h"
#include "values/unit_names.h"

namespace vlt {
namespace {

constexpr int kFlowKind = 1;
constexpr const char* kUnitInForce = "0";

// --- meters and snapshots
// ------------------------------------------------------------------------------------

CompareSide SideOfRows(const Snapshot& snapshot, SideKind kind) {
  CompareSide side;
  side.kind = kind;
  side.identity = snapshot.identity;
  side.facts = snapshot.facts;
  for (const SnapshotRow& row : snapshot.rows) {
    side.cells.push_back({.place = row.place,
                          .raw = row.raw,
                          .text = row.value,
                          .unit = row.unit,
                          .unit_flag = snapshot.facts.UnitFlag,
                          .problem = row.unread});
  }
  return side;
}

// --- slots: what the pages keep and a parameter file holds
// -------------------------------------------------------

// Where slots come from: the parameter file's keys, or the pages.
struct SlotSource {
  // The text of a slot; nothing for a key that a file does not have.
  std::function<std::optional<std::string>(Slot)> text;
  // The number of a key that holds a page's channel or output.
  std::function<int(int SharedState::*)> number;
};

class SlotReader {
 public:
  SlotReader(SlotSource source, ToldFacts facts, bool shape_is_known)
      : source_(std::move(source)), facts_(std::move(facts)), shape_is_known_(shape_is_known) {
    shape_is_known_ = shape_is_known_ || ParseWhole(Text(SystemRow("specification")));
    LearnAll(facts_, [this](const ParameterPlace& place) { return CodeAt(place); });
  }

  CompareSide Side(SideKind kind) {
    CompareSide side;
    side.kind = kind;
    for (const ParameterGroup& group : ParameterGroups()) {
      for (const Parameter& row : group.rows) AddCell(row, side.cells);
    }
    std::sort(side.cells.begin(), side.cells.end(),
              [](const SideCell& a, const SideCell& b) { return InCatalogueOrder(a.place, b.place); });
    side.identity = Identity(side);
    side.facts = facts_;
    return side;
  }

 private:
  std::string Text(Slot slot) const {
    if (slot == Slot::kNone) return {};
    return std::string(Trim(source_.text(slot).value_or("")));
  }
  std::string Text(const Parameter& row) const { return Text(row.slot); }

  // The chosen entry of a list, or nothing.
  std::optional<int> IndexOf(const Parameter& row) const {
    const auto number = ParseWhole(Text(row));
    constexpr int kMostEntries = 1000;
    return number && *number >= 0 && *number < kMostEntries ? number : std::nullopt;
  }

  // What the page of a row says of a fact; the unit system has a key of its own.
  std::optional<int> CodeAt(const ParameterPlace& place) const {
    const Parameter& row = *place.row;
    if (&row == &SystemRow("unit") || place.index != std::clamp(PageIndex(row), 0, kChannels - 1)) return {};
    if (&row == &SystemRow("specification")) return ParseWhole(Text(row));
    const auto index = IndexOf(row);
    return index && &row == &RangeRow("kind") ? CodeOfIndex(row, *index).value_or(kFlowKind) : index;
  }

  // The channel or output that the page of a row shows.
  int PageIndex(const Parameter& row) const {
    if (row.location == Location::kMeter) return 0;
    const std::string_view group = GroupOf(row).name;
    struct Page {
      std::string_view group;
      int SharedState::*number;
    };
    static constexpr Page kPages[] = {{"process", &SharedState::ProcessChannel},
                                      {"range", &SharedState::RangeChannel},
                                      {"total", &SharedState::TotalChannel},
                                      {"status", &SharedState::OutputIndex},
                                      {"details", &SharedState::DetailChannel}};
    for (const Page& page : kPages) {
      if (page.group == group) return source_.number(page.number);
    }
    return 0;
  }

  // The code that an entry of a page's list stands for; nothing for an entry that the list has not.
  std::optional<int> CodeOfIndex(const Parameter& row, int index) const {
    const Parameter* channel = ChannelOfItem(row);
    const std::vector<int> codes =
        OfferedCodes({&row, PageIndex(row)}, facts_,
                     channel == nullptr ? 0 : DisplayChannel(*channel).value_or(kNoChannel));
    if (index >= static_cast<int>(codes.size())) return std::nullopt;
    return codes[static_cast<std::size_t>(index)];
  }

  // The display's channels are kept by their names.
  std::optional<int> DisplayChannel(const Parameter& row) const {
    const std::vector<std::string> words = CodeWords(row, facts_);
    const auto at = std::find(words.begin(), words.end(), Text(row));
    if (at == words.end()) return std::nullopt;
    return static_cast<int>(at - words.begin());
  }

  // The second thermal full scale is not among the slots: its key repeats the first one.
  static bool IsKept(const Parameter& row) {
    return row.slot != Slot::kNone && &row != &RangeRow("thermal_full_scale_2");
  }

  void AddCell(const Parameter& row, std::vector<SideCell>& cells) const {
    const int index = PageIndex(row);
    const bool exists = shape_is_known_ ? HasPlace({&row, index}, facts_)
                                        : index >= 0 && index < LocationCount(row.location, MeterFacts{});
    if (!IsKept(row) || !exists) return;
    SideCell cell{
        .place = {&row, index}, .raw = {}, .text = Text(row), .unit = {}, .unit_flag = 0, .problem = {}};
    if (cell.text.empty() || !source_.text(row.slot)) return;
    cell.unit = UnitOf(cell.place);
    cell.unit_flag = UnitFlagOf(row, cell.unit);
    ToldFacts facts = facts_;
    facts.UnitFlag = cell.unit_flag;
    if (row.IsCode()) {
      if (!EncodeEntry(row, facts, cell)) return;
    } else {
      Take(row, facts, EncodeValue(row, facts, cell.text), cell);
    }
    cells.push_back(std::move(cell));
  }

  static void Take(const Parameter& row, const ToldFacts& facts, EncodedValue encoded, SideCell& cell) {
    cell.raw = std::move(encoded.bytes);
    if (encoded.fault != ValueFault::kNone) cell.problem = ValueFaultText(row, facts, encoded.fault);
    cell.cut = CutText(row, facts, cell.text, cell.raw);
  }

  // False for a list without a choice.
  bool EncodeEntry(const Parameter& row, const ToldFacts& facts, SideCell& cell) const {
    const bool by_name = &row == &DisplayRow("channel_1") || &row == &DisplayRow("channel_2");
    std::optional<int> code;
    if (by_name) {
      code = DisplayChannel(row);
    } else if (const auto index = IndexOf(row)) {
      code = CodeOfIndex(row, *index);
    } else if (const auto number = ParseWhole(cell.text); number && *number < 0) {
      return false;
    }
    if (!code) {
      cell.problem = ValueFaultText(row, facts, ValueFault::kNoSuchCode);
      return true;
    }
    cell.raw = EncodeCode(*code);
    cell.text = ValueText(row, facts, cell.raw);
    return true;
  }

  // The caption that is kept beside a value, or the unit in force.
  std::string UnitOf(const ParameterPlace& place) const {
    const std::string caption = Text(place.row->unit_slot);
    if (!caption.empty() && caption != kUnitInForce) return WithoutBrackets(caption);
    return UnitTextAt(place, facts_, std::clamp(IndexOf(StatusRow("channel")).value_or(0), 0, kChannels - 1));
  }

  int UnitFlagOf(const Parameter& row, const std::string& unit) const {
    for (const int flag : {0, 1}) {
      const auto names = BuildBaseUnitNames(flag);
      const bool is_base = row.unit <= UnitKind::kViscosity || row.unit == UnitKind::kFlow;
      if (is_base && std::find(names.begin(), names.end(), unit) != names.end()) return flag;
    }
    return facts_.UnitFlag;
  }

  static MeterIdentity Identity(const CompareSide& side) {
    const auto text = [&](const Parameter& row) {
      const SideCell* cell = side.Find({&row, 0});
      return cell == nullptr ? std::string() : cell->text;
    };
    return {.id_number = text(SystemRow("id_number")),
            .specification = text(SystemRow("specification")),
            .type = text(SystemRow("type")),
            .version = text(SystemRow("version")),
            .date = {},
            .unit_system = text(SystemRow("unit")),
            .path_mode = text(SystemRow("measurement_mode"))};
  }

  SlotSource source_;
  ToldFacts facts_;
  // Which parameters the meter has that it all came from; what it has not is no value of it.
  bool shape_is_known_;
};

// --- files
// -----------------------------------------------------------------------------------------------------

// The loader initial file shares some keys with other meanings; this section is of parameter files alone.
bool IsParameterFile(const ProfileFile& profile) {
  const auto rows = SlotRows();
  return std::any_of(rows.begin(), rows.end(), [&](const SlotRow& row) {
    return std::string_view(row.section) == "PROCESS SETTING" && profile.Has(row.section, row.key);
  });
}

// Numbers beyond 16 bits are told and count as the first channel.
std::vector<std::string> NumberRemarks(const ProfileFile& profile) {
  using Limits = std::numeric_limits<std::int16_t>;
  std::vector<std::string> remarks;
  for (const SlotRow& row : SlotRows()) {
    if (row.number == nullptr) continue;
    const int number = profile.GetInt(row.section, row.key, 0);
    if (number >= Limits::min() && number <= Limits::max()) continue;
    remarks.push_back(std::string(row.section) + "/" + row.key + " = " + std::to_string(number));
  }
  return remarks;
}

SlotSource SourceOf(const ProfileFile& profile) {
  SlotSource source;
  source.text = [&profile](Slot slot) -> std::optional<std::string> {
    const SlotRow& row = kSlotRows[static_cast<std::size_t>(slot)];
    if (!profile.Has(row.section, row.key)) return std::nullopt;
    return CutAtNul(profile.GetString(row.section, row.key, ""));
  };
  source.number = [&profile](int SharedState::*number) {
    for (const SlotRow& row : SlotRows()) {
      if (row.number == number) return profile.GetInt(row.section, row.key, 0);
    }
    return 0;
  };
  return source;
}

CompareSide SideOfProfile(const App& app, const ProfileFile& profile, const std::string& path) {
  ToldFacts facts = app.state;
  facts.UnitFlag = profile.GetInt("SYSTEM", "UNIT_FLAG", facts.UnitFlag) == 0 ? 0 : 1;
  CompareSide side = SlotReader(SourceOf(profile), std::move(facts), false).Side(SideKind::kParameterFile);
  side.name = path;
  side.remarks = NumberRemarks(profile);
  return side;
}

}  // namespace

const SideCell* CompareSide::Find(const ParameterPlace& place) const {
  const auto at = std::lower_bound(cells.begin(), cells.end(), place,
                                   [](const SideCell& cell, const ParameterPlace& wanted) {
                                     return InCatalogueOrder(cell.place, wanted);
                                   });
  return at != cells.end() && at->place == place ? &*at : nullptr;
}

CompareSide SideOfMeter(const Snapshot& snapshot) { return SideOfRows(snapshot, SideKind::kMeter); }

CompareSide SideOfSnapshot(const SnapshotFile& file, const std::string& path) {
  CompareSide side = SideOfRows(file.snapshot, SideKind::kSnapshot);
  side.name = path;
  for (const SnapshotRemark& remark : file.remarks) {
    side.remarks.push_back(RemarkText(remark, file.snapshot.facts.Spoken()));
  }
  return side;
}

FileSide SideOfParameterFile(const App& app, const std::string& path) {
  FileSide result;
  ProfileFile profile;
  result.error = ReadProfile(app.platform.files, path, profile);
  if (result.error != FileError::kGood) return result;
  if (!IsParameterFile(profile)) {
    result.error = FileError::kOther;
    return result;
  }
  result.side = SideOfProfile(app, profile, path);
  return result;
}

CompareSide SideOfFields(App& app) {
  OpenPagesToSlots(app);
  SlotSource source;
  source.text = [&app](Slot slot) -> std::optional<std::string> { return std::as_const(app.slots)[slot]; };
  source.number = [&app](int SharedState::*number) { return app.state.*number; };
  return SlotReader(std::move(source), app.state, true).Side(SideKind::kFields);
}

FileSide SideOfFile(App& app, const std::string& path) {
  FileSide result;
  std::string content;
  result.error = app.platform.files.ReadAtMost(path, kMostSnapshotBytes, content);
  if (result.error != FileError::kGood) return result;
  if (!LooksLikeSnapshot(content)) return SideOfParameterFile(app, path);
  const SnapshotFile file = ParseSnapshot(content, app.state);
  if (file.is_snapshot) {
    result.side = SideOfSnapshot(file, path);
  } else {
    result.error = FileError::kOther;
  }
  return result;
}

std::string SideTitle(const App& app, const CompareSide& side) {
  return FormatText(app.Text(text::kSideTitles + static_cast<int>(side.kind)), {LastComponent(side.name)});
}

}  // namespace vlt

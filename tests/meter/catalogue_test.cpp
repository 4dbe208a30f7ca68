// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "meter/catalogue.h"
#include "meter/details_table.h"
#include "meter/display_table.h"
#include "meter/facts.h"
#include "meter/heat_table.h"
#include "meter/maintenance_table.h"
#include "meter/offered_codes.h"
#include "meter/process_table.h"
#include "meter/range_table.h"
#include "meter/snapshot_file.h"
#include "meter/status_table.h"
#include "meter/system_table.h"
#include "meter/total_table.h"
#include "resources/string_table.h"
#include "state/meter_models.h"

namespace vlt::test {
namespace {

using Table = std::span<const Parameter>;

const Table kTables[] = {kProcessTable, kRangeTable, kTotalTable,   kStatusTable,     kDisplayTable,
                         kSystemTable,  kHeatTable,  kDetailsTable, kMaintenanceTable};

// What would go unseen until an operator reads or writes the wrong register.
TEST(Catalogue, RowsAreDistinctNamedAndLieApart) {
  std::set<std::string_view> names;
  std::map<Slot, std::string_view> slots;
  std::map<std::pair<ReadFunction, int>, std::string_view> bytes;
  for (const Table& table : kTables) {
    for (const Parameter& row : table) {
      EXPECT_TRUE(names.insert(row.name).second) << row.name;
      EXPECT_NO_THROW(LookupText(row.caption)) << row.name;
      for (const Slot slot : {row.slot, row.unit_slot}) {
        if (slot == Slot::kNone) continue;
        EXPECT_TRUE(slots.emplace(slot, row.name).second) << row.name << " shares a key with " << slots[slot];
      }
      SharedState full;
      for (int index = 0; index < LocationCount(row.location, full); ++index) {
        for (int byte = 0; byte < 2 * row.Words(); ++byte) {
          const auto [there, is_new] =
              bytes.emplace(std::pair(row.function, AddressOf(row, index) + byte), row.name);
          EXPECT_TRUE(is_new) << row.name << " lies on " << there->second;
        }
      }
    }
  }
}

// What the order of writing names can be written, and is written once.
TEST(Catalogue, TheOrderOfWritingNamesWhatIsWritten) {
  for (const ParameterGroup& group : ParameterGroups()) {
    for (const Parameter& row : group.rows) {
      EXPECT_LE(std::count(group.write_order.begin(), group.write_order.end(), &row),
                row.write == WriteWith::kNothing ? 0 : 1)
          << row.name;
    }
  }
}

TEST(Catalogue, NumbersAreShownInFixedNotationAndTakenBack) {
  SharedState state;
  const Parameter& full_scale = RangeRow("full_scale_1");
  const Parameter& viscosity = ProcessRow("viscosity");
  const struct {
    const Parameter& row;
    const char* typed;
    const char* shown;
  } cases[] = {
      {full_scale, "1e20", "100000000000000000000"},    {full_scale, "1E-12", "0.000000000001"},
      {full_scale, "-123456789.125", "-123456789.125"}, {full_scale, "0.1", "0.1"},
      {viscosity, "1e20", "100000000000000000000"},     {viscosity, "1.00383999", "1.003839"},
  };
  for (const auto& c : cases) {
    const Encoded typed = EncodeText(c.row, state, c.typed);
    const std::string shown = ShowValue(c.row, state, typed.bytes, 0);
    EXPECT_EQ(shown, c.shown);
    EXPECT_EQ(EncodeText(c.row, state, shown).fault, TextFault::kNone) << "what is shown is accepted";
  }
}

TEST(Catalogue, CharactersThatAreNotPrintableAreBlanks) {
  const std::uint8_t bytes[] = {'A', 0x00, '!', 0x1F, '~', 0x7F, 0xC4, 'z'};
  EXPECT_EQ(ShowValue(SystemRow("type"), SharedState(), bytes, 0), "A ! ~  z");
  const std::uint8_t padded[] = {' ', 'B', 0x00, 0xFF, ' ', 0x7F, 0x00, ' '};
  EXPECT_EQ(ShowValue(SystemRow("type"), SharedState(), padded, 0), " B");
}

// A parameter file knows which of its keys hold a choice.
TEST(Catalogue, SlotsOfListsAreKnownAsSuch) {
  for (const Table& table : kTables) {
    for (const Parameter& row : table) {
      if (row.slot == Slot::kNone) continue;
      const SlotRow& slot = kSlotRows[static_cast<std::size_t>(row.slot)];
      const bool by_name = std::string_view(slot.key).ends_with("_SELECT_CH");
      EXPECT_EQ(slot.is_choice, row.IsCode() && !by_name) << row.name << " " << slot.key;
    }
  }
}

TEST(Catalogue, ATextThatTheRegisterCannotHoldIsTold) {
  SharedState state;
  const struct {
    const Parameter& row;
    int unit_flag;
    const char* text;
    TextFault fault;
    const char* greatest;
  } cases[] = {
      {ProcessRow("pipe_sound_velocity"), 0, "32767", TextFault::kNone, "32767"},
      {ProcessRow("pipe_sound_velocity"), 0, "40000", TextFault::kOutOfRange, "32767"},
      {ProcessRow("pipe_sound_velocity"), 0, "12,5", TextFault::kComma, "32767"},
      {ProcessRow("pipe_sound_velocity"), 0, "1.2.3", TextFault::kNoNumber, "32767"},
      {ProcessRow("pipe_sound_velocity"), 0, "12.5", TextFault::kNone, "32767"},
      {ProcessRow("outer_diameter"), 0, "1,234", TextFault::kComma, "21474836.47"},
      {ProcessRow("outer_diameter"), 0, "0.009", TextFault::kNone, "21474836.47"},
      {ProcessRow("outer_diameter"), 0, "21474836.47", TextFault::kNone, "21474836.47"},
      {ProcessRow("outer_diameter"), 1, "21474836.47", TextFault::kOutOfRange, "214748.3647"},
      {ProcessRow("sensor_spacing_2"), 0, "-1", TextFault::kOutOfRange, "65535"},
      {RangeRow("hysteresis"), 0, "327.68", TextFault::kOutOfRange, "327.67"},
      {MaintenanceRow("ao1_adjustment_4ma"), 0, "65535", TextFault::kNone, "65535"},
      {MaintenanceRow("ao1_adjustment_4ma"), 0, "-32769", TextFault::kOutOfRange, "65535"},
  };
  for (const auto& c : cases) {
    state.UnitFlag = c.unit_flag;
    EXPECT_EQ(EncodeText(c.row, state, c.text).fault, c.fault) << c.row.name << " " << c.text;
    EXPECT_EQ(GreatestText(c.row, state), c.greatest) << c.row.name;
  }
}

TEST(Catalogue, ShapesOfMeterDecideWhatExists) {
  SharedState full;
  SharedState pipes;
  pipes.PathMode = kTwoPipesMode;
  SharedState single;
  single.SpecClass = kSingleChannelModel;
  SharedState unknown;
  unknown.SpecClass = -1;
  const struct {
    const Parameter& row;
    int index;
    bool full, pipes, single, unknown;
  } cases[] = {
      {ProcessRow("fluid"), 1, true, true, false, true},
      {RangeRow("damping"), 2, false, false, false, false},
      {RangeRow("full_scale_1"), 2, true, true, false, true},
      {RangeRow("thermal_full_scale_1"), 0, true, false, false, true},
      {StatusRow("channel"), 3, true, true, false, true},
      {StatusRow("function"), 1, true, true, true, true},
      {StatusRow("function"), 4, false, false, false, false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ExistsIn(c.row, full, c.index), c.full) << c.row.name;
    EXPECT_EQ(ExistsIn(c.row, pipes, c.index), c.pipes) << c.row.name;
    EXPECT_EQ(ExistsIn(c.row, single, c.index), c.single) << c.row.name;
    EXPECT_EQ(ExistsIn(c.row, unknown, c.index), c.unknown) << c.row.name;
  }
  EXPECT_TRUE(HasHeat(full) && !HasHeat(pipes) && !HasHeat(unknown) && MayHaveHeat(unknown));
  EXPECT_EQ(KnownChannelConfig(pipes), ChannelConfig::kTwoPipes);
  EXPECT_EQ(KnownChannelConfig(unknown), ChannelConfig::kUnknown);
}

// A model that is not built: two channels, three outputs, no heat. A row of data is all that it takes.
TEST(Catalogue, AnotherModelIsAnotherRow) {
  static constexpr MeterModel kWithThree[] = {
      {.name = "full", .channels = 2, .outputs = 4, .heat = true, .is = [](int) { return true; }},
      {.name = "trio", .channels = 2, .outputs = 3, .is = [](int number) { return number == 9001; }},
  };
  const ModelsForTest models(kWithThree);
  ToldFacts facts;
  const auto all = PlacesOf(facts).size();
  LearnFrom(facts, {&SystemRow("specification"), 0}, 9001);
  EXPECT_EQ(facts.SpecClass, 1);
  const auto places = PlacesOf(facts);
  EXPECT_LT(places.size(), all);
  for (const ParameterPlace& place : places) {
    EXPECT_NE(place.row->exists, Exists::kHeat) << place.row->name;
    EXPECT_FALSE(IsOutput(*place.row) && place.index == 3) << place.row->name;
  }
  EXPECT_TRUE(ExistsIn(RangeRow("full_scale_1"), facts, 2));
  const struct {
    const Parameter& row;
    int last;  // of codes without heat
  } offers[] = {{StatusRow("function"), 9}, {DisplayRow("item_1"), 6}, {SystemRow("ao1_source"), 2}};
  facts.PathMode = kTwoPathsMode;
  for (const auto& c : offers) EXPECT_EQ(OfferedCodes({&c.row, 0}, facts).back(), c.last) << c.row.name;
  Snapshot snapshot;
  snapshot.facts = facts;
  for (const ParameterPlace& place : places) snapshot.rows.push_back({place, {}, "", "", "silent"});
  const SnapshotFile read = ParseSnapshot(SnapshotText(snapshot), {});
  EXPECT_TRUE(read.is_snapshot);
  EXPECT_EQ(read.snapshot.facts.SpecClass, 1);
  EXPECT_EQ(read.snapshot.rows.size(), places.size());
}

}  // namespace
}  // namespace vlt::test

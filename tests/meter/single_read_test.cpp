// SPDX-License-Identifier: GPL-3.0-or-later
// One parameter read for itself says what the snapshot of the whole meter says.
#include "meter/single_read.h"

#include <gtest/gtest.h>

#include "link/port.h"
#include "meter/process_table.h"
#include "meter/range_table.h"
#include "meter/status_table.h"
#include "support/test_app.h"

namespace vlt {
namespace {

using test::TestApp;

constexpr int kSingle = 182;

TEST(SingleRead, AgreesWithTheSnapshot) {
  const sim::MeterConfig shapes[] = {{.path_mode = 0},
                                     {.path_mode = 1, .unit_system = 1},
                                     {.path_mode = 2},
                                     {.specification = kSingle, .unit_system = 1}};
  unsigned seed = 1;
  for (const sim::MeterConfig& shape : shapes) {
    TestApp t({.meter = shape});
    t.platform.Meter().Fill(++seed, 0);
    // What another meter has left behind must not be taken for this one's.
    t.app.state.SpecClass = kSingleChannelModel;
    t.app.state.UnitFlag = 1 - shape.unit_system;
    ASSERT_TRUE(OpenPort(t.app));
    const Snapshot whole = ReadSnapshot(t.app, {}).snapshot;
    ASSERT_TRUE(whole.AllKnown());
    for (const SnapshotRow& row : whole.rows) {
      const SingleRead read = ReadSingle(t.app, *row.place.row, row.place.index);
      ASSERT_EQ(read.rows.size(), 1U) << row.place.row->name;
      const SnapshotRow& single = read.rows.front();
      EXPECT_EQ(single.raw, row.raw) << row.place.row->name;
      EXPECT_EQ(single.value + single.unit, row.value + row.unit) << row.place.row->name;
      EXPECT_TRUE(single.place == row.place && single.unread.empty());
    }
  }
}

TEST(SingleRead, WhatIsMissingIsTold) {
  const struct {
    const char* fault;
    bool shape_known;
    bool row_known;
  } cases[] = {{"silence@0148H*ever", false, false}, {"silence@03E8H*ever", false, false},
               {"silence@0100H*ever", false, false}, {"silence@0004H*ever", true, false},
               {"silence@0006H*ever", true, true},   {"crc@0004H", true, true}};
  for (const auto& c : cases) {
    TestApp t;
    t.platform.Arm(c.fault);
    ASSERT_TRUE(OpenPort(t.app));
    const SingleRead read = ReadSingle(t.app, RangeRow("hysteresis"), kEveryPlace);
    EXPECT_EQ(read.failure.empty(), c.shape_known) << c.fault;
    const SingleRead scale = ReadSingle(t.app, RangeRow("full_scale_1"), 0);
    EXPECT_EQ(!scale.rows.empty() && scale.rows.front().Known(), c.row_known) << c.fault;
  }
}

TEST(SingleRead, ReadsThePlacesThatThereAre) {
  const struct {
    int specification;
    const Parameter& row;
    int index;
    std::size_t count;
  } cases[] = {{81, ProcessRow("fluid"), kEveryPlace, 2},
               {kSingle, ProcessRow("fluid"), kEveryPlace, 1},
               {kSingle, ProcessRow("fluid"), 1, 0},
               {81, StatusRow("function"), kEveryPlace, 4},
               {kSingle, StatusRow("function"), kEveryPlace, 2}};
  for (const auto& c : cases) {
    TestApp t({.meter = {.specification = c.specification}});
    ASSERT_TRUE(OpenPort(t.app));
    EXPECT_EQ(ReadSingle(t.app, c.row, c.index).rows.size(), c.count) << c.row.name;
  }
}

}  // namespace
}  // namespace vlt

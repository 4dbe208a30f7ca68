// SPDX-License-Identifier: GPL-3.0-or-later
// A simulated line driven by hand: bytes in, what comes out and when.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

#include "sim/line.h"
#include "sim/scenario.h"

namespace sim {

inline Bytes Hex(std::string_view text) {
  Bytes bytes;
  EXPECT_TRUE(FromHex(text, bytes)) << text;
  return bytes;
}

// Lets time run from event to event until the line is at rest. What arrived, and when the last byte did.
struct Arrival {
  std::string bytes;
  Micros last = -1;
};

inline Arrival Drain(Line& line) {
  Arrival arrival;
  Bytes all;
  while (const auto next = line.NextEvent()) {
    const Bytes bytes = line.Take(*next);
    if (!bytes.empty()) arrival.last = *next;
    all.insert(all.end(), bytes.begin(), bytes.end());
    const auto after = line.NextEvent();
    if (after && *after <= *next) {
      ADD_FAILURE() << "the event at " << *next << " doesn't go away";
      break;
    }
  }
  arrival.bytes = ToHex(all);
  return arrival;
}

inline Arrival Exchange(Line& line, std::string_view request, Micros now = 0) {
  line.Transmit(Hex(request), now);
  return Drain(line);
}

inline std::unique_ptr<Line> Make(std::string_view words) {
  Scenario scenario;
  std::string error = ApplyWords(scenario, words);
  EXPECT_EQ(error, "");
  auto line = Build(scenario, 0, error);
  EXPECT_EQ(error, "");
  return line;
}

}  // namespace sim

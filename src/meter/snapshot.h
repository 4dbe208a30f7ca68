// SPDX-License-Identifier: GPL-3.0-or-later
// A snapshot: every parameter of every channel and output that a meter has, as its registers hold it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "meter/catalogue.h"
#include "state/app.h"

namespace vlt {

// Who a meter is and how it is set up: what decides what its registers mean. Texts are as the pages show
// them; an empty one is not known.
struct MeterIdentity {
  std::string id_number;      // "0001"
  std::string specification;  // "0081"
  std::string type;
  std::string version;
  std::string date;         // "yyyy/mm/dd hh:mm:ss", when it was read; of a file, when it was written
  std::string unit_system;  // "METRIC"
  std::string path_mode;    // "2PATHS"; of a single-channel model empty
  bool operator==(const MeterIdentity&) const = default;
};

struct SnapshotRow {
  ParameterPlace place;
  std::vector<std::uint8_t> raw;  // 2 * Words() bytes; empty when it is not known
  std::string value;              // in the language in force
  std::string unit;               // without brackets, may be empty
  std::string unread;             // why it is not known, in the language in force; empty when it is

  bool Known() const { return !raw.empty(); }
};

struct Snapshot {
  MeterIdentity identity;
  // The shape of the meter, its units and the language of the texts: what the values are shown and written
  // by.
  ToldFacts facts;
  // In catalogue order, one for each place that a meter of this shape has.
  std::vector<SnapshotRow> rows;

  const SnapshotRow* Find(const ParameterPlace& place) const;  // or null
  bool AllKnown() const;
};

// Why the shape of the meter is not known: what decides which parameters there are and what they mean could
// not be read, or tells a code that nobody understands. Empty when it is known.
std::string UnknownShape(const Snapshot& snapshot);

// What the owner of a long piece of work on the line is told and asked.
struct WorkListener {
  // Step `number` of `count` begins; `what` names it in the language in force.
  std::function<void(int number, int count, const std::string& what)> began = [](int, int,
                                                                                 const std::string&) {};
  // True ends the work before its next exchange.
  std::function<bool()> stop = [] { return false; };
};

// Reads a snapshot from the meter of the settings, each block once. A meter that is found in its test state
// is noted (state/tested_meters.h). The port must be open and the interface locked. A block without an answer
// leaves its rows unread with the reason, and so does a stop.
struct SnapshotResult {
  Snapshot snapshot;
  bool stopped = false;
};
SnapshotResult ReadSnapshot(App& app, const WorkListener& listener);

// Works out texts, units and identity of rows whose raw bytes and reasons stand already; `facts` brings the
// language, the installation and what else is known, and takes in what the rows tell. A row whose unit or
// unit system is one of the unknown rows, or a code that nobody understands, becomes unknown itself.
Snapshot CompleteSnapshot(ToldFacts facts, std::vector<SnapshotRow> rows, std::string date);
// The same snapshot with its texts in another language or for another installation.
void RetellSnapshot(Snapshot& snapshot, const ToldFacts& speaker);

}  // namespace vlt

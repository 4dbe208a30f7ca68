// SPDX-License-Identifier: GPL-3.0-or-later
// Chosen rows of a side sent to the meter, each proven; and a meter brought back to what it was.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "compare/comparison.h"
#include "compare/conversion.h"
#include "compare/restore_points.h"
#include "meter/proven_write.h"

namespace vlt {

// How one chosen row ended.
struct SentRow {
  ParameterPlace place;
  WriteEnd end = WriteEnd::kNotSent;
  std::string reason;             // of all ends but kStored, in the language in force
  std::vector<std::uint8_t> raw;  // what was sent; empty when nothing was
  std::string sent;               // the same as the meter would show it
  std::string came_back;          // the value that was read back, of kNotProven
  bool converted = false;
};

enum class SendHalt : std::uint8_t {
  kDone,            // every row had its turn
  kStopped,         // asked to stop
  kPortLost,        // in the middle of it
  kNoMeter,         // the meter could not be read; nothing was sent
  kNoRestorePoint,  // it could not be written; nothing was sent
  kOtherMeter,      // the meter on the line is not the one that was asked for; nothing was sent
};

struct SendReport {
  SendHalt halt = SendHalt::kDone;
  std::string reason;         // of a halt, in the language in force
  std::string restore_point;  // its path; empty when none was written
  std::vector<SentRow> rows;  // every chosen row once, in the order of writing
  // The meter as it was before, and, when it was read again, afterwards.
  Snapshot before;

  std::size_t Count(WriteEnd end) const;
};

struct SendListener : WorkListener {
  std::function<void(const SentRow& row)> ended = [](const SentRow&) {};
  // The program ends behind the work: nobody will ask any more what the session knows of the meter.
  std::function<bool()> leaving = [] { return false; };
};

// In the order in which the pages write: what decides units and modes comes first, then page by page, in each
// the channels or outputs one after the other, in each the page's own order. Rows that no page writes come
// last.
void SortAsWritten(std::vector<ParameterPlace>& places);

// Sends the chosen places of `source`. The port must be open and the interface locked. First the meter is
// read whole; it is kept as a restore point before the first row goes out, and not when there is none to be
// sent. `expected`, when it is not null, is who the meter must be.
SendReport SendRows(App& app, const CompareSide& source, std::vector<ParameterPlace> chosen,
                    const SendListener& listener, const MeterIdentity* expected = nullptr);

// Brings the meter to what `point` holds: sends what differs, reads the meter again, and repeats while a
// setting that was sent has changed others. `left` are the rows that differ at the end, each with its reason;
// `kept` those that differ because they are the own ones of another meter than that of the point.
struct RestoreReport {
  SendReport sent;  // of all rounds together; a row that was sent twice stands with its last end
  std::vector<SentRow> left;
  std::vector<SentRow> kept;
  bool verified = false;  // the meter was read whole at the end
  bool Equal() const { return verified && left.empty(); }
};
// A meter that is not the one of the point gets nothing, unless the operator wants it all the same; its ID
// number, the adjustment of its outputs, its type and version stay its own then.
enum class OtherMeter : std::uint8_t { kRefuse, kTake };
RestoreReport RestoreMeter(App& app, const CompareSide& point, const SendListener& listener,
                           OtherMeter other = OtherMeter::kRefuse);

// The rows that "all that differs" chooses to send from the left side to the meter on the right: different
// ones, without those that are never sent and those of another meter alone.
std::vector<ParameterPlace> ChooseDifferent(const Comparison& comparison);

}  // namespace vlt

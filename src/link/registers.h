// SPDX-License-Identifier: GPL-3.0-or-later
// Registers of a meter, read and written: what every page, live read and query of the meter goes through.
// Addresses count bytes, as in the meter's register map; quantities count registers of 16 bits. The port must
// be open and the interface locked. Every wait lets events run, so a caller must not assume that nothing
// changed across a call.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "link/modbus.h"

namespace vlt {

enum class ReadFunction : std::uint8_t { kHolding = 3, kInput = 4 };

// Whom an exchange asks and how it is paced.
struct Target {
  int station = 0;
  SendMode mode = kModeOrdinary;
  // One of several on the line: a reply that another station has signed is none. So it is in kModeStations.
  bool of_several = false;
};

// The station of the settings.
Target OwnStation(const App& app, SendMode mode = kModeOrdinary);

// Registers that lie next to each other.
struct RegisterSpan {
  ReadFunction function = ReadFunction::kHolding;
  int address = 0;  // of the first one, channel or output included
  int count = 0;
};

// The contents of registers, high byte first, from the first one asked for: two bytes each.
using RegisterData = std::vector<std::uint8_t>;

// Fills `data` with 2 * span.count bytes. Not ok without a valid reply, and then `data` is empty.
ExchangeReport ReadRegisters(App& app, const Target& target, const RegisterSpan& span, RegisterData& data);
ExchangeReport ReadRegisters(App& app, const RegisterSpan& span, RegisterData& data);

// The same for what is to be relied on: what decides units and shapes, what a comparison calls equal, what a
// write is proven by. A reply that another station has signed is none, and is asked for again. Where an
// attempt on the line has failed, a reply may belong to an earlier request: then readings are repeated until
// two in a row agree, or more where more replies are owed that could be taken for theirs. With `was_clean`
// false they are repeated in any case, because something ahead of the call has failed. Not ok as above, also
// when readings do not agree, which `text` says then in the language in force. Attempts are those of all
// readings.
ExchangeReport ReadRegistersProven(App& app, const Target& target, const RegisterSpan& span,
                                   RegisterData& data, bool was_clean = true);
ExchangeReport ReadRegistersProven(App& app, const RegisterSpan& span, RegisterData& data,
                                   bool was_clean = true);

// How a write ended.
enum class WriteResult {
  kProven,     // the reply repeats what was sent: the value (06) or the number of registers (10H)
  kNoReply,    // no valid reply
  kRefused,    // the meter answered each attempt with an exception
  kOtherEcho,  // a valid reply that repeats something else
};

struct WriteReport {
  WriteResult result = WriteResult::kNoReply;
  ExchangeReport exchange = {};  // of kOtherEcho it is ok

  bool Proven() const { return result == WriteResult::kProven; }
};

// One register with function 06; of `value` the low 16 bits are sent.
WriteReport WriteRegister(App& app, const Target& target, int address, int value);
WriteReport WriteRegister(App& app, int address, int value);
// Registers with function 10H; `data` holds whole registers, high byte first.
WriteReport WriteRegisters(App& app, const Target& target, int address, std::span<const std::uint8_t> data);
WriteReport WriteRegisters(App& app, int address, std::span<const std::uint8_t> data);

// A command register with function 06: its reply carries what the meter makes of the command in place of the
// value. Not ok without a valid reply, and then `answer` is as it was.
ExchangeReport WriteCommand(App& app, int address, int value, int& answer);

// Why a write is not proven, in the language in force: why its exchange has failed, or that the meter has
// repeated another value. Empty for kProven.
std::string WriteFailureText(const App& app, const WriteReport& report);

}  // namespace vlt

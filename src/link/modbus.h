// SPDX-License-Identifier: GPL-3.0-or-later
// The exchange with the meter: one request, one reply, Modbus RTU, this program being the only master.
//
// Frames are byte arrays sized exactly to the frame, the two bytes of the frame check included: the whole
// array goes onto the line. The port must be open and the interface locked. Every wait lets events run, so a
// caller must not assume that nothing changed across a call.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "state/app.h"

namespace vlt {

using Frame = std::vector<std::uint8_t>;

// How an attempt is paced and how often it is repeated.
enum SendMode {
  kModeOrdinary = 0,   // ordinary reads and writes
  kModeStore = 1,      // the store register: one attempt whatever RetryNo says
  kModeLongBlock = 2,  // the long block of measured values: waits longer at 9600 baud
  kModeStations = 3,   // several stations on one line: one long attempt, a pause behind a good one
  kModeUnitQuery = 4,  // unit system and per-channel units: one long attempt
};

// Sends tx[0..txLast] after writing its check into the last two bytes, and fills rx[0..rxLast] with the
// reply. txLast and rxLast are last indexes: 7 for a request of 8 bytes. `mode` is a SendMode; any other
// number counts as kModeOrdinary. True for a whole reply with the asked function and a good check; the
// station byte is not compared, and a register value is not judged.
//
// On false LastErrorText says why and rx holds whatever arrived. On true LastErrorText may still hold what
// was wrong with an earlier attempt.
bool SendReceive(App& app, std::span<std::uint8_t> tx, int txLast, std::span<std::uint8_t> rx, int rxLast,
                 int mode);

// The same for frames that are sized exactly.
bool SendReceive(App& app, Frame& tx, Frame& rx, int mode = kModeOrdinary);

// Frame check over frame[0..count-1]: CRC-16 with the reflected polynomial A001H, started at FFFFH. The low
// byte is sent first.
void CalcCrc(std::span<const std::uint8_t> frame, int count, std::uint8_t& crcHigh, std::uint8_t& crcLow);

// Lets events run until strictly more than `ms` milliseconds have passed, at least once.
void WaitMs(App& app, int ms);

// The word at bytes 4 and 5 of a write's reply: the number of registers (function 10H) or the value (06).
// EchoWordEqual reads it as signed, EchoWordMatch as unsigned when `is_unsigned` is 1. False for a reply that
// is too short.
bool EchoWordEqual(std::span<const std::uint8_t> reply, int expected);
bool EchoWordMatch(std::span<const std::uint8_t> reply, int expected, int is_unsigned);

// The reply's first byte is the station that was asked. Where several stations hang on the line, who asks one
// of them looks at it: the exchange itself takes a reply from any. When it is another one's, LastErrorText
// says that there was no response.
bool IsFromStation(App& app, std::span<const std::uint8_t> reply, int station);

// StationNo as a number; 0 for a text that is none.
int StationNumber(const App& app);

// Requests with room for their check. `function` is 3 (holding registers) or 4 (input registers); `address`
// counts bytes, `count` 16-bit words. Of `value` the low 16 bits are sent. `data` holds whole words, high
// byte first.
Frame ReadRequest(int station, int function, int address, int count);
Frame WriteRegisterRequest(int station, int address, int value);
Frame WriteRegistersRequest(int station, int address, std::span<const std::uint8_t> data);

// A frame of zeros of the size that the reply to `request` has: 2n + 5 bytes for a read of n words (its data
// begin at index 3), 8 for a write.
Frame ReplyFor(std::span<const std::uint8_t> request);

}  // namespace vlt

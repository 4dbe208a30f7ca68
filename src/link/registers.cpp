// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/registers.h"

#include <utility>

#include "resources/text_ids.h"
#include "resources/text_ids_proof.h"
#include "state/line_record.h"
#include "values/codecs.h"

namespace vlt {
namespace {

constexpr std::size_t kReplyHead = 3;  // station, function, count
constexpr std::size_t kCheckBytes = 2;

WriteResult Judge(App& app, const Frame& request, const Frame& reply, bool answered, bool repeated) {
  if (!answered)
    return reply[1] == (request[1] | kExceptionBit) ? WriteResult::kRefused : WriteResult::kNoReply;
  if (repeated) return WriteResult::kProven;
  app.line->CorrectLast(AttemptEnd::kOtherEcho);
  return WriteResult::kOtherEcho;
}

// A meter is known by its ID number only until somebody gives it another one; what was learnt of it from
// these registers holds until they are written.
void ForgetWhatIsWritten(App& app, int address, int count) {
  app.state.writes.Note(address, count);
  constexpr int kIdNumber = 0x0104;
  if (address <= kIdNumber && kIdNumber < address + 2 * count) app.state.MeterIdNo.clear();
}

// One reading of a proven read: false without a reply of the station that was asked.
bool ReadSigned(App& app, const Target& target, const RegisterSpan& span, RegisterData& data) {
  Frame request = ReadRequest(target.station, static_cast<int>(span.function), span.address, span.count);
  Frame reply = ReplyFor(request);
  data.clear();
  if (!SendReceive(app, request, reply, target.mode) || !IsFromStation(app, reply, target.station)) {
    return false;
  }
  data.assign(reply.begin() + kReplyHead, reply.end() - kCheckBytes);
  return true;
}

}  // namespace

Target OwnStation(const App& app, SendMode mode) { return {.station = StationNumber(app), .mode = mode}; }

bool ReadRegisters(App& app, const Target& target, const RegisterSpan& span, RegisterData& data) {
  Frame request = ReadRequest(target.station, static_cast<int>(span.function), span.address, span.count);
  Frame reply = ReplyFor(request);
  data.clear();
  if (!SendReceive(app, request, reply, target.mode)) return false;
  if (target.mode == kModeStations && !IsFromStation(app, reply, target.station)) return false;
  data.assign(reply.begin() + kReplyHead, reply.end() - kCheckBytes);
  return true;
}

bool ReadRegisters(App& app, const RegisterSpan& span, RegisterData& data) {
  return ReadRegisters(app, OwnStation(app), span, data);
}

bool ReadRegistersProven(App& app, const Target& target, const RegisterSpan& span, RegisterData& data,
                         bool was_clean) {
  constexpr int kMostReads = 4;
  RegisterData last;
  for (int i = 0; i < kMostReads && app.platform.port.IsOpen(); ++i) {
    if (!ReadSigned(app, target, span, data)) {
      if (app.line->LastEnd() != AttemptEnd::kOtherStation) return false;
      continue;
    }
    const bool clean = was_clean && i == 0 && app.state.LastErrorText.empty();
    if (clean || data == last) return true;
    last = std::exchange(data, {});
  }
  if (!last.empty()) app.state.LastErrorText = app.Text(text::kReadingsDiffer);
  data.clear();
  return false;
}

bool ReadRegistersProven(App& app, const RegisterSpan& span, RegisterData& data, bool was_clean) {
  return ReadRegistersProven(app, OwnStation(app), span, data, was_clean);
}

WriteResult WriteRegister(App& app, const Target& target, int address, int value) {
  Frame request = WriteRegisterRequest(target.station, address, value);
  Frame reply = ReplyFor(request);
  ForgetWhatIsWritten(app, address, 1);
  const bool answered = SendReceive(app, request, reply, target.mode);
  return Judge(app, request, reply, answered, answered && EchoWordMatch(reply, value & 0xFFFF, 1));
}

WriteResult WriteRegister(App& app, int address, int value) {
  return WriteRegister(app, OwnStation(app), address, value);
}

bool WriteCommand(App& app, int address, int value, int& answer) {
  constexpr std::size_t kAnswerByte = 4;
  Frame request = WriteRegisterRequest(OwnStation(app).station, address, value);
  Frame reply = ReplyFor(request);
  if (!SendReceive(app, request, reply)) return false;
  answer = BytesToUInt16(reply, kAnswerByte);
  return true;
}

WriteResult WriteRegisters(App& app, const Target& target, int address, std::span<const std::uint8_t> data) {
  Frame request = WriteRegistersRequest(target.station, address, data);
  Frame reply = ReplyFor(request);
  ForgetWhatIsWritten(app, address, static_cast<int>(data.size() / 2));
  const bool answered = SendReceive(app, request, reply, target.mode);
  return Judge(app, request, reply, answered,
               answered && EchoWordEqual(reply, static_cast<int>(data.size() / 2)));
}

WriteResult WriteRegisters(App& app, int address, std::span<const std::uint8_t> data) {
  return WriteRegisters(app, OwnStation(app), address, data);
}

std::string WriteFailureText(const App& app, WriteResult result) {
  if (result == WriteResult::kProven) return {};
  return result == WriteResult::kOtherEcho ? app.Text(text::kOtherEcho) : app.state.LastErrorText;
}

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/registers.h"

#include <algorithm>
#include <utility>

#include "resources/text_ids.h"
#include "resources/text_ids_proof.h"
#include "state/line_pace.h"
#include "state/line_record.h"
#include "values/codecs.h"

namespace vlt {
namespace {

constexpr std::size_t kReplyHead = 3;  // station, function, count
constexpr std::size_t kCheckBytes = 2;

WriteResult Judge(App& app, const ExchangeReport& report, bool repeated) {
  if (!report.answered) return report.refused ? WriteResult::kRefused : WriteResult::kNoReply;
  if (repeated) return WriteResult::kProven;
  app.line->CorrectLast(AttemptEnd::kOtherEcho);
  return WriteResult::kOtherEcho;
}

ExchangeReport Write(App& app, const Target& target, Frame& request, Frame& reply) {
  return Transact(app, request, reply, {.mode = target.mode});
}

// A meter is known by its ID number only until somebody gives it another one; what was learnt of it from
// these registers holds until they are written.
void ForgetWhatIsWritten(App& app, int address, int count) {
  app.state.writes.Note(address, count);
  constexpr int kIdNumber = 0x0104;
  if (address <= kIdNumber && kIdNumber < address + 2 * count) app.state.MeterIdNo.clear();
}

struct Reading {
  ExchangeReport report;
  RegisterData data;  // empty without a reply
};

Reading ReadOnce(App& app, const Target& target, const RegisterSpan& span, const ExchangeManner& manner) {
  Frame request = ReadRequest(target.station, static_cast<int>(span.function), span.address, span.count);
  Frame reply = ReplyFor(request);
  Reading reading{.report = Transact(app, request, reply, manner), .data = {}};
  if (!reading.report.answered) return reading;
  if (manner.signature_is_checked && !IsFromStation(app, reply, target.station)) return reading;
  reading.data.assign(reply.begin() + kReplyHead, reply.end() - kCheckBytes);
  return reading;
}

}  // namespace

Target OwnStation(const App& app, SendMode mode) { return {.station = StationNumber(app), .mode = mode}; }

bool ReadRegisters(App& app, const Target& target, const RegisterSpan& span, RegisterData& data) {
  const bool several = target.of_several || target.mode == kModeStations;
  data = ReadOnce(app, target, span, {.mode = target.mode, .signature_is_checked = several}).data;
  return !data.empty();
}

bool ReadRegisters(App& app, const RegisterSpan& span, RegisterData& data) {
  return ReadRegisters(app, OwnStation(app), span, data);
}

// Of one reading more than replies that may be others' at least one is the meter's own.
bool ReadRegistersProven(App& app, const Target& target, const RegisterSpan& span, RegisterData& data,
                         bool was_clean) {
  constexpr int kMostRounds = 3;
  const ExchangeManner manner{.mode = target.mode, .signature = Signature::kAsked, .call = ++app.pace->calls};
  data.clear();
  int wanted = was_clean ? 1 : 2;
  int agreeing = 0;
  for (int read = 0; read < kMostRounds * wanted; ++read) {
    Reading reading = ReadOnce(app, target, span, manner);
    if (reading.data.empty()) {
      data.clear();
      return false;
    }
    const int least = reading.report.clean ? 1 : 2;
    wanted = std::max({wanted, least, read == 0 ? reading.report.doubts + 1 : 1});
    agreeing = reading.data == data ? agreeing + 1 : 1;
    data = std::move(reading.data);
    if (agreeing >= wanted) return true;
  }
  app.state.LastErrorText = app.Text(text::kReadingsDiffer);
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
  const ExchangeReport report = Write(app, target, request, reply);
  return Judge(app, report, EchoWordMatch(reply, value & 0xFFFF, 1));
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
  const ExchangeReport report = Write(app, target, request, reply);
  return Judge(app, report, EchoWordEqual(reply, static_cast<int>(data.size() / 2)));
}

WriteResult WriteRegisters(App& app, int address, std::span<const std::uint8_t> data) {
  return WriteRegisters(app, OwnStation(app), address, data);
}

std::string WriteFailureText(const App& app, WriteResult result) {
  if (result == WriteResult::kProven) return {};
  return result == WriteResult::kOtherEcho ? app.Text(text::kOtherEcho) : app.state.LastErrorText;
}

}  // namespace vlt

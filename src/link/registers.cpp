// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/registers.h"

#include <algorithm>
#include <utility>

#include "link/exchange.h"
#include "resources/text_ids.h"
#include "resources/text_ids_proof.h"
#include "state/line_pace.h"
#include "state/line_record.h"
#include "values/codecs.h"

namespace vlt {
namespace {

constexpr std::size_t kReplyHead = 3;  // station, function, count
constexpr std::size_t kCheckBytes = 2;

// Who asked found that the attempt taken last has ended otherwise than the exchange could see.
void Correct(App& app, ExchangeReport& report, AttemptEnd end) {
  report.end = end;
  app.line->CorrectLast(end);
}

WriteReport Judge(App& app, ExchangeReport exchange, bool repeated) {
  WriteResult result = WriteResult::kProven;
  if (!exchange) {
    result = exchange.refused ? WriteResult::kRefused : WriteResult::kNoReply;
  } else if (!repeated) {
    Correct(app, exchange, AttemptEnd::kOtherEcho);
    result = WriteResult::kOtherEcho;
  }
  return {result, std::move(exchange)};
}

// Where several stations hang on the line, who asks one of them looks at the signature: the exchange itself
// takes a reply from any.
void DropIfOthers(App& app, ExchangeReport& report, const Frame& reply, int station) {
  if (!report || reply[0] == (station & 0xFF)) return;
  Correct(app, report, AttemptEnd::kOtherStation);
  report.ok = false;
  report.text = app.state.LastErrorText = kNoResponse;
}

ExchangeReport Write(App& app, const Target& target, Frame& request, Frame& reply) {
  return Transact(app, request, reply, {.mode = target.mode});
}

struct Reading {
  ExchangeReport report;
  RegisterData data;  // empty without a reply
};

Reading ReadOnce(App& app, const Target& target, const RegisterSpan& span, const ExchangeManner& manner) {
  Frame request = ReadRequest(target.station, static_cast<int>(span.function), span.address, span.count);
  Frame reply = ReplyFor(request);
  Reading reading{.report = Transact(app, request, reply, manner), .data = {}};
  if (manner.signature_is_checked) DropIfOthers(app, reading.report, reply, target.station);
  if (!reading.report) return reading;
  reading.data.assign(reply.begin() + kReplyHead, reply.end() - kCheckBytes);
  return reading;
}

}  // namespace

Target OwnStation(const App& app, SendMode mode) { return {.station = StationNumber(app), .mode = mode}; }

ExchangeReport ReadRegisters(App& app, const Target& target, const RegisterSpan& span, RegisterData& data) {
  const bool several = target.of_several || target.mode == kModeStations;
  Reading reading = ReadOnce(app, target, span, {.mode = target.mode, .signature_is_checked = several});
  data = std::move(reading.data);
  return std::move(reading.report);
}

ExchangeReport ReadRegisters(App& app, const RegisterSpan& span, RegisterData& data) {
  return ReadRegisters(app, OwnStation(app), span, data);
}

// Of one reading more than replies that may be others' at least one is the meter's own.
ExchangeReport ReadRegistersProven(App& app, const Target& target, const RegisterSpan& span,
                                   RegisterData& data, bool was_clean) {
  constexpr int kMostRounds = 3;
  const ExchangeManner manner{.mode = target.mode, .signature = Signature::kAsked, .call = ++app.pace->calls};
  data.clear();
  int wanted = was_clean ? 1 : 2;
  int agreeing = 0;
  ExchangeReport report;
  for (int read = 0; read < kMostRounds * wanted; ++read) {
    Reading reading = ReadOnce(app, target, span, manner);
    const int attempts = report.attempts + reading.report.attempts;
    const bool clean = reading.report.Clean();
    report = std::move(reading.report);
    report.attempts = attempts;
    agreeing = reading.data == data ? agreeing + 1 : 1;
    data = std::move(reading.data);
    if (!report) return report;
    wanted = std::max({wanted, clean ? 1 : 2, read == 0 ? report.doubts + 1 : 1});
    if (agreeing >= wanted) return report;
  }
  report.ok = false;
  report.text = app.state.LastErrorText = app.Text(text::kReadingsDiffer);
  data.clear();
  return report;
}

ExchangeReport ReadRegistersProven(App& app, const RegisterSpan& span, RegisterData& data, bool was_clean) {
  return ReadRegistersProven(app, OwnStation(app), span, data, was_clean);
}

WriteReport WriteRegister(App& app, const Target& target, int address, int value) {
  Frame request = WriteRegisterRequest(target.station, address, value);
  Frame reply = ReplyFor(request);
  app.state.Learnt.writes.Note(address, 1);
  ExchangeReport report = Write(app, target, request, reply);
  return Judge(app, std::move(report), EchoWordMatch(reply, value & 0xFFFF, 1));
}

WriteReport WriteRegister(App& app, int address, int value) {
  return WriteRegister(app, OwnStation(app), address, value);
}

ExchangeReport WriteCommand(App& app, int address, int value, int& answer) {
  constexpr std::size_t kAnswerByte = 4;
  Frame request = WriteRegisterRequest(OwnStation(app).station, address, value);
  Frame reply = ReplyFor(request);
  ExchangeReport report = Transact(app, request, reply, {});
  if (report) answer = BytesToUInt16(reply, kAnswerByte);
  return report;
}

WriteReport WriteRegisters(App& app, const Target& target, int address, std::span<const std::uint8_t> data) {
  Frame request = WriteRegistersRequest(target.station, address, data);
  Frame reply = ReplyFor(request);
  app.state.Learnt.writes.Note(address, static_cast<int>(data.size() / 2));
  ExchangeReport report = Write(app, target, request, reply);
  return Judge(app, std::move(report), EchoWordEqual(reply, static_cast<int>(data.size() / 2)));
}

WriteReport WriteRegisters(App& app, int address, std::span<const std::uint8_t> data) {
  return WriteRegisters(app, OwnStation(app), address, data);
}

std::string WriteFailureText(const App& app, const WriteReport& report) {
  if (report.Proven()) return {};
  return report.result == WriteResult::kOtherEcho ? app.Text(text::kOtherEcho) : report.exchange.text;
}

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/frame_meaning.h"

#include "link/modbus.h"
#include "monitor/register_names.h"
#include "resources/string_table.h"
#include "resources/text_ids_line.h"
#include "values/codecs.h"
#include "values/hex_digits.h"

namespace vlt {
namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr int kReadHolding = 0x03;
constexpr int kReadInput = 0x04;
constexpr int kWriteSingle = 0x06;
constexpr int kWriteSeveral = 0x10;

constexpr std::size_t kCheckBytes = 2;
constexpr std::size_t kReadDataStart = 3;   // behind station, function and count
constexpr std::size_t kWriteDataStart = 7;  // of function 10H, behind its head and a count
constexpr std::size_t kSingleDataStart = 4;
constexpr std::size_t kExceptionCode = 2;

// What a request is about, by its head.
struct Asked {
  int function;
  RegisterSpan span;
  int word;  // the count, or the value of function 06

  explicit Asked(const std::array<std::uint8_t, LineFrame::kHeadBytes>& head)
      : function(head[1]),
        span{.function = head[1] == kReadInput ? ReadFunction::kInput : ReadFunction::kHolding,
             .address = BytesToUInt16(head[2], head[3])},
        word(BytesToUInt16(head[4], head[5])) {
    span.count = function == kWriteSingle ? 1 : word;
  }
  bool Reads() const { return function == kReadHolding || function == kReadInput; }
  bool IsKnown() const { return Reads() || function == kWriteSingle || function == kWriteSeveral; }
};

// The bytes of a frame from `start` up to its check; none when it is shorter.
Bytes DataOf(const LineFrame& frame, std::size_t start) {
  const Bytes bytes(frame.bytes);
  return bytes.size() < start + kCheckBytes ? Bytes()
                                            : bytes.subspan(start, bytes.size() - start - kCheckBytes);
}

std::string ValueOf(const App& app, const NamedRegisters& named, const RegisterSpan& span, Bytes data) {
  const auto at = static_cast<std::size_t>(named.span.address - span.address);
  const auto size = static_cast<std::size_t>(named.span.count) * kBytesPerRegister;
  if (!named.value || data.size() < at + size) return {};
  return " = " + named.value(app, data.subspan(at, size));
}

// ": " and the names of the registers with the values in `data`, which may be empty; nothing where no name is
// known. A single value is always told.
std::string NamesText(const App& app, const RegisterSpan& span, Bytes data, Telling telling) {
  const auto names = NamesIn(span);
  if (names.empty()) return {};
  if (names.size() > 1 && telling == Telling::kShort) {
    return ": " + FormatText(app.Text(text::kFrameNames),
                             {names.front()->name, names.back()->name, std::to_string(names.size())});
  }
  std::string text;
  for (const NamedRegisters* named : names) {
    text += (text.empty() ? ": " : ", ") + named->name + ValueOf(app, *named, span, data);
  }
  return text;
}

std::string RequestText(const App& app, const LineFrame& frame, const Asked& asked, Telling telling) {
  if (!asked.IsKnown()) {
    return FormatText(app.Text(text::kFrameFunction), {HexDigits(static_cast<unsigned>(asked.function), 2)});
  }
  const int id = asked.function == kReadHolding ? text::kFrameReads
                 : asked.function == kReadInput ? text::kFrameReadsInput
                                                : text::kFrameWrites;
  Bytes data;
  if (asked.function == kWriteSingle) data = DataOf(frame, kSingleDataStart);
  if (asked.function == kWriteSeveral) data = DataOf(frame, kWriteDataStart);
  return FormatText(app.Text(id), {std::to_string(asked.span.count),
                                   HexDigits(static_cast<unsigned>(asked.span.address), 4)}) +
         NamesText(app, asked.span, data, telling);
}

std::string AnswerText(const App& app, const LineFrame& frame, const Asked& asked, Telling telling) {
  const std::string took = std::to_string(frame.took_ms);
  if (!asked.Reads()) return FormatText(app.Text(text::kFrameConfirms), {took});
  return FormatText(app.Text(text::kFrameBrings), {took, std::to_string(asked.span.count)}) +
         NamesText(app, asked.span, DataOf(frame, kReadDataStart), telling);
}

std::string RefusalText(const App& app, const LineFrame& frame) {
  static constexpr int kReasons[] = {text::kRefusedOther, text::kRefusedFunction, text::kRefusedAddress,
                                     text::kRefusedCount};
  const std::size_t code = frame.bytes.size() > kExceptionCode ? frame.bytes[kExceptionCode] : 0;
  const int reason = kReasons[code < std::size(kReasons) ? code : 0];
  return FormatText(app.Text(text::kFrameRefuses),
                    {HexDigits(static_cast<unsigned>(code), 2), app.Text(reason)});
}

std::string CheckText(const App& app, const LineFrame& frame) {
  std::uint8_t high = 0;
  std::uint8_t low = 0;
  const Bytes bytes(frame.bytes);
  if (bytes.size() < kCheckBytes) return app.Text(text::kEndCheck);
  CalcCrc(bytes, static_cast<int>(bytes.size() - kCheckBytes), high, low);
  const std::uint8_t right[] = {low, high};
  return FormatText(app.Text(text::kFrameCheck),
                    {HexDigits(bytes.last(kCheckBytes), " "), HexDigits(right, " ")});
}

// A byte of the reply against the same of the request.
std::string DifferenceText(const App& app, int id, const LineFrame& frame, std::size_t at, bool hex) {
  const auto shown = [&](int byte) {
    return hex ? HexDigits(static_cast<unsigned>(byte), 2) : std::to_string(byte);
  };
  const int is = frame.bytes.size() > at ? frame.bytes[at] : 0;
  return FormatText(app.Text(id), {shown(is), shown(frame.asked[at])});
}

std::string EchoText(const App& app, const LineFrame& frame) {
  constexpr std::size_t kWord = 4;
  if (frame.bytes.size() < kWord + 2) return app.Text(text::kEndEcho);
  return FormatText(app.Text(text::kFrameEcho), {HexDigits(Bytes(frame.bytes).subspan(kWord, 2), " "),
                                                 HexDigits(Bytes(frame.asked).subspan(kWord, 2), " ")});
}

std::string ShortText(const App& app, const LineFrame& frame, const Asked& asked) {
  constexpr int kReadFrame = 5;  // beside its registers
  constexpr int kWriteFrame = 8;
  const int whole = asked.Reads() ? asked.span.count * kBytesPerRegister + kReadFrame : kWriteFrame;
  return FormatText(app.Text(text::kFrameShort), {std::to_string(frame.bytes.size()), std::to_string(whole)});
}

std::string OutcomeText(const App& app, const LineFrame& frame, const Asked& asked, Telling telling) {
  switch (frame.end) {
    case AttemptEnd::kAnswered:
      return AnswerText(app, frame, asked, telling);
    case AttemptEnd::kSilence:
      return FormatText(app.Text(text::kFrameNone), {std::to_string(frame.took_ms)});
    case AttemptEnd::kShort:
      return ShortText(app, frame, asked);
    case AttemptEnd::kException:
      return RefusalText(app, frame);
    case AttemptEnd::kWrongFunction:
      return DifferenceText(app, text::kFrameOther, frame, 1, true);
    case AttemptEnd::kBadCheck:
      return CheckText(app, frame);
    case AttemptEnd::kOtherStation:
      return DifferenceText(app, text::kFrameStation, frame, 0, false);
    case AttemptEnd::kPortFault:
      return FormatText(app.Text(text::kFramePort), {std::to_string(frame.took_ms)});
    case AttemptEnd::kOtherEcho:
      return EchoText(app, frame);
  }
  return {};
}

}  // namespace

std::string FrameMeaning(const App& app, const LineFrame& frame, Telling telling) {
  const Asked asked(frame.asked);
  if (frame.way != FrameWay::kSent) return OutcomeText(app, frame, asked, telling);
  std::string repeat;
  if (frame.attempt > 0) {
    repeat = FormatText(app.Text(text::kFrameRepeat), {std::to_string(frame.attempt)});
  }
  return repeat + RequestText(app, frame, asked, telling);
}

}  // namespace vlt

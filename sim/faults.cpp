// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/faults.h"

#include <algorithm>
#include <charconv>

namespace sim {

namespace {

constexpr FaultInfo kFaults[] = {
    {Fault::Silence, "silence", "", 0, "the request is lost: it isn't done and nothing is answered",
     "make all its attempts, report that there was no response, keep what the fields held, go on with the "
     "next "
     "request"},
    {Fault::Late, "late", "milliseconds", 300, "the answer starts so much later",
     "take it while its waits last; after that count the attempt as failed and throw away what comes in "
     "before the next "
     "request",
     true},
    {Fault::OneByte, "one-byte", "", 0, "the first byte of the answer, then silence",
     "fail the attempt without a cause of its own; when all attempts end so, report an application error",
     true},
    {Fault::Short, "short", "bytes that are missing", 3, "the end of the answer is missing",
     "take no value out of it, report a check error after all attempts", true},
    {Fault::Crc, "crc", "", 0, "the check of the answer is wrong",
     "repeat the request; when a repetition is good, use that one"},
    {Fault::Function, "function", "function code", 17,
     "another function code in an answer that is good otherwise",
     "fail the attempt and take no value out of it"},
    {Fault::Exception, "exception", "exception code", 2, "the meter refuses the request and doesn't do it",
     "repeat it as after a silence, then report the refusal by its code"},
    {Fault::Station, "station", "bits that differ in the last byte of its contents", 0,
     "the answer carries another station's number", "take the answer: it doesn't compare stations"},
    {Fault::Noise, "noise", "bytes", 3, "noise ahead of the answer",
     "fail the attempt, throw away all that came in, repeat", true},
    {Fault::Extra, "extra", "bytes", 3, "noise behind the answer",
     "take the answer and throw the rest away before the next request", true},
    {Fault::Trickle, "trickle", "milliseconds", 5, "a pause before every byte of the answer",
     "take the answer when it is whole within its waits, else fail the attempt", true},
    {Fault::Unplug, "unplug", "bytes that still get through", 3,
     "the plug comes out in the middle of the answer",
     "report the fault of the port, unlock, lose nothing that was typed, close the port cleanly", true},
    {Fault::SlowStore, "slow-store", "milliseconds", 2000, "the store takes so long",
     "report that preservation was not completed"},
    {Fault::RefuseCapture, "refuse-capture", "", 0, "the capture command is answered with 0",
     "end the run, report no response, leave the page usable"},
    {Fault::StuckCapture, "stuck-capture", "", 0, "the capture never becomes ready",
     "poll 200 times at most, or until it is stopped, then end the run"},
    {Fault::IgnoreWrite, "ignore-write", "", 0, "the write is acknowledged and not done",
     "show what the meter holds when it reads back"},
    {Fault::WrongEcho, "wrong-echo", "", 0, "the acknowledgement of a write tells another value or quantity",
     "treat the write as failed: name the field, ask whether to go on"},
    {Fault::SlowCapture, "slow-capture", "milliseconds", 2000, "the capture takes so long",
     "go on polling, stay usable, take the wave when it is there"},
    {Fault::FailCapture, "fail-capture", "", 0, "the capture is accepted, and fails",
     "end the run, report no response, leave the page usable"},
    {Fault::LoaderError, "loader-error", "", 0,
     "the boot loader refuses the frame with an error text and its end mark, and doesn't do it",
     "show the text, count the module as failed, try the next one"},
    {Fault::LoaderLongError, "loader-long-error", "", 0, "the same without the end mark",
     "show what fits of the text, count the module as failed"},
    {Fault::LoaderNoLineEnd, "loader-no-line-end", "", 0,
     "the boot loader does what it is told, and its answer lacks the line feed at the end",
     "count the step as failed where an answer has to end with one"},
    {Fault::LoaderSpoil, "loader-spoil", "place of the byte", 0, "one byte of an image read back is another",
     "tell that the comparison failed, keep the image"},
    {Fault::LoaderNoFlash, "loader-no-flash", "", 0,
     "the boot loader acknowledges the end of a download and keeps the old module",
     "find the difference when it reads the module back"},
};

// One marked part of a fault's text: its mark, whether it is hexadecimal, and the greatest number it takes.
struct Part {
  char mark;
  bool hex;
  int most;
};

constexpr Part kParts[] = {
    {'=', false, 1'000'000}, {'@', true, 0xFFFF},     {'/', true, 0xFF},
    {':', false, 247},       {'#', false, 1'000'000}, {'*', false, 1'000'000},
};
constexpr std::string_view kMarks = "=@/:#*";

std::optional<int> ReadNumber(std::string_view text, const Part& part) {
  if (part.hex && (text.ends_with('H') || text.ends_with('h'))) text.remove_suffix(1);
  int number = 0;
  const auto [end, error] =
      std::from_chars(text.data(), text.data() + text.size(), number, part.hex ? 16 : 10);
  const bool whole = error == std::errc() && end == text.data() + text.size();
  if (!whole || number < 0 || number > part.most) return std::nullopt;
  return number;
}

void SetPart(ArmedFault& fault, char mark, int number) {
  if (mark == '=') fault.value = number;
  if (mark == '@') fault.address = static_cast<std::uint16_t>(number);
  if (mark == '/') fault.function = static_cast<std::uint8_t>(number);
  if (mark == ':') fault.station = static_cast<std::uint8_t>(number);
  if (mark == '#') fault.first = number;
  if (mark == '*') fault.count = number;
}

bool Fits(const ArmedFault& fault, std::span<const std::uint8_t> request) {
  if (request.size() < 4) return false;
  const auto address = static_cast<std::uint16_t>(ReadBig(request.subspan(2, 2)));
  return (!fault.station || *fault.station == request[0]) &&
         (!fault.function || *fault.function == request[1]) && (!fault.address || *fault.address == address);
}

bool IsDue(const ArmedFault& fault) {
  return fault.seen >= fault.first && (fault.count == 0 || fault.seen < fault.first + fault.count);
}

bool IsUsedUp(const ArmedFault& fault) {
  return fault.count != 0 && fault.seen >= fault.first + fault.count - 1;
}

}  // namespace

std::span<const FaultInfo> Faults() { return kFaults; }

const FaultInfo& InfoOf(Fault fault) { return kFaults[static_cast<int>(fault)]; }

std::optional<ArmedFault> ParseFault(std::string_view text, std::string& error) {
  const std::string_view name = text.substr(0, text.find_first_of(kMarks));
  const auto info = std::ranges::find(kFaults, name, &FaultInfo::name);
  if (info == std::end(kFaults)) {
    error = "there is no fault \"" + std::string(name) + "\"";
    return std::nullopt;
  }
  ArmedFault fault;
  fault.fault = info->fault;
  fault.value = info->preset;
  std::string_view rest = text.substr(name.size());
  while (!rest.empty()) {
    const Part& part = kParts[kMarks.find(rest[0])];
    const std::string_view word = rest.substr(1, rest.find_first_of(kMarks, 1) - 1);
    rest.remove_prefix(1 + word.size());
    const auto number = part.mark == '*' && word == "ever" ? std::optional(0) : ReadNumber(word, part);
    if (!number || (part.mark == '#' && *number == 0)) {
      error = "\"" + std::string(word) + "\" can't stand behind \"" + part.mark + "\" in \"" +
              std::string(text) + "\"";
      return std::nullopt;
    }
    if (part.mark == '=' && info->value.empty()) {
      error = "the fault \"" + std::string(name) + "\" takes no number";
      return std::nullopt;
    }
    SetPart(fault, part.mark, *number);
  }
  return fault;
}

std::optional<ArmedFault> FaultBoard::Strike(std::span<const std::uint8_t> request) {
  std::optional<ArmedFault> struck;
  for (ArmedFault& fault : armed_) {
    if (!Fits(fault, request)) continue;
    ++fault.seen;
    if (!struck && IsDue(fault)) struck = fault;
  }
  std::erase_if(armed_, IsUsedUp);
  return struck;
}

}  // namespace sim

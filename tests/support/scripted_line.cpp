// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/scripted_line.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "sim/bytes.h"

namespace vlt::test {

void ScriptedLine::Reply(std::string_view hex, int after_ms, int each_ms) {
  Answer answer{.bytes = {}, .after_ms = after_ms, .each_ms = each_ms};
  if (!sim::FromHex(hex, answer.bytes)) throw std::invalid_argument("no hexadecimal bytes");
  answers_.push_back(std::move(answer));
}

void ScriptedLine::ReplyChecked(std::string_view hex, int after_ms, int each_ms) {
  Reply(hex, after_ms, each_ms);
  sim::AppendCheck(answers_.back().bytes);
}

void ScriptedLine::Do(const std::string& operation, const std::string& note) {
  if (!note.empty()) calls.push_back(note);
  if (operation != "open" && operation != "close" && !open_)
    throw PortFault(PortFaultCode::kNotOpen, "scripted");
  const auto fault = faults_.find(operation);
  if (fault == faults_.end() || --fault->second.first > 0) return;
  const PortFaultCode code = fault->second.second;
  faults_.erase(fault);
  throw PortFault(code, "scripted");
}

void ScriptedLine::Open(int number, const std::string& settings) {
  Do("open", "open " + std::to_string(number) + " " + settings);
  open_ = true;
}

void ScriptedLine::Close() {
  Do("close", "close");
  open_ = false;
}

void ScriptedLine::DiscardInput() {
  Do("discard in", "discard in");
  std::erase_if(incoming_, [&](const Timed& b) { return b.at_ms <= time_.NowMs(); });
}

void ScriptedLine::DiscardOutput() { Do("discard out", "discard out"); }

void ScriptedLine::Write(std::span<const std::uint8_t> bytes) {
  writes.push_back(sim::ToHex(bytes));
  write_times_ms.push_back(time_.NowMs());
  Do("write", "write " + writes.back());
  drained_ms_ = time_.NowMs() + drain_ms;
  draining_ = true;
  if (answers_.empty()) return;
  const Answer answer = std::move(answers_.front());
  answers_.pop_front();
  std::int64_t at = drained_ms_ + answer.after_ms;
  for (const std::uint8_t byte : answer.bytes) {
    incoming_.push_back({at, byte});
    time_.At(at, [] {});  // wakes who gives way, as a port does
    at += answer.each_ms;
  }
}

int ScriptedLine::BytesOut() {
  Do("bytes out");
  if (time_.NowMs() < drained_ms_) return 1;
  if (std::exchange(draining_, false)) calls.push_back("drained");
  return 0;
}

int ScriptedLine::BytesIn() {
  Do("bytes in");
  return static_cast<int>(std::count_if(incoming_.begin(), incoming_.end(),
                                        [&](const Timed& b) { return b.at_ms <= time_.NowMs(); }));
}

std::uint8_t ScriptedLine::TakeByte() {
  Do("take");
  if (BytesIn() == 0) throw PortFault(PortFaultCode::kRead, "scripted");
  const std::uint8_t byte = incoming_.front().byte;
  incoming_.pop_front();
  return byte;
}

void ScriptedLine::SetRts(bool on) { Do("rts", on ? "rts on" : "rts off"); }
void ScriptedLine::SetDtr(bool on) { Do("dtr", on ? "dtr on" : "dtr off"); }

}  // namespace vlt::test

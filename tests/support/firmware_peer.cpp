// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/firmware_peer.h"

#include <algorithm>

namespace vlt::test {
namespace {

constexpr std::int64_t kBytesPerSecond = 3840;
constexpr std::int64_t kTurnaroundMs = 5;
constexpr std::int64_t kWakeEveryMs = 400;

std::int64_t MsOf(std::int64_t bytes) { return (bytes * 1000 + kBytesPerSecond - 1) / kBytesPerSecond; }

}  // namespace

std::string FirmwarePeer::Good(const std::string& frame) const {
  if (frame.size() == 8 && frame[1] == 'B') return image;
  return std::string("\x02") + frame[1] + "_OK\r\n";
}

void FirmwarePeer::CheckOpen() const {
  if (!open_) throw PortFault(PortFaultCode::kNotOpen, "peer");
}

void FirmwarePeer::Open(int number, const std::string& settings) {
  opens.push_back(std::to_string(number) + " " + settings);
  if (refuses_to_open) throw PortFault(*refuses_to_open, "peer");
  if (IsCut() && unplugged_by_cut) throw PortFault(PortFaultCode::kMissing, "peer");
  open_ = true;
  incoming_.clear();
  taken_ = 0;
  written_ = 0;
}

std::size_t FirmwarePeer::Carry(std::size_t bytes) {
  const std::size_t room = cut_after ? *cut_after - std::min(*cut_after, carried) : bytes;
  const std::size_t carries = std::min(bytes, room);
  carried += carries;
  return carries;
}

void FirmwarePeer::Write(std::span<const std::uint8_t> bytes) {
  CheckOpen();
  frames.emplace_back(bytes.begin(), bytes.end());
  write_begun_ms_ = time_.NowMs();
  written_ = static_cast<std::int64_t>(bytes.size());
  const std::size_t whole = bytes.size();
  const bool arrives = Carry(whole) == whole;
  incoming_.clear();
  taken_ = 0;
  if (!arrives) return;
  incoming_ = answer(frames.back());
  incoming_.resize(Carry(incoming_.size()));
  incoming_begun_ms_ = write_begun_ms_ + MsOf(written_) + kTurnaroundMs;
  const std::int64_t end =
      incoming_begun_ms_ + MsOf(static_cast<std::int64_t>(incoming_.size())) + pause_within_answer_ms;
  if (incoming_.empty()) return;
  for (std::int64_t at = incoming_begun_ms_ + 1; at < end; at += kWakeEveryMs) time_.At(at, [] {});
  time_.At(end, [] {});
}

int FirmwarePeer::BytesOut() {
  CheckOpen();
  if (holds_output) return static_cast<int>(written_);
  const std::int64_t left = written_ - (time_.NowMs() - write_begun_ms_) * kBytesPerSecond / 1000;
  if (IsCut() && unplugged_by_cut && incoming_.empty()) throw PortFault(PortFaultCode::kRemoved, "peer");
  return static_cast<int>(std::max<std::int64_t>(left, 0));
}

std::int64_t FirmwarePeer::ArrivedBy(std::int64_t ms) const {
  const std::int64_t since = ms - incoming_begun_ms_;
  if (incoming_.empty() || since < 1) return 0;
  const std::int64_t behind_pause = since - pause_within_answer_ms;
  const std::int64_t bytes =
      pause_within_answer_ms > 0 && behind_pause < 1 ? 1 : behind_pause * kBytesPerSecond / 1000;
  return std::min(bytes, static_cast<std::int64_t>(incoming_.size()));
}

int FirmwarePeer::BytesIn() {
  CheckOpen();
  const std::int64_t there = ArrivedBy(time_.NowMs()) - taken_;
  if (there == 0 && IsCut() && unplugged_by_cut) throw PortFault(PortFaultCode::kRemoved, "peer");
  return static_cast<int>(there);
}

std::uint8_t FirmwarePeer::TakeByte() {
  return static_cast<std::uint8_t>(incoming_[static_cast<std::size_t>(taken_++)]);
}

}  // namespace vlt::test

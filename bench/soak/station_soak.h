// SPDX-License-Identifier: GPL-3.0-or-later
// A line of stations that answer well, late, twice, for each other, in part and with noise, and a run of the
// stations page on it that is judged value by value. On virtual time.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <random>
#include <set>
#include <string>

#include "live/form12.h"
#include "platform/serial_port.h"
#include "support/virtual_time.h"

namespace vlt::test {

// Answers at 9600 bit/s. The counter of positive pulses says who sent it, out of which block, and in which of
// the station's polls.
class FleetPort : public SerialPort {
 public:
  FleetPort(VirtualTime& time, double fault_share) : time_(time), share_(fault_share) {}

  void Open(int, const std::string&) override { open_ = true; }
  void Close() override { open_ = false; }
  bool IsOpen() const override { return open_; }
  void DiscardInput() override;
  void DiscardOutput() override {}
  void Write(std::span<const std::uint8_t> request) override;
  int BytesOut() override { return 0; }
  int BytesIn() override;
  std::uint8_t TakeByte() override;
  void SetRts(bool) override {}
  void SetDtr(bool) override {}

  // The counter of a station's channel in its n-th poll, all from 0 but the station.
  static std::int32_t Counter(int station, int channel, std::int64_t poll) {
    return station * 10'000'000 + channel * 1'000'000 + static_cast<std::int32_t>(poll % 1'000'000);
  }

  std::int64_t faults = 0;
  std::array<std::int64_t, 32> polls{};  // by station

 private:
  struct Timed {
    std::int64_t at_us;
    std::uint8_t byte;
    bool operator<(const Timed& other) const { return at_us < other.at_us; }
  };
  std::vector<std::uint8_t> Answer(int station, std::span<const std::uint8_t> request) const;
  void Send(std::span<const std::uint8_t> bytes, int after_ms);
  void SendBadly(std::vector<std::uint8_t> answer, std::span<const std::uint8_t> request);
  int Random(int from, int to) { return std::uniform_int_distribution(from, to)(random_); }

  VirtualTime& time_;
  double share_;
  std::mt19937 random_{20261124};
  bool open_ = false;
  std::multiset<Timed> incoming_;
};

struct SoakResult {
  std::int64_t passes = 0;
  std::int64_t polls = 0;
  std::int64_t faults = 0;
  std::int64_t good = 0;     // values of the station, the item and the poll that they stand for
  std::int64_t missing = 0;  // values that are told to be missing
  std::int64_t foreign = 0;  // of another station
  std::int64_t swapped = 0;  // of the station asked, but of its other channel: frames of the same size
  std::int64_t stale = 0;    // of an earlier poll
  std::int64_t unreadable = 0;
  std::int64_t screen_differs = 0;  // from the record
  std::int64_t elapsed_ms = 0;
  int files = 0;
  std::size_t longest_file = 0;  // lines
};

struct SoakPlan {
  std::int64_t passes = 0;
  double fault_share = 0;
  int cycle_seconds = 30;
  int second_channel = 1;  // of display 2; display 1 shows channel 0
  // Told of each pass.
  std::function<void(std::int64_t pass)> after_pass = {};
};

// Polls 31 stations and judges each value that is logged and shown.
SoakResult SoakStations(const SoakPlan& plan);

}  // namespace vlt::test

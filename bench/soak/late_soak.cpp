// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/soak/late_soak.h"

#include <random>
#include <string>

#include "link/port.h"
#include "link/registers.h"
#include "support/test_app.h"
#include "values/codecs.h"

namespace vlt::test {
namespace {

// Registers that take any word.
constexpr int kRegisters[] = {0x0002, 0x003E, 0x0040, 0x04B4, 0x04B6, 0x04B8,
                              0x138C, 0x13C8, 0x1B5A, 0x1B5C, 0x1B98};
constexpr int kPair = 0x04B4;     // the first of three that lie side by side
constexpr int kWritten = 0x0040;  // and 04B4H; both take 0 and 1
constexpr int kStations = 3;

class Soak {
 public:
  explicit Soak(const LateSoak& soak) : soak_(soak), random_(soak.seed) {
    t_.app.state.EventTiming = soak.events;
    OpenPort(t_.app);
    t_.platform.line.SetLogLimit(0);
    for (int station = 2; station <= kStations; ++station) t_.platform.line.AddStation(station, {});
  }

  LateSoakResult Run() {
    for (std::int64_t i = 0; i < soak_.exchanges; ++i) {
      // The meters may not get new contents while a request is on its way.
      while (t_.platform.line.Outgoing(t_.Time().NowMs() * 1000) > 0) t_.Time().RunFor(1);
      ++moment_;
      ArmFault();
      if (Chance(0.15)) {
        Write();
      } else {
        Read();
      }
      if (Chance(0.2)) t_.Time().RunFor(Pick(1, 400));
    }
    return result_;
  }

 private:
  int Pick(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random_); }
  bool Chance(double share) { return std::uniform_real_distribution<double>(0, 1)(random_) < share; }

  void ArmFault() {
    t_.platform.line.faults().Clear();
    const std::string times = "*" + std::to_string(Pick(1, 3));
    const double dice = std::uniform_real_distribution<double>(0, 1)(random_);
    if (dice < soak_.late_share) {
      ++result_.late;
      t_.platform.Arm("late=" + std::to_string(Pick(150, soak_.latest_ms)) + times);
    } else if (dice < soak_.late_share + soak_.lost_share) {
      t_.platform.Arm("silence" + times);
    } else if (dice < soak_.late_share + soak_.lost_share + soak_.damaged_share) {
      t_.platform.Arm((Chance(0.5) ? "crc" : "exception=2") + times);
    }
  }

  // What a register of a station holds in this exchange.
  int Content(int station, int address) const {
    return static_cast<int>((moment_ * 31 + station * 7919 + address * 613) & 0xFFFF);
  }

  void Read() {
    const int count = Chance(0.3) ? Pick(2, 3) : 1;
    const int address = count > 1 ? kPair : kRegisters[Pick(0, std::size(kRegisters) - 1)];
    const int station = Chance(0.8) ? 1 : Pick(2, kStations);
    for (int i = 0; i < count; ++i) {
      const int at = address + 2 * i;
      t_.platform.Meter(station).holding().PutWord(static_cast<std::uint32_t>(at), Content(station, at));
    }
    RegisterData data;
    const Target target{.station = station, .mode = static_cast<SendMode>(Pick(0, 4))};
    if (!ReadRegisters(t_.app, target, {.address = address, .count = count}, data)) {
      ++result_.missing;
      return;
    }
    bool right = true;
    for (int i = 0; i < count; ++i) {
      right =
          right && BytesToUInt16(data, 2 * static_cast<std::size_t>(i)) == Content(station, address + 2 * i);
    }
    ++(right ? result_.good : result_.wrong);
  }

  void Write() {
    constexpr int kNeither = 7;
    const int address = Chance(0.5) ? kWritten : kPair;
    const int value = Pick(0, 1);
    auto& memory = t_.platform.Meter().holding();
    memory.PutWord(static_cast<std::uint32_t>(address), kNeither);
    const Target target{.station = 1, .mode = Chance(0.5) ? kModeOrdinary : kModeStore};
    if (!WriteRegister(t_.app, target, address, value).Proven()) {
      ++result_.missing;
    } else if (memory.Word(static_cast<std::uint32_t>(address)) == value) {
      ++result_.good;
    } else {
      ++result_.unproven;
    }
  }

  const LateSoak& soak_;
  std::mt19937 random_;
  TestApp t_;
  LateSoakResult result_;
  std::int64_t moment_ = 0;
};

}  // namespace

LateSoakResult SoakLateReplies(const LateSoak& soak) { return Soak(soak).Run(); }

}  // namespace vlt::test

// SPDX-License-Identifier: GPL-3.0-or-later
// The machine's clocks.
#pragma once

#include <chrono>

#include "platform/clock.h"

namespace vlt {

class QtClock : public Clock {
 public:
  // Since the clock was made.
  std::int64_t NowMs() override;
  std::int64_t NowUs() override;
  std::chrono::nanoseconds Elapsed() const { return std::chrono::steady_clock::now() - start_; }
  LocalTime Now() override;

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace vlt

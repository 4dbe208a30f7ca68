// SPDX-License-Identifier: GPL-3.0-or-later
// The captures of a run, and their CSV matrix.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "live/wave_capture.h"
#include "platform/clock.h"

namespace vlt {

class WaveStore {
 public:
  static constexpr int kSlots = 255;
  // The last slot stays free: the index starts again when it reaches it.
  static constexpr int kUsedSlots = 254;

  WaveStore() { Clear(); }

  void Clear();
  // Keeps WaveSamples, over the oldest capture when all slots are in use.
  void Keep(const LocalTime& time);
  // The slot of the capture that came so many before the last one; nothing when there is none.
  std::optional<int> Earlier(int captures) const;
  // The matrix: head lines, then a line a sample with a column a capture, in the order of the slots. `remark`
  // stands in a cell of its own behind the title.
  std::string Csv(const App& app, const WaveOrder& order, const std::string& remark = {}) const;

  WaveSampleArray WaveSamples{};                              // the last capture
  std::vector<std::array<std::int32_t, kSlots>> WaveHistory;  // sample i of capture k at [i][k]
  std::array<LocalTime, kSlots> WaveStamps;                   // a zero year marks an empty slot
  std::int16_t WaveIndex = 0;                                 // next slot
  bool WaveSaved = false;                                     // there is something to save
  LocalTime WaveFirstStamp;                                   // of the first capture of the run

 private:
  int StoredCount() const;
};

}  // namespace vlt

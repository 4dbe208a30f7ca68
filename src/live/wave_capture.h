// SPDX-License-Identifier: GPL-3.0-or-later
// The capture of one wave: the exchanges from the scale head to the last sample. It knows no control.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "link/registers.h"
#include "meter/wave.h"
#include "state/app.h"

namespace vlt {

using WaveSampleArray = std::array<std::int32_t, kWaveSampleCount>;

// What is captured. With `method` 1 or 2 a received wave has no scale head.
struct WaveOrder {
  const WaveKind* kind = &kWaveKinds[kForwardReceive];
  int channel = 0;
  int method = 0;  // measuring method of the channel
  int Code() const { return kind->code + kWaveKindCount * channel; }
  bool HasHead() const { return kind->has_head && !(kind->received && (method == 1 || method == 2)); }
};

enum class WaveEnd : std::uint8_t {
  kGood,
  kAgain,    // a block was lost and the meter has left its capture mode: another capture may begin
  kStopped,  // by the operator
  kFailed,   // Failure() says why
};

class WaveCapture {
 public:
  // `goes_on` is false when the run is to end; it is looked at between the exchanges. `on_block` is told of 0
  // when the meter has taken the command and of each block that has come, 1 to kWaveBlocks.
  WaveCapture(App& app, std::function<bool()> goes_on, std::function<void(int block)> on_block);

  // One capture. `samples` are those of the meter after kGood, and in between otherwise.
  WaveEnd Capture(const WaveOrder& order, WaveSampleArray& samples);
  // Ends the meter's capture mode. False, with Failure(), when it has not done so.
  bool ClearCaptureMode();
  // The meter is in a capture mode.
  bool Capturing() const { return capturing_; }
  // Why the last capture has failed, or what was lost of it.
  const std::string& Failure() const { return failure_; }
  // Blocks of the last capture that have come.
  int Blocks() const { return blocks_; }
  // Level that triggers the meter, in counts of the wave; 0 where there is no scale head.
  double TriggerLevel() const { return trigger_level_; }

 private:
  WaveEnd ReadHead(const WaveOrder& order);
  WaveEnd Command(const WaveOrder& order);
  WaveEnd AwaitSamples();
  WaveEnd ReadWaveBlocks(WaveSampleArray& samples);
  WaveEnd Fail(const std::string& why);

  App& app_;
  std::function<bool()> goes_on_;
  std::function<void(int block)> on_block_;
  bool capturing_ = false;
  std::string failure_;
  int blocks_ = 0;
  double trigger_level_ = 0;
};

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
// The waves that a meter captures: their kinds, and the registers of a capture. Addresses, codes and layout
// come from the meter's register map.
#pragma once

#include <cstdint>

#include "meter/parameter.h"

namespace vlt {

// A kind of wave. Its peak and its trigger level stand in the scale head, with the level in hundredths of a
// percent of the peak.
struct WaveKind {
  int code;     // of the capture command for CH1; CH2 has the same behind those of CH1
  int caption;  // text id
  int trigger;  // text id of the level
  Wire peak_wire = Wire::kUInt16;
  int peak_byte = 0;
  int trigger_byte = 0;
  bool has_head = true;
  bool received = false;  // as it comes in, neither filtered nor correlated
};

enum WaveKindIndex : std::uint8_t {
  kForwardReceive,
  kReverseReceive,
  kForwardFilter,
  kReverseFilter,
  kCorrelation,
};
inline constexpr WaveKind kWaveKinds[] = {
    {.code = 1, .caption = 1580, .trigger = 3680, .trigger_byte = 4, .received = true},
    {.code = 2, .caption = 1290, .trigger = 3690, .peak_byte = 2, .trigger_byte = 6, .received = true},
    {.code = 3,
     .caption = 1570,
     .trigger = 3680,
     .peak_wire = Wire::kInt32,
     .peak_byte = 8,
     .trigger_byte = 4},
    {.code = 4,
     .caption = 1280,
     .trigger = 3690,
     .peak_wire = Wire::kInt32,
     .peak_byte = 12,
     .trigger_byte = 6},
    {.code = 5, .caption = 1710, .trigger = 0, .has_head = false},
};
inline constexpr int kWaveKindCount = 5;

// By channel. The measuring method has a second register on CH1, which is read before a capture.
inline constexpr Block kWaveMethodBlock{ReadFunction::kHolding, 0x0114, 1, Location::kPipe};
inline constexpr Block kWaveHeadBlock{ReadFunction::kInput, 0x0070, 8, Location::kPipe};

// The register that takes the command and tells the state of the capture.
inline constexpr Block kWaveCommand{ReadFunction::kHolding, 0x0168, 1, Location::kMeter};
inline constexpr int kWaveEndCommand = 0;
inline constexpr int kWaveAccepted = 10;
inline constexpr int kWaveReady = 20;
inline constexpr int kWaveFailed = 0;

// The samples: signed numbers of 32 bits in blocks that follow one another.
inline constexpr int kWaveBlocks = 32;
inline constexpr int kWaveSampleCount = 1024;
inline constexpr Block kWaveBlock{ReadFunction::kInput, 0x00C0, 64, Location::kMeter};

}  // namespace vlt

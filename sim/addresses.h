// SPDX-License-Identifier: GPL-3.0-or-later
// Addresses of the registers that the meter itself works with. Those of a channel are CH1's.
#pragma once

#include <cstdint>

namespace sim::address {

// Holding space, channel.
inline constexpr std::uint32_t kRangeKind = 0x0002, kFlowUnit = 0x0004, kFullScale1 = 0x0008,
                               kFullScale2 = 0x0010, kTotalUnit = 0x0040, kTotalMode = 0x0042,
                               kTotalRate = 0x0044, kPreset = 0x004C, kZero = 0x0140;
// Holding space, common.
inline constexpr std::uint32_t kUnitSystem = 0x0100, kLanguage = 0x0102, kIdNumber = 0x0104,
                               kSpecification = 0x0148, kStore = 0x0150, kMemoryInit = 0x0152,
                               kAoCheck = 0x0154, kPulseCheck = 0x0156, kOutputCheck = 0x0158,
                               kTestMode = 0x015C, kTestInput = 0x015E, kTrackingTime = 0x0160,
                               kTestState = 0x0166, kCapture = 0x0168, kFrequencyCheck = 0x0176,
                               kPathMode = 0x03E8, kCalculation = 0x03EA;
// Holding space, heat.
inline constexpr std::uint32_t kHeatFullScale1 = 0x03F0, kHeatFullScale2 = 0x03F8, kHeatRate = 0x0400,
                               kHeatPreset = 0x0408, kTemperatureUnit = 0x04B4, kHeatFlowUnit = 0x04B6,
                               kHeatUnit = 0x04B8, kHeatMode = 0x04BA, kHeatOperation = 0x04BC,
                               kSupplySource = 0x04BE, kReturnSource = 0x04C0, kCoolingCoefficient = 0x04C4,
                               kHeatingCoefficient = 0x04CC, kSwitchTemperature = 0x04D4, kSetSupply = 0x04E4,
                               kSetReturn = 0x04EC, kSupplyZero = 0x04F4, kSupplySpan = 0x04FC,
                               kReturnZero = 0x0504, kReturnSpan = 0x050C;
// Holding space, common: what the analog outputs carry. Code 0 to 2 is the flow of a channel, 3 to 5 its
// heat.
inline constexpr std::uint32_t kAoSource1 = 0x03EC, kAoSource2 = 0x03EE;
// Holding space: starts of the transit-time details of CH1 and CH2, and distances in them.
inline constexpr std::uint32_t kDetails[] = {0x018E, 0x148E};
inline constexpr std::uint32_t kTriggerLevel = 0x04, kWindowControl = 0x06, kOpenTime = 0x08,
                               kGainControl = 0x14, kGainUp = 0x16, kGainDown = 0x18, kSignalPeak = 0x1A;
// Input space, channel.
inline constexpr std::uint32_t kCondition = 0x0030, kWaveHead = 0x0070, kSpacing = 0x0080;
// Input space, common.
inline constexpr std::uint32_t kVersion = 0x0086, kType = 0x0094, kSamples = 0x00C0, kSupplyInput = 0x10F8,
                               kReturnInput = 0x2480;
// Starts of the live blocks by channel.
inline constexpr std::uint32_t kMeasured[] = {0x0000, 0x1388, 0x251C};
inline constexpr std::uint32_t kHeat[] = {0x10C0, 0x2448, 0x2648};

}  // namespace sim::address

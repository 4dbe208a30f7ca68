// SPDX-License-Identifier: GPL-3.0-or-later
// Register memory of a meter. An address counts bytes: a 16-bit value at 00D0H is followed by the next one at
// 00D2H, and a request for n words at A covers the bytes A to A + 2n - 1.
#pragma once

#include <cstdint>
#include <vector>

#include "sim/bytes.h"

namespace sim {

class Memory {
 public:
  Memory();

  // Makes `size` bytes from `address` exist, filled with zeros.
  void Map(std::uint32_t address, std::uint32_t size);
  // True when every byte exists. Sizes that run past FFFFH give false.
  bool Has(std::uint32_t address, std::uint32_t size) const;

  // All of these need Has(); an address that is not mapped is an error of the caller.
  Bytes Read(std::uint32_t address, std::uint32_t size) const;
  void Write(std::uint32_t address, std::span<const std::uint8_t> data);

  std::int16_t Word(std::uint32_t address) const;
  std::uint16_t Unsigned(std::uint32_t address) const;
  std::int32_t Long(std::uint32_t address) const;
  double Double(std::uint32_t address) const;
  void PutWord(std::uint32_t address, std::int32_t value);
  void PutLong(std::uint32_t address, std::int64_t value);
  void PutFloat(std::uint32_t address, float value);
  void PutDouble(std::uint32_t address, double value);

 private:
  Bytes bytes_;
  std::vector<bool> mapped_;
};

}  // namespace sim

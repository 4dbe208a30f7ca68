// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/memory.h"

#include <algorithm>
#include <bit>

namespace sim {

namespace {

constexpr std::uint32_t kSize = 0x10000;

Bytes Big(std::uint64_t value, int width) {
  Bytes data;
  AppendBig(data, value, width);
  return data;
}

}  // namespace

Memory::Memory() : bytes_(kSize), mapped_(kSize) {}

void Memory::Map(std::uint32_t address, std::uint32_t size) {
  std::fill_n(mapped_.begin() + address, size, true);
}

bool Memory::Has(std::uint32_t address, std::uint32_t size) const {
  if (address >= kSize || size > kSize - address) return false;
  const auto first = mapped_.begin() + address;
  return std::find(first, first + size, false) == first + size;
}

Bytes Memory::Read(std::uint32_t address, std::uint32_t size) const {
  const auto first = bytes_.begin() + address;
  return Bytes(first, first + size);
}

void Memory::Write(std::uint32_t address, std::span<const std::uint8_t> data) {
  std::ranges::copy(data, bytes_.begin() + address);
}

std::int16_t Memory::Word(std::uint32_t address) const {
  return static_cast<std::int16_t>(Unsigned(address));
}

std::uint16_t Memory::Unsigned(std::uint32_t address) const {
  return static_cast<std::uint16_t>(ReadBig({bytes_.data() + address, 2}));
}

std::int32_t Memory::Long(std::uint32_t address) const {
  return static_cast<std::int32_t>(ReadBig({bytes_.data() + address, 4}));
}

double Memory::Double(std::uint32_t address) const {
  return std::bit_cast<double>(ReadBig({bytes_.data() + address, 8}));
}

void Memory::PutWord(std::uint32_t address, std::int32_t value) {
  Write(address, Big(static_cast<std::uint32_t>(value), 2));
}

void Memory::PutLong(std::uint32_t address, std::int64_t value) {
  Write(address, Big(static_cast<std::uint64_t>(value), 4));
}

void Memory::PutFloat(std::uint32_t address, float value) {
  Write(address, Big(std::bit_cast<std::uint32_t>(value), 4));
}

void Memory::PutDouble(std::uint32_t address, double value) {
  Write(address, Big(std::bit_cast<std::uint64_t>(value), 8));
}

}  // namespace sim

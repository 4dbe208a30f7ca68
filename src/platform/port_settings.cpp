// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/port_settings.h"

#include <array>
#include <charconv>

namespace vlt {
namespace {

constexpr int kHighestSpeed = 4'000'000;
constexpr std::size_t kFields = 4;

std::optional<std::array<std::string_view, kFields>> Split(std::string_view text) {
  std::array<std::string_view, kFields> fields;
  for (std::size_t i = 0; i < kFields; ++i) {
    const std::size_t comma = text.find(',');
    if ((comma == std::string_view::npos) != (i + 1 == kFields)) return std::nullopt;
    fields[i] = text.substr(0, comma);
    text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
  }
  return fields;
}

// Digits only; 0 when it is no number from `low` to `high`.
int NumberWithin(std::string_view digits, int low, int high) {
  int value = 0;
  const char* end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, value);
  return error == std::errc() && stop == end && value >= low && value <= high ? value : 0;
}

std::optional<PortParity> ParityOf(std::string_view letter) {
  if (letter == "N") return PortParity::kNone;
  if (letter == "E") return PortParity::kEven;
  if (letter == "O") return PortParity::kOdd;
  return std::nullopt;
}

}  // namespace

std::optional<PortSettings> ParsePortSettings(std::string_view text) {
  const auto fields = Split(text);
  if (!fields) return std::nullopt;
  const auto parity = ParityOf((*fields)[1]);
  PortSettings settings;
  settings.speed = NumberWithin((*fields)[0], 1, kHighestSpeed);
  settings.data_bits = NumberWithin((*fields)[2], 5, 8);
  settings.stop_bits = NumberWithin((*fields)[3], 1, 2);
  if (!parity || settings.speed == 0 || settings.data_bits == 0 || settings.stop_bits == 0)
    return std::nullopt;
  settings.parity = *parity;
  return settings;
}

bool IsSimulator(std::string_view device) {
  return device.starts_with(kSimulatorWord) &&
         (device.size() == kSimulatorWord.size() || device[kSimulatorWord.size()] == ' ');
}

}  // namespace vlt

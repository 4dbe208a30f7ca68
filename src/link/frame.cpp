// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/frame.h"

#include "values/codecs.h"

namespace vlt {
namespace {

std::uint8_t High(int value) { return static_cast<std::uint8_t>(value >> 8); }
std::uint8_t Low(int value) { return static_cast<std::uint8_t>(value); }

}  // namespace

void CalcCrc(std::span<const std::uint8_t> frame, int count, std::uint8_t& crcHigh, std::uint8_t& crcLow) {
  unsigned crc = 0xFFFF;
  for (const std::uint8_t byte : frame.first(static_cast<std::size_t>(count))) {
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit) crc = (crc & 1) != 0 ? (crc >> 1) ^ 0xA001 : crc >> 1;
  }
  crcHigh = static_cast<std::uint8_t>(crc >> 8);
  crcLow = static_cast<std::uint8_t>(crc & 0xFF);
}

bool IsCheckGood(std::span<const std::uint8_t> frame) {
  if (frame.size() < 2) return false;
  std::uint8_t high = 0;
  std::uint8_t low = 0;
  CalcCrc(frame, static_cast<int>(frame.size()) - 2, high, low);
  return low == frame[frame.size() - 2] && high == frame[frame.size() - 1];
}

bool EchoWordEqual(std::span<const std::uint8_t> reply, int expected) {
  return EchoWordMatch(reply, expected, 0);
}

bool EchoWordMatch(std::span<const std::uint8_t> reply, int expected, int is_unsigned) {
  if (reply.size() < 6) return false;
  const int word = is_unsigned == 1 ? BytesToUInt16(reply[4], reply[5]) : BytesToInt16(reply[4], reply[5]);
  return word == expected;
}

Frame ReadRequest(int station, int function, int address, int count) {
  return {Low(station), Low(function), High(address), Low(address), High(count), Low(count), 0, 0};
}

Frame WriteRegisterRequest(int station, int address, int value) {
  return {Low(station), 0x06, High(address), Low(address), High(value), Low(value), 0, 0};
}

Frame WriteRegistersRequest(int station, int address, std::span<const std::uint8_t> data) {
  const int count = static_cast<int>(data.size()) / 2;
  Frame frame = {Low(station), 0x10, High(address), Low(address), High(count), Low(count), Low(count * 2)};
  frame.insert(frame.end(), data.begin(), data.end());
  frame.insert(frame.end(), 2, 0);
  return frame;
}

std::size_t ReplySize(std::span<const std::uint8_t> request) {
  const bool read = request[1] == 0x03 || request[1] == 0x04;
  return read ? static_cast<std::size_t>(BytesToUInt16(request[4], request[5])) * 2 + 5 : 8;
}

Frame ReplyFor(std::span<const std::uint8_t> request) { return Frame(ReplySize(request)); }

}  // namespace vlt

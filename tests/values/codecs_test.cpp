// SPDX-License-Identifier: GPL-3.0-or-later
#include "values/codecs.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <vector>

#include "values/encode.h"

namespace vlt {
namespace {

using Bytes = std::vector<std::uint8_t>;

template <typename Array>
Bytes ToVector(const Array& bytes) {
  return Bytes(bytes.begin(), bytes.end());
}

TEST(Codecs, WordsAndLongsKeepTheirSign) {
  EXPECT_EQ(BytesToInt16(0xFF, 0xFF), -1);
  EXPECT_EQ(BytesToInt16(0x80, 0x00), -32768);
  EXPECT_EQ(BytesToInt16(0x7F, 0xFE), 32766);
  EXPECT_EQ(BytesToUInt16(0xFF, 0xFF), 65535);
  EXPECT_EQ(BytesToInt32(0xFF, 0xFF, 0xFF, 0xFE), -2);
  EXPECT_EQ(BytesToInt32(0x12, 0x34, 0x56, 0x78), 0x12345678);
  EXPECT_EQ(BytesToInt32(0x80, 0, 0, 0), std::numeric_limits<std::int32_t>::min());
}

TEST(Codecs, EncodersPutTheMostSignificantByteFirst) {
  EXPECT_EQ(ToVector(Int16ToBytes(-2)), (Bytes{0xFF, 0xFE}));
  EXPECT_EQ(ToVector(Int16ToBytes(65535)), (Bytes{0xFF, 0xFF}));
  EXPECT_EQ(ToVector(Int32ToBytes(-1)), (Bytes{0xFF, 0xFF, 0xFF, 0xFF}));
  EXPECT_EQ(ToVector(Int32ToBytes(12345)), (Bytes{0, 0, 0x30, 0x39}));
  EXPECT_EQ(ToVector(DoubleToBytes(-0.15625)), (Bytes{0xBF, 0xC4, 0, 0, 0, 0, 0, 0}));
}

TEST(Codecs, FramesAreReadFromTheGivenByteAndNeverBeyondTheirEnd) {
  const Bytes frame = {1, 3, 12, 0xFF, 0x38, 0x3F, 0xF8, 0, 0, 0xC0, 0x29, 0, 0, 0, 0, 0, 0};
  EXPECT_EQ(BytesToInt16(frame, 3), -200);
  EXPECT_EQ(BytesToUInt16(frame, 3), 65336);
  EXPECT_EQ(BytesToInt32(frame, 5), 0x3FF80000);
  EXPECT_EQ(BytesToSingle(frame, 5), 1.9375F);
  EXPECT_EQ(BytesToDouble(frame, 9), -12.5);
  EXPECT_THROW(BytesToDouble(frame, 10), std::out_of_range);
  EXPECT_THROW(BytesToInt16(frame, 16), std::out_of_range);
  EXPECT_THROW(BytesToInt16(frame, std::numeric_limits<std::size_t>::max()), std::out_of_range);
}

TEST(Codecs, HexTextTakesBothOrders) {
  EXPECT_EQ(DoubleToHex(1.0, true), "3F F0 00 00 00 00 00 00");
  EXPECT_EQ(DoubleToHex(1.0, false), "00 00 00 00 00 00 F0 3F");
  EXPECT_EQ(DoubleToHex(-0.1, true), "BF B9 99 99 99 99 99 9A");
}

TEST(CutDigits, CutsWithoutTheNoiseOfBinaryNumbers) {
  struct Case {
    double value;
    int digits;
    double expected;
  };
  const Case cases[] = {
      {1.15, 2, 1.15},      {2.999, 2, 2.99},
      {-2.999, 2, -2.99},   {0.29, 2, 0.29},
      {4.35, 2, 4.35},      {8.7, 1, 8.7},
      {1.005, 2, 1.0},      {60.5, 0, 60.0},
      {-0.009, 2, 0.0},     {123456.789, 1, 123456.7},
      {12345.6, -2, 12300}, {0.1 + 0.2, 1, 0.3},
      {1e300, 14, 1e300},   {0.00012345, 7, 0.0001234},
  };
  for (const Case& c : cases)
    EXPECT_EQ(CutDigits(c.value, c.digits), c.expected) << c.value << " at " << c.digits;
  EXPECT_TRUE(std::isnan(CutDigits(std::nan(""), 2)));
  EXPECT_EQ(CutDigits(-INFINITY, 2), -INFINITY);
}

TEST(Encode, ScalesWhatWasTypedAndNothingElse) {
  EXPECT_EQ(ScaledInteger(123.456, 2), 12345);
  EXPECT_EQ(ScaledInteger(1.15, 2), 115);
  EXPECT_EQ(ScaledInteger(-1.15, 2), -115);
  EXPECT_EQ(ScaledInteger(0.2362, 4), 2362);
  EXPECT_EQ(ScaledInteger(1480.9, 0), 1480);
  // Every price-like number comes through as typed; a plain product cut to an integer fails for hundreds.
  for (int i = 0; i <= 100000; ++i) ASSERT_EQ(ScaledInteger(i / 100.0, 2), i);
}

TEST(Encode, WhatDoesNotFitIsReportedInsteadOfWrapped) {
  EXPECT_EQ(ScaledInt16(327.67, 2), 32767);
  EXPECT_EQ(ScaledInt16(327.68, 2), std::nullopt);
  EXPECT_EQ(ScaledInt16(-327.68, 2), -32768);
  EXPECT_EQ(ScaledInt16(-327.69, 2), std::nullopt);
  EXPECT_EQ(ScaledUInt16(65535.9, 0), 65535);
  EXPECT_EQ(ScaledUInt16(-1, 0), std::nullopt);
  EXPECT_EQ(ScaledUInt16(65536, 0), std::nullopt);
  EXPECT_EQ(ScaledInt32(21474836.47, 2), 2147483647);
  EXPECT_EQ(ScaledInt32(21474836.48, 2), std::nullopt);
  for (const double odd : {1e19, -1e19, 1e300, HUGE_VAL, std::nan("")}) {
    EXPECT_EQ(ScaledInteger(odd, 2), std::nullopt) << odd;
  }
}

}  // namespace
}  // namespace vlt

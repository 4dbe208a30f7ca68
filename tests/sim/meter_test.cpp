// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/meter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>

namespace sim {
namespace {

constexpr Micros kSecond = 1'000'000;

// Nothing moves in this one.
const MeterConfig kStill{.motions = {{{Wave::Still, 1.2, 0, 1}, {Wave::Still, 1, 0, 1}}}};

Bytes Hex(std::string_view text) {
  Bytes bytes;
  EXPECT_TRUE(FromHex(text, bytes)) << text;
  return bytes;
}

std::string Ask(Meter& meter, std::string_view request, Micros now = 0) {
  return ToHex(meter.Serve(Hex(request), now));
}

// Data bytes of a read, without function and count.
Bytes Read(Meter& meter, int function, int address, int words, Micros now = 0) {
  Bytes request{static_cast<std::uint8_t>(function)};
  AppendBig(request, address, 2);
  AppendBig(request, words, 2);
  Bytes reply = meter.Serve(request, now);
  if (reply.size() < 3) return {};
  return Bytes(reply.begin() + 2, reply.end());
}

int ReadWord(Meter& meter, int address, Micros now = 0) {
  return static_cast<std::int16_t>(ReadBig(Read(meter, 3, address, 1, now)));
}

float ReadFloat(Meter& meter, int address, Micros now) {
  return std::bit_cast<float>(static_cast<std::uint32_t>(ReadBig(Read(meter, 4, address, 2, now))));
}

double ReadDouble(Meter& meter, int function, int address, Micros now) {
  return std::bit_cast<double>(ReadBig(Read(meter, function, address, 4, now)));
}

// 0, or the exception code.
int WriteMany(Meter& meter, int address, const Bytes& data, Micros now = 0) {
  Bytes request{16};
  AppendBig(request, address, 2);
  AppendBig(request, data.size() / 2, 2);
  request.push_back(static_cast<std::uint8_t>(data.size()));
  request.insert(request.end(), data.begin(), data.end());
  const Bytes reply = meter.Serve(request, now);
  return reply.size() == 2 ? reply[1] : 0;
}

int WriteDouble(Meter& meter, int address, double value, Micros now = 0) {
  Bytes data;
  AppendBig(data, std::bit_cast<std::uint64_t>(value), 8);
  return WriteMany(meter, address, data, now);
}

int WriteWord(Meter& meter, int address, int value, Micros now = 0) {
  Bytes data;
  AppendBig(data, static_cast<std::uint16_t>(value), 2);
  return WriteMany(meter, address, data, now);
}

// Every block that a program reads at once, and whether a single-channel meter has it.
struct Block {
  int function;
  int address;
  int words;
  bool single;
};

class Blocks : public testing::TestWithParam<Block> {};

TEST_P(Blocks, AnswerWholeOrNotAtAll) {
  const Block block = GetParam();
  Meter full{MeterConfig{}}, single{MeterConfig{.specification = kSingleSpecification}};
  EXPECT_EQ(Read(full, block.function, block.address, block.words).size(), 2u * block.words);
  EXPECT_EQ(Read(single, block.function, block.address, block.words).size(),
            block.single ? 2u * block.words : 0);
}

INSTANTIATE_TEST_SUITE_P(
    All, Blocks,
    testing::Values(Block{3, 0x0000, 32, true}, Block{3, 0x1388, 32, false}, Block{3, 0x1B5A, 21, false},
                    Block{3, 0x03F0, 8, false}, Block{3, 0x0040, 13, true}, Block{3, 0x13C8, 13, false},
                    Block{3, 0x1B98, 13, false}, Block{3, 0x0400, 8, false}, Block{3, 0x04A8, 4, false},
                    Block{3, 0x005A, 48, false}, Block{3, 0x005A, 32, true}, Block{3, 0x0410, 16, false},
                    Block{3, 0x0430, 52, false}, Block{3, 0x00C0, 6, true}, Block{3, 0x04B0, 2, false},
                    Block{3, 0x00D0, 18, true}, Block{3, 0x1458, 18, false}, Block{3, 0x04B4, 50, false},
                    Block{3, 0x0100, 3, true}, Block{3, 0x0148, 1, true}, Block{3, 0x003E, 1, true},
                    Block{3, 0x03E8, 1, false}, Block{3, 0x03EA, 1, false}, Block{3, 0x03EC, 1, false},
                    Block{3, 0x03EE, 1, false}, Block{3, 0x018E, 15, true}, Block{3, 0x148E, 15, false},
                    Block{3, 0x0142, 2, true}, Block{3, 0x014A, 2, false}, Block{3, 0x0154, 7, true},
                    Block{3, 0x0166, 1, true}, Block{3, 0x0176, 1, false}, Block{3, 0x0168, 1, true},
                    Block{3, 0x0150, 1, true}, Block{3, 0x0114, 1, true}, Block{3, 0x149C, 1, false},
                    Block{3, 0x14D0, 18, false}, Block{3, 0x1300, 32, false}, Block{4, 0x0000, 19, true},
                    Block{4, 0x1388, 19, false}, Block{4, 0x251C, 19, false}, Block{4, 0x10C0, 28, false},
                    Block{4, 0x2448, 28, false}, Block{4, 0x2648, 28, false}, Block{4, 0x0024, 1, true},
                    Block{4, 0x13AC, 1, false}, Block{4, 0x2540, 1, false}, Block{4, 0x0030, 36, true},
                    Block{4, 0x13B8, 36, false}, Block{4, 0x0070, 8, true}, Block{4, 0x13F8, 8, false},
                    Block{4, 0x0080, 3, true}, Block{4, 0x1408, 3, false}, Block{4, 0x1480, 3, false},
                    Block{4, 0x0086, 11, true}, Block{4, 0x0094, 4, true}, Block{4, 0x00C0, 64, true},
                    Block{4, 0x1040, 64, true}, Block{4, 0x10F8, 4, false}, Block{4, 0x2480, 4, false}));

struct Reply {
  const char* request;
  const char* reply;
};

TEST(Meter, AnswersAsWordForWord) {
  const Reply replies[] = {
      // Process block: type, diameter 60.50, steel, 3206, wall 3.80, no lining, 2000, 2.00, water,
      // 1482, 1.0038, V.
      {"03 00 D0 00 12",
       "03 24 00 03 00 00 17 A2 00 00 0C 86 00 00 01 7C 00 00 07 D0 00 00 00 C8 00 00 05 CA 3F F0 0F 90 96 "
       "BB 98 "
       "C8 00 00"},
      {"03 01 00 00 03", "03 06 00 00 00 00 00 01"},
      {"03 01 48 00 01", "03 02 00 51"},
      {"03 01 50 00 01", "03 02 00 00"},
      {"03 00 08 00 04", "03 08 40 2E 00 00 00 00 00 00"},
      {"03 00 1E 00 01", "03 02 FF EC"},
      {"04 00 86 00 0B", "04 16 56 4C 54 2D 53 49 4D 20 20 30 31 2E 30 30 54 57 4F 2D 43 48 20 20"},
      {"06 00 D6 00 02", "06 00 D6 00 02"},
      {"10 00 D2 00 02 04 00 00 30 39", "10 00 D2 00 02"},
      {"10 00 C8 00 02 04 00 01 00 2D", "10 00 C8 00 02"},
      // Functions that it doesn't know, registers that aren't there, quantities and values out of range.
      {"01 00 00 00 01", "81 01"},
      {"05 01 40 FF 00", "85 01"},
      {"2B 0E 01 00", "AB 01"},
      {"03 20 00 00 01", "83 02"},
      {"03 00 D1 00 01", "83 02"},
      {"03 00 CC 00 03", "83 02"},
      {"03 FF FE 00 02", "83 02"},
      {"04 3F 00 00 01", "84 02"},
      {"06 20 00 00 01", "86 02"},
      {"10 1B 58 00 01 02 00 00", "90 02"},
      {"03 00 D0 00 00", "83 03"},
      {"03 00 00 00 7E", "83 03"},
      {"03 00 D0", "83 03"},
      {"06 00 D6", "86 03"},
      {"10 00 D0 00 02 04 00", "90 03"},
      {"10 00 D0 00 02 02 00 00 00 00", "90 03"},
      {"10 00 D0 00 00 00", "90 03"},
      {"06 01 68 00 0B", "86 03"},
      {"06 01 52 00 01", "86 03"},
      {"10 00 D2 00 02 04 FF FF FF FF", "90 03"},
      {"10 00 08 00 04 08 7F F0 00 00 00 00 00 00", "90 03"},
  };
  for (const Reply& expected : replies) {
    Meter meter{MeterConfig{}};
    EXPECT_EQ(Ask(meter, expected.request), expected.reply) << expected.request;
  }
}

TEST(Meter, RefusesCodesBeyondItsLists) {
  struct List {
    int address;
    int last;
  };
  const List lists[] = {{0x00D0, 11}, {0x00D6, 12}, {0x00DE, 7},   {0x00E6, 17}, {0x145E, 12}, {0x0002, 1},
                        {0x1B5C, 17}, {0x138E, 3},  {0x001A, 4},   {0x0040, 8},  {0x0042, 2},  {0x0054, 6},
                        {0x005A, 18}, {0x007A, 19}, {0x0410, 18},  {0x0412, 2},  {0x047E, 1},  {0x04AE, 2},
                        {0x00C4, 15}, {0x00CA, 99}, {0x0102, 4},   {0x03E8, 2},  {0x03EE, 5},  {0x04B6, 6},
                        {0x04BC, 2},  {0x149C, 2},  {0x0104, 9999}};
  for (const List& list : lists) {
    Meter meter{MeterConfig{}};
    EXPECT_EQ(WriteWord(meter, list.address, list.last), 0) << std::hex << list.address;
    EXPECT_EQ(WriteWord(meter, list.address, list.last + 1), 3) << std::hex << list.address;
    EXPECT_EQ(WriteWord(meter, list.address, -1), 3) << std::hex << list.address;
    EXPECT_EQ(ReadWord(meter, list.address), list.last) << std::hex << list.address;
  }
}

TEST(Meter, AddressesCountBytes) {
  Meter meter{MeterConfig{}};
  EXPECT_EQ(WriteMany(meter, 0x00D2, Hex("00 00 30 39")), 0);
  EXPECT_EQ(WriteMany(meter, 0x00D6, Hex("00 04")), 0);
  EXPECT_EQ(ToHex(Read(meter, 3, 0x00D0, 4)), "00 03 00 00 30 39 00 04");
  EXPECT_EQ(ToHex(Read(meter, 3, 0x00D4, 1)), "30 39");
  // One word of a longer value, and a block over several values of which one is refused: nothing is written
  // then.
  EXPECT_EQ(Ask(meter, "06 00 D4 30 3A"), "06 00 D4 30 3A");
  EXPECT_EQ(WriteMany(meter, 0x00D0, Hex("00 05 00 00 11 11 00 63")), 3);
  EXPECT_EQ(ToHex(Read(meter, 3, 0x00D0, 4)), "00 03 00 00 30 3A 00 04");
}

TEST(Meter, ChannelsAndOutputsHoldTheirOwn) {
  // Full scales of CH1..CH3, flow switches of DO1..DO4, thermal ones, totals, details.
  const int doubles[] = {0x0008, 0x1390, 0x1B60, 0x0060, 0x0080, 0x00A0, 0x0416, 0x0432, 0x044C, 0x0466,
                         0x0480, 0x0044, 0x13CC, 0x1B9C, 0x0442, 0x045C, 0x0476, 0x0490, 0x03F0, 0x0408};
  const int words[] = {0x0192, 0x1492, 0x001C, 0x13A4, 0x1B74, 0x04A8, 0x04AA, 0x04B0, 0x04B2, 0x0516};
  Meter meter{MeterConfig{}};
  for (int address : doubles) EXPECT_EQ(WriteDouble(meter, address, address + 0.5), 0) << std::hex << address;
  for (int i = 0; int address : words)
    EXPECT_EQ(WriteWord(meter, address, i++ % 3), 0) << std::hex << address;
  for (int address : doubles)
    EXPECT_EQ(ReadDouble(meter, 3, address, 0), address + 0.5) << std::hex << address;
  for (int i = 0; int address : words) EXPECT_EQ(ReadWord(meter, address), i++ % 3) << std::hex << address;
}

TEST(Meter, SecondAddressesLeadToTheSameRegisters) {
  Meter meter{MeterConfig{}};
  EXPECT_EQ(WriteWord(meter, 0x019C, 2), 0);
  EXPECT_EQ(WriteDouble(meter, 0x1390, 77), 0);
  EXPECT_EQ(WriteMany(meter, 0x14D2, Hex("00 00 27 10")), 0);
  EXPECT_EQ(ReadWord(meter, 0x0114), 2);
  EXPECT_EQ(Read(meter, 3, 0x1300, 32), Read(meter, 3, 0x1388, 32));
  EXPECT_EQ(ToHex(Read(meter, 3, 0x145A, 2)), "00 00 27 10");
  EXPECT_EQ(Read(meter, 4, 0x1480, 3), Read(meter, 4, 0x1408, 3));
}

TEST(Meter, ComputesTheSpacingFromWhatIsSet) {
  const auto spacing = [](Meter& meter) { return static_cast<int>(ReadBig(Read(meter, 4, 0x0080, 2))); };
  Meter meter{MeterConfig{}}, inches{MeterConfig{.unit_system = 1}};
  const int before = spacing(meter);
  EXPECT_GT(before, 2000);  // a pipe of 60.5 mm in V mounting: between 2 and 6 cm
  EXPECT_LT(before, 6000);
  EXPECT_NEAR(spacing(inches), before / 2.54, 2);               // 0.001 inch
  EXPECT_EQ(ToHex(Read(inches, 3, 0x00D2, 2)), "00 00 5D 0B");  // 60.50 mm are 2.3819 inch

  WriteMany(meter, 0x00D2, Hex("00 00 2E E0"));  // twice the pipe
  const int wide = spacing(meter);
  EXPECT_GT(wide, 3 * before / 2);
  WriteWord(meter, 0x00F2, 1);  // Z: half the way
  EXPECT_LT(spacing(meter), wide);
  EXPECT_NE(spacing(meter), before);
}

TEST(Meter, ChangingTheUnitSystemKeepsThePipe) {
  Meter meter{MeterConfig{}};
  const Bytes process = Read(meter, 3, 0x00D0, 18);
  const float metres = ReadFloat(meter, 0x0000, 0);
  WriteWord(meter, 0x0100, 1);
  EXPECT_EQ(ToHex(Read(meter, 3, 0x00D2, 2)), "00 00 5D 0B");
  EXPECT_EQ(ReadWord(meter, 0x00D8), 10518);
  EXPECT_NEAR(ReadFloat(meter, 0x0000, 0), metres / 0.3048f, 1e-4);
  WriteWord(meter, 0x0100, 1);  // once more changes nothing
  WriteWord(meter, 0x0100, 0);
  const Bytes back = Read(meter, 3, 0x00D0, 18);
  EXPECT_EQ(Bytes(back.begin(), back.begin() + 26), Bytes(process.begin(), process.begin() + 26));
}

TEST(Meter, StoresWhatWasSetWhenAsked) {
  Meter meter{MeterConfig{.store_time = 100'000, .restart_time = kSecond}};
  WriteWord(meter, 0x00D6, 5, 0);
  EXPECT_EQ(Ask(meter, "06 01 50 00 01", 10'000), "06 01 50 00 01");
  WriteWord(meter, 0x00D6, 7, 20'000);  // behind the request: not in the image
  EXPECT_EQ(ReadWord(meter, 0x0150, 109'999), 1);
  EXPECT_EQ(ReadWord(meter, 0x0150, 110'000), 0);
  EXPECT_EQ(ReadWord(meter, 0x00D6, 110'000), 7);
  WriteDouble(meter, 0x0008, 99, 120'000);

  meter.Restart(kSecond);
  EXPECT_EQ(Ask(meter, "03 00 D6 00 01", 2 * kSecond - 1), "");
  EXPECT_EQ(ReadWord(meter, 0x00D6, 2 * kSecond), 5);
  EXPECT_EQ(ReadDouble(meter, 3, 0x0008, 2 * kSecond), 15);

  // The power fails while it stores: the old image stands.
  WriteWord(meter, 0x00D6, 9, 3 * kSecond);
  Ask(meter, "06 01 50 00 01", 3 * kSecond);
  meter.Restart(3 * kSecond + 99'999);
  EXPECT_EQ(ReadWord(meter, 0x00D6, 5 * kSecond), 5);
  EXPECT_EQ(ReadWord(meter, 0x0150, 5 * kSecond), 0);
}

TEST(Meter, InitialisesItsMemory) {
  struct Case {
    const char* request;
    int specification;
  };
  for (const Case& c :
       {Case{"06 01 52 00 64", 81}, Case{"06 01 48 00 B6", 182}, Case{"06 01 48 01 19", 281}}) {
    Meter meter{MeterConfig{.id_number = 42, .restart_time = 2 * kSecond}};
    WriteWord(meter, 0x0104, 77);
    EXPECT_EQ(Ask(meter, c.request, kSecond), c.request);
    EXPECT_EQ(Ask(meter, "03 01 48 00 01", 3 * kSecond - 1), "") << c.request;
    EXPECT_EQ(ReadWord(meter, 0x0148, 3 * kSecond), c.specification);
    EXPECT_EQ(ReadWord(meter, 0x0104, 3 * kSecond), 42);
    EXPECT_EQ(Read(meter, 3, 0x03E8, 1, 3 * kSecond).empty(), IsSingleChannel(c.specification));
    meter.Restart(4 * kSecond);
    EXPECT_EQ(ReadWord(meter, 0x0148, 6 * kSecond), c.specification);
  }
  for (const auto& [specification, single] :
       {std::pair{0, false}, {81, false}, {181, false}, {182, true}, {281, false}}) {
    EXPECT_EQ(IsSingleChannel(specification), single) << specification;
  }
}

TEST(Meter, SetsAndClearsItsZero) {
  Meter meter{MeterConfig{.motions = {{{Wave::Still, 1.5, 0, 1}, {Wave::Still, 1, 0, 1}}}}};
  EXPECT_EQ(Ask(meter, "06 01 40 00 01"), "06 01 40 00 01");
  EXPECT_EQ(ReadFloat(meter, 0x0000, 0), 0);
  EXPECT_EQ(ReadFloat(meter, 0x1388, 0), 1);
  EXPECT_EQ(ReadWord(meter, 0x0140), 0);
  Ask(meter, "06 14 C8 00 01");
  EXPECT_EQ(ReadFloat(meter, 0x1388, 0), 0);
  Ask(meter, "06 01 40 00 00");
  EXPECT_EQ(ReadFloat(meter, 0x0000, 0), 1.5);
  EXPECT_EQ(ReadFloat(meter, 0x1388, 0), 0);
}

TEST(Meter, TestsUntilItIsReleased) {
  Meter meter{kStill};
  const float before = ReadFloat(meter, 0x0008, 0);
  for (const char* request : {"06 01 5C 00 01", "06 01 5E 00 50", "06 01 60 00 0A"}) {
    EXPECT_EQ(Ask(meter, request), request);
  }
  EXPECT_EQ(ToHex(Read(meter, 3, 0x0154, 7)), "00 00 00 00 00 00 00 00 00 01 00 50 00 0A");
  EXPECT_EQ(ReadWord(meter, 0x0166), 1);
  EXPECT_NEAR(ReadFloat(meter, 0x0008, 5 * kSecond), 40, 0.01);   // half way of the tracking time
  EXPECT_NEAR(ReadFloat(meter, 0x0004, 60 * kSecond), 12, 0.01);  // 80 % of 15 m3/h
  EXPECT_EQ(Ask(meter, "06 01 66 00 01", 60 * kSecond), "86 03");
  EXPECT_EQ(Ask(meter, "06 01 66 00 00", 60 * kSecond), "06 01 66 00 00");
  EXPECT_EQ(ReadWord(meter, 0x0166, 60 * kSecond), 0);
  EXPECT_EQ(ToHex(Read(meter, 3, 0x0154, 7)), "00 00 00 00 00 00 00 00 00 00 00 00 00 00");
  EXPECT_NEAR(ReadFloat(meter, 0x0008, 60 * kSecond), before, 0.01);
  for (const char* check : {"06 01 54 00 32", "06 01 56 00 05", "06 01 58 00 00", "06 01 76 00 64"}) {
    Ask(meter, check);
    EXPECT_EQ(ReadWord(meter, 0x0166), 1) << check;
    Ask(meter, "06 01 66 00 00");
  }
}

TEST(Meter, OutputChecksMoveWhatTheOutputsCarry) {
  Meter meter{kStill};
  const auto percent = [&](int address) { return ReadFloat(meter, address, 10 * kSecond); };
  const auto pulses = [&](Micros now) { return ReadBig(Read(meter, 4, 0x001C, 2, now)); };
  const float ch1 = percent(0x0008), ch2 = percent(0x1390), heat1 = percent(0x10C4);
  Ask(meter, "06 01 54 00 32");  // 50 %, on AO1 (CH1's flow) and AO2 (CH2's)
  EXPECT_EQ(percent(0x0008), 50);
  EXPECT_EQ(percent(0x10C4), heat1);
  WriteWord(meter, 0x03EC, 3);  // AO1 carries CH1's heat now
  WriteWord(meter, 0x03EE, 1);
  EXPECT_EQ(percent(0x0008), ch1);
  EXPECT_EQ(percent(0x1390), 50);
  EXPECT_EQ(percent(0x10C4), 50);
  Ask(meter, "06 01 54 00 00");  // 0 % is a value too
  EXPECT_EQ(percent(0x1390), 0);
  const auto before = pulses(20 * kSecond);
  EXPECT_EQ(Ask(meter, "06 01 56 00 64", 20 * kSecond), "06 01 56 00 64");
  EXPECT_GE(pulses(23 * kSecond), before + 300);
  // A check in the midst of a test doesn't start the test anew.
  for (const char* request : {"06 01 5C 00 01", "06 01 5E 00 64", "06 01 60 00 0A"})
    Ask(meter, request, 30 * kSecond);
  Ask(meter, "06 01 58 00 01", 35 * kSecond);
  EXPECT_NEAR(ReadFloat(meter, 0x0008, 35 * kSecond), 50, 0.01);
  EXPECT_EQ(Ask(meter, "06 01 66 00 00", 40 * kSecond), "06 01 66 00 00");
  EXPECT_EQ(percent(0x1390), ch2);
  EXPECT_EQ(percent(0x10C4), heat1);
  EXPECT_LE(pulses(41 * kSecond), before + 20);
}

TEST(Meter, CalibratesItsTemperatures) {
  Meter meter{kStill};
  const double supply = ReadDouble(meter, 4, 0x10F8, 0), back = ReadDouble(meter, 4, 0x2480, 0);
  WriteDouble(meter, 0x04F4, 1.5);
  WriteDouble(meter, 0x050C, 90);
  EXPECT_NEAR(ReadDouble(meter, 4, 0x10F8, 0), supply + 1.5, 1e-9);
  EXPECT_NEAR(ReadDouble(meter, 4, 0x2480, 0), back * 0.9, 1e-9);
  EXPECT_EQ(ReadDouble(meter, 4, 0x10E0, 0), ReadDouble(meter, 4, 0x10F8, 0));  // of CH1's heat block
  WriteWord(meter, 0x04BE, 1);                                                  // set, not measured
  EXPECT_EQ(ReadDouble(meter, 4, 0x10E0, 0), 45);
  EXPECT_NEAR(ReadDouble(meter, 4, 0x10F8, 0), supply + 1.5, 1e-9);
  WriteWord(meter, 0x04B4, 2);  // F: 1.5 F are less than 1.5 K
  EXPECT_NEAR(ReadDouble(meter, 4, 0x10F8, 0), supply * 1.8 + 32 + 1.5, 1e-9);
}

TEST(Meter, FillsItsRegistersWithValuesThatDiffer) {
  const Block blocks[] = {
      {3, 0x0000, 31, true},  {3, 0x0040, 13, true},  {3, 0x005A, 48, false}, {3, 0x00C0, 6, true},
      {3, 0x00D0, 18, true},  {3, 0x018E, 15, true},  {3, 0x1388, 31, false}, {3, 0x13C8, 13, false},
      {3, 0x1458, 18, false}, {3, 0x148E, 15, false}, {3, 0x1B5A, 21, false}, {3, 0x1B98, 13, false},
      {3, 0x03EA, 19, false}, {3, 0x0410, 16, false}, {3, 0x0430, 52, false}, {3, 0x04A8, 56, false}};
  Meter full{MeterConfig{.path_mode = 2}}, other{MeterConfig{}},
      single{MeterConfig{.specification = kSingleSpecification}};
  full.Fill(1, 0), other.Fill(2, 0), single.Fill(1, 0);
  for (const Block& block : blocks) {
    for (Meter* meter : {&full, &other, &single}) {
      if (meter == &single && !block.single) continue;
      const Bytes data = Read(*meter, 3, block.address, block.words);
      ASSERT_EQ(data.size(), 2u * block.words) << std::hex << block.address;
      EXPECT_EQ(WriteMany(*meter, block.address, data), 0)
          << std::hex << block.address << ": a value that it refuses";
    }
    EXPECT_NE(Read(full, 3, block.address, block.words), Read(other, 3, block.address, block.words));
  }
  std::vector<double> values;
  for (int address :
       {0x0008, 0x0010, 0x1390, 0x1398, 0x1B60, 0x0024, 0x002C, 0x0034, 0x0044, 0x004C, 0x13CC, 0x0060,
        0x0068, 0x0070, 0x0080, 0x041E, 0x0432, 0x043A, 0x0480, 0x03F0, 0x0400, 0x0408, 0x04C4, 0x04CC,
        0x04D4, 0x04DC, 0x04E4, 0x04EC, 0x04F4, 0x04FC, 0x0504, 0x050C, 0x00EA, 0x1472})
    values.push_back(ReadDouble(full, 3, address, 0));
  for (int address :
       {0x0018, 0x001C, 0x001E, 0x0020, 0x13A0, 0x0142, 0x0144, 0x014A, 0x0104, 0x0190, 0x1490, 0x0514})
    values.push_back(ReadWord(full, address));
  for (int address : {0x00D2, 0x00DA, 0x00E2, 0x145A})
    values.push_back(static_cast<double>(ReadBig(Read(full, 3, address, 2))));
  std::ranges::sort(values);
  EXPECT_EQ(std::ranges::adjacent_find(values), values.end());
  EXPECT_LT(values.front(), 0) << "signs too";
  EXPECT_EQ(
      ToHex(Read(full, 3, 0x0100, 1)) + ToHex(Read(full, 3, 0x0148, 1)) + ToHex(Read(full, 3, 0x03E8, 1)),
      "00 0000 5100 02");
  EXPECT_EQ(ReadWord(full, 0x0166), 0);
}

TEST(Meter, FailsWhereItsMemoryIsBad) {
  Meter meter{MeterConfig{}};
  meter.BreakMemory(Space::Holding, 0x00D8, 0x00D9, 4);
  meter.BreakMemory(Space::Input, 0x0024, 0x0025, 0);
  meter.BreakMemory(Space::Holding, 0x1388, 0x13C7, 2);
  const Reply replies[] = {{"03 00 D0 00 12", "83 04"},
                           {"03 00 D8 00 01", "83 04"},
                           {"06 00 D8 00 01", "86 04"},
                           {"10 00 D6 00 02 04 00 01 00 01", "90 04"},
                           {"03 00 DA 00 01", "03 02 00 00"},
                           {"03 00 D0 00 04", "03 08 00 03 00 00 17 A2 00 00"},  // ends ahead of it
                           {"04 00 24 00 01", ""},
                           {"04 00 00 00 13", ""},
                           {"04 00 26 00 01", "04 02 00 00"},
                           {"03 00 24 00 01", "03 02 00 00"},  // the other space
                           {"03 13 00 00 20", "83 02"}};       // by its second address
  for (const Reply& expected : replies)
    EXPECT_EQ(Ask(meter, expected.request), expected.reply) << expected.request;
  EXPECT_EQ(meter.holding().Word(0x00D6), 0) << "nothing of a refused write is done";
  meter.MendMemory();
  EXPECT_EQ(Read(meter, 3, 0x00D0, 18).size(), 36u);
}

TEST(Meter, PinsBytesOfItsInputRegisters) {
  Meter meter{MeterConfig{}};
  EXPECT_TRUE(meter.PinInput(0x0070, Hex("FF FF")));
  EXPECT_TRUE(meter.PinInput(0x0086, Hex("00 FF 41")));
  EXPECT_FALSE(meter.PinInput(0x3F00, Hex("00 00")));
  EXPECT_EQ(ToHex(Read(meter, 4, 0x0030, 36)).substr(64 * 3, 5), "FF FF");
  EXPECT_EQ(ToHex(Read(meter, 4, 0x0086, 2)), "00 FF 41 2D");
  EXPECT_TRUE(meter.PinInput(0x0070, {}));
  EXPECT_NE(ToHex(Read(meter, 4, 0x0070, 1)), "FF FF");
}

// The words of the condition block by their rows: 16 bits ten times, 32 bits ten times, 16 bits six times.
std::vector<double> Condition(Meter& meter, int address = 0x0030, Micros now = 0) {
  const Bytes data = Read(meter, 4, address, 36, now);
  std::vector<double> rows;
  for (std::size_t at = 0; rows.size() < 26;) {
    const bool wide = rows.size() >= 10 && rows.size() < 20;
    const auto raw = ReadBig(std::span(data).subspan(at, wide ? 4 : 2));
    rows.push_back(wide ? static_cast<std::int32_t>(raw) : static_cast<std::int16_t>(raw));
    at += wide ? 4 : 2;
  }
  return rows;
}

TEST(Meter, ItsConditionIsThatOfSoundInAPipe) {
  Meter meter{kStill};
  const auto rows = Condition(meter);
  const double degrees[] = {rows[1], rows[3], rows[7]};  // wedge, pipe, fluid, in 0.1 degrees
  for (double angle : degrees) EXPECT_TRUE(angle > 100 && angle < 900) << angle;
  // Snell's law: the same sine over velocity in each layer.
  const auto slowness = [&](int row) { return std::sin(rows[row + 1] / 10 * M_PI / 180) / rows[row]; };
  EXPECT_NEAR(slowness(2) / slowness(0), 1, 0.01);
  EXPECT_NEAR(slowness(6) / slowness(0), 1, 0.01);
  EXPECT_EQ(rows[6], 1482);
  EXPECT_LT(rows[9], rows[8]);  // the window opens ahead of the sound
  EXPECT_NEAR((rows[11] - rows[10]) / 1000 * 1000, rows[13] / 10000, 1);  // us against ns: T2 - T1 = DT
  EXPECT_NEAR((rows[10] + rows[11]) / 2, rows[12], 1);                    // and T0 between them
  EXPECT_NEAR(rows[15] / 100, rows[7], 1);                                // the fluid's angle, finer
  EXPECT_NEAR(rows[17], 1.2 * 0.0529 / 1.0038e-6, 10);                    // Reynolds
  EXPECT_NEAR(rows[19], 1200, 1);
  EXPECT_EQ(rows[24], 5000);
  // Backwards: the difference turns round, and so does the velocity.
  Meter back{MeterConfig{.motions = {{{Wave::Still, -1.2, 0, 1}, {Wave::Still, -1, 0, 1}}}}};
  const auto turned = Condition(back);
  EXPECT_EQ(turned[13], -rows[13]);
  EXPECT_EQ(turned[19], -1200);
  EXPECT_LT(turned[11], turned[10]);
  EXPECT_GT(turned[17], 0);
  EXPECT_NE(Condition(back, 0x13B8)[13], turned[13]);
  // What is set by hand stands there.
  WriteMany(meter, 0x0194, Hex("00 01 00 21"));
  WriteMany(meter, 0x01A2, Hex("00 01 12 34 0F A0"));
  const auto manual = Condition(meter);
  EXPECT_EQ(manual[9], 0x21);
  EXPECT_EQ(manual[20], 0x1234);
  EXPECT_EQ(manual[21], 0x0FA0);
}

std::vector<std::int32_t> Capture(Meter& meter, int kind, Micros now) {
  meter.Serve(Bytes{6, 1, 0x68, 0, static_cast<std::uint8_t>(kind)}, now);
  std::vector<std::int32_t> samples;
  for (int block = 0; block < 32; ++block) {
    const Bytes part = Read(meter, 4, 0x00C0 + 128 * block, 64, now + kSecond);
    for (std::size_t i = 0; i + 4 <= part.size(); i += 4)
      samples.push_back(static_cast<std::int32_t>(ReadBig(std::span(part).subspan(i, 4))));
  }
  return samples;
}

double Loudest(std::span<const std::int32_t> samples) {
  double loudest = 0;
  for (std::int32_t sample : samples) loudest = std::max(loudest, std::abs(static_cast<double>(sample)));
  return loudest;
}

TEST(Meter, ItsWavesAreThoseOfAMeter) {
  Meter meter{kStill};
  const auto head = Condition(meter);
  const Bytes filter_heads = Read(meter, 4, 0x0078, 4);
  for (int kind : {1, 2, 3, 4}) {
    const auto wave = Capture(meter, kind, 0);
    ASSERT_EQ(wave.size(), 1024u);
    const auto filtered = static_cast<double>(ReadBig(std::span(filter_heads).subspan(kind == 4 ? 4 : 0, 4)));
    const double height = kind < 3 ? head[21 + kind] : filtered;
    EXPECT_NEAR(Loudest(wave), height, 0.06 * height) << kind;
    // Quiet ahead of the burst, but not without noise; ringing out behind it.
    EXPECT_LT(Loudest(std::span(wave).first(300)), 0.02 * height) << kind;
    EXPECT_GT(Loudest(std::span(wave).first(300)), 0) << kind;
    EXPECT_LT(Loudest(std::span(wave).last(200)), 0.1 * height) << kind;
  }
  // The correlation has one peak, off its centre by the transit time difference: 3.125 ns a point.
  for (double velocity : {1.2, -2.0, 0.0, 5.0}) {
    Meter moving{MeterConfig{.motions = {{{Wave::Still, velocity, 0, 1}, {Wave::Still, 0, 0, 1}}}}};
    const auto wave = Capture(moving, 5, 0);
    const auto peak = std::ranges::max_element(wave) - wave.begin();
    EXPECT_NEAR(static_cast<double>(peak - 512) * 3.125, Condition(moving)[13] / 10000, 8) << velocity;
    for (std::ptrdiff_t i = 0; i < 1024; ++i) {
      if (std::abs(i - peak) <= 80) continue;
      EXPECT_LT(wave[static_cast<std::size_t>(i)], wave[static_cast<std::size_t>(peak)] / 2);
    }
  }
  // The peak is regulated to what is set; without a signal there is little but noise.
  WriteWord(meter, 0x01A8, 0);
  EXPECT_NEAR(Loudest(Capture(meter, 1, 0)), 1000, 80);
  meter.SetRas(0, 0x0800);
  EXPECT_LT(Loudest(Capture(meter, 1, 0)), 100);
  EXPECT_GT(Loudest(Capture(meter, 6, 0)), 2500) << "CH2 has its own";
}

TEST(Meter, CapturesAWave) {
  Meter meter{MeterConfig{.capture_time = 200'000}};
  std::vector<Bytes> waves;
  for (int kind : {1, 1, 5, 10}) {
    const Micros now = kSecond * static_cast<Micros>(waves.size());
    EXPECT_EQ(ToHex(meter.Serve(Bytes{6, 1, 0x68, 0, static_cast<std::uint8_t>(kind)}, now)),
              "06 01 68 00 0A");
    EXPECT_EQ(ReadWord(meter, 0x0168, now + 199'999), 10);
    EXPECT_EQ(ReadWord(meter, 0x0168, now + 200'000), 20);
    Bytes wave;
    for (int block = 0; block < 32; ++block) {
      const Bytes part = Read(meter, 4, 0x00C0 + 128 * block, 64, now + 200'000);
      wave.insert(wave.end(), part.begin(), part.end());
    }
    EXPECT_EQ(wave.size(), 4096u);
    waves.push_back(wave);
  }
  EXPECT_NE(waves[0], waves[1]);  // its noise moves
  EXPECT_NE(waves[1], waves[2]);
  EXPECT_EQ(Ask(meter, "06 01 68 00 00", 9 * kSecond), "06 01 68 00 00");
  EXPECT_EQ(ReadWord(meter, 0x0168, 9 * kSecond), 0);
  // The head is the end of the condition block: the same bytes.
  const Bytes condition = Read(meter, 4, 0x0030, 36), head = Read(meter, 4, 0x0070, 8);
  EXPECT_EQ(Bytes(condition.end() - 8, condition.end()), Bytes(head.begin(), head.begin() + 8));

  Meter single{MeterConfig{.specification = kSingleSpecification}};
  EXPECT_EQ(Ask(single, "06 01 68 00 06"), "06 01 68 00 00");
  EXPECT_EQ(Ask(single, "06 01 68 00 05"), "06 01 68 00 0A");
}

TEST(Meter, MovesAsItIsTold) {
  const Motion still{Wave::Still, 1.25, 9, 1}, ramp{Wave::Ramp, -1, 4, 8}, step{Wave::Step, 0.5, 1, 10},
      sine{Wave::Sine, 0, 2, 4};
  struct Case {
    Motion motion;
    double seconds, velocity, forward, backward;  // m/s, m
  };
  const Case cases[] = {{still, 7, 1.25, 8.75, 0},
                        {ramp, 2, 0, 0, 1},
                        {ramp, 6, 2, 4, 1},
                        {ramp, 18, 0, 18, 3},
                        {step, 4, 0.5, 2, 0},
                        {step, 5, 1.5, 2.5, 0},
                        {step, 25, 1.5, 22.5, 0},
                        {sine, 1, 2, 4 / M_PI, 0},
                        {sine, 3, -2, 8 / M_PI, 4 / M_PI},
                        {sine, 4e6 + 1, 2, 1e6 * 8 / M_PI, 1e6 * 8 / M_PI}};
  for (const Case& c : cases) {
    const Course course(c.motion);
    const Micros at = std::llround(c.seconds * 1e6);
    EXPECT_NEAR(course.Velocity(at), c.velocity, 1e-9) << c.seconds;
    EXPECT_NEAR(course.Forward(at), c.forward, 1e-5 * c.forward + 0.01) << c.seconds;
    EXPECT_NEAR(course.Backward(at), c.backward, 1e-5 * c.backward + 0.01) << c.seconds;
  }
}

// What a person expects of a plant: near its working point, never still, never jumping, the same every time.
TEST(Meter, ShowsAProcessThatLives) {
  for (const int unit_system : {0, 1}) {
    Meter meter{MeterConfig{.unit_system = unit_system}};
    double lowest = 1e9, highest = 0, widest_step = 0, before = ReadFloat(meter, 0x0008, 0);
    for (int second = 1; second < 7200; ++second) {
      const double percent = ReadFloat(meter, 0x0008, second * kSecond);
      EXPECT_NE(percent, before);
      widest_step = std::max(widest_step, std::abs(percent - before));
      lowest = std::min(lowest, percent), highest = std::max(highest, percent);
      before = percent;
    }
    EXPECT_GT(lowest, 50);
    EXPECT_LT(highest, 70);
    EXPECT_GT(highest - lowest, 3);
    EXPECT_LT(widest_step, 1.5);
    for (const int percent : {0x1390, 0x2524, 0x10C4, 0x244C, 0x264C}) {
      EXPECT_NEAR(ReadFloat(meter, percent, 777 * kSecond), 60, 15) << std::hex << percent;
    }
  }
  // Another pipe carries the same flow; so does the total. Another seed is another plant.
  Meter narrow{MeterConfig{}}, wide{MeterConfig{}}, other{MeterConfig{.seed = 2}};
  WriteMany(wide, 0x00D2, Hex("00 00 2C A6"));  // 114.30 mm
  EXPECT_NEAR(ReadFloat(wide, 0x0004, kSecond), ReadFloat(narrow, 0x0004, kSecond), 1e-4);
  EXPECT_LT(ReadFloat(wide, 0x0000, kSecond), 0.3 * ReadFloat(narrow, 0x0000, kSecond));
  EXPECT_NEAR(ReadDouble(wide, 4, 0x000C, 99 * kSecond), ReadDouble(narrow, 4, 0x000C, 99 * kSecond), 1e-9);
  EXPECT_NE(ReadFloat(other, 0x0004, kSecond), ReadFloat(narrow, 0x0004, kSecond));
  // The path is the integral of the velocity, whether it is known in closed form or, where it turns round, by
  // cells.
  const Motion there{Wave::Process, 1, 0.9, 600}, and_back{Wave::Process, 0.1, 0.9, 600};
  for (const Motion& motion : {there, and_back}) {
    const Course course(motion);
    double sum = 0;
    for (int tenth = 0; tenth < 9000; ++tenth)
      sum += 0.1 * course.Velocity(tenth * kSecond / 10 + kSecond / 20);
    EXPECT_NEAR(course.Forward(900 * kSecond) - course.Backward(900 * kSecond), sum, 0.01);
  }
}

TEST(Meter, CountsTheSameHoweverOftenItIsAsked) {
  Meter busy{MeterConfig{}}, quiet{MeterConfig{}};
  for (Micros now = 0; now < 3600 * kSecond; now += 7 * kSecond) {
    Read(busy, 4, 0x0000, 19, now);
    if (now % (350 * kSecond) == 0) WriteWord(busy, 0x00CA, 3, now);  // settles the totals
  }
  const double total = ReadDouble(quiet, 4, 0x000C, 3600 * kSecond);
  EXPECT_NEAR(total, 1.14 * 3600 * M_PI / 4 * 0.0529 * 0.0529, 1e-3);  // m3 through 52.9 mm
  EXPECT_NEAR(ReadDouble(busy, 4, 0x000C, 3600 * kSecond), total, 1e-9);
  EXPECT_EQ(ReadBig(Read(quiet, 4, 0x001C, 2, 3600 * kSecond)), static_cast<std::uint64_t>(total / 0.01));
  EXPECT_GT(ReadDouble(quiet, 4, 0x10C8, 3600 * kSecond), 0);  // heating
  EXPECT_EQ(ReadDouble(quiet, 4, 0x10D0, 3600 * kSecond), 0);  // cooling
}

TEST(Meter, StopsAndResetsATotal) {
  Meter meter{kStill};
  WriteDouble(meter, 0x004C, 2.5, 0);
  WriteWord(meter, 0x0042, 1, 100 * kSecond);
  const double stopped = ReadDouble(meter, 4, 0x000C, 100 * kSecond);
  EXPECT_GT(stopped, 0.2);
  EXPECT_EQ(ReadDouble(meter, 4, 0x000C, 900 * kSecond), stopped);
  WriteWord(meter, 0x0042, 2, 900 * kSecond);
  EXPECT_EQ(ReadDouble(meter, 4, 0x000C, 950 * kSecond), 2.5);
  WriteWord(meter, 0x0042, 0, 1000 * kSecond);
  EXPECT_NEAR(ReadDouble(meter, 4, 0x000C, 1100 * kSecond), 2.5 + stopped, 0.02);
  EXPECT_NE(ReadDouble(meter, 4, 0x1394, 950 * kSecond), 0);  // CH2 went on
}

TEST(Meter, ComputesChannel3) {
  struct Case {
    int path, calculation;
    double flow;  // m3/s over the area of one pipe
  };
  const Case cases[] = {{0, 0, 2}, {1, 3, 1.5}, {2, 0, 1.5}, {2, 1, 3}, {2, 2, 1}, {2, 3, -1}};
  for (const Case& c : cases) {
    Meter meter{
        MeterConfig{.path_mode = c.path, .motions = {{{Wave::Still, 2, 0, 1}, {Wave::Still, 1, 0, 1}}}}};
    WriteWord(meter, 0x03EA, c.calculation);
    const double cubic_metres_an_hour = c.flow * M_PI / 4 * 0.0529 * 0.0529 * 3600;
    EXPECT_NEAR(ReadFloat(meter, 0x2520, 0), cubic_metres_an_hour, 1e-4) << c.path << c.calculation;
    const double total = ReadDouble(meter, 4, c.flow > 0 ? 0x2528 : 0x2530, 3600 * kSecond);
    EXPECT_NEAR(total, std::abs(cubic_metres_an_hour), 1e-4) << c.path << c.calculation;
  }
}

TEST(Meter, ShowsPinnedValuesAsTheyAre) {
  Meter meter{MeterConfig{}};
  meter.SetLive(0, Quantity::Velocity, -0.0);
  meter.SetLive(0, Quantity::Flow, std::numeric_limits<double>::infinity());
  meter.SetLive(1, Quantity::PlusTotal, -std::numeric_limits<double>::infinity());
  meter.SetLive(2, Quantity::SupplyTemp, std::numeric_limits<double>::quiet_NaN());
  meter.SetLive(1, Quantity::MinusPulses, -5);
  meter.SetLive(7, Quantity::Flow, 1);
  meter.SetRas(2, 0xFFFF);
  EXPECT_EQ(ToHex(Read(meter, 4, 0x0000, 4)), "80 00 00 00 7F 80 00 00");
  EXPECT_EQ(ToHex(Read(meter, 4, 0x1394, 4)), "FF F0 00 00 00 00 00 00");
  EXPECT_TRUE(std::isnan(ReadDouble(meter, 4, 0x2668, 0)));
  EXPECT_EQ(ToHex(Read(meter, 4, 0x13A8, 2)), "FF FF FF FB");
  EXPECT_EQ(ToHex(Read(meter, 4, 0x2540, 1)), "FF FF");
  meter.ReleaseLive(0, Quantity::Flow);
  EXPECT_TRUE(std::isfinite(ReadFloat(meter, 0x0004, 0)));
}

TEST(Meter, AlarmsComeAndGo) {
  Meter meter{MeterConfig{}};
  meter.SetRasSchedule(0, {{0x0010, 60, 20, 30}, {0x4000, 60, 25, 40}});
  const auto ras = [&](int seconds) { return ReadBig(Read(meter, 4, 0x0024, 1, seconds * kSecond)); };
  const std::pair<int, unsigned> cases[] = {{0, 0},       {19, 0}, {20, 0x10}, {27, 0x4010},
                                            {39, 0x4000}, {40, 0}, {80, 0x10}, {6000 + 25, 0x4010}};
  for (const auto& [seconds, word] : cases) EXPECT_EQ(ras(seconds), word) << seconds;
}

}  // namespace
}  // namespace sim

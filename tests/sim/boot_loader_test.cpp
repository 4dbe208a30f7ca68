// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/boot_loader.h"

#include <algorithm>

#include "line_drive.h"

namespace sim {
namespace {

constexpr Micros kSecond = 1'000'000;

// Frames worked out by hand. A module of six bytes for the boot module's place, and its way back.
constexpr const char* kOpen = "02 41 FF 00 00 00 00 06 00 00 00 00 20 20 20 20 42 38 45 64 0D 0A";
constexpr const char* kData = "02 42 01 02 03 04 05 FF 42 43 45 64 0D 0A";
constexpr const char* kClose = "02 43 FF 42 43 45 64 0D 0A";
constexpr const char* kOpened = "02 41 34 31 45 64 0D 0A";
constexpr const char* kTaken = "02 42 34 32 45 64 0D 0A";
constexpr const char* kClosed = "02 43 34 33 45 64 0D 0A";
constexpr const char* kOpenUpload = "02 41 EF 00 00 00 00 08 00 00 00 00 20 20 20 20 41 36 45 64 0D 0A";
constexpr const char* kRead = "02 42 34 32 45 64 0D 0A";
constexpr const char* kCloseUpload = "02 43 EF 41 43 45 64 0D 0A";
constexpr const char* kOpenVersion = "02 41 EB 00 00 00 00 14 00 00 00 00 20 20 20 20 42 45 45 64 0D 0A";
constexpr const char* kReadSpec = "01 03 01 48 00 01 05 E0";
constexpr const char* kSpecReply = "01 03 02 00 51 79 B8";

constexpr int kBootModule = 1;

std::string Refusal(std::string_view text) {
  Bytes answer{0x02, 'E'};
  answer.insert(answer.end(), text.begin(), text.end());
  answer.insert(answer.end(), {0x0C, 0x0D, 0x0A});
  return ToHex(answer);
}

// Frame by frame, each when the answer to the one before is there and a second has gone; the answers.
std::vector<std::string> Session(Line& line, std::initializer_list<const char*> frames, Micros start = 0) {
  std::vector<std::string> answers;
  for (const char* frame : frames) {
    const Arrival arrival = Exchange(line, frame, start);
    answers.push_back(arrival.bytes);
    start = std::max(start, arrival.last) + kSecond;
  }
  return answers;
}

TEST(BootLoader, LoadsAModuleAndGivesItBack) {
  auto line = Make("boot flash=3000 turnaround=0");
  EXPECT_EQ(Session(*line, {kOpen, kData, kClose}), (std::vector<std::string>{kOpened, kTaken, kClosed}));
  EXPECT_EQ(ToHex(line->loader().Image(kBootModule)), "01 02 03 04 05 FF");
  EXPECT_EQ(line->loader().Downloads(), 1);
  // Eight bytes are asked for: erased flash stands behind the six.
  EXPECT_EQ(Session(*line, {kOpenUpload, kRead, kCloseUpload}, 60 * kSecond),
            (std::vector<std::string>{kOpened, "01 02 03 04 05 FF FF FF", kClosed}));
  const std::string version = Session(*line, {kOpenVersion, kRead}, 90 * kSecond)[1];
  EXPECT_EQ(version.size(), 22 * 3 - 1u);
  EXPECT_TRUE(version.ends_with("20 0D 0A")) << version;
  // Nobody is a meter meanwhile.
  EXPECT_EQ(Exchange(*line, kReadSpec, 120 * kSecond).bytes, "");
  EXPECT_EQ(ApplyAction(*line, "loader=off", 130 * kSecond), "");
  EXPECT_EQ(Exchange(*line, kReadSpec, 130 * kSecond).bytes, kSpecReply);
}

TEST(BootLoader, KeepsThePaceOf38400) {
  auto line = Make("boot speed=9600 turnaround=0 flash=2500");
  // 22 bytes of ten bits each, then 8.
  EXPECT_EQ(Exchange(*line, kOpen).last, 5'730 + 2'084);
  EXPECT_EQ(Exchange(*line, kData, kSecond).last, kSecond + 3'646 + 2'084);
  EXPECT_EQ(Exchange(*line, kClose, 2 * kSecond).last, 2 * kSecond + 2'344 + 2'500'000 + 2'084);
}

TEST(BootLoader, TakesTheLargestModule) {
  auto line = Make("boot");
  Exchange(*line, "02 41 FC 03 00 0F 00 00 00 03 00 00 20 20 20 20 42 32 45 64 0D 0A");
  Bytes frame{0x02, 'B'};
  for (std::size_t i = 0; i < kLargestModule; ++i) frame.push_back(static_cast<std::uint8_t>(i * 7 >> 3));
  std::uint8_t check = 0;
  for (std::size_t i = 1; i < frame.size(); ++i) check ^= frame[i];
  const std::string digits = ToHex(Bytes{check}) + "Ed\r\n";
  frame.insert(frame.end(), digits.begin(), digits.end());
  line->Transmit(frame, kSecond);
  const Arrival taken = Drain(*line);
  EXPECT_EQ(taken.bytes, kTaken);
  EXPECT_NEAR(static_cast<double>(taken.last - kSecond) / 1e6, 983'056 * 10 / 38400.0, 0.01);
  Exchange(*line, "02 43 FC 42 46 45 64 0D 0A", 300 * kSecond);
  EXPECT_TRUE(std::ranges::equal(line->loader().Image(0), std::span(frame).subspan(2, kLargestModule)));
}

TEST(BootLoader, RefusesWhatIsWrong) {
  struct Case {
    const char* frame;
    const char* error;
  };
  const Case opens[] = {
      {"02 41 FF 00 00 00 00 06 00 00 00 00 20 20 20 20 42 39 45 64 0D 0A", "BCC ERROR"},
      {"02 41 FF 00 00 00 00 06 00 00 00 00 20 20 20 20 62 38 45 64 0D 0A", "BCC ERROR"},  // small digit
      {"02 41 FF 00 00 00 00 06 00 00 00 00 20 20 20 20 42 38 45 64 0D 0D", "FRAME ERROR"},
      {"02 41 FF 00 00 00 00 06 00 00 00 00 20 20 20 21 42 39 45 64 0D 0A", "FRAME ERROR"},
      {"02 41 FA 00 00 00 00 06 00 00 00 00 20 20 20 20 42 44 45 64 0D 0A", "CODE ERROR"},
      {"02 41 FF 01 00 00 00 06 00 00 00 00 20 20 20 20 42 39 45 64 0D 0A", "ADDRESS ERROR"},
      {"02 41 FF 00 00 00 00 06 00 03 00 00 20 20 20 20 42 42 45 64 0D 0A", "ADDRESS ERROR"},
      {"02 41 FF 00 00 00 00 05 00 00 00 00 20 20 20 20 42 42 45 64 0D 0A", "LENGTH ERROR"},
      {"02 41 FF 00 00 00 00 00 00 00 00 00 20 20 20 20 42 45 45 64 0D 0A", "LENGTH ERROR"},
      {"02 41 FF 00 00 0F 00 02 00 00 00 00 20 20 20 20 42 33 45 64 0D 0A", "LENGTH ERROR"},
      {"02 41 EB 00 00 00 00 12 00 00 00 00 20 20 20 20 42 38 45 64 0D 0A", "LENGTH ERROR"},
      {"02 44 34 34 45 64 0D 0A", "COMMAND ERROR"},
      {kRead, "SEQUENCE ERROR"},
      {kClose, "SEQUENCE ERROR"},
  };
  EXPECT_EQ(Refusal("BCC ERROR"), "02 45 42 43 43 20 45 52 52 4F 52 0C 0D 0A");
  for (const Case& c : opens) {
    auto line = Make("boot");
    EXPECT_EQ(Exchange(*line, c.frame).bytes, Refusal(c.error)) << c.frame;
    EXPECT_EQ(line->loader().IsBusy(), false);
  }
  // In the midst of a download: nothing of it is kept, and the next one goes well.
  struct Late {
    const char* data;
    const char* close;
    const char* error;
  };
  for (const Late& c : {Late{"02 42 01 02 03 04 05 FE 42 43 45 64 0D 0A", kClose, "SEQUENCE ERROR"},
                        Late{kData, "02 43 FE 42 44 45 64 0D 0A", "CODE ERROR"},
                        Late{kData, "02 43 FF 42 44 45 64 0D 0A", "BCC ERROR"}}) {
    auto line = Make("boot");
    const Bytes before = line->loader().Image(kBootModule);
    EXPECT_EQ(Session(*line, {kOpen, c.data, c.close})[2], Refusal(c.error)) << c.close;
    EXPECT_EQ(line->loader().Image(kBootModule), before);
    EXPECT_EQ(Session(*line, {kOpen, kData, kClose}, 60 * kSecond)[2], kClosed);
  }
  auto small = Make("boot module-limit=KRT_BOOT:4");
  EXPECT_EQ(Exchange(*small, kOpen).bytes, Refusal("LENGTH ERROR"));
}

TEST(BootLoader, FaultsStrikeTheFramesTheyAreArmedFor) {
  struct Case {
    const char* fault;
    std::vector<std::string> answers;  // to a download
    bool kept;
  };
  const std::string error = Refusal("DEVICE ERROR"),
                    endless = "02 45 44 45 56 49 43 45 20 45 52 52 4F 52 0D 0A";
  const std::string sequence = Refusal("SEQUENCE ERROR");
  const Case cases[] = {
      {"loader-error/41", {error, sequence, sequence}, false},
      {"loader-error/43", {kOpened, kTaken, error}, false},
      {"loader-long-error/43@FF", {kOpened, kTaken, endless}, false},
      {"loader-error@FE", {kOpened, kTaken, kClosed}, true},
      {"loader-no-line-end/43", {kOpened, kTaken, "02 43 34 33 45 64 0D"}, true},
      {"loader-no-flash/43", {kOpened, kTaken, kClosed}, false},
      {"silence/42", {kOpened, "", sequence}, false},
      {"one-byte/42", {kOpened, "02", kClosed}, true},
      {"short=3/43", {kOpened, kTaken, "02 43 34 33 45"}, true},
      {"extra=1/41", {std::string(kOpened) + " FF", kTaken, kClosed}, true},
  };
  for (const Case& c : cases) {
    auto line = Make(std::string("boot fault=") + c.fault);
    const bool whole_data = std::string_view(c.fault).starts_with("loader-error/41");
    const auto answers = Session(*line, {kOpen, whole_data ? kRead : kData, kClose});
    EXPECT_EQ(answers, c.answers) << c.fault;
    EXPECT_EQ(ToHex(line->loader().Image(kBootModule)) == "01 02 03 04 05 FF", c.kept) << c.fault;
  }
  auto late = Make("boot turnaround=0 fault=late=9000/41");
  EXPECT_EQ(Exchange(*late, kOpen).last, 9'000'000 + 5'730 + 2'084);
  auto spoiled = Make("boot fault=loader-spoil=2/42");
  Bytes image = Hex(Session(*spoiled, {kOpenUpload, kRead})[1]);
  image[2] ^= 0x01;
  EXPECT_TRUE(std::ranges::equal(image, std::span(spoiled->loader().Image(kBootModule)).first(8)));
}

// Wherever the cable breaks, the flash holds the old module or the new one, and the next try goes well.
TEST(BootLoader, KeepsAWholeModuleWhereverTheCableBreaks) {
  const std::size_t close_is_whole = 22 + 8 + 14 + 8 + 9, all = close_is_whole + 8;
  for (std::size_t cut = 0; cut <= all; ++cut) {
    auto line = Make("boot cut=" + std::to_string(cut));
    const Bytes before = line->loader().Image(kBootModule);
    const auto answers = Session(*line, {kOpen, kData, kClose});
    EXPECT_EQ(answers[2] == kClosed, cut == all) << cut;
    EXPECT_EQ(line->loader().Image(kBootModule) == before, cut < close_is_whole) << cut;
    line->Plug(60 * kSecond);
    EXPECT_EQ(Session(*line, {kOpen, kData, kClose}, 60 * kSecond)[2], kClosed) << cut;
  }
}

TEST(BootLoader, IsWokenByAnOpenFrameAndGivesTheLineBack) {
  auto line = Make("boot=2000 flash=1000");
  EXPECT_EQ(Exchange(*line, kReadSpec).bytes, kSpecReply);
  EXPECT_EQ(Session(*line, {kOpenUpload, kRead, kCloseUpload}, kSecond)[2], kClosed);
  EXPECT_EQ(Exchange(*line, kReadSpec, 10 * kSecond).bytes, kSpecReply);
  EXPECT_EQ(Session(*line, {kOpen, kData, kClose}, 20 * kSecond)[2], kClosed);  // until 23.0 s
  EXPECT_EQ(Exchange(*line, kReadSpec, 24 * kSecond).bytes, "") << "the meter starts anew";
  EXPECT_EQ(Exchange(*line, kReadSpec, 26 * kSecond).bytes, kSpecReply);
  // Left alone in the midst of it, it gives up.
  Session(*line, {kOpen, kData}, 30 * kSecond);
  EXPECT_EQ(Exchange(*line, kReadSpec, 40 * kSecond).bytes, "");
  EXPECT_EQ(Exchange(*line, kReadSpec, 90 * kSecond).bytes, kSpecReply);
  // Refused: a meter again at once.
  EXPECT_EQ(
      Exchange(*line, "02 41 FA 00 00 00 00 06 00 00 00 00 20 20 20 20 42 44 45 64 0D 0A", 100 * kSecond)
          .bytes,
      Refusal("CODE ERROR"));
  EXPECT_EQ(Exchange(*line, kReadSpec, 101 * kSecond).bytes, kSpecReply);

  for (const char* deaf : {"loader=never", "stations=1,2"}) {
    EXPECT_EQ(Exchange(*Make(deaf), kOpen).bytes, "") << deaf;
  }
  auto slow = Make("boot");
  slow->SetMaster({9600, 'N'});
  EXPECT_EQ(Exchange(*slow, kOpen).bytes, "");

  auto once = Make("loader=once boot=0");
  EXPECT_EQ(Session(*once, {kOpenUpload, kRead, kCloseUpload})[2], kClosed);
  EXPECT_TRUE(once->IsLoading());
  Session(*once, {kOpen, kData, kClose}, 20 * kSecond);
  EXPECT_EQ(Exchange(*once, kReadSpec, 60 * kSecond).bytes, kSpecReply);
}

TEST(BootLoader, HoldsWhatATestPutsThere) {
  auto line = Make("boot");
  for (int i = 0; i < kModules; ++i) {
    const ModuleInfo& info = Modules()[static_cast<std::size_t>(i)];
    const Bytes& image = line->loader().Image(i);
    const auto text = std::span(image).subspan(info.identification_at, 16);
    EXPECT_EQ(std::string(text.begin(), text.end()), info.identification);
  }
  const std::string path = testing::TempDir() + "boot_loader_test.bin";
  EXPECT_EQ(ApplyAction(*line, "dump=KRT_BOOT:" + path, 0), "");
  EXPECT_EQ(ApplyAction(*line, "module=0:" + path, 0), "");
  EXPECT_EQ(line->loader().Image(0), line->loader().Image(kBootModule));
  std::remove(path.c_str());
  for (const char* bad :
       {"module=0:/nowhere/at.bin", "module=9:x", "module=0", "dump=4:x", "dump=0:/nowhere/x",
        "module-limit=0:983041", "loader=maybe", "boot=5", "flash=-1", "cut=x"}) {
    EXPECT_NE(ApplyAction(*line, bad, 0), "") << bad;
  }
}

}  // namespace
}  // namespace sim

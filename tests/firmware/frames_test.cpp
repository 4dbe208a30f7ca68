// SPDX-License-Identifier: GPL-3.0-or-later
// What goes over the line, byte for byte, and what the answers do.
#include "firmware_fixture.h"

namespace vlt::test {
namespace {

std::string Boot() { return std::string(1280, '\0') + "KRT_BOOT_KRT1SYS"; }

TEST_F(FirmwareTest, DownloadOfEachModule) {
  const struct {
    int module;
    std::string file;
    std::string open;    // code to check
    std::string behind;  // the file: padding and check
    std::string close;
  } cases[] = {
      {0, "KRT_CNTL_KRT1SYS!", "FC 03 00 00 00 12 00 03 00 00 20 20 20 20 41 46", "\377E1", "FC 42 46"},
      {1, Boot(), "FF 00 00 00 05 10 00 00 00 00 20 20 20 20 41 42", "3C", "FF 42 43"},
      {2, "KRTUPSYS_KRT1SYS", "FE 01 00 00 00 10 FF F8 00 00 20 20 20 20 41 39", "29", "FE 42 44"},
      {3, "KRT_SPED_KRT1SYS\x01\x02", "FD 02 00 00 00 12 FF F8 00 00 20 20 20 20 41 42", "2B", "FD 42 45"},
  };
  for (const auto& given : cases) {
    SCOPED_TRACE(given.module);
    Reset();
    File(FwModules()[static_cast<std::size_t>(given.module)].stem) = given.file;
    EXPECT_EQ(Download(given.module), Texts{kCompleted});
    EXPECT_EQ(DownloadResult(given.module), "SUCCESS");
    const Texts frames = HexFrames();
    ASSERT_EQ(frames.size(), 3U);
    EXPECT_EQ(frames[0], "02 41 " + given.open + " 45 64 0D 0A");
    EXPECT_EQ(Peer().frames[1], "\x02\x42" + given.file + given.behind + "Ed\r\n");
    EXPECT_EQ(frames[2], "02 43 " + given.close + " 45 64 0D 0A");
    EXPECT_EQ(Peer().opens, (Texts{"1 38400,N,8,1", "1 38400,N,8,1"}));
    ExpectUsable();
  }
}

// A length whose bytes are a line end doesn't cut the open frame, and the largest module goes out whole.
TEST_F(FirmwareTest, LengthsThatTemptTheFrame) {
  const struct {
    std::size_t size;
    const char* open;
  } cases[] = {
      {0x0D0A, "02 41 FC 03 00 00 0D 0A 00 03 00 00 20 20 20 20 42 41 45 64 0D 0A"},
      {kFwLargestImage, "02 41 FC 03 00 0F 00 00 00 03 00 00 20 20 20 20 42 32 45 64 0D 0A"},
  };
  for (const auto& given : cases) {
    Reset();
    const std::string file = GoodFile(0, given.size);
    File("KRT_CNTL") = file;
    Download(0);
    EXPECT_EQ(DownloadResult(0), "SUCCESS");
    EXPECT_EQ(HexFrames()[0], given.open);
    EXPECT_EQ(Peer().frames[1].size(), given.size + 8);
    EXPECT_TRUE(Peer().frames[1].compare(2, given.size, file) == 0);
    // And back again.
    Peer().image = file;
    Verify(0);
    EXPECT_EQ(VerifyResult(0), "SUCCESS");
  }
}

TEST_F(FirmwareTest, VerificationFramesAndResults) {
  const std::string file = "KRT_CNTL_KRT1SYS!";  // 17 bytes, 18 in the device
  const std::string image = file + "\xFF";
  const struct {
    const char* name;
    std::string image;
    const char* result;
    std::string saved;
    const char* note;
  } cases[] = {
      {"good", image, "SUCCESS", image, ""},
      {"the device has more", image + "more", "SUCCESS", image, ""},
      {"the first byte differs", "L" + image.substr(1), "NG", "L" + image.substr(1), "00000000H"},
      {"the last byte differs", file.substr(0, 16) + "?\xFF", "NG", file.substr(0, 16) + "?\xFF",
       "00000010H"},
      {"the padding is not looked at", file + "x", "SUCCESS", file + "x", ""},
      {"the device has less", file.substr(0, 10), "NG", file.substr(0, 10) + std::string(8, '\0'),
       "10 of 18"},
  };
  for (const auto& given : cases) {
    SCOPED_TRACE(given.name);
    Reset();
    File("KRT_CNTL") = file;
    Peer().image = std::string(18, 'z');  // nothing of an earlier answer counts
    Verify(0);
    Peer().frames.clear();
    Peer().image = given.image;
    EXPECT_EQ(Verify(0), Texts{kCompleted});
    EXPECT_EQ(HexFrames(), (Texts{"02 41 EC 03 00 00 00 12 00 03 00 00 20 20 20 20 42 46 45 64 0D 0A",
                                  "02 42 34 32 45 64 0D 0A", "02 43 EC 41 46 45 64 0D 0A"}));
    EXPECT_EQ(VerifyResult(0), given.result);
    std::string saved;
    for (const auto& [path, content] : machine->files.files) {
      if (path.starts_with(kFolder + "/KRT_CNTL_2026") && path.ends_with(".bin")) saved = content;
    }
    EXPECT_EQ(saved, given.saved);
    EXPECT_NE(Tool().lblNote.Caption().find(given.note), std::string::npos) << Tool().lblNote.Caption();
    ExpectUsable();
  }
}

TEST_F(FirmwareTest, VersionFramesAndTexts) {
  const struct {
    std::string answer;
    const char* version;
  } cases[] = {
      {"KRT1SYS Ver 3.21 rel\r\n", "KRT1SYS Ver 3.21 rel"},
      {"KRT1 V3\r\n", "KRT1 V3"},
      {"KRT1SYS Ver 3.21 rel", "Error"},  // breaks off
      {"", "Error"},
  };
  for (const auto& given : cases) {
    Reset();
    Peer().image = given.answer;
    EXPECT_EQ(ReadVersion(), Texts{kCompleted});
    EXPECT_EQ(Tool().txtVer.Text(), given.version);
    const Texts frames = HexFrames();
    EXPECT_EQ(frames[0], "02 41 EB 00 00 00 00 14 00 00 00 00 20 20 20 20 42 45 45 64 0D 0A");
    EXPECT_EQ(frames[1], "02 42 34 32 45 64 0D 0A");
    const bool read = std::string(given.version) != "Error";
    ASSERT_EQ(frames.size(), read ? 3U : 2U);
    EXPECT_EQ(frames.back(), read ? "02 43 EB 41 38 45 64 0D 0A" : "02 42 34 32 45 64 0D 0A");
    ExpectUsable();
  }
}

TEST_F(FirmwareTest, ErrorAnswersAreShownAndEndTheModule) {
  const std::string sixty = "0123456789012345678901234567890123456789012345678901234567";
  const struct {
    char at;             // command letter of the frame that is refused
    std::string answer;  // behind its head
    std::string box;
    std::size_t frames;
  } cases[] = {
      {'A', "BUSY\x0C\r\n", "KRT_ERROR : BUSY", 1},
      {'B', "FLASH 3\x0Cmore\r\n", "KRT_ERROR : FLASH 3", 2},
      {'C', sixty + "\r\n", "KRT_ERROR : " + sixty.substr(0, 48), 3},
      {'B', "\x01\x80x\x0C\r\n", "KRT_ERROR :   x", 2},
  };
  for (const auto& given : cases) {
    Reset();
    File("KRT_CNTL") = GoodFile(0, 100);
    Peer().answer = [&](const std::string& frame) {
      return frame[1] == given.at ? "\x02\x45" + given.answer : Peer().Good(frame);
    };
    EXPECT_EQ(Download(0, 2), (Texts{given.box, kCompleted}));
    EXPECT_EQ(machine->dialogs.messages[0].title, "Download Tool");
    EXPECT_EQ(machine->dialogs.messages[0].icon, MessageIcon::kInformation);
    EXPECT_EQ(DownloadResult(0), "NG");
    EXPECT_EQ(Peer().frames.size(), given.frames);
    ExpectUsable();
  }
}

TEST(FwWords, NumbersAndAddresses) {
  EXPECT_EQ(FwFailureText(4), "ERROR.NO04 : PORT OPEN ERROR");
  EXPECT_EQ(FwFailureText(255), "ERROR.N255 : TIME OUT");
  for (const int number : {-1, 0, 7, 254, 256}) EXPECT_EQ(FwFailureText(number), "");
  EXPECT_EQ(FwAddressText(-524288), "FFF80000");
  EXPECT_EQ(FwAddressText(0x30000), "00030000");
}

// One blocking read: how long it lasts and what it brings.
TEST_F(FirmwareTest, ReadsEndByGapTotalOrRoom) {
  const FirmwareTimeouts timeouts{1000, 300'000, 0, 0, 1};
  const struct {
    const char* name;
    std::string answer;
    int pause_ms;
    std::size_t room;
    std::size_t received;
    std::int64_t ms;
  } cases[] = {
      {"silence", "", 0, 10, 0, 300'000},
      {"a gap behind the answer", "12345", 0, 10, 5, 1006},
      {"a gap within it that is short enough", "12345", 990, 10, 5, 1997},
      {"one that is not", "12345", 1100, 10, 1, 1005},
      {"no room left", "12345", 0, 3, 3, 6},
  };
  for (const auto& given : cases) {
    SCOPED_TRACE(given.name);
    Reset();
    Peer().answer = [&](const std::string&) { return given.answer; };
    Peer().pause_within_answer_ms = given.pause_ms;
    auto& port = machine->port;
    const auto handle = port.Open("COM1", "38400,N,8,1", timeouts);
    const std::vector<std::uint8_t> frame(8);
    ASSERT_TRUE(port.Write(handle, frame));
    const auto begun = Time().NowMs();
    std::vector<std::uint8_t> into(given.room);
    std::size_t received = 0;
    EXPECT_TRUE(port.Read(handle, into, received));
    EXPECT_EQ(received, given.received);
    EXPECT_NEAR(static_cast<double>(Time().NowMs() - begun), static_cast<double>(given.ms), 3);
    port.Close(handle);
    EXPECT_FALSE(port.Write(handle, frame));
    EXPECT_FALSE(port.Read(handle, into, received));
  }
}

TEST_F(FirmwareTest, APortThatTakesNothingIsGivenUp) {
  Peer().holds_output = true;
  File("KRT_CNTL") = GoodFile(0, 100);
  Download(0);
  EXPECT_EQ(DownloadResult(0), "NG");
  EXPECT_LT(Time().NowMs(), 7000);  // no longer than the last pause
  ExpectUsable();
}

}  // namespace
}  // namespace vlt::test

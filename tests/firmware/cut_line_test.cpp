// SPDX-License-Identifier: GPL-3.0-or-later
// The line goes at every place of a run: the run ends in time, as a failure, and the window can be worked.
#include "firmware_fixture.h"

namespace vlt::test {
namespace {

constexpr int kPlaces = 100;
// An open exchange that succeeds, the pauses, and one exchange that waits its whole time-out.
constexpr std::int64_t kLongestMs = 10'000 + 300'000 + 30'000;

class CutLineTest : public FirmwareTest {
 protected:
  void Prepare() {
    Reset();
    File("KRT_CNTL") = GoodFile(0, 600);
    Peer().image = GoodFile(0, 600);
  }
  // Runs `run` with the line cut at 100 places of the first `last` bytes, in silence and unplugged.
  void CutEverywhere(std::size_t last, const std::function<std::string()>& run) {
    for (const bool unplugged : {false, true}) {
      for (int i = 0; i < kPlaces; ++i) {
        Prepare();
        Peer().cut_after = last * static_cast<std::size_t>(i) / (kPlaces - 1);
        Peer().unplugged_by_cut = unplugged;
        SCOPED_TRACE(std::to_string(*Peer().cut_after) + (unplugged ? " unplugged" : ""));
        const std::string result = run();
        EXPECT_TRUE(result == "NG" || result == "Error") << result;
        EXPECT_LT(Time().NowMs(), kLongestMs);
        EXPECT_NE(Tool().lblNote.Caption().find("execute again"), std::string::npos);
        ExpectUsable();
      }
    }
  }
};

TEST_F(CutLineTest, Download) {
  Prepare();
  Download(0);
  ASSERT_EQ(DownloadResult(0), "SUCCESS");
  const std::size_t all = Peer().carried;
  CutEverywhere(all - 1, [&] {
    Download(0);
    if (Peer().frames.size() > 1) {
      EXPECT_NE(Tool().lblNote.Caption().find("incomplete"), std::string::npos);
    }
    return DownloadResult(0);
  });
}

// Of the close frame's answer one byte is enough in an upload, and the comparison is done by then.
TEST_F(CutLineTest, Verification) {
  Prepare();
  Verify(0);
  ASSERT_EQ(VerifyResult(0), "SUCCESS");
  const std::size_t closing = Peer().Good("\x02\x43").size();
  CutEverywhere(Peer().carried - closing, [&] {
    Verify(0);
    return VerifyResult(0);
  });
}

// An image whose end is zeros is no excuse: what didn't come is not equal to them.
TEST_F(CutLineTest, AnImageThatEndsInZerosIsNotTakenForWhole) {
  Prepare();
  File("KRT_CNTL").replace(300, 300, 300, '\0');
  Peer().image = File("KRT_CNTL").substr(0, 400);
  Verify(0);
  EXPECT_EQ(VerifyResult(0), "NG");
}

TEST_F(CutLineTest, Version) {
  Prepare();
  Peer().image = "KRT1SYS Ver 3.21 rel\r\n";
  ReadVersion();
  ASSERT_EQ(Tool().txtVer.Text(), "KRT1SYS Ver 3.21 rel");
  CutEverywhere(Peer().carried - 1, [&] {
    Peer().image = "KRT1SYS Ver 3.21 rel\r\n";
    ReadVersion();
    return Tool().txtVer.Text();
  });
}

// Silence behind the open frame: 10 s, behind a data frame: 300 s, to the millisecond's neighbourhood.
TEST_F(CutLineTest, TotalTimeouts) {
  for (const auto& [letter, total] :
       {std::pair('A', 10'000), std::pair('B', 300'000), std::pair('C', 300'000)}) {
    Prepare();
    std::int64_t asked = 0;
    Peer().answer = [&, at = letter](const std::string& frame) {
      asked = Time().NowMs();
      return frame[1] == at ? "" : Peer().Good(frame);
    };
    std::int64_t told = 0;
    Tool().txtDL_Result(0).Observe([&] {
      if (told == 0 && DownloadResult(0) == "NG") told = Time().NowMs();
    });
    Download(0);
    Tool().txtDL_Result(0).Observe({});
    const std::int64_t sending = letter == 'B' ? 160 : 8;
    EXPECT_GE(told - asked, total);
    EXPECT_LE(told - asked, total + sending);
    ExpectUsable();
  }
}

}  // namespace
}  // namespace vlt::test

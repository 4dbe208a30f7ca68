// SPDX-License-Identifier: GPL-3.0-or-later
// The routines of the RAS page that other programs know.
#include "live/form8.h"
#include "measure_fixture.h"

namespace vlt::test {
namespace {

TEST(RasPage, HasItsOldRoutines) {
  TestApp test;
  RegisterLiveWindows(test.app);
  auto& page = static_cast<Form8&>(test.app.windows.Load("Form8"));
  std::string text = "old";
  int ok = 7;
  Form8::Chg20Bit("x1", text, ok);
  EXPECT_EQ(text + std::to_string(ok), "old0");
  Form8::Chg20Bit("-1", text, ok);
  EXPECT_EQ(text + std::to_string(ok), "11111111111111111111-1");
  NowDate date;
  page.GetNowDate(date);
  EXPECT_EQ(date.year * 10000 + date.month * 100 + date.day, 20261124);
  page.tmWait.SetRunning(true);
  test.Time().RunFor(2500);
  EXPECT_EQ(test.app.state.StopRequest, 0);
  test.Time().RunFor(1000);
  EXPECT_EQ(test.app.state.StopRequest, 1);
  EXPECT_FALSE(page.tmWait.Running());
}

}  // namespace
}  // namespace vlt::test

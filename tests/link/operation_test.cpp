// SPDX-License-Identifier: GPL-3.0-or-later
// What one operation takes, gives back, and tells of what it did on the line.
#include "link/operation.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "link/port.h"
#include "link/registers.h"
#include "resources/text_ids.h"
#include "support/test_app.h"

namespace vlt {
namespace {

class OperationTest : public ::testing::Test {
 protected:
  OperationTest() {
    test.app.on_operation = [this](const OperationReport& report) { reports.push_back(report); };
  }
  // One exchange; the fault says what becomes of it.
  void Exchange(const char* fault = nullptr) {
    if (fault != nullptr) test.platform.Arm(fault);
    RegisterData data;
    ReadRegisters(test.app, {.address = 0x0148, .count = 1}, data);
  }
  bool IsReleased() {
    return !test.app.state.UiLocked && test.app.windows.MousePointer() == kNormalPointer && form.go.Enabled();
  }

  struct Page : Form {
    explicit Page(Windows& windows) : Form(windows, "Page", FormPlace::kPage) {}
    PushButton go{*this, "Go"};
  };
  test::TestApp test;
  Page form{test.app.windows};
  std::vector<OperationReport> reports;
};

TEST_F(OperationTest, TellsItsOwnExchangesAndTheFirstFailureOfThem) {
  ASSERT_TRUE(OpenPort(test.app));
  Exchange("crc*4");  // before it: not its own
  {
    Operation operation(test.app, form, "Go");
    EXPECT_TRUE(test.app.state.UiLocked);
    EXPECT_FALSE(form.go.Enabled());
    EXPECT_EQ(test.app.windows.MousePointer(), kHourglassPointer);
    EXPECT_EQ(test.StatusText(), "") << "an operation without a text says nothing";
    Exchange();
    Exchange("silence*4");
    Exchange("crc*4");
    Exchange();  // clears what the page would say
    operation.End("done");
    EXPECT_TRUE(IsReleased());
    EXPECT_EQ(test.StatusText(), "done");
    operation.End("again");
    EXPECT_EQ(test.StatusText(), "done");
  }
  ASSERT_EQ(reports.size(), 1u) << "told once";
  EXPECT_EQ(reports[0].window + "." + reports[0].command, "Page.Go");
  EXPECT_EQ(reports[0].exchanges, 4);
  EXPECT_EQ(reports[0].failed, 2);
  EXPECT_EQ(reports[0].first_failure, "[NO RESPONSE ERROR]");
  EXPECT_FALSE(reports[0].port_failed);
}

TEST_F(OperationTest, GivesEverythingBackOnEveryWayOut) {
  const auto thrown = [&] {
    const Operation operation(test.app, form, "Go", text::kSaveStarted);
    EXPECT_EQ(test.StatusText(), test.app.Text(text::kSaveStarted));
    throw std::runtime_error("unforeseen");
  };
  EXPECT_THROW(thrown(), std::runtime_error);
  EXPECT_TRUE(IsReleased());
  EXPECT_EQ(reports.size(), 1u);

  test.platform.sockets.clear();
  test.platform.dialogs.Answer(MessageAnswer::kOk);
  {
    Operation operation(test.app, form, "Go");
    EXPECT_FALSE(operation.OpenPortOrTell());
    EXPECT_TRUE(operation.Ended());
    EXPECT_TRUE(IsReleased());
    EXPECT_EQ(test.StatusText(), CommunicationErrorText(test.app));
  }
  ASSERT_EQ(reports.size(), 2u);
  EXPECT_TRUE(reports[1].port_failed);
}

}  // namespace
}  // namespace vlt

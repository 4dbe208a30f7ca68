// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/handler_fault.h"

#include <stdexcept>

#include "shell_fixture.h"

namespace vlt::test {
namespace {

// A page whose initialiser ends as nobody foresaw.
class BrokenPage : public PageForm {
 public:
  explicit BrokenPage(App& app) : PageForm(app, "Form7") {}
  void FrmInit() override {
    List().SetMousePointer(kHourglassPointer);
    throw std::runtime_error("boom");
  }
};

TEST_F(ShellTest, AHandlerThatThrowsIsToldAndTheProgramGoesOn) {
  app->windows.SetObserver({{}, {}, {}, [this](const std::string& what) { TellHandlerFault(*app, what); }});
  OpenMainWindow();
  app->windows.Register("Form7", [this] { return std::make_unique<BrokenPage>(*app); });
  // Another one while the box is up reaches the status line only.
  platform->dialogs.Answer(MessageAnswer::kOk, [this] {
    Press("Command11");
    Press("Command11");
  });
  Press("Command11");
  EXPECT_EQ(
      platform->dialogs.TakeTexts(),
      Texts{"An unexpected error occurred: boom\nSaved files are unchanged. Please restart the program."});
  EXPECT_EQ(StatusText(), "An unexpected error occurred: boom");
  Press("Command2");
  EXPECT_TRUE(IsShown("Form2"));
}

}  // namespace
}  // namespace vlt::test

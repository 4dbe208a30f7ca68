// SPDX-License-Identifier: GPL-3.0-or-later
// The port goes away in each state of the program and comes back under another name.
#include "support/loss_states.h"

#include "link/registers.h"
#include "shell_fixture.h"
#include "state/form_lock.h"
#include "support/plug_board.h"

namespace vlt::test {
namespace {

// Answers every box and notes it.
class NotingDialogs : public Dialogs {
 public:
  MessageAnswer Ask(const Message& message) override {
    texts.push_back(message.text);
    return MessageAnswer::kCancel;
  }
  std::optional<std::string> AskOpenFile(const FileQuestion&) override { return {}; }
  std::optional<std::string> AskSaveFile(const FileQuestion&) override { return "/data/log"; }
  std::optional<std::string> AskFolder(const FolderQuestion&) override { return {}; }
  Texts texts;
};

class World {
 public:
  World() {
    VirtualPlatform& v = platform;
    app.state.LangOffset = 5000;
    app.state.PortNo = "1";
    app.state.StationNo = "01";
    app.state.CommSettings = "9600,O,8,1";
    app.state.RetryNo = 0;
    app.state.AppRunning = true;
    RegisterAllWindows(app);
    MainWindow(app).Dress();
    MainWindow(app).Show();
    board = std::make_unique<PlugBoard>(v, app);
    board->Plug(Adapter("/dev/ttyUSB0", "A1"));
  }
  void Do(const std::function<void()>& work) { app.windows.Run(work); }

  VirtualPlatform platform;
  NotingDialogs dialogs;
  Platform machine{platform.time,  platform.time,    platform.simulated, dialogs,
                   platform.files, platform.process, platform.firmware};
  App app{machine};
  std::unique_ptr<PlugBoard> board;
};

std::string LogOf(World& w) {
  for (const auto& [path, text] : w.platform.files.files) {
    if (path.starts_with("/data/")) return text;
  }
  return {};
}

class LossStateTest : public ::testing::TestWithParam<LossState> {};

TEST_P(LossStateTest, OneMessageNothingLockedAndBackByItself) {
  const LossState& state = GetParam();
  World w;
  EXPECT_TRUE(state.own_port || OpenPort(w.app));
  w.Do([&] { state.open(w.app, "/data"); });
  w.dialogs.texts.clear();
  if (*state.fault != '\0') w.platform.Arm(state.fault);
  w.Do([&] { state.act(w.app); });
  if (*state.fault == '\0') w.board->Unplug("/dev/ttyUSB0");
  w.platform.time.RunFor(5000);
  w.board->Unplug("/dev/ttyUSB0");  // the machine does not list it any more
  w.platform.time.RunFor(2000);
  EXPECT_TRUE(w.app.state.Lost.away);
  EXPECT_EQ(static_cast<int>(w.dialogs.texts.size()), state.boxes) << testing::PrintToString(w.dialogs.texts);
  EXPECT_EQ(w.app.state.UiLocked, state.is_run);
  EXPECT_EQ(w.app.windows.MousePointer(), kNormalPointer);

  w.board->Plug(Adapter("/dev/ttyUSB1", "A1"));
  w.platform.time.RunFor(2000);
  EXPECT_EQ(w.app.platform.port.IsOpen(), state.is_run) << "by itself only in a run";
  if (state.is_run) {
    w.platform.time.RunFor(3000);
    w.Do([&] { StopRun(w.app); });
    w.platform.time.RunFor(1500);
    EXPECT_FALSE(w.app.state.UiLocked);
    EXPECT_NE(LogOf(w).find("COM1 was away from "), std::string::npos) << LogOf(w);
  } else if (state.own_port) {
    w.Do([&] { state.act(w.app); });
    EXPECT_EQ(w.app.state.Lost.device, "/dev/ttyUSB1");
  } else {
    EXPECT_TRUE(OpenPort(w.app)) << "as the next operation does";
    EXPECT_EQ(w.app.state.OpenedDevice, "/dev/ttyUSB1");
  }
  EXPECT_FALSE(w.app.state.Lost.away);
}

INSTANTIATE_TEST_SUITE_P(All, LossStateTest, ::testing::ValuesIn(kLossStates), [](const auto& given) {
  std::string name = given.param.name;
  std::erase_if(name, [](char c) { return c == ' ' || c == '-'; });
  return name;
});

}  // namespace
}  // namespace vlt::test

// SPDX-License-Identifier: GPL-3.0-or-later
// The port goes away in each state of the program, on a pseudo-terminal that vanishes and comes back under
// another name, with an adapter that the machine is made to list.
#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>

#include "files/run_journal.h"
#include "files/settings_file.h"
#include "host/host.h"
#include "link/port.h"
#include "meter_program.h"
#include "pty.h"
#include "shell/start.h"
#include "tests/support/fake_process.h"
#include "tests/support/loss_states.h"

namespace vlt::test {
namespace {

constexpr std::int64_t kPatienceMs = 20'000;

class World {
 public:
  World() {
    process.folder = folder.path().toStdString();
    std::ofstream ini(process.folder + "/VLT.ini");
    ini << "[PORTS]\nCOM1=" << meter.Port() << "\n";
    ini.close();
    dialogs.save_path = process.folder + "/log";
    app.state.LangOffset = 5000;
    app.state.PortNo = "1";
    app.state.StationNo = "01";
    app.state.Speed = "38400";
    app.state.CommSettings = "38400,N,8,1";
    app.state.RetryNo = 5;  // a loaded machine may let the meter wait
    app.state.AppRunning = true;
    RegisterAllWindows(app);
    MainWindow(app).Dress();
    MainWindow(app).Show();
    List();
  }

  void Do(const std::function<void()>& work) { app.windows.Run(work); }
  bool Until(const std::function<bool()>& condition) {
    const std::int64_t end = host.clock.NowMs() + kPatienceMs;
    while (!condition() && host.clock.NowMs() < end) host.events.GiveWay(host.clock.NowMs() + 20);
    return condition();
  }
  // The machine lists the terminal as an adapter with a serial number.
  void List() {
    process.ports = {
        {.device = meter.Port(), .product = "USB to UART", .maker = "ACME", .serial_number = "A1"}};
  }
  void PlugAgain() {
    const std::string old = meter.Port();
    for (int turn = 0; turn < 20; ++turn) {
      // The name that is free now goes to somebody else; a program beside this one may have given it back
      // since.
      others.push_back(std::make_unique<Pty>());
      meter.Plug();
      if (meter.Port() != old) break;
      meter.Do("unplug");
    }
    ASSERT_NE(meter.Port(), old);
    List();
  }
  // Share of a core that the program takes while it runs events for half a second.
  double Load() {
    const std::clock_t used = std::clock();
    const std::int64_t start = host.clock.NowMs();
    while (host.clock.NowMs() < start + 500) host.events.GiveWay(start + 500);
    return static_cast<double>(std::clock() - used) / CLOCKS_PER_SEC / 0.5;
  }
  std::string Log() const {
    for (const auto& entry : std::filesystem::directory_iterator(process.folder)) {
      if (entry.path().extension() != ".csv") continue;
      std::ifstream file(entry.path(), std::ios::binary);
      return {std::istreambuf_iterator<char>(file), {}};
    }
    return {};
  }

  QTemporaryDir folder;
  FakeProcess process;
  AnsweringDialogs dialogs;
  MeterProgram meter{{"speed=38400"}};
  std::vector<std::unique_ptr<Pty>> others;
  Host host{"", [this](int number) { return PortDeviceInForce(app, number); }};
  Platform machine{host.clock, host.events, host.port, dialogs, host.files, process, host.firmware, nullptr};
  App app{machine};
};

class LostPort : public ::testing::TestWithParam<LossState> {};

TEST_P(LostPort, OneMessageNothingLockedAndBackUnderAnotherName) {
  const LossState& state = GetParam();
  World w;
  ASSERT_TRUE(state.own_port || OpenPort(w.app)) << w.app.state.PortFaultReason;
  w.Do([&] { state.open(w.app, w.process.folder); });
  w.dialogs.texts.clear();
  if (*state.fault != '\0') w.meter.Do("fault=" + std::string(state.fault));
  w.Do([&] { state.act(w.app); });
  if (*state.fault == '\0') w.meter.Do("unplug");
  ASSERT_TRUE(w.Until([&] { return w.app.state.Lost.away; })) << "noticed";
  w.process.ports.clear();
  EXPECT_EQ(static_cast<int>(w.dialogs.texts.size()), state.boxes)
      << ::testing::PrintToString(w.dialogs.texts);
  EXPECT_EQ(w.app.state.UiLocked, state.is_run);
  EXPECT_EQ(w.app.windows.MousePointer(), kNormalPointer);
  EXPECT_LT(w.Load(), 0.05);

  w.PlugAgain();
  if (state.is_run) {
    EXPECT_TRUE(w.Until([&] { return w.Log().find("COM1 was away from ") != std::string::npos; })) << w.Log();
    EXPECT_EQ(w.app.state.OpenedDevice, w.meter.Port());
    w.Do([&] { StopRun(w.app); });
    EXPECT_TRUE(w.Until([&] { return !w.app.state.UiLocked; }));
    EXPECT_TRUE(ReadOpenRuns(w.app).empty());
  } else if (state.own_port) {
    w.Do([&] { state.act(w.app); });
    EXPECT_EQ(w.app.state.Lost.device, w.meter.Port());
  } else {
    EXPECT_FALSE(w.host.port.IsOpen()) << "not by itself";
    EXPECT_TRUE(OpenPort(w.app)) << "as the next operation does: " << w.app.state.PortFaultReason;
    EXPECT_EQ(w.app.state.OpenedDevice, w.meter.Port());
  }
  EXPECT_FALSE(w.app.state.Lost.away);
}

INSTANTIATE_TEST_SUITE_P(States, LostPort, ::testing::ValuesIn(kLossStates), [](const auto& given) {
  std::string name = given.param.name;
  std::erase_if(name, [](char c) { return c == ' ' || c == '-'; });
  return name;
});

// Another adapter without a serial number has taken the place: a run waits on.
TEST(LostPortTwins, NothingIsOpenedByItself) {
  World w;
  const auto list = [&](std::initializer_list<std::string> devices) {
    w.process.ports.clear();
    for (const std::string& device : devices) {
      w.process.ports.push_back({.device = device, .product = "USB to UART", .maker = "ACME"});
    }
  };
  list({w.meter.Port()});
  ASSERT_TRUE(OpenPort(w.app));
  w.Do([&] { OpenMeasure(w.app, w.process.folder); });
  w.Do([&] { PageOf<Form9>(w.app, "Form9").Start.Press(); });
  w.meter.Do("unplug");
  list({});
  ASSERT_TRUE(w.Until([&] { return w.app.state.Lost.away; }));
  const Pty takes_the_name;
  const Pty other;
  list({other.Path()});
  const auto state_text = [&] { return PageOf<Form9>(w.app, "Form9").StatusBar2.Panel(1); };
  EXPECT_TRUE(w.Until([&] { return state_text().find("tells apart") != std::string::npos; })) << state_text();
  EXPECT_FALSE(w.host.port.IsOpen());
  w.Do([&] { StopRun(w.app); });
  EXPECT_TRUE(w.Until([&] { return !w.app.state.UiLocked; }));
}

}  // namespace
}  // namespace vlt::test

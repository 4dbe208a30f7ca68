// SPDX-License-Identifier: GPL-3.0-or-later
// A program ready to work: English, port 1, station 1, 9600 baud, odd parity, three retries, the smallest
// main window that the lower code needs. The port is closed, as at start.
#pragma once

#include <memory>

#include "meter/facts.h"
#include "state/app.h"
#include "support/virtual_platform.h"

namespace vlt::test {

// Stands for MDIForm1 where the test is not about it.
class TestFrame : public Form, public MainFrame {
 public:
  explicit TestFrame(Windows& windows);
  Form& Window() override { return *this; }
  void enableMenubar() override { menubar_enabled = true; }
  void disableMenubar() override { menubar_enabled = false; }
  StatusBar& Status() override { return StatusBar1; }
  PushButton& ExitButton() override { return Command13; }
  Timer& OneShotTimer() override { return tmrTimer; }
  void ShowTestState() override { ++test_state_shown; }
  void SetPageButtonIdle(std::string_view page) override { idle_pages.emplace_back(page); }

  StatusBar StatusBar1;
  PushButton Command13;
  Timer tmrTimer;
  bool menubar_enabled = true;
  int test_state_shown = 0;
  std::vector<std::string> idle_pages;
};

struct TestOptions {
  PortKind port = PortKind::kSimulated;
  sim::MeterConfig meter = {};
  int lang_offset = 5000;  // 0 is Japanese
  bool frame = true;       // false: the test brings its own MDIForm1
};

// The program has learnt these facts of the meter just now. The port must be open.
void Know(App& app, sim::Meter& meter, const FactSet& facts);

class TestApp {
 public:
  explicit TestApp(const TestOptions& options = {});

  TestFrame& MainWindow() { return *static_cast<TestFrame*>(app.frame); }
  // Panel 1 of the status line without its date and time; empty when nothing is there.
  std::string StatusText();
  VirtualTime& Time() { return platform.time; }

  VirtualPlatform platform;
  App app;
};

}  // namespace vlt::test

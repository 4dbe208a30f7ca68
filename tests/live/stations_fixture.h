// SPDX-License-Identifier: GPL-3.0-or-later
// The stations page on a simulated line, as an operator has it in front of him.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "live/form12.h"
#include "live/live.h"
#include "sim/scenario.h"
#include "support/test_app.h"

namespace vlt::test {

class StationsTest : public ::testing::Test {
 protected:
  explicit StationsTest(int lang_offset = 5000) : test({.lang_offset = lang_offset}) {
    app.state.IniFilePath = "/app/VLT.ini";
    RegisterLiveWindows(app);
    app.windows.Load("Form12").Show();
  }

  Form12& Page() { return static_cast<Form12&>(*app.windows.Find("Form12")); }
  VirtualTime& Time() { return test.platform.time; }
  std::map<std::string, std::string>& Files() { return test.platform.files.files; }

  // Meters of one path with these numbers, each ticked on the page.
  void AddStations(const std::vector<int>& numbers, const sim::MeterConfig& config = {}) {
    for (const int number : numbers) {
      if (number != 1) test.platform.line.AddStation(number, config);
      EXPECT_TRUE(Page().chkStationNo(number - 1).Tick());
    }
  }
  void AddStations(int first, int last) {
    std::vector<int> numbers;
    for (int number = first; number <= last; ++number) numbers.push_back(number);
    AddStations(numbers);
  }
  // What a running meter does: "2:value=1:flow:nan".
  void Act(const std::string& words) {
    EXPECT_EQ(sim::ApplyAction(test.platform.line, words, Time().NowMs() * 1000), "");
  }
  void Choose(int channel1, int place1, int channel2, int place2) {
    EXPECT_TRUE(Page().CH_Combo1.Choose(channel1));
    EXPECT_TRUE(Page().CH_Combo2.Choose(channel2));
    EXPECT_TRUE(place1 < 0 || Page().cmbDisp1.Choose(place1));
    EXPECT_TRUE(place2 < 0 || Page().cmbDisp2.Choose(place2));
  }
  // Start with these answers to the question for a file.
  void Start(const std::string& cycle, const std::optional<std::string>& file = "/data/run") {
    EXPECT_TRUE(Page().txtCycle.Type(cycle));
    test.platform.dialogs.SaveFile(file);
    app.windows.Run([this] { EXPECT_TRUE(Page().cmdStart.Press()); });
  }
  // Runs events until every station was polled so often and the pass has ended.
  void RunPasses(std::int64_t passes) {
    const auto ended = [&] { return Page().Polled().back().polls >= passes && !Page().FixTimer.Running(); };
    for (int i = 0; i < 100'000 && !ended(); ++i) Time().RunFor(10);
    EXPECT_TRUE(ended());
  }
  std::string State() { return Page().StatusBar2.Panel(1).substr(20); }

  // Each request got its answer, or its time, before the next one went out.
  void CheckNoneInsideAnother() {
    bool waiting = false;
    for (const sim::LogEntry& entry : test.platform.line.Log()) {
      const bool request = entry.kind == sim::LogEntry::Kind::Request;
      ASSERT_EQ(request, !waiting) << "an exchange inside another";
      waiting = request;
    }
  }

  TestApp test;
  App& app = test.app;
};

}  // namespace vlt::test

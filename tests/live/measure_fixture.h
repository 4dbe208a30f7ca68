// SPDX-License-Identifier: GPL-3.0-or-later
// The measure page on a simulated meter, as an operator has it after SaveCSV.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "live/form9.h"
#include "live/live.h"
#include "support/test_app.h"

namespace vlt::test {

// The meters that differ on this page.
struct MeterShape {
  const char* name;
  int specification;
  int path_mode;
  int channels;
  bool heat;
};

inline constexpr MeterShape kOneChannel{"one channel", 182, 0, 1, false};
inline constexpr MeterShape kOnePath{"one path with heat", 81, 0, 1, true};
inline constexpr MeterShape kTwoPaths{"two paths with heat", 81, 1, 3, true};
inline constexpr MeterShape kTwoPipes{"two pipes", 81, 2, 3, false};

inline constexpr int kMeasuredAddress[] = {0x0000, 0x1388, 0x251C};

class MeasureTest {
 public:
  explicit MeasureTest(const MeterShape& shape = kOnePath, int lang_offset = 5000)
      : test({.meter = Config(shape), .lang_offset = lang_offset}) {
    RegisterLiveWindows(app());
    app().windows.Load("Form9");
    page().FrmInit();
    Do([&] { page().Show(); });
  }

  Form9& page() { return *static_cast<Form9*>(app().windows.Find("Form9")); }
  App& app() { return test.app; }
  sim::Meter& meter() { return test.platform.Meter(); }
  VirtualTime& time() { return test.platform.time; }
  std::map<std::string, std::string>& files() { return test.platform.files.files; }

  // As an event of its own.
  void Do(const std::function<void()>& handler) { app().windows.Run(handler); }
  void Save(const std::string& chosen) {
    test.platform.dialogs.SaveFile(chosen);
    EXPECT_TRUE(page().SaveCSV.Press());
  }
  // Start with a file, the scales as given.
  void StartRun(const std::string& points = "50", const std::string& cycle = "1") {
    Save("/data/run");
    EXPECT_TRUE(page().PointText.Type(points));
    EXPECT_TRUE(page().Cycle.Type(cycle));
    EXPECT_TRUE(page().Start.Press());
  }
  // Runs events until so many cycles have ended since the start of the run.
  void RunCycles(std::int64_t cycles) {
    while (page().trend.TrendSampleNo < cycles) time().RunFor(50);
  }

  // The file's lines without the mark; the mark and the ends of the lines are looked at.
  std::vector<std::string> Lines() { return LinesOf(files().at(page().MeasureFilePath)); }
  static std::vector<std::string> LinesOf(std::string text) {
    EXPECT_EQ(text.substr(0, 3), "\xEF\xBB\xBF");
    text.erase(0, 3);
    std::vector<std::string> lines;
    for (std::size_t end = text.find("\r\n"); end != std::string::npos; end = text.find("\r\n")) {
      lines.push_back(text.substr(0, end));
      text.erase(0, end + 2);
    }
    EXPECT_EQ(text, "") << "half a line";
    return lines;
  }

  // A state line without its date and time.
  static std::string WithoutStamp(const std::string& text) {
    return text.size() < 20 ? text : text.substr(20);
  }
  std::string State() { return WithoutStamp(page().StatusBar2.Panel(1)); }

  TestApp test;

 private:
  static sim::MeterConfig Config(const MeterShape& shape) {
    return {.specification = shape.specification, .path_mode = shape.path_mode};
  }
};

}  // namespace vlt::test

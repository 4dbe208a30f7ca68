// SPDX-License-Identifier: GPL-3.0-or-later
// A page opened on a simulated meter, as the main window opens it.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "link/port.h"
#include "pages/page.h"
#include "pages/pages.h"
#include "support/test_app.h"

namespace vlt::test {

// The shapes of meter that decide what a page offers.
struct Shape {
  const char* name;
  int specification;
  int path_mode;
  int unit_system;
};

inline constexpr int kFull = 81;
inline constexpr int kSingle = 182;

inline constexpr Shape kOnePath{"one path, metric", kFull, 0, 0};
inline constexpr Shape kTwoPaths{"two paths, English", kFull, 1, 1};
inline constexpr Shape kTwoPipes{"two pipes, metric", kFull, 2, 0};
inline constexpr Shape kSingleModel{"single channel", kSingle, 0, 0};

inline sim::MeterConfig MeterOf(const Shape& shape) {
  return {
      .specification = shape.specification, .path_mode = shape.path_mode, .unit_system = shape.unit_system};
}

class PageTest {
 public:
  explicit PageTest(const Shape& shape = {"two pipes", kFull, 2, 0}, int lang_offset = 5000)
      : test({.meter = MeterOf(shape), .lang_offset = lang_offset}) {
    RegisterPages(test.app);
    test.app.state.UnitFlag = shape.unit_system;
    EXPECT_TRUE(OpenPort(test.app));
    Know(app(), meter(),
         {{Fact::kUnitSystem}, {Fact::kHeatFlowUnit}, {Fact::kHeatTotalUnit}, {Fact::kTempUnit}});
  }

  template <class Page>
  Page& Open(const char* name) {
    auto& page = static_cast<Page&>(test.app.windows.Load(name));
    page.FrmInit();
    page.Show();
    test.platform.TakeRequests();
    return page;
  }

  // Requests since the last call without station and frame check: "03 00 D0 00 12".
  std::vector<std::string> Requests() { return test.platform.TakeBareRequests(); }

  App& app() { return test.app; }
  sim::Meter& meter() { return test.platform.Meter(); }
  ScriptedDialogs& dialogs() { return test.platform.dialogs; }

  TestApp test;
};

}  // namespace vlt::test

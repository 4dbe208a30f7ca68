// SPDX-License-Identifier: GPL-3.0-or-later
// The transit-time page with its live tabs, on a meter.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "link/port.h"
#include "live/condition_tab.h"
#include "live/live.h"
#include "live/wave_tab.h"
#include "pages/pages.h"
#include "support/test_app.h"

namespace vlt::test {

class TransitTest {
 public:
  explicit TransitTest(const TestOptions& options = {}) : test(options) {
    app().state.AppRunning = true;
    RegisterPages(app());
    RegisterLiveWindows(app());
    page_ = &static_cast<Form11&>(app().windows.Load("Form11"));
    page_->RunHook(&FormHooks::FrmInit);
    page_->Show();
    test.platform.TakeRequests();
  }
  static TestOptions Meter(int specification, int path_mode, int lang_offset = 5000) {
    TestOptions options{.lang_offset = lang_offset};
    options.meter.specification = specification;
    options.meter.path_mode = path_mode;
    return options;
  }

  Form11& page() { return *page_; }
  ConditionTab& condition() { return *page_->Part<ConditionTab>(); }
  WaveTab& waves() { return *page_->Part<WaveTab>(); }
  App& app() { return test.app; }
  sim::Meter& meter() { return test.platform.Meter(); }
  VirtualTime& time() { return test.platform.time; }
  ScriptedDialogs& dialogs() { return test.platform.dialogs; }

  // Requests since the last call without station and frame check: "03 00 D0 00 12".
  std::vector<std::string> Requests() { return test.platform.TakeBareRequests(); }
  // Panel 1 of the tabs' status bar without date and time.
  std::string State() {
    const std::string& text = page_->StatusBar2.Panel(1);
    return text.size() < 20 ? text : text.substr(20);
  }
  // A file as lines, without the mark at its head.
  std::vector<std::string> Lines(const std::string& path) {
    std::string text = test.platform.files.files.at(path);
    EXPECT_EQ(text.substr(0, 3), "\xEF\xBB\xBF");
    text.erase(0, 3);
    std::vector<std::string> lines;
    std::size_t from = 0;
    for (std::size_t end = text.find("\r\n"); end != std::string::npos; end = text.find("\r\n", from)) {
      lines.push_back(text.substr(from, end - from));
      from = end + 2;
    }
    EXPECT_EQ(from, text.size()) << "half a line";
    return lines;
  }

  TestApp test;

 private:
  Form11* page_;
};

inline constexpr int kFullModel = 81;

}  // namespace vlt::test

// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/test_app.h"

namespace vlt::test {

TestFrame::TestFrame(Windows& windows)
    : Form(windows, "MDIForm1", FormPlace::kFrame),
      StatusBar1(*this, "StatusBar1", 3),
      Command13(*this, "Command13"),
      tmrTimer(*this, "tmrTimer") {}

TestApp::TestApp(const TestOptions& options) : platform(options.port, options.meter), app(platform.machine) {
  SharedState& state = app.state;
  state.LangOffset = options.lang_offset;
  state.LangFlag = options.lang_offset == 0 ? 0 : 1;
  state.ModelCode = "M627";
  state.PortNo = "1";
  state.StationNo = "01";
  state.CommSettings = "9600,O,8,1";
  state.AppRunning = true;
  if (!options.frame) return;
  app.windows.Register("MDIForm1", [this] { return std::make_unique<TestFrame>(app.windows); });
  app.frame = static_cast<TestFrame*>(&app.windows.Load("MDIForm1"));
}

std::string TestApp::StatusText() {
  constexpr std::size_t kStamp = 20;  // "2026/11/24 10:00:00 "
  const std::string& panel = app.frame->Status().Panel(1);
  return panel.size() < kStamp ? "" : panel.substr(kStamp);
}

void Know(App& app, sim::Meter& meter, const FactSet& facts) {
  for (const FactPlace& fact : facts) {
    const auto address = static_cast<std::uint32_t>(PlaceOfFact(fact).Address());
    LearnFrom(app, PlaceOfFact(fact), meter.holding().Word(address), true);
  }
}

}  // namespace vlt::test

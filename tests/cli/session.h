// SPDX-License-Identifier: GPL-3.0-or-later
// The companion on a machine of a test.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "cli/companion.h"
#include "shell/start.h"
#include "support/virtual_platform.h"

namespace vlt::test {

inline constexpr const char* kIni =
    "[SYSTEM]\r\nINI_FILENAME=VLT.ini\r\nVR=M627\r\nLANG_FLAG=1\r\n"
    "[COMM]\r\nPORT=1\r\nSTATION_NO=01\r\n";

inline std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::stringstream content;
  content << file.rdbuf();
  return content.str();
}

// One run of a script from the start of the program on.
struct Session {
  explicit Session(const sim::MeterConfig& config = {}) : machine(PortKind::kSimulated, config) {
    machine.files.files["/app/VLT.ini"] = kIni;
    RegisterAllWindows(app);
  }

  // The script's status as a number.
  int Run(const std::string& script) {
    ScriptReader reader;
    reader.Add(script);
    reader.End();
    while (auto line = reader.Next()) companion.Add(std::move(*line));
    companion.EndOfScript();
    for (int turn = 0; turn < 100'000 && !finished; ++turn) machine.time.GiveWay(machine.time.NowMs() + 1000);
    EXPECT_TRUE(finished) << script;
    return static_cast<int>(companion.Status());
  }

  bool Told(const std::string& line) const {
    return std::find(output.begin(), output.end(), line) != output.end();
  }
  bool ToldPart(const std::string& part) const {
    return std::any_of(output.begin(), output.end(),
                       [&](const std::string& line) { return line.find(part) != std::string::npos; });
  }

  VirtualPlatform machine;
  ProgramEvents events{machine.time};
  ScriptDialogs dialogs{machine.files};
  Platform platform{machine.time,  events,          machine.machine.port, dialogs,
                    machine.files, machine.process, machine.firmware};
  App app{platform};
  std::vector<std::string> output;
  std::string trouble;  // "LINE: TEXT"
  bool finished = false;
  Companion companion{
      app,
      dialogs,
      events,
      {[this](const std::string& line) { output.push_back(line); },
       [this](const ScriptTrouble& t) { trouble += std::to_string(t.line) + ": " + EscapedField(t.text); },
       [this] { finished = true; }}};
};

}  // namespace vlt::test

// SPDX-License-Identifier: GPL-3.0-or-later
// The firmware tool on virtual time, with files in memory and a boot loader at the other end.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "firmware/firmware.h"
#include "firmware/frm_maint_comm.h"
#include "firmware/frm_maint_main.h"
#include "support/fake_process.h"
#include "support/firmware_peer.h"
#include "support/memory_file_system.h"
#include "support/scripted_dialogs.h"
#include "support/virtual_platform.h"

namespace vlt::test {

using Texts = std::vector<std::string>;

inline const std::string kFolder = "/fw/v12";
inline const std::string kCompleted = "Processing has been completed.";

// Files that somebody else changes: `meddle` runs before each read and is told how often the path was read.
class MeddledFiles : public MemoryFileSystem {
 public:
  FileError ReadAtMost(const std::string& path, std::size_t most, std::string& content) override {
    if (meddle) meddle(path, ++reads_[path]);
    return MemoryFileSystem::ReadAtMost(path, most, content);
  }
  std::function<void(const std::string& path, int read)> meddle;

 private:
  std::map<std::string, int> reads_;
};

class FirmwareTest : public ::testing::Test {
 protected:
  FirmwareTest() { Reset(); }

  // A fresh program, a fresh device, no files but the folder.
  void Reset() {
    machine = std::make_unique<World>();
    machine->files.folders.insert(kFolder);
    machine->app.state.LangOffset = 5000;
    machine->app.state.PortNo = "1";
    RegisterFirmwareWindows(machine->app);
    Tool().Show();
  }
  frmMaint_MAIN& Tool() { return static_cast<frmMaint_MAIN&>(App_().windows.Load("frmMaint_MAIN")); }
  App& App_() { return machine->app; }
  FirmwarePeer& Peer() { return machine->peer; }
  VirtualTime& Time() { return machine->time; }
  frmMaint_Wait* Wait() { return static_cast<frmMaint_Wait*>(App_().windows.Find("frmMaint_Wait")); }

  static std::string PathOf(const std::string& stem) { return kFolder + "/" + stem + ".bin"; }
  std::string& File(const std::string& stem) { return machine->files.files[PathOf(stem)]; }
  // A good file of the module: its identification, and other bytes up to `size`.
  static std::string GoodFile(int module, std::size_t size) {
    const FwModule& m = FwModules()[static_cast<std::size_t>(module)];
    std::string content;
    for (std::size_t i = 0; i < size; ++i) content += static_cast<char>(i * 7 + i / 251);
    return content.replace(m.position, 16, m.identification);
  }

  // Presses Execute; so many boxes come up and are answered. Their texts.
  Texts Execute(int boxes) {
    for (int i = 0; i < boxes; ++i) machine->dialogs.Answer(MessageAnswer::kOk);
    EXPECT_TRUE(Tool().cmdEXE.Press());
    return machine->dialogs.TakeTexts();
  }
  Texts Download(int module, int boxes = 1) {
    Tool().SSTab1.SetTab(0);
    Tool().txtDown.SetText(kFolder);
    for (int i = 0; i < kFwModules; ++i) Tool().chkModule(i).SetValue(i == module ? 1 : 0);
    return Execute(boxes);
  }
  Texts Verify(int module, int boxes = 1) {
    Tool().SSTab1.SetTab(1);
    Tool().optSEL_UP(1).SetValue(true);
    Tool().txtUp.SetText(kFolder);
    for (int i = 0; i < kFwModules; ++i) Tool().chkModule_up(i).SetValue(i == module ? 1 : 0);
    return Execute(boxes);
  }
  Texts ReadVersion(int boxes = 1) {
    Tool().SSTab1.SetTab(1);
    Tool().optSEL_UP(0).SetValue(true);
    return Execute(boxes);
  }
  std::string DownloadResult(int module) { return Tool().txtDL_Result(module).Text(); }
  std::string VerifyResult(int module) { return Tool().txtResult(module).Text(); }

  Texts HexFrames() {
    Texts hex;
    for (const std::string& frame : Peer().frames) {
      hex.push_back(Hex({reinterpret_cast<const std::uint8_t*>(frame.data()), frame.size()}));
    }
    return hex;
  }
  // Everything can be worked again, nothing is left open.
  void ExpectUsable() {
    EXPECT_FALSE(Peer().IsOpen());
    EXPECT_TRUE(Tool().cmdEXE.Enabled() && Tool().cmdQuit.Enabled() && Tool().cmdUP.Enabled() &&
                Tool().cmdFolder.Enabled() && Tool().SSTab1.Enabled() && Tool().chkModule(0).Enabled() &&
                Tool().MENU_COMM.Enabled());
    EXPECT_EQ(App_().windows.MousePointer(), kNormalPointer);
    EXPECT_FALSE(Wait() != nullptr && (Wait()->Visible() || Wait()->tmTime.Running()));
    EXPECT_FALSE(App_().state.UiLocked);
  }

  struct World {
    VirtualTime time;
    MeddledFiles files;
    ScriptedDialogs dialogs;
    FakeProcess process;
    FirmwarePeer peer{time};
    SerialFirmwarePort port{time, time, peer};
    Platform platform{time, time, peer, dialogs, files, process, port};
    App app{platform};
  };
  std::unique_ptr<World> machine;
};

}  // namespace vlt::test

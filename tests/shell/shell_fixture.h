// SPDX-License-Identifier: GPL-3.0-or-later
// The program from its settings file on, with pages that only note what happens to them.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "pages/page.h"
#include "shell/mdi_form1.h"
#include "shell/start.h"
#include "support/virtual_platform.h"

namespace vlt::test {

using Texts = std::vector<std::string>;

inline constexpr const char* kIniPath = "/app/VLT.ini";

struct Notes {
  int loads = 0;
  int inits = 0;
  bool refuses = false;  // to be unloaded
};

class NotingPage : public PageForm {
 public:
  NotingPage(App& app, const std::string& name, Notes& notes) : PageForm(app, name), notes_(notes) {}
  void FrmInit() override { ++notes_.inits; }
  void Form_Load() override { ++notes_.loads; }
  void Form_Unload(int& cancel) override { cancel = notes_.refuses ? -1 : 0; }
  void Taihi() override {
    if (Name() == "Form10") app().slots.At("PROCESS SETTING", "OUTER_DIAMETER_Data") = "60.5";
  }

 private:
  Notes& notes_;
};

class ShellTest : public ::testing::Test {
 protected:
  ShellTest() { UseMeter({}); }
  void UseMeter(const sim::MeterConfig& meter) {
    app.reset();
    platform = std::make_unique<VirtualPlatform>(PortKind::kSimulated, meter);
    app = std::make_unique<App>(platform->machine);
    RegisterShellWindows(*app);
  }
  // VLT.ini names itself, as a file that the program has written does.
  void Start(const std::string& system, const std::string& more = {}) {
    platform->files.files[kIniPath] = "[SYSTEM]\r\nINI_FILENAME=VLT.ini\r\n" + system + more;
    StartUp(*app);
  }
  void RegisterPage(const std::string& page) {
    app->windows.Register(page,
                          [this, page] { return std::make_unique<NotingPage>(*app, page, notes[page]); });
  }
  // The main window as it stands after a start without a meter; every page is there.
  MDIForm1& OpenMainWindow(const std::string& system = "VR=M627\r\nLANG_FLAG=1\r\n") {
    for (int n = 2; n <= 12; ++n) RegisterPage("Form" + std::to_string(n));
    Start(system);
    MDIForm1& window = MainWindow(*app);
    window.Dress();
    window.Show();
    app->windows.Unload("frmSplash");
    return window;
  }
  template <class T>
  T& On(const char* form, const char* control) {
    return dynamic_cast<T&>(*app->windows.Find(form)->Find(control));
  }
  void Press(const char* button) { On<PushButton>("MDIForm1", button).Press(); }
  void Choose(const char* item) { On<MenuItem>("MDIForm1", item).Press(); }
  bool IsShown(const std::string& form) const {
    const Form* found = app->windows.Find(form);
    return found != nullptr && found->Visible();
  }
  // Panel 1 without its date and time.
  std::string StatusText() const {
    const std::string& panel = app->frame->Status().Panel(1);
    return panel.empty() ? panel : panel.substr(20);
  }

  std::unique_ptr<VirtualPlatform> platform;
  std::map<std::string, Notes> notes;
  std::unique_ptr<App> app;
};

}  // namespace vlt::test

// The program from its settings file on, with every page replaced by one that only notes what happens to it.
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

inline constexpr const char* kIniPath = "/app/VLT.ini";

class NotingPage : public PageForm {
 public:
  struct Notes {
    int loads = 0;
    int inits = 0;
    bool refuses = false;
  };
  NotingPage(App& app, const std::string& name, Notes& notes) : PageForm(app, name), notes_(notes) {}

  void FrmInit() override { ++notes_.inits; }
  void Form_Load() override { ++notes_.loads; }
  void Form_Unload(int& cancel) override {
    if (notes_.refuses) cancel = -1;
  }
  void Taihi() override {
    if (Name() == "Form10") app().slots.At("PROCESS SETTING", "OUTER_DIAMETER_Data") = "60.5";
  }

 private:
  Notes& notes_;
};

class ShellTest : public ::testing::Test {
 protected:
  explicit ShellTest(const sim::MeterConfig& meter = {})
      : platform(std::make_unique<VirtualPlatform>(PortKind::kSimulated, meter)),
        app(std::make_unique<App>(platform->machine)) {
    RegisterShellWindows(*app);
  }

  // VLT.ini of an installation in working order, and `more` behind it. It names itself, as a file that the
  // program has written does.
  void PutIni(const std::string& system, const std::string& more = {}) {
    platform->files.files[kIniPath] = "[SYSTEM]\r\nINI_FILENAME=VLT.ini\r\n" + system + more;
  }

  void RegisterNotingPages() {
    for (const char* page : {"Form2", "Form3", "Form4", "Form5", "Form6", "Form7", "Form8", "Form9", "Form10",
                             "Form11", "Form12"}) {
      app->windows.Register(page,
                            [this, page] { return std::make_unique<NotingPage>(*app, page, notes[page]); });
    }
  }

  // The main window as it stands after the start, with no meter asked.
  MDIForm1& OpenMainWindow(const std::string& system = "VR=M627\r\nLANG_FLAG=1\r\n") {
    PutIni(system);
    StartUp(*app);
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
  bool IsShown(const char* form) const {
    const Form* found = app->windows.Find(form);
    return found != nullptr && found->Visible();
  }
  // Panel 1 without its date and time.
  std::string StatusText() const {
    const std::string& panel = app->frame->Status().Panel(1);
    return panel.empty() ? panel : panel.substr(20);
  }

  std::unique_ptr<VirtualPlatform> platform;
  std::map<std::string, NotingPage::Notes> notes;
  std::unique_ptr<App> app;
};

}  // namespace vlt::test

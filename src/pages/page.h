// SPDX-License-Identifier: GPL-3.0-or-later
// A page of the main window.
#pragma once

#include <string>

#include "state/app.h"

namespace vlt {

class PageForm : public Form {
 public:
  PageForm(App& app, std::string name) : Form(app.windows, std::move(name), FormPlace::kPage), app_(app) {}

  // Sets captions, fonts, units and lengths in the language in force. The main window runs it before each
  // opening.
  void FrmInit() override = 0;

  // The main window hides the page: its navigation button turns idle with it.
  void Form_Deactivate() override {
    Hide();
    SetButtonIdle();
  }
  // Stays while an exchange runs.
  void Form_Unload(int& cancel) override {
    if (app_.state.UiLocked) {
      cancel = -1;
    } else {
      SetButtonIdle();
    }
  }

 protected:
  App& app() const { return app_; }
  void SetButtonIdle() {
    if (app_.frame != nullptr) app_.frame->SetPageButtonIdle(Name());
  }

 private:
  App& app_;
};

}  // namespace vlt

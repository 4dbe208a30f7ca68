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
  virtual void FrmInit() = 0;

 protected:
  App& app() const { return app_; }

 private:
  App& app_;
};

}  // namespace vlt

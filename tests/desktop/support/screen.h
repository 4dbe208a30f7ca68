// SPDX-License-Identifier: GPL-3.0-or-later
// A list of windows on a screen of its own, with forms of the tests' own making.
#pragma once

#include <QTemporaryDir>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "desktop/desktop.h"
#include "desktop/qt_dialogs.h"
#include "desktop/qt_text.h"
#include "host/host.h"
#include "tour/hands.h"

namespace vlt::test {

class Screen {
 public:
  Screen()
      : host(FromQt(folder.path()), {}),
        machine(host.With(dialogs)),
        windows(machine),
        desktop(
            windows, [](int id) { return QString("text %1").arg(id); },
            [this](std::string_view form) { return Layout(form); }),
        hands(desktop) {}

  ~Screen() {
    if (host.events.IsEnding()) ForgetEnd();
  }

  // Registers a form with its layout table; forms without one lie as they come.
  template <class T>
  void Add(const std::string& name, WindowLayout layout) {
    windows.Register(name, [this] { return std::make_unique<T>(windows); });
    layouts_[name] = layout;
  }
  template <class T>
  T& Show(const std::string& name) {
    Form& form = windows.Load(name);
    form.Show();
    hands.Window(name);
    return static_cast<T&>(form);
  }

  QTemporaryDir folder;
  QtDialogs dialogs;
  Host host;
  Platform machine;
  Windows windows;
  Desktop desktop;
  Hands hands;
  BoxAnswers boxes;

 private:
  const WindowLayout* Layout(std::string_view form) const {
    const auto found = layouts_.find(form);
    return found == layouts_.end() ? nullptr : &found->second;
  }
  std::map<std::string, WindowLayout, std::less<>> layouts_;
};

}  // namespace vlt::test

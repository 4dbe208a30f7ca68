// SPDX-License-Identifier: GPL-3.0-or-later
// How a folder makes its windows known: classes that are built from the App.
#pragma once

#include <memory>

#include "state/app.h"

namespace vlt {

template <class T>
void RegisterWindow(App& app, const char* name) {
  app.windows.Register(name, [&app] { return std::make_unique<T>(app); });
}

// A part of the window of this name; `Whole` is that window's class where the part needs more of it than a
// form.
template <class T, class Whole = Form>
void RegisterPart(App& app, const char* name) {
  app.windows.RegisterPart(
      name, [&app](Form& whole) { return std::make_unique<T>(app, static_cast<Whole&>(whole)); });
}

}  // namespace vlt

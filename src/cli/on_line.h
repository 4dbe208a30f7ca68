// SPDX-License-Identifier: GPL-3.0-or-later
// A word's hold on the line, as an object on the stack: this is the only program of the folder, the port is
// open and the interface locked while it lives.
#pragma once

#include "link/operation.h"
#include "state/app.h"

namespace vlt {

class OnLine {
 public:
  // Whether the port must be open is for the word to say: a search opens it itself.
  enum class Port { kOpen, kAsItIs };
  // `holder` is a window in whose name the lock is taken. Throws Trouble when the line can't be had.
  OnLine(App& app, Form& holder, Port port = Port::kOpen);

 private:
  // Throws ahead of the lock.
  static App& Free(App& app);

  Operation operation_;
};

}  // namespace vlt

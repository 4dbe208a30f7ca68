// SPDX-License-Identifier: GPL-3.0-or-later
// Changes of controls reach the screen together: however many setters a handler runs, each widget is brought
// up to date once, when the event queue next runs.
#pragma once

#include <QObject>
#include <vector>

namespace vlt {

class Refreshable {
 public:
  virtual ~Refreshable() = default;
  virtual void Refresh() = 0;
};

class RefreshQueue : public QObject {
 public:
  // Marking twice refreshes once.
  void Mark(Refreshable& item);
  // Must be called before a marked item goes.
  void Forget(Refreshable& item);
  // Refreshes all that is marked now, also what becomes marked meanwhile.
  void Flush();

 private:
  std::vector<Refreshable*> marked_;
  bool posted_ = false;
};

}  // namespace vlt

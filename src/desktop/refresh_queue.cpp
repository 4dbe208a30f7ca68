// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/refresh_queue.h"

#include <algorithm>

namespace vlt {

void RefreshQueue::Mark(Refreshable& item) {
  if (std::find(marked_.begin(), marked_.end(), &item) == marked_.end()) marked_.push_back(&item);
  if (posted_) return;
  posted_ = true;
  QMetaObject::invokeMethod(
      this, [this] { Flush(); }, Qt::QueuedConnection);
}

void RefreshQueue::Forget(Refreshable& item) { std::erase(marked_, &item); }

void RefreshQueue::Flush() {
  posted_ = false;
  while (!marked_.empty()) {
    Refreshable* item = marked_.front();
    marked_.erase(marked_.begin());
    item->Refresh();
  }
}

}  // namespace vlt

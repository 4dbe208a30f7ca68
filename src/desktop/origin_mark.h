// SPDX-License-Identifier: GPL-3.0-or-later
// The mark beside an entry that tells where its value comes from. The shape says it as well as the colour,
// and it stands in the gap before the entry, so that nothing else moves or is covered:
//   read      a thin line
//   typed     a thick bar
//   file      a bracket
//   outdated  dots
#pragma once

#include <QPointer>
#include <QWidget>

#include "window/control.h"

namespace vlt {

class OriginMark : public QWidget {
 public:
  // Follows the entry, which is a child of the same parent.
  explicit OriginMark(QWidget& entry);
  // Nothing is shown for ValueOrigin::kNone.
  void Set(ValueOrigin origin);

  // Of the mark, and what is free between it and the entry.
  static constexpr int kWidth = 3;
  static constexpr int kDistance = 1;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void Follow();

  QPointer<QWidget> entry_;
  ValueOrigin origin_ = ValueOrigin::kNone;
};

}  // namespace vlt

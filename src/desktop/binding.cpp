// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/binding.h"

#include "desktop/fonts.h"
#include "desktop/qt_text.h"

namespace vlt {
namespace {

constexpr QColor kMarkColour(0xE0, 0x30, 0x20);  // of a control that holds something wrong
constexpr int kMarkPercent = 30;                 // of it in the ground's colour

// By its control; until its parent shows it Qt counts every widget as hidden.
bool WasHidden(const QWidget& widget) {
  return widget.testAttribute(Qt::WA_WState_ExplicitShowHide) && widget.isHidden();
}

// A widget that was never hidden is left for its parent to show.
void ShowOrHide(QWidget& widget, bool visible) {
  if (!visible) {
    widget.hide();
  } else if (WasHidden(widget)) {
    widget.show();
  }
}

}  // namespace

Binding::Binding(Control& control, BindContext& context, QWidget* widget)
    : control_(control), context_(context), widget_(widget) {
  widget->setObjectName(ToQt(control.FullName()));
  control.Observe([this] {
    if (IsSeen()) MarkForRefresh();
  });
  MarkForRefresh();
}

Binding::~Binding() { Detach(); }

void Binding::Detach() {
  if (detached_) return;
  detached_ = true;
  control_.Observe({});
  context_.refresh.Forget(*this);
}

void Binding::MarkForRefresh() {
  if (!detached_) context_.refresh.Mark(*this);
}

void Binding::SetKeys(const QString& keys) {
  keys_ = keys;
  MarkForRefresh();
}

void Binding::MakeTitle() {
  title_ = true;
  MarkForRefresh();
}

void Binding::MakeNarrow() {
  narrow_ = true;
  MarkForRefresh();
}

void Binding::Refresh() {
  if (detached_ || widget_ == nullptr) return;
  const auto before = Room();
  PushCommon();
  PushState();
  PushToolTip();
  if (Room() != before && on_size_change) on_size_change();
}

// What the widget wants of the window; a hidden one nothing, so its text need not be measured.
std::optional<QSize> Binding::Room() const {
  if (WasHidden(*widget_)) return std::nullopt;
  return widget_->sizeHint();
}

void Binding::PushCommon() {
  QFont font = DesktopFont(control_.GetFont());
  if (title_) font = TitleFont(font);
  if (narrow_) font = NarrowFont(font);
  if (widget_->font() != font) widget_->setFont(font);
  widget_->setEnabled(control_.Enabled());
  ShowOrHide(*widget_, control_.Visible());
  PushMark();
  PushOrigin();
}

// What is wrong is seen at once, and told by the tooltip and to those who listen to the screen.
void Binding::PushMark() {
  QStringList told = {ToQt(control_.Mark()), ToQt(control_.OriginText())};
  told.removeAll(QString());
  const QString description = told.join('\n');
  if (widget_->accessibleDescription() != description) widget_->setAccessibleDescription(description);
  const bool marked = !control_.Mark().empty();
  if (marked == marked_) return;
  marked_ = marked;
  QPalette palette;
  if (marked) {
    const QColor ground = palette.color(QPalette::Base);
    const auto mix = [](int a, int b) { return a + (b - a) * kMarkPercent / 100; };
    const QColor colour(mix(ground.red(), kMarkColour.red()), mix(ground.green(), kMarkColour.green()),
                        mix(ground.blue(), kMarkColour.blue()));
    palette.setColor(QPalette::Base, colour);
    palette.setColor(QPalette::Button, colour);
  }
  widget_->setPalette(palette);
}

void Binding::PushOrigin() {
  if (origin_mark_ == nullptr) {
    if (control_.Origin() == ValueOrigin::kNone) return;
    origin_mark_ = new OriginMark(*widget_);
  }
  origin_mark_->Set(control_.Origin());
}

void Binding::PushToolTip() {
  QStringList lines = {CutText(), ToQt(control_.Mark()), ToQt(control_.OriginText()), ToQt(control_.Hint()),
                       keys_};
  lines.removeAll(QString());
  const QString tip = lines.join('\n');
  if (widget_->toolTip() != tip) widget_->setToolTip(tip);
}

}  // namespace vlt

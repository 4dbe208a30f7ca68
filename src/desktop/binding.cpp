#include "desktop/binding.h"

#include <array>

#include "desktop/binding_kinds.h"
#include "desktop/fonts.h"
#include "desktop/qt_text.h"

namespace vlt {
namespace {

struct Maker {
  ControlKind kind;
  BindingMaker make;
};

constexpr Maker kMakers[] = {
    {ControlKind::kCheckBox, BindCheckBox},
    {ControlKind::kOptionButton, BindOptionButton},
    {ControlKind::kTextBox, BindTextBox},
    {ControlKind::kComboBox, BindComboBox},
    {ControlKind::kLabel, BindLabel},
    {ControlKind::kPushButton, BindPushButton},
    {ControlKind::kFrame, BindFrameBox},
    {ControlKind::kStatusBar, BindStatusBar},
    {ControlKind::kProgressBar, BindProgressBar},
    {ControlKind::kTab, BindTabControl},
    {ControlKind::kUpDown, BindUpDown},
    {ControlKind::kGrid, BindGrid},
    {ControlKind::kChart, BindChart},
    {ControlKind::kPicture, BindPicture},
    {ControlKind::kDrawing, BindDrawing},
};

// A widget that was never hidden is left for its parent to show.
void ShowOrHide(QWidget& widget, bool visible) {
  if (!visible) {
    widget.hide();
  } else if (widget.testAttribute(Qt::WA_WState_ExplicitShowHide) && widget.isHidden()) {
    widget.show();
  }
}

}  // namespace

Binding::Binding(Control& control, BindContext& context, QWidget* widget)
    : control_(control), context_(context), widget_(widget) {
  widget->setObjectName(ToQt(control.FullName()));
  control.Observe([this] { MarkForRefresh(); });
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

void Binding::Refresh() {
  if (detached_ || widget_ == nullptr) return;
  const QSize before = widget_->sizeHint();
  const bool was_hidden = widget_->isHidden();
  PushCommon();
  PushState();
  const bool same_room = widget_->sizeHint() == before && widget_->isHidden() == was_hidden;
  if (!same_room && on_size_change) on_size_change();
}

void Binding::PushCommon() {
  QFont font = DesktopFont(control_.GetFont());
  if (title_) font = TitleFont(font);
  if (widget_->font() != font) widget_->setFont(font);
  widget_->setEnabled(control_.Enabled());
  ShowOrHide(*widget_, control_.Visible());
  QString tip = ToQt(control_.Hint());
  if (!keys_.isEmpty()) tip += (tip.isEmpty() ? "" : "\n") + keys_;
  if (widget_->toolTip() != tip) widget_->setToolTip(tip);
}

std::unique_ptr<Binding> Bind(Control& control, BindContext& context, QWidget* parent) {
  for (const Maker& maker : kMakers) {
    if (maker.kind == control.Kind()) return maker.make(control, context, parent);
  }
  return nullptr;
}

}  // namespace vlt

#include "desktop/binding.h"

#include "desktop/fonts.h"
#include "desktop/qt_text.h"

namespace vlt {
namespace {

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

void Binding::Refresh() {
  if (detached_ || widget_ == nullptr) return;
  const QSize before = widget_->sizeHint();
  const bool was_hidden = widget_->isHidden();
  PushCommon();
  PushState();
  PushToolTip();
  const bool same_room = widget_->sizeHint() == before && widget_->isHidden() == was_hidden;
  if (!same_room && on_size_change) on_size_change();
}

void Binding::PushCommon() {
  QFont font = DesktopFont(control_.GetFont());
  if (title_) font = TitleFont(font);
  if (widget_->font() != font) widget_->setFont(font);
  widget_->setEnabled(control_.Enabled());
  ShowOrHide(*widget_, control_.Visible());
}

void Binding::PushToolTip() {
  QStringList lines = {CutText(), ToQt(control_.Hint()), keys_};
  lines.removeAll(QString());
  const QString tip = lines.join('\n');
  if (widget_->toolTip() != tip) widget_->setToolTip(tip);
}

}  // namespace vlt

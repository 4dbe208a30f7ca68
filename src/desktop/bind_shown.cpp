// SPDX-License-Identifier: GPL-3.0-or-later
// What is shown and not operated: labels, frames, pictures, progress bars.
#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <optional>

#include "desktop/art.h"
#include "desktop/binding_kinds.h"
#include "desktop/colours.h"
#include "desktop/qt_text.h"

namespace vlt {
namespace {

constexpr int kBarMargin = 6;

// A label of plain text. Qt's own lays its text out three times to know the room that it wants; where no line
// is wrapped, once tells the same, and a page has more than a hundred of them.
class PlainLabel : public QLabel {
 public:
  explicit PlainLabel(QWidget* parent) : QLabel(parent) { setTextFormat(Qt::PlainText); }

  void ShowText(const QString& text) {
    if (text == QLabel::text()) return;
    measured_.reset();
    setText(text);
  }
  QSize sizeHint() const override { return IsPlain() ? Room() : QLabel::sizeHint(); }
  QSize minimumSizeHint() const override { return IsPlain() ? Room() : QLabel::minimumSizeHint(); }

 protected:
  void changeEvent(QEvent* event) override {
    measured_.reset();
    QLabel::changeEvent(event);
  }

 private:
  bool IsPlain() const { return !wordWrap() && !text().isEmpty(); }
  QSize Room() const {
    constexpr QRect kAnywhere(0, 0, 2000, 2000);  // as Qt's own
    ensurePolished();
    if (!measured_) measured_ = fontMetrics().boundingRect(kAnywhere, Qt::TextExpandTabs, text()).size();
    const int margins = 2 * margin();
    return measured_->grownBy(contentsMargins()).grownBy({0, 0, margins, margins}).expandedTo(minimumSize());
  }

  mutable std::optional<QSize> measured_;
};

// With places at which a line may end where there are none: in a path behind its separators, in a name of
// unusual length anywhere.
QString Breakable(const QString& text) {
  constexpr QChar kPlace(0x200B);
  constexpr int kLongestWord = 40;
  QString breakable;
  int length = 0;
  for (const QChar letter : text) {
    breakable += letter;
    const bool separator = letter == '/' || letter == '\\';
    length = letter.isSpace() ? 0 : length + 1;
    if (!separator && length < kLongestWord) continue;
    breakable += kPlace;
    length = 0;
  }
  return breakable;
}

class LabelBinding : public Binding {
 public:
  LabelBinding(Control& label, BindContext& context, QWidget* parent)
      : Binding(label, context, new PlainLabel(parent)) {}

 private:
  PlainLabel* View() const { return static_cast<PlainLabel*>(Widget()); }
  void WrapText() override {
    wraps_ = true;
    View()->setWordWrap(true);
    View()->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    MarkForRefresh();
  }
  void PushState() override {
    const QString text = PlainCaption(Bound().Caption());
    View()->ShowText(wraps_ ? Breakable(text) : text);
    const unsigned colour = static_cast<const Label&>(Bound()).BackColour();
    if (shown_colour_ == colour) return;
    shown_colour_ = colour;
    const bool bar = IsOwnColour(colour);
    View()->setPalette(OnColour(colour, QPalette::Window, QPalette::WindowText));
    View()->setAutoFillBackground(bar);
    View()->setMargin(bar ? kBarMargin : 0);
    View()->setWordWrap(bar);
  }
  unsigned shown_colour_ = kButtonFaceColour;
  bool wraps_ = false;
};

class FrameBinding : public Binding {
 public:
  FrameBinding(Control& frame, BindContext& context, QWidget* parent)
      : Binding(frame, context, new QGroupBox(parent)) {}

 private:
  void PushState() override { static_cast<QGroupBox*>(Widget())->setTitle(WidgetCaption(Bound().Caption())); }
};

class PictureBinding : public Binding {
 public:
  PictureBinding(Picture& picture, BindContext& context, QWidget* parent)
      : Binding(picture, context, new QLabel(parent)) {
    static_cast<QLabel*>(Widget())->setPixmap(Artwork(picture.Art()));
  }

 private:
  void PushState() override {}
};

class ProgressBinding : public Binding {
 public:
  ProgressBinding(ProgressBar& bar, BindContext& context, QWidget* parent)
      : Binding(bar, context, new QProgressBar(parent)), bar_(bar) {}

 private:
  void PushState() override {
    auto* view = static_cast<QProgressBar*>(Widget());
    view->setRange(0, bar_.Max());
    view->setValue(bar_.Value());
  }
  ProgressBar& bar_;
};

}  // namespace

std::unique_ptr<Binding> BindLabel(Control& control, BindContext& context, QWidget* parent) {
  return std::make_unique<LabelBinding>(control, context, parent);
}

std::unique_ptr<Binding> BindFrameBox(Control& control, BindContext& context, QWidget* parent) {
  return std::make_unique<FrameBinding>(control, context, parent);
}

std::unique_ptr<Binding> BindPicture(Control& control, BindContext& context, QWidget* parent) {
  return std::make_unique<PictureBinding>(static_cast<Picture&>(control), context, parent);
}

std::unique_ptr<Binding> BindProgressBar(Control& control, BindContext& context, QWidget* parent) {
  return std::make_unique<ProgressBinding>(static_cast<ProgressBar&>(control), context, parent);
}

}  // namespace vlt

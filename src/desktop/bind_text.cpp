// SPDX-License-Identifier: GPL-3.0-or-later
// Text fields.
#include <QFocusEvent>
#include <QLineEdit>
#include <QPainter>
#include <QStyleOptionFrame>
#include <functional>

#include "desktop/binding_kinds.h"
#include "desktop/qt_text.h"

namespace vlt {
namespace {

constexpr int kNoLimit = 32767;  // what Qt calls no limit
constexpr int kTextMargin = 2;   // Qt's own, beside the text of a field

// Tells when it has got or lost the focus, after it has done its own part: a mark that is set then stays.
// While it has no focus, a text that it has no room for begins at its start and ends in dots.
class Entry : public QLineEdit {
 public:
  using QLineEdit::QLineEdit;
  bool IsCut() const { return fontMetrics().horizontalAdvance(text()) > TextArea().width(); }
  std::function<void()> resized;
  std::function<void(Qt::FocusReason)> entered;
  std::function<void(Qt::FocusReason)> left;

 protected:
  void focusInEvent(QFocusEvent* event) override {
    QLineEdit::focusInEvent(event);
    if (entered) entered(event->reason());
  }
  void focusOutEvent(QFocusEvent* event) override {
    QLineEdit::focusOutEvent(event);
    if (left) left(event->reason());
  }
  void resizeEvent(QResizeEvent* event) override {
    QLineEdit::resizeEvent(event);
    if (resized) resized();
  }
  void paintEvent(QPaintEvent* event) override {
    if (hasFocus() || !IsCut()) return QLineEdit::paintEvent(event);
    QPainter painter(this);
    QStyleOptionFrame panel;
    initStyleOption(&panel);
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &panel, &painter, this);
    painter.setPen(palette().color(QPalette::Text));
    const QRect area = TextArea();
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(text(), Qt::ElideRight, area.width()));
  }

 private:
  QRect TextArea() const {
    QStyleOptionFrame panel;
    initStyleOption(&panel);
    const QRect inside = style()->subElementRect(QStyle::SE_LineEditContents, &panel, this);
    return inside.adjusted(kTextMargin, 0, -kTextMargin, 0);
  }
};

class TextBoxBinding : public Binding {
 public:
  TextBoxBinding(TextBox& box, BindContext& context, QWidget* parent)
      : Binding(box, context, new Entry(parent)), box_(box), marks_(box.SelectAllCount()) {
    connect(View(), &QLineEdit::textEdited, this, [this](const QString& text) {
      marked_ = false;
      Gesture([&] { box_.Type(FromQt(text)); });
      if (!Detached()) PushLimit();
    });
    connect(View(), &QLineEdit::returnPressed, this, [this] { Check(); });
    View()->resized = [this] { MarkForRefresh(); };
    View()->entered = [this](Qt::FocusReason reason) { MarkAgain(reason); };
    View()->left = [this](Qt::FocusReason reason) {
      if (!Detached()) Context().gate.FieldLeft(reason, [this] { return Check(); });
    };
  }
  ~TextBoxBinding() override {
    if (Widget() == nullptr) return;
    View()->resized = nullptr;
    View()->entered = nullptr;
    View()->left = nullptr;
  }

 private:
  Entry* View() const { return static_cast<Entry*>(Widget()); }

  // True when the field may be left.
  bool Check() {
    ControlOwner& form = box_.Owner();
    const int asked_before = form.FocusCount();
    bool kept = false;
    Gesture([&] {
      // The window may go while the check runs, but not before the gesture has ended.
      form.RunHandler([&] {
        box_.LoseFocus();
        kept = form.FocusCount() != asked_before;
      });
    });
    Context().refresh.Flush();
    return !kept;
  }

  void PushState() override {
    PushGround();
    const QString text = ToQt(box_.Text());
    PushLimit();
    View()->setReadOnly(box_.Locked());
    if (View()->text() != text) {
      View()->setText(text);
      if (!View()->hasFocus()) View()->setCursorPosition(0);
      marked_ = false;
    }
    if (marks_ == box_.SelectAllCount()) return;
    marks_ = box_.SelectAllCount();
    marked_ = true;
    View()->selectAll();
  }

  // It binds typing: what the program has set may be longer, and then takes no more letters.
  void PushLimit() {
    const int limit = box_.MaxLength() > 0 ? box_.MaxLength() : kNoLimit;
    View()->setMaxLength(qMax(limit, static_cast<int>(ToQt(box_.Text()).size())));
  }

  QString CutText() const override { return View()->IsCut() ? View()->text() : QString(); }

  void PushGround() {
    if (ground_ == box_.BackColour()) return;
    ground_ = box_.BackColour();
    QPalette palette;
    if (ground_ == kButtonFaceColour) palette.setColor(QPalette::Base, palette.color(QPalette::Button));
    View()->setPalette(palette);
  }

  // Qt drops the mark of a field without focus; the operator is to find it when the focus comes back.
  void MarkAgain(Qt::FocusReason reason) {
    if (reason == Qt::MouseFocusReason) marked_ = false;
    if (marked_) View()->selectAll();
  }

  TextBox& box_;
  int marks_;  // requests to mark the text that are done
  unsigned ground_ = kWindowColour;
  bool marked_ = false;  // by the program, and not typed over yet
};

}  // namespace

std::unique_ptr<Binding> BindTextBox(Control& control, BindContext& context, QWidget* parent) {
  return std::make_unique<TextBoxBinding>(static_cast<TextBox&>(control), context, parent);
}

}  // namespace vlt

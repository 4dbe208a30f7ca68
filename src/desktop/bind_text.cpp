// SPDX-License-Identifier: GPL-3.0-or-later
// Text fields.
#include <QEvent>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyleOptionFrame>
#include <functional>

#include "desktop/binding_kinds.h"
#include "desktop/qt_text.h"

namespace vlt {
namespace {

constexpr int kNoLimit = 32767;  // what Qt calls no limit
constexpr int kTextMargin = 2;   // Qt's own, beside the text of a field
const QString kDots = QStringLiteral("\u2026");

// Tells when it has got or lost the focus, after it has done its own part: a mark that is set then stays.
// A text that it has no room for is seen from its start and ends in dots, with the focus as without: the dots
// stand where its text may not go. When the caret leads further into the text, dots stand at its left, too.
class Entry : public QLineEdit {
 public:
  explicit Entry(QWidget* parent) : QLineEdit(parent) {
    connect(this, &QLineEdit::textChanged, this, [this] { Fit(); });
  }
  bool IsCut() const { return fontMetrics().horizontalAdvance(text()) > TextArea().width(); }
  // Marks the whole text. The caret stands at its end, or where that would show the end alone, at its start.
  void MarkAll() {
    if (!IsCut()) return selectAll();
    const auto length = static_cast<int>(text().size());
    deselect();
    setSelection(length, -length);
  }
  std::function<void()> resized;
  std::function<void(Qt::FocusReason)> entered;
  std::function<void(Qt::FocusReason)> left;

  // The room of the dots is none that it wants.
  QSize sizeHint() const override { return QLineEdit::sizeHint() - QSize(textMargins().right(), 0); }
  QSize minimumSizeHint() const override {
    return QLineEdit::minimumSizeHint() - QSize(textMargins().right(), 0);
  }

 protected:
  void focusInEvent(QFocusEvent* event) override {
    QLineEdit::focusInEvent(event);
    if (hasSelectedText() && selectedText() == text()) MarkAll();
    if (entered) entered(event->reason());
  }
  void focusOutEvent(QFocusEvent* event) override {
    QLineEdit::focusOutEvent(event);
    // Behind a menu or another window the person goes on where the caret stands.
    const bool comes_back = event->reason() == Qt::ActiveWindowFocusReason ||
                            event->reason() == Qt::PopupFocusReason ||
                            event->reason() == Qt::MenuBarFocusReason;
    if (!comes_back) setCursorPosition(0);
    if (left) left(event->reason());
  }
  void resizeEvent(QResizeEvent* event) override {
    QLineEdit::resizeEvent(event);
    Fit();
    if (resized) resized();
  }
  void changeEvent(QEvent* event) override {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) Fit();
  }
  void paintEvent(QPaintEvent* event) override {
    if (textMargins().right() != 0 && LiesBehindItsPlace()) ScrollToStart(event);
    QLineEdit::paintEvent(event);
    if (textMargins().right() == 0) return;
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    PaintDots(painter);
  }

 private:
  QRect Inside() const {
    QStyleOptionFrame panel;
    initStyleOption(&panel);
    return style()->subElementRect(QStyle::SE_LineEditContents, &panel, this);
  }
  QRect TextArea() const { return Inside().adjusted(kTextMargin, 0, -kTextMargin, 0); }

  // Where the letter of this place begins.
  int PlaceOf(int letter) const {
    const int caret = cursorPosition();
    const QFontMetrics metrics = fontMetrics();
    const int from_start = metrics.horizontalAdvance(text().left(letter));
    return cursorRect().center().x() + from_start - metrics.horizontalAdvance(text().left(caret));
  }

  void PaintDots(QPainter& painter) const {
    const QRect area = TextArea().adjusted(0, 1, 0, -1);
    const int dots = fontMetrics().horizontalAdvance(kDots);
    const auto length = static_cast<int>(text().size());
    if (PlaceOf(length) > shown_right_ + kTextMargin) {
      painter.drawText(QRect(shown_right_, area.top(), dots, area.height()), Qt::AlignVCenter, kDots);
    }
    if (PlaceOf(0) >= area.left() - kTextMargin) return;
    // No letter is seen in part beside the dots, and none is covered that the caret stands behind.
    int first = 0;
    while (first < length && PlaceOf(first) < area.left() + dots) ++first;
    if (first > cursorPosition()) return;
    const int edge = Inside().left();
    const QRect at_left(edge, area.top(), PlaceOf(first) - edge, area.height());
    painter.fillRect(at_left, palette().color(QPalette::Base));
    painter.drawText(at_left, Qt::AlignVCenter | Qt::AlignRight, kDots);
  }

  // Qt scrolls when it paints, and only as far as the caret needs it: behind a shorter text, which lay at the
  // right, a long one begins there, too.
  bool LiesBehindItsPlace() const { return PlaceOf(0) > TextArea().left() + kTextMargin; }
  // Paints for the sake of scrolling; the caret's moves ask for one more paint, which has nothing beneath it.
  void ScrollToStart(QPaintEvent* event) {
    const QSignalBlocker quiet(this);
    const int caret = cursorPosition();
    const int length = static_cast<int>(selectionLength());
    const int anchor = selectionStart() == caret ? caret + length : selectionStart();
    for (const qsizetype at : {text().size(), qsizetype{0}}) {
      setCursorPosition(static_cast<int>(at));
      QLineEdit::paintEvent(event);
    }
    setCursorPosition(caret);
    if (length > 0) setSelection(anchor, caret - anchor);
  }

  // The text gets the room of the letters that are seen of it, the dots the rest.
  void Fit() {
    const QFontMetrics metrics = fontMetrics();
    const QRect area = TextArea();
    QString seen;
    if (IsCut()) seen = metrics.elidedText(text(), Qt::ElideRight, area.width());
    if (seen.endsWith(kDots)) seen.chop(kDots.size());
    shown_right_ = area.left() + metrics.horizontalAdvance(seen);
    const int right = seen.isEmpty() ? 0 : Inside().right() + 1 - shown_right_;
    if (right != textMargins().right()) setTextMargins(0, 0, right, 0);
  }

  int shown_right_ = 0;  // where the letters end that are seen of a text that is cut
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
      const int caret = View()->cursorPosition();
      View()->setText(text);
      View()->setCursorPosition(View()->hasFocus() ? qMin(caret, static_cast<int>(text.size())) : 0);
      marked_ = false;
    }
    if (marks_ == box_.SelectAllCount()) return;
    marks_ = box_.SelectAllCount();
    marked_ = true;
    View()->MarkAll();
  }

  // It binds typing: what the program has set may be longer, and then takes no more letters. Qt sets the text
  // anew with the limit, and with that the caret to the end.
  void PushLimit() {
    const int most = box_.MaxLength() > 0 ? box_.MaxLength() : kNoLimit;
    const int limit = qMax(most, static_cast<int>(ToQt(box_.Text()).size()));
    if (View()->maxLength() == limit) return;
    const int caret = View()->cursorPosition();
    View()->setMaxLength(limit);
    View()->setCursorPosition(caret);
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
    if (marked_) View()->MarkAll();
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

// SPDX-License-Identifier: GPL-3.0-or-later
#include "tour/hands.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QtTest/QTest>

#include "desktop/qt_text.h"

namespace vlt::test {
namespace {

constexpr int kLookMs = 5;

template <class T>
T& As(QWidget& widget) {
  if (auto* cast = dynamic_cast<T*>(&widget)) return *cast;
  throw Trouble("another kind of widget: " + FromQt(widget.objectName()));
}

}  // namespace

bool WaitFor(const std::function<bool()>& condition, int ms) { return QTest::qWaitFor(condition, ms); }

void ForgetEnd() {
  // Only the start of the application's loop clears it.
  QTimer::singleShot(0, QCoreApplication::instance(), [] { QCoreApplication::exit(0); });
  QApplication::exec();
}

QWidget& Hands::Window(const std::string& form) {
  FormView* view = nullptr;
  const bool shown = WaitFor([&] {
    view = desktop_.View(form);
    return view != nullptr && view->Root() != nullptr && view->Root()->isVisible();
  });
  if (!shown) throw Trouble("no window " + form);
  return *view->Root();
}

QWidget& Hands::Widget(const std::string& form, const std::string& control) {
  QWidget& window = Window(form);
  desktop_.Flush();
  auto* widget = window.findChild<QWidget*>(ToQt(control));
  if (widget == nullptr) throw Trouble("no widget " + form + "." + control);
  return *widget;
}

QWidget& Hands::Reachable(const std::string& form, const std::string& control) {
  QWidget& widget = Widget(form, control);
  if (!widget.isVisible()) throw Trouble("not to be seen: " + form + "." + control);
  if (!widget.isEnabled()) throw Trouble("disabled: " + form + "." + control);
  QWidget& window = *widget.window();
  if (!window.isActiveWindow()) {
    window.activateWindow();
    WaitFor([&] { return window.isActiveWindow(); }, 1000);
  }
  return widget;
}

void Hands::Click(const std::string& form, const std::string& control) {
  QWidget& widget = Reachable(form, control);
  // The sign of a box or option lies at the left of its widget.
  const bool has_sign = dynamic_cast<QAbstractButton*>(&widget) != nullptr &&
                        dynamic_cast<QAbstractButton&>(widget).isCheckable();
  const QPoint at = has_sign ? QPoint(8, widget.height() / 2) : widget.rect().center();
  QTest::mouseClick(&widget, Qt::LeftButton, {}, at);
}

void Hands::Tick(const std::string& form, const std::string& control, bool on) {
  if (Ticked(form, control) != on) Click(form, control);
  if (Ticked(form, control) != on) throw Trouble("does not take the tick: " + form + "." + control);
}

void Hands::Type(const std::string& form, const std::string& control, const std::string& text) {
  auto& field = As<QLineEdit>(Reachable(form, control));
  QTest::mouseClick(&field, Qt::LeftButton);
  QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&field, Qt::Key_Delete);
  for (const QChar letter : ToQt(text)) {
    if (letter.unicode() < 0x80) {
      QTest::keyClick(&field, letter.toLatin1());
      continue;
    }
    // Other letters come from an input method.
    QInputMethodEvent event;
    event.setCommitString(letter);
    QApplication::sendEvent(&field, &event);
  }
}

void Hands::Choose(const std::string& form, const std::string& control, int index) {
  auto& list = As<QComboBox>(Reachable(form, control));
  QTest::mouseClick(&list, Qt::LeftButton);
  QAbstractItemView& view = *list.view();
  if (!WaitFor([&] { return view.isVisible(); })) throw Trouble("the list stays closed: " + control);
  const QModelIndex entry = view.model()->index(index, 0);
  view.scrollTo(entry);
  // The popup takes no click within the double click's time after it was opened.
  view.setCurrentIndex(entry);
  QTest::keyClick(&view, Qt::Key_Return);
}

void Hands::SelectTab(const std::string& form, const std::string& control, int tab) {
  QTabBar& bar = *As<QTabWidget>(Reachable(form, control)).tabBar();
  QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(tab).center());
}

void Hands::Menu(const std::string& form, const std::string& item) {
  auto* action = Window(form).findChild<QAction*>(ToQt(item));
  if (action == nullptr || !action->isEnabled()) throw Trouble("no menu " + item);
  action->trigger();
}

void Hands::Key(const std::string& form, const std::string& keys) {
  QWidget& window = *Window(form).window();
  window.activateWindow();
  QTest::keySequence(&window, QKeySequence(ToQt(keys)));
}

std::string Hands::Text(const std::string& form, const std::string& control) {
  QWidget& widget = Widget(form, control);
  if (auto* field = dynamic_cast<QLineEdit*>(&widget)) return FromQt(field->text());
  if (auto* list = dynamic_cast<QComboBox*>(&widget)) return FromQt(list->currentText());
  if (auto* label = dynamic_cast<QLabel*>(&widget)) return FromQt(label->text());
  if (auto* box = dynamic_cast<QGroupBox*>(&widget)) return FromQt(box->title());
  return FromQt(As<QAbstractButton>(widget).text());
}

bool Hands::Ticked(const std::string& form, const std::string& control) {
  return As<QAbstractButton>(Widget(form, control)).isChecked();
}

bool Hands::Enabled(const std::string& form, const std::string& control) {
  return Widget(form, control).isEnabled();
}

std::string Hands::Panel(const std::string& form, const std::string& control, int number) {
  const auto* panel = Widget(form, control).findChild<QLabel*>(QString("panel%1").arg(number));
  // A panel that had to cut its text holds it in the tooltip.
  return FromQt(panel->toolTip().isEmpty() ? panel->text() : panel->toolTip());
}

Lookout::Lookout() {
  connect(&timer_, &QTimer::timeout, this, [this] { Look(); });
  timer_.start(kLookMs);
}

void Lookout::Look() {
  if (watches_.empty() || !watches_.front().condition()) return;
  const std::function<void()> action = std::move(watches_.front().action);
  watches_.pop_front();
  action();
}

BoxAnswers::BoxAnswers() {
  connect(&timer_, &QTimer::timeout, this, [this] { Look(); });
  timer_.start(kLookMs);
}

void BoxAnswers::Lay(const std::string& text, bool first) { laid_.push_back({text, first}); }

void BoxAnswers::Look() {
  QWidget* modal = QApplication::activeModalWidget();
  if (modal == nullptr || !modal->isVisible() || answering_) return;
  // As an event of its own: an answer may bring up the next box, and a timer does not fire inside itself.
  answering_ = true;
  QMetaObject::invokeMethod(
      this, [this, box = QPointer<QWidget>(modal)] { Answer(box); }, Qt::QueuedConnection);
}

void BoxAnswers::Answer(QWidget* modal) {
  answering_ = false;
  if (auto* box = qobject_cast<QMessageBox*>(modal)) {
    AnswerBox(*box);
  } else if (qobject_cast<QFileDialog*>(modal) != nullptr) {
    AnswerFileDialog(*modal);
  }
}

void BoxAnswers::AnswerBox(QMessageBox& box) {
  const std::string text = FromQt(box.text());
  seen.push_back(text);
  if (on_box) on_box(box);
  LaidAnswer answer{"", false};
  if (laid_.empty()) {
    trouble.push_back("a box that was not expected: " + text);
  } else {
    answer = laid_.front();
    laid_.pop_front();
  }
  if (!answer.text.empty() && answer.text != text) {
    trouble.push_back("a box says \"" + text + "\" instead of \"" + answer.text + "\"");
  }
  QAbstractButton* button = box.escapeButton();
  for (auto standard : {QMessageBox::Ok, QMessageBox::Yes}) {
    if (answer.first && box.button(standard) != nullptr) button = box.button(standard);
  }
  QTest::mouseClick(button, Qt::LeftButton);
}

void BoxAnswers::AnswerFileDialog(QWidget& dialog) {
  if (on_box) on_box(dialog);
  std::string path;
  if (files_.empty()) {
    trouble.push_back("a file dialog that was not expected");
  } else {
    path = files_.front();
    files_.pop_front();
  }
  auto* buttons = dialog.findChild<QDialogButtonBox*>("buttonBox");
  const bool save = static_cast<QFileDialog&>(dialog).acceptMode() == QFileDialog::AcceptSave;
  QPushButton* button = buttons->button(QDialogButtonBox::Cancel);
  if (!path.empty()) {
    dialog.findChild<QLineEdit*>("fileNameEdit")->setText(ToQt(path));
    button = buttons->button(save ? QDialogButtonBox::Save : QDialogButtonBox::Open);
  }
  QTest::mouseClick(button, Qt::LeftButton);
}

}  // namespace vlt::test

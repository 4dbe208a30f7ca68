// SPDX-License-Identifier: GPL-3.0-or-later
// Check boxes, option buttons and lists.
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QStyleOptionComboBox>
#include <vector>

#include "desktop/binding_kinds.h"
#include "desktop/qt_text.h"

namespace vlt {
namespace {

constexpr int kVisibleEntries = 20;

class CheckBoxBinding : public Binding {
 public:
  CheckBoxBinding(CheckBox& box, BindContext& context, QWidget* parent)
      : Binding(box, context, new QCheckBox(parent)), box_(box) {
    connect(View(), &QCheckBox::clicked, this,
            [this](bool ticked) { Gesture([&] { ticked ? box_.Tick() : box_.Untick(); }); });
  }

 private:
  QCheckBox* View() const { return static_cast<QCheckBox*>(Widget()); }
  void PushState() override {
    View()->setText(WidgetCaption(box_.Caption()));
    View()->setChecked(box_.Ticked());
  }
  CheckBox& box_;
};

// The options of a group exclude each other in the logic; the widgets only show it.
class OptionBinding : public Binding {
 public:
  OptionBinding(OptionButton& option, BindContext& context, QWidget* parent)
      : Binding(option, context, new QRadioButton(parent)), option_(option) {
    View()->setAutoExclusive(false);
    View()->installEventFilter(this);
    connect(View(), &QRadioButton::clicked, this, [this] { Gesture([this] { option_.Choose(); }); });
  }

 private:
  QRadioButton* View() const { return static_cast<QRadioButton*>(Widget()); }
  void PushState() override {
    View()->setText(WidgetCaption(option_.Caption()));
    View()->setChecked(option_.Value());
  }

  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::KeyPress || Detached()) return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Down || key == Qt::Key_Right) return GoTo(1);
    if (key == Qt::Key_Up || key == Qt::Key_Left) return GoTo(-1);
    return false;
  }

  // Chooses the next option of the group that can be chosen, round about.
  bool GoTo(int step) {
    std::vector<OptionButton*> group;
    for (Control* control : option_.Owner().Controls()) {
      if (control->Kind() != ControlKind::kOptionButton) continue;
      auto* option = static_cast<OptionButton*>(control);
      if (option->Group() == option_.Group()) group.push_back(option);
    }
    const int count = static_cast<int>(group.size());
    int at = 0;
    while (group[static_cast<std::size_t>(at)] != &option_) ++at;
    for (int i = 1; i < count; ++i) {
      OptionButton& next = *group[static_cast<std::size_t>((at + count + step * i) % count)];
      if (!next.Enabled() || !next.Visible()) continue;
      Gesture([&] { next.Choose(); });
      if (next.Value()) MoveFocus(next);
      break;
    }
    return true;
  }

  void MoveFocus(const OptionButton& option) {
    QWidget* other = View()->window()->findChild<QWidget*>(ToQt(option.FullName()));
    if (other != nullptr) other->setFocus(Qt::OtherFocusReason);
  }

  OptionButton& option_;
};

class ComboBoxBinding : public Binding {
 public:
  ComboBoxBinding(ComboBox& list, BindContext& context, QWidget* parent)
      : Binding(list, context, new QComboBox(parent)), list_(list) {
    View()->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    View()->setMaxVisibleItems(kVisibleEntries);
    // The wheel scrolls the page, not a list that the pointer happens to lie on.
    View()->setFocusPolicy(Qt::StrongFocus);
    View()->installEventFilter(this);
    connect(View(), &QComboBox::activated, this,
            [this](int index) { Gesture([&] { list_.Choose(index); }); });
  }

 private:
  QComboBox* View() const { return static_cast<QComboBox*>(Widget()); }

  void PushState() override {
    const QSignalBlocker quiet(View());
    if (shown_ != list_.Items()) {
      shown_ = list_.Items();
      View()->clear();
      for (const std::string& item : shown_) View()->addItem(ToQt(item));
    }
    View()->setCurrentIndex(list_.ListIndex());
  }

  QString CutText() const override {
    QStyleOptionComboBox box;
    box.initFrom(View());
    const QRect inside =
        View()->style()->subControlRect(QStyle::CC_ComboBox, &box, QStyle::SC_ComboBoxEditField, View());
    const QString text = View()->currentText();
    return View()->fontMetrics().horizontalAdvance(text) > inside.width() - 2 ? text : QString();
  }

  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Resize) MarkForRefresh();
    if (event->type() != QEvent::Wheel || View()->hasFocus()) return false;
    event->ignore();
    return true;
  }

  ComboBox& list_;
  std::vector<std::string> shown_;
};

}  // namespace

std::unique_ptr<Binding> BindCheckBox(Control& control, BindContext& context, QWidget* parent) {
  return std::make_unique<CheckBoxBinding>(static_cast<CheckBox&>(control), context, parent);
}

std::unique_ptr<Binding> BindOptionButton(Control& control, BindContext& context, QWidget* parent) {
  return std::make_unique<OptionBinding>(static_cast<OptionButton&>(control), context, parent);
}

std::unique_ptr<Binding> BindComboBox(Control& control, BindContext& context, QWidget* parent) {
  return std::make_unique<ComboBoxBinding>(static_cast<ComboBox&>(control), context, parent);
}

}  // namespace vlt

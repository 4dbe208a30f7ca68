// SPDX-License-Identifier: GPL-3.0-or-later
// Push buttons, up-down buttons and tabs.
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "desktop/binding_kinds.h"
#include "desktop/colours.h"
#include "desktop/qt_text.h"

namespace vlt {
namespace {

class PushButtonBinding : public Binding {
 public:
  PushButtonBinding(PushButton& button, BindContext& context, QWidget* parent)
      : Binding(button, context, new QPushButton(parent)), button_(button) {
    View()->setAutoDefault(true);  // the enter key presses it while it has the focus
    connect(View(), &QPushButton::clicked, this, [this] {
      if (Context().gate.TakeFocus(View())) Gesture([this] { button_.Press(); });
    });
  }

  void SetMnemonic(QChar letter) override {
    mnemonic_ = letter;
    MarkForRefresh();
  }

 private:
  QPushButton* View() const { return static_cast<QPushButton*>(Widget()); }

  void PushState() override {
    const QString text = MarkedCaption();
    // Setting the text again would also bring back a mnemonic that Qt has found in it.
    if (View()->text() != text) View()->setText(text);
    if (shown_colour_ == button_.BackColour()) return;
    shown_colour_ = button_.BackColour();
    PushColour();
  }

  void PushColour() { View()->setPalette(OnColour(shown_colour_, QPalette::Button, QPalette::ButtonText)); }

  // The mnemonic marks the first such letter, else it stands behind the caption between parentheses.
  QString MarkedCaption() const {
    QString text = PlainCaption(button_.Caption());
    qsizetype at = mnemonic_.isNull() ? -1 : text.indexOf(mnemonic_, 0, Qt::CaseInsensitive);
    if (!mnemonic_.isNull() && at < 0) {
      at = text.size() + 1;
      text += QString("(%1)").arg(mnemonic_.toUpper());
    }
    if (at < 0) return text.replace('&', "&&");
    return text.left(at).replace('&', "&&") + '&' + text.mid(at).replace('&', "&&");
  }

  PushButton& button_;
  QChar mnemonic_;
  unsigned shown_colour_ = kButtonFaceColour;
};

class UpDownBinding : public Binding {
 public:
  UpDownBinding(UpDown& control, BindContext& context, QWidget* parent)
      : Binding(control, context, new QWidget(parent)) {
    auto* layout = new QVBoxLayout(Widget());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    AddArrow(Qt::UpArrow, "up", [&control] { control.Up(); });
    AddArrow(Qt::DownArrow, "down", [&control] { control.Down(); });
  }

 private:
  void AddArrow(Qt::ArrowType arrow, const char* name, std::function<void()> step) {
    auto* button = new QToolButton(Widget());
    button->setObjectName(name);
    button->setArrowType(arrow);
    button->setAutoRepeat(true);
    button->setIconSize(QSize(10, 7));
    button->setFixedSize(22, 14);
    Widget()->layout()->addWidget(button);
    connect(button, &QToolButton::clicked, this, [this, button, step = std::move(step)] {
      if (Context().gate.TakeFocus(button)) Gesture(step);
    });
  }
  void PushState() override {}
};

// The builder fills the pages; here only captions, states and the choice are bound.
class TabBinding : public Binding {
 public:
  TabBinding(TabControl& tabs, BindContext& context, QWidget* parent)
      : Binding(tabs, context, new QTabWidget(parent)), tabs_(tabs) {
    // A click on a tab leaves a text field as a click on a button does.
    View()->tabBar()->setFocusPolicy(Qt::StrongFocus);
    for (int i = 0; i < tabs.Count(); ++i) View()->addTab(new QWidget(View()), QString());
    connect(View(), &QTabWidget::currentChanged, this,
            [this](int tab) { Gesture([&] { tabs_.Select(tab); }); });
  }

 private:
  QTabWidget* View() const { return static_cast<QTabWidget*>(Widget()); }
  void PushState() override {
    const QSignalBlocker quiet(View());
    for (int i = 0; i < tabs_.Count(); ++i) {
      const QString caption = WidgetCaption(tabs_.TabCaption(i));
      if (View()->tabText(i) != caption) View()->setTabText(i, caption);
      View()->setTabEnabled(i, tabs_.TabEnabled(i));
    }
    View()->setCurrentIndex(tabs_.Tab());
  }
  TabControl& tabs_;
};

}  // namespace

std::unique_ptr<Binding> BindPushButton(Control& control, BindContext& context, QWidget* parent) {
  return std::make_unique<PushButtonBinding>(static_cast<PushButton&>(control), context, parent);
}

std::unique_ptr<Binding> BindUpDown(Control& control, BindContext& context, QWidget* parent) {
  return std::make_unique<UpDownBinding>(static_cast<UpDown&>(control), context, parent);
}

std::unique_ptr<Binding> BindTabControl(Control& control, BindContext& context, QWidget* parent) {
  return std::make_unique<TabBinding>(static_cast<TabControl&>(control), context, parent);
}

}  // namespace vlt

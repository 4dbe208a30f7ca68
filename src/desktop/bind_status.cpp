// SPDX-License-Identifier: GPL-3.0-or-later
// Status bars.
#include <QHBoxLayout>
#include <QLabel>
#include <QResizeEvent>
#include <vector>

#include "desktop/binding_kinds.h"
#include "desktop/qt_text.h"

namespace vlt {
namespace {

constexpr int kPanelMargin = 6;  // between the frame of a panel and its text

// One panel: a text that gives way to dots when it has no room, and then shows whole in a tooltip.
class Panel : public QLabel {
 public:
  using QLabel::QLabel;
  void SetText(const QString& text) {
    text_ = text;
    Elide();
  }
  QString FullText() const { return text_; }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QLabel::resizeEvent(event);
    Elide();
  }

 private:
  void Elide() {
    const QString line = QString(text_).replace('\n', ' ');
    const QString shown =
        fontMetrics().elidedText(line, Qt::ElideRight, contentsRect().width() - 2 * kPanelMargin);
    setText(shown);
    setToolTip(shown == line ? QString() : text_);
  }
  QString text_;
};

class StatusBarBinding : public Binding {
 public:
  StatusBarBinding(StatusBar& bar, BindContext& context, QWidget* parent)
      : Binding(bar, context, new QWidget(parent)), bar_(bar) {
    auto* layout = new QHBoxLayout(Widget());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    for (int number = 1; number <= bar.PanelCount(); ++number) AddPanel(layout, number);
  }

 private:
  void AddPanel(QHBoxLayout* layout, int number) {
    auto* panel = new Panel(Widget());
    panel->setObjectName(QString("panel%1").arg(number));
    panel->setTextFormat(Qt::PlainText);
    panel->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    panel->setMargin(kPanelMargin / 2);
    panel->setIndent(kPanelMargin / 2);
    if (number == 1) {
      // Its text must never widen the window.
      panel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    } else {
      panel->setAlignment(Qt::AlignCenter);
    }
    layout->addWidget(panel, number == 1 ? 1 : 0);
    panels_.push_back(panel);
  }

  void PushState() override {
    for (std::size_t i = 0; i < panels_.size(); ++i) {
      const QString text = ToQt(bar_.Panel(static_cast<int>(i) + 1));
      if (i > 0) FitPanel(*panels_[i], text);
      if (panels_[i]->FullText() != text) panels_[i]->SetText(text);
    }
  }

  // The short panels never shrink, so that the bar stands still.
  void FitPanel(Panel& panel, const QString& text) {
    const int margins = 2 * (kPanelMargin + panel.frameWidth()) + 2;
    panel.setMinimumWidth(qMax(panel.minimumWidth(), panel.fontMetrics().horizontalAdvance(text) + margins));
  }

  StatusBar& bar_;
  std::vector<Panel*> panels_;
};

}  // namespace

std::unique_ptr<Binding> BindStatusBar(Control& control, BindContext& context, QWidget* parent) {
  return std::make_unique<StatusBarBinding>(static_cast<StatusBar&>(control), context, parent);
}

}  // namespace vlt

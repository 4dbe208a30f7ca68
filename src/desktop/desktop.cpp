// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/desktop.h"

#include <QApplication>
#include <QLabel>
#include <QStackedWidget>

#include "desktop/fonts.h"
#include "desktop/qt_text.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "state/app.h"

namespace vlt {

Desktop::Desktop(Windows& windows, Texts texts, Layouts layouts)
    : windows_(windows),
      context_{{refresh_, gate_, texts},
               std::move(layouts),
               std::move(texts),
               [this](const std::string& form) { Close(form); },
               [this] { ArrangePages(); },
               [this] { return FrameView() == nullptr ? QSet<QChar>() : FrameView()->MenuLetters(); },
               [this] { return FrameWidget(); },
               {}} {
  windows_.SetObserver({[this](Form& form) { Loaded(form); }, [this](Form& form) { Unloaded(form); },
                        [this] { PointerChanged(); },
                        [this](const std::string& what) { TellFailure(what); }});
  gate_.on_idle = [this] {
    if (!gone_.empty())
      QMetaObject::invokeMethod(
          this, [this] { Sweep(); }, Qt::QueuedConnection);
  };
}

Desktop::~Desktop() {
  windows_.SetObserver({});
  if (hourglass_) QGuiApplication::restoreOverrideCursor();
}

FormView* Desktop::View(std::string_view form) const {
  const Form* found = windows_.Find(form);
  const auto at = views_.find(found);
  return found == nullptr || at == views_.end() ? nullptr : at->second.get();
}

void Desktop::Loaded(Form& form) { views_[&form] = std::make_unique<FormView>(form, context_); }

void Desktop::Unloaded(Form& form) {
  const auto at = views_.find(&form);
  if (at == views_.end()) return;
  if (form.Visible()) at->second->KeepPlace();
  at->second->Detach();
  gone_.push_back(std::move(at->second));
  views_.erase(at);
  ArrangePages();
  QMetaObject::invokeMethod(
      this,
      [this] {
        Sweep();
        EndWhenEmpty();
      },
      Qt::QueuedConnection);
}

void Desktop::Sweep() {
  if (gate_.Idle()) gone_.clear();
}

void Desktop::EndWhenEmpty() {
  if (windows_.Open().empty()) windows_.Machine().events.EndProcess();
}

void Desktop::PointerChanged() {
  const bool hourglass = windows_.MousePointer() == kHourglassPointer;
  if (hourglass == hourglass_) return;
  hourglass_ = hourglass;
  if (hourglass) {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  } else {
    QGuiApplication::restoreOverrideCursor();
  }
}

void Desktop::TellFailure(const std::string& what) {
  if (on_failure) on_failure(what);
  EndWhenEmpty();
}

void Desktop::Close(const std::string& form) {
  gate_.Run([&] { windows_.Run([&] { windows_.Unload(form); }); });
}

FormView* Desktop::FrameView() const {
  for (const auto& [form, view] : views_) {
    if (form->Place() == FormPlace::kFrame) return view.get();
  }
  return nullptr;
}

QWidget* Desktop::FrameWidget() const {
  const FormView* frame = FrameView();
  return frame == nullptr ? nullptr : frame->Root();
}

void Desktop::ArrangePages() {
  FormView* frame = FrameView();
  QStackedWidget* area = frame == nullptr ? nullptr : frame->PageArea();
  if (area == nullptr) return;
  QWidget* top = area->widget(0);  // what is shown while no page is open
  QString title = ToQt(frame->Shown().Caption());
  for (Form* page : windows_.VisiblePages()) {
    FormView& view = *views_.at(page);
    view.Build();
    if (area->indexOf(view.Root()) < 0) area->addWidget(view.Root());
    top = view.Root();
  }
  area->setCurrentWidget(top);
  const QString page = top == area->widget(0) ? QString() : top->windowTitle();
  if (!page.isEmpty()) title += " - [" + page + "]";
  frame->PageTitle()->setFont(HeadingFont());
  frame->PageTitle()->setText(page);
  frame->PageTitle()->setVisible(!page.isEmpty());
  frame->Root()->setWindowTitle(title);
}

}  // namespace vlt

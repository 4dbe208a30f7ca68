// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/form_view.h"

#include <QEvent>
#include <QGuiApplication>
#include <QLayout>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QWindow>

#include "desktop/keys.h"
#include "desktop/qt_text.h"

namespace vlt {
namespace {

constexpr QSize kFrameSize(1280, 800);
constexpr QSize kSmallestFrame(900, 560);
constexpr int kSmallestDialog = 280;
constexpr QSize kWorkshopSize(1240, 690);
constexpr QSize kWindowTrim(24, 60);  // that the system puts around a window, with some room to spare
constexpr int kPageMargin = 8;

WindowStyle StyleOf(const Form& form, const WindowLayout* layout) {
  if (layout != nullptr) return layout->style;
  switch (form.Place()) {
    case FormPlace::kPage:
      return WindowStyle::kPage;
    case FormPlace::kFrame:
      return WindowStyle::kFrame;
    default:
      return WindowStyle::kDialog;
  }
}

void PutInTheMiddle(QWidget& window, const QWidget* over) {
  const QRect place = over != nullptr && over->isVisible()
                          ? over->frameGeometry()
                          : QGuiApplication::primaryScreen()->availableGeometry();
  QRect frame = window.frameGeometry();
  frame.moveCenter(place.center());
  window.move(frame.topLeft());
}

// Widgets that were never shown don't tell their layouts that their fonts have changed; those of a tab behind
// others would get their room when it comes to the front, and the window another size.
void MeasureAgain(const QWidget& window) {
  for (QLayout* layout : window.findChildren<QLayout*>()) {
    for (int i = 0; i < layout->count(); ++i) layout->itemAt(i)->invalidate();
    layout->invalidate();
  }
}

// Light texts on the splash picture, dark or light system or not.
QPalette SplashPalette() {
  QPalette palette;
  palette.setColor(QPalette::WindowText, QColor(0xE8, 0xF4, 0xF7));
  return palette;
}

}  // namespace

FormView::FormView(Form& form, ViewContext& context) : form_(form), context_(context) {
  form_.Observe([this] {
    form_changed_ = true;
    context_.bind.refresh.Mark(*this);
  });
}

FormView::~FormView() {
  Detach();
  // Its widgets may be on the way up from an event.
  if (root_ != nullptr) root_->deleteLater();
}

void FormView::Detach() {
  if (detached_) return;
  detached_ = true;
  form_.Observe({});
  context_.bind.refresh.Forget(*this);
  for (const auto& binding : built_.bindings) binding->Detach();
  if (menu_ != nullptr) menu_->Detach();
  if (root_ != nullptr) root_->hide();
}

QSet<QChar> FormView::MenuLetters() const { return menu_ == nullptr ? QSet<QChar>() : menu_->Letters(); }

void FormView::Build() {
  if (root_ != nullptr) return;
  const WindowLayout* layout = context_.layouts(form_.Name());
  const WindowStyle style = StyleOf(form_, layout);
  MakeRoot(style);
  Builder builder(form_, context_.bind, context_.text);
  built_ = builder.Build(layout != nullptr ? layout->items : std::span<const LayoutItem>(), content_);
  if (IsPage()) FramePage();
  if (style == WindowStyle::kDialog) {
    static_cast<QVBoxLayout*>(content_->layout())->addStrut(kSmallestDialog);
    content_->layout()->setSizeConstraint(QLayout::SetFixedSize);
    if (auto* bar = content_->findChild<QMenuBar*>(QString(), Qt::FindDirectChildrenOnly)) {
      content_->layout()->setMenuBar(bar);
    }
  }
  for (const auto& binding : built_.bindings) {
    binding->on_size_change = [this] {
      arranged_ = false;
      context_.bind.refresh.Mark(*this);
    };
  }
  AddShortCuts(layout);
  root_->setObjectName(ToQt(form_.Name()));
  root_->installEventFilter(this);
}

void FormView::MakeRoot(WindowStyle style) {
  content_ = new QWidget;
  switch (style) {
    case WindowStyle::kPage: {
      auto* scroll = new QScrollArea;
      scroll->setFrameShape(QFrame::NoFrame);
      scroll->setWidgetResizable(true);
      scroll->setWidget(content_);
      root_ = scroll;
      break;
    }
    case WindowStyle::kFrame: {
      auto* window = new QMainWindow;
      window->setCentralWidget(content_);
      root_ = window;
      break;
    }
    case WindowStyle::kTool:
      content_->setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                               Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint);
      root_ = content_;
      break;
    case WindowStyle::kDialog:
    case WindowStyle::kWorkshop:
      content_->setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                               Qt::WindowCloseButtonHint);
      if (style == WindowStyle::kWorkshop) content_->setWindowFlag(Qt::WindowMaximizeButtonHint);
      root_ = content_;
      break;
    case WindowStyle::kSplash:
      content_->setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
      content_->setPalette(SplashPalette());
      root_ = content_;
      break;
  }
  if (form_.Place() == FormPlace::kOnTop) root_->setWindowFlag(Qt::WindowStaysOnTopHint);
  if (!MenuView::HasMenu(form_)) return;
  auto* bar = new QMenuBar(root_);
  menu_ = std::make_unique<MenuView>(form_, context_.bind, bar);
  if (auto* window = qobject_cast<QMainWindow*>(root_.data())) window->setMenuBar(bar);
}

// Every page lies in a frame: that of its tabs, else one of its own.
void FormView::FramePage() {
  if (content_->findChild<QTabWidget*>(QString(), Qt::FindDirectChildrenOnly) != nullptr) {
    content_->layout()->setContentsMargins(0, 0, 0, 0);
  } else if (auto* scroll = qobject_cast<QScrollArea*>(root_.data())) {
    scroll->setFrameShape(QFrame::StyledPanel);
    content_->layout()->setContentsMargins(kPageMargin, kPageMargin, kPageMargin, kPageMargin);
  }
}

void FormView::AddShortCuts(const WindowLayout* layout) {
  for (const auto& binding : built_.bindings) {
    if (binding->Bound().Kind() != ControlKind::kPushButton) continue;
    const std::string& name = binding->Bound().Name();
    const QKeySequence keys = ShortCutOf(form_.Name(), name);
    if (!keys.isEmpty()) {
      BindKey(keys, binding->Widget());
      binding->SetKeys(keys.toString(QKeySequence::NativeText));
    }
    if (layout == nullptr) continue;
    if (name == layout->cancel) BindKey(QKeySequence(Qt::Key_Escape), binding->Widget());
    if (name != layout->accept) continue;
    BindKey(QKeySequence(Qt::Key_Return), binding->Widget());
    BindKey(QKeySequence(Qt::Key_Enter), binding->Widget());
  }
  if (layout == nullptr || !layout->enter_is_dead) return;
  // A short cut that leads nowhere takes the key before the button with the focus does.
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) new QShortcut(QKeySequence(key), root_);
}

void FormView::BindKey(const QKeySequence& keys, QWidget* button) {
  auto* push_button = static_cast<QPushButton*>(button);
  auto* short_cut = new QShortcut(keys, button);
  short_cut->setAutoRepeat(false);
  connect(short_cut, &QShortcut::activated, push_button, [push_button] { push_button->click(); });
}

void FormView::Refresh() {
  if (detached_) return;
  if (form_.Visible()) Build();
  if (root_ == nullptr) return;
  if (!arranged_) Rearrange();
  if (!form_changed_) return;
  form_changed_ = false;
  root_->setWindowTitle(ToQt(form_.Caption()));
  ShowOrHide();
  PushCloseCommand();
  ApplyFocus();
}

void FormView::Rearrange() {
  arranged_ = true;
  if (form_.Place() != FormPlace::kFrame) ChooseMnemonics();
  for (const AlignedGrids& grids : built_.aligned) AlignColumns(grids);
}

void FormView::ChooseMnemonics() {
  QSet<QChar> taken = IsPage() ? context_.menu_letters() : QSet<QChar>();
  for (const auto& binding : built_.bindings) {
    const Control& control = binding->Bound();
    if (control.Kind() != ControlKind::kPushButton || control.Caption().empty()) continue;
    binding->SetMnemonic(ChooseMnemonic(PlainCaption(control.Caption()), control.Name(), taken));
  }
}

void FormView::ShowOrHide() {
  if (IsPage()) {
    context_.pages_changed();
    return;
  }
  if (!form_.Visible()) {
    on_screen_ = false;
    root_->hide();
    return;
  }
  if (!on_screen_) Place(*root_);
  on_screen_ = true;
  root_->show();
  root_->raise();
  root_->activateWindow();
  if (form_.Place() == FormPlace::kFrame) context_.pages_changed();
}

void FormView::Place(QWidget& window) {
  if (form_.Place() == FormPlace::kFrame) {
    PlaceFrame(window);
    return;
  }
  // What its controls hold decides how large it is.
  context_.bind.refresh.Flush();
  MeasureAgain(window);
  window.adjustSize();
  const WindowLayout* layout = context_.layouts(form_.Name());
  if (StyleOf(form_, layout) == WindowStyle::kWorkshop) {
    const QSize room = QGuiApplication::primaryScreen()->availableGeometry().size() - kWindowTrim;
    window.resize(kWorkshopSize.boundedTo(room));
  }
  const QWidget* frame = context_.frame();
  PutInTheMiddle(window, frame);
  window.winId();
  if (frame != nullptr && frame->windowHandle() != nullptr) {
    window.windowHandle()->setTransientParent(frame->windowHandle());
  }
}

void FormView::PlaceFrame(QWidget& window) {
  QList<QRect> screens;
  for (const QScreen* screen : QGuiApplication::screens()) screens << screen->availableGeometry();
  const auto last = context_.place.last ? context_.place.last() : std::nullopt;
  const WindowPlace place = StartPlace(last, kFrameSize, screens);
  window.setMinimumSize(kSmallestFrame.boundedTo(place.area.size()));
  window.setGeometry(place.area);
  if (place.maximised) window.setWindowState(Qt::WindowMaximized);
}

void FormView::KeepPlace() const {
  if (root_ == nullptr || !context_.place.keep || form_.Place() != FormPlace::kFrame) return;
  const bool maximised = root_->isMaximized();
  context_.place.keep({maximised ? root_->normalGeometry() : root_->geometry(), maximised});
}

void FormView::PushCloseCommand() {
  // The window handle takes the flag while the window stays where it is.
  QWindow* handle = root_->isWindow() ? root_->windowHandle() : nullptr;
  if (handle == nullptr || handle->flags().testFlag(Qt::FramelessWindowHint)) return;
  if (handle->flags().testFlag(Qt::WindowCloseButtonHint) == form_.HasCloseCommand()) return;
  handle->setFlag(Qt::WindowCloseButtonHint, form_.HasCloseCommand());
}

void FormView::ApplyFocus() {
  if (focus_done_ == form_.FocusCount()) return;
  focus_done_ = form_.FocusCount();
  const Binding* binding = form_.Focused() == nullptr ? nullptr : Find(*form_.Focused());
  if (binding != nullptr && binding->Widget() != nullptr) binding->Widget()->setFocus(Qt::OtherFocusReason);
}

Binding* FormView::Find(const Control& control) const {
  for (const auto& binding : built_.bindings) {
    if (&binding->Bound() == &control) return binding.get();
  }
  return nullptr;
}

// An event as any other: behind it every window is brought up to date.
void FormView::CameToFront() {
  if (!detached_) context_.bind.gate.Run([this] { form_.RunHandler([] {}); });
}

bool FormView::eventFilter(QObject* watched, QEvent* event) {
  if (watched != root_) return false;
  if (event->type() == QEvent::WindowActivate) {
    QMetaObject::invokeMethod(this, &FormView::CameToFront, Qt::QueuedConnection);
  }
  if (event->type() != QEvent::Close) return false;
  // The logic decides; what it unloads goes from the screen by that.
  event->ignore();
  if (!detached_ && form_.HasCloseCommand()) context_.close(form_.Name());
  return true;
}

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
// One window on the screen: the widgets of one form, made when it is first shown.
#pragma once

#include <QPointer>
#include <QSet>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/builder.h"
#include "desktop/menu_view.h"
#include "desktop/window_place.h"
#include "window/form.h"

class QLabel;
class QStackedWidget;

namespace vlt {

// What a view needs of the desktop around it.
struct ViewContext {
  BindContext bind;
  std::function<const WindowLayout*(std::string_view)> layouts;
  std::function<QString(int)> text;
  std::function<void(const std::string& form)> close;  // a person asks to close the window
  std::function<void()> pages_changed;                 // a page was shown, hidden or brought to the front
  std::function<QSet<QChar>()> menu_letters;           // mnemonics that the menu bar has taken
  std::function<QWidget*()> frame;                     // the main window on the screen, or null
  PlaceKeeper place;                                   // of the main window
};

class FormView : public QObject, public Refreshable {
 public:
  FormView(Form& form, ViewContext& context);
  ~FormView() override;

  Form& Shown() const { return form_; }
  // The outermost widget of the form; null until it was shown for the first time.
  QWidget* Root() const { return root_; }
  // The frame's place for pages; null for other windows.
  QStackedWidget* PageArea() const { return built_.page_area; }
  // The line above it that names the page on top.
  QLabel* PageTitle() const { return built_.page_title; }
  const BuiltWindow& Built() const { return built_; }
  // Mnemonics that its menu bar has taken.
  QSet<QChar> MenuLetters() const;

  // Makes the widgets if they are not there yet.
  void Build();
  // The main window goes for good: its place is kept.
  void KeepPlace() const;
  // The form is about to go: hides the window and lets go of the form.
  void Detach();

  void Refresh() override;

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void CameToFront();
  void MakeRoot(WindowStyle style);
  void FramePage();
  void AddShortCuts(const WindowLayout* layout);
  // The keys press the button while it can be pressed.
  void BindKey(const QKeySequence& keys, QWidget* button);
  void ChooseMnemonics();
  void Rearrange();
  void ShowOrHide();
  void Place(QWidget& window);
  void PlaceFrame(QWidget& window);
  void PushCloseCommand();
  void ApplyFocus();
  Binding* Find(const Control& control) const;
  bool IsPage() const { return form_.Place() == FormPlace::kPage; }

  Form& form_;
  ViewContext& context_;
  QPointer<QWidget> root_;
  QWidget* content_ = nullptr;  // what the builder fills
  BuiltWindow built_;
  std::unique_ptr<MenuView> menu_;
  int focus_done_ = 0;
  bool form_changed_ = true;
  bool arranged_ = false;
  bool on_screen_ = false;
  bool detached_ = false;
};

}  // namespace vlt

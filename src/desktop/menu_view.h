// SPDX-License-Identifier: GPL-3.0-or-later
// The menu items of a form as a menu bar.
#pragma once

#include <QChar>
#include <QObject>
#include <QSet>
#include <vector>

#include "desktop/binding.h"

class QAction;
class QMenuBar;

namespace vlt {

class Form;

class MenuView : public QObject, public Refreshable {
 public:
  // Fills `bar` with the menu items of `form`, in their order.
  MenuView(Form& form, BindContext& context, QMenuBar* bar);
  ~MenuView() override;

  static bool HasMenu(const Form& form);
  // Mnemonics of the menus that lie in the bar.
  const QSet<QChar>& Letters() const { return letters_; }
  // The items are about to go.
  void Detach();
  void Refresh() override;

 private:
  struct Entry {
    MenuItem* item;
    QAction* action;
  };
  void Add(MenuItem& item, QMenuBar* bar);
  QAction* ActionOf(const MenuItem* item) const;

  BindContext& context_;
  std::vector<Entry> entries_;
  QSet<QChar> letters_;
  bool detached_ = false;
};

}  // namespace vlt

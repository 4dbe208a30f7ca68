// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/menu_view.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <algorithm>
#include <map>

#include "desktop/keys.h"
#include "desktop/qt_text.h"
#include "window/form.h"

namespace vlt {
namespace {

bool IsParent(const ControlOwner& form, const MenuItem& item) {
  return std::any_of(form.Controls().begin(), form.Controls().end(), [&](const Control* control) {
    return control->Kind() == ControlKind::kMenuItem &&
           static_cast<const MenuItem*>(control)->Parent() == &item;
  });
}

// A menu opens as long as there is something to choose in it.
bool HasUsableItem(const MenuItem& menu) {
  const auto& controls = menu.Owner().Controls();
  return std::any_of(controls.begin(), controls.end(), [&](const Control* control) {
    if (control->Kind() != ControlKind::kMenuItem) return false;
    const auto* item = static_cast<const MenuItem*>(control);
    return item->Parent() == &menu && item->Usable();
  });
}

QString Marked(const QString& caption, QChar letter) {
  QString text = caption;
  text.replace('&', "&&");
  const qsizetype at = letter.isNull() ? -1 : text.indexOf(letter, 0, Qt::CaseInsensitive);
  if (at >= 0) return text.insert(at, '&');
  return letter.isNull() ? text : text + QString("(&%1)").arg(letter.toUpper());
}

}  // namespace

bool MenuView::HasMenu(const Form& form) {
  return std::any_of(form.Controls().begin(), form.Controls().end(),
                     [](const Control* control) { return control->Kind() == ControlKind::kMenuItem; });
}

MenuView::MenuView(Form& form, BindContext& context, QMenuBar* bar) : context_(context) {
  for (Control* control : form.Controls()) {
    if (control->Kind() == ControlKind::kMenuItem) Add(static_cast<MenuItem&>(*control), bar);
  }
  context_.refresh.Mark(*this);
}

MenuView::~MenuView() { Detach(); }

void MenuView::Detach() {
  if (detached_) return;
  detached_ = true;
  context_.refresh.Forget(*this);
  for (const Entry& entry : entries_) entry.item->Observe({});
}

void MenuView::Add(MenuItem& item, QMenuBar* bar) {
  QAction* parent = ActionOf(item.Parent());
  QWidget* place = parent != nullptr ? static_cast<QWidget*>(parent->menu()) : bar;
  QAction* action = nullptr;
  if (IsParent(item.Owner(), item)) {
    action = (new QMenu(bar))->menuAction();
    place->addAction(action);
  } else {
    action = new QAction(place);
    place->addAction(action);
    connect(action, &QAction::triggered, this, [this, &item] {
      if (!detached_) context_.gate.Run([&] { item.Press(); });
    });
  }
  action->setObjectName(ToQt(item.Name()));
  entries_.push_back({&item, action});
  item.Observe([this] { context_.refresh.Mark(*this); });
}

QAction* MenuView::ActionOf(const MenuItem* item) const {
  const auto found =
      std::find_if(entries_.begin(), entries_.end(), [&](const Entry& e) { return e.item == item; });
  return found == entries_.end() ? nullptr : found->action;
}

void MenuView::Refresh() {
  std::map<const MenuItem*, QSet<QChar>> taken;  // by the menu that the items lie in
  for (const Entry& entry : entries_) {
    const QString caption = PlainCaption(entry.item->Caption());
    const QChar letter = ChooseMnemonic(caption, entry.item->Name(), taken[entry.item->Parent()]);
    entry.action->setText(Marked(caption, letter));
    entry.action->setEnabled(entry.item->Usable() || HasUsableItem(*entry.item));
    entry.action->setVisible(entry.item->Visible());
  }
  letters_ = taken[nullptr];
}

}  // namespace vlt

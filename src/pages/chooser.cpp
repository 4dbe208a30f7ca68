// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/chooser.h"

namespace vlt {

Chooser::Chooser(App& app, const ControlArray<OptionButton>& options, int SharedState::*kept,
                 std::function<void(int)> chosen)
    : app_(app), options_(options), kept_(kept) {
  options_.ForEach([&](OptionButton& option) {
    option.on_click = [this, &option, chosen] {
      if (app_.state.UiLocked) {
        Show();
      } else {
        chosen(option.Index());
      }
    };
  });
}

int Chooser::Index() const {
  const int index = app_.state.*kept_;
  return index > 0 && index < options_.Count() ? index : 0;
}

bool Chooser::Take(int index) {
  const bool other = index != Index();
  app_.state.*kept_ = index;
  return other;
}

void Chooser::EnableAll(bool all) const {
  options_.ForEach([&](OptionButton& option) { option.SetEnabled(all || option.Index() == 0); });
}

bool Chooser::Has(const Control& control) const {
  bool found = false;
  options_.ForEach([&](const OptionButton& option) { found = found || &option == &control; });
  return found;
}

}  // namespace vlt

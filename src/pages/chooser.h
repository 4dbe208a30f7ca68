// SPDX-License-Identifier: GPL-3.0-or-later
// The option buttons by which a page chooses the channel or output that it shows.
#pragma once

#include <functional>

#include "state/app.h"

namespace vlt {

class Chooser {
 public:
  // `kept` holds the choice between openings. `chosen` runs when an option is chosen, by the operator or by
  // Show; a running exchange goes on with what it began with, and the option goes back.
  Chooser(App& app, const ControlArray<OptionButton>& options, int SharedState::*kept,
          std::function<void(int)> chosen);

  // The kept choice; a file may name one that there is not, which counts as the first.
  int Index() const;
  // Stores a choice; true when it is another than before.
  bool Take(int index);
  // Sets the option of the kept choice.
  void Show() const { options_(Index()).SetValue(true); }
  bool IsEnabled() const { return options_(Index()).Enabled(); }
  // The first option, and with `all` the others.
  void EnableAll(bool all) const;
  bool Has(const Control& control) const;

 private:
  App& app_;
  const ControlArray<OptionButton>& options_;
  int SharedState::*kept_;
};

}  // namespace vlt

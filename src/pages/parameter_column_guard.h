// SPDX-License-Identifier: GPL-3.0-or-later
// No write under a stale unit or channel: before its first frame a set is held against the meter as it is. A
// value carries the unit that it was typed, read or kept for; where the meter has another one now, or lacks
// the channel or output, nothing at all is sent.
#pragma once

#include <string>
#include <vector>

#include "meter/facts.h"
#include "pages/parameter_column.h"

namespace vlt {

class SetGuard {
 public:
  SetGuard(App& app, ColumnRules& rules, const ParameterColumn& column)
      : app_(app), rules_(rules), column_(column) {}

  // What the writes of a plan rest on, but for what an earlier write of the same plan decides.
  FactSet Needs(const WritePlan& plan) const;
  // Asks the meter for it where it is not fresh. Otherwise why nothing may be sent, for the status line.
  std::string Ask(const FactSet& needs) const;
  // Why nothing may be sent to the meter as it is known now; the fields concerned are marked.
  std::string Judge(const WritePlan& plan) const;

 private:
  // Calls `action` with each field in turn, and the facts that the writes before it decide.
  template <class F>
  void ForEachField(const WritePlan& plan, F&& action) const;
  ParameterPlace PlaceOf(const Field& field) const;
  FactSet UnitFactsOf(const Field& field) const;
  std::string ReasonOf(const Field& field, const FactSet& decided) const;
  std::string PlaceReason(const Field& field, const FactSet& decided) const;
  std::string UnitReason(const Field& field, const FactSet& decided) const;
  std::string UnitOfMeter(const Field& field) const;

  App& app_;
  ColumnRules& rules_;
  const ParameterColumn& column_;
};

// Why a command for a channel or output may not be sent, for the status line; empty when it may. Asks what is
// not fresh. The port must be open and the interface locked.
std::string PlaceRefusal(App& app, const ParameterPlace& place);

}  // namespace vlt

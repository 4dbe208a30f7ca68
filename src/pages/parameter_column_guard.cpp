// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/parameter_column_guard.h"

#include <algorithm>
#include <iterator>

#include "meter/units.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_guard.h"

namespace vlt {
namespace {

bool Overlap(const FactSet& a, const FactSet& b) {
  return std::any_of(a.begin(), a.end(), [&](const FactPlace& fact) { return b.contains(fact); });
}

// What a person calls the place that a meter lacks.
std::string NameOfPlace(const App& app, const ParameterPlace& place) {
  std::string name = place.index > 0 ? PlaceName(*place.row, place.index) : std::string();
  if (!name.empty()) return name;
  if (place.row->exists == Exists::kHeat) return app.Text(text::kEnergyMode);
  return RowTitle(*place.row, app.state.Spoken());
}

std::string RefusalText(const App& app, const std::string& name, const std::string& reason) {
  return FormatText(app.Text(text::kNothingSet), {name, reason});
}

std::string AskedRefusal(App& app, const FactSet& needs) {
  const FactsAnswer answer = AskFacts(app, needs);
  if (answer.good) return {};
  const std::string name = PlaceTitle(PlaceOfFact(answer.failed), app.state.Spoken());
  if (!answer.why.empty()) return FormatText(app.Text(text::kFactSilent), {name, answer.why});
  return FormatText(app.Text(text::kFactUnknown), {name, std::to_string(app.state.ValueOf(answer.failed))});
}

std::string PlaceReasonOf(const App& app, const ParameterPlace& place) {
  if (HasPlace(place, app.state) && IsInUse(place, app.state)) return {};
  return FormatText(app.Text(text::kGuardNoPlace), {NameOfPlace(app, place)});
}

}  // namespace

ParameterPlace SetGuard::PlaceOf(const Field& field) const {
  const Parameter& row = *field.parameter;
  return {&row, row.location == Location::kMeter ? 0 : rules_.IndexOf(row.location)};
}

FactSet SetGuard::UnitFactsOf(const Field& field) const {
  FactSet facts;
  AddUnitFacts(field.parameter->unit, rules_.UnitChannel(field), facts);
  if (NamesUnit(*field.parameter)) facts.insert({Fact::kUnitSystem});
  return facts;
}

template <class F>
void SetGuard::ForEachField(const WritePlan& plan, F&& action) const {
  FactSet decided;
  for (const PlannedWrite& write : plan.Writes()) {
    const std::vector<const Field*> fields = column_.FieldsIn(write);
    for (const Field* field : fields) action(*field, decided);
    for (const Field* field : fields) {
      if (const auto fact = FactToldBy(*field->parameter)) decided.insert({*fact, PlaceOf(*field).index});
    }
  }
}

FactSet SetGuard::Needs(const WritePlan& plan) const {
  FactSet needs;
  ForEachField(plan, [&](const Field& field, const FactSet& decided) {
    FactSet facts = UnitFactsOf(field);
    if (Overlap(facts, decided)) facts.clear();
    AddShapeFacts(PlaceOf(field), facts);
    std::set_difference(facts.begin(), facts.end(), decided.begin(), decided.end(),
                        std::inserter(needs, needs.end()));
  });
  return needs;
}

std::string SetGuard::Ask(const FactSet& needs) const { return AskedRefusal(app_, needs); }

std::string SetGuard::Judge(const WritePlan& plan) const {
  std::string refusal;
  ForEachField(plan, [&](const Field& field, const FactSet& decided) {
    const std::string reason = ReasonOf(field, decided);
    if (reason.empty()) return;
    field.Mark(reason);
    if (refusal.empty()) refusal = RefusalText(app_, rules_.StatusName(field), reason);
  });
  return refusal;
}

std::string SetGuard::ReasonOf(const Field& field, const FactSet& decided) const {
  const std::string reason = PlaceReason(field, decided);
  return reason.empty() ? UnitReason(field, decided) : reason;
}

std::string SetGuard::PlaceReason(const Field& field, const FactSet& decided) const {
  FactSet shape;
  AddShapeFacts(PlaceOf(field), shape);
  return Overlap(shape, decided) ? std::string() : PlaceReasonOf(app_, PlaceOf(field));
}

// What the number, or the chosen unit, means in the meter.
std::string SetGuard::UnitOfMeter(const Field& field) const {
  if (field.unit != nullptr) return rules_.UnitOf(field);
  return UnitName(*NamesUnit(*field.parameter), field.CodeOf(field.Selected()), app_.state.UnitFlag,
                  app_.state.Spoken());
}

std::string SetGuard::UnitReason(const Field& field, const FactSet& decided) const {
  const FactSet facts = UnitFactsOf(field);
  // The set itself decides the unit, and the value is meant in it.
  if (facts.empty() || Overlap(facts, decided)) return {};
  const std::string meter = UnitOfMeter(field);
  const std::string meant = column_.Origins().UnitOfValue(field);
  const std::string shown = FieldOrigins::UnitShown(field);
  if (meant == meter && shown == meter) return {};
  const OriginRecord::Source source = column_.Origins().SourceOf(field);
  const int of_source = source == OriginRecord::Source::kFile   ? text::kGuardFileSystem
                        : source == OriginRecord::Source::kNone ? text::kGuardTypedSystem
                                                                : text::kGuardReadSystem;
  const std::string& other = meant == meter ? shown : meant;
  const bool is_system = facts.size() == 1 && facts.contains({Fact::kUnitSystem});
  if (!is_system) return FormatText(app_.Text(of_source + 1), {other, meter});
  const int system = app_.state.UnitFlag == 0 ? text::kMetric : text::kEnglish;
  return FormatText(app_.Text(of_source), {other, app_.Text(system)});
}

std::string PlaceRefusal(App& app, const ParameterPlace& place) {
  FactSet needs;
  AddShapeFacts(place, needs);
  if (std::string refusal = AskedRefusal(app, needs); !refusal.empty()) return refusal;
  const std::string reason = PlaceReasonOf(app, place);
  return reason.empty() ? reason : RefusalText(app, RowTitle(*place.row, app.state.Spoken()), reason);
}

}  // namespace vlt

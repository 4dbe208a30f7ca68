// SPDX-License-Identifier: GPL-3.0-or-later
// The sensor spacing from what is given by keys; neither meter nor window is needed.
#include <array>
#include <variant>

#include "calc/spacing.h"
#include "calc/spacing_check.h"
#include "calc/spacing_texts.h"
#include "cli/key_values.h"
#include "cli/meter_words.h"
#include "cli/trouble.h"
#include "meter/process_table.h"
#include "meter/system_table.h"
#include "resources/string_table.h"
#include "resources/text_ids_words.h"
#include "values/number_text.h"

namespace vlt {
namespace {

// Keys are the parameters' own names.
constexpr std::string_view kUnit = "unit";
constexpr std::string_view kKeys[] = {kUnit,
                                      "outer_diameter",
                                      "pipe_material",
                                      "pipe_sound_velocity",
                                      "wall_thickness",
                                      "lining_material",
                                      "lining_sound_velocity",
                                      "lining_thickness",
                                      "fluid",
                                      "fluid_sound_velocity",
                                      "sensor_mount",
                                      "sensor_type"};

constexpr int kNothingChosen = -1;
constexpr int kMountV = 0;

struct TextKey {
  std::string_view key;
  std::string SpacingInputs::*target;
};
constexpr TextKey kTextKeys[] = {{"outer_diameter", &SpacingInputs::outer_diameter},
                                 {"wall_thickness", &SpacingInputs::wall_thickness},
                                 {"lining_thickness", &SpacingInputs::lining_thickness}};

struct ListKey {
  std::string_view key;
  const Parameter* row;
  int SpacingInputs::*target;
  int absent;
};
constexpr ListKey kListKeys[] = {
    {"pipe_material", &ProcessRow("pipe_material"), &SpacingInputs::pipe, kNothingChosen},
    {"lining_material", &ProcessRow("lining_material"), &SpacingInputs::lining, kNoLining},
    {"fluid", &ProcessRow("fluid"), &SpacingInputs::fluid, kNothingChosen},
    {"sensor_mount", &ProcessRow("sensor_mount"), &SpacingInputs::mount, kMountV},
    {"sensor_type", &ProcessRow("sensor_type"), &SpacingInputs::sensor, kNothingChosen}};

// A velocity that is typed where the list says "own value".
struct VelocityKey {
  std::string_view key;
  std::string_view list;
  int SpacingInputs::*chosen;
  int own;
  std::optional<std::string> SpacingInputs::*target;
};
constexpr VelocityKey kVelocityKeys[] = {
    {"pipe_sound_velocity", "pipe_material", &SpacingInputs::pipe, kOwnPipe, &SpacingInputs::pipe_velocity},
    {"lining_sound_velocity", "lining_material", &SpacingInputs::lining, kOwnLining,
     &SpacingInputs::lining_velocity},
    {"fluid_sound_velocity", "fluid", &SpacingInputs::fluid, kOwnFluid, &SpacingInputs::fluid_velocity}};

class Inputs {
 public:
  Inputs(const App& app, const KeyValues& values) : app_(app), facts_(app.state), values_(values) {}

  SpacingInputs Read() {
    SpacingInputs inputs;
    facts_.UnitFlag = inputs.unit_flag = Code(kUnit, SystemRow("unit"), app_.state.UnitFlag);
    for (const TextKey& key : kTextKeys) inputs.*key.target = Text(key.key);
    for (const ListKey& key : kListKeys) inputs.*key.target = Code(key.key, *key.row, key.absent);
    for (const VelocityKey& key : kVelocityKeys) ReadVelocity(key, inputs);
    CheckLining(inputs);
    return inputs;
  }

 private:
  std::string Text(std::string_view key) const { return values_.contains(key) ? values_.at(key) : ""; }

  int Code(std::string_view key, const Parameter& row, int absent) const {
    if (!values_.contains(key)) return absent;
    const EncodedValue value = EncodeValue(row, facts_, values_.at(key));
    if (value.fault == ValueFault::kNone) return CodeAt(row, value.bytes, 0);
    throw Trouble{ScriptStatus::kDiffers, FormatText(app_.Text(text::kNameAndReason),
                                                     {key, ValueFaultText(row, facts_, value.fault)})};
  }

  void ReadVelocity(const VelocityKey& key, SpacingInputs& inputs) const {
    const bool typed = values_.contains(key.key);
    // A velocity alone says enough.
    if (typed && !values_.contains(key.list)) inputs.*key.chosen = key.own;
    const bool own = inputs.*key.chosen == key.own;
    if (own) inputs.*key.target = Text(key.key);
    if (typed && !own)
      throw Trouble{ScriptStatus::kDiffers, FormatText(app_.Text(text::kVelocityOfList),
                                                       {key.key, key.list, std::to_string(key.own)})};
  }

  // A thickness of a lining that nothing says to be there would count for nothing.
  void CheckLining(const SpacingInputs& inputs) const {
    const std::string& thickness = inputs.lining_thickness;
    if (inputs.lining != kNoLining || thickness.empty() || ParseNumber(thickness) == 0.0) return;
    throw Trouble{ScriptStatus::kDiffers,
                  FormatText(app_.Text(text::kNeedsBeside),
                             {"lining_thickness", "lining_material", "lining_sound_velocity"})};
  }

  const App& app_;
  ToldFacts facts_;
  const KeyValues& values_;
};

}  // namespace

void MeterWords::Spacing(const Arguments& arguments) {
  KnowSettings();
  const KeyValues values = ReadKeyValues(app_, arguments, kKeys);
  const SpacingInputs inputs = Inputs(app_, values).Read();
  const TextOf texts = [this](int id) { return app_.Text(id); };
  if (const auto fault = FindInputFault(inputs))
    throw Trouble{ScriptStatus::kDiffers, FaultText(*fault, texts)};
  const auto outcome = CalculateSpacing(inputs);
  if (const auto* failure = std::get_if<SpacingFailure>(&outcome)) {
    throw Trouble{ScriptStatus::kDiffers, FailureText(*failure, inputs, texts)};
  }
  const auto& result = std::get<SpacingResult>(outcome);
  desk_.tell({"spacing", result.result1, SubGetUnitForm1(inputs.unit_flag)[0], result.result2});
}

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
#include "state/meter_models.h"

#include "resources/text_ids.h"

namespace vlt {
namespace {

// Numbers below 182 and those a multiple of 100 above 81 are full models.
bool IsOfSingleChannel(int specification) {
  constexpr int kBase = 81;
  constexpr int kStep = 100;
  const int x = specification - kBase;
  return x > kStep && x % kStep != 0;
}

constexpr MeterModel kModels[] = {
    {.name = "full",
     .title = text::kFullModel,
     .channels = 2,
     .outputs = 4,
     .heat = true,
     .is = [](int) { return true; }},
    {.name = "single",
     .title = text::kSingleModel,
     .channels = 1,
     .outputs = 2,
     .heat = false,
     .is = IsOfSingleChannel},
};

std::span<const MeterModel> models_in_force = kModels;

}  // namespace

std::span<const MeterModel> MeterModels() { return models_in_force; }

const MeterModel* ModelOf(const MeterFacts& facts) {
  const auto models = MeterModels();
  const bool known = facts.SpecClass >= 0 && facts.SpecClass < static_cast<int>(models.size());
  return known ? &models[static_cast<std::size_t>(facts.SpecClass)] : nullptr;
}

int SpecClassOf(int specification) {
  const auto models = MeterModels();
  for (std::size_t at = models.size(); at-- > 0;) {
    if (models[at].is(specification)) return static_cast<int>(at);
  }
  return -1;
}

ModelsForTest::ModelsForTest(std::span<const MeterModel> models) : before_(models_in_force) {
  models_in_force = models;
}
ModelsForTest::~ModelsForTest() { models_in_force = before_; }

}  // namespace vlt

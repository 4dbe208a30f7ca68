// SPDX-License-Identifier: GPL-3.0-or-later
// The models of meters as rows of data: all that is different between them follows from their row. SpecClass
// is the number of a row.
#pragma once

#include <span>
#include <string_view>

#include "state/meter_facts.h"

namespace vlt {

struct MeterModel {
  std::string_view name;            // in a snapshot file
  int title = 0;                    // text id
  int channels = 1;                 // that it can measure on; from several it works out one more
  int outputs = 0;                  // digital ones
  bool heat = false;                // it has the registers of the heat calculation
  bool (*is)(int specification){};  // its specification numbers (register 0148H)
};

inline constexpr int kFullModel = 0;
inline constexpr int kSingleChannelModel = 1;

std::span<const MeterModel> MeterModels();

// The model of a meter; null while it is not known.
const MeterModel* ModelOf(const MeterFacts& facts);

// The number of the model that a specification number stands for: of those that claim it the last one.
int SpecClassOf(int specification);

// Other models stand in place of the real ones as long as this lives.
class ModelsForTest {
 public:
  explicit ModelsForTest(std::span<const MeterModel> models);
  ~ModelsForTest();
  ModelsForTest(const ModelsForTest&) = delete;
  ModelsForTest& operator=(const ModelsForTest&) = delete;

 private:
  std::span<const MeterModel> before_;
};

}  // namespace vlt

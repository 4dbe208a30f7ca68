// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/soak/soak_meter.h"

#include "link/port.h"

namespace vlt::test {
namespace {

sim::MeterConfig ConfigOf(const SoakShape& shape) {
  sim::MeterConfig config;
  config.specification = shape.specification;
  config.path_mode = shape.path_mode;
  config.unit_system = shape.unit_system;
  return config;
}

}  // namespace

SoakMeter::SoakMeter(const SoakShape& shape, bool events) : test({.meter = ConfigOf(shape)}) {
  test.app.state.EventTiming = events;
  OpenPort(test.app);
  id_ = test.platform.Meter().config().id_number;
}

void SoakMeter::Fill(unsigned seed) {
  test.platform.Meter().Fill(seed, 0);
  constexpr int kModes[] = {0x42, 0x13CA, 0x1B9A};
  for (const auto mode : kModes) {
    const auto at = static_cast<std::uint32_t>(mode);
    if (Memory().Has(at, 2) && Memory().Word(at) == 2) Memory().PutWord(at, 1);
  }
  Memory().PutWord(0x0104, id_);
}

std::vector<std::uint8_t> SoakMeter::Held(const ParameterPlace& place) {
  const bool holding = place.row->function == ReadFunction::kHolding;
  auto& memory = holding ? Memory() : test.platform.Meter().input();
  return memory.Read(static_cast<std::uint32_t>(place.Address()),
                     static_cast<std::uint32_t>(2 * place.row->Words()));
}

}  // namespace vlt::test

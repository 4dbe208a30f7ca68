// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/register_names.h"

#include <algorithm>
#include <tuple>

#include "meter/catalogue.h"
#include "meter/condition.h"
#include "meter/live_fields.h"
#include "meter/maintenance_table.h"
#include "meter/store.h"
#include "meter/system_table.h"
#include "meter/value_text.h"
#include "meter/wave.h"
#include "values/codecs.h"

namespace vlt {
namespace {

using Bytes = std::span<const std::uint8_t>;
using Names = std::vector<NamedRegisters>;

std::string Named(std::string_view name, Location location, int index) {
  const std::string place = PlaceName(location, index);
  return std::string(name) + (place.empty() ? "" : " ") + place;
}

std::string WordText(const App&, Bytes bytes) { return std::to_string(BytesToInt16(bytes, 0)); }

void AddParameters(Names& names) {
  const MeterFacts largest;
  for (const ParameterGroup& group : ParameterGroups()) {
    for (const Parameter& row : group.rows) {
      for (int index = 0; index < LocationCount(row.location, largest); ++index) {
        names.push_back({{.function = row.function, .address = AddressOf(row, index), .count = row.Words()},
                         Named(row.name, row.location, index),
                         [&row](const App& app, Bytes bytes) { return ValueText(row, app.state, bytes); }});
      }
    }
  }
}

void AddLiveValues(Names& names) {
  for (const LiveBlock* block : LiveBlocks()) {
    for (const LiveField& field : block->fields) {
      for (int ch = 0; ch < kChannels; ++ch) {
        const RegisterSpan span = SpanOf(*block, field, ch);
        LiveField alone = field;
        alone.offset = 0;
        names.push_back({span, Named(field.name, Location::kChannel, ch), [alone](const App&, Bytes bytes) {
                           return LiveText(alone, {bytes.begin(), bytes.end()});
                         }});
      }
    }
  }
}

void AddConditions(Names& names) {
  for (const ConditionRow& row : ConditionTable()) {
    for (int ch = 0; ch < 2; ++ch) {
      RegisterSpan span = SpanOf(kConditionBlock, ch);
      span.address += row.byte;
      span.count = row.wire == Wire::kInt32 ? 2 : 1;
      ConditionRow alone = row;
      alone.byte = 0;
      names.push_back({span, Named(row.name, Location::kPipe, ch),
                       [alone](const App&, Bytes bytes) { return ConditionText(alone, bytes); }});
    }
  }
}

struct NamedBlock {
  const char* name;
  Block block;
  bool has_value;
};
constexpr NamedBlock kBlocks[] = {
    {"command.store", {.address = kStoreRegister, .count = 1}, true},
    {"command.memory_initialisation", {.address = kMemoryInitRegister, .count = 1}, true},
    {"command.test_end", kTestStateBlock, true},
    {"command.capture", kWaveCommand, true},
    {"wave.method", kWaveMethodBlock, true},
    {"wave.head", kWaveHeadBlock, false},
};

void AddBlocks(Names& names) {
  const MeterFacts largest;
  for (const NamedBlock& row : kBlocks) {
    for (int index = 0; index < LocationCount(row.block.location, largest); ++index) {
      names.push_back({SpanOf(row.block, index), Named(row.name, row.block.location, index), {}});
      if (row.has_value) names.back().value = WordText;
    }
  }
}

// The samples of a wave, block behind block.
void AddSamples(Names& names) {
  RegisterSpan span = SpanOf(kWaveBlock, 0);
  for (int block = 1; block <= kWaveBlocks; ++block) {
    names.push_back({span, "wave.samples " + std::to_string(block), {}});
    span.address += span.count * kBytesPerRegister;
  }
}

bool ComesBefore(const RegisterSpan& a, const RegisterSpan& b) {
  return std::tie(a.function, a.address, a.count) < std::tie(b.function, b.address, b.count);
}

const Names& AllNames() {
  static const Names kNames = [] {
    Names names;
    AddParameters(names);
    AddLiveValues(names);
    AddConditions(names);
    AddBlocks(names);
    AddSamples(names);
    std::stable_sort(names.begin(), names.end(), [](const NamedRegisters& a, const NamedRegisters& b) {
      return ComesBefore(a.span, b.span);
    });
    return names;
  }();
  return kNames;
}

}  // namespace

std::vector<const NamedRegisters*> NamesIn(const RegisterSpan& span) {
  const Names& names = AllNames();
  const int end = span.address + span.count * kBytesPerRegister;
  std::vector<const NamedRegisters*> inside;
  auto at =
      std::lower_bound(names.begin(), names.end(), span, [](const NamedRegisters& a, const RegisterSpan& b) {
        return std::tie(a.span.function, a.span.address) < std::tie(b.function, b.address);
      });
  int next = span.address;  // where what was taken last ends
  for (; at != names.end() && at->span.function == span.function && at->span.address < end; ++at) {
    const int behind = at->span.address + at->span.count * kBytesPerRegister;
    if (at->span.address < next || behind > end) continue;
    inside.push_back(&*at);
    next = behind;
  }
  return inside;
}

}  // namespace vlt

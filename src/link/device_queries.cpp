// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/device_queries.h"

#include <algorithm>
#include <array>
#include <optional>

#include "link/learn.h"
#include "link/modbus.h"
#include "link/registers.h"
#include "resources/text_ids.h"
#include "state/device_facts.h"
#include "values/codecs.h"

namespace vlt {
namespace {

constexpr int kNoAnswer = -1;
constexpr int kForeignRequest = -2;
constexpr int kReadHolding = 3;

// One register of one word: where it lies for each channel (a common one has the same address thrice), how a
// query of our own station is paced and how one of another station, and which fact it tells.
struct Query {
  std::array<int, kChannels> address;
  int mode;
  int mode_at;
  std::optional<Fact> fact = {};  // what it tells of the meter in use
};

constexpr std::array<int, kChannels> Common(int address) { return {address, address, address}; }

constexpr Query kUnitFlag{Common(0x0100), kModeUnitQuery, kModeUnitQuery, Fact::kUnitSystem};
constexpr Query kUnitSystem{Common(0x0100), kModeOrdinary, kModeOrdinary, Fact::kUnitSystem};
constexpr Query kOperationMode{Common(0x003E), kModeOrdinary, kModeOrdinary, Fact::kOperationMode};
constexpr Query kHeatFlowUnit{Common(0x04B6), kModeOrdinary, kModeOrdinary, Fact::kHeatFlowUnit};
constexpr Query kHeatTotalUnit{Common(0x04B8), kModeOrdinary, kModeOrdinary, Fact::kHeatTotalUnit};
constexpr Query kTempUnit{Common(0x04B4), kModeOrdinary, kModeOrdinary, Fact::kTempUnit};
constexpr Query kRangeKind{{0x0002, 0x138A, 0x1B5A}, kModeOrdinary, kModeOrdinary, Fact::kRangeKind};
constexpr Query kRangeUnit{{0x0004, 0x138C, 0x1B5C}, kModeOrdinary, kModeUnitQuery, Fact::kRangeUnit};
constexpr Query kTotalUnit{{0x0040, 0x13C8, 0x1B98}, kModeOrdinary, kModeUnitQuery, Fact::kTotalUnit};
constexpr Query kSpec{Common(0x0148), kModeOrdinary, kModeOrdinary, Fact::kSpecification};
constexpr Query kPathMode{Common(0x03E8), kModeOrdinary, kModeOrdinary};

// The signed word, or nothing in `value` and false.
bool Ask(App& app, int station, int address, int mode, int& value) {
  auto& tx = app.state.MemTxFrame;
  auto& rx = app.state.MemRxFrame;
  const Frame request = ReadRequest(station, kReadHolding, address, 1);
  std::copy(request.begin(), request.end(), tx.begin());
  if (!SendReceive(app, tx, static_cast<int>(tx.size()) - 1, rx, static_cast<int>(rx.size()) - 1, mode)) {
    return false;
  }
  value = BytesToInt16(rx[3], rx[4]);
  return true;
}

int AskAt(App& app, const Query& query, int station, int ch = 0) {
  const Target target{.station = station, .mode = static_cast<SendMode>(query.mode_at), .of_several = true};
  RegisterData data;
  const int address = query.address.at(static_cast<std::size_t>(ch));
  return ReadRegisters(app, target, {.address = address, .count = 1}, data) ? BytesToInt16(data, 0)
                                                                            : kNoAnswer;
}

int AskOwn(App& app, const Query& query, int ch = 0) {
  int value = kNoAnswer;
  if (!Ask(app, StationNumber(app), query.address.at(static_cast<std::size_t>(ch)), query.mode, value)) {
    return kNoAnswer;
  }
  if (&query == &kTotalUnit) value = TotalUnitOf(app.state.UnitFlag, value);
  if (query.fact) Learn(app, {*query.fact, ch}, value, IsSureReply(app, app.state.MemRxFrame));
  return value;
}

int AskUnitSystem(App& app, const Query& query) {
  const int value = AskOwn(app, query);
  if (value != kNoAnswer) ShowUnitSystem(app);
  return value;
}

}  // namespace

std::string UnitSystemText(const App& app) {
  const int flag = app.state.UnitFlag;
  return flag == 0 || flag == 1 ? app.Text(flag == 0 ? text::kMetric : text::kEnglish) : std::to_string(flag);
}

void ShowUnitSystem(App& app) {
  constexpr int kUnitPanel = 3;
  if (app.frame != nullptr) app.frame->Status().SetPanel(kUnitPanel, UnitSystemText(app));
}

int GetUnitFlag(App& app) { return AskUnitSystem(app, kUnitFlag); }
int ReadUnitSystem(App& app) { return AskUnitSystem(app, kUnitSystem); }
int GetRangeKind(App& app, int ch) { return AskOwn(app, kRangeKind, ch); }
int GetRangeUnit(App& app, int ch) { return AskOwn(app, kRangeUnit, ch); }
int GetTotalUnit(App& app, int ch) { return AskOwn(app, kTotalUnit, ch); }
int GetOperationMode(App& app) { return AskOwn(app, kOperationMode); }
int GetHeatFlowUnit(App& app) { return AskOwn(app, kHeatFlowUnit); }
int GetHeatTotalUnit(App& app) { return AskOwn(app, kHeatTotalUnit); }
int GetTempUnit(App& app) { return AskOwn(app, kTempUnit); }

int GetUnitFlagAt(App& app, int station) { return AskAt(app, kUnitFlag, station); }
int GetRangeUnitAt(App& app, int station, int ch) { return AskAt(app, kRangeUnit, station, ch); }
int GetTotalUnitAt(App& app, int station, int ch) { return AskAt(app, kTotalUnit, station, ch); }
int GetHeatFlowUnitAt(App& app, int station) { return AskAt(app, kHeatFlowUnit, station); }
int GetHeatTotalUnitAt(App& app, int station) { return AskAt(app, kHeatTotalUnit, station); }
int GetTempUnitAt(App& app, int station) { return AskAt(app, kTempUnit, station); }

int GetSpecClass(App& app) {
  int spec = 0;
  if (!Ask(app, StationNumber(app), kSpec.address[0], kSpec.mode, spec)) return kNoAnswer;
  Learn(app, {Fact::kSpecification}, spec, IsSureReply(app, app.state.MemRxFrame));
  return SpecClassOf(spec);
}

int GetPathMode(App& app) {
  const int value = AskOwn(app, kPathMode);
  if (value == kNoAnswer) return kNoAnswer;
  const auto& sent = app.state.MemTxFrame;
  const bool own = sent[1] == kReadHolding && BytesToUInt16(sent[2], sent[3]) == kPathMode.address[0];
  return own ? value : kForeignRequest;
}

void TakePathMode(App& app, int paths) {
  Learn(app, {Fact::kPathMode}, paths, paths >= 0 && IsSureReply(app, app.state.MemRxFrame));
}

int GetChannelConfig(App& app) {
  app.state.SpecClass = GetSpecClass(app);
  if (app.state.SpecClass != 0) return app.state.SpecClass == 1 ? 1 : -1;
  const int paths = GetPathMode(app);
  TakePathMode(app, paths);
  app.state.PathModeKnown = paths >= 0 && paths <= 2;
  return app.state.PathModeKnown ? paths + 1 : -1;
}

void ClearProcessCache(App& app) {
  for (const UnitKind kind : {UnitKind::kLength, UnitKind::kVelocity, UnitKind::kViscosity}) {
    app.slots.ForgetUnits(kind);
  }
}
void ClearFlowCache(App& app) { app.slots.ForgetUnits(UnitKind::kFlow); }
void ClearTotalCache(App& app) { app.slots.ForgetUnits(UnitKind::kTotal); }
void ClearHeatFlowCache(App& app) { app.slots.ForgetUnits(UnitKind::kHeatFlow); }
void ClearHeatTotalCache(App& app) { app.slots.ForgetUnits(UnitKind::kHeatTotal); }
void ClearTempCache(App& app) { app.slots.ForgetUnits(UnitKind::kTemperature); }

void RefreshChannelUnits(App& app, int ch) {
  GetRangeUnit(app, ch);
  ClearFlowCache(app);
  GetTotalUnit(app, ch);
  ClearTotalCache(app);
}

void RefreshHeatUnits(App& app) {
  GetHeatFlowUnit(app);
  ClearHeatFlowCache(app);
  GetHeatTotalUnit(app);
  ClearHeatTotalCache(app);
  GetTempUnit(app);
  ClearTempCache(app);
}

}  // namespace vlt

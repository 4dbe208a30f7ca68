// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/device_queries.h"

#include <algorithm>

#include "link/modbus.h"
#include "link/registers.h"
#include "meter/facts.h"
#include "meter/heat_table.h"
#include "meter/range_table.h"
#include "meter/system_table.h"
#include "meter/total_table.h"
#include "state/device_facts.h"
#include "values/codecs.h"

namespace vlt {
namespace {

constexpr int kNoAnswer = -1;
constexpr int kForeignRequest = -2;
constexpr int kReadHolding = 3;

// One row that tells a fact: how a query of our own station is paced and how one of another station.
struct Query {
  const Parameter* row;
  int mode;
  int mode_at;
};

constexpr Query kUnitFlag{&SystemRow("unit"), kModeUnitQuery, kModeUnitQuery};
constexpr Query kUnitSystem{&SystemRow("unit"), kModeOrdinary, kModeOrdinary};
constexpr Query kOperationMode{&SystemRow("operation_mode"), kModeOrdinary, kModeOrdinary};
constexpr Query kHeatFlowUnit{&HeatRow("flow_unit"), kModeOrdinary, kModeOrdinary};
constexpr Query kHeatTotalUnit{&HeatRow("total_unit"), kModeOrdinary, kModeOrdinary};
constexpr Query kTempUnit{&HeatRow("temperature_unit"), kModeOrdinary, kModeOrdinary};
constexpr Query kRangeKind{&RangeRow("kind"), kModeOrdinary, kModeOrdinary};
constexpr Query kRangeUnit{&RangeRow("unit"), kModeOrdinary, kModeUnitQuery};
constexpr Query kTotalUnit{&TotalRow("unit"), kModeOrdinary, kModeUnitQuery};
constexpr int kSpecification = SystemRow("specification").address;
constexpr int kMeasurementMode = SystemRow("measurement_mode").address;

// The signed word at an address of our own station.
QueryAnswer Ask(App& app, int address, int mode) {
  auto& tx = app.state.MemTxFrame;
  auto& rx = app.state.MemRxFrame;
  const Frame request = ReadRequest(StationNumber(app), kReadHolding, address, 1);
  std::copy(request.begin(), request.end(), tx.begin());
  QueryAnswer answer{.value = kNoAnswer, .exchange = Transact(app, tx, rx, {.mode = mode})};
  if (answer.exchange) answer.value = BytesToInt16(rx[3], rx[4]);
  answer.sure = IsSureReply(app, answer.exchange, rx);
  return answer;
}

int AskAt(App& app, const Query& query, int station, int ch = 0) {
  const Target target{.station = station, .mode = static_cast<SendMode>(query.mode_at), .of_several = true};
  RegisterData data;
  const int address = AddressOf(*query.row, ch);
  return ReadRegisters(app, target, {.address = address, .count = 1}, data) ? BytesToInt16(data, 0)
                                                                            : kNoAnswer;
}

int AskOwn(App& app, const Query& query, int ch = 0) {
  const ParameterPlace place{query.row, ch};
  const QueryAnswer answer = Ask(app, place.Address(), query.mode);
  if (!answer.exchange) return kNoAnswer;
  LearnFrom(app, place, answer.value, answer.sure);
  return app.state.ValueOf({*FactToldBy(*query.row), ch});
}

QueryAnswer AskSpecClass(App& app) {
  QueryAnswer answer = Ask(app, kSpecification, kModeOrdinary);
  if (!answer.exchange) return answer;
  Learn(app, {Fact::kSpecification}, answer.value, answer.sure);
  answer.value = SpecClassOf(answer.value);
  return answer;
}

}  // namespace

int GetUnitFlag(App& app) { return AskOwn(app, kUnitFlag); }
int ReadUnitSystem(App& app) { return AskOwn(app, kUnitSystem); }
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

int GetSpecClass(App& app) { return AskSpecClass(app).value; }
int GetPathMode(App& app) { return AskPathMode(app).value; }
int GetChannelConfig(App& app) { return QueryChannelConfig(app).value; }

QueryAnswer AskPathMode(App& app) {
  QueryAnswer answer = Ask(app, kMeasurementMode, kModeOrdinary);
  const auto& sent = app.state.MemTxFrame;
  const bool own = sent[1] == kReadHolding && BytesToUInt16(sent[2], sent[3]) == kMeasurementMode;
  if (answer.exchange && !own) answer.value = kForeignRequest;
  return answer;
}

void TakePathMode(App& app, const QueryAnswer& paths) {
  Learn(app, {Fact::kPathMode}, paths.value, paths.value >= 0 && paths.sure);
}

QueryAnswer QueryChannelConfig(App& app) {
  QueryAnswer answer = AskSpecClass(app);
  app.state.SpecClass = answer.value;
  if (!answer.exchange) return answer;
  if (IsSingleChannel(app.state)) {
    answer.value = static_cast<int>(ChannelConfig::kOneChannel);
    return answer;
  }
  answer = AskPathMode(app);
  TakePathMode(app, answer);
  app.state.PathModeKnown = answer.value >= 0 && answer.value <= 2;
  answer.value = app.state.PathModeKnown ? answer.value + 1 : -1;
  return answer;
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

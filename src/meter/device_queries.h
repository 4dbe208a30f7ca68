// SPDX-License-Identifier: GPL-3.0-or-later
// What the program asks the meter about itself: unit system, units of each channel, model, paths. The port
// must be open. A query returns the value, or -1 without an answer, and then nothing is stored.
#pragma once

#include <string>

#include "link/modbus.h"
#include "state/app.h"

namespace vlt {

// Unit system, 0 metric or 1 English, into UnitFlag and the third panel of the status line. GetUnitFlag makes
// one long attempt, ReadUnitSystem repeats as a page's read does.
int GetUnitFlag(App& app);
int ReadUnitSystem(App& app);

// Of channel 0 to 2, into RangeKind, RangeUnit, TotalUnit. A metric meter's total unit 8, which has no metric
// text, becomes 0.
int GetRangeKind(App& app, int ch);
int GetRangeUnit(App& app, int ch);
int GetTotalUnit(App& app, int ch);

// Into the variable of the same name.
int GetOperationMode(App& app);
int GetHeatFlowUnit(App& app);
int GetHeatTotalUnit(App& app);
int GetTempUnit(App& app);

// Of another station on the line; nothing is stored. A reply that some other station has signed is no answer.
int GetUnitFlagAt(App& app, int station);
int GetRangeUnitAt(App& app, int station, int ch);
int GetTotalUnitAt(App& app, int station, int ch);
int GetHeatFlowUnitAt(App& app, int station);
int GetHeatTotalUnitAt(App& app, int station);
int GetTempUnitAt(App& app, int station);

// The model as SpecClass numbers it. Only the number behind it is stored, in SpecNumber.
int GetSpecClass(App& app);
// 0 one path, 1 two paths, 2 two pipes; -2 when another query has taken the shared request meanwhile. Nothing
// is stored.
int GetPathMode(App& app);

// The result of a query, with an account of its last exchange.
struct QueryAnswer {
  int value = -1;
  ExchangeReport exchange = {};
  bool sure = false;  // as for Learn (meter/facts.h)
};
QueryAnswer AskPathMode(App& app);
// What it has answered, into PathMode.
void TakePathMode(App& app, const QueryAnswer& paths);
// Asks both into SpecClass and PathMode: 1 one measuring channel, 2 two paths on one pipe, 3 two pipes, -1
// without a usable answer. PathMode keeps its value on a single-channel model, which is not asked for it.
int GetChannelConfig(App& app);
QueryAnswer QueryChannelConfig(App& app);

// Empty the kept unit captions that belong to a unit which was read anew: an empty one means that the caption
// on the page is right. The values beside them stay, so nothing that was loaded or typed is lost.
void ClearProcessCache(App& app);
void ClearFlowCache(App& app);
void ClearTotalCache(App& app);
void ClearHeatFlowCache(App& app);
void ClearHeatTotalCache(App& app);
void ClearTempCache(App& app);

// Units asked anew with what depends on them: the query, then its captions, as above.
void RefreshChannelUnits(App& app, int ch);  // flow and total of channel 0 to 2
void RefreshHeatUnits(App& app);             // heat flow, heat total and temperature

}  // namespace vlt

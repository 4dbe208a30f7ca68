// SPDX-License-Identifier: GPL-3.0-or-later
// Several meters on one line as rows of data: what is asked of each in a pass, what it last sent, how well it
// answers. Nothing here knows a control.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "meter/live_fields.h"
#include "meter/meter_mark.h"
#include "platform/clock.h"
#include "state/app.h"

namespace vlt {

inline constexpr int kMostStations = 31;
inline constexpr int kDisplays = 2;

// What one of the two displays shows of every station.
struct StationDisplay {
  int channel = -1;   // 0 to 2, or -1 when the display is not used
  int place = 0;      // of live_fields.h
  bool heat = false;  // the value lies in the heat block
  bool IsUsed() const { return channel >= 0; }
};
using StationDisplays = std::array<StationDisplay, kDisplays>;

// The units of a station that has told none: all codes are -1.
LiveUnits UnknownUnits();

// A station in a run.
struct Station {
  int number = 0;
  LiveUnits units = UnknownUnits();  // codes that could not be read are -1
  int vain_turns = 0;                // polls behind which it was asked for units again, in vain
  // What the blocks of each channel held at the last poll, in the order of LiveBlocks(); empty without an
  // answer.
  std::array<std::array<RegisterData, 2>, kChannels> blocks;
  std::int64_t polls = 0;             // in this run
  std::int64_t failed = 0;            // of those, the ones with an exchange that failed
  std::optional<LocalTime> answered;  // when the last good exchange ended
  std::string failure;                // why the last poll failed; empty when it was good
  MeterMark mark;                     // what it has told of itself
  int name_questions = 0;             // that are left while its ID number is not known
  // The line was away since its last poll: it has to prove first that it is the one that was there.
  bool doubted = false;
};

// False when the run is to end: nothing more is asked then.
using GoesOn = std::function<bool()>;

// Asks a station for the unit system, the units of the channels in use and those of the heat block, with a
// rest behind each query. One that fails the first two is silent, and is not asked for more.
void AskStationUnits(App& app, Station& station, const StationDisplays& displays, const GoesOn& goes_on);
// The same again for the units that the displays show and the station has not told yet.
void AskMissingUnits(App& app, Station& station, const StationDisplays& displays, const GoesOn& goes_on);
// A unit that a display shows is not known.
bool MissesUnits(const Station& station, const StationDisplays& displays);
// The station has told something of its units.
bool HasToldUnits(const Station& station);
// It is time to ask for what is missing: behind each poll at first, and behind every eighth one when that was
// in vain several times (a meter may not have the register).
bool IsTurnForUnits(const Station& station, const StationDisplays& displays);

// Asks a station behind a good poll for its ID number, when that is not known yet, so that it can be told
// from another one behind a loss of the line. Nothing after as many questions as it has.
void LearnStation(App& app, Station& station);
// "01=0001 02=0007": the ID numbers of the stations that are known and proven; empty for none.
std::string MeterNames(const std::vector<Station>& stations);

// One poll: the blocks that the displays need, kModeStations. A poll that a Stop has cut short is not
// counted.
void PollStation(App& app, Station& station, const StationDisplays& displays, const GoesOn& goes_on);

// "FLOW RATE", with its channel in front: "CH1 FLOW RATE".
std::string DisplayItem(const StationDisplay& display, Language language);
// The unit of a display's value at this station, without brackets; "Unit acquisition error" when it could not
// be read, empty for a value that has none.
std::string StationUnitName(const Station& station, const StationDisplay& display, Language language);
// The same for a caption, in brackets; "[?]" when it could not be read.
std::string StationUnitCaption(const Station& station, const StationDisplay& display, Language language);

// The display's value as a record holds it: a number, 16 digits of alarms, "***" for what can't be given. No
// text for a display that is not used.
std::string StationValue(const Station& station, const StationDisplay& display);
// The same for a person: alarms in words, "Communication Error" for a block that was not answered.
std::string ShownStationValue(const Station& station, const StationDisplay& display, Language language);
// The value's block was not answered at the last poll.
bool IsSilent(const Station& station, const StationDisplay& display);

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/scenario.h"

#include "sim/words.h"

namespace sim {

namespace {

using namespace words;

template <typename T>
bool Set(T& target, std::optional<int> number) {
  if (number) target = static_cast<T>(*number);
  return number.has_value();
}

bool SetMilliseconds(Micros& target, std::string_view value) {
  const auto number = Integer(value, 0, 3'600'000);
  if (number) target = *number * Micros{1000};
  return number.has_value();
}

bool SetStations(Scenario& scenario, std::string_view value) {
  std::vector<int> stations;
  for (std::string_view part : Split(value, ',')) {
    const auto range = ReadRange(part, 1, 247);
    if (!range) return false;
    for (int number = range->first; number <= range->last; ++number) stations.push_back(number);
  }
  scenario.stations = stations;
  return true;
}

struct SetupWord {
  std::string_view name;
  std::string_view form;
  std::string_view help;
  bool (*set)(Scenario&, std::string_view value);
  bool of_station = false;  // can be said of one station alone: "5:unit=english"
};

constexpr std::string_view kModels[] = {"full", "single"};
constexpr std::string_view kUnits[] = {"metric", "english"};
constexpr std::string_view kLanguages[] = {"english", "japanese", "german", "french", "spanish"};
constexpr std::string_view kSwitch[] = {"off", "on"};

constexpr SetupWord kSetupWords[] = {
    {"model", "full|single", "two measuring channels with heat, or one channel (full)",
     [](Scenario& s, std::string_view value) {
       const auto model = Choice(value, kModels);
       if (model) s.meter.specification = *model == 1 ? kSingleSpecification : kFullSpecification;
       return model.has_value();
     },
     true},
    {"spec", "NUMBER", "specification number 0..9999, which decides the model too (81)",
     [](Scenario& s, std::string_view value) { return Set(s.meter.specification, Integer(value, 0, 9999)); },
     true},
    {"path", "0|1|2", "one path, two paths on one pipe, two pipes (0)",
     [](Scenario& s, std::string_view value) { return Set(s.meter.path_mode, Integer(value, 0, 2)); }, true},
    {"unit", "metric|english", "unit system (metric)",
     [](Scenario& s, std::string_view value) { return Set(s.meter.unit_system, Choice(value, kUnits)); },
     true},
    {"lang", "english|japanese|german|french|spanish", "language of the meter's own display (english)",
     [](Scenario& s, std::string_view value) { return Set(s.meter.language, Choice(value, kLanguages)); },
     true},
    {"id", "NUMBER", "ID number 0..9999 (1)",
     [](Scenario& s, std::string_view value) { return Set(s.meter.id_number, Integer(value, 0, 9999)); },
     true},
    {"fleet", "on|off", "no two stations are alike: model, units, language, ID number, values (off)",
     [](Scenario& s, std::string_view value) { return Set(s.fleet, Choice(value, kSwitch)); }},
    {"stations", "N,N-N,...", "station numbers on the line, 1..247, ranges as 1-31 (1)", SetStations},
    {"speed", "BAUD", "speed of the line and of its meters (9600)",
     [](Scenario& s, std::string_view value) {
       s.speed_named = Set(s.line.baud, Integer(value, 50, 4'000'000));
       return s.speed_named;
     },
     true},
    {"parity", "N|E|O", "parity of a named device and of the meters (N)",
     [](Scenario& s, std::string_view value) {
       const bool good =
           value.size() == 1 && std::string_view("NEO").find(value[0]) != std::string_view::npos;
       if (good) s.parity = value[0];
       s.parity_named = good;
       return good;
     },
     true},
    {"stop", "1|2", "stop bits of a named device (1)",
     [](Scenario& s, std::string_view value) { return Set(s.stop_bits, Integer(value, 1, 2)); }},
    {"pace", "on|off", "bytes take their time on the line, 11 bits each (on)",
     [](Scenario& s, std::string_view value) { return Set(s.line.paced, Choice(value, kSwitch)); }},
    {"turnaround", "MS", "from the end of a request to the start of the answer (5)",
     [](Scenario& s, std::string_view value) { return SetMilliseconds(s.line.turnaround, value); }},
    {"store", "MS", "time of a store (120)",
     [](Scenario& s, std::string_view value) { return SetMilliseconds(s.meter.store_time, value); }, true},
    {"capture", "MS", "time of a wave capture (120)",
     [](Scenario& s, std::string_view value) { return SetMilliseconds(s.meter.capture_time, value); }, true},
    {"boot", "MS", "silence after power on, memory initialisation, new specification (2000)",
     [](Scenario& s, std::string_view value) { return SetMilliseconds(s.meter.restart_time, value); }, true},
    {"seed", "NUMBER", "how the process moves, and the noise on captured waves (1)",
     [](Scenario& s, std::string_view value) {
       return Set(s.meter.seed, Integer(value, 0, std::numeric_limits<int>::max()));
     },
     true},
};

}  // namespace

std::string ApplyWord(Scenario& scenario, std::string_view word) {
  std::optional<int> station;
  const auto bare = CutStation(word, station);
  const auto [name, value] = Part(bare);
  const SetupWord* setup = Find(kSetupWords, name);
  // "boot=500" says how long a start takes, "boot" alone does something.
  if (!setup || (value.empty() && IsAction(name))) {
    if (!IsAction(name)) return "there is no word " + Quoted(name);
    scenario.actions.emplace_back(word);
    return "";
  }
  if (!station) return setup->set(scenario, value) ? "" : WrongForm(word, name, setup->form);
  if (!setup->of_station) return Quoted(name) + " can't be said of one station";
  Scenario scratch = scenario;
  if (!setup->set(scratch, value)) return WrongForm(word, name, setup->form);
  scenario.own.push_back({*station, std::string(bare)});
  return "";
}

std::string ApplyWords(Scenario& scenario, std::span<const std::string> words) {
  for (const std::string& word : words) {
    if (std::string error = ApplyWord(scenario, word); !error.empty()) return error;
  }
  return "";
}

std::string ApplyWords(Scenario& scenario, std::string_view text) {
  for (std::string_view word : Split(text, ' ')) {
    if (word.empty()) continue;
    if (std::string error = ApplyWord(scenario, word); !error.empty()) return error;
  }
  return "";
}

namespace {

// The other stations of a line are other plants: each has its own mean and its own unrest.
void VaryProcess(MeterConfig& meter, int station) {
  for (Motion& motion : meter.motions) {
    if (motion.wave == Wave::Process) motion.base *= 0.7 + 0.1 * (station * 3 % 7);
  }
  meter.seed += static_cast<unsigned>(station);
}

void VaryModel(MeterConfig& meter, int station) {
  meter.specification = station % 5 == 0 ? kSingleSpecification + station : kFullSpecification;
  meter.path_mode = station % 3;
  meter.unit_system = station % 4 == 3 ? 1 : 0;
  meter.language = station % 5;
  meter.id_number = 100 + station;
}

// Units of flow, total, temperature and heat; the full scales follow, so that the percentages stay what they
// were.
void VaryUnits(Meter& meter, int station) {
  constexpr int kFlowUnits = 4;
  meter.ChangeUnits(station % kFlowUnits, station % 3, station % 7);
}

// What the station alone is told, on top of what all of them have.
Scenario OfStation(const Scenario& scenario, int station) {
  Scenario own = scenario;
  if (station != scenario.stations.front()) VaryProcess(own.meter, station);
  if (scenario.fleet) VaryModel(own.meter, station);
  for (const StationWord& said : scenario.own) {
    const auto [name, value] = Part(said.word);
    if (said.station == station) Find(kSetupWords, name)->set(own, value);
  }
  return own;
}

}  // namespace

std::unique_ptr<Line> Build(const Scenario& scenario, Micros now, std::string& error) {
  auto line = std::make_unique<Line>(scenario.line);
  for (const StationWord& said : scenario.own) {
    if (std::ranges::find(scenario.stations, said.station) != scenario.stations.end()) continue;
    error = "there is no station " + std::to_string(said.station);
    return nullptr;
  }
  for (int station : scenario.stations) {
    Scenario own = OfStation(scenario, station);
    own.meter.started = now;
    Meter& meter = line->AddStation(station, own.meter);
    if (scenario.fleet) VaryUnits(meter, station);
    line->SetHearing(station, {own.speed_named ? own.line.baud : 0, own.parity_named ? own.parity : '\0'});
  }
  for (const std::string& action : scenario.actions) {
    error = ApplyAction(*line, action, now);
    if (!error.empty()) return nullptr;
  }
  return line;
}

std::string ScenarioHelp() {
  std::string text;
  for (const SetupWord& word : kSetupWords) {
    AddHelp(text, word.name, word.form, std::string(word.of_station ? "* " : "") + std::string(word.help));
  }
  text += "  What has a star can be said of one station too: 5:unit=english\n";
  return text;
}

std::string FaultHelp() {
  std::string text;
  for (const FaultInfo& fault : Faults()) {
    std::string help(fault.does);
    if (!fault.value.empty()) {
      help += " (" + std::string(fault.value) + "; " + std::to_string(fault.preset) + ")";
    }
    AddHelp(text, fault.name, fault.value.empty() ? "" : "N", help);
    text += std::string(32, ' ') + "the program must " + std::string(fault.must) + "\n";
  }
  return text;
}

}  // namespace sim

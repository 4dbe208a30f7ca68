// SPDX-License-Identifier: GPL-3.0-or-later
// A line and its meters from words: "model=single path=2 unit=english speed=9600 stations=1,2,5
// fault=crc@00D0H*2". The program meter-sim and the meter simulated in process take the same words.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sim/line.h"

namespace sim {

// What a word with a station in front of it says: "5:unit=english".
struct StationWord {
  int station = 0;
  std::string word;
};

struct Scenario {
  LineConfig line;
  MeterConfig meter;  // what all stations have in common
  std::vector<int> stations{1};
  std::vector<StationWord> own;  // how single stations differ from that
  bool fleet = false;            // no two stations are alike: models, units, languages, values
  char parity = 'N';             // N, E, O; the simulated line itself carries 11 bits a character always
  bool speed_named = false, parity_named = false;  // a word said so: the meters have these and no other
  int stop_bits = 1;
  std::vector<std::string> actions;  // words for ApplyAction, in order
};

// Takes one word NAME=VALUE into the scenario. Empty text, or what is wrong with the word.
std::string ApplyWord(Scenario& scenario, std::string_view word);

// The same for several; the first that is wrong ends it.
std::string ApplyWords(Scenario& scenario, std::span<const std::string> words);
// Splits at blanks first.
std::string ApplyWords(Scenario& scenario, std::string_view text);

// Builds the line, with the scenario's actions done at moment `now`. Null, with the reason in `error`, when
// one of them can't be done.
std::unique_ptr<Line> Build(const Scenario& scenario, Micros now, std::string& error);

// Does a word to a running line: faults, live values, alarms, registers, plug, power. Empty text, or what is
// wrong. A station number and a colon in front ("2:ras=1:8000") choose one station, otherwise all of them.
std::string ApplyAction(Line& line, std::string_view word, Micros now);

// True when ApplyAction() knows the word's name.
bool IsAction(std::string_view word);

// One line a word, for help texts.
std::string ScenarioHelp();
std::string ActionHelp();
std::string FaultHelp();

}  // namespace sim

// SPDX-License-Identifier: GPL-3.0-or-later
// The words that need no window: they work with the meter, with files and with the calculator. A word that
// finds no program started reads the settings of the folder itself, without a splash and without a box.
//
// Their events, one line each:
//   value    NAME PLACE VALUE UNIT REGISTER RAW    what the meter holds; REGISTER is function and address
//                                                  ("3:00D2"), RAW the contents as hexadecimal digits
//   unread   NAME PLACE REASON                     a parameter that could not be read
//   sent     NAME PLACE END VALUE HOLDS WAS UNIT REASON [CUT]
//                                                  a value that was to be written; END is stored, refused,
//                                                  not_proven or not_sent; CUT tells what a number lost to
//                                                  the step of its register: "60.559 -> 60.55"
//   kept                                           the meter has confirmed that it keeps what is set
//   kept     NAME PLACE REASON                     what another meter keeps of its own, after restoring
//   parameter NAME PLACES TITLE SET ENTRY...       a parameter of the catalogue; SET is yes or no
//   progress STEP STEPS TEXT                       a long piece of work
//   identity SIDE TITLE ID_NUMBER SPECIFICATION TYPE VERSION DATE UNIT_SYSTEM PATH_MODE
//                                                  SIDE is meter, left or right
//   snapshot PATH PARAMETERS UNREAD                a snapshot was written
//   row      NAME PLACE STATE LEFT UNIT RAW RIGHT UNIT RAW NOTE
//                                                  STATE is equal, different, only_left, only_right, unread
//   remark   SIDE TEXT                             a line of a file that was not taken
//   compared ALL EQUAL DIFFERENT ONLY_LEFT ONLY_RIGHT UNREAD TEXT
//   differs  NAME PLACE REASON                     what is not as the snapshot has it, after restoring
//   restored STORED REFUSED NOT_PROVEN NOT_SENT DIFFERENT RESTORE_POINT KEPT
//   found    PORT SPEED PARITY STATION UNIT_SYSTEM LANGUAGE
//   spacing  SPACING UNIT STEP
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "cli/event.h"
#include "cli/script.h"
#include "cli/trouble.h"
#include "compare/comparison.h"
#include "compare/sender.h"
#include "meter/meter_search.h"
#include "meter/proven_write.h"
#include "meter/single_read.h"
#include "meter/value_text.h"
#include "state/app.h"

namespace vlt {

class MeterWords {
 public:
  struct Desk {
    std::function<void(const EventFields&)> tell;
    std::function<bool()> stop;  // true: the script has ended, long work is to break off
  };
  MeterWords(App& app, Desk desk);

  // The program was started: its settings are those in force.
  void SettingsAreRead() { settled_ = true; }

  // Each throws Trouble when it could not do what it says.
  void Get(const Arguments& arguments);
  void Set(const Arguments& arguments);
  void TakeSnapshot(const Arguments& arguments);
  void CompareSides(const Arguments& arguments);
  void Restore(const Arguments& arguments);
  void Keep(const Arguments& arguments);
  void Names(const Arguments& arguments);
  void Scan(const Arguments& arguments);
  void Spacing(const Arguments& arguments);

 private:
  struct Sent {
    WriteEnd end = WriteEnd::kNotSent;
    std::string value{};  // that was to be written
    std::string holds{};  // what the meter has behind it; empty when it is not known
    std::string reason{};
    std::string cut{};  // as which number the register took it, when that is another one
  };

  // Reads the settings of the folder, once. `status` is that of a script that they stop.
  void KnowSettings(ScriptStatus status = ScriptStatus::kDiffers);
  std::string Format(int text_id, std::initializer_list<std::string_view> parts) const;
  [[noreturn]] void Fail(int text_id, std::initializer_list<std::string_view> parts) const;

  const Parameter& ParameterOf(const std::string& name) const;
  // The place that argument `at` names; kEveryPlace without one.
  int PlaceOf(const Parameter& row, const Arguments& arguments, std::size_t at) const;
  SingleRead ReadPlaces(const Parameter& row, int index);
  // Why a typed text is not to be sent; empty when it is.
  std::string WhyNot(const ParameterPlace& place, const ToldFacts& facts, const std::string& typed,
                     const EncodedValue& value) const;
  // Why this meter does not take a code there; empty when it does.
  std::string WhyNoCode(const ParameterPlace& place, const ToldFacts& facts, int code) const;
  void TellValue(const SnapshotRow& row);
  // Throws for every end but kStored.
  void TellSent(const SnapshotRow& before, const Sent& sent) const;

  SearchPlan PlanOf(const Arguments& arguments) const;

  // Throws Trouble for an argument that is not this word.
  void OnlyWord(const char* word, const Argument& argument) const;
  // "meter", "fields", or a file. Throws Trouble when it can't be had.
  CompareSide SideOf(const std::string& name);
  CompareSide SideOfNamedFile(const std::string& path);
  // With the line held only meanwhile.
  Snapshot ReadMeter();
  WorkListener Listener() const;
  void TellIdentity(const char* side, const std::string& title, const MeterIdentity& identity) const;
  void TellSide(const char* side, const CompareSide& shown) const;
  void TellRow(const ComparisonRow& row) const;
  void TellRestored(const RestoreReport& report) const;
  void TellRows(const char* event, const std::vector<SentRow>& rows) const;

  App& app_;
  Desk desk_;
  // Takes the lock in the name of no window of the program.
  Form lock_holder_;
  bool settled_ = false;
};

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
// One column of parameters with its master box and its three buttons: what every parameter page does. A page
// owns one column or several, and tells each by ColumnRules what it does its own way.
#pragma once

#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "link/operation.h"
#include "pages/field.h"
#include "pages/origins.h"
#include "pages/write_plan.h"

namespace vlt {

class ParameterColumn;

// What a page does its own way; the defaults are what most pages do.
class ColumnRules : public FieldPlaces {
 public:
  // --- what is chosen ---
  virtual bool AnythingSelected();
  // False shows "Please choose CH correctly." and ends the command.
  virtual bool ChannelIsChosen() { return true; }
  // The boxes in the order in which All_OnOff ticks them; by default that of the fields.
  virtual std::vector<CheckBox*> Boxes();
  // A person or All_OnOff has changed a box; by default its entries follow it.
  virtual void BoxClicked(CheckBox& box);
  // Ticks all (1) or clears them.
  virtual void All_OnOff(int value);
  // Text_Box_Enable enables the entries whose boxes are enabled, Text_Box_Able disables all.
  virtual void Text_Box_Enable();
  virtual void Text_Box_Able();

  // --- lists ---
  // What is known of the meter where a list depends on it; by default what the program knows.
  virtual MeterFacts FactsOfList(const Field& field);
  // The codes that a list offers, in its order; by default those that a meter of these facts offers.
  virtual std::vector<int> CodesOfList(const Field& field, const MeterFacts& facts);

  // --- reading ---
  // The exchanges of a read, in order.
  virtual void ReadBlocks() = 0;
  // A block brought no answer; its fields keep what they show.
  virtual void BlockFailed(const Block& block) { (void)block; }
  // Runs before a value that carries a unit is shown; by default asks for the unit system once a read.
  virtual void LearnUnit(const Field& field);
  // The unit of a field, without brackets.
  std::string UnitOf(const Field& field);
  // Whether a field of a block takes the meter's value; by default when it is ticked and enabled.
  virtual bool FieldTakesPart(const Field& field) { return field.Ticked(); }
  // A field has taken the meter's value; `code` is that of a list or of options.
  virtual void FieldWasRead(const Field& field, int code);
  // What a read that is over adds to its closing words; mostly nothing.
  virtual std::string ReadRemark() { return {}; }

  // --- setting ---
  // Whether there is something to set; by default as for a read.
  virtual bool AnythingToSet() { return AnythingSelected(); }
  // Asks what must be asked before a set; false ends it, and nothing was sent.
  virtual bool MaySet() { return true; }
  // The writes of a set, in order; by default the write order.
  virtual void PlanWrites(WritePlan& plan);
  // The meter has confirmed a write.
  virtual void WriteProven(const PlannedWrite& write) { (void)write; }
  // The meter has not confirmed a write. Unless it has refused it, it may have taken it all the same.
  virtual void WriteFailed(const PlannedWrite& write, WriteResult result) {
    (void)write;
    (void)result;
  }
  // Whether the set ends with a read of what was set.
  virtual bool ReadsBack() { return true; }
  // The name of a field in the failure box.
  virtual std::string FailureName(const Field& field);
  // Its name in the status line; by default the same. A page that has the same caption twice tells the two
  // apart here.
  virtual std::string StatusName(const Field& field) { return FailureName(field); }

 protected:
  ParameterColumn& column() const { return *column_; }

 private:
  friend class ParameterColumn;
  ParameterColumn* column_ = nullptr;
};

// The controls and texts that a column works with.
struct ColumnParts {
  CheckBox& all;  // ticks or clears the column
  PushButton& read;
  PushButton& set;
  PushButton& save;
  int set_started = 0;  // text ids
  int set_completed = 0;
  int read_started = 0;
  int read_completed = 0;
  int not_set = 3930;  // behind the name of a field that was not set
};

class ParameterColumn {
 public:
  ParameterColumn(App& app, Form& page, ColumnParts parts, ColumnRules& rules);
  ParameterColumn(const ParameterColumn&) = delete;
  ParameterColumn& operator=(const ParameterColumn&) = delete;

  // Called once by the page's constructor, in the order of showing. Ties boxes and entries together. Two
  // lists bound to one box follow it both.
  void SetFields(std::vector<Field> fields);
  const std::vector<Field>& Fields() const { return fields_; }
  const Field& FieldOf(const Control& entry) const;
  // The fields whose registers a write holds, as far as the page shows them.
  std::vector<const Field*> FieldsIn(const PlannedWrite& write) const;

  App& TheApp() const { return app_; }
  ColumnRules& Rules() const { return rules_; }

  // --- the commands ---
  void ReadParameter_Click();
  void SetParameter_Click();
  void SaveParameter_Click();
  void chkCheck_Click();

  // --- what the rules build on ---
  bool IsAnyTicked() const;
  std::vector<CheckBox*> DistinctBoxes() const;
  void TickAll(int value);
  void EnableEntries();
  void DisableEntries();
  // The entries of a box follow it; a number that gets enabled is checked.
  void FollowBox(const CheckBox& box);
  void PlanField(WritePlan& plan, const Field& field);
  void PlanInOrder(WritePlan& plan, const std::vector<const Control*>& entries);
  // In the order in which the catalogue has the group written; what the meter computes is left out.
  const std::vector<const Field*>& FieldsAsWritten() const { return as_written_; }

  // --- for ReadBlocks ---
  // One exchange; on success every field that lies in the block and takes part shows its value. When it
  // fails, the fields keep what they show, marked with the reason.
  void ReadBlock(const Block& block);
  // Its two halves, for a page that asks something else in between; false is a failure.
  bool FetchBlock(const Block& block, RegisterData& data);
  void ShowBlock(const Block& block, const RegisterData& data);
  // True while a set reads back what it has written: a read without words of its own.
  bool IsReadingBack() const { return ReadAfterSet; }
  // True until the first call with this mark in the running read; a read asks each unit at most once.
  bool FirstInThisRead(int mark) { return read_marks_.insert(mark).second; }

  // --- life of the page ---
  // Slots to controls, and controls to slots.
  void SlotsToControls();
  void ControlsToSlots();
  // True while slots are shown, so that a handler of a list can tell it from an operator's choice.
  bool IsRestoring() const { return restoring_; }
  // Slot to entry, for one field that has a slot.
  void RestoreEntry(const Field& field);
  // Fills the lists, or one of them. What was selected stays selected where the list still has its code; a
  // list that stays as it is, stays.
  void FillLists();
  void FillList(const ComboBox& list);
  // Shows the cached unit captions: "0" stands for the unit in force, an empty one leaves the caption.
  void ApplyUnitCaptions();
  // Gives every box the name of its field, and every option its word.
  void ShowNames();
  // Registers in the tooltips, for the channel or output in force, and the greatest lengths.
  void ShowHints();
  std::string HintOfBox(const CheckBox& box) const;
  void ShowLengths();
  // The unit in force beside every field that has one, or that carries this kind of unit.
  void ShowUnits();
  void ShowUnitsOf(UnitKind kind);
  void ShowUnit(const Field& field);
  // What was kept for the unit captions does not hold any more.
  void ForgetUnitCaptions();
  // The same, and the units in force are shown beside all fields.
  void ShowUnitsOfMeter();
  // The units in force beside the fields that hold no value, or one of that unit.
  void ShowUnitsThatHold();
  // Each value keeps the unit that it was read or typed in, whatever the meter has now.
  void ShowUnitsOfValues();
  // The buttons and the master box follow the state of the program.
  void EnableButtons(bool enabled);
  // Takes away what failed reads and writes have left.
  void ClearMarks();
  // Where the values come from.
  FieldOrigins& Origins() { return origins_; }
  const FieldOrigins& Origins() const { return origins_; }

 private:
  int AddressOnPage(const Parameter& row) const { return AddressOf(row, rules_.IndexOf(row.location)); }
  void Tie(const Field& field);
  void Fill(Field& field);
  // Calls `action` for each field that lies in the block and takes part, with its place in the reply's data.
  template <class F>
  void ForEachIn(const Block& block, F&& action) const;
  void MarkUnread(const Block& block, const std::string& reason) const;
  void ShowValue(const Field& field, const RegisterData& data, std::size_t at);
  class ReadingBack;
  // A typed number that is sent as another one, and what its field says of that.
  struct CutNumber {
    const Field* field = nullptr;
    std::string told;
  };
  std::vector<CutNumber> CutNumbers(const WritePlan& plan) const;
  bool MayStart(bool selected);
  bool Judge(const WritePlan& plan);
  // The meter is what the plan was made for, and the plan is made for what it is now. Otherwise nothing may
  // be sent: that is told, and the page shows the meter as it is.
  bool Guard(WritePlan& plan, Operation& operation);
  void ReadBack();
  // While a set reads back: what the field holds now is held against what was sent to it.
  void ProveField(const Field& field, std::span<const std::uint8_t> held);
  void ProveCommands(const RegisterSpan& span, const RegisterData& data);
  // What the status line adds of fields that the meter has confirmed and not taken; they count as failed.
  std::string TellNotTaken();
  // False when the operator has ended the set.
  bool Execute(const WritePlan& plan);
  bool Send(const PlannedWrite& write);

  App& app_;
  Form& page_;
  ColumnParts parts_;
  ColumnRules& rules_;
  std::vector<Field> fields_;
  FieldOrigins origins_;
  std::vector<const Field*> as_written_;
  std::set<int> read_marks_;
  bool restoring_ = false;
  bool sure_reply_ = false;  // of the block that was read last
  // True only while a set reads back what it has written.
  bool ReadAfterSet = false;
  const WritePlan* proving_ = nullptr;  // what it has written
  std::vector<std::string> not_taken_;  // of it, with the name of the field and what the meter holds
};

// Loses focus: a text that cannot be a number is marked, told, and gets the focus back. An empty text passes.
void CheckNumber(App& app, TextBox& box);

// Switches a dependent parameter: its box, and its entry while the box is ticked.
void Depend(CheckBox& box, Control& entry, bool on);
template <typename Entry>
void Depend(Entry& entry, bool on) {
  Depend(entry.box, entry, on);
}

}  // namespace vlt

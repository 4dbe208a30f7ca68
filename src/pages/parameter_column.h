// One column of parameters with its master box and its three buttons: what every parameter page does.
#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "link/modbus.h"
#include "pages/field.h"

namespace vlt {

// The controls and texts that a column works with.
struct ColumnParts {
  CheckBox& all;  // ticks or clears the column
  PushButton& read;
  PushButton& set;
  PushButton& save;
  const char* section;  // of the parameter file
  int set_started;      // text ids
  int set_completed;
  int read_started;
  int read_completed;
};

class ParameterColumn {
 public:
  ParameterColumn(App& app, Form& page, ColumnParts parts);
  virtual ~ParameterColumn() = default;
  ParameterColumn(const ParameterColumn&) = delete;
  ParameterColumn& operator=(const ParameterColumn&) = delete;

  const std::vector<Field>& Fields() const { return fields_; }

  void ReadParameter_Click();
  void SetParameter_Click();
  void SaveParameter_Click();
  void chkCheck_Click();
  // With 1 every box takes 1, with anything else 0; also the disabled ones. The entries follow.
  virtual void All_OnOff(int value);
  // Text_Box_Enable enables the entries whose boxes are enabled, Text_Box_Able disables all.
  virtual void Text_Box_Enable();
  virtual void Text_Box_Able();
  // Slots to controls, and controls to slots.
  void SlotsToControls();
  void ControlsToSlots();
  // Empties every entry, clears the boxes and the selections.
  void ClearControls();
  // Shows the cached unit captions: "0" stands for the unit in force, an empty one leaves the caption.
  void ApplyUnitCaptions();
  // Gives every box the name of its field.
  void ShowNames();
  // Shows the unit in force beside every field that has one.
  void ShowUnits();
  // The buttons and the master box follow the state of the program.
  void EnableButtons(bool enabled);

 protected:
  // How a write or a run of writes ended.
  enum class Outcome { kGoOn, kCancelled, kBadNumber };

  App& app() const { return app_; }
  Form& page() const { return page_; }

  // Called once by the page's constructor, in the page's order. Ties boxes and entries together.
  void SetFields(std::vector<Field> fields);
  // Entry controls in the order of writing.
  void SetWriteOrder(std::vector<const Control*> order) { write_order_ = std::move(order); }
  const Field& FieldOf(const Control& entry) const;

  // What a page may do its own way.
  virtual bool AnythingSelected() { return IsAnyTicked(); }
  // False shows "Please choose CH correctly." and ends the command.
  virtual bool ChannelIsChosen() { return true; }
  virtual int ChannelBase() { return 0; }
  // The boxes in the order in which All_OnOff ticks them; by default that of the fields.
  virtual std::vector<CheckBox*> Boxes();
  // The exchanges of a read, in order.
  virtual void ReadBlocks() = 0;
  // The writes of a set, in order; by default the write order.
  virtual Outcome WriteFields();
  // Runs before the value of a field that carries a unit is decoded; by default asks for the unit system once
  // a read.
  virtual void LearnUnit(const Field& field);
  // The unit of a field, without brackets.
  virtual std::string UnitText(const Field& field);
  // Whether a field of a block takes the device's value; by default when it is ticked and enabled.
  virtual bool FieldTakesPart(const Field& field) { return field.Ticked(); }
  // A ticked field has taken the device's value; `code` is that of a list or of options.
  virtual void FieldWasRead(const Field& field, int code);
  // The name of a field in the failure box.
  virtual std::string FailureName(const Field& field);

  // For ReadBlocks: one exchange; on success every ticked field that lies in the block shows its value.
  // `start` is the first register itself, channel base included. False when the exchange failed.
  bool ReadBlock(int function, int start, int registers);
  // Its two halves, for a page that asks something else in between.
  void ShowBlock(int function, int start, int registers, const Frame& reply);
  // An exchange without fields; on success `reply` holds the whole frame, data from byte 3.
  bool Exchange(int function, int start, int registers, Frame& reply);
  // For WriteFields: writes a ticked field that has a value.
  Outcome WriteField(const Field& field);
  // The same for several, up to the first that does not let the command go on.
  Outcome WriteInOrder(const std::vector<const Control*>& entries);
  // One write of registers with function 10H; on failure the operator is asked whether to go on.
  Outcome WriteRegisters(int address, const std::vector<std::uint8_t>& data, const std::string& name);
  // The register of a field for the channel or output that the page shows.
  virtual int AddressOf(const Field& field) { return field.address + (field.by_channel ? ChannelBase() : 0); }
  // True until the first call with this mark in the running read; a read asks each unit at most once.
  bool FirstInThisRead(int mark) { return read_marks_.insert(mark).second; }
  // Frame of an operation: lock, hourglass and a status line; the same back; and the end when the port can't
  // be opened.
  void Begin(int text_id);
  void End(const std::string& text);
  void PortFailed();
  bool IsAnyTicked() const;
  void SetUnitCaption(const Field& field);
  // The unit in force beside every field that carries this kind of unit.
  void ShowUnitsOf(UnitKind kind);
  // What was kept for the unit captions does not hold any more.
  void ForgetUnitCaptions();
  // Slot to entry, for one field that has a key.
  void RestoreEntry(const Field& field);

 private:
  void Tie(const Field& field);
  void ShowValue(const Field& field, const Frame& reply, std::size_t at);
  bool MayStart();

  App& app_;
  Form& page_;
  ColumnParts parts_;
  std::vector<Field> fields_;
  std::vector<std::size_t> slots_;       // of the entries
  std::vector<std::size_t> unit_slots_;  // of the unit captions
  std::vector<const Control*> write_order_;
  std::set<int> read_marks_;
  bool ReadAfterSet = false;
};

// Loses focus: a text that cannot be a number is marked, told, and gets the focus back. An empty text passes.
void CheckNumber(App& app, TextBox& box);

// Switches a dependent parameter: its box, and its entry while the box is ticked.
void Depend(CheckBox& box, Control& entry, bool on);

// Runs queries of the meter under the lock of `page` with the hourglass, on an open port. Without a port
// nothing is asked, and no message tells so: whoever opens a page may want no meter. Nor is anything asked
// while a live read runs.
void AskUnderLock(App& app, Form& page, const std::function<void()>& ask);

// GetChannelConfig in this way; the result is its result, or -1 without a port. While a live read runs it is
// what the meter last told.
int AskChannelConfig(App& app, Form& page);

}  // namespace vlt

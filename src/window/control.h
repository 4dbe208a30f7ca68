// SPDX-License-Identifier: GPL-3.0-or-later
// Controls as the logic sees them: names, states and handlers, no pixels.
//
// Two kinds of call change a control. Setters are the program's own doing; where the product's controls run
// a handler on such a change (a check box, an option button, a list), the setter runs it too. Gestures
// (Press, Tick, Choose, Type, LoseFocus, ...) are what a person does: they do nothing on a control that is
// disabled or hidden, and always run inside Windows::Run.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "window/control_owner.h"

namespace vlt {

enum class ControlKind {
  kCheckBox,
  kOptionButton,
  kTextBox,
  kComboBox,
  kLabel,
  kPushButton,
  kFrame,
  kTimer,
  kStatusBar,
  kProgressBar,
  kTab,
  kUpDown,
  kGrid,
  kChart,
  kMenuItem,
  kPicture,
  kDrawing,
};

struct Font {
  std::string name;
  int size = 8;  // points
  bool bold = false;
  bool operator==(const Font&) const = default;
};

// Colours in blue-green-red order, and the system's button face.
inline constexpr unsigned kActiveButtonColour = 0x80C0FF;
inline constexpr unsigned kButtonFaceColour = 0x8000000F;
inline constexpr unsigned kWarningColour = 0x2030C8;
// The ground of an entry.
inline constexpr unsigned kWindowColour = 0x80000005;

// Where the value that an entry holds comes from.
enum class ValueOrigin : unsigned char {
  kNone,      // nothing is known of it: the entry is empty, or the program has put it there
  kRead,      // read from the meter, from the place that is shown
  kTyped,     // typed or chosen, and not yet set
  kFile,      // from a file
  kOutdated,  // channel, output, unit system or meter changed behind it
};

class Control {
 public:
  // `index` is the place in a control array, or kNoIndex. The control registers itself with `owner`.
  static constexpr int kNoIndex = -1;
  Control(ControlOwner& owner, ControlKind kind, std::string name, int index = kNoIndex);
  virtual ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  ControlOwner& Owner() const { return owner_; }
  ControlKind Kind() const { return kind_; }
  const std::string& Name() const { return name_; }
  int Index() const { return index_; }
  // "Label2(7)" for an element of an array, else the name.
  std::string FullName() const;

  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  const std::string& Caption() const { return caption_; }
  void SetCaption(const std::string& caption);
  const Font& GetFont() const { return font_; }
  void SetFont(const Font& font);
  // What a tooltip tells about the control.
  const std::string& Hint() const { return hint_; }
  void SetHint(const std::string& hint);
  // What is wrong with what the control holds: a value that the meter has not taken. Empty when nothing is.
  const std::string& Mark() const { return mark_; }
  void SetMark(const std::string& reason);
  // Where the value comes from, and the words that tell it; empty for kNone.
  ValueOrigin Origin() const { return origin_; }
  const std::string& OriginText() const { return origin_text_; }
  void SetOrigin(ValueOrigin origin, const std::string& told = {});

  // One observer is told after each change; an empty function ends it.
  void Observe(std::function<void()> observer) { observer_ = std::move(observer); }

 protected:
  void Changed();
  // Runs `handler` as a gesture; false, and nothing runs, when a person cannot reach the control.
  bool Gesture(const std::function<void()>& handler);
  static void Call(const std::function<void()>& handler);

 private:
  ControlOwner& owner_;
  ControlKind kind_;
  std::string name_;
  int index_;
  bool enabled_ = true;
  bool visible_ = true;
  std::string caption_;
  std::string hint_;
  std::string mark_;
  ValueOrigin origin_ = ValueOrigin::kNone;
  std::string origin_text_;
  Font font_;
  std::function<void()> observer_;
};

class CheckBox : public Control {
 public:
  CheckBox(ControlOwner& owner, std::string name, int index = kNoIndex);
  int Value() const { return value_; }
  bool Ticked() const { return value_ == 1; }
  // Runs on_click when the value changes, also on a disabled box.
  void SetValue(int value);
  bool Tick();
  bool Untick();
  std::function<void()> on_click;

 private:
  int value_ = 0;
};

// Option buttons of one form with the same group exclude each other. The elements of an array are one group.
class OptionButton : public Control {
 public:
  OptionButton(ControlOwner& owner, const std::string& name, int index = kNoIndex,
               const std::string& group = {});
  bool Value() const { return value_; }
  // Setting it clears the others of its group and runs on_click when it was not set before.
  void SetValue(bool value);
  // A person choosing an option that is set already runs on_click again.
  bool Choose();
  const std::string& Group() const { return group_; }
  std::function<void()> on_click;

 private:
  void ClearOthers();
  std::string group_;
  bool value_ = false;
};

class TextBox : public Control {
 public:
  TextBox(ControlOwner& owner, std::string name, int index = kNoIndex);
  const std::string& Text() const { return text_; }
  void SetText(const std::string& text);
  int MaxLength() const { return max_length_; }  // characters; 0 is no limit
  void SetMaxLength(int characters);
  bool Locked() const { return locked_; }  // shown but not to be typed into
  void SetLocked(bool locked);
  unsigned BackColour() const { return back_colour_; }
  void SetBackColour(unsigned bgr);
  // The whole text is marked, so that typing replaces it.
  void SelectAll();
  int SelectAllCount() const { return select_all_count_; }
  void SetFocus();

  // Replaces the text by what a person typed, at most MaxLength characters of it. A text that the program set
  // may be longer; a person can then only take from it.
  bool Type(const std::string& text);
  // The same for a control that types for a person, as arrows beside a field do: no check of length or state.
  void Enter(const std::string& text);
  // Leaves the field after typing: runs on_lost_focus.
  bool LoseFocus();
  std::function<void()> on_change;
  std::function<void()> on_lost_focus;

 private:
  std::string text_;
  int max_length_ = 0;
  bool locked_ = false;
  unsigned back_colour_ = kWindowColour;
  int select_all_count_ = 0;
};

// A drop-down list. Its index is -1 while nothing is selected.
class ComboBox : public Control {
 public:
  ComboBox(ControlOwner& owner, std::string name, int index = kNoIndex);
  const std::vector<std::string>& Items() const { return items_; }
  int Count() const { return static_cast<int>(items_.size()); }
  void AddItem(const std::string& text);
  // Removing the selected entry leaves nothing selected; no handler runs.
  void RemoveItem(int index);
  // Empties the list and the selection; no handler runs.
  void Clear();
  void SetItems(const std::vector<std::string>& items);
  int ListIndex() const { return list_index_; }
  // An index outside the list selects nothing. Runs on_click when the selection changes.
  void SetListIndex(int list_index);
  // The text of the selected entry, or empty.
  std::string Text() const;
  bool Choose(int list_index);
  std::function<void()> on_click;

 private:
  std::vector<std::string> items_;
  int list_index_ = -1;
};

class Label : public Control {
 public:
  Label(ControlOwner& owner, std::string name, int index = kNoIndex);
  // A label with a colour of its own is a bar that must not be overlooked.
  unsigned BackColour() const { return back_colour_; }
  void SetBackColour(unsigned bgr);

 private:
  unsigned back_colour_ = kButtonFaceColour;
};

class FrameBox : public Control {
 public:
  FrameBox(ControlOwner& owner, std::string name, int index = kNoIndex);
};

// Artwork by name; the desktop finds the picture.
class Picture : public Control {
 public:
  Picture(ControlOwner& owner, std::string name, std::string art);
  const std::string& Art() const { return art_; }

 private:
  std::string art_;
};

class PushButton : public Control {
 public:
  PushButton(ControlOwner& owner, std::string name, int index = kNoIndex);
  unsigned BackColour() const { return back_colour_; }
  void SetBackColour(unsigned bgr);
  bool Press();
  std::function<void()> on_click;

 private:
  unsigned back_colour_ = kButtonFaceColour;
};

class MenuItem : public Control {
 public:
  // `parent` is the menu that the item lies in, or null for the menu bar.
  MenuItem(ControlOwner& owner, std::string name, MenuItem* parent = nullptr);
  MenuItem* Parent() const { return parent_; }
  // An item that stays usable can be reached while its menu is disabled; the others can't.
  bool StaysUsable() const { return stays_usable_; }
  void SetStaysUsable(bool stays);
  // Enabled, and so is its menu or it needs no such.
  bool Usable() const;
  // Does nothing on an item that is not usable.
  bool Press();
  std::function<void()> on_click;

 private:
  MenuItem* parent_;
  bool stays_usable_ = false;
};

// Ticks through the platform's event queue while it is enabled and its interval is above 0.
class Timer : public Control {
 public:
  Timer(ControlOwner& owner, std::string name);
  ~Timer() override;
  int Interval() const { return interval_ms_; }
  void SetInterval(int ms);
  bool Running() const { return running_; }
  // Switching on starts a whole interval.
  void SetRunning(bool running);
  std::function<void()> on_timer;

 private:
  void Restart();
  int interval_ms_ = 0;
  bool running_ = false;
  int timer_id_ = 0;
};

class StatusBar : public Control {
 public:
  StatusBar(ControlOwner& owner, std::string name, int panels);
  int PanelCount() const { return static_cast<int>(panels_.size()); }
  // Panels are counted from 1.
  const std::string& Panel(int number) const;
  void SetPanel(int number, const std::string& text);

 private:
  std::vector<std::string> panels_;
};

class ProgressBar : public Control {
 public:
  ProgressBar(ControlOwner& owner, std::string name);
  int Max() const { return max_; }
  int Value() const { return value_; }
  void SetMax(int max);
  void SetValue(int value);

 private:
  int max_ = 100;
  int value_ = 0;
};

class TabControl : public Control {
 public:
  TabControl(ControlOwner& owner, std::string name, int tabs);
  int Count() const { return static_cast<int>(tabs_.size()); }
  int Tab() const { return tab_; }
  void SetTab(int tab);
  const std::string& TabCaption(int tab) const { return tabs_.at(static_cast<std::size_t>(tab)).caption; }
  void SetTabCaption(int tab, const std::string& caption);
  bool TabEnabled(int tab) const { return tabs_.at(static_cast<std::size_t>(tab)).enabled; }
  void SetTabEnabled(int tab, bool enabled);
  // Does nothing on a disabled tab.
  bool Select(int tab);
  std::function<void()> on_click;

 private:
  struct Page {
    std::string caption;
    bool enabled = true;
  };
  std::vector<Page> tabs_;
  int tab_ = 0;
};

class UpDown : public Control {
 public:
  UpDown(ControlOwner& owner, std::string name);
  bool Up();
  bool Down();
  std::function<void()> on_up;
  std::function<void()> on_down;
};

// How a row of a grid looks.
enum class RowStyle : unsigned char {
  kPlain,
  kStrong,  // in bold
  kTitle,   // names the rows beneath it: its first cell has the whole width
  kNote,    // a remark: its first cell has the whole width
};
// The box in front of a row; kSome is that of a title whose rows are not all ticked.
enum class RowTick : unsigned char { kNoBox, kOff, kOn, kSome };

// A table of texts. Row 0 may be a fixed head. How wide its columns are stands in the layout of its window,
// but where that is part of what a window does.
class Grid : public Control {
 public:
  // A cell outside of the table is a programming error and throws std::out_of_range.
  Grid(ControlOwner& owner, std::string name, int rows, int columns);
  int Rows() const { return rows_; }
  // Rows that stay keep what they hold, new ones are empty.
  void SetRows(int rows);
  int Columns() const { return static_cast<int>(widths_.size()); }
  const std::string& Cell(int row, int column) const;
  void SetCell(int row, int column, const std::string& text);
  // Takes rows away behind the head, at most all; those behind them move up and keep what they hold. Who
  // looks at them goes on seeing the same ones.
  void DropRows(int count);
  // Rows that were taken away so far.
  std::int64_t DroppedRows() const { return dropped_rows_; }
  // A dense grid has low rows and is as wide as its columns.
  bool IsDense() const { return dense_; }
  void SetDense(bool dense);
  // A grid that follows shows the rows that come at its end while its last row is in view.
  bool Follows() const { return follows_; }
  void SetFollows(bool follows);
  // A whole row, from column 0 on.
  void SetRow(int row, std::span<const std::string> texts);
  // Widths and sizes are in the page's logical units (fifteen to a pixel); those of a new grid are the
  // layout's.
  static constexpr int kOfLayout = -1;
  int ColumnWidth(int column) const { return widths_.at(static_cast<std::size_t>(column)); }
  // Width 0 hides a column.
  void SetColumnWidth(int column, int width);
  bool IsHidden(int column) const { return ColumnWidth(column) == 0; }
  int Width() const { return width_; }
  int Height() const { return height_; }
  void SetSize(int width, int height);
  // A grid whose rows can be chosen marks one of them; 0 marks none. Setting it runs no handler.
  int SelectedRow() const { return selected_row_; }
  void SetSelectedRow(int row);
  // A person chooses a row, from 1 on; does nothing on a grid without on_choose.
  bool Choose(int row);
  std::function<void()> on_choose;

  // New rows are plain and have no box.
  RowStyle Style(int row) const { return Look(row).style; }
  void SetStyle(int row, RowStyle style);
  RowTick Ticked(int row) const { return Look(row).tick; }
  void SetTicked(int row, RowTick tick);
  // A person ticks a row or takes its tick away, and on_tick runs with the row; nothing on a row without a
  // box.
  bool Tick(int row) { return PutTick(row, RowTick::kOn); }
  bool Untick(int row) { return PutTick(row, RowTick::kOff); }
  std::function<void(int row)> on_tick;

 private:
  struct RowLook {
    RowStyle style = RowStyle::kPlain;
    RowTick tick = RowTick::kNoBox;
  };
  std::size_t At(int row, int column) const;
  const RowLook& Look(int row) const { return looks_.at(static_cast<std::size_t>(row)); }
  bool PutTick(int row, RowTick tick);
  int rows_;
  std::int64_t dropped_rows_ = 0;
  bool dense_ = false;
  bool follows_ = false;
  int selected_row_ = 0;
  std::vector<int> widths_;
  std::vector<std::string> cells_;
  std::vector<RowLook> looks_;
  int width_ = kOfLayout;
  int height_ = kOfLayout;
};

// A control array: elements are reached by their index, which need not be dense.
template <class T>
class ControlArray {
 public:
  template <class... Args>
  ControlArray(ControlOwner& owner, const std::string& name, const std::vector<int>& indexes, Args... args) {
    for (int index : indexes) elements_.emplace(index, std::make_unique<T>(owner, name, index, args...));
  }
  // A wrong index is a programming error and throws std::out_of_range.
  T& operator()(int index) const { return *elements_.at(index); }
  int Count() const { return static_cast<int>(elements_.size()); }
  template <class F>
  void ForEach(F&& action) const {
    for (const auto& [index, element] : elements_) action(*element);
  }

 private:
  std::map<int, std::unique_ptr<T>> elements_;
};

// 0 to `count` - 1, the indexes of a dense array.
std::vector<int> Indexes(int count);

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/control.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "values/text.h"
namespace vlt {
namespace {

// `left` is `text` with one piece taken out of it.
bool IsLeftOf(std::string_view left, std::string_view text) {
  if (left.size() > text.size()) return false;
  const auto head = std::mismatch(left.begin(), left.end(), text.begin()).first - left.begin();
  const auto tail = std::mismatch(left.rbegin(), left.rend(), text.rbegin()).first - left.rbegin();
  return static_cast<std::size_t>(head + tail) >= left.size();
}

}  // namespace

Control::Control(ControlOwner& owner, ControlKind kind, std::string name, int index)
    : owner_(owner), kind_(kind), name_(std::move(name)), index_(index) {
  owner_.controls_.push_back(this);
}

Control::~Control() { std::erase(owner_.controls_, this); }

std::string Control::FullName() const {
  return index_ == kNoIndex ? name_ : name_ + "(" + std::to_string(index_) + ")";
}

void Control::SetEnabled(bool enabled) {
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  Changed();
}

void Control::SetVisible(bool visible) {
  if (visible_ == visible) return;
  visible_ = visible;
  Changed();
}

void Control::SetCaption(const std::string& caption) {
  if (caption_ == caption) return;
  caption_ = caption;
  Changed();
}

void Control::SetFont(const Font& font) {
  if (font_ == font) return;
  font_ = font;
  Changed();
}

void Control::SetMark(const std::string& reason) {
  if (mark_ == reason) return;
  mark_ = reason;
  Changed();
}

void Control::SetOrigin(ValueOrigin origin, const std::string& told) {
  if (origin_ == origin && origin_text_ == told) return;
  origin_ = origin;
  origin_text_ = told;
  Changed();
}

void Control::SetHint(const std::string& hint) {
  if (hint_ == hint) return;
  hint_ = hint;
  Changed();
}

void Control::Changed() {
  if (observer_) observer_();
}

bool Control::Gesture(const std::function<void()>& handler) {
  if (!enabled_ || !visible_) return false;
  owner_.RunHandler(handler);
  return true;
}

void Control::Call(const std::function<void()>& handler) {
  if (handler) handler();
}

CheckBox::CheckBox(ControlOwner& owner, std::string name, int index)
    : Control(owner, ControlKind::kCheckBox, std::move(name), index) {}

void CheckBox::SetValue(int value) {
  if (value_ == value) return;
  value_ = value;
  Changed();
  Call(on_click);
}

bool CheckBox::Tick() {
  return Gesture([this] { SetValue(1); });
}

bool CheckBox::Untick() {
  return Gesture([this] { SetValue(0); });
}

OptionButton::OptionButton(ControlOwner& owner, const std::string& name, int index, const std::string& group)
    : Control(owner, ControlKind::kOptionButton, name, index), group_(group.empty() ? name : group) {}

void OptionButton::ClearOthers() {
  for (Control* control : Owner().Controls()) {
    if (control == this || control->Kind() != ControlKind::kOptionButton) continue;
    auto* other = static_cast<OptionButton*>(control);
    if (other->group_ == group_ && other->value_) other->SetValue(false);
  }
}

void OptionButton::SetValue(bool value) {
  if (value_ == value) return;
  value_ = value;
  if (value) ClearOthers();
  Changed();
  if (value) Call(on_click);
}

bool OptionButton::Choose() {
  return Gesture([this] {
    if (value_) {
      Call(on_click);
    } else {
      SetValue(true);
    }
    Owner().Entered(*this);
  });
}

TextBox::TextBox(ControlOwner& owner, std::string name, int index)
    : Control(owner, ControlKind::kTextBox, std::move(name), index) {}

void TextBox::SetText(const std::string& text) {
  if (text_ == text) return;
  text_ = text;
  Changed();
  Call(on_change);
}

void TextBox::SetMaxLength(int characters) {
  if (max_length_ == characters) return;
  max_length_ = characters;
  Changed();
}

void TextBox::SetLocked(bool locked) {
  if (locked_ == locked) return;
  locked_ = locked;
  Changed();
}

void TextBox::SetBackColour(unsigned bgr) {
  if (back_colour_ == bgr) return;
  back_colour_ = bgr;
  Changed();
}

void TextBox::SelectAll() {
  ++select_all_count_;
  Changed();
}

void TextBox::SetFocus() { Owner().SetFocus(*this); }

bool TextBox::Type(const std::string& text) {
  if (locked_) return false;
  return Gesture([this, &text] {
    const auto limit = static_cast<std::size_t>(max_length_);
    const bool fits = limit == 0 || CharCount(text) <= limit || IsLeftOf(text, text_);
    Enter(fits ? text : std::string(FirstChars(text, limit)));
  });
}

void TextBox::Enter(const std::string& text) {
  SetText(text);
  Owner().Entered(*this);
}

bool TextBox::LoseFocus() {
  return Gesture([this] { Call(on_lost_focus); });
}

ComboBox::ComboBox(ControlOwner& owner, std::string name, int index)
    : Control(owner, ControlKind::kComboBox, std::move(name), index) {}

void ComboBox::AddItem(const std::string& text) {
  items_.push_back(text);
  Changed();
}

void ComboBox::RemoveItem(int index) {
  items_.erase(items_.begin() + index);
  if (index == list_index_) {
    list_index_ = -1;
  } else if (index < list_index_) {
    --list_index_;
  }
  Changed();
}

void ComboBox::Clear() {
  items_.clear();
  list_index_ = -1;
  Changed();
}

void ComboBox::SetItems(const std::vector<std::string>& items) {
  items_ = items;
  list_index_ = -1;
  Changed();
}

void ComboBox::SetListIndex(int list_index) {
  if (list_index < 0 || list_index >= Count()) list_index = -1;
  if (list_index == list_index_) return;
  list_index_ = list_index;
  Changed();
  Call(on_click);
}

std::string ComboBox::Text() const {
  return list_index_ < 0 ? std::string() : items_[static_cast<std::size_t>(list_index_)];
}

bool ComboBox::Choose(int list_index) {
  if (list_index < 0 || list_index >= Count()) return false;
  return Gesture([this, list_index] {
    if (list_index == list_index_) {
      Call(on_click);
    } else {
      SetListIndex(list_index);
    }
    Owner().Entered(*this);
  });
}

Label::Label(ControlOwner& owner, std::string name, int index)
    : Control(owner, ControlKind::kLabel, std::move(name), index) {}

void Label::SetBackColour(unsigned bgr) {
  if (back_colour_ == bgr) return;
  back_colour_ = bgr;
  Changed();
}

FrameBox::FrameBox(ControlOwner& owner, std::string name, int index)
    : Control(owner, ControlKind::kFrame, std::move(name), index) {}

Picture::Picture(ControlOwner& owner, std::string name, std::string art)
    : Control(owner, ControlKind::kPicture, std::move(name)), art_(std::move(art)) {}

PushButton::PushButton(ControlOwner& owner, std::string name, int index)
    : Control(owner, ControlKind::kPushButton, std::move(name), index) {}

void PushButton::SetBackColour(unsigned bgr) {
  if (back_colour_ == bgr) return;
  back_colour_ = bgr;
  Changed();
}

bool PushButton::Press() {
  return Gesture([this] { Call(on_click); });
}

MenuItem::MenuItem(ControlOwner& owner, std::string name, MenuItem* parent)
    : Control(owner, ControlKind::kMenuItem, std::move(name)), parent_(parent) {}

void MenuItem::SetStaysUsable(bool stays) {
  if (stays_usable_ == stays) return;
  stays_usable_ = stays;
  Changed();
}

bool MenuItem::Usable() const {
  return Enabled() && (stays_usable_ || parent_ == nullptr || parent_->Enabled());
}

bool MenuItem::Press() {
  if (!Usable()) return false;
  return Gesture([this] { Call(on_click); });
}

Timer::Timer(ControlOwner& owner, std::string name) : Control(owner, ControlKind::kTimer, std::move(name)) {}

Timer::~Timer() {
  if (timer_id_ != 0) Owner().Machine().events.StopTimer(timer_id_);
}

void Timer::SetInterval(int ms) {
  if (interval_ms_ == ms) return;
  interval_ms_ = ms;
  Restart();
}

void Timer::SetRunning(bool running) {
  if (running_ == running) return;
  running_ = running;
  Restart();
}

void Timer::Restart() {
  EventQueue& events = Owner().Machine().events;
  if (timer_id_ != 0) events.StopTimer(timer_id_);
  timer_id_ = 0;
  if (!running_ || interval_ms_ <= 0) return;
  timer_id_ = events.StartTimer(interval_ms_, [this] { Owner().RunHandler([this] { Call(on_timer); }); });
}

StatusBar::StatusBar(ControlOwner& owner, std::string name, int panels)
    : Control(owner, ControlKind::kStatusBar, std::move(name)), panels_(static_cast<std::size_t>(panels)) {}

const std::string& StatusBar::Panel(int number) const {
  return panels_.at(static_cast<std::size_t>(number - 1));
}

void StatusBar::SetPanel(int number, const std::string& text) {
  std::string& panel = panels_.at(static_cast<std::size_t>(number - 1));
  if (panel == text) return;
  panel = text;
  Changed();
}

ProgressBar::ProgressBar(ControlOwner& owner, std::string name)
    : Control(owner, ControlKind::kProgressBar, std::move(name)) {}

void ProgressBar::SetMax(int max) {
  max_ = max;
  Changed();
}

void ProgressBar::SetValue(int value) {
  if (value_ == value) return;
  value_ = value;
  Changed();
}

TabControl::TabControl(ControlOwner& owner, std::string name, int tabs)
    : Control(owner, ControlKind::kTab, std::move(name)), tabs_(static_cast<std::size_t>(tabs)) {}

void TabControl::SetTab(int tab) {
  if (tab_ == tab) return;
  tab_ = tab;
  Changed();
  Call(on_click);
}

void TabControl::SetTabCaption(int tab, const std::string& caption) {
  tabs_.at(static_cast<std::size_t>(tab)).caption = caption;
  Changed();
}

void TabControl::SetTabEnabled(int tab, bool enabled) {
  tabs_.at(static_cast<std::size_t>(tab)).enabled = enabled;
  Changed();
}

bool TabControl::Select(int tab) {
  if (tab < 0 || tab >= Count() || !TabEnabled(tab)) return false;
  return Gesture([this, tab] { SetTab(tab); });
}

UpDown::UpDown(ControlOwner& owner, std::string name)
    : Control(owner, ControlKind::kUpDown, std::move(name)) {}

bool UpDown::Up() {
  return Gesture([this] { Call(on_up); });
}

bool UpDown::Down() {
  return Gesture([this] { Call(on_down); });
}

Grid::Grid(ControlOwner& owner, std::string name, int rows, int columns)
    : Control(owner, ControlKind::kGrid, std::move(name)),
      rows_(rows),
      widths_(static_cast<std::size_t>(columns), kOfLayout),
      cells_(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns)),
      looks_(static_cast<std::size_t>(rows)) {}

std::size_t Grid::At(int row, int column) const {
  if (row < 0 || row >= rows_ || column < 0 || column >= Columns()) throw std::out_of_range("grid cell");
  return static_cast<std::size_t>(row) * widths_.size() + static_cast<std::size_t>(column);
}

const std::string& Grid::Cell(int row, int column) const { return cells_[At(row, column)]; }

void Grid::SetCell(int row, int column, const std::string& text) {
  std::string& cell = cells_[At(row, column)];
  if (cell == text) return;
  cell = text;
  Changed();
}

void Grid::SetRow(int row, std::span<const std::string> texts) {
  for (std::size_t column = 0; column < texts.size(); ++column) {
    SetCell(row, static_cast<int>(column), texts[column]);
  }
}

void Grid::SetRows(int rows) {
  if (rows_ == rows) return;
  rows_ = rows;
  if (selected_row_ >= rows) selected_row_ = 0;
  cells_.resize(static_cast<std::size_t>(rows) * widths_.size());
  looks_.resize(static_cast<std::size_t>(rows));
  Changed();
}

void Grid::DropRows(int count) {
  count = std::min(count, rows_ - 1);
  if (count <= 0) return;
  const auto first = cells_.begin() + static_cast<std::ptrdiff_t>(widths_.size());
  cells_.erase(first, first + static_cast<std::ptrdiff_t>(widths_.size()) * count);
  looks_.erase(looks_.begin() + 1, looks_.begin() + 1 + count);
  rows_ -= count;
  dropped_rows_ += count;
  selected_row_ = std::max(selected_row_ - count, 0);
  Changed();
}

void Grid::SetDense(bool dense) {
  if (dense_ == dense) return;
  dense_ = dense;
  Changed();
}

void Grid::SetFollows(bool follows) {
  if (follows_ == follows) return;
  follows_ = follows;
  Changed();
}

void Grid::SetColumnWidth(int column, int width) {
  int& held = widths_.at(static_cast<std::size_t>(column));
  if (held == width) return;
  held = width;
  Changed();
}

void Grid::SetSize(int width, int height) {
  width_ = width;
  height_ = height;
  Changed();
}

void Grid::SetSelectedRow(int row) {
  if (row < 0 || row >= rows_) row = 0;
  if (selected_row_ == row) return;
  selected_row_ = row;
  Changed();
}

bool Grid::Choose(int row) {
  if (!on_choose || row < 1 || row >= rows_) return false;
  return Gesture([this, row] {
    SetSelectedRow(row);
    Call(on_choose);
  });
}

void Grid::SetStyle(int row, RowStyle style) {
  RowStyle& held = looks_.at(static_cast<std::size_t>(row)).style;
  if (held == style) return;
  held = style;
  Changed();
}

void Grid::SetTicked(int row, RowTick tick) {
  RowTick& held = looks_.at(static_cast<std::size_t>(row)).tick;
  if (held == tick) return;
  held = tick;
  Changed();
}

bool Grid::PutTick(int row, RowTick tick) {
  if (row < 0 || row >= rows_ || Ticked(row) == RowTick::kNoBox) return false;
  return Gesture([this, row, tick] {
    SetTicked(row, tick);
    if (on_tick) on_tick(row);
  });
}

std::vector<int> Indexes(int count) {
  std::vector<int> indexes;
  for (int i = 0; i < count; ++i) indexes.push_back(i);
  return indexes;
}

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
// The measured values of the page: reads them channel by channel and shows each with its unit.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "link/registers.h"
#include "live/measure_controls.h"
#include "live/measure_record.h"
#include "meter/live_fields.h"

namespace vlt {

class MeasureValues {
 public:
  MeasureValues(App& app, MeasureControls& page);

  // Reads a channel and shows it. Not ok when it has not answered in full: its texts hold no value then.
  ExchangeReport Read(int ch);
  // Of the channels in use, in the order of the fields, as they were read last.
  std::span<const FieldTexts> Texts() const {
    return std::span(texts_).first(static_cast<std::size_t>(ChannelCount()));
  }
  // The value to draw, from ForgetDrawn() on; nothing while it was not read.
  void ForgetDrawn() { TrendValue.reset(); }
  const std::optional<double>& Drawn() const { return TrendValue; }

  // For a run: all boxes empty, the controls of what it reads usable, the units as they are known.
  void EmptyBoxes();
  void ShowChannelsInUse();
  void ShowUnits();
  // Behind a run: the captions of all channels.
  void ReleaseLabels();
  void ShowChannelNames(std::span<const std::string> names);

  int ChannelMode = 0;  // of GetChannelConfig: 1, 2, 3, or -1; 0 before it was asked
  bool heat = false;    // the heat block is read too
  int ChannelCount() const { return ChannelMode == 1 ? 1 : kChannels; }
  int FieldCount() const { return heat ? kAllFields : kPlainFields; }
  // CH3 of two pipes.
  bool HasNoVelocity(int ch) const { return ChannelMode == 3 && ch == 2; }
  int ChosenChannel() const;
  // Of the quantity that is drawn.
  std::string PlottedUnit() const { return UnitCaption(PlottedPlace(), ChosenChannel()); }
  // What stands beside a value; empty for one without a unit.
  std::string UnitCaption(int place, int ch) const;

 private:
  // Where a live value is shown.
  struct Shown {
    ControlArray<TextBox> MeasureControls::*box;
    Label& (*unit)(MeasureControls&, int) = nullptr;  // of a channel; null for a value without a unit
  };
  // By the places of live_fields.h.
  static const std::array<Shown, kAllFields> kShown;

  ExchangeReport ReadBlock(const LiveBlock& block, int ch);
  void ShowField(int place, int ch, const RegisterData& data);
  void ShowVelocity(int ch, std::string& text);
  void FailChannel(int ch, int first_place);
  int PlottedPlace() const;
  void EnableChannelLabels(int ch, bool enabled);
  std::array<const ControlArray<Label>*, kChannels> NameLabels() const;
  std::vector<Control*> HeatLabels();

  App& app_;
  MeasureControls& page_;
  std::array<FieldTexts, kChannels> texts_;
  std::optional<double> TrendValue;
};

}  // namespace vlt

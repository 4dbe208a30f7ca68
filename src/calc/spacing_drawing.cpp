// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/spacing_drawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "calc/spacing_check.h"
#include "resources/text_ids.h"
#include "values/number_text.h"

namespace vlt {
namespace {

// Of the sheet.
constexpr double kSectionWidth = 114;
constexpr double kSideX = kDrawingSideX;
constexpr double kSideWidth = kDrawingWidth - kSideX;
constexpr double kTextSize = 3.5;
constexpr double kNoteSize = 3;

// Room round the section for its dimension lines.
constexpr double kLeftRoom = 12;
constexpr double kTopRoom = 12;
constexpr double kBottomRoom = 8;
constexpr double kSmallestSensor = 5;  // lower than that a sensor is drawn larger than it is

// The sensors' housing is not in the meter's tables: it is drawn in these parts of the element's height.
constexpr double kHousingHeight = 1.5;
constexpr double kHousingBack = 0.7;
constexpr double kElementHalf = 0.36;
constexpr double kWedgeBack = 0.4;

double Degrees(double radians) { return radians / FncPi() * 180; }

std::string AngleText(double radians) { return FixedText(Degrees(radians), 1) + "°"; }

// The section, in millimetres of the pipe with the first element at x = 0 and the pipe's surface at y = 0.
class Section {
 public:
  Section(const SpacingInputs& inputs, const SpacingResult& result, const TextOf& text, Sheet& sheet)
      : inputs_(inputs),
        result_(result),
        sensor_(SensorRecords()[static_cast<std::size_t>(inputs.sensor)]),
        crossings_(FluidCrossings(inputs.mount).value_or(0)),
        text_(text),
        sheet_(sheet) {
    Scale();
  }

  void Draw() {
    DrawPipe();
    DrawSensor(0, 1, false);
    DrawSensor(SecondElement(), -1, !SameSide());
    DrawSound();
    DrawFluidAngle();
    DrawSpacing();
    DrawDiameter();
    DrawNotes();
  }

 private:
  bool SameSide() const { return crossings_ % 2 == 0; }
  double SecondElement() const { return 2 * sensor_.MountOffset + result_.spacing; }
  double SensorHeight() const { return kHousingHeight * sensor_.wedge_height; }
  double Bore() const { return result_.fluid.thickness; }
  double Layers() const { return result_.wall.thickness + result_.lining.thickness; }

  // One scale for both directions: as large as the room allows. The pipe then runs on to both sides.
  void Scale() {
    const double width = kSectionWidth - kLeftRoom - 2;
    const double height = kDrawingHeight - kTopRoom - kBottomRoom;
    const double sides = SameSide() ? 1 : 2;
    const double back = kHousingBack * sensor_.wedge_height;
    const double wanted = SecondElement() + 2 * back + 0.1 * result_.outer_diameter + sensor_.wedge_height;
    scale_ = std::min(width / wanted, height / (result_.outer_diameter + sides * SensorHeight()));
    if (SensorHeight() * scale_ < kSmallestSensor) {
      scale_ = std::min(scale_, (height - sides * kSmallestSensor) / result_.outer_diameter);
    }
    sensor_scale_ = std::max(scale_, kSmallestSensor / SensorHeight());
    const double used = result_.outer_diameter * scale_ + sides * SensorHeight() * sensor_scale_;
    left_ = kLeftRoom;
    right_ = kSectionWidth - 2;
    origin_.x = (left_ + right_) / 2 - SecondElement() / 2 * scale_;
    origin_.y = kTopRoom + (height - used) / 2 + SensorHeight() * sensor_scale_;
  }

  double X(double mm) const { return origin_.x + mm * scale_; }
  double Y(double mm) const { return origin_.y + mm * scale_; }
  SheetPoint At(SheetPoint mm) const { return {X(mm.x), Y(mm.y)}; }

  void Band(Ink ink, double from, double to) {
    sheet_.Box(ink, left_, Y(from), right_ - left_, (to - from) * scale_);
  }

  void DrawPipe() {
    const double d = result_.outer_diameter;
    Band(Ink::kPipe, 0, d);
    Band(Ink::kLining, result_.wall.thickness, d - result_.wall.thickness);
    Band(Ink::kFluid, Layers(), d - Layers());
    for (const double depth : {0.0, Layers()}) {
      for (const double y : {Y(depth), Y(d - depth)}) {
        sheet_.Line({.ink = Ink::kText, .width = 0.2}, {{left_, y}, {right_, y}});
      }
    }
    sheet_.Line({.ink = Ink::kQuiet, .width = 0.18, .dashed = true},
                {{left_ - 3, Y(d / 2)}, {right_ + 2, Y(d / 2)}});
  }

  // `facing` is 1 for the sensor that looks to the right. Drawn from its facing end, which stays where it is
  // however large the sensor is drawn.
  void DrawSensor(double element, int facing, bool below) {
    const double h = sensor_.wedge_height;
    const double end = X(element + facing * sensor_.MountOffset);
    const double surface = Y(below ? result_.outer_diameter : 0);
    const auto point = [&](double x, double y) {
      return SheetPoint{end + facing * (x - sensor_.MountOffset) * sensor_scale_,
                        surface + (below ? 1 : -1) * y * sensor_scale_};
    };
    const double a = sensor_.wedge_angle / 180.0 * FncPi();
    const double along = kElementHalf * h * std::cos(a);
    const double up = kElementHalf * h * std::sin(a);
    const double front = sensor_.MountOffset;
    const double back = -kHousingBack * h;
    const double top = SensorHeight();
    sheet_.Area(Ink::kHousing, {point(back, 0), point(back, top), point(front, top), point(front, 0)});
    const double rim = std::min(0.12 * h, 0.4);
    sheet_.Area(Ink::kWedge, {point(-kWedgeBack * h, 0), point(-along, h - up), point(along, h + up),
                              point(front - rim, h + up), point(front - rim, 0)});
    sheet_.Line({.ink = Ink::kElement, .width = 0.9}, {point(-along, h - up), point(along, h + up)});
    sheet_.Line({.ink = Ink::kText, .width = 0.2},
                {point(back, 0), point(back, top), point(front, top), point(front, 0), point(back, 0)});
  }

  // From element to element. Where the sensors cannot stand as the sound wants it, both ends miss alike.
  std::vector<SheetPoint> SoundPath() const {
    const double d = result_.outer_diameter;
    double x = (SecondElement() - result_.sum) / 2;
    std::vector<SheetPoint> path{{x, -sensor_.wedge_height}};
    const std::array<double, 3> runs = {sensor_.WedgeRun, result_.wall.run, result_.lining.run};
    const std::array<double, 3> depths = {0, result_.wall.thickness, Layers()};
    for (std::size_t i = 0; i < runs.size(); ++i) path.push_back({x += runs[i], depths[i]});
    bool below = false;
    for (int i = 0; i < crossings_; ++i) {
      below = !below;
      path.push_back({x += result_.fluid.run, below ? d - Layers() : Layers()});
    }
    const auto side = [&](double depth) { return below ? d - depth : depth; };
    path.push_back({x += runs[2], side(depths[1])});
    path.push_back({x += runs[1], side(depths[0])});
    path.push_back({x + runs[0], side(-sensor_.wedge_height)});
    return path;
  }

  void DrawSound() {
    std::vector<SheetPoint> path;
    for (const SheetPoint& mm : SoundPath()) path.push_back(At(mm));
    if (sensor_scale_ > scale_) {  // the wedges are not where their own scale would have them
      path.erase(path.begin());
      path.pop_back();
    }
    sheet_.Line({.ink = Ink::kSound, .width = 0.6}, std::move(path));
  }

  // Normal, arc and angle where the sound enters the fluid, if there is room.
  void DrawFluidAngle() {
    constexpr double kLongest = 22;
    constexpr double kShortest = 13;
    constexpr int kArcPoints = 16;
    const double length = std::min(kLongest, 0.55 * Bore() * scale_);
    if (length < kShortest) return;
    const SheetPoint entry = At(SoundPath()[3]);
    sheet_.Line({.ink = Ink::kQuiet, .width = 0.18, .dashed = true}, {entry, {entry.x, entry.y + length}});
    const double radius = 0.8 * length;
    std::vector<SheetPoint> arc;
    for (int i = 0; i <= kArcPoints; ++i) {
      const double angle = result_.fluid.angle * i / kArcPoints;
      arc.push_back({entry.x + radius * std::sin(angle), entry.y + radius * std::cos(angle)});
    }
    sheet_.Line({.ink = Ink::kSound, .width = 0.25}, std::move(arc));
    sheet_.Text({.size = kTextSize, .ink = Ink::kSound, .side = TextSide::kRight},
                {entry.x - 1.2, entry.y + radius + 1}, AngleText(result_.fluid.angle));
  }

  std::string WithUnit(const std::string& number) const {
    return number + " " + UnitOf(SpacingField::kOuterDiameter, inputs_.unit_flag);
  }

  void DrawSpacing() {
    constexpr double kArrowRoom = 7;
    const double from = X(sensor_.MountOffset);
    const double to = X(sensor_.MountOffset + result_.spacing);
    const double top = Y(0) - SensorHeight() * sensor_scale_;
    const double y = top - 5;
    const LineStyle thin{.ink = Ink::kDimension, .width = 0.18};
    sheet_.Line(thin, {{from, top - 0.8}, {from, y - 1.5}});
    LineStyle across = thin;
    across.dashed = !SameSide();
    sheet_.Line(across, {{to, SameSide() ? top - 0.8 : Y(result_.outer_diameter)}, {to, y - 1.5}});
    const LineStyle arrow{.ink = Ink::kDimension, .width = 0.3, .ends = LineEnds::kOneArrow};
    if (to - from >= kArrowRoom) {
      sheet_.Line({.ink = Ink::kDimension, .width = 0.3, .ends = LineEnds::kTwoArrows}, {{from, y}, {to, y}});
    } else {
      sheet_.Line(arrow, {{from - kArrowRoom, y}, {from, y}});
      sheet_.Line(arrow, {{to + kArrowRoom, y}, {to, y}});
    }
    sheet_.Text({.size = 4.2, .ink = Ink::kDimension, .side = TextSide::kMiddle, .bold = true},
                {(from + to) / 2, y - 2}, WithUnit(result_.result1));
  }

  void DrawDiameter() {
    const double x = left_ - 5;
    const double top = Y(0);
    const double bottom = Y(result_.outer_diameter);
    for (const double y : {top, bottom}) {
      sheet_.Line({.ink = Ink::kDimension, .width = 0.18}, {{left_ - 0.8, y}, {x - 1.5, y}});
    }
    sheet_.Line({.ink = Ink::kDimension, .width = 0.3, .ends = LineEnds::kTwoArrows},
                {{x, top}, {x, bottom}});
    sheet_.Text({.size = kTextSize, .ink = Ink::kDimension, .side = TextSide::kMiddle, .upwards = true},
                {x - 1.4, (top + bottom) / 2}, "⌀ " + WithUnit(inputs_.outer_diameter));
  }

  void DrawNotes() {
    const double y = kDrawingHeight - 1.5;
    const bool enlarged = sensor_scale_ > scale_;
    sheet_.Text({.size = kNoteSize, .ink = Ink::kQuiet}, {left_, y},
                text_(enlarged ? text::kSensorsEnlarged : text::kToScale));
    if (result_.sum >= 2 * sensor_.MountOffset) return;
    sheet_.Text({.size = kNoteSize, .ink = Ink::kWarning, .side = TextSide::kRight}, {right_, y},
                text_(text::kSensorsTouch));
  }

  const SpacingInputs& inputs_;
  const SpacingResult& result_;
  const SensorRecord& sensor_;
  int crossings_;
  const TextOf& text_;
  Sheet& sheet_;
  double scale_ = 1;         // units a millimetre
  double sensor_scale_ = 1;  // of the sensors, which never get too small to be seen
  SheetPoint origin_;
  double left_ = 0;
  double right_ = 0;
};

// One layer of the small picture that shows the refraction with true angles and layers of its own heights.
struct RefractionLayer {
  Ink ink;
  int text_id;
  double velocity;  // m/s
  double angle;
  double height = 0;
};

std::vector<RefractionLayer> RefractionLayers(const SpacingInputs& inputs, const SpacingResult& result) {
  const SensorRecord& sensor = SensorRecords()[static_cast<std::size_t>(inputs.sensor)];
  std::vector<RefractionLayer> layers;
  layers.push_back({Ink::kWedge, text::kWedge, static_cast<double>(sensor.wedge_velocity),
                    sensor.wedge_angle / 180.0 * FncPi()});
  layers.push_back({Ink::kPipe, text::kGroupPipe, result.wall.velocity, result.wall.angle});
  if (inputs.lining != kNoLining) {
    layers.push_back({Ink::kLining, text::kGroupLining, result.lining.velocity, result.lining.angle});
  }
  layers.push_back({Ink::kFluid, text::kGroupFluid, result.fluid.velocity, result.fluid.angle});
  return layers;
}

// The picture's layers are as high as the room allows: flat rays get thin ones, so that they keep their
// angle.
void ChooseHeights(std::vector<RefractionLayer>& layers) {
  constexpr double kHighest = 11;
  constexpr double kLowest = 5;
  constexpr double kRunOfALayer = 6;
  for (RefractionLayer& layer : layers) {
    const double slope = std::max(std::tan(layer.angle), 0.01);
    layer.height = std::clamp(kRunOfALayer / slope, kLowest, kHighest);
  }
}

// The ray through the layers that begin at `y`, far to the right, where no text is. Where the picture is too
// narrow for it, it ends at its side.
std::vector<SheetPoint> Ray(const std::vector<RefractionLayer>& layers, double y) {
  constexpr double kRight = kSideX + kSideWidth - 2;
  double run = 0;
  for (const RefractionLayer& layer : layers) run += layer.height * std::tan(layer.angle);
  std::vector<SheetPoint> ray{{std::max(kSideX + 2, kRight - run), y}};
  for (const RefractionLayer& layer : layers) {
    const SheetPoint from = ray.back();
    const double slope = std::max(std::tan(layer.angle), 1e-6);
    const double depth = std::min(layer.height, (kRight - from.x) / slope);
    ray.push_back({from.x + depth * slope, from.y + depth});
    if (depth < layer.height) break;
  }
  return ray;
}

void DrawRay(Sheet& sheet, const std::vector<RefractionLayer>& layers, double y) {
  std::vector<SheetPoint> ray = Ray(layers, y);
  for (std::size_t i = 1; i + 1 < ray.size(); ++i) {
    sheet.Line({.ink = Ink::kQuiet, .width = 0.18, .dashed = true},
               {{ray[i].x, ray[i].y - 2.5}, {ray[i].x, ray[i].y + 2.5}});
  }
  sheet.Line({.ink = Ink::kSound, .width = 0.6, .ends = LineEnds::kOneArrow}, std::move(ray));
}

// Draws from `y` downwards; returns where it ends.
double DrawRefraction(Sheet& sheet, double y, const SpacingInputs& inputs, const SpacingResult& result,
                      const TextOf& text) {
  std::vector<RefractionLayer> layers = RefractionLayers(inputs, result);
  ChooseHeights(layers);
  sheet.Text({.size = kTextSize, .bold = true}, {kSideX, y}, text(text::kSoundPath));
  const double top = y += 2.5;
  const std::string unit = " " + UnitOf(SpacingField::kFluidVelocity, inputs.unit_flag);
  constexpr double kRight = kSideX + kSideWidth;
  for (const RefractionLayer& layer : layers) {
    sheet.Box(layer.ink, kSideX, y, kSideWidth, layer.height);
    const double shown = inputs.unit_flag != 0 ? FromMetrePerSecond(layer.velocity) : layer.velocity;
    const double base = y + layer.height / 2 + 1.2;
    sheet.Text({.size = kTextSize, .side = TextSide::kRight, .bold = true}, {kSideX + 11.5, base},
               AngleText(layer.angle));
    sheet.Text({.size = 2.9}, {kSideX + 13.5, base}, text(layer.text_id) + " " + FixedText(shown, 0) + unit);
    y += layer.height;
  }
  DrawRay(sheet, layers, top);
  sheet.Line({.ink = Ink::kRule, .width = 0.2},
             {{kSideX, top}, {kRight, top}, {kRight, y}, {kSideX, y}, {kSideX, top}});
  return y;
}

struct Entry {
  int text_id;
  std::string value;
  bool is_result = false;
};

std::vector<Entry> Entries(const SpacingInputs& inputs, const SpacingResult& result) {
  const std::string unit = " " + UnitOf(SpacingField::kOuterDiameter, inputs.unit_flag);
  const bool english = inputs.unit_flag != 0;
  const double bore = english ? FromMillimetre(result.fluid.thickness) : result.fluid.thickness;
  std::vector<Entry> entries{{1380, result.result1 + unit, true}};
  if (!result.result2.empty()) entries.push_back({text::kScaleStep, result.result2, true});
  entries.push_back({1240, inputs.outer_diameter + unit});
  entries.push_back({2880, inputs.wall_thickness + unit});
  if (inputs.lining != kNoLining) entries.push_back({1110, inputs.lining_thickness + unit});
  entries.push_back({text::kInnerDiameter, GroupedText(bore, english ? 3 : 2) + unit});
  return entries;
}

void DrawEntries(Sheet& sheet, double y, const SpacingInputs& inputs, const SpacingResult& result,
                 const TextOf& text) {
  constexpr double kRow = 6.2;
  constexpr double kBesideCaption = 5;  // a result stands below its caption
  constexpr double kRight = kSideX + kSideWidth;
  for (const Entry& entry : Entries(inputs, result)) {
    sheet.Text({.size = kNoteSize, .ink = Ink::kQuiet}, {kSideX, y}, text(entry.text_id));
    TextStyle value{.size = kTextSize, .side = TextSide::kRight};
    if (entry.is_result) {
      value = {.size = 5.2, .ink = Ink::kDimension, .side = TextSide::kRight, .bold = true};
      y += kBesideCaption;
    }
    sheet.Text(value, {kRight, y}, entry.value);
    sheet.Line({.ink = Ink::kRule, .width = 0.15}, {{kSideX, y + 1.8}, {kRight, y + 1.8}});
    y += kRow;
  }
}

}  // namespace

Sheet DrawSpacing(const SpacingInputs& inputs, const SpacingResult& result, const TextOf& text) {
  Sheet sheet(kDrawingWidth, kDrawingHeight);
  Section(inputs, result, text, sheet).Draw();
  const double end = DrawRefraction(sheet, 7, inputs, result, text);
  DrawEntries(sheet, end + 9, inputs, result, text);
  sheet.Text({.size = 2.6, .ink = Ink::kQuiet}, {kSideX, kDrawingHeight - 1.5}, text(text::kSpacingMeaning));
  return sheet;
}

}  // namespace vlt

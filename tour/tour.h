// SPDX-License-Identifier: GPL-3.0-or-later
// The tour: an operator's walk through the real program, step by step, in both languages.
#pragma once

#include <QImage>
#include <QString>
#include <QTemporaryDir>
#include <functional>
#include <memory>
#include <span>
#include <string>

#include "desktop/program.h"
#include "tour/hands.h"

namespace vlt::test {

// One walk: a program in one language, working on the meter simulated in process.
class Tour {
 public:
  // What the walk's program finds installed. `folder` holds VLT.ini or is empty for one of the tour's own;
  // `model` is the hardware variant. With `stations` several meters hang on an RS485 line, so many of which
  // the tour polls. Pictures go to `pictures`; those of boxes are told apart by the name of the walk.
  struct Setting {
    const char* walk = "";
    int lang_flag = 1;
    QString model;
    QString folder;
    QString pictures;
    int stations = 0;
  };
  explicit Tour(const Setting& setting);

  Program& Running() { return *program_; }
  Hands& Operator() { return hands_; }
  BoxAnswers& Boxes() { return boxes_; }
  Lookout& Meanwhile() { return lookout_; }
  int Stations() const { return setting_.stations; }
  // A text of the table in the tour's language.
  std::string Text(int id) const;

  // Throw Trouble when the two differ, or when the condition does not come to hold in time.
  void Expect(const std::string& what, const std::string& is, const std::string& should_be);
  void ExpectSoon(const std::string& what, const std::function<bool()>& condition);
  // Status panel 1 ends with the text of the table, with nothing behind it but blanks.
  void ExpectStatus(int id);
  // Clicks a button whose box is answered by its first or last button; the box says `text`.
  void ClickAndAnswer(const std::string& form, const std::string& button, const std::string& text,
                      bool first);
  bool IsShown(const char* form) const;
  // Keeps the window of a form as a picture. `name` without language and ending.
  void Picture(const std::string& form, const std::string& name);
  // Keeps what the program has made, as a picture.
  void KeepImage(const QImage& image, const std::string& name);

 private:
  void Keep(QWidget& window, const QString& name);
  QString PathOf(const QString& name) const;
  void WriteSettings() const;

  Setting setting_;
  QTemporaryDir folder_;
  int boxes_seen_ = 0;
  std::unique_ptr<Program> program_;
  Hands hands_;
  BoxAnswers boxes_;
  Lookout lookout_;
};

struct Step {
  const char* name;
  void (*walk)(Tour&);
};

// Steps by area.
std::span<const Step> StartSteps();
std::span<const Step> ProcessSteps();
// The pipe read from the meter, for what works on the process page's values.
std::span<const Step> PipeSteps();
std::span<const Step> PageSteps();
std::span<const Step> SystemSteps();
std::span<const Step> DetailSteps();
std::span<const Step> MeasureSteps();
std::span<const Step> StationSteps();
// The line's window while stations are polled.
std::span<const Step> LineSteps();
std::span<const Step> CalcSteps();
std::span<const Step> CompareSteps();
std::span<const Step> TransitSteps();
// Event-driven timing.
std::span<const Step> TimingSteps();
// Where the values of the pages come from.
std::span<const Step> OriginSteps();
std::span<const Step> EndSteps();
// A start behind runs that were cut off, and a port that is lost: CutOffSteps lays what the start finds.
std::span<const Step> CutOffSteps();
std::span<const Step> HealSteps();
// The firmware tool from the choice at the start to the program's end.
std::span<const Step> FirmwareSteps();
// From the splash to the main window, and out again: what every other walk begins and ends with, and where
// the hardware variants differ.
std::span<const Step> SplashSteps();
std::span<const Step> LeaveSteps();

}  // namespace vlt::test

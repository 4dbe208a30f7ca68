// The tour: an operator's walk through the real program, step by step, in both languages.
#pragma once

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
  // `folder` holds VLT.ini or is empty for one of the tour's own; `model` is the hardware variant. Pictures
  // go to `pictures`.
  Tour(int lang_flag, const QString& model, const QString& folder, const QString& pictures);

  Program& Running() { return *program_; }
  Hands& Operator() { return hands_; }
  BoxAnswers& Boxes() { return boxes_; }
  Lookout& Meanwhile() { return lookout_; }
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
  // Keeps the window of a form as a picture. `name` without language and ending.
  void Picture(const std::string& form, const std::string& name);

 private:
  void Keep(QWidget& window, const QString& name);
  void WriteSettings(int lang_flag, const QString& model, const QString& from) const;

  QTemporaryDir folder_;
  QString pictures_;
  int lang_flag_;
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

// Steps by area; the tour walks them in this order.
std::span<const Step> StartSteps();
std::span<const Step> ProcessSteps();
std::span<const Step> PageSteps();
std::span<const Step> DetailSteps();
std::span<const Step> MeasureSteps();
std::span<const Step> TransitSteps();
std::span<const Step> EndSteps();
// What differs between the hardware variants: the splash alone, and the end.
std::span<const Step> SplashSteps();
std::span<const Step> LeaveSteps();

}  // namespace vlt::test

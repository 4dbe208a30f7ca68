// SPDX-License-Identifier: GPL-3.0-or-later
// What the firmware tool tells of a run: what it is about to do, what has happened, the one thing to do now,
// and where the journal lies.
#pragma once

#include <string>
#include <vector>

namespace vlt {

// What an instruction is about; one that weighs more comes later.
enum class FwAdvice {
  kNone,
  kFiles,      // the files are not what they should be; the device is as it was
  kAgain,      // a step has failed; nothing was written
  kKeepPower,  // a module may be incomplete in the device
};

class FwNotes {
 public:
  // Forgets all of it.
  void Begin() { *this = {}; }

  void Plan(const std::string& text) { plan_ = text; }
  // Something that has happened. Said once, however often it comes up.
  void Tell(const std::string& text);
  // What to do now. Only the weightiest instruction stands: of equal ones the first, but of kKeepPower the
  // last, which names all modules.
  void Advise(FwAdvice weight, const std::string& text);
  void Journal(const std::string& text) { journal_ = text; }
  // What holds for the moment; an empty text takes it away.
  void Notice(const std::string& text) { notice_ = text; }

  // All of it, a line each, in this order: plan, what has happened, what to do, journal, notice.
  std::string Text() const;

 private:
  std::string plan_;
  std::vector<std::string> happened_;
  FwAdvice weight_ = FwAdvice::kNone;
  std::string advice_;
  std::string journal_;
  std::string notice_;
};

}  // namespace vlt

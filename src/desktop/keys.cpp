// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/keys.h"

#include "desktop/qt_text.h"

namespace vlt {
namespace {

struct ShortCut {
  std::string_view form;  // empty: on every form
  std::string_view control;
  const char* keys;
};

// F10 belongs to the menu bar.
constexpr ShortCut kShortCuts[] = {
    {"", "ReadParameter", "Ctrl+R"},  {"", "SetParameter", "Ctrl+Return"},
    {"", "SaveParameter", "Ctrl+S"},  {"", "RASReadParameter", "Ctrl+R"},
    {"MDIForm1", "Command1", "F1"},   {"MDIForm1", "Command2", "F2"},
    {"MDIForm1", "Command3", "F3"},   {"MDIForm1", "Command5", "F4"},
    {"MDIForm1", "Command4", "F5"},   {"MDIForm1", "Command6", "F6"},
    {"MDIForm1", "Command7", "F7"},   {"MDIForm1", "Command9", "F8"},
    {"MDIForm1", "Command10", "F9"},  {"MDIForm1", "Command11", "F11"},
    {"MDIForm1", "Command14", "F12"}, {"MDIForm1", "Command13", "Ctrl+Q"},
};

bool Usable(QChar letter, const QSet<QChar>& taken) {
  const bool latin = letter.unicode() < 0x80 && letter.isLetterOrNumber();
  return latin && !taken.contains(letter.toUpper());
}

QChar Take(QChar letter, QSet<QChar>& taken) {
  taken.insert(letter.toUpper());
  return letter;
}

// The first usable letter; only word starts when `starts` is set.
QChar FirstUsable(const QString& text, bool starts, const QSet<QChar>& taken) {
  for (qsizetype i = 0; i < text.size(); ++i) {
    const bool start =
        i == 0 || text.at(i - 1).isSpace() || (text.at(i).isUpper() && text.at(i - 1).isLower());
    if ((start || !starts) && Usable(text.at(i), taken)) return text.at(i);
  }
  return {};
}

}  // namespace

QKeySequence ShortCutOf(std::string_view form, std::string_view control) {
  for (const ShortCut& row : kShortCuts) {
    if (row.control == control && (row.form.empty() || row.form == form)) return QKeySequence(row.keys);
  }
  return {};
}

QChar ChooseMnemonic(const QString& caption, std::string_view control, QSet<QChar>& taken) {
  for (const QString& text : {caption, ToQt(control)}) {
    for (bool starts : {true, false}) {
      const QChar letter = FirstUsable(text, starts, taken);
      if (!letter.isNull()) return Take(letter, taken);
    }
  }
  return {};
}

}  // namespace vlt

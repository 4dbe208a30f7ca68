// SPDX-License-Identifier: GPL-3.0-or-later
// Short cuts of buttons, and how mnemonics are given out.
#pragma once

#include <QChar>
#include <QKeySequence>
#include <QSet>
#include <QString>
#include <string_view>

namespace vlt {

// The short cut that presses a control, or an empty sequence.
QKeySequence ShortCutOf(std::string_view form, std::string_view control);

// A letter for a caption that is not in `taken`: of the caption, word starts first, else (a caption without
// latin letters) of the control's name. It is added to `taken`. Null when all are taken.
QChar ChooseMnemonic(const QString& caption, std::string_view control, QSet<QChar>& taken);

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
// Between the logic's UTF-8 and Qt's strings, and what a caption's ampersands mean.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace vlt {

inline QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string FromQt(const QString& text) { return text.toStdString(); }

// A caption as a person reads it: "&&" shows as one ampersand, a single one shows as nothing.
QString PlainCaption(std::string_view caption);
// The same for widgets that take a single ampersand for a mnemonic mark.
QString WidgetCaption(std::string_view caption);

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/qt_text.h"

namespace vlt {

QString PlainCaption(std::string_view caption) {
  std::string plain;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&' && ++i == caption.size()) break;
    plain += caption[i];
  }
  return ToQt(plain);
}

QString WidgetCaption(std::string_view caption) { return PlainCaption(caption).replace('&', "&&"); }

}  // namespace vlt

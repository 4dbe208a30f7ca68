// SPDX-License-Identifier: GPL-3.0-or-later
// Fonts of the product's table on the fonts that are installed.
#pragma once

#include <QFont>

#include "window/control.h"

namespace vlt {

// The sizes of the product's captions differ by a point or two from control to control; on the screen they
// share one size, so that columns line up. Larger ones (titles) keep theirs. A name that is not installed
// falls back to a font that has Japanese characters, half-width ones too.
QFont DesktopFont(const Font& font);

// The same in the size of a title.
QFont TitleFont(QFont font);

// The same in letters of three quarters of their width, whatever the font.
QFont NarrowFont(QFont font);

// The name of the page on top.
QFont HeadingFont();

// The application's font: the size that captions share.
QFont BaseFont();

}  // namespace vlt

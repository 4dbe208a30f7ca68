// SPDX-License-Identifier: GPL-3.0-or-later
// Artwork by name.
#pragma once

#include <QIcon>
#include <QPixmap>
#include <string>

namespace vlt {

QIcon ApplicationIcon();

// The picture of a Picture control: a splash picture, the logo, or a small sign. Null for an unknown name.
QPixmap Artwork(const std::string& name);

}  // namespace vlt

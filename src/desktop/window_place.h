// SPDX-License-Identifier: GPL-3.0-or-later
// Where the main window lies on the screen, and how that is kept from one start to the next.
#pragma once

#include <QList>
#include <QMargins>
#include <QRect>
#include <functional>
#include <optional>

namespace vlt {

class App;

struct WindowPlace {
  QRect area;  // without the frame that the system draws around it, not maximised
  bool maximised = false;
  bool operator==(const WindowPlace&) const = default;
};

// How a view asks for the last place and hands on the one at the end. Both may be empty.
struct PlaceKeeper {
  std::function<std::optional<WindowPlace>()> last;
  std::function<void(const WindowPlace&)> keep;
};

// What the system's frame takes around a window that was never shown: a title bar and borders of a common
// size.
inline constexpr QMargins kUsualFrame(6, 38, 6, 6);

// `wanted` moved and made smaller until it lies with its frame inside `available`.
QRect FitInto(QRect wanted, const QRect& available, const QMargins& frame);

// The place to start at: the last one where it lies on a screen that is there, else `size` in the middle of
// the first screen. `screens` are the areas that the system leaves to windows.
WindowPlace StartPlace(const std::optional<WindowPlace>& last, QSize size, const QList<QRect>& screens);

// Keeps the place in section WINDOW of the settings file beside the program: X, Y, WIDTH, HEIGHT in pixels
// and MAXIMIZED, 0 or 1. A place that can't be read or written is none.
PlaceKeeper PlaceInSettings(App& app);

}  // namespace vlt

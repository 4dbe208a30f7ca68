// SPDX-License-Identifier: GPL-3.0-or-later
// Small text routines. Texts are UTF-8; what a person counts as characters are code points.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vlt {

// The text up to its first NUL, without it.
std::string CutAtNul(std::string_view text);

// Code points in text. A byte that belongs to none counts as one.
std::size_t CharCount(std::string_view text);

// The first count characters of text; a character is never split.
std::string_view FirstChars(std::string_view text, std::size_t count);

// The folder of a path as the file dialogs take it: the path is trimmed, a path without any "." counts as a
// folder and gets a separator behind it, and the result reaches to the last separator (which it keeps).
// Without a separator: to the first ":", and without that nothing. "\" and "/" both separate; the one that is
// appended is
// "/" for a path that has one, else "\".
std::string FolderOfPath(std::string_view path);

// Both with a blank between them, or the one that is not empty.
std::string Joined(std::string_view text, std::string_view more);

// Equal but for the case of the letters a to z.
bool EqualsNoCase(std::string_view a, std::string_view b);

}  // namespace vlt

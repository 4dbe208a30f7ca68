// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/key_values.h"

#include <algorithm>

#include "cli/nearest.h"
#include "cli/trouble.h"
#include "resources/string_table.h"
#include "resources/text_ids_words.h"

namespace vlt {
namespace {

[[noreturn]] void Throw(const App& app, int text_id, std::string_view a, std::string_view b = {}) {
  throw Trouble{ScriptStatus::kUnknown, FormatText(app.Text(text_id), {a, b})};
}

std::string_view KeyOf(const App& app, std::string_view written, std::span<const std::string_view> keys) {
  const auto key = std::find(keys.begin(), keys.end(), written);
  if (key != keys.end()) return *key;
  const auto near = NearestNames(written, keys);
  Throw(app, near.empty() ? text::kNoKey : text::kNoKeyButNear, written, Listed(near.empty() ? keys : near));
}

}  // namespace

KeyValues ReadKeyValues(const App& app, const Arguments& arguments, std::span<const std::string_view> keys) {
  KeyValues values;
  for (const Argument& argument : arguments) {
    const std::size_t equals = argument.text.find('=');
    if (equals == std::string::npos) Throw(app, text::kNoEquals, argument.text);
    const std::string_view key = KeyOf(app, std::string_view(argument.text).substr(0, equals), keys);
    if (!values.emplace(key, argument.text.substr(equals + 1)).second) Throw(app, text::kKeyTwice, key);
  }
  return values;
}

}  // namespace vlt

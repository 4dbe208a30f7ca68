// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/names.h"

#include <algorithm>
#include <charconv>

#include "cli/trouble.h"

namespace vlt {
namespace {

constexpr auto kDiffers = ScriptStatus::kDiffers;
constexpr auto kUnknown = ScriptStatus::kUnknown;

int Height(const Form& form) {
  return form.Place() == FormPlace::kFrame ? -1 : static_cast<int>(form.Place());
}

// Takes "[3,1]" off the end of `name`. False when what stands there is no list of numbers.
bool TakePart(std::string_view& name, std::vector<int>& part) {
  if (!name.ends_with(']')) return true;
  const std::size_t open = name.rfind('[');
  if (open == std::string_view::npos) return false;
  const char* at = name.data() + open + 1;
  const char* const end = name.data() + name.size() - 1;
  for (;; ++at) {
    const auto [behind, fault] = std::from_chars(at, end, part.emplace_back());
    if (fault != std::errc()) return false;
    at = behind;
    if (at == end) break;
    if (*at != ',') return false;
  }
  name = name.substr(0, open);
  return true;
}

Place Found(Form& form, std::string_view name, std::vector<int> part) {
  return {&form, form.Find(name), std::move(part)};
}

}  // namespace

std::string Place::Name() const {
  std::string name = form->Name() + "." + control->FullName();
  for (std::size_t i = 0; i < part.size(); ++i) name += (i == 0 ? "[" : ",") + std::to_string(part[i]);
  return part.empty() ? name : name + "]";
}

Form* TopWindow(const Windows& windows) {
  Form* top = nullptr;
  for (Form* form : windows.VisibleForms()) {
    if (top == nullptr || Height(*form) >= Height(*top)) top = form;
  }
  return top;
}

Form& FindForm(const Windows& windows, std::string_view name) {
  Form* form = windows.Find(name);
  if (form != nullptr) return *form;
  if (windows.IsRegistered(std::string(name))) throw Trouble{kDiffers, std::string(name) + " is not open"};
  throw Trouble{kUnknown, "there is no window " + std::string(name)};
}

Place FindControl(const Windows& windows, std::string_view name) {
  const std::string whole(name);
  std::vector<int> part;
  if (!TakePart(name, part)) throw Trouble{kUnknown, "no part is named as in " + whole};
  if (const std::size_t dot = name.find('.'); dot != std::string_view::npos) {
    const Place place = Found(FindForm(windows, name.substr(0, dot)), name.substr(dot + 1), part);
    if (place.control == nullptr) throw Trouble{kUnknown, "there is no control " + whole};
    return place;
  }
  Form* top = TopWindow(windows);
  if (top == nullptr) throw Trouble{kDiffers, "no window is open"};
  Place place = Found(*top, name, part);
  if (place.control == nullptr && top->Place() == FormPlace::kPage) {
    for (Form* form : windows.VisibleForms()) {
      if (form->Place() == FormPlace::kFrame) place = Found(*form, name, part);
    }
  }
  if (place.control == nullptr)
    throw Trouble{kUnknown, "there is no control " + whole + " on " + top->Name()};
  return place;
}

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/form.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace vlt {

bool FormHooks::IsMasterBox(const Control& control) const {
  return control.Kind() == ControlKind::kCheckBox && control.Name() == "chkCheck";
}

bool FormHooks::IsChoice(const Control& control) const {
  (void)control;
  return false;
}

bool FormHooks::StaysUsable(const Control& control) const {
  (void)control;
  return false;
}

Form::Form(Windows& windows, std::string name, FormPlace place)
    : windows_(windows), name_(std::move(name)), place_(place) {}

Form::~Form() = default;

Platform& Form::Machine() const { return windows_.Machine(); }

Control* Form::Find(std::string_view full_name) const {
  const auto found = std::find_if(Controls().begin(), Controls().end(),
                                  [&](const Control* c) { return c->FullName() == full_name; });
  return found == Controls().end() ? nullptr : *found;
}

void Form::RunHandler(const std::function<void()>& handler) { windows_.Run(handler); }

void Form::RunHook(void (FormHooks::*hook)()) {
  const Windows::Stay stay(windows_);
  (this->*hook)();
  for (const auto& part : parts_) (part.get()->*hook)();
}

bool Form::MayUnload() {
  int cancel = 0;
  for (auto part = parts_.rbegin(); part != parts_.rend() && cancel == 0; ++part)
    (*part)->Form_Unload(cancel);
  if (cancel == 0) Form_Unload(cancel);
  return cancel == 0;
}

const Control* Form::StopButton() const {
  for (const auto& part : parts_) {
    if (const Control* button = part->StopButton()) return button;
  }
  return nullptr;
}

bool Form::IsMasterBox(const Control& control) const {
  return FormHooks::IsMasterBox(control) ||
         std::any_of(parts_.begin(), parts_.end(), [&](const auto& p) { return p->IsMasterBox(control); });
}

bool Form::IsLive() const {
  return std::any_of(parts_.begin(), parts_.end(), [](const auto& p) { return p->IsLive(); });
}

bool Form::IsChoice(const Control& control) const {
  return std::any_of(parts_.begin(), parts_.end(), [&](const auto& p) { return p->IsChoice(control); });
}

void Form::Changed() {
  if (observer_) observer_();
}

void Form::SetCaption(const std::string& caption) {
  if (caption_ == caption) return;
  caption_ = caption;
  Changed();
}

void Form::SetCloseCommand(bool there) {
  if (close_command_ == there) return;
  close_command_ = there;
  Changed();
}

void Form::Show() {
  if (!windows_.Exists(this)) return;
  const Windows::Stay stay(windows_);
  visible_ = true;
  windows_.BringToFront(*this);
  windows_.activated_ = this;
  Changed();
  RunHook(&FormHooks::Form_Activate);
  RunHook(&FormHooks::Settled);
}

void Form::Hide() {
  if (!visible_) return;
  visible_ = false;
  Changed();
}

Windows::Stay::~Stay() {
  if (--list_.depth_ > 0) return;
  // Out of the list first: a window that goes may still look at it.
  const std::vector<FormPtr> gone = std::exchange(list_.unloaded_, {});
}

void Windows::Discard::operator()(Form* form) const {
  while (!form->parts_.empty()) form->parts_.pop_back();
  delete form;
}

Windows::~Windows() {
  // Later windows may refer to earlier ones, so they go first.
  unloaded_.clear();
  while (!forms_.empty()) forms_.pop_back();
}

void Windows::Register(const std::string& name, Factory factory) { factories_[name] = std::move(factory); }

void Windows::RegisterPart(const std::string& name, PartFactory factory) {
  part_factories_[name].push_back(std::move(factory));
}

std::vector<std::string> Windows::RegisteredNames() const {
  std::vector<std::string> names;
  for (const auto& [name, factory] : factories_) names.push_back(name);
  return names;
}

Windows::FormPtr Windows::Make(const std::string& name) const {
  FormPtr form(factories_.at(name)().release());
  if (const auto found = part_factories_.find(name); found != part_factories_.end()) {
    for (const PartFactory& make : found->second) form->parts_.push_back(make(*form));
  }
  return form;
}

Form& Windows::Load(const std::string& name) {
  if (Form* form = Find(name)) return *form;
  const Stay stay(*this);
  forms_.push_back(Make(name));
  Form& form = *forms_.back();
  front_order_.insert(front_order_.begin(), &form);
  try {
    if (observer_.loaded) observer_.loaded(form);
    form.RunHook(&FormHooks::Form_Load);
  } catch (...) {
    Bury(&form);
    throw;
  }
  return form;
}

Form* Windows::Find(std::string_view name) const {
  const auto found =
      std::find_if(forms_.begin(), forms_.end(), [&](const auto& f) { return f->Name() == name; });
  return found == forms_.end() ? nullptr : found->get();
}

bool Windows::Unload(const std::string& name) {
  Form* form = Find(name);
  if (form == nullptr) return true;
  const Stay stay(*this);
  const bool may = form->MayUnload();
  if (may) Bury(form);
  // A hook may have given way, and the window may be gone already.
  return may || !Exists(form);
}

void Windows::Bury(const Form* gone) {
  const auto at = std::find_if(forms_.begin(), forms_.end(), [&](const auto& f) { return f.get() == gone; });
  if (at == forms_.end()) return;
  Form& form = **at;
  std::erase(front_order_, &form);
  if (activated_ == gone) activated_ = nullptr;
  unloaded_.push_back(std::move(*at));
  forms_.erase(at);
  if (observer_.unloaded) observer_.unloaded(form);
  for (Control* control : form.Controls()) {
    if (control->Kind() == ControlKind::kTimer) static_cast<Timer*>(control)->SetRunning(false);
  }
  form.Hide();
}

std::vector<Form*> Windows::Open() const {
  std::vector<Form*> open;
  for (const auto& form : forms_) open.push_back(form.get());
  return open;
}

bool Windows::Exists(const Form* form) const {
  return std::any_of(forms_.begin(), forms_.end(), [&](const auto& f) { return f.get() == form; });
}

std::vector<Form*> Windows::VisibleForms() const {
  std::vector<Form*> visible;
  for (Form* form : front_order_) {
    if (form->Visible()) visible.push_back(form);
  }
  return visible;
}

std::vector<Form*> Windows::VisiblePages() const {
  std::vector<Form*> pages = VisibleForms();
  std::erase_if(pages, [](const Form* form) { return form->Place() != FormPlace::kPage; });
  return pages;
}

void Windows::SetMousePointer(int pointer) {
  if (pointer_ == pointer) return;
  pointer_ = pointer;
  if (observer_.pointer_changed) observer_.pointer_changed();
}

void Windows::BringToFront(Form& form) {
  std::erase(front_order_, &form);
  front_order_.push_back(&form);
}

void Windows::Settle() {
  for (const auto& form : forms_) form->RunHook(&FormHooks::Settled);
}

Form* Windows::PageToActivate() const {
  const std::vector<Form*> visible = VisibleForms();
  const auto front = std::find_if(visible.rbegin(), visible.rend(), [](const Form* form) {
    return form->Place() != FormPlace::kFrame && form->Place() != FormPlace::kOnTop;
  });
  if (front == visible.rend() || *front == activated_) return nullptr;
  return (*front)->Place() == FormPlace::kPage ? *front : nullptr;
}

// Only behind the outermost handler: what it waits for is over then.
void Windows::ActivateFront() {
  if (depth_ > 1) return;
  if (Form* page = PageToActivate()) {
    activated_ = page;
    page->RunHook(&FormHooks::Form_Activate);
  }
}

void Windows::Run(const std::function<void()>& handler) {
  const Stay stay(*this);
  const auto work = [&] {
    handler();
    ActivateFront();
    Settle();
  };
  if (!observer_.failed) {
    work();
    return;
  }
  std::string what;
  try {
    work();
    return;
  } catch (const std::exception& failure) {
    what = failure.what();
  } catch (...) {
    what = "?";
  }
  // Outside of the catch: the observer waits for the operator.
  observer_.failed(what);
}

}  // namespace vlt

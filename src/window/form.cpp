#include "window/form.h"

#include <algorithm>
#include <exception>

namespace vlt {

Form::Form(Windows& windows, std::string name, FormPlace place)
    : windows_(windows), name_(std::move(name)), place_(place) {}

Form::~Form() = default;

Platform& Form::Machine() const { return windows_.Machine(); }

Control* Form::Find(std::string_view full_name) const {
  const auto found = std::find_if(controls_.begin(), controls_.end(),
                                  [&](Control* c) { return c->FullName() == full_name; });
  return found == controls_.end() ? nullptr : *found;
}

bool Form::IsMasterBox(const Control& control) const {
  return control.Kind() == ControlKind::kCheckBox && control.Name() == "chkCheck";
}

bool Form::IsChoice(const Control& control) const {
  (void)control;
  return false;
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
  visible_ = true;
  windows_.BringToFront(*this);
  Changed();
  Form_Activate();
}

void Form::Hide() {
  if (!visible_) return;
  visible_ = false;
  Changed();
}

void Form::SetFocus(Control& control) {
  focused_ = &control;
  ++focus_count_;
  Changed();
}

Windows::~Windows() {
  // Later windows may refer to earlier ones, so they go first.
  unloaded_.clear();
  while (!forms_.empty()) forms_.pop_back();
}

void Windows::Register(const std::string& name, Factory factory) { factories_[name] = std::move(factory); }

std::vector<std::string> Windows::RegisteredNames() const {
  std::vector<std::string> names;
  for (const auto& [name, factory] : factories_) names.push_back(name);
  return names;
}

Form& Windows::Load(const std::string& name) {
  if (Form* form = Find(name)) return *form;
  forms_.push_back(factories_.at(name)());
  Form& form = *forms_.back();
  front_order_.insert(front_order_.begin(), &form);
  if (observer_.loaded) observer_.loaded(form);
  form.Form_Load();
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
  int cancel = 0;
  form->Form_Unload(cancel);
  if (cancel != 0) return false;
  // The handler may have given way, and the window may be gone already.
  const auto at = std::find_if(forms_.begin(), forms_.end(), [&](const auto& f) { return f.get() == form; });
  if (at != forms_.end()) Bury(static_cast<std::size_t>(at - forms_.begin()));
  return true;
}

void Windows::Bury(std::size_t at) {
  Form& form = *forms_[at];
  for (Control* control : form.Controls()) {
    if (control->Kind() == ControlKind::kTimer) static_cast<Timer*>(control)->SetRunning(false);
  }
  form.Hide();
  if (observer_.unloaded) observer_.unloaded(form);
  std::erase(front_order_, &form);
  unloaded_.push_back(std::move(forms_[at]));
  forms_.erase(forms_.begin() + static_cast<std::ptrdiff_t>(at));
  if (depth_ == 0) unloaded_.clear();
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

void Windows::Run(const std::function<void()>& handler) {
  struct Depth {
    explicit Depth(Windows& windows) : list(windows) { ++list.depth_; }
    ~Depth() {
      if (--list.depth_ == 0) list.unloaded_.clear();
    }
    Windows& list;
  } depth(*this);
  if (!observer_.failed) {
    handler();
    return;
  }
  std::string what;
  try {
    handler();
    return;
  } catch (const std::exception& failure) {
    what = failure.what();
  }
  // Outside of the catch: the observer waits for the operator.
  observer_.failed(what);
}

}  // namespace vlt

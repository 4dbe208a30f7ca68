// SPDX-License-Identifier: GPL-3.0-or-later
// A window as the logic sees it, the parts that it is made of, and the list of the windows that exist.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/platform.h"
#include "window/control.h"

namespace vlt {

class Form;
class Windows;

// How a window lies on the screen.
enum class FormPlace {
  kPage,    // inside the main window, maximised
  kFrame,   // the main window
  kWindow,  // a window of its own above the main window
  kOnTop,   // a window of its own above all windows
};

// What the program asks of a window, and of each part of it in turn.
class FormHooks {
 public:
  virtual ~FormHooks() = default;

  // Life of a window. Load runs once before the first use; Unload may refuse by setting `cancel` to -1.
  virtual void Form_Load() {}
  virtual void Form_Activate() {}
  virtual void Form_Deactivate() {}
  virtual void Form_Unload(int& cancel) { (void)cancel; }

  // Captions, fonts, units and lengths in the language in force.
  virtual void FrmInit() {}
  // An event has been worked off, in this window or another one, and when the window is shown: what follows
  // from controls and shared state is brought up to date. Asks nobody and unloads nothing.
  virtual void Settled() {}

  // What a page offers to the parameter file: slots to controls, controls to slots. Windows that hold no
  // parameters do nothing.
  virtual void SetteiHannei() {}
  virtual void Taihi() {}

  // What a window answers for itself while an operation locks its controls. The answer of a window is that of
  // its parts, unless it has one of its own.
  // The one button that stays usable while the window is locked, or null.
  virtual const Control* StopButton() const { return nullptr; }
  // True for the box that ticks and clears all others; a window's own is a check box named chkCheck.
  virtual bool IsMasterBox(const Control& control) const;
  // True while a live read of this window is running.
  virtual bool IsLive() const { return false; }
  // True for a button that touches neither the line nor a meter: it stays usable under every lock.
  virtual bool StaysUsable(const Control& control) const;
  // True for the option buttons that choose what is looked at.
  virtual bool IsChoice(const Control& control) const;
};

// A piece of a window that another folder adds: its controls are made on `whole` and are the window's. It
// comes after the window and goes before it.
class FormPart : public FormHooks {
 public:
  explicit FormPart(Form& whole) : whole_(whole) {}
  FormPart(const FormPart&) = delete;
  FormPart& operator=(const FormPart&) = delete;
  Form& Whole() const { return whole_; }

 private:
  Form& whole_;
};

class Form : public ControlOwner, public FormHooks {
 public:
  Form(Windows& windows, std::string name, FormPlace place);
  ~Form() override;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  const std::string& Name() const { return name_; }
  FormPlace Place() const { return place_; }
  Windows& List() const { return windows_; }
  Platform& Machine() const override;
  void RunHandler(const std::function<void()>& handler) override;

  // By full name ("Label2(7)"), or null.
  Control* Find(std::string_view full_name) const;
  // The part of this class, or null.
  template <class T>
  T* Part() const {
    for (const auto& part : parts_) {
      if (auto* found = dynamic_cast<T*>(part.get())) return found;
    }
    return nullptr;
  }

  const std::string& Caption() const { return caption_; }
  void SetCaption(const std::string& caption);
  bool Visible() const { return visible_; }
  // The Close item of the window's system menu.
  bool HasCloseCommand() const { return close_command_; }
  void SetCloseCommand(bool there);

  // Makes it visible, brings it to the front and runs Form_Activate. Nothing on a window that was unloaded.
  void Show();
  // Makes it invisible; its controls keep what they hold.
  void Hide();

  // Told after each change of caption, visibility, close command, focus, or front.
  void Observe(std::function<void()> observer) { observer_ = std::move(observer); }

  // Runs a hook of the window and then of its parts, in order.
  void RunHook(void (FormHooks::*hook)());

  const Control* StopButton() const override;
  bool IsMasterBox(const Control& control) const override;
  bool IsLive() const override;
  bool IsChoice(const Control& control) const override;

 private:
  friend class Windows;
  void Changed() override;
  // Parts first, the last one before the others: who refuses keeps the window whole.
  bool MayUnload();

  Windows& windows_;
  std::string name_;
  FormPlace place_;
  std::string caption_;
  std::vector<std::unique_ptr<FormPart>> parts_;
  bool visible_ = false;
  bool close_command_ = true;
  std::function<void()> observer_;
};

// What the screen shows while an operation runs.
inline constexpr int kNormalPointer = 0;
inline constexpr int kHourglassPointer = 11;

// Every window is a singleton, created at its first use and gone when it is unloaded. A window that is
// unloaded while a handler still runs (its own, or a hook of the list) is kept alive until the outermost one
// has returned.
class Windows {
 public:
  using Factory = std::function<std::unique_ptr<Form>()>;
  using PartFactory = std::function<std::unique_ptr<FormPart>(Form& whole)>;
  // Told when a window comes and goes (desktop: makes and drops the widgets), and of a handler that ended by
  // an exception: what it says. Without `failed` the exception goes on to the caller of Run.
  struct Observer {
    std::function<void(Form&)> loaded = {};
    std::function<void(Form&)> unloaded = {};
    std::function<void()> pointer_changed = {};
    std::function<void(const std::string& what)> failed = {};
  };

  explicit Windows(Platform& platform) : platform_(platform) {}
  ~Windows();

  Platform& Machine() const { return platform_; }
  void Register(const std::string& name, Factory factory);
  // Each window of this name is made with the part, behind those that were registered before. The window
  // itself may be registered later.
  void RegisterPart(const std::string& name, PartFactory factory);
  bool IsRegistered(const std::string& name) const { return factories_.contains(name); }
  std::vector<std::string> RegisteredNames() const;
  void SetObserver(Observer observer) { observer_ = std::move(observer); }

  // The window of this name, created and loaded when it does not exist yet. An unregistered name is a
  // programming error and throws std::out_of_range. A window whose Form_Load throws is gone again.
  Form& Load(const std::string& name);
  // The window if it exists, or null.
  Form* Find(std::string_view name) const;
  // False when the window refused. Unloading what does not exist is true.
  bool Unload(const std::string& name);
  // The windows that exist, in order of their creation. A copy: windows may come and go while it is walked.
  std::vector<Form*> Open() const;
  // True while `form`, taken from Open() earlier, still exists.
  bool Exists(const Form* form) const;
  // Visible windows, the one that came to the front last at the end.
  std::vector<Form*> VisibleForms() const;
  // Visible pages, the topmost last.
  std::vector<Form*> VisiblePages() const;

  int MousePointer() const { return pointer_; }
  void SetMousePointer(int pointer);

  // The handler that asks runs inside another one, which waits for its end.
  bool IsInside() const { return depth_ > 1; }
  // Every event enters the logic through here. At its end the page that is in front now and was not before
  // is activated: the window above it is gone, or what kept it from being told has ended.
  void Run(const std::function<void()>& handler);
  // A run of `form` has ended. A page that came to the front meanwhile could not ask the meter, so it is
  // activated anew when the handler in hand has ended.
  void RunHasEnded(const Form& form) {
    if (activated_ != &form) activated_ = nullptr;
  }

 private:
  friend class Form;
  // While one exists no window is destroyed.
  class Stay {
   public:
    explicit Stay(Windows& windows) : list_(windows) { ++list_.depth_; }
    ~Stay();
    Stay(const Stay&) = delete;
    Stay& operator=(const Stay&) = delete;

   private:
    Windows& list_;
  };
  // Parts refer to their window, so they go before it.
  struct Discard {
    void operator()(Form* form) const;
  };
  using FormPtr = std::unique_ptr<Form, Discard>;

  FormPtr Make(const std::string& name) const;
  void Settle();
  // The window in front, when it is a page that was not activated since it came there.
  Form* PageToActivate() const;
  void ActivateFront();
  void BringToFront(Form& form);
  void Bury(const Form* form);

  Platform& platform_;
  std::map<std::string, Factory> factories_;
  std::map<std::string, std::vector<PartFactory>> part_factories_;
  std::vector<FormPtr> forms_;
  std::vector<Form*> front_order_;
  std::vector<FormPtr> unloaded_;
  Observer observer_;
  // The window that was in front when it was told so last.
  const Form* activated_ = nullptr;
  int pointer_ = kNormalPointer;
  int depth_ = 0;
};

}  // namespace vlt

// Runs an action when a library ends the process. Toolkits do so when the display goes away: Qt on
// X11 calls exit(), Qt on Wayland calls _exit() on a thread of its own, and so does GTK, which Qt
// loads on GTK desktops. The stack is not unwound then, and unsaved data would be lost. One object
// at a time, constructed on the main thread while the application object exists.
#pragma once

#include <functional>

namespace tollbeam {

class ExitHook {
 public:
  /// `action` runs at most once, always on the main thread; another thread that ends the process
  /// waits for it, five seconds at most. It must not use Qt, which may be partly destroyed by then.
  /// A forked child that exits does not run it.
  explicit ExitHook(std::function<void()> action);
  ExitHook(const ExitHook&) = delete;
  ExitHook& operator=(const ExitHook&) = delete;
  /// Drops the action, as at the ordinary end of the process.
  ~ExitHook();
};

}  // namespace tollbeam

// Runs an action when a library ends the process. Toolkits do that when the display goes away: Qt
// on X11 calls exit(), Qt on Wayland _exit() on a thread of its own, and so does GTK, which Qt
// loads on GTK desktops. Nothing is unwound then, and what is only in memory would be lost. One
// object at a time, made on the main thread while the application object lives.
#pragma once

#include <functional>

namespace tollbeam {

class ExitHook {
 public:
  /// `action` runs at most once, always on the main thread; another thread that ends the process
  /// waits for it, some seconds at most. It must not use Qt, which may be half taken down by then.
  /// A forked child that exits does not run it.
  explicit ExitHook(std::function<void()> action);
  ExitHook(const ExitHook&) = delete;
  ExitHook& operator=(const ExitHook&) = delete;
  /// Drops the action: the ordinary end.
  ~ExitHook();
};

}  // namespace tollbeam

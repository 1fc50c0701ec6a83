#include "platform/freedesktop/session/ExitHook.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QMetaObject>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <semaphore>
#include <utility>

namespace tollbeam {

namespace {

using namespace std::chrono_literals;

// A main thread that hangs must not keep the process alive.
constexpr auto kPatience = 5s;

// Used on the main thread only.
std::function<void()> pending;
// The process's identifier, which is also its main thread's; 0 while no action is pending.
std::atomic<pid_t> owner = 0;
std::counting_semaphore<> done(0);

void runOnMainThread() {
  owner = 0;
  if (const auto action = std::exchange(pending, nullptr)) action();
  done.release();
}

void runPending() {
  // A child of vfork() shares the parent's memory, so the identifier must be queried each time.
  if (owner == 0 || ::getpid() != owner) return;
  if (::gettid() == owner) {
    runOnMainThread();
  } else if (auto* app = QCoreApplication::instance()) {
    QMetaObject::invokeMethod(app, runOnMainThread, Qt::QueuedConnection);
    (void)done.try_acquire_for(kPatience);
  }
}

}  // namespace

ExitHook::ExitHook(std::function<void()> action) {
  pending = std::move(action);
  owner = ::getpid();
  // Handlers run in reverse order: this one before the destructors of all statics initialised so
  // far.
  [[maybe_unused]] static const int registered = std::atexit(runPending);
}

ExitHook::~ExitHook() {
  owner = 0;
  pending = nullptr;
}

}  // namespace tollbeam

// Replaces the C library's function for all libraries of the process: _exit() runs no handlers.
extern "C" [[gnu::visibility("default")]] void _exit(int status) {
  tollbeam::runPending();
  while (true) ::syscall(SYS_exit_group, status);
}

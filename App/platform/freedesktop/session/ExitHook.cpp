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

// A main thread that hangs must not keep the process.
constexpr auto kPatience = 5s;

// Touched by the main thread alone.
std::function<void()> pending;
// The number of the process, which is that of its main thread; 0 while nothing is pending.
std::atomic<pid_t> owner = 0;
std::counting_semaphore<> done(0);

void runOnMainThread() {
  owner = 0;
  if (const auto action = std::exchange(pending, nullptr)) action();
  done.release();
}

void runPending() {
  // In a child of vfork() the memory is the parent's, so that the number is asked for each time.
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
  // Handlers run in reverse order: this one before anything is destroyed that is static until now.
  [[maybe_unused]] static const int registered = std::atexit(runPending);
}

ExitHook::~ExitHook() {
  owner = 0;
  pending = nullptr;
}

}  // namespace tollbeam

// Takes the place of the C library's for all libraries of the process: no handler sees _exit().
extern "C" [[gnu::visibility("default")]] void _exit(int status) {
  tollbeam::runPending();
  while (true) ::syscall(SYS_exit_group, status);
}

#include "platform/freedesktop/session/TerminationSignals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <QCoreApplication>
#include <csignal>

namespace tollbeam {

TerminationSignals::TerminationSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&signals, number);
  // Blocked here before any thread starts, so that every thread inherits it.
  if (sigprocmask(SIG_BLOCK, &signals, nullptr) != 0) return;
  descriptor_ = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
  if (descriptor_ < 0) {
    sigprocmask(SIG_UNBLOCK, &signals, nullptr);
  }
}

void TerminationSignals::watch() {
  if (descriptor_ < 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
    signalfd_siginfo info{};
    if (read(descriptor_, &info, sizeof info) == sizeof info) QCoreApplication::quit();
  });
}

TerminationSignals::~TerminationSignals() {
  notifier_.reset();
  if (descriptor_ >= 0) close(descriptor_);
}

}  // namespace tollbeam

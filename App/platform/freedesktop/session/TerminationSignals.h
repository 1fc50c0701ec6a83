// Ends the event loop in good order when the session tells the program to go (SIGTERM, SIGINT,
// SIGHUP), so that what is only in memory is saved. One object per process, made before any thread
// starts and before the application object; `watch` comes after it.
#pragma once

#include <QSocketNotifier>
#include <memory>

namespace tollbeam {

class TerminationSignals {
 public:
  TerminationSignals();
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;
  ~TerminationSignals();

  void watch();

 private:
  int descriptor_ = -1;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tollbeam

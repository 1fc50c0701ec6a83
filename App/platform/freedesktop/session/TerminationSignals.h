// Ends the event loop normally on SIGTERM, SIGINT and SIGHUP, so that unsaved data is saved. One
// object per process, constructed before any thread starts and before the application object; call
// `watch` after constructing that.
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

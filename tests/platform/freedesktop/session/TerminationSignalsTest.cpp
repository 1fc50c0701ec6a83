#include "platform/freedesktop/session/TerminationSignals.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimer>
#include <csignal>

namespace tollbeam {
namespace {

class TerminationSignalsTest : public testing::TestWithParam<int> {
 protected:
  TerminationSignalsTest() { sigprocmask(SIG_SETMASK, nullptr, &usual); }
  ~TerminationSignalsTest() override { sigprocmask(SIG_SETMASK, &usual, nullptr); }

  /// Runs the event loop. Whether it ended normally.
  static bool loopEnds() {
    bool saved = false;
    const QObject context;
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, &context,
                     [&] { saved = true; });
    return QCoreApplication::exec() == 0 && saved;
  }

  sigset_t usual{};
};

TEST_P(TerminationSignalsTest, EndTheEventLoopInGoodOrder) {
  TerminationSignals signals;
  signals.watch();
  QTimer::singleShot(0, [] { std::raise(GetParam()); });
  EXPECT_TRUE(loopEnds());
}

TEST_P(TerminationSignalsTest, CountWhenTheyComeBeforeTheLoop) {
  TerminationSignals signals;
  std::raise(GetParam());
  signals.watch();
  EXPECT_TRUE(loopEnds());
}

INSTANTIATE_TEST_SUITE_P(OfASession, TerminationSignalsTest,
                         testing::Values(SIGTERM, SIGINT, SIGHUP));

TEST(TerminationSignalsDeathTest, LeaveOtherSignalsAlone) {
  EXPECT_EXIT(
      {
        const TerminationSignals signals;
        std::raise(SIGUSR1);
      },
      testing::KilledBySignal(SIGUSR1), "");
}

}  // namespace
}  // namespace tollbeam

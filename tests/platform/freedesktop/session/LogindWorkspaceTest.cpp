#include "platform/freedesktop/session/LogindWorkspace.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <QDBusVirtualObject>
#include <array>
#include <memory>
#include <utility>

#include "support/FakeProperties.h"
#include "support/PrivateBus.h"

namespace tollbeam {
namespace {

using test::waitFor;

const auto service = QStringLiteral("org.freedesktop.login1");
const auto path = QStringLiteral("/org/freedesktop/login1");
const auto interface = QStringLiteral("org.freedesktop.login1.Manager");

// The machines that build and test do not sleep, and the real daemon does not run on them. Locks
// are as logind makes them: one end of a pipe, held as long as any process has it open.
class FakeLogind final : public QDBusVirtualObject {
 public:
  explicit FakeLogind(const QDBusConnection& bus) : bus_(bus) {
    bus_.registerVirtualObject(path, this);
  }
  FakeLogind(const FakeLogind&) = delete;
  FakeLogind& operator=(const FakeLogind&) = delete;
  ~FakeLogind() override {
    bus_.unregisterObject(path);
    for (const int end : ends_) ::close(end);
  }

  bool silent = false;
  QVariantList asked;

  void start() { ASSERT_TRUE(bus_.registerService(service)); }
  void stop() { bus_.unregisterService(service); }

  void announceSleep(bool start) {
    auto signal = QDBusMessage::createSignal(path, interface, QStringLiteral("PrepareForSleep"));
    signal << start;
    bus_.send(signal);
  }

  void answer() {
    for (const auto& question : std::exchange(unanswered_, {})) {
      std::array<int, 2> ends{};
      ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
      ends_.push_back(ends[0]);
      bus_.send(question.createReply(QVariant::fromValue(QDBusUnixFileDescriptor(ends[1]))));
      ::close(ends[1]);
    }
  }

  [[nodiscard]] std::size_t given() const { return ends_.size(); }

  [[nodiscard]] int held() const {
    int count = 0;
    for (const int end : ends_) {
      pollfd poll{end, POLLIN, 0};
      ::poll(&poll, 1, 0);
      if (!(poll.revents & POLLHUP)) ++count;
    }
    return count;
  }

  [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& /*bus*/) override {
    if (message.member() != QStringLiteral("Inhibit")) return false;
    asked = message.arguments();
    unanswered_ << message;
    if (!silent) answer();
    return true;
  }

 private:
  QDBusConnection bus_;
  std::vector<int> ends_;
  QList<QDBusMessage> unanswered_;
};

class LogindWorkspaceTest : public testing::Test {
 protected:
  void startWorkspace() {
    workspace = std::make_unique<LogindWorkspace>(bus.join());
    willSleep = workspace->onWillSleep([this] {
      ++sleeps;
      heldInCallback = logind.held();
    });
    didWake = workspace->onDidWake([this] { ++wakes; });
  }

  void startBoth() {
    logind.start();
    startWorkspace();
    ASSERT_TRUE(waitFor([this] { return logind.given() == 1; }));
  }

  void letAStrangerAnnounceSleep() {
    auto stranger = bus.connect();
    auto signal = QDBusMessage::createSignal(path, interface, QStringLiteral("PrepareForSleep"));
    signal << true;
    stranger.send(signal);
    ASSERT_TRUE(test::passedOn(stranger));
  }

  test::PrivateBus bus;
  FakeLogind logind{bus.connect()};
  int sleeps = 0;
  int wakes = 0;
  int heldInCallback = -1;
  std::unique_ptr<LogindWorkspace> workspace;
  Subscription willSleep;
  Subscription didWake;
};

TEST_F(LogindWorkspaceTest, TakesADelayLockWhileTheMachineIsAwake) {
  startBoth();
  ASSERT_EQ(logind.asked.size(), 4);
  EXPECT_EQ(logind.asked.at(0), QStringLiteral("sleep"));
  EXPECT_EQ(logind.asked.at(1), QStringLiteral("Tollbeam"));
  EXPECT_FALSE(logind.asked.at(2).toString().isEmpty());
  EXPECT_EQ(logind.asked.at(3), QStringLiteral("delay"));
  EXPECT_EQ(logind.held(), 1);
}

TEST_F(LogindWorkspaceTest, ReleasesTheLockAfterTheObserversHaveReturned) {
  startBoth();
  logind.announceSleep(true);
  EXPECT_TRUE(waitFor([this] { return logind.held() == 0; }));
  EXPECT_EQ(sleeps, 1);
  EXPECT_EQ(heldInCallback, 1);
  EXPECT_EQ(wakes, 0);
}

TEST_F(LogindWorkspaceTest, TakesANewLockAfterWaking) {
  startBoth();
  logind.announceSleep(true);
  ASSERT_TRUE(waitFor([this] { return logind.held() == 0; }));
  logind.announceSleep(false);
  EXPECT_TRUE(waitFor([this] { return logind.given() == 2; }));
  EXPECT_EQ(wakes, 1);
  EXPECT_EQ(logind.held(), 1);
}

TEST_F(LogindWorkspaceTest, ReleasesALockThatComesTooLate) {
  logind.silent = true;
  logind.start();
  startWorkspace();
  ASSERT_TRUE(waitFor([this] { return !logind.asked.isEmpty(); }));
  logind.announceSleep(true);
  ASSERT_TRUE(waitFor([this] { return sleeps == 1; }));
  logind.answer();
  EXPECT_TRUE(waitFor([this] { return logind.held() == 0; }));
  EXPECT_EQ(logind.given(), 1U);
}

TEST_F(LogindWorkspaceTest, FollowsARestartOfLogind) {
  startBoth();
  logind.stop();
  logind.start();
  EXPECT_TRUE(waitFor([this] { return logind.given() == 2 && logind.held() == 1; }));
  EXPECT_EQ(wakes, 0);
  logind.announceSleep(true);
  EXPECT_TRUE(waitFor([this] { return logind.held() == 0; }));
}

TEST_F(LogindWorkspaceTest, AnnouncesAWakeWhenLogindDiesInASleep) {
  startBoth();
  logind.announceSleep(true);
  ASSERT_TRUE(waitFor([this] { return sleeps == 1; }));
  logind.stop();
  logind.start();
  EXPECT_TRUE(waitFor([this] { return wakes == 1; }));
  EXPECT_TRUE(waitFor([this] { return logind.held() == 1; }));
}

TEST_F(LogindWorkspaceTest, WaitsForALogindThatComesLater) {
  startWorkspace();
  logind.start();
  EXPECT_TRUE(waitFor([this] { return logind.held() == 1; }));
  logind.announceSleep(true);
  EXPECT_TRUE(waitFor([this] { return sleeps == 1; }));
}

TEST_F(LogindWorkspaceTest, IgnoresSignalsOfOtherProcesses) {
  startBoth();
  letAStrangerAnnounceSleep();
  logind.announceSleep(true);
  logind.announceSleep(false);
  ASSERT_TRUE(waitFor([this] { return wakes == 1; }));
  EXPECT_EQ(sleeps, 1);
}

TEST_F(LogindWorkspaceTest, IgnoresAllSignalsWithoutLogind) {
  startWorkspace();
  letAStrangerAnnounceSleep();
  logind.start();
  ASSERT_TRUE(waitFor([this] { return logind.held() == 1; }));
  logind.announceSleep(true);
  ASSERT_TRUE(waitFor([this] { return logind.held() == 0; }));
  EXPECT_EQ(sleeps, 1);
  EXPECT_EQ(wakes, 0);
}

TEST_F(LogindWorkspaceTest, WorksAgainOnARestartedBus) {
  startBoth();
  bus.stop();
  bus.start();
  FakeLogind restarted{bus.connect()};
  restarted.start();
  ASSERT_TRUE(waitFor([&] { return restarted.held() == 1; }));
  restarted.announceSleep(true);
  EXPECT_TRUE(waitFor([&] { return sleeps == 1 && restarted.held() == 0; }));
  restarted.announceSleep(false);
  EXPECT_TRUE(waitFor([&] { return wakes == 1; }));
}

TEST_F(LogindWorkspaceTest, AnnouncesAWakeWhenTheBusEndsInASleep) {
  startBoth();
  logind.announceSleep(true);
  ASSERT_TRUE(waitFor([this] { return sleeps == 1; }));
  bus.stop();
  EXPECT_TRUE(waitFor([this] { return wakes == 1; }));
}

TEST_F(LogindWorkspaceTest, ReleasesItsLockWhenDestroyed) {
  startBoth();
  workspace.reset();
  EXPECT_TRUE(waitFor([this] { return logind.held() == 0; }));
}

TEST_F(LogindWorkspaceTest, MayBeDestroyedInItsOwnCallback) {
  startBoth();
  willSleep = workspace->onWillSleep([this] { workspace.reset(); });
  logind.announceSleep(true);
  EXPECT_TRUE(waitFor([this] { return workspace == nullptr && logind.held() == 0; }));
}

}  // namespace
}  // namespace tollbeam

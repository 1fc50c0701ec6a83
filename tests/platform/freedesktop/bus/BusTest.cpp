#include "platform/freedesktop/bus/Bus.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDBusPendingCallWatcher>
#include <QTimer>
#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <semaphore>
#include <string>
#include <string_view>
#include <thread>

#include "platform/freedesktop/bus/WhenFinished.h"
#include "support/FakeProperties.h"
#include "support/PrivateBus.h"

namespace tollbeam {
namespace {

using test::waitFor;

const auto kPath = QStringLiteral("/org/example/Object");
const auto kInterface = QStringLiteral("org.example.Interface");

/// A bus that hangs: it accepts one connection, sends `says`, receives until `last` has come, and
/// does nothing more. It ends by itself after half a minute, so that a test which it blocks fails.
class HungBus {
 public:
  HungBus(const QString& address, std::string_view says, std::string_view last) {
    const QByteArray path = address.section(QStringLiteral("unix:path="), 1).toLocal8Bit();
    ::unlink(path.constData());
    sockaddr_un name{.sun_family = AF_UNIX, .sun_path = {}};
    std::copy(path.begin(), path.end(), std::begin(name.sun_path));
    if (::bind(socket_, reinterpret_cast<const sockaddr*>(&name), sizeof name) != 0 ||
        ::listen(socket_, SOMAXCONN) != 0)
      std::abort();
    thread_ = std::thread([this, says, last] { serve(says, last); });
  }
  HungBus(const HungBus&) = delete;
  HungBus& operator=(const HungBus&) = delete;
  ~HungBus() {
    over_.release();
    // Ends the accept() that still waits if no client has come.
    ::shutdown(socket_, SHUT_RDWR);
    thread_.join();
    ::close(socket_);
  }

  [[nodiscard]] bool hangs() const { return hangs_; }
  [[nodiscard]] bool gaveUp() const { return gaveUp_; }

 private:
  void serve(std::string_view says, std::string_view last) {
    const int client = ::accept(socket_, nullptr, nullptr);
    ::send(client, says.data(), says.size(), MSG_NOSIGNAL);
    std::string heard;
    std::array<char, 512> bytes{};
    while (heard.find(last) == std::string::npos) {
      const auto count = ::recv(client, bytes.data(), bytes.size(), 0);
      if (count <= 0) break;
      heard.append(bytes.data(), std::size_t(count));
    }
    hangs_ = heard.find(last) != std::string::npos;
    gaveUp_ = !over_.try_acquire_for(std::chrono::seconds(30));
    ::shutdown(socket_, SHUT_RDWR);
    ::close(client);
  }

  const int socket_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  std::binary_semaphore over_{0};
  std::atomic<bool> hangs_ = false;
  std::atomic<bool> gaveUp_ = false;
  std::thread thread_;
};

class BusTest : public testing::Test {
 protected:
  BusTest() {
    QObject::connect(&ours, &Bus::lost, [this] { ++losses; });
    QObject::connect(&ours, &Bus::restored, [this] { ++returns; });
  }

  void lose() {
    bus.stop();
    ASSERT_TRUE(waitFor([this] { return losses == 1; }));
  }

  void restart() {
    lose();
    bus.start();
    ASSERT_TRUE(waitFor([this] { return returns == 1; }));
  }

  /// Starts a bus that hangs at the address of the ended one, lets `caller` meet it, and replaces
  /// it with a real one.
  void meetHungBus(Bus& caller, std::string_view says, std::string_view last) {
    QTimer timer;
    bool restored = false;
    QObject::connect(&caller, &Bus::restored, &timer, [&restored] { restored = true; });
    {
      const HungBus hung(bus.address(), says, last);
      ASSERT_TRUE(waitFor([&hung] { return hung.hangs(); }));
      int ticks = 0;
      QObject::connect(&timer, &QTimer::timeout, &timer, [&ticks] { ++ticks; });
      timer.start(10);
      ASSERT_TRUE(waitFor([&ticks] { return ticks == 10; }));
      timer.disconnect();
      ASSERT_FALSE(hung.gaveUp());
      EXPECT_FALSE(caller.isConnected());
    }
    bus.start();
    ASSERT_TRUE(waitFor([&restored] { return restored; }));
    EXPECT_TRUE(caller.isConnected());
  }

  /// The error of a call to the bus itself; empty when it succeeds.
  std::optional<QString> call() const {
    QObject receiver;
    std::optional<QString> error;
    whenFinished(ours.asyncCall(Bus::method("GetId")), &receiver,
                 [&error](const QDBusPendingCall& call) { error = call.reply().errorName(); });
    EXPECT_FALSE(error);
    waitFor([&] { return error.has_value(); });
    return error;
  }

  void say() {
    const auto speaker = bus.connect();
    speaker.send(QDBusMessage::createSignal(kPath, kInterface, QStringLiteral("Said")));
    ASSERT_TRUE(test::passedOn(speaker));
  }

  test::PrivateBus bus;
  Bus& ours = bus.join();
  int losses = 0;
  int returns = 0;
};

TEST_F(BusTest, IsConnectedAtOnce) {
  EXPECT_TRUE(ours.isConnected());
  EXPECT_EQ(call(), QString());
}

TEST_F(BusTest, CallsFailWhileThereIsNoBus) {
  lose();
  EXPECT_FALSE(ours.isConnected());
  EXPECT_EQ(call(), QStringLiteral("org.freedesktop.DBus.Error.Disconnected"));
}

TEST_F(BusTest, AnAnswerToADestroyedReceiverIsDropped) {
  bool called = false;
  auto receiver = std::make_unique<QObject>();
  whenFinished(ours.asyncCall(Bus::method("GetId")), receiver.get(),
               [&called](const QDBusPendingCall&) { called = true; });
  receiver.reset();
  ASSERT_TRUE(test::passedOn(ours.connection()));
  EXPECT_FALSE(called);
}

TEST_F(BusTest, PendingCallsFailWhenTheBusEnds) {
  auto service = bus.connect();
  test::FakeProperties object(service, kPath, kInterface);
  object.silent = true;
  const QDBusPendingCallWatcher watcher(ours.asyncCall(QDBusMessage::createMethodCall(
      service.baseService(), kPath, QStringLiteral("org.freedesktop.DBus.Properties"),
      QStringLiteral("GetAll"))));
  ASSERT_TRUE(waitFor([&] { return object.asked == 1; }));
  lose();
  EXPECT_TRUE(waitFor([&] { return watcher.isFinished(); }));
  EXPECT_TRUE(watcher.isError());
}

TEST_F(BusTest, ReconnectsWhenTheBusIsBack) {
  restart();
  EXPECT_TRUE(ours.isConnected());
  EXPECT_EQ(call(), QString());
  EXPECT_EQ(losses, 1);
}

TEST_F(BusTest, ReconnectsRepeatedly) {
  restart();
  losses = returns = 0;
  restart();
  EXPECT_EQ(call(), QString());
}

TEST_F(BusTest, ABusThatAcceptsAndHangsDoesNotBlock) {
  lose();
  meetHungBus(ours, "", "AUTH");
  EXPECT_EQ(call(), QString());
  EXPECT_EQ(returns, 1);
}

TEST_F(BusTest, ABusThatHangsAfterTheAuthenticationDoesNotBlock) {
  lose();
  meetHungBus(ours, "OK 0123456789abcdef0123456789abcdef\r\nAGREE_UNIX_FD\r\n", "Hello");
  EXPECT_EQ(call(), QString());
  EXPECT_EQ(returns, 1);
}

// The only test of this kind, because libdbus reads the variable once in a process.
TEST_F(BusTest, AHungSessionBusDoesNotBlock) {
  qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toLocal8Bit());
  Bus session(QDBusConnection::SessionBus);
  ASSERT_TRUE(session.isConnected());
  lose();
  meetHungBus(session, "", "AUTH");
}

TEST_F(BusTest, ConnectsToABusThatStartsLater) {
  bus.stop();
  Bus& late = bus.join();
  bool there = false;
  QObject::connect(&late, &Bus::restored, [&there] { there = true; });
  EXPECT_FALSE(late.isConnected());
  bus.start();
  EXPECT_TRUE(waitFor([&there] { return there; }));
  EXPECT_TRUE(late.isConnected());
}

TEST_F(BusTest, SubscriptionsHoldAfterARestart) {
  QTimer hearer;  // any object with a slot and a state
  ours.listen(kPath, kInterface, QStringLiteral("Said"), {}, &hearer, SLOT(start()));
  say();
  ASSERT_TRUE(waitFor([&hearer] { return hearer.isActive(); }));
  restart();
  hearer.stop();
  ASSERT_TRUE(test::passedOn(ours.connection()));
  say();
  EXPECT_TRUE(waitFor([&hearer] { return hearer.isActive(); }));
}

TEST_F(BusTest, ReceiversMayBeDestroyedBeforeTheBusIsBack) {
  auto hearer = std::make_unique<QTimer>();
  ours.listen(kPath, kInterface, QStringLiteral("Said"), {}, hearer.get(), SLOT(start()));
  lose();
  hearer.reset();
  bus.start();
  ASSERT_TRUE(waitFor([this] { return returns == 1; }));
  say();
  EXPECT_EQ(call(), QString());
}

}  // namespace
}  // namespace tollbeam

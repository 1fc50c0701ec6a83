#include "platform/freedesktop/notifications/DoNotDisturb.h"

#include <gtest/gtest.h>

#include <QDBusAbstractAdaptor>
#include <QDBusVariant>
#include <memory>
#include <optional>

#include "platform/freedesktop/notifications/RecordingServer.h"
#include "support/PrivateBus.h"

namespace tollbeam {

using namespace std::chrono_literals;
using test::waitFor;

/// What dunst adds to a server.
class DunstsPart final : public QDBusAbstractAdaptor {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.dunstproject.cmd0")
  Q_PROPERTY(bool paused MEMBER paused)

 public:
  explicit DunstsPart(QObject* server) : QDBusAbstractAdaptor(server) {}
  bool paused = true;
};

/// Where Xfce keeps its settings.
class Xfconf final : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.xfce.Xfconf")

 public:
  explicit Xfconf(QDBusConnection bus) {
    bus.registerObject(QStringLiteral("/org/xfce/Xfconf"), this,
                       QDBusConnection::ExportScriptableSlots);
    bus.registerService(QStringLiteral("org.xfce.Xfconf"));
  }
  QVariant value = true;

 public Q_SLOTS:
  Q_SCRIPTABLE QDBusVariant GetProperty(const QString& channel, const QString& property) {
    const bool ours =
        channel == QLatin1String("xfce4-notifyd") && property == QLatin1String("/do-not-disturb");
    return QDBusVariant(ours ? value : QVariant(false));
  }
};

namespace {

class DoNotDisturbTest : public testing::Test {
 protected:
  std::optional<bool> answer() {
    std::optional<bool> said;
    askDoNotDisturb(
        connection, &context, [&](bool on) { said = on; }, 300ms);
    EXPECT_FALSE(said) << "before the question was out";
    EXPECT_TRUE(waitFor([&] { return said.has_value(); }));
    return said;
  }

  test::PrivateBus bus;
  test::RecordingServer server{bus};
  Bus& connection = bus.join();
  QObject context;
};

TEST_F(DoNotDisturbTest, IsOffWithoutAServer) { EXPECT_EQ(answer(), false); }

TEST_F(DoNotDisturbTest, IsTheInhibitedPropertyOfTheServer) {
  server.start();
  EXPECT_EQ(answer(), false);
  server.inhibited = true;
  EXPECT_EQ(answer(), true);
}

TEST_F(DoNotDisturbTest, IsOnWhileDunstIsPaused) {
  auto* dunst = new DunstsPart(&server);
  server.start();
  EXPECT_EQ(answer(), true);
  dunst->paused = false;
  EXPECT_EQ(answer(), false);
}

TEST_F(DoNotDisturbTest, IsTheSettingOfXfceOnlyWithItsServer) {
  Xfconf settings(bus.connect());
  server.start();
  EXPECT_EQ(answer(), false);
  server.vendor = QStringLiteral("Xfce");
  EXPECT_EQ(answer(), true);
  settings.value = false;
  EXPECT_EQ(answer(), false);
  settings.value = QStringLiteral("true");
  EXPECT_EQ(answer(), false) << "no flag";
}

TEST_F(DoNotDisturbTest, IsOffWhenTheServerDoesNotAnswer) {
  server.hidesName = true;
  server.start();
  EXPECT_EQ(answer(), false);
}

}  // namespace

}  // namespace tollbeam

#include "DoNotDisturbTest.moc"

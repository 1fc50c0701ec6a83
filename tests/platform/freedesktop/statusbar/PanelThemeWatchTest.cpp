#include "platform/freedesktop/statusbar/PanelThemeWatch.h"

#include <gtest/gtest.h>

#include <QDBusVariant>
#include <QDir>

#include "support/FakeProperties.h"
#include "support/PrivateBus.h"
#include "support/Sandbox.h"

namespace tollbeam {
namespace {

using test::waitFor;

class PanelThemeWatchTest : public testing::Test {
 protected:
  PanelThemeWatchTest() {
    QObject::connect(&watch, &PanelThemeWatch::maybeChanged, [this] { ++hints; });
    // The bus has the rules of the watch before anything is sent.
    EXPECT_TRUE(test::passedOn(ours.connection()));
  }

  /// Waits for the signal's arrival, whether or not it becomes a hint.
  void changeXfceSetting(const char* channel) {
    auto signal = QDBusMessage::createSignal(QStringLiteral("/org/xfce/Xfconf"),
                                             QStringLiteral("org.xfce.Xfconf"),
                                             QStringLiteral("PropertyChanged"));
    signal << QString::fromLatin1(channel) << QStringLiteral("/panels/dark-mode")
           << QVariant::fromValue(QDBusVariant(true));
    xfconf.send(signal);
    ASSERT_TRUE(test::passedOn(xfconf));
    ASSERT_TRUE(test::passedOn(ours.connection()));
  }

  const test::Folder config;
  const test::Environment home{"XDG_CONFIG_HOME", config.path()};
  test::PrivateBus bus;
  Bus& ours = bus.join();
  QDBusConnection xfconf = bus.connect();
  PanelThemeWatch watch{ours};
  int hints = 0;
};

TEST_F(PanelThemeWatchTest, ReportsSettingsOfXfcesPanelAndTheme) {
  watch.follow(StatusHost::Xfce);
  changeXfceSetting("xfce4-panel");
  EXPECT_EQ(hints, 1);
  changeXfceSetting("xsettings");
  EXPECT_EQ(hints, 2);
  changeXfceSetting("thunar");
  EXPECT_EQ(hints, 2);
}

TEST_F(PanelThemeWatchTest, IgnoresXfcesSettingsOnOtherPanels) {
  changeXfceSetting("xsettings");
  watch.follow(StatusHost::Lxqt);
  changeXfceSetting("xsettings");
  EXPECT_EQ(hints, 0);
}

TEST_F(PanelThemeWatchTest, ReportsLxqtsFilesHoweverTheyAreWritten) {
  QDir(QString::fromStdString(config.path())).mkdir(QStringLiteral("lxqt"));
  test::put(config / "lxqt/lxqt.conf", "theme=light");
  watch.follow(StatusHost::Lxqt);
  test::put(config / "lxqt/lxqt.conf", "theme=dark");
  EXPECT_TRUE(waitFor([&] { return hints == 1; }));
  test::putAtomically(config / "lxqt/lxqt.conf", "theme=light");
  EXPECT_TRUE(waitFor([&] { return hints == 2; }));
  test::put(config / "lxqt/panel.conf", "background-color=black");
  EXPECT_TRUE(waitFor([&] { return hints == 3; }));
}

TEST_F(PanelThemeWatchTest, ReportsLxqtsFilesInAFolderThatIsMadeLater) {
  watch.follow(StatusHost::Lxqt);
  QDir(QString::fromStdString(config.path())).mkdir(QStringLiteral("lxqt"));
  test::put(config / "lxqt/lxqt.conf", "theme=dark");
  EXPECT_TRUE(waitFor([&] { return hints > 0; }));
}

TEST_F(PanelThemeWatchTest, IgnoresLxqtsFilesOnOtherPanels) {
  watch.follow(StatusHost::Lxqt);
  watch.follow(StatusHost::Xfce);
  QDir(QString::fromStdString(config.path())).mkdir(QStringLiteral("lxqt"));
  test::put(config / "lxqt/lxqt.conf", "theme=dark");
  PanelThemeWatch witness(ours);
  bool seen = false;
  QObject::connect(&witness, &PanelThemeWatch::maybeChanged, [&] { seen = true; });
  witness.follow(StatusHost::Lxqt);
  test::put(config / "lxqt/lxqt.conf", "theme=light");
  ASSERT_TRUE(waitFor([&] { return seen; }));
  EXPECT_EQ(hints, 0);
}

}  // namespace
}  // namespace tollbeam

// XSettingsWatch and DesktopAppearance with a settings daemon on a real X server.
#include <gtest/gtest.h>

#include <QApplication>
#include <QPalette>
#include <optional>

#include "platform/freedesktop/appearance/DesktopAppearance.h"
#include "platform/freedesktop/appearance/readings/XSettingsBytes.h"
#include "platform/freedesktop/x11/ManagerSelection.h"
#include "support/FakePortal.h"
#include "support/OtherProgram.h"
#include "support/PrivateBus.h"

namespace tollbeam {
namespace {

using test::waitFor;
using test::XSettingsBytes;

std::vector<std::uint8_t> theme(const char* name) {
  return XSettingsBytes().text("Net/ThemeName", name).bytes();
}

/// Owns the selection of the settings daemon. What it publishes may be damaged.
class FakeSettingsDaemon {
 public:
  FakeSettingsDaemon() { program_.announce("_XSETTINGS_S0", window_); }

  void publish(const std::vector<std::uint8_t>& settings) {
    program_.setBytes(window_, "_XSETTINGS_SETTINGS", settings);
  }

 private:
  test::OtherProgram program_;
  xcb_window_t window_ = program_.own("_XSETTINGS_S0");
};

class XSettingsWatchTest : public testing::Test {
 protected:
  void begin() {
    const auto server = XServer::ofApplication();
    ASSERT_TRUE(server);
    watch_.emplace(*server);
    QObject::connect(&*watch_, &XSettingsWatch::changed, [this] { ++changes_; });
  }

  [[nodiscard]] bool themeBecomes(const char* name) {
    return waitFor([&] {
      const Value* value = find(watch_->settings(), "Net/ThemeName");
      return value != nullptr && *value == Value(name);
    });
  }

  std::optional<XSettingsWatch> watch_;
  int changes_ = 0;
};

TEST_F(XSettingsWatchTest, ReadsADaemonThatIsThereAlready) {
  FakeSettingsDaemon daemon;
  daemon.publish(theme("Arc"));
  ASSERT_TRUE(waitFor([] {
    const auto server = XServer::ofApplication();
    return !XSettingsWatch(*server).settings().empty();
  }));
  begin();
  EXPECT_EQ(watch_->settings(), (Dictionary{{"Net/ThemeName", "Arc"}}));
}

TEST_F(XSettingsWatchTest, ReadsADaemonThatComesLater) {
  begin();
  EXPECT_TRUE(watch_->settings().empty());
  FakeSettingsDaemon daemon;
  daemon.publish(theme("Arc"));
  EXPECT_TRUE(themeBecomes("Arc"));
}

TEST_F(XSettingsWatchTest, FollowsChanges) {
  FakeSettingsDaemon daemon;
  begin();
  for (const char* name : {"Arc", "Arc-Dark", "Arc"}) {
    daemon.publish(theme(name));
    EXPECT_TRUE(themeBecomes(name)) << name;
  }
  EXPECT_EQ(changes_, 3);
}

TEST_F(XSettingsWatchTest, KeepsSettingsUntilTheNextDaemonPublishes) {
  begin();
  std::optional<FakeSettingsDaemon> daemon;
  daemon.emplace();
  daemon->publish(theme("Arc"));
  ASSERT_TRUE(themeBecomes("Arc"));
  for (const char* next : {"Arc-Dark", "Greybird", "Greybird-dark"}) {
    daemon.reset();
    daemon.emplace();
    EXPECT_FALSE(watch_->settings().empty());
    daemon->publish(theme(next));
    EXPECT_TRUE(themeBecomes(next));
  }
  EXPECT_EQ(changes_, 4);
}

TEST_F(XSettingsWatchTest, IgnoresDamagedSettings) {
  FakeSettingsDaemon daemon;
  begin();
  daemon.publish(theme("Arc"));
  ASSERT_TRUE(themeBecomes("Arc"));
  auto damaged = theme("Damaged");
  damaged.pop_back();
  daemon.publish(damaged);
  daemon.publish({});
  daemon.publish(theme("Arc-Dark"));
  EXPECT_TRUE(themeBecomes("Arc-Dark"));
  EXPECT_EQ(changes_, 2);
}

TEST_F(XSettingsWatchTest, ReadsThousandsOfSettings) {
  FakeSettingsDaemon daemon;
  begin();
  XSettingsBytes many;
  for (int i = 0; i < 3000; ++i) many.text("Some/Name" + std::to_string(i), std::string(100, 'x'));
  daemon.publish(many.text("Net/ThemeName", "Last").bytes());
  EXPECT_TRUE(themeBecomes("Last"));
  EXPECT_EQ(watch_->settings().size(), 3001U);
}

TEST_F(XSettingsWatchTest, IgnoresMoreThanFourMebibytes) {
  FakeSettingsDaemon daemon;
  begin();
  daemon.publish(theme("Arc"));
  ASSERT_TRUE(themeBecomes("Arc"));
  const ManagerSelection selection(*XServer::ofApplication(), "_XSETTINGS_S");
  bool announced = false;
  QObject::connect(&selection, &ManagerSelection::propertyChanged, [&] { announced = true; });
  daemon.publish(XSettingsBytes()
                     .text("Net/ThemeName", "Huge")
                     .text("Some/Name", std::string(8 << 20, 'x'))
                     .bytes());
  ASSERT_TRUE(waitFor([&] { return announced; }));
  EXPECT_EQ(watch_->settings(), (Dictionary{{"Net/ThemeName", "Arc"}}));
  daemon.publish(theme("Arc-Dark"));
  EXPECT_TRUE(themeBecomes("Arc-Dark"));
}

class SettingsDaemonTest : public testing::Test {
 protected:
  ~SettingsDaemonTest() override {
    QApplication::setPalette(palette_);
    QApplication::setFont(font_);
  }

  test::PrivateBus bus_;
  FakeSettingsDaemon daemon_;

 private:
  const QPalette palette_ = QApplication::palette();
  const QFont font_ = QApplication::font();
};

TEST_F(SettingsDaemonTest, SetsColoursFontAndAnimations) {
  const DesktopAppearance appearance(bus_.join());
  daemon_.publish(XSettingsBytes()
                      .text("Net/ThemeName", "Greybird-dark")
                      .text("Gtk/FontName", "DejaVu Sans 13")
                      .number("Gtk/EnableAnimations", 0)
                      .bytes());
  ASSERT_TRUE(waitFor([&] { return !appearance.animations(); }));
  EXPECT_EQ(QApplication::palette().color(QPalette::Window), QColor(0x22, 0x25, 0x2a));
  EXPECT_EQ(QApplication::font().families(), QStringList{QStringLiteral("DejaVu Sans")});
  EXPECT_EQ(QApplication::font().pointSizeF(), 13);
  daemon_.publish(XSettingsBytes().text("Net/ThemeName", "Greybird").bytes());
  ASSERT_TRUE(waitFor([&] { return appearance.animations(); }));
  EXPECT_EQ(QApplication::palette().color(QPalette::Window), QColor(0xf4, 0xf5, 0xf7));
  EXPECT_EQ(QApplication::font(), QFont(QStringLiteral("Sans Serif"), 9));
}

// The daemon has raised the dots per inch by the factor already.
TEST_F(SettingsDaemonTest, LargerTextIsNotCountedTwice) {
  const auto portalBus = bus_.connect();
  const test::FakePortal portal(portalBus, {{QStringLiteral("org.gnome.desktop.interface"),
                                             {{QStringLiteral("text-scaling-factor"), 1.5},
                                              {QStringLiteral("enable-animations"), false}}}});
  daemon_.publish(XSettingsBytes().text("Gtk/FontName", "DejaVu Sans 10").bytes());
  const DesktopAppearance appearance(bus_.join());
  ASSERT_TRUE(
      waitFor([&] { return !appearance.animations() && QApplication::font().pointSizeF() >= 10; }));
  EXPECT_EQ(QApplication::font().pointSizeF(), 10);
}

}  // namespace
}  // namespace tollbeam

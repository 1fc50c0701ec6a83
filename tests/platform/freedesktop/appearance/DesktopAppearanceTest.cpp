#include "platform/freedesktop/appearance/DesktopAppearance.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QTimer>
#include <QWidget>
#include <optional>

#include "support/FakePortal.h"
#include "support/FakeProperties.h"
#include "support/PrivateBus.h"

namespace tollbeam {
namespace {

using test::FakePortal;
using test::waitFor;

const QString kAppearance = QStringLiteral("org.freedesktop.appearance");
const QString kGnome = QStringLiteral("org.gnome.desktop.interface");
const QString kScheme = QStringLiteral("color-scheme");
const QColor kLight(0xf4, 0xf5, 0xf7);
const QColor kDark(0x22, 0x25, 0x2a);

QColor window() { return QApplication::palette().color(QPalette::Window); }

class DesktopAppearanceTest : public testing::Test {
 protected:
  ~DesktopAppearanceTest() override {
    QApplication::setPalette(palette_);
    QApplication::setFont(font_);
  }

  void begin(ToolkitTheme theme = {}) {
    appearance_.emplace(bus_.join(), Activation::forbidden, theme);
    changes_ = appearance_->onChange([this] { ++changed_; });
  }

  test::PrivateBus bus_;
  QDBusConnection portalBus_ = bus_.connect();
  std::optional<DesktopAppearance> appearance_;
  Subscription changes_;
  int changed_ = 0;

 private:
  const QPalette palette_ = QApplication::palette();
  const QFont font_ = QApplication::font();
};

TEST_F(DesktopAppearanceTest, IsLightAndAnimatedWithoutSettings) {
  begin();
  EXPECT_EQ(window(), kLight);
  EXPECT_FALSE(appearance_->highContrast());
  EXPECT_TRUE(appearance_->animations());
}

TEST_F(DesktopAppearanceTest, FollowsTheColourScheme) {
  FakePortal portal(portalBus_, {{kAppearance, {{kScheme, 1U}}}});
  begin();
  ASSERT_TRUE(waitFor([] { return window() == kDark; }));
  portal.change(kAppearance, kScheme, 2U);
  EXPECT_TRUE(waitFor([] { return window() == kLight; }));
  portal.change(kAppearance, kScheme, 1U);
  EXPECT_TRUE(waitFor([] { return window() == kDark; }));
  EXPECT_EQ(changed_, 3);
}

TEST_F(DesktopAppearanceTest, ChangesWidgetsThatExist) {
  FakePortal portal(portalBus_);
  QWidget widget;
  begin();
  portal.change(kAppearance, kScheme, 1U);
  // The toolkit passes a new palette to widgets only inside exec().
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, [&] {
    if (widget.palette().color(QPalette::Window) == kDark) QCoreApplication::exit(1);
  });
  look.start(10);
  QTimer patience;
  QObject::connect(&patience, &QTimer::timeout, [] { QCoreApplication::exit(0); });
  patience.start(60000);
  EXPECT_EQ(QCoreApplication::exec(), 1);
}

TEST_F(DesktopAppearanceTest, UsesTheAccentColour) {
  FakePortal portal(portalBus_);
  begin();
  portal.change(kAppearance, QStringLiteral("accent-color"), test::threeNumbers(1, 0.5, 0));
  const auto highlight = [] { return QApplication::palette().color(QPalette::Highlight); };
  EXPECT_TRUE(waitFor([&] { return highlight() == QColor::fromRgbF(1, 0.5, 0); }));
  portal.change(kAppearance, QStringLiteral("accent-color"), test::threeNumbers(-1, -1, -1));
  EXPECT_TRUE(waitFor([&] { return highlight() == QColor(0x2f, 0x6c, 0xdb); }));
}

TEST_F(DesktopAppearanceTest, UsesTheFontAndItsScale) {
  FakePortal portal(
      portalBus_,
      {{kGnome, {{QStringLiteral("font-name"), QStringLiteral("Liberation Sans Bold 12")}}}});
  begin();
  ASSERT_TRUE(waitFor([] { return QApplication::font().pointSizeF() == 12; }));
  EXPECT_EQ(QApplication::font().families(), QStringList{QStringLiteral("Liberation Sans")});
  EXPECT_TRUE(QApplication::font().bold());
  portal.change(kGnome, QStringLiteral("text-scaling-factor"), 1.5);
  EXPECT_TRUE(waitFor([] { return QApplication::font().pointSizeF() == 18; }));
}

TEST_F(DesktopAppearanceTest, ScalesTheUsualFontWhereTheDesktopNamesNone) {
  const double usual = QApplication::font().pointSizeF();
  FakePortal portal(portalBus_, {{kGnome, {{QStringLiteral("text-scaling-factor"), 2.0}}}});
  begin();
  EXPECT_TRUE(waitFor([&] { return QApplication::font().pointSizeF() == 2 * usual; }));
}

TEST_F(DesktopAppearanceTest, PassesOnContrastAndAnimations) {
  FakePortal portal(portalBus_);
  begin();
  portal.change(kAppearance, QStringLiteral("contrast"), 1U);
  ASSERT_TRUE(waitFor([&] { return appearance_->highContrast(); }));
  EXPECT_EQ(window(), QColor(Qt::white));
  portal.change(kGnome, QStringLiteral("enable-animations"), false);
  ASSERT_TRUE(waitFor([&] { return !appearance_->animations(); }));
  portal.change(QStringLiteral("org.gnome.desktop.a11y.interface"), QStringLiteral("high-contrast"),
                true);
  portal.change(kAppearance, QStringLiteral("contrast"), 0U);
  portal.change(kGnome, QStringLiteral("enable-animations"), true);
  ASSERT_TRUE(waitFor([&] { return appearance_->animations(); }));
  EXPECT_TRUE(appearance_->highContrast());
}

TEST_F(DesktopAppearanceTest, ReportsChangesAfterApplyingAllOfThem) {
  FakePortal portal(portalBus_);
  begin();
  std::optional<QColor> seen;
  bool contrast = false;
  const auto subscription = appearance_->onChange([&] {
    seen = window();
    contrast = appearance_->highContrast();
  });
  portal.change(QStringLiteral("org.gnome.desktop.a11y.interface"), QStringLiteral("high-contrast"),
                true);
  ASSERT_TRUE(waitFor([&] { return seen.has_value(); }));
  EXPECT_EQ(*seen, QColor(Qt::white));
  EXPECT_TRUE(contrast);
}

// A palette that is set anew repaints every window.
TEST_F(DesktopAppearanceTest, SettingsWithoutEffectChangeNothing) {
  FakePortal portal(portalBus_);
  begin();
  const auto key = QApplication::palette().cacheKey();
  portal.change(kGnome, QStringLiteral("cursor-size"), 24);
  portal.change(kAppearance, kScheme, 2U);
  portal.change(kGnome, QStringLiteral("enable-animations"), false);
  ASSERT_TRUE(waitFor([&] { return !appearance_->animations(); }));
  EXPECT_EQ(changed_, 1);
  EXPECT_EQ(QApplication::palette().cacheKey(), key);
}

TEST_F(DesktopAppearanceTest, IgnoresValuesOfTheWrongKind) {
  FakePortal portal(portalBus_, {{kAppearance,
                                  {{kScheme, QStringLiteral("dark")},
                                   {QStringLiteral("contrast"), true},
                                   {QStringLiteral("accent-color"), 3U}}},
                                 {kGnome,
                                  {{QStringLiteral("font-name"), 12},
                                   {QStringLiteral("enable-animations"), QStringList{}}}}});
  begin();
  portal.change(kAppearance, QStringLiteral("reduced-motion"), 1U);
  ASSERT_TRUE(waitFor([&] { return !appearance_->animations(); }));
  EXPECT_EQ(window(), kLight);
  EXPECT_FALSE(appearance_->highContrast());
}

TEST_F(DesktopAppearanceTest, KeepsTheLookWhileThePortalRestarts) {
  std::optional<FakePortal> portal;
  portal.emplace(portalBus_, FakePortal::Settings{{kAppearance, {{kScheme, 1U}}}});
  begin();
  ASSERT_TRUE(waitFor([] { return window() == kDark; }));
  portal.reset();
  ASSERT_TRUE(test::passedOn(portalBus_));
  EXPECT_EQ(window(), kDark);
  auto next = bus_.connect();
  portal.emplace(next, FakePortal::Settings{{kAppearance, {{kScheme, 1U}}}});
  ASSERT_TRUE(waitFor([&] { return portal->asked == 1; }));
  ASSERT_TRUE(test::passedOn(next));
  EXPECT_EQ(changed_, 1);
  portal->change(kAppearance, kScheme, 2U);
  EXPECT_TRUE(waitFor([] { return window() == kLight; }));
}

TEST_F(DesktopAppearanceTest, KeepsColoursAndFontOfTheToolkitsTheme) {
  const auto colour = window();
  const auto font = QApplication::font();
  FakePortal portal(
      portalBus_,
      {{kAppearance, {{kScheme, 1U}, {QStringLiteral("contrast"), 1U}}},
       {kGnome, {{QStringLiteral("font-name"), QStringLiteral("Liberation Sans 20")}}}});
  begin({.bringsColours = true, .bringsFont = true});
  ASSERT_TRUE(waitFor([&] { return appearance_->highContrast(); }));
  EXPECT_EQ(window(), colour);
  EXPECT_EQ(QApplication::font(), font);
}

TEST_F(DesktopAppearanceTest, KeepsTheFontOfAThemeWithoutColours) {
  const auto font = QApplication::font();
  FakePortal portal(
      portalBus_,
      {{kAppearance, {{kScheme, 1U}}},
       {kGnome, {{QStringLiteral("font-name"), QStringLiteral("Liberation Sans 20")}}}});
  begin({.bringsColours = false, .bringsFont = true});
  ASSERT_TRUE(waitFor([] { return window() == kDark; }));
  EXPECT_EQ(QApplication::font(), font);
}

TEST(ToolkitTheme, IsAbsentWithTheStylesColours) {
  EXPECT_FALSE(ToolkitTheme::ofApplication().bringsColours);
}

TEST(ToolkitTheme, IsPresentWithOneOtherColour) {
  const QPalette before = QApplication::palette();
  QPalette other = before;
  other.setColor(QPalette::Disabled, QPalette::Mid, Qt::red);
  QApplication::setPalette(other);
  EXPECT_TRUE(ToolkitTheme::ofApplication().bringsColours);
  EXPECT_TRUE(ToolkitTheme::ofApplication().bringsFont);
  QApplication::setPalette(before);
}

TEST(ToolkitTheme, BringsAFontThatIsNotQtsOwn) {
  const QFont before = QApplication::font();
  QApplication::setFont(QFont(QStringLiteral("Sans Serif"), 9));
  EXPECT_FALSE(ToolkitTheme::ofApplication().bringsFont);
  QApplication::setFont(QFont(QStringLiteral("Sans Serif"), 10));
  EXPECT_TRUE(ToolkitTheme::ofApplication().bringsFont);
  QApplication::setFont(QFont(QStringLiteral("Cantarell"), 9));
  EXPECT_TRUE(ToolkitTheme::ofApplication().bringsFont);
  QApplication::setFont(before);
}

}  // namespace
}  // namespace tollbeam

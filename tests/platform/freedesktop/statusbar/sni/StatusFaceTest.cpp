#include "platform/freedesktop/statusbar/sni/StatusFace.h"

#include <gtest/gtest.h>

namespace tollbeam {
namespace {

StatusItemContent content() {
  return {{"battery.75"},
          "Battery",
          " 64% · 3:47",
          "64% · On battery\nHealth: 93% (Good)\nCycles: 212"};
}

StatusFace face(StatusHost host, const StatusItemContent& shown = content(),
                const char* themePath = "/icons") {
  Symbols symbols;
  return faceFor(shown, traitsOf(host), QLatin1String(themePath), Qt::black, symbols);
}

QString text(const char* utf8) { return QString::fromUtf8(utf8); }

TEST(StatusFace, NamesTheSymbolicIconOnlyWhereTheHostRecoloursIt) {
  const auto xfce = face(StatusHost::Xfce);
  EXPECT_EQ(xfce.iconName, text("tollbeam-battery-75-symbolic"));
  EXPECT_EQ(xfce.iconThemePath, text("/icons"));
  for (const auto host :
       {StatusHost::Lxqt, StatusHost::Mate, StatusHost::Cinnamon, StatusHost::Waybar})
    EXPECT_TRUE(face(host).iconName.isEmpty());
}

TEST(StatusFace, HasNoIconNameWithoutAThemeFolder) {
  const auto gnome = face(StatusHost::Gnome, content(), "");
  EXPECT_TRUE(gnome.iconName.isEmpty());
  EXPECT_TRUE(gnome.iconThemePath.isEmpty());
}

TEST(StatusFace, SendsSquarePicturesInEverySizeThatPanelsAskFor) {
  QList<int> sizes;
  for (const auto& pixmap : face(StatusHost::Lxqt).icon) {
    EXPECT_EQ(pixmap.width, pixmap.height);
    EXPECT_EQ(pixmap.bytes.size(), pixmap.width * pixmap.height * 4);
    sizes << pixmap.width;
  }
  EXPECT_EQ(sizes, QList<int>({16, 22, 24, 32, 48, 64}));
}

TEST(StatusFace, PutsTheTextInAWidePictureWhereTheHostKeepsItsShape) {
  for (const auto& pixmap : face(StatusHost::Cinnamon).icon)
    EXPECT_GT(pixmap.width, 3 * pixmap.height);
  auto noText = content();
  noText.title.clear();
  for (const auto& pixmap : face(StatusHost::Cinnamon, noText).icon)
    EXPECT_EQ(pixmap.width, pixmap.height);
}

TEST(StatusFace, TakesTheFirstSymbolThatExists) {
  auto shown = content();
  shown.symbolNames = {"battery.42", "battery.100"};
  EXPECT_EQ(face(StatusHost::Xfce, shown).iconName, text("tollbeam-battery-100-symbolic"));
  shown.symbolNames = {"battery.42"};
  EXPECT_TRUE(face(StatusHost::Xfce, shown).iconName.isEmpty());
  EXPECT_TRUE(face(StatusHost::Xfce, shown).icon.isEmpty());
}

TEST(StatusFace, SetsALabelOnlyWhereTheHostDrawsIt) {
  EXPECT_EQ(face(StatusHost::Gnome).label, text("64% · 3:47"));
  EXPECT_EQ(face(StatusHost::Mate).label, text("64% · 3:47"));
  EXPECT_TRUE(face(StatusHost::Xfce).label.isEmpty());
  EXPECT_TRUE(face(StatusHost::Plasma).label.isEmpty());
}

TEST(StatusFace, PadsALabelOfOneDigitToTheWidthOfTwo) {
  auto shown = content();
  shown.title = " 9%";
  EXPECT_EQ(face(StatusHost::Gnome, shown).label, text("\u20079%"));
  shown.title = " 100%";
  EXPECT_EQ(face(StatusHost::Gnome, shown).label, text("100%"));
}

TEST(StatusFace, SplitsTheToolTipIntoTitleAndDescription) {
  const auto toolTip = face(StatusHost::Plasma).toolTip;
  EXPECT_EQ(toolTip.title, text("64% · On battery"));
  EXPECT_EQ(toolTip.description, text("Health: 93% (Good)\nCycles: 212"));
}

TEST(StatusFace, PutsTheWholeToolTipInTheTitleOnLxqtAndInTheDescriptionOnBudgie) {
  const auto lxqt = face(StatusHost::Lxqt).toolTip;
  EXPECT_EQ(lxqt.title, text("64% · On battery\nHealth: 93% (Good)\nCycles: 212"));
  EXPECT_TRUE(lxqt.description.isEmpty());
  const auto budgie = face(StatusHost::Budgie).toolTip;
  EXPECT_TRUE(budgie.title.isEmpty());
  EXPECT_EQ(budgie.description, text("64% · On battery\nHealth: 93% (Good)\nCycles: 212"));
}

TEST(StatusFace, EscapesTheToolTipWhereTheHostReadsMarkup) {
  auto shown = content();
  shown.toolTip = "a < b\nc & d";
  const auto xfce = face(StatusHost::Xfce, shown).toolTip;
  EXPECT_EQ(xfce.title, text("a &lt; b"));
  EXPECT_EQ(xfce.description, text("c &amp; d"));
  EXPECT_EQ(face(StatusHost::Lxqt, shown).toolTip.title, text("a < b\nc & d"));
  shown.toolTip = "a < b";
  EXPECT_EQ(face(StatusHost::Xfce, shown).toolTip.title, text("a < b")) << "alone it is plain text";
}

TEST(StatusFace, PixmapsAreArgbInNetworkOrder) {
  QImage image(2, 1, QImage::Format_ARGB32_Premultiplied);
  image.setPixelColor(0, 0, QColor(0x11, 0x22, 0x33));
  image.setPixelColor(1, 0, QColor(0xff, 0x00, 0x00, 0x80));
  const auto pixmap = toSniPixmap(image);
  EXPECT_EQ(pixmap.width, 2);
  EXPECT_EQ(pixmap.height, 1);
  EXPECT_EQ(pixmap.bytes.toHex(' '), "ff 11 22 33 80 ff 00 00");
}

}  // namespace
}  // namespace tollbeam

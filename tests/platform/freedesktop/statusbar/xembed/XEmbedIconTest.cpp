#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QCursor>
#include <memory>

#include "platform/freedesktop/statusbar/FreedesktopStatusBar.h"
#include "platform/freedesktop/statusbar/xembed/FakeTray.h"
#include "support/PrivateBus.h"
#include "support/RecordingWatcher.h"

namespace tollbeam {
namespace {

using test::FakeTray;
using test::RecordingWatcher;
using test::waitFor;

StatusItemContent content() { return {{"battery.75"}, "Battery", " 64% · 3:47", "64%"}; }

int pixelsOf(const QImage& image, const QColor& colour) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) count += image.pixelColor(x, y) == colour ? 1 : 0;
  }
  return count;
}

// Whether there is dark ink to the right of the symbol.
bool hasText(const QImage& image) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 30; x < image.width(); ++x) count += qGray(image.pixel(x, y)) < 128 ? 1 : 0;
  }
  return count > 30;
}

/// The most memory that this process has ever held, in KiB.
long peakMemory() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

class XEmbedIconTest : public testing::Test {
 protected:
  void TearDown() override { qunsetenv("XDG_CURRENT_DESKTOP"); }

  void createItem(const char* desktop = "") {
    qputenv("XDG_CURRENT_DESKTOP", desktop);
    bar_ = std::make_unique<FreedesktopStatusBar>(bus_.join());
    item_ = bar_->createStatusItem({[this](const auto& p) { clicks_.push_back(p); }, [] {}, [] {}});
    item_->setContent(content());
  }

  bool until(const std::function<bool()>& condition) {
    return waitFor([&] {
      if (tray_) tray_->pump();
      return condition();
    });
  }
  bool shows(const QColor& colour) {
    return until([&] { return pixelsOf(tray_->picture(), colour) > 20; });
  }
  bool showsText() {
    return until([&] { return hasText(tray_->picture()); });
  }
  void startTray(const FakeTray::Behaviour& ways) { tray_ = std::make_unique<FakeTray>(ways); }

  test::PrivateBus bus_;
  std::unique_ptr<FakeTray> tray_;
  std::unique_ptr<FreedesktopStatusBar> bar_;
  std::unique_ptr<StatusItem> item_;
  std::vector<std::optional<ClickPosition>> clicks_;
};

const QColor kDarkInk(0x1b, 0x1e, 0x23);
const QColor kLightInk(0xec, 0xee, 0xf1);

TEST_F(XEmbedIconTest, DocksWithSymbolAndTextWhereThereIsNoWatcher) {
  startTray({});
  createItem();
  ASSERT_TRUE(showsText());
  EXPECT_GT(tray_->iconSize().width(), 3 * tray_->iconSize().height());
  EXPECT_GT(pixelsOf(tray_->picture(), Qt::white), 300) << "the tray's ground stays visible";
}

TEST_F(XEmbedIconTest, IsLightOnADarkTray) {
  startTray({.ground = QColor(0x20, 0x20, 0x20)});
  createItem();
  EXPECT_TRUE(shows(kLightInk));
  EXPECT_EQ(pixelsOf(tray_->picture(), kDarkInk), 0);
}

TEST_F(XEmbedIconTest, UsesTheTraysColourAndFollowsIt) {
  startTray({.alpha = true, .foreground = QColor(0x20, 0x40, 0x60)});
  createItem();
  ASSERT_TRUE(shows(QColor(0x20, 0x40, 0x60)));
  tray_->setForeground(QColor(0xc0, 0xa0, 0x80));
  EXPECT_TRUE(shows(QColor(0xc0, 0xa0, 0x80)));
}

TEST_F(XEmbedIconTest, LeavesATrayWithAlphaTransparentAroundIt) {
  startTray({.alpha = true, .foreground = QColor(Qt::black)});
  createItem();
  ASSERT_TRUE(shows(Qt::black));
  EXPECT_EQ(qAlpha(tray_->picture().pixel(0, 0)), 0);
  EXPECT_EQ(qAlpha(tray_->picture().pixel(tray_->iconSize().width() - 1, 0)), 0);
}

TEST_F(XEmbedIconTest, AsksForWidthAsTheTextChanges) {
  startTray({});
  createItem();
  ASSERT_TRUE(showsText());
  const int wide = tray_->iconSize().width();
  auto shown = content();
  shown.title.clear();
  item_->setContent(shown);
  ASSERT_TRUE(until([&] { return tray_->iconSize().width() == tray_->iconSize().height(); }));
  shown.title = " 64% · 3:47";
  item_->setContent(shown);
  EXPECT_TRUE(until([&] { return tray_->iconSize().width() == wide; }));
  EXPECT_TRUE(showsText());
}

TEST_F(XEmbedIconTest, ShowsTheSymbolAloneInAVerticalTray) {
  startTray({.vertical = true});
  createItem();
  ASSERT_TRUE(shows(kDarkInk));
  EXPECT_EQ(tray_->iconSize().width(), tray_->iconSize().height());
}

TEST_F(XEmbedIconTest, ShowsTheSymbolAloneInATrayThatGivesASquare) {
  startTray({.square = true, .height = 30});
  createItem();
  ASSERT_TRUE(shows(kDarkInk));
  const auto picture = tray_->picture();
  EXPECT_EQ(picture.size(), QSize(30, 30));
  EXPECT_EQ(picture.pixelColor(0, 15), QColor(Qt::white));
  EXPECT_EQ(picture.pixelColor(29, 15), QColor(Qt::white));
}

TEST_F(XEmbedIconTest, LimitsThePictureInATrayThatGivesAHugeSize) {
  startTray({});
  createItem();
  ASSERT_TRUE(showsText());
  const auto before = peakMemory();
  tray_->giveIcon({12000, 12000});
  // The item answers with the width that it needs at that height, and gets the usual one again.
  ASSERT_TRUE(until([&] { return tray_->iconSize().height() < 12000; }));
  EXPECT_TRUE(showsText());
  EXPECT_LT(peakMemory() - before, 64 << 10) << "in KiB";
}

TEST_F(XEmbedIconTest, DocksInATrayThatComesLater) {
  createItem();
  startTray({});
  EXPECT_TRUE(shows(kDarkInk));
}

TEST_F(XEmbedIconTest, DocksAgainInTheNextTray) {
  startTray({});
  createItem();
  ASSERT_TRUE(shows(kDarkInk));
  tray_.reset();
  startTray({.ground = QColor(0x20, 0x20, 0x20)});
  EXPECT_TRUE(shows(kLightInk));
}

TEST_F(XEmbedIconTest, ReportsAClickWithItsPosition) {
  startTray({});
  createItem();
  ASSERT_TRUE(shows(kDarkInk));
  QCursor::setPos(123, 45);
  tray_->release(XCB_BUTTON_INDEX_1, {123, 45});
  ASSERT_TRUE(until([&] { return clicks_.size() == 1; }));
  EXPECT_EQ(clicks_[0], (ClickPosition{123, 45}));
  tray_->release(XCB_BUTTON_INDEX_2, {1, 2});
  QCursor::setPos(7, 8);
  tray_->release(XCB_BUTTON_INDEX_1, {7, 8});
  ASSERT_TRUE(until([&] { return clicks_.size() == 2; }));
  EXPECT_EQ(clicks_[1], (ClickPosition{7, 8})) << "the middle button does nothing";
}

TEST_F(XEmbedIconTest, IsInTheTrayAndNotOnTheBusOnXfce) {
  const RecordingWatcher watcher(bus_.connect());
  startTray({});
  createItem("XFCE");
  ASSERT_TRUE(showsText());
  EXPECT_TRUE(watcher.items.isEmpty());
}

TEST_F(XEmbedIconTest, MovesToTheBusOnXfceWhenTheTrayDoesNotAnswer) {
  const RecordingWatcher watcher(bus_.connect());
  startTray({.deaf = true});
  createItem("XFCE");
  EXPECT_TRUE(until([&] { return watcher.items.size() == 1; }));
}

TEST_F(XEmbedIconTest, MovesToTheBusOnXfceWhenTheTrayEnds) {
  const RecordingWatcher watcher(bus_.connect());
  startTray({});
  createItem("XFCE");
  ASSERT_TRUE(shows(kDarkInk));
  tray_.reset();
  EXPECT_TRUE(until([&] { return !watcher.items.isEmpty(); }));
}

TEST_F(XEmbedIconTest, IsOnTheBusOnOtherDesktopsInSpiteOfATray) {
  const RecordingWatcher watcher(bus_.connect());
  startTray({});
  createItem("LXQt");
  ASSERT_TRUE(until([&] { return watcher.items.size() == 1; }));
  EXPECT_EQ(tray_->icon(), xcb_window_t{XCB_WINDOW_NONE});
}

TEST_F(XEmbedIconTest, MovesToTheBusWhenAWatcherComes) {
  startTray({});
  createItem("LXQt");
  ASSERT_TRUE(shows(kDarkInk));
  const RecordingWatcher watcher(bus_.connect());
  ASSERT_TRUE(until([&] { return watcher.items.size() == 1; }));
  EXPECT_TRUE(until([&] { return tray_->picture().isNull(); })) << "never two at once";
}

}  // namespace
}  // namespace tollbeam

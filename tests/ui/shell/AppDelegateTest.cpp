#include "ui/shell/AppDelegate.h"

#include <gtest/gtest.h>

#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>

#include "recorded/RecordedPlatform.h"

namespace tollbeam {
namespace {

constexpr Date kStart{1'700'000'000};

class RecordedStatusItem final : public StatusItem {
 public:
  explicit RecordedStatusItem(std::vector<StatusItemContent>& drawn) : drawn_(drawn) {}
  void setContent(const StatusItemContent& content) override { drawn_.push_back(content); }

 private:
  std::vector<StatusItemContent>& drawn_;
};

class RecordedStatusBar final : public StatusBar {
 public:
  [[nodiscard]] std::unique_ptr<StatusItem> createStatusItem(StatusItem::Actions given) override {
    actions = std::move(given);
    return available ? std::make_unique<RecordedStatusItem>(drawn) : nullptr;
  }

  bool available = true;
  StatusItem::Actions actions;
  std::vector<StatusItemContent> drawn;
};

class RecordedClicks final : public OutsideClicks {
 public:
  std::optional<Subscription> observe(std::function<void(Button)> callback) override {
    return callbacks.add(std::move(callback));
  }
  Observers<Button> callbacks;
};

class AppDelegateTest : public testing::Test {
 protected:
  AppDelegateTest() {
    battery(64);
    delegate.emplace(platform.ports(), statusBar, clicks);
  }
  void battery(int percent) {
    platform.powerSources.table = List{Dictionary{
        {"Type", "InternalBattery"}, {"Current Capacity", percent}, {"Max Capacity", 100}}};
  }
  void launch() {
    delegate->applicationDidFinishLaunching();
    platform.mainQueue.drain();
  }
  bool open() { return delegate->popover().isVisible(); }
  void click() { statusBar.actions.activate(ClickPosition{800, 15}); }

  RecordedPlatform platform{kStart};
  RecordedStatusBar statusBar;
  RecordedClicks clicks;
  std::optional<AppDelegate> delegate;
};

TEST_F(AppDelegateTest, DrawsTheItemAtLaunch) {
  launch();
  ASSERT_FALSE(statusBar.drawn.empty());
  EXPECT_EQ(statusBar.drawn.back().title, " 64%");
  EXPECT_EQ(statusBar.drawn.back().accessibilityDescription, "Battery");
  EXPECT_FALSE(QGuiApplication::quitOnLastWindowClosed());
  EXPECT_EQ(delegate->settingsWindow(), nullptr);
}

TEST_F(AppDelegateTest, RedrawsWhenTheStateChanges) {
  launch();
  battery(63);
  platform.powerSources.changes.notify();
  platform.mainQueue.drain();
  EXPECT_EQ(statusBar.drawn.back().title, " 63%");
}

TEST_F(AppDelegateTest, RedrawsWhenAnyPreferenceChanges) {
  launch();
  const auto before = statusBar.drawn.size();
  platform.userDefaults.set("lowSound", "Glass");
  EXPECT_EQ(statusBar.drawn.size(), before) << "drawn later, on the main queue";
  platform.mainQueue.drain();
  EXPECT_EQ(statusBar.drawn.size(), before + 1);
  platform.userDefaults.set("showPercent", false);
  platform.mainQueue.drain();
  EXPECT_EQ(statusBar.drawn.back().title, "");
}

TEST_F(AppDelegateTest, AClickRefreshesAndOpensAndTheNextCloses) {
  launch();
  battery(40);
  click();
  EXPECT_TRUE(open());
  EXPECT_EQ(delegate->model().state().percent, 40);
  const auto version = delegate->model().historyVersion();
  click();
  EXPECT_FALSE(open());
  EXPECT_EQ(delegate->model().historyVersion(), version) << "closing refreshes nothing";
}

TEST_F(AppDelegateTest, RefreshesBeforeThePopoverShows) {
  class OnShow : public QObject {
   public:
    explicit OnShow(std::function<void()> shown) : shown_(std::move(shown)) {}
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::Show) shown_();
      return false;
    }

   private:
    std::function<void()> shown_;
  };
  launch();
  battery(40);
  std::int64_t percentWhenShown = -1;
  OnShow filter([&] { percentWhenShown = delegate->model().state().percent; });
  delegate->popover().installEventFilter(&filter);
  click();
  EXPECT_EQ(percentWhenShown, 40);
}

TEST_F(AppDelegateTest, AnOpenPopoverIsIdle) {
  class Busy : public QObject {
   public:
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Paint) ++count;
      return false;
    }
    int count = 0;
  };
  launch();
  click();
  const auto live = [](int turns) {
    for (int turn = 0; turn < turns; ++turn) QCoreApplication::processEvents();
  };
  live(20);
  Busy busy;
  qApp->installEventFilter(&busy);
  live(50);
  EXPECT_EQ(busy.count, 0);
  platform.mainQueue.advance(60);
  live(20);
  busy.count = 0;
  live(50);
  EXPECT_EQ(busy.count, 0) << "after a refresh, too";
}

TEST_F(AppDelegateTest, DrawsTheItemBeforeTheLaunchReturns) {
  delegate->applicationDidFinishLaunching();
  ASSERT_EQ(statusBar.drawn.size(), 1U);
  EXPECT_EQ(statusBar.drawn[0].title, " 64%");
}

TEST_F(AppDelegateTest, OpensWithASnoozeBeyondTheCalendar) {
  platform.userDefaults.set("snoozeUntil", 1e300);
  delegate.emplace(platform.ports(), statusBar, clicks);
  launch();
  click();
  EXPECT_TRUE(open());
}

TEST_F(AppDelegateTest, DoesNothingWithoutAStatusItem) {
  statusBar.available = false;
  launch();
  delegate->togglePopover();
  EXPECT_FALSE(open());
  EXPECT_TRUE(statusBar.drawn.empty());
}

TEST_F(AppDelegateTest, EscapeClosesThePopover) {
  launch();
  click();
  QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QCoreApplication::sendEvent(&delegate->popover(), &escape);
  EXPECT_FALSE(open());
}

TEST_F(AppDelegateTest, AClickElsewhereClosesAndTheSameClickDoesNotReopen) {
  launch();
  click();
  clicks.callbacks.notify(OutsideClicks::Button::pressed);
  EXPECT_TRUE(open());
  clicks.callbacks.notify(OutsideClicks::Button::released);
  EXPECT_FALSE(open());
  click();
  EXPECT_FALSE(open()) << "the panel reports the click that closed it";
  platform.mainQueue.advance(0.5);
  click();
  EXPECT_TRUE(open());
}

TEST_F(AppDelegateTest, TheNextClickAfterTheClosingOneOpensAtOnce) {
  launch();
  click();
  clicks.callbacks.notify(OutsideClicks::Button::pressed);
  clicks.callbacks.notify(OutsideClicks::Button::released);
  click();
  ASSERT_FALSE(open());
  click();
  EXPECT_TRUE(open());
}

TEST_F(AppDelegateTest, AClickOnTheItemSoonAfterOneElsewhereOpens) {
  launch();
  click();
  QCursor::setPos(100, 500);
  clicks.callbacks.notify(OutsideClicks::Button::pressed);
  clicks.callbacks.notify(OutsideClicks::Button::released);
  ASSERT_FALSE(open());
  QCursor::setPos(700, 10);
  click();
  EXPECT_TRUE(open());
}

TEST_F(AppDelegateTest, AClosedPopoverObservesNoClicks) {
  launch();
  click();
  click();
  click();
  EXPECT_TRUE(open());
  click();
  clicks.callbacks.notify(OutsideClicks::Button::pressed);
  clicks.callbacks.notify(OutsideClicks::Button::released);
  click();
  EXPECT_TRUE(open());
}

TEST_F(AppDelegateTest, ThereIsOneSettingsWindow) {
  launch();
  click();
  delegate->openSettings();
  EXPECT_FALSE(open());
  QWidget* window = delegate->settingsWindow();
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(window->windowTitle(), QStringLiteral("Tollbeam Settings"));
  EXPECT_TRUE(window->isVisible());
  window->move(5, 6);
  window->close();
  EXPECT_FALSE(window->isVisible());
  statusBar.actions.openSettings();
  EXPECT_EQ(delegate->settingsWindow(), window);
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(window->pos(), QPoint(5, 6)) << "centred only when first made";
}

TEST_F(AppDelegateTest, TheSettingsWindowHasItsSizeAndOnlyACloseButton) {
  launch();
  delegate->openSettings();
  const QWidget* window = delegate->settingsWindow();
  const QSize available = window->screen()->availableGeometry().size();
  EXPECT_EQ(window->size(), QSize(480, 720).boundedTo(available));
  EXPECT_EQ(window->minimumSize(), window->maximumSize());
  EXPECT_TRUE(window->windowFlags() & Qt::WindowCloseButtonHint);
  EXPECT_FALSE(window->windowFlags() & Qt::WindowMinimizeButtonHint);
}

TEST_F(AppDelegateTest, SavesTheHistoryAtTheEnd) {
  launch();
  platform.mainQueue.advance(60);
  platform.fileManager.files.clear();
  delegate->applicationWillTerminate();
  EXPECT_EQ(platform.fileManager.files.size(), 1U);
}

TEST_F(AppDelegateTest, DoesNotRedrawAfterItIsDestroyed) {
  launch();
  platform.userDefaults.set("low", 5);
  const auto before = statusBar.drawn.size();
  delegate.reset();
  platform.mainQueue.drain();
  EXPECT_EQ(statusBar.drawn.size(), before);
}

}  // namespace
}  // namespace tollbeam

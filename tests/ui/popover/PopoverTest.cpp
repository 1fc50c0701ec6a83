#include "ui/popover/Popover.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QCursor>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QVBoxLayout>

#include "recorded/RecordedPlatform.h"
#include "support/WaitFor.h"

namespace tollbeam {
namespace {

class RecordedClicks final : public OutsideClicks {
 public:
  std::optional<Subscription> observe(std::function<void(Button)> callback) override {
    return callbacks.add(std::move(callback));
  }
  void click() const {
    callbacks.notify(Button::pressed);
    callbacks.notify(Button::released);
  }
  Observers<Button> callbacks;
};

// A view whose height the test sets.
class Block final : public QWidget {
 public:
  Block() {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(inside);
    grow(300);
  }
  void grow(int height) { inside->setFixedHeight(height); }
  [[nodiscard]] QSize sizeHint() const override { return {340, layout()->sizeHint().height()}; }

  QPushButton* inside = new QPushButton;
};

class PopoverTest : public testing::Test {
 protected:
  PopoverTest() {
    popover.emplace(clicks, platform.compositor, platform.clock, style, view);
    area = QGuiApplication::primaryScreen()->availableGeometry();
  }

  void open() { popover->showAt(ClickPosition{area.center().x(), area.top() + 15}); }
  QRect bodyOnScreen() { return popover->body().translated(popover->pos()); }
  QImage picture() {
    QImage image(popover->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    popover->render(&image, {}, {}, QWidget::DrawChildren);
    return image;
  }

  RecordedPlatform platform{Date{1'700'000'000}};
  RecordedClicks clicks;
  Style style{platform.appearance};
  Block* view = new Block;
  std::optional<Popover> popover;
  QRect area;
};

TEST_F(PopoverTest, IsAsLargeAsItsView) {
  open();
  EXPECT_EQ(popover->size(), QSize(340, 300));
  EXPECT_EQ(popover->body(), popover->rect());
  EXPECT_EQ(popover->minimumSize(), popover->maximumSize());
}

TEST_F(PopoverTest, LetsTheViewRefreshBeforeMeasuringIt) {
  QObject::connect(&*popover, &Popover::aboutToShow, view, [this] {
    EXPECT_FALSE(popover->isVisible());
    view->grow(222);
  });
  open();
  EXPECT_EQ(popover->height(), 222);
}

TEST_F(PopoverTest, FollowsTheHeightOfItsViewWithoutMoving) {
  open();
  const QPoint corner = bodyOnScreen().topLeft();
  view->grow(400);
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(popover->size(), QSize(340, 400));
  EXPECT_EQ(bodyOnScreen().topLeft(), corner);
  view->grow(200);
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(popover->size(), QSize(340, 200));
}

TEST_F(PopoverTest, GrowsUpwardFromAPanelAtTheBottom) {
  popover->showAt(ClickPosition{area.center().x(), area.bottom() - 2});
  const int bottom = bodyOnScreen().bottom();
  EXPECT_EQ(bottom, area.bottom() - 8);
  view->grow(400);
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(bodyOnScreen().bottom(), bottom);
  EXPECT_EQ(popover->height(), 400);
}

TEST_F(PopoverTest, ResizesInOneStep) {
  class Sizes final : public QObject {
   public:
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::Resize) seen << static_cast<QResizeEvent*>(event)->size();
      return false;
    }
    QList<QSize> seen;
  };
  open();
  QCoreApplication::sendPostedEvents();
  Sizes sizes;
  popover->installEventFilter(&sizes);
  view->grow(400);
  QCoreApplication::processEvents();
  EXPECT_EQ(sizes.seen, (QList<QSize>{{340, 400}}));
}

TEST_F(PopoverTest, StopsRequestingLayouts) {
  class Requests final : public QObject {
   public:
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::LayoutRequest) ++count;
      return false;
    }
    int count = 0;
  };
  platform.compositor.running = true;
  open();
  view->grow(400);
  QCoreApplication::processEvents();
  Requests requests;
  view->installEventFilter(&requests);
  popover->installEventFilter(&requests);
  for (int turn = 0; turn < 20; ++turn) QCoreApplication::processEvents();
  EXPECT_EQ(requests.count, 0);
}

TEST_F(PopoverTest, ScrollsWhereTheScreenIsTooLow) {
  view->grow(area.height() + 500);
  open();
  EXPECT_EQ(popover->height(), area.height() - 16);
  auto* scroll = popover->findChild<ScrollArea*>();
  EXPECT_EQ(scroll->verticalScrollBar()->maximum(), 500 + 16);
  scroll->verticalScrollBar()->setValue(100);
  popover->close();
  open();
  EXPECT_EQ(scroll->verticalScrollBar()->value(), 0) << "opens scrolled to the top";
}

TEST_F(PopoverTest, HasNoShadowAndNoRoundCornersWithoutACompositor) {
  open();
  EXPECT_FALSE(popover->testAttribute(Qt::WA_TranslucentBackground));
  ASSERT_FALSE(platform.compositor.shadows.empty());
  EXPECT_TRUE(platform.compositor.shadows.back().second.isEmpty());
  const QImage image = picture();
  EXPECT_EQ(image.pixelColor(0, 0).alpha(), 255);
  EXPECT_NE(image.pixelColor(0, 0), image.pixelColor(5, 5)) << "the edge";
}

TEST_F(PopoverTest, CastsAShadowWithACompositor) {
  platform.compositor.running = true;
  open();
  EXPECT_TRUE(popover->testAttribute(Qt::WA_TranslucentBackground));
  const QRect body = popover->body();
  EXPECT_EQ(body.size(), QSize(340, 300));
  EXPECT_EQ(bodyOnScreen().top(), area.top() + 8) << "the shadow does not move the body";
  EXPECT_EQ(body.left(), 28);
  EXPECT_EQ(popover->width() - 1 - body.right(), 28);
  EXPECT_EQ(body.top(), 8) << "not over the panel";
  EXPECT_EQ(popover->height() - 1 - body.bottom(), 38);
  const auto [window, shadow] = platform.compositor.shadows.back();
  EXPECT_EQ(window, popover->winId());
  EXPECT_EQ(shadow, (WindowShadow{28, 8, 28, 38, 340, 300}));

  const QImage image = picture();
  const auto alpha = [&](int x, int y) { return image.pixelColor(x, y).alpha(); };
  EXPECT_EQ(alpha(body.center().x(), body.center().y()), 255);
  EXPECT_LT(alpha(body.left(), body.top()), 128) << "a round corner";
  EXPECT_EQ(alpha(body.left() + 12, body.top() + 12), 255);
  const int below = body.bottom();
  EXPECT_GT(alpha(body.center().x(), below + 5), alpha(body.center().x(), below + 20));
  EXPECT_GT(alpha(body.center().x(), below + 20), alpha(body.center().x(), below + 36));
  EXPECT_GT(alpha(body.center().x(), below + 5), alpha(body.left() - 5, body.center().y()));
  EXPECT_EQ(alpha(body.left() - 10, body.center().y()),
            alpha(body.right() + 10, body.center().y()));
}

TEST_F(PopoverTest, AdaptsToTheCompositorAtTheNextOpening) {
  open();
  platform.compositor.running = true;
  popover->close();
  open();
  EXPECT_TRUE(popover->testAttribute(Qt::WA_TranslucentBackground));
  EXPECT_EQ(popover->windowHandle()->requestedFormat().alphaBufferSize(), 8);
  platform.compositor.running = false;
  EXPECT_TRUE(popover->testAttribute(Qt::WA_TranslucentBackground)) << "while it is open";
  popover->close();
  open();
  EXPECT_FALSE(popover->testAttribute(Qt::WA_TranslucentBackground));
  EXPECT_LE(popover->windowHandle()->requestedFormat().alphaBufferSize(), 0);
  EXPECT_EQ(popover->body(), popover->rect());
  EXPECT_TRUE(popover->isVisible());
}

TEST_F(PopoverTest, HasNoShadowUnderHighContrast) {
  platform.compositor.running = true;
  platform.appearance.contrast = true;
  platform.appearance.changes.notify();
  open();
  EXPECT_EQ(popover->body(), popover->rect());
  EXPECT_LT(picture().pixelColor(0, 0).alpha(), 128) << "a round corner";
}

TEST_F(PopoverTest, AnObservedClickOnTheShadowCloses) {
  platform.compositor.running = true;
  open();
  QCursor::setPos(bodyOnScreen().center());
  clicks.click();
  EXPECT_TRUE(popover->isVisible());
  QCursor::setPos(bodyOnScreen().left() - 5, bodyOnScreen().center().y());
  ASSERT_TRUE(popover->frameGeometry().contains(QCursor::pos()));
  clicks.click();
  EXPECT_FALSE(popover->isVisible());
}

TEST_F(PopoverTest, ADeliveredClickOnTheShadowCloses) {
  platform.compositor.running = true;
  open();
  QTest::mouseClick(&*popover, Qt::LeftButton, {}, popover->body().center());
  EXPECT_TRUE(popover->isVisible());
  QTest::mouseClick(&*popover, Qt::LeftButton, {}, QPoint(3, popover->height() / 2));
  EXPECT_FALSE(popover->isVisible());
}

TEST_F(PopoverTest, IsADialogForScreenReaders) {
  open();
  const auto* spoken = QAccessible::queryAccessibleInterface(&*popover);
  EXPECT_EQ(spoken->role(), QAccessible::Dialog);
  EXPECT_EQ(spoken->text(QAccessible::Name), u"Tollbeam");
}

TEST_F(PopoverTest, EscapeClosesItFromEveryControl) {
  open();
  view->inside->setFocus();
  QTest::keyClick(view->inside, Qt::Key_Escape);
  EXPECT_FALSE(popover->isVisible());
}

TEST_F(PopoverTest, FocusesTheViewSoThatTabReachesTheFirstControl) {
  open();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&*popover, test::kPatience));
  EXPECT_EQ(QApplication::focusWidget(), view);
  QTest::keyClick(view, Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), view->inside);
  popover->close();
  open();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&*popover, test::kPatience));
  EXPECT_EQ(QApplication::focusWidget(), view) << "at each opening";
}

}  // namespace
}  // namespace tollbeam

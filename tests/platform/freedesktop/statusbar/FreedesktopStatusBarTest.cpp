#include "platform/freedesktop/statusbar/FreedesktopStatusBar.h"

#include <gtest/gtest.h>

#include <QDBusObjectPath>
#include <QTemporaryDir>
#include <memory>

#include "platform/freedesktop/statusbar/sni/SniTypes.h"
#include "support/PrivateBus.h"
#include "support/RecordingWatcher.h"

namespace tollbeam {
namespace {

using test::RecordingHost;
using test::RecordingWatcher;
using test::waitFor;

StatusItemContent content() {
  return {{"battery.75"}, "Battery", " 64% · 3:47", "64% · On battery\nCycles: 212"};
}

QString text(const char* utf8) { return QString::fromUtf8(utf8); }

// The watcher's process is this test, which is no known panel, so the desktop's name decides.
class FreedesktopStatusBarTest : public testing::Test {
 protected:
  void SetUp() override { registerSniTypes(); }
  void TearDown() override { qunsetenv("XDG_CURRENT_DESKTOP"); }

  void startWatcher() { watcher_ = std::make_unique<RecordingWatcher>(bus_.connect()); }

  void createItem(const char* desktop = "") {
    qputenv("XDG_CURRENT_DESKTOP", desktop);
    bar_ = std::make_unique<FreedesktopStatusBar>(bus_.join(), theme_.path());
    item_ = bar_->createStatusItem({[this](const auto& p) { clicks_.push_back(p); },
                                    [this] { ++settings_; }, [this] { ++quits_; }});
    item_->setContent(content());
  }

  [[nodiscard]] bool registered(qsizetype times = 1) {
    return waitFor([&] { return watcher_->items.size() >= times; });
  }

  [[nodiscard]] bool showItem(const char* desktop = "") {
    startWatcher();
    createItem(desktop);
    return registered();
  }

  std::unique_ptr<RecordingHost> host() {
    return std::make_unique<RecordingHost>(bus_.connect(), watcher_->items.last());
  }

  test::PrivateBus bus_;
  QTemporaryDir theme_;
  std::unique_ptr<RecordingWatcher> watcher_;
  std::unique_ptr<FreedesktopStatusBar> bar_;
  std::unique_ptr<StatusItem> item_;
  std::vector<std::optional<ClickPosition>> clicks_;
  int settings_ = 0;
  int quits_ = 0;
};

TEST_F(FreedesktopStatusBarTest, RegistersItsUniqueName) {
  ASSERT_TRUE(showItem());
  EXPECT_TRUE(watcher_->items.first().startsWith(QLatin1Char(':')));
  EXPECT_EQ(host()->property("Id"), text("org.tollbeam.Tollbeam"));
}

TEST_F(FreedesktopStatusBarTest, RegistersWithAWatcherThatComesLater) {
  createItem();
  startWatcher();
  ASSERT_TRUE(registered());
  EXPECT_EQ(host()->property("Status"), text("Active"));
}

TEST_F(FreedesktopStatusBarTest, RegistersAgainOnARestartedBus) {
  ASSERT_TRUE(showItem());
  bus_.stop();
  watcher_.reset();
  bus_.start();
  startWatcher();
  ASSERT_TRUE(registered());
  EXPECT_EQ(host()->property("Id"), text("org.tollbeam.Tollbeam"));
}

TEST_F(FreedesktopStatusBarTest, RegistersWithTheNextWatcher) {
  ASSERT_TRUE(showItem());
  watcher_.reset();
  startWatcher();
  ASSERT_TRUE(registered());
  EXPECT_EQ(host()->property("Status"), text("Active"));
}

TEST_F(FreedesktopStatusBarTest, RegistersAgainWhenAPanelComesToAnOldWatcher) {
  ASSERT_TRUE(showItem());
  watcher_->announceHost();
  ASSERT_TRUE(registered(2));
  EXPECT_EQ(watcher_->items.at(0), watcher_->items.at(1)) << "the same item, not a second one";
}

TEST_F(FreedesktopStatusBarTest, LeavesTheBusWhenDestroyed) {
  ASSERT_TRUE(showItem());
  const auto panel = host();
  item_.reset();
  EXPECT_TRUE(waitFor([&] { return !panel->property("Id").has_value(); }));
}

TEST_F(FreedesktopStatusBarTest, ShowsContentThatWasSetBeforeTheWatcherCame) {
  createItem();
  auto shown = content();
  shown.toolTip = "65%";
  item_->setContent(shown);
  startWatcher();
  ASSERT_TRUE(registered());
  EXPECT_EQ(qdbus_cast<SniToolTip>(*host()->property("ToolTip")).title, text("65%"));
}

TEST_F(FreedesktopStatusBarTest, HasTheStandardsProperties) {
  ASSERT_TRUE(showItem());
  const auto panel = host();
  EXPECT_EQ(panel->property("Category"), text("Hardware"));
  EXPECT_EQ(panel->property("Title"), text("Tollbeam"));
  EXPECT_EQ(panel->property("ItemIsMenu"), false);
  EXPECT_EQ(panel->property("IconName"), text("tollbeam-battery-75-symbolic"));
  EXPECT_EQ(panel->property("IconThemePath"), theme_.path());
  EXPECT_EQ(panel->property("IconAccessibleDesc"), text("Battery"));
  EXPECT_EQ(panel->property("OverlayIconName"), QString());
  EXPECT_EQ(panel->property("XAyatanaLabel"), QString());
  EXPECT_EQ(panel->property("Menu")->value<QDBusObjectPath>().path(),
            text("/StatusNotifierItem/Menu"));
  const auto pixmaps = qdbus_cast<SniPixmaps>(*panel->property("IconPixmap"));
  ASSERT_EQ(pixmaps.size(), 6);
  EXPECT_EQ(pixmaps.last().width, 64);
  const auto toolTip = qdbus_cast<SniToolTip>(*panel->property("ToolTip"));
  EXPECT_EQ(toolTip.title, text("64% · On battery"));
  EXPECT_EQ(toolTip.description, text("Cycles: 212"));
}

TEST_F(FreedesktopStatusBarTest, AnnouncesOnlyWhatChanged) {
  ASSERT_TRUE(showItem("GNOME"));
  const auto panel = host();
  ASSERT_EQ(panel->property("XAyatanaLabel"), text("64% · 3:47"));

  item_->setContent(content());
  auto shown = content();
  shown.title = " 63% · 3:45";
  item_->setContent(shown);
  ASSERT_TRUE(waitFor([&] { return !panel->signalNames.isEmpty(); }));
  EXPECT_EQ(panel->signalNames, QStringList(text("XAyatanaNewLabel")));

  panel->signalNames.clear();
  shown.toolTip = "63% · On battery\nCycles: 212";
  item_->setContent(shown);
  ASSERT_TRUE(waitFor([&] { return panel->signalNames.size() >= 2; }));
  panel->signalNames.sort();
  EXPECT_EQ(panel->signalNames, QStringList({text("LayoutUpdated"), text("NewToolTip")}));

  panel->signalNames.clear();
  shown.symbolNames = {"battery.50"};
  item_->setContent(shown);
  ASSERT_TRUE(waitFor([&] { return !panel->signalNames.isEmpty(); }));
  EXPECT_EQ(panel->signalNames, QStringList(text("NewIcon")));
  EXPECT_EQ(panel->property("IconName"), text("tollbeam-battery-50-symbolic"));
}

TEST_F(FreedesktopStatusBarTest, ReportsAClickWithItsPosition) {
  ASSERT_TRUE(showItem());
  const auto panel = host();
  const auto click = [&](const char* method, int x, int y) {
    return panel->call(text("/StatusNotifierItem"), text("org.kde.StatusNotifierItem"),
                       QLatin1String(method), {x, y});
  };
  ASSERT_TRUE(click("Activate", 1112, 15));
  ASSERT_TRUE(waitFor([&] { return clicks_.size() == 1; }));
  EXPECT_EQ(clicks_[0], (ClickPosition{1112, 15}));
  ASSERT_TRUE(click("SecondaryActivate", 7, 8));
  EXPECT_TRUE(waitFor([&] { return clicks_.size() == 2; }));
  ASSERT_TRUE(click("Activate", 0, 0));
  ASSERT_TRUE(waitFor([&] { return clicks_.size() == 3; }));
  EXPECT_EQ(clicks_[2], std::nullopt) << "the place of panels that do not know it";
}

TEST_F(FreedesktopStatusBarTest, ReportsNoPositionWhereTheHostsIsWrong) {
  ASSERT_TRUE(showItem("MATE"));
  ASSERT_TRUE(host()->call(text("/StatusNotifierItem"), text("org.kde.StatusNotifierItem"),
                           text("Activate"), {0, 28}));
  ASSERT_TRUE(waitFor([&] { return clicks_.size() == 1; }));
  EXPECT_EQ(clicks_[0], std::nullopt);
}

TEST_F(FreedesktopStatusBarTest, MenuOffersOpenStatusSettingsAndQuit) {
  ASSERT_TRUE(showItem());
  const auto reply = host()->menu("GetLayout", {0, -1, QStringList()});
  ASSERT_TRUE(reply && reply->size() == 2);
  const auto root = qdbus_cast<DBusMenuNode>(reply->at(1));
  EXPECT_EQ(root.properties.value(text("children-display")), text("submenu"));
  QStringList labels;
  for (const auto& child : root.children) {
    const auto properties = qdbus_cast<DBusMenuNode>(child.variant()).properties;
    const auto label = properties.value(text("label")).toString();
    const bool enabled = properties.value(text("enabled"), true).toBool();
    labels << (label.isEmpty() ? properties.value(text("type")).toString()
               : enabled       ? label
                               : text("(%1)").arg(label));
  }
  EXPECT_EQ(labels, QStringList({text("Open Tollbeam"), text("separator"),
                                 text("(64% · On battery)"), text("(Cycles: 212)"),
                                 text("separator"), text("Settings"), text("Quit")}));
}

TEST_F(FreedesktopStatusBarTest, MenuChoicesCallTheirActions) {
  ASSERT_TRUE(showItem());
  const auto panel = host();
  const auto layout = panel->menu("GetLayout", {0, 1, QStringList()});
  ASSERT_TRUE(layout && layout->size() == 2);
  const auto choose = [&](const char* label) {
    for (const auto& child : qdbus_cast<DBusMenuNode>(layout->at(1)).children) {
      const auto entry = qdbus_cast<DBusMenuNode>(child.variant());
      if (entry.properties.value(text("label")) == text(label))
        return panel
            ->menu("Event",
                   {entry.id, text("clicked"), QVariant::fromValue(QDBusVariant(QString())), 0U})
            .has_value();
    }
    return false;
  };
  EXPECT_TRUE(choose("Settings"));
  EXPECT_TRUE(waitFor([&] { return settings_ == 1; }));
  EXPECT_TRUE(choose("Cycles: 212")) << "disabled: received and ignored";
  EXPECT_TRUE(choose("Open Tollbeam"));
  EXPECT_TRUE(waitFor([&] { return clicks_.size() == 1; }));
  EXPECT_TRUE(choose("Quit"));
  EXPECT_TRUE(waitFor([&] { return quits_ == 1; }));
  EXPECT_EQ(settings_, 1);
  EXPECT_EQ(clicks_.size(), 1U);
}

TEST_F(FreedesktopStatusBarTest, MenuAnswersGroupedCalls) {
  ASSERT_TRUE(showItem());
  const auto panel = host();
  const DBusMenuEvents events{{4, text("clicked"), QDBusVariant(QString()), 0},
                              {77, text("clicked"), QDBusVariant(QString()), 0}};
  const auto unknown = panel->menu("EventGroup", {QVariant::fromValue(events)});
  ASSERT_TRUE(unknown && unknown->size() == 1);
  EXPECT_EQ(qdbus_cast<QList<int>>(unknown->front()), QList<int>{77});
  EXPECT_TRUE(waitFor([&] { return settings_ == 1; }));
  const auto properties =
      panel->menu("GetGroupProperties", {QVariant::fromValue(QList<int>{4, 5}), QStringList()});
  ASSERT_TRUE(properties && properties->size() == 1);
  const auto list = qdbus_cast<DBusMenuPropertiesList>(properties->front());
  ASSERT_EQ(list.size(), 2);
  EXPECT_EQ(list.at(1).properties.value(text("label")), text("Quit"));
  EXPECT_TRUE(panel->menu("AboutToShow", {0}));
  EXPECT_TRUE(panel->menu("AboutToShowGroup", {QVariant::fromValue(QList<int>{0})}));
}

}  // namespace
}  // namespace tollbeam

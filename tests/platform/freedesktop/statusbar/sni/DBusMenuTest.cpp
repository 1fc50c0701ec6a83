#include "platform/freedesktop/statusbar/sni/DBusMenu.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <optional>
#include <utility>
#include <vector>

#include "support/PrivateBus.h"
#include "support/RecordingWatcher.h"

namespace tollbeam {
namespace {

using test::waitFor;
using Kind = StatusMenuEntry::Kind;

QString text(const char* utf8) { return QString::fromUtf8(utf8); }

constexpr int kRoot = 0;
constexpr int kUnknown = 99;

// The menu on the bus, and a panel that reads it there.
class DBusMenuTest : public testing::Test {
 protected:
  DBusMenuTest() {
    menu_.setEntries({{1, Kind::Open, text("Open_now")},
                      {2, Kind::Separator, {}},
                      {100, Kind::Status, text("64%")},
                      {5, Kind::Quit, text("Quit")}});
    service_.registerObject(text("/StatusNotifierItem/Menu"), &menu_,
                            QDBusConnection::ExportAllContents);
  }

  [[nodiscard]] std::pair<uint, DBusMenuNode> layout(int parent, int depth,
                                                     const QStringList& names = {}) {
    const auto reply = panel_.menu("GetLayout", {parent, depth, names});
    if (!reply || reply->size() != 2) return {};
    return {reply->at(0).toUInt(), qdbus_cast<DBusMenuNode>(reply->at(1))};
  }

  void send(int id, const char* event) {
    ASSERT_TRUE(
        panel_.menu("Event", {id, text(event), QVariant::fromValue(QDBusVariant(QString())), 0U}));
  }

  [[nodiscard]] std::optional<QVariant> property(int id, const char* name) {
    const auto reply = panel_.menu("GetProperty", {id, text(name)});
    if (!reply || reply->size() != 1) return std::nullopt;
    return reply->front().value<QDBusVariant>().variant();
  }

  test::PrivateBus bus_;
  std::vector<Kind> chosen_;
  DBusMenu menu_{[this](Kind kind) { chosen_.push_back(kind); }};
  QDBusConnection service_ = bus_.connect();
  test::RecordingHost panel_{bus_.connect(), service_.baseService()};
};

TEST_F(DBusMenuTest, LayoutHoldsTheEntriesInTheirOrder) {
  const auto root = layout(kRoot, -1).second;
  EXPECT_EQ(root.id, kRoot);
  QList<int> ids;
  for (const auto& child : root.children) ids << qdbus_cast<DBusMenuNode>(child.variant()).id;
  EXPECT_EQ(ids, (QList<int>{1, 2, 100, 5}));
}

TEST_F(DBusMenuTest, LayoutOfDepthZeroHasNoChildren) {
  const auto root = layout(kRoot, 0).second;
  EXPECT_EQ(root.properties.value(text("children-display")), text("submenu"));
  EXPECT_TRUE(root.children.isEmpty());
}

TEST_F(DBusMenuTest, LayoutOfOneEntryHoldsItsProperties) {
  const auto quit = layout(5, -1).second;
  EXPECT_EQ(quit.id, 5);
  EXPECT_EQ(quit.properties, (QVariantMap{{text("label"), text("Quit")}}));
  EXPECT_TRUE(quit.children.isEmpty());
  EXPECT_TRUE(layout(kUnknown, -1).second.properties.isEmpty());
}

TEST_F(DBusMenuTest, SendsOnlyTheNamedProperties) {
  const auto root = layout(kRoot, -1, {text("enabled")}).second;
  ASSERT_EQ(root.children.size(), 4);
  for (const auto& child : root.children) {
    const auto entry = qdbus_cast<DBusMenuNode>(child.variant());
    EXPECT_EQ(entry.properties,
              entry.id == 100 ? (QVariantMap{{text("enabled"), false}}) : QVariantMap());
  }
}

TEST_F(DBusMenuTest, DoublesUnderscoresSoThatTheyAreNoMnemonics) {
  EXPECT_EQ(property(1, "label"), QVariant(text("Open__now")));
}

TEST_F(DBusMenuTest, MissingPropertiesReadAsEmpty) {
  EXPECT_EQ(property(2, "type"), QVariant(text("separator")));
  EXPECT_EQ(property(2, "label"), QVariant(QString()));
  EXPECT_EQ(property(5, "no such property"), QVariant(QString()));
}

TEST_F(DBusMenuTest, AnnouncesOtherEntriesWithANewRevision) {
  const uint before = layout(kRoot, 0).first;
  menu_.setEntries({{5, Kind::Quit, text("Quit")}});
  ASSERT_TRUE(waitFor([&] { return !panel_.signalNames.isEmpty(); }));
  EXPECT_EQ(panel_.signalNames, QStringList{text("LayoutUpdated")});
  const auto [revision, root] = layout(kRoot, -1);
  EXPECT_GT(revision, before);
  EXPECT_EQ(root.children.size(), 1);
}

TEST_F(DBusMenuTest, DoesNotAnnounceTheSameEntries) {
  const uint before = layout(kRoot, 0).first;
  menu_.setEntries({{1, Kind::Open, text("Open_now")},
                    {2, Kind::Separator, {}},
                    {100, Kind::Status, text("64%")},
                    {5, Kind::Quit, text("Quit")}});
  EXPECT_EQ(layout(kRoot, 0).first, before);
  EXPECT_TRUE(panel_.signalNames.isEmpty());
}

TEST_F(DBusMenuTest, ClickChoosesOnlyAnEnabledEntry) {
  send(100, "clicked");
  send(kUnknown, "clicked");
  send(kRoot, "clicked");
  send(5, "hovered");
  send(5, "clicked");
  ASSERT_TRUE(waitFor([&] { return !chosen_.empty(); }));
  EXPECT_EQ(chosen_, std::vector{Kind::Quit});
}

TEST_F(DBusMenuTest, ReportsAChoiceAfterTheReplyToThePanel) {
  menu_.Event(5, text("clicked"), QDBusVariant(), 0);
  EXPECT_TRUE(chosen_.empty());
  EXPECT_TRUE(waitFor([&] { return chosen_ == std::vector{Kind::Quit}; }));
}

TEST_F(DBusMenuTest, GroupCallsReturnTheUnknownEntries) {
  const auto shown =
      panel_.menu("AboutToShowGroup", {QVariant::fromValue(QList<int>{kRoot, 1, kUnknown})});
  ASSERT_TRUE(shown && shown->size() == 2);
  EXPECT_TRUE(qdbus_cast<QList<int>>(shown->at(0)).isEmpty());
  EXPECT_EQ(qdbus_cast<QList<int>>(shown->at(1)), QList<int>{kUnknown});
}

}  // namespace
}  // namespace tollbeam

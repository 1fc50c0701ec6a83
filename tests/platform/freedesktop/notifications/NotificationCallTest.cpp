#include "platform/freedesktop/notifications/NotificationCall.h"

#include <gtest/gtest.h>

#include <QVariantMap>

namespace tollbeam {

namespace {

enum Argument { appName, replacesId, appIcon, summary, body, actions, hints, timeout };

constexpr ServerCapabilities kFull{.actions = true, .bodyMarkup = true, .sound = true};

Bubble bubble() {
  return {.title = "Battery low",
          .body = "15% left",
          .actions = {{.identifier = "SNOOZE", .title = "Snooze 1 hour"}},
          .sound = NotificationSound{}};
}

QVariant hint(const QVariantList& arguments, const char* name) {
  return arguments[hints].toMap().value(QLatin1String(name));
}

}  // namespace

TEST(NotificationCall, SendsTheApplicationTheContentAndTheHints) {
  const auto call = notifyArguments(bubble(), {}, kFull, 7);
  ASSERT_EQ(call.size(), 8);
  EXPECT_EQ(call[appName], QLatin1String("Tollbeam"));
  EXPECT_EQ(call[replacesId], QVariant(7U));
  EXPECT_EQ(call[appIcon], QLatin1String("org.tollbeam.Tollbeam"));
  EXPECT_EQ(call[summary], QLatin1String("Battery low"));
  EXPECT_EQ(call[body], QLatin1String("15% left"));
  EXPECT_EQ(call[timeout], QVariant(-1));
  EXPECT_EQ(hint(call, "urgency"), QVariant::fromValue(uchar{1}));
  EXPECT_EQ(hint(call, "urgency").typeId(), QMetaType::UChar);
  EXPECT_EQ(hint(call, "desktop-entry"), QLatin1String("org.tollbeam.Tollbeam"));
  EXPECT_EQ(hint(call, "category"), QLatin1String("device"));
  EXPECT_EQ(hint(call, "image-path"), QLatin1String("org.tollbeam.Tollbeam"));
}

TEST(NotificationCall, SendsActionsOnlyToAServerThatHasThem) {
  EXPECT_EQ(notifyArguments(bubble(), {}, kFull, 0)[actions].toStringList(),
            (QStringList{QStringLiteral("default"), QString(), QStringLiteral("SNOOZE"),
                         QStringLiteral("Snooze 1 hour")}));
  EXPECT_TRUE(notifyArguments(bubble(), {}, {}, 0)[actions].toStringList().isEmpty());
}

TEST(NotificationCall, EscapesTheBodyOnlyWhereTheServerReadsMarkup) {
  Bubble markup = bubble();
  markup.title = "<1 & 2>";
  markup.body = "<b> & &lt;";
  const auto escaped = notifyArguments(markup, {}, kFull, 0);
  EXPECT_EQ(escaped[summary], QLatin1String("<1 & 2>"));
  EXPECT_EQ(escaped[body], QLatin1String("&lt;b&gt; &amp; &amp;lt;"));
  EXPECT_EQ(notifyArguments(markup, {}, {}, 0)[body], QLatin1String("<b> & &lt;"));
}

TEST(NotificationCall, ASilentRequestSuppressesTheSound) {
  Bubble silent = bubble();
  silent.sound.reset();
  for (const bool server : {true, false}) {
    const auto call = notifyArguments(silent, {}, {.sound = server}, 0);
    EXPECT_EQ(hint(call, "suppress-sound"), QVariant(true));
    EXPECT_FALSE(hint(call, "sound-name").isValid());
  }
}

TEST(NotificationCall, SendsTheSoundToAServerThatPlaysIt) {
  Bubble named = bubble();
  named.sound = NotificationSound{.name = "No Such Sound"};
  EXPECT_EQ(hint(notifyArguments(named, {}, kFull, 0), "sound-name"),
            QLatin1String("No Such Sound"));
  const auto usual = notifyArguments(bubble(), {}, kFull, 0);
  EXPECT_EQ(hint(usual, "sound-name"), QLatin1String("message-new-instant"));
  EXPECT_FALSE(hint(usual, "suppress-sound").isValid());
}

TEST(NotificationCall, SuppressesTheSoundOfAServerThatDoesNotClaimToPlayIt) {
  Bubble named = bubble();
  named.sound = NotificationSound{.name = "Glass"};
  for (const Bubble& each : {bubble(), named}) {
    const auto call = notifyArguments(each, {}, {}, 0);
    EXPECT_EQ(hint(call, "suppress-sound"), QVariant(true));
    EXPECT_FALSE(hint(call, "sound-name").isValid());
    EXPECT_FALSE(hint(call, "sound-file").isValid());
  }
}

TEST(NotificationCall, SendsASoundOfOurOwnAsAFile) {
  const NotificationLook look{.soundFile = [](const std::string& name) {
    return name == "Glass" ? std::optional<std::string>("/sounds/Glass.oga") : std::nullopt;
  }};
  Bubble named = bubble();
  named.sound = NotificationSound{.name = "Glass"};
  const auto ours = notifyArguments(named, look, kFull, 0);
  EXPECT_EQ(hint(ours, "sound-file"), QLatin1String("/sounds/Glass.oga"));
  EXPECT_FALSE(hint(ours, "sound-name").isValid());
  named.sound = NotificationSound{.name = "bell"};
  EXPECT_EQ(hint(notifyArguments(named, look, kFull, 0), "sound-name"), QLatin1String("bell"));
}

TEST(NotificationCall, SendsAnIconFileAsAUrl) {
  const auto call = notifyArguments(bubble(), {.icon = "/my apps/icon.svg"}, kFull, 0);
  EXPECT_EQ(call[appIcon], QLatin1String("file:///my%20apps/icon.svg"));
  EXPECT_EQ(hint(call, "image-path"), QLatin1String("file:///my%20apps/icon.svg"));
}

TEST(NotificationCall, ReadsTheNamesOfCapabilities) {
  EXPECT_EQ(ServerCapabilities::from({QStringLiteral("body"), QStringLiteral("actions"),
                                      QStringLiteral("body-markup"), QStringLiteral("sound")}),
            kFull);
  EXPECT_EQ(ServerCapabilities::from({QStringLiteral("action-icons")}), ServerCapabilities{});
}

}  // namespace tollbeam

#include "platform/freedesktop/notifications/NotificationCall.h"

#include <QString>
#include <QUrl>
#include <QVariantMap>

#include "platform/freedesktop/sounds/DesktopSounds.h"
#include "texts/Translated.h"

namespace tollbeam {

namespace {

constexpr uchar kNormalUrgency = 1;
// The server's own timeout, which its user may have set.
constexpr int kServerDecides = -1;

QString escaped(QString text) {
  // The ampersand first, or it would be escaped twice.
  return text.replace(QLatin1Char('&'), QLatin1String("&amp;"))
      .replace(QLatin1Char('<'), QLatin1String("&lt;"))
      .replace(QLatin1Char('>'), QLatin1String("&gt;"));
}

QString iconName(const std::string& icon) {
  const QString name = QString::fromStdString(icon);
  return icon.starts_with('/') ? QString::fromUtf8(QUrl::fromLocalFile(name).toEncoded()) : name;
}

QStringList actionPairs(const std::vector<NotificationAction>& actions) {
  // A click on the bubble must not count as a tap on its only button, as it does on dunst. Without
  // a label the default action is no button (xfce would draw one).
  QStringList pairs{QStringLiteral("default"), QString()};
  for (const auto& action : actions) {
    pairs << QString::fromStdString(action.identifier) << translated(action.title);
  }
  return pairs;
}

void addSound(QVariantMap& hints, const std::optional<NotificationSound>& sound,
              const NotificationLook& look) {
  if (!sound) {
    hints[QStringLiteral("suppress-sound")] = true;
  } else if (!sound->name) {
    hints[QStringLiteral("sound-name")] = QLatin1String(kDefaultSoundEvent);
  } else if (const auto file = look.soundFile ? look.soundFile(*sound->name) : std::nullopt) {
    hints[QStringLiteral("sound-file")] = QString::fromStdString(*file);
  } else {
    hints[QStringLiteral("sound-name")] = QString::fromStdString(*sound->name);
  }
}

}  // namespace

ServerCapabilities ServerCapabilities::from(const QStringList& names) {
  return {.actions = names.contains(QLatin1String("actions")),
          .bodyMarkup = names.contains(QLatin1String("body-markup")),
          .sound = names.contains(QLatin1String("sound"))};
}

QVariantList notifyArguments(const Bubble& bubble, const NotificationLook& look,
                             const ServerCapabilities& server, uint replacesId) {
  const QString body = translated(bubble.body);
  const QString icon = iconName(look.icon);
  QVariantMap hints{
      {QStringLiteral("urgency"), QVariant::fromValue(kNormalUrgency)},
      {QStringLiteral("desktop-entry"), QString::fromStdString(look.desktopEntry)},
      {QStringLiteral("category"), QStringLiteral("device")},
      {QStringLiteral("image-path"), icon},
  };
  // We play the sound of a server that does not claim to: it is asked for silence, in case it does
  // and the sound would be heard twice.
  addSound(hints, server.sound ? bubble.sound : std::nullopt, look);
  return {QString::fromStdString(look.applicationName),
          replacesId,
          icon,
          translated(bubble.title),
          server.bodyMarkup ? escaped(body) : body,
          server.actions ? actionPairs(bubble.actions) : QStringList(),
          hints,
          kServerDecides};
}

}  // namespace tollbeam

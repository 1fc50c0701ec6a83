// The structures that org.kde.StatusNotifierItem and com.canonical.dbusmenu put on the bus.
#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantMap>

class QImage;

namespace tollbeam {

/// Bytes are ARGB, not premultiplied, in network order.
struct SniPixmap {
  int width = 0;
  int height = 0;
  QByteArray bytes;

  friend bool operator==(const SniPixmap&, const SniPixmap&) = default;
};
using SniPixmaps = QList<SniPixmap>;

struct SniToolTip {
  QString iconName;
  SniPixmaps icon;
  QString title;
  QString description;

  friend bool operator==(const SniToolTip&, const SniToolTip&) = default;
};

struct DBusMenuNode {
  int id = 0;
  QVariantMap properties;
  QList<DBusMenuNode> children;
};

struct DBusMenuProperties {
  int id = 0;
  QVariantMap properties;
};
using DBusMenuPropertiesList = QList<DBusMenuProperties>;

struct DBusMenuEvent {
  int id = 0;
  QString name;
  QVariant data;
  uint timestamp = 0;
};
using DBusMenuEvents = QList<DBusMenuEvent>;

QDBusArgument& operator<<(QDBusArgument& to, const SniPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& from, SniPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& to, const SniToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& from, SniToolTip& toolTip);
QDBusArgument& operator<<(QDBusArgument& to, const DBusMenuNode& node);
const QDBusArgument& operator>>(const QDBusArgument& from, DBusMenuNode& node);
QDBusArgument& operator<<(QDBusArgument& to, const DBusMenuProperties& properties);
const QDBusArgument& operator>>(const QDBusArgument& from, DBusMenuProperties& properties);
QDBusArgument& operator<<(QDBusArgument& to, const DBusMenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& from, DBusMenuEvent& event);

/// Before any of them goes over the bus; may be called again.
void registerSniTypes();

[[nodiscard]] SniPixmap toSniPixmap(const QImage& image);

}  // namespace tollbeam

Q_DECLARE_METATYPE(tollbeam::SniPixmap)
Q_DECLARE_METATYPE(tollbeam::SniToolTip)
Q_DECLARE_METATYPE(tollbeam::DBusMenuNode)
Q_DECLARE_METATYPE(tollbeam::DBusMenuProperties)
Q_DECLARE_METATYPE(tollbeam::DBusMenuEvent)

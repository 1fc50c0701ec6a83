#include "platform/freedesktop/statusbar/sni/SniTypes.h"

#include <QDBusMetaType>
#include <QDBusVariant>
#include <QImage>
#include <QtEndian>

namespace tollbeam {

QDBusArgument& operator<<(QDBusArgument& to, const SniPixmap& pixmap) {
  to.beginStructure();
  to << pixmap.width << pixmap.height << pixmap.bytes;
  to.endStructure();
  return to;
}

const QDBusArgument& operator>>(const QDBusArgument& from, SniPixmap& pixmap) {
  from.beginStructure();
  from >> pixmap.width >> pixmap.height >> pixmap.bytes;
  from.endStructure();
  return from;
}

QDBusArgument& operator<<(QDBusArgument& to, const SniToolTip& toolTip) {
  to.beginStructure();
  to << toolTip.iconName << toolTip.icon << toolTip.title << toolTip.description;
  to.endStructure();
  return to;
}

const QDBusArgument& operator>>(const QDBusArgument& from, SniToolTip& toolTip) {
  from.beginStructure();
  from >> toolTip.iconName >> toolTip.icon >> toolTip.title >> toolTip.description;
  from.endStructure();
  return from;
}

QDBusArgument& operator<<(QDBusArgument& to, const DBusMenuNode& node) {
  to.beginStructure();
  to << node.id << node.properties;
  to.beginArray(QMetaType::fromType<QDBusVariant>());
  for (const auto& child : node.children) to << QDBusVariant(QVariant::fromValue(child));
  to.endArray();
  to.endStructure();
  return to;
}

const QDBusArgument& operator>>(const QDBusArgument& from, DBusMenuNode& node) {
  from.beginStructure();
  from >> node.id >> node.properties;
  node.children.clear();
  from.beginArray();
  while (!from.atEnd()) {
    QDBusVariant child;
    from >> child;
    node.children << qdbus_cast<DBusMenuNode>(child.variant().value<QDBusArgument>());
  }
  from.endArray();
  from.endStructure();
  return from;
}

QDBusArgument& operator<<(QDBusArgument& to, const DBusMenuProperties& properties) {
  to.beginStructure();
  to << properties.id << properties.properties;
  to.endStructure();
  return to;
}

const QDBusArgument& operator>>(const QDBusArgument& from, DBusMenuProperties& properties) {
  from.beginStructure();
  from >> properties.id >> properties.properties;
  from.endStructure();
  return from;
}

QDBusArgument& operator<<(QDBusArgument& to, const DBusMenuEvent& event) {
  to.beginStructure();
  to << event.id << event.name << QDBusVariant(event.data) << event.timestamp;
  to.endStructure();
  return to;
}

const QDBusArgument& operator>>(const QDBusArgument& from, DBusMenuEvent& event) {
  QDBusVariant data;
  from.beginStructure();
  from >> event.id >> event.name >> data >> event.timestamp;
  from.endStructure();
  event.data = data.variant();
  return from;
}

void registerSniTypes() {
  qDBusRegisterMetaType<SniPixmap>();
  qDBusRegisterMetaType<SniPixmaps>();
  qDBusRegisterMetaType<SniToolTip>();
  qDBusRegisterMetaType<DBusMenuNode>();
  qDBusRegisterMetaType<DBusMenuProperties>();
  qDBusRegisterMetaType<DBusMenuPropertiesList>();
  qDBusRegisterMetaType<DBusMenuEvent>();
  qDBusRegisterMetaType<DBusMenuEvents>();
  qDBusRegisterMetaType<QList<int>>();
  // Under the names that the declarations of slots and signals use, by which QtDBus looks them up.
  qRegisterMetaType<DBusMenuPropertiesList>("tollbeam::DBusMenuPropertiesList");
  qRegisterMetaType<DBusMenuEvents>("tollbeam::DBusMenuEvents");
}

SniPixmap toSniPixmap(const QImage& image) {
  const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
  SniPixmap pixmap{argb.width(), argb.height(), {}};
  pixmap.bytes.resize(static_cast<qsizetype>(argb.width()) * argb.height() * 4);
  auto* to = pixmap.bytes.data();
  for (int y = 0; y < argb.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(argb.constScanLine(y));
    for (int x = 0; x < argb.width(); ++x, to += 4) qToBigEndian<quint32>(line[x], to);
  }
  return pixmap;
}

}  // namespace tollbeam

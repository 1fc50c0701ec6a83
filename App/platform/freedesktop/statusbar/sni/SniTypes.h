// The structures that org.kde.StatusNotifierItem and com.canonical.dbusmenu put on the bus.
#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QString>
#include <QVariantMap>
#include <tuple>

class QImage;

namespace tollbeam {

/// Bytes are ARGB, not premultiplied, in network order.
struct SniPixmap {
  int width = 0;
  int height = 0;
  QByteArray bytes;

  static auto fields(auto& self) { return std::tie(self.width, self.height, self.bytes); }
  friend bool operator==(const SniPixmap&, const SniPixmap&) = default;
};
using SniPixmaps = QList<SniPixmap>;

struct SniToolTip {
  QString iconName;
  SniPixmaps icon;
  QString title;
  QString description;

  static auto fields(auto& self) {
    return std::tie(self.iconName, self.icon, self.title, self.description);
  }
  friend bool operator==(const SniToolTip&, const SniToolTip&) = default;
};

struct DBusMenuNode {
  int id = 0;
  QVariantMap properties;
  /// Of DBusMenuNode.
  QList<QDBusVariant> children;

  static auto fields(auto& self) { return std::tie(self.id, self.properties, self.children); }
};

struct DBusMenuProperties {
  int id = 0;
  QVariantMap properties;

  static auto fields(auto& self) { return std::tie(self.id, self.properties); }
};
using DBusMenuPropertiesList = QList<DBusMenuProperties>;

struct DBusMenuEvent {
  int id = 0;
  QString name;
  QDBusVariant data;
  uint timestamp = 0;

  static auto fields(auto& self) { return std::tie(self.id, self.name, self.data, self.timestamp); }
};
using DBusMenuEvents = QList<DBusMenuEvent>;

/// A structure on the bus: `fields` ties its members in the order of its signature.
template <typename T>
concept BusStructure = requires(T& value) {
  T::fields(value);
};

template <BusStructure T>
QDBusArgument& operator<<(QDBusArgument& to, const T& value) {
  to.beginStructure();
  std::apply([&](const auto&... field) { (to << ... << field); }, T::fields(value));
  to.endStructure();
  return to;
}

template <BusStructure T>
const QDBusArgument& operator>>(const QDBusArgument& from, T& value) {
  from.beginStructure();
  std::apply([&](auto&... field) { (from >> ... >> field); }, T::fields(value));
  from.endStructure();
  return from;
}

/// Call it before any of them goes over the bus; more than once does no harm.
void registerSniTypes();

[[nodiscard]] SniPixmap toSniPixmap(const QImage& image);

}  // namespace tollbeam

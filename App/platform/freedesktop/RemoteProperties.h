// The properties of one object on the bus, kept up to date. Everything is asked again whenever the
// service gets a new owner, because a starting daemon sends its first signals before it owns its
// name; an answer that belongs to an earlier owner is dropped. Never blocks. Main thread only.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <optional>

#include "platform/Value.h"

namespace tollbeam {

class RemoteProperties final : public QObject {
  Q_OBJECT

 public:
  struct Address {
    QString service;
    QString path;
    QString interface;
  };

  /// Whether asking may start the service.
  enum class Activation { allowed, forbidden };

  /// Absent: no owner, or it refused to answer.
  enum class State { asking, known, absent };

  /// Follows the properties named `keys`; others are not kept and their changes not told. The first
  /// question goes out here, its answer comes later.
  RemoteProperties(const QDBusConnection& bus, Address address, QStringList keys,
                   Activation activation);

  [[nodiscard]] State state() const { return state_; }

  /// Flags, numbers and texts among the followed properties; absent unless `known`.
  [[nodiscard]] const std::optional<Dictionary>& values() const { return values_; }

 Q_SIGNALS:
  /// The state or a followed value changed.
  void updated();

 private Q_SLOTS:
  void onOwnerChanged(const QString& name, const QString& before, const QString& now);
  void onPropertiesChanged(const QString& interface, const QVariantMap& changed,
                           const QStringList& invalidated, const QDBusMessage& message);

 private:
  void ask();
  void take(const QDBusMessage& answer);
  [[nodiscard]] Dictionary followed(const QVariantMap& properties) const;

  QDBusConnection bus_;
  const Address address_;
  const QStringList keys_;
  const Activation activation_;
  State state_ = State::asking;
  std::optional<Dictionary> values_;
  QString owner_;
  int question_ = 0;
};

}  // namespace tollbeam

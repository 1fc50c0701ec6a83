// The properties of one object on the bus, kept up to date. All are queried again whenever the
// service gets a new owner, because a starting daemon sends its first signals before it owns its
// name; answers of earlier owners are dropped. Never blocks. Main thread only.
#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <optional>

#include "platform/freedesktop/bus/ServiceOwner.h"
#include "values/Value.h"

namespace tollbeam {

class RemoteProperties final : public QObject {
  Q_OBJECT

 public:
  struct Address {
    QString service;
    QString path;
    QString interface;
  };

  /// Absent: the service has no owner, or its owner refused to answer.
  enum class State { asking, known, absent };

  /// `bus` outlives this object. Follows the properties named `keys` and ignores others. The state
  /// is `asking` until the first answer.
  RemoteProperties(Bus& bus, Address address, QStringList keys, Activation activation);

  /// Queries all properties once more and keeps the known values meanwhile. In milliseconds.
  void ask(int timeout = Bus::kUsualTimeout);

  [[nodiscard]] State state() const { return state_; }

  /// Flags, numbers and texts among the followed properties; present while `known`.
  [[nodiscard]] const std::optional<Dictionary>& values() const { return values_; }

 Q_SIGNALS:
  /// The service answered or sent a signal, even one that changes nothing. Emitted before
  /// `updated`.
  void heard();
  /// The state or a followed value changed.
  void updated();

 private Q_SLOTS:
  void onPropertiesChanged(const QString& interface, const QVariantMap& changed,
                           const QStringList& invalidated, const QDBusMessage& message);

 private:
  void onOwnerChanged();
  void take(const QDBusMessage& answer);
  [[nodiscard]] Dictionary followed(const QVariantMap& properties) const;

  Bus& bus_;
  const Address address_;
  const QStringList keys_;
  State state_ = State::asking;
  std::optional<Dictionary> values_;
  ServiceOwner owner_;
  /// Incremented with each question; answers to earlier ones are out of date.
  int question_ = 0;
};

}  // namespace tollbeam

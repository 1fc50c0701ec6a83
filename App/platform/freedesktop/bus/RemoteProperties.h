// The properties of one object on the bus, kept up to date. Everything is asked again whenever the
// service gets a new owner, because a starting daemon sends its first signals before it owns its
// name; an answer that belongs to an earlier owner is dropped. Never blocks. Main thread only.
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

  /// Absent: no owner, or it refused to answer.
  enum class State { asking, known, absent };

  /// `bus` outlives this object. Follows the properties named `keys`; others are neither kept nor
  /// announced. What is there to know is known later.
  RemoteProperties(Bus& bus, Address address, QStringList keys, Activation activation);

  /// Asks for all properties once more; what is known is kept meanwhile.
  void ask() { ask(Bus::kUsualTimeout); }

  [[nodiscard]] State state() const { return state_; }

  /// Flags, numbers and texts among the followed properties; absent unless `known`.
  [[nodiscard]] const std::optional<Dictionary>& values() const { return values_; }

 Q_SIGNALS:
  /// The service answered or signalled, whether or not that changes anything. Comes before
  /// `updated`.
  void heard();
  /// The state or a followed value changed.
  void updated();

 private Q_SLOTS:
  void onPropertiesChanged(const QString& interface, const QVariantMap& changed,
                           const QStringList& invalidated, const QDBusMessage& message);

 private:
  void onOwnerChanged();
  void ask(int timeout);
  void take(const QDBusMessage& answer);
  [[nodiscard]] Dictionary followed(const QVariantMap& properties) const;

  Bus& bus_;
  const Address address_;
  const QStringList keys_;
  State state_ = State::asking;
  std::optional<Dictionary> values_;
  ServiceOwner owner_;
  int question_ = 0;
};

}  // namespace tollbeam

// Who owns a service's name on the bus, kept up to date. A signal's sender is compared with the
// owner, because with the sender in the rule Qt would ask for the owner and block, and because
// replies do not carry their sender in every release of Qt.
//
// A bus answers in order: a question to the service that is sent after the construction, or after a
// change of the owner, is answered when the owner is known already. Never blocks. Main thread only.
#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QString>

#include "platform/freedesktop/bus/Bus.h"

namespace tollbeam {

/// Whether a service that does not run may be started.
enum class Activation { allowed, forbidden };

class ServiceOwner final : public QObject {
  Q_OBJECT

 public:
  /// `bus` outlives this object.
  ServiceOwner(Bus& bus, QString service, Activation activation);

  /// The owner's unique name; empty while there is no owner, or it is not known yet.
  [[nodiscard]] const QString& name() const { return name_; }

  [[nodiscard]] bool sent(const QDBusMessage& signal) const {
    return !name_.isEmpty() && signal.service() == name_;
  }

 Q_SIGNALS:
  /// Once when it is first known whether there is an owner, after an attempt to start one where
  /// that is allowed; then at each change, and once more after the bus was lost and restored. Never
  /// before the constructor has returned.
  void changed();

 private Q_SLOTS:
  void onNameOwnerChanged(const QString& service, const QString& before, const QString& now,
                          const QDBusMessage& message);

 private:
  void ask();
  void start();
  void settle(const QString& name);

  Bus& bus_;
  const QString service_;
  const Activation activation_;
  QString name_;
  /// Incremented by whatever makes the answer to an open question out of date.
  int question_ = 0;
};

}  // namespace tollbeam

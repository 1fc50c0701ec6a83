// Who owns a service's name on the bus, kept up to date. A signal's sender is compared with the
// owner, because rules that name the sender would make the library ask for it and wait, and replies
// do not carry their sender on every release of Qt.
//
// The bus answers in order: who asks the service after building this, or when the owner changes,
// knows the owner before the service's answer arrives. Never blocks. Main thread only.
#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <functional>

#include "platform/freedesktop/bus/Bus.h"

namespace tollbeam {

/// Whether a service that does not run may be started.
enum class Activation { allowed, forbidden };

class ServiceOwner final : public QObject {
  Q_OBJECT

 public:
  /// `bus` outlives this object.
  ServiceOwner(Bus& bus, QString service, Activation activation);

  /// Its unique name; empty while there is no owner, or it is not known yet.
  [[nodiscard]] const QString& name() const { return name_; }

  [[nodiscard]] bool sent(const QDBusMessage& signal) const {
    return !name_.isEmpty() && signal.service() == name_;
  }

 Q_SIGNALS:
  /// Once when the owner is first known or there is none, also after an attempt to start one; then
  /// at each change, and once more after the bus was lost and restored. Never before the
  /// constructor has returned.
  void changed();

 private Q_SLOTS:
  void onNameOwnerChanged(const QString& service, const QString& before, const QString& now,
                          const QDBusMessage& message);

 private:
  void askBus(const char* method, const QVariantList& arguments,
              const std::function<void(const QDBusMessage&)>& answered);
  void ask();
  void start();
  void settle(const QString& name);

  Bus& bus_;
  const QString service_;
  const Activation activation_;
  QString name_;
  /// Counts what makes the answer to an open question out of date.
  int question_ = 0;
};

}  // namespace tollbeam

// Sleep and wake as logind announces them. A delay lock is held while the machine is awake, so that
// sleep waits until the observers have returned; it is released right then, because a held lock
// delays the sleep of a machine whose lid is closed.
#pragma once

#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QObject>

#include "platform/Workspace.h"
#include "platform/freedesktop/bus/ServiceOwner.h"

namespace tollbeam {

class LogindWorkspace final : public QObject, public Workspace {
  Q_OBJECT

 public:
  /// `systemBus` outlives this object.
  explicit LogindWorkspace(Bus& systemBus);

  Subscription onWillSleep(std::function<void()> callback) override;
  Subscription onDidWake(std::function<void()> callback) override;

 private Q_SLOTS:
  void onPrepareForSleep(bool start, const QDBusMessage& message);

 private:
  void onOwnerChanged();
  void takeLock();

  Bus& bus_;
  QDBusUnixFileDescriptor lock_;
  ServiceOwner owner_;
  /// Incremented with each request for a lock; answers to earlier ones are dropped.
  int request_ = 0;
  bool preparing_ = false;
  Observers<> willSleep_;
  Observers<> didWake_;
};

}  // namespace tollbeam

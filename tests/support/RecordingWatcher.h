// A watcher that records which items register, and a panel that talks to one item. Both live in the
// test's own process on connections of their own, so nothing here may block.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>
#include <QVariant>
#include <optional>

#include "support/PrivateBus.h"

namespace tollbeam::test {

class RecordingWatcher : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")

 public:
  explicit RecordingWatcher(QDBusConnection bus);
  ~RecordingWatcher() override;

  QStringList items;

  void announceHost() { Q_EMIT StatusNotifierHostRegistered(); }

 public Q_SLOTS:
  Q_SCRIPTABLE void RegisterStatusNotifierItem(const QString& item) { items << item; }

 Q_SIGNALS:
  Q_SCRIPTABLE void StatusNotifierHostRegistered();

 private:
  QDBusConnection bus_;
};

/// A panel that shows one item.
class RecordingHost : public QObject {
  Q_OBJECT

 public:
  RecordingHost(QDBusConnection bus, QString item);

  /// The names of the item's signals, in their order.
  QStringList signalNames;

  /// Absent when the item does not answer with one value.
  [[nodiscard]] std::optional<QVariant> property(const char* name);
  [[nodiscard]] std::optional<QVariantList> call(const QString& path, const QString& interface,
                                                 const QString& method,
                                                 const QVariantList& arguments);
  [[nodiscard]] std::optional<QVariantList> menu(const char* method, const QVariantList& arguments);

 private Q_SLOTS:
  void onSignal(const QDBusMessage& message) { signalNames << message.member(); }

 private:
  QDBusConnection bus_;
  QString item_;
};

}  // namespace tollbeam::test

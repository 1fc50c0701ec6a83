// A watcher that writes down who registers, and the panel's side of the conversation with an item.
// Both live in the test's own process on connections of their own, so nothing here may block.
#pragma once

#include <QDBusConnection>
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

/// What a panel hears from one item.
class RecordingHost : public QObject {
  Q_OBJECT

 public:
  RecordingHost(QDBusConnection bus, QString item);

  QStringList heard;

  /// Absent when the item does not answer with one value.
  [[nodiscard]] std::optional<QVariant> property(const char* name);
  [[nodiscard]] std::optional<QVariantList> call(const QString& path, const QString& interface,
                                                 const QString& method,
                                                 const QVariantList& arguments);
  [[nodiscard]] std::optional<QVariantList> menu(const char* method, const QVariantList& arguments);

 private Q_SLOTS:
  void onNewIcon() { heard << QStringLiteral("NewIcon"); }
  void onNewTitle() { heard << QStringLiteral("NewTitle"); }
  void onNewToolTip() { heard << QStringLiteral("NewToolTip"); }
  void onNewStatus() { heard << QStringLiteral("NewStatus"); }
  void onNewLabel() { heard << QStringLiteral("NewLabel"); }
  void onLayoutUpdated() { heard << QStringLiteral("LayoutUpdated"); }

 private:
  QDBusConnection bus_;
  QString item_;
};

}  // namespace tollbeam::test

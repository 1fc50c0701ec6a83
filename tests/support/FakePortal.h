// A settings portal. The real one reads its settings from stores that a test cannot make send wrong
// kinds, answer late or change while they answer.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QMap>
#include <QString>
#include <QVariantMap>

namespace tollbeam::test {

class FakePortal final : public QDBusVirtualObject {
 public:
  using Settings = QMap<QString, QVariantMap>;

  /// Owns the portal's name until destroyed.
  explicit FakePortal(const QDBusConnection& bus, Settings settings = {});
  FakePortal(const FakePortal&) = delete;
  FakePortal& operator=(const FakePortal&) = delete;
  ~FakePortal() override;

  Settings settings;
  int asked = 0;
  /// The namespaces of the last call.
  QStringList askedFor;
  /// Leaves calls open until `answer`.
  bool silent = false;
  bool refusing = false;

  /// Answers the open calls with `settings` as they were at the time of the call.
  void answer();

  /// Stores the value and sends SettingChanged.
  void change(const QString& group, const QString& key, const QVariant& value);

  [[nodiscard]] QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  QDBusConnection bus_;
  QList<QPair<QDBusMessage, Settings>> open_;
};

/// Sends the portal's signal on this connection, which may not be the portal's.
void sendSettingChanged(const QDBusConnection& bus, const QString& group, const QString& key,
                        const QVariant& value);

/// A structure of three numbers, as accent colours are.
[[nodiscard]] QVariant threeNumbers(double a, double b, double c);

}  // namespace tollbeam::test

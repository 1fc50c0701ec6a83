// The settings portal of a desktop that a test makes up. The real one takes its settings from
// stores that cannot be made to send wrong kinds, to answer late or to change while they answer.
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
  /// The namespaces of the last question.
  QStringList askedFor;
  /// Keeps questions unanswered until `answer`.
  bool silent = false;
  bool refusing = false;

  /// Answers what is open with `settings` as they were when asked.
  void answer();

  /// Stores the value and tells.
  void change(const QString& group, const QString& key, const QVariant& value);

  [[nodiscard]] QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  QDBusConnection bus_;
  QList<QPair<QDBusMessage, Settings>> open_;
};

/// Tells a change as the portal does, under whatever name the connection has.
void tellSettingChanged(const QDBusConnection& bus, const QString& group, const QString& key,
                        const QVariant& value);

/// A structure of three numbers, as accent colours are.
[[nodiscard]] QVariant threeNumbers(double a, double b, double c);

}  // namespace tollbeam::test

// A service object that has nothing but properties. The real daemons cannot be made to send a
// glitch, to answer late or to send what nobody reads exactly when a test needs it.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <QVariantMap>

namespace tollbeam::test {

class FakeProperties final : public QDBusVirtualObject {
 public:
  /// On the bus until destroyed, under the connection's own name; a well-known one is the test's
  /// to take.
  FakeProperties(const QDBusConnection& bus, QString path, QString interface);
  FakeProperties(const FakeProperties&) = delete;
  FakeProperties& operator=(const FakeProperties&) = delete;
  ~FakeProperties() override;

  QVariantMap properties;
  /// How often all properties were asked for.
  int asked = 0;
  /// Keeps questions unanswered until `answer`.
  bool silent = false;

  void answer();

  /// Stores the values and tells.
  void change(const QVariantMap& values);

  /// Tells that the property changed, but not to what.
  void invalidate(const QString& property);

  [[nodiscard]] QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  void tell(const QVariantMap& changed, const QStringList& invalidated);

  QDBusConnection bus_;
  const QString path_;
  const QString interface_;
  QList<QDBusMessage> unanswered_;
};

/// Waits until the bus has passed on what the connection sent so far: what others send from then on
/// arrives later.
[[nodiscard]] bool passedOn(const QDBusConnection& connection);

}  // namespace tollbeam::test

// A service object that has only properties. The real daemons cannot be made to send a glitch or an
// unused property, or to answer late, exactly when a test needs it.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <QVariantMap>

namespace tollbeam::test {

class FakeProperties final : public QDBusVirtualObject {
 public:
  /// On the bus until destroyed, under the connection's unique name; the test takes a well-known
  /// one.
  FakeProperties(const QDBusConnection& bus, QString path, QString interface);
  FakeProperties(const FakeProperties&) = delete;
  FakeProperties& operator=(const FakeProperties&) = delete;
  ~FakeProperties() override;

  QVariantMap properties;
  /// How often all properties were queried.
  int asked = 0;
  /// Leaves queries unanswered until `answer`.
  bool silent = false;

  void answer();

  /// Stores the values and announces them.
  void change(const QVariantMap& values);

  /// Announces a change of the property without its new value.
  void invalidate(const QString& property);

  [[nodiscard]] QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  void announce(const QVariantMap& changed, const QStringList& invalidated);

  QDBusConnection bus_;
  const QString path_;
  const QString interface_;
  QList<QDBusMessage> unanswered_;
};

/// Waits until the bus has passed on all that the connection has sent, and the connection has
/// received all that was sent to it before.
[[nodiscard]] bool passedOn(const QDBusConnection& connection);

}  // namespace tollbeam::test

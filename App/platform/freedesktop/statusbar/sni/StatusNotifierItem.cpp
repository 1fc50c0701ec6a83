#include "platform/freedesktop/statusbar/sni/StatusNotifierItem.h"

#include <QDBusMessage>
#include <QGuiApplication>
#include <utility>

namespace tollbeam {
namespace {

QString menuPath() { return QStringLiteral("/StatusNotifierItem/Menu"); }

}  // namespace

StatusNotifierItem::StatusNotifierItem(Bus& bus, Handlers handlers, QObject& menu)
    : bus_(bus),
      connectionName_(QStringLiteral("tollbeam-status-item-%1").arg(quintptr(this), 0, 16)),
      handlers_(std::move(handlers)),
      menu_(menu) {
  registerSniTypes();
}

StatusNotifierItem::~StatusNotifierItem() { hide(); }

bool StatusNotifierItem::show() {
  auto bus = shown_ ? QDBusConnection(connectionName_) : bus_.open(connectionName_);
  if (!bus.isConnected()) {
    hide();
    return false;
  }
  if (!shown_) {
    constexpr auto kEverything = QDBusConnection::ExportAllSlots |
                                 QDBusConnection::ExportAllSignals |
                                 QDBusConnection::ExportAllProperties;
    bus.registerObject(QStringLiteral("/StatusNotifierItem"), this, kEverything);
    bus.registerObject(menuPath(), &menu_, kEverything);
    shown_ = true;
  }
  auto registration = QDBusMessage::createMethodCall(
      QStringLiteral("org.kde.StatusNotifierWatcher"), QStringLiteral("/StatusNotifierWatcher"),
      QStringLiteral("org.kde.StatusNotifierWatcher"),
      QStringLiteral("RegisterStatusNotifierItem"));
  registration << bus.baseService();
  // A watcher that has just gone is not started for this; when it returns, the item registers.
  registration.setAutoStartService(false);
  return bus.send(registration);
}

void StatusNotifierItem::hide() {
  shown_ = false;
  QDBusConnection::disconnectFromBus(connectionName_);
}

void StatusNotifierItem::setFace(StatusFace face) {
  const StatusFace before = std::exchange(face_, std::move(face));
  if (!shown_) return;
  if (before.icon != face_.icon || before.iconName != face_.iconName ||
      before.iconThemePath != face_.iconThemePath ||
      before.accessibleDescription != face_.accessibleDescription)
    Q_EMIT NewIcon();
  if (before.toolTip != face_.toolTip) Q_EMIT NewToolTip();
  if (before.label != face_.label) Q_EMIT XAyatanaNewLabel(face_.label, face_.label);
}

QDBusObjectPath StatusNotifierItem::menu() const { return QDBusObjectPath(menuPath()); }

void StatusNotifierItem::Activate(int x, int y) {
  QMetaObject::invokeMethod(
      this,
      [this, x, y] {
        handlers_.activate({x, y});
      },
      Qt::QueuedConnection);
}

void StatusNotifierItem::ContextMenu(int x, int y) {
  QMetaObject::invokeMethod(
      this,
      [this, x, y] {
        handlers_.contextMenu({x, y});
      },
      Qt::QueuedConnection);
}

void StatusNotifierItem::Scroll(int /*delta*/, const QString& /*orientation*/) {}

void StatusNotifierItem::ProvideXdgActivationToken(const QString& token) {
  // Qt reads this variable for the right to raise a window on Wayland. Elsewhere nothing would
  // remove it again.
  if (!token.isEmpty() && QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
    qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
}

}  // namespace tollbeam

#include "platform/freedesktop/statusbar/sni/StatusNotifierItem.h"

#include <QDBusMessage>
#include <QGuiApplication>
#include <utility>

namespace tollbeam {
namespace {

QString itemPath() { return QStringLiteral("/StatusNotifierItem"); }
QString menuPath() { return QStringLiteral("/StatusNotifierItem/Menu"); }

}  // namespace

StatusNotifierItem::StatusNotifierItem(Bus& bus, Handlers handlers, QObject& menu, QObject* parent)
    : QObject(parent),
      bus_(bus),
      connectionName_(QStringLiteral("tollbeam-status-item-%1").arg(quintptr(this), 0, 16)),
      handlers_(std::move(handlers)),
      menu_(menu) {
  registerSniTypes();
  new StatusNotifierItemAdaptor(this);
}

StatusNotifierItem::~StatusNotifierItem() { hide(); }

bool StatusNotifierItem::show() {
  auto bus = shown_ ? QDBusConnection(connectionName_) : bus_.open(connectionName_);
  if (!bus.isConnected()) {
    hide();
    return false;
  }
  if (!shown_) {
    bus.registerObject(itemPath(), this, QDBusConnection::ExportAdaptors);
    bus.registerObject(menuPath(), &menu_, QDBusConnection::ExportAdaptors);
    shown_ = true;
  }
  auto registration = QDBusMessage::createMethodCall(
      QStringLiteral("org.kde.StatusNotifierWatcher"), QStringLiteral("/StatusNotifierWatcher"),
      QStringLiteral("org.kde.StatusNotifierWatcher"),
      QStringLiteral("RegisterStatusNotifierItem"));
  registration << bus.baseService();
  // A watcher that has just gone must not be started for our sake; it tells when it is back.
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
    Q_EMIT iconChanged();
  if (before.toolTip != face_.toolTip) Q_EMIT toolTipChanged();
  if (before.label != face_.label) Q_EMIT labelChanged();
}

// Both after the reply to the host: a menu runs for as long as it is open.
void StatusNotifierItem::activate(int x, int y) {
  QMetaObject::invokeMethod(
      this, [this, x, y] { handlers_.activate(x, y); }, Qt::QueuedConnection);
}

void StatusNotifierItem::contextMenu(int x, int y) {
  QMetaObject::invokeMethod(
      this, [this, x, y] { handlers_.contextMenu(x, y); }, Qt::QueuedConnection);
}

StatusNotifierItemAdaptor::StatusNotifierItemAdaptor(StatusNotifierItem* item)
    : QDBusAbstractAdaptor(item), item_(*item) {
  connect(item, &StatusNotifierItem::iconChanged, this, &StatusNotifierItemAdaptor::NewIcon);
  connect(item, &StatusNotifierItem::toolTipChanged, this, &StatusNotifierItemAdaptor::NewToolTip);
  connect(item, &StatusNotifierItem::labelChanged, this,
          [this] { Q_EMIT XAyatanaNewLabel(label(), labelGuide()); });
}

QDBusObjectPath StatusNotifierItemAdaptor::menu() const { return QDBusObjectPath(menuPath()); }

void StatusNotifierItemAdaptor::Scroll(int /*delta*/, const QString& /*orientation*/) {}

void StatusNotifierItemAdaptor::ProvideXdgActivationToken(const QString& token) {
  // Where Qt looks for the right to raise a window on Wayland; elsewhere nobody would take it out.
  if (!token.isEmpty() && QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
    qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
}

}  // namespace tollbeam

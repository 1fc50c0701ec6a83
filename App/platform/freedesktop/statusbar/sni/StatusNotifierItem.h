// org.kde.StatusNotifierItem: the item on the bus. It has a connection of its own, because closing
// it is the only way to remove an item that every host understands, and registers that connection's
// unique name, which GNOME finds more reliably than a well-known one.
#pragma once

#include <QDBusObjectPath>
#include <QObject>
#include <QPoint>
#include <QString>
#include <functional>

#include "platform/freedesktop/bus/Bus.h"
#include "platform/freedesktop/statusbar/sni/StatusFace.h"

namespace tollbeam {

class StatusNotifierItem : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
  Q_PROPERTY(QString Category READ category CONSTANT)
  Q_PROPERTY(QString Id READ id CONSTANT)
  Q_PROPERTY(QString Title READ title CONSTANT)
  Q_PROPERTY(QString Status READ status CONSTANT)
  Q_PROPERTY(int WindowId READ windowId CONSTANT)
  Q_PROPERTY(QString IconThemePath READ iconThemePath)
  Q_PROPERTY(QDBusObjectPath Menu READ menu CONSTANT)
  Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)
  Q_PROPERTY(QString IconName READ iconName)
  Q_PROPERTY(tollbeam::SniPixmaps IconPixmap READ iconPixmap)
  Q_PROPERTY(QString IconAccessibleDesc READ iconAccessibleDesc)
  Q_PROPERTY(QString OverlayIconName READ none CONSTANT)
  Q_PROPERTY(tollbeam::SniPixmaps OverlayIconPixmap READ noPixmap CONSTANT)
  Q_PROPERTY(QString AttentionIconName READ none CONSTANT)
  Q_PROPERTY(tollbeam::SniPixmaps AttentionIconPixmap READ noPixmap CONSTANT)
  Q_PROPERTY(QString AttentionMovieName READ none CONSTANT)
  Q_PROPERTY(tollbeam::SniToolTip ToolTip READ toolTip)
  Q_PROPERTY(QString XAyatanaLabel READ label)
  /// The widest label, so that a panel may reserve its room.
  Q_PROPERTY(QString XAyatanaLabelGuide READ label)

 public:
  /// Called from the event loop, after the reply to the host: a menu runs for as long as it is
  /// open. With the position of the click as far as the host gives it, in pixels of the screen.
  struct Handlers {
    std::function<void(QPoint)> activate;
    /// For the hosts that leave the menu to the item.
    std::function<void(QPoint)> contextMenu;
  };

  /// `bus` and `menu`, which is exported on the item's connection, outlive this object.
  StatusNotifierItem(Bus& bus, Handlers handlers, QObject& menu);
  ~StatusNotifierItem() override;

  /// Asks the watcher to show the item; call it again when a watcher or a panel has come. False
  /// without a bus.
  bool show();
  void hide();
  [[nodiscard]] bool shown() const { return shown_; }

  /// Announces what has changed, and nothing else.
  void setFace(StatusFace face);

  [[nodiscard]] QString category() const { return QStringLiteral("Hardware"); }
  [[nodiscard]] QString id() const { return QStringLiteral("org.tollbeam.Tollbeam"); }
  [[nodiscard]] QString title() const { return QStringLiteral("Tollbeam"); }
  [[nodiscard]] QString status() const { return QStringLiteral("Active"); }
  [[nodiscard]] int windowId() const { return 0; }
  [[nodiscard]] QString iconThemePath() const { return face_.iconThemePath; }
  [[nodiscard]] QDBusObjectPath menu() const;
  [[nodiscard]] bool itemIsMenu() const { return false; }
  [[nodiscard]] QString iconName() const { return face_.iconName; }
  [[nodiscard]] SniPixmaps iconPixmap() const { return face_.icon; }
  [[nodiscard]] QString iconAccessibleDesc() const { return face_.accessibleDescription; }
  [[nodiscard]] SniToolTip toolTip() const { return face_.toolTip; }
  [[nodiscard]] QString label() const { return face_.label; }
  [[nodiscard]] QString none() const { return {}; }
  [[nodiscard]] SniPixmaps noPixmap() const { return {}; }

 public Q_SLOTS:
  void Activate(int x, int y);
  // A middle click: on GNOME the only single click that does not open the menu.
  void SecondaryActivate(int x, int y) { Activate(x, y); }
  void ContextMenu(int x, int y);
  void Scroll(int delta, const QString& orientation);
  void ProvideXdgActivationToken(const QString& token);

 Q_SIGNALS:
  void NewIcon();
  void NewToolTip();
  void XAyatanaNewLabel(const QString& label, const QString& guide);

 private:
  Bus& bus_;
  const QString connectionName_;
  const Handlers handlers_;
  QObject& menu_;
  StatusFace face_;
  bool shown_ = false;
};

}  // namespace tollbeam

// org.kde.StatusNotifierItem: the item on the bus. It has a connection of its own, because closing
// it is the only way to take an item away that every host understands, and registers that
// connection's unique name, which GNOME finds more reliably than a well-known one.
#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>
#include <QObject>
#include <QString>
#include <functional>

#include "platform/StatusBar.h"
#include "platform/freedesktop/bus/Bus.h"
#include "platform/freedesktop/statusbar/sni/StatusFace.h"

namespace tollbeam {

class StatusNotifierItem : public QObject {
  Q_OBJECT

 public:
  struct Handlers {
    std::function<void(int x, int y)> activate;
    /// For the hosts that leave the menu to the item.
    std::function<void(int x, int y)> contextMenu;
  };

  /// `bus` and `menu`, which goes on the item's connection with it, outlive this object.
  StatusNotifierItem(Bus& bus, Handlers handlers, QObject& menu, QObject* parent = nullptr);
  ~StatusNotifierItem() override;

  /// Asks the watcher to show it; again after a watcher or a panel has come. False without a bus.
  bool show();
  void hide();
  [[nodiscard]] bool shown() const { return shown_; }

  /// Tells the host what changed, and nothing else.
  void setFace(StatusFace face);
  [[nodiscard]] const StatusFace& face() const { return face_; }

  void activate(int x, int y);
  void contextMenu(int x, int y);

 Q_SIGNALS:
  void iconChanged();
  void toolTipChanged();
  void labelChanged();

 private:
  Bus& bus_;
  QString connectionName_;
  Handlers handlers_;
  QObject& menu_;
  StatusFace face_;
  bool shown_ = false;
};

class StatusNotifierItemAdaptor : public QDBusAbstractAdaptor {
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
  Q_PROPERTY(QString XAyatanaLabelGuide READ labelGuide)

 public:
  explicit StatusNotifierItemAdaptor(StatusNotifierItem* item);

  [[nodiscard]] QString category() const { return QStringLiteral("Hardware"); }
  [[nodiscard]] QString id() const { return QStringLiteral("org.tollbeam.Tollbeam"); }
  [[nodiscard]] QString title() const { return QStringLiteral("Tollbeam"); }
  [[nodiscard]] QString status() const { return QStringLiteral("Active"); }
  [[nodiscard]] int windowId() const { return 0; }
  [[nodiscard]] QString iconThemePath() const { return item_.face().iconThemePath; }
  [[nodiscard]] QDBusObjectPath menu() const;
  [[nodiscard]] bool itemIsMenu() const { return false; }
  [[nodiscard]] QString iconName() const { return item_.face().iconName; }
  [[nodiscard]] SniPixmaps iconPixmap() const { return item_.face().icon; }
  [[nodiscard]] QString iconAccessibleDesc() const { return item_.face().accessibleDescription; }
  [[nodiscard]] SniToolTip toolTip() const { return item_.face().toolTip; }
  [[nodiscard]] QString label() const { return item_.face().label; }
  /// The widest label, so that a panel may keep the room.
  [[nodiscard]] QString labelGuide() const { return item_.face().label; }
  [[nodiscard]] QString none() const { return {}; }
  [[nodiscard]] SniPixmaps noPixmap() const { return {}; }

 public Q_SLOTS:
  void Activate(int x, int y) { item_.activate(x, y); }
  // A middle click; on GNOME the only single click that does not open the menu.
  void SecondaryActivate(int x, int y) { item_.activate(x, y); }
  void ContextMenu(int x, int y) { item_.contextMenu(x, y); }
  void Scroll(int delta, const QString& orientation);
  void ProvideXdgActivationToken(const QString& token);

 Q_SIGNALS:
  void NewTitle();
  void NewIcon();
  void NewToolTip();
  void NewStatus(const QString& status);
  void XAyatanaNewLabel(const QString& label, const QString& guide);

 private:
  StatusNotifierItem& item_;
};

}  // namespace tollbeam

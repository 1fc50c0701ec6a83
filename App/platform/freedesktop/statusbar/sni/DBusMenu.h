// com.canonical.dbusmenu: the item's menu for the panels that draw it themselves. One level deep.
#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusVariant>
#include <QObject>
#include <functional>
#include <vector>

#include "platform/freedesktop/statusbar/sni/SniTypes.h"
#include "platform/freedesktop/statusbar/sni/StatusMenu.h"

namespace tollbeam {

/// What goes on the bus: the entries and who hears of a choice.
class DBusMenu : public QObject {
  Q_OBJECT

 public:
  explicit DBusMenu(std::function<void(StatusMenuEntry::Kind)> chosen, QObject* parent = nullptr);

  /// Tells the panel only if they differ.
  void setEntries(std::vector<StatusMenuEntry> entries);

 private:
  friend class DBusMenuAdaptor;

  [[nodiscard]] const StatusMenuEntry* find(int id) const;
  void choose(int id);

  std::function<void(StatusMenuEntry::Kind)> chosen_;
  std::vector<StatusMenuEntry> entries_;
  uint revision_ = 1;

 Q_SIGNALS:
  void layoutChanged(uint revision);
};

class DBusMenuAdaptor : public QDBusAbstractAdaptor {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
  Q_PROPERTY(uint Version READ version CONSTANT)
  Q_PROPERTY(QString Status READ status CONSTANT)
  Q_PROPERTY(QString TextDirection READ textDirection)
  Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

 public:
  explicit DBusMenuAdaptor(DBusMenu* menu);

  [[nodiscard]] uint version() const { return 3; }
  [[nodiscard]] QString status() const { return QStringLiteral("normal"); }
  [[nodiscard]] QString textDirection() const;
  [[nodiscard]] QStringList iconThemePath() const { return {}; }

  // QtDBus turns references into further results of the call.
 public Q_SLOTS:
  uint GetLayout(int parentId, int depth, const QStringList& names, tollbeam::DBusMenuNode& layout);
  tollbeam::DBusMenuPropertiesList GetGroupProperties(const QList<int>& ids,
                                                      const QStringList& names);
  QDBusVariant GetProperty(int id, const QString& name);
  void Event(int id, const QString& event, const QDBusVariant& data, uint timestamp);
  QList<int> EventGroup(const tollbeam::DBusMenuEvents& events);
  bool AboutToShow(int id);
  QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& unknown);

 Q_SIGNALS:
  void ItemsPropertiesUpdated(const tollbeam::DBusMenuPropertiesList& changed,
                              const tollbeam::DBusMenuPropertiesList& removed);
  void LayoutUpdated(uint revision, int parent);
  void ItemActivationRequested(int id, uint timestamp);

 private:
  DBusMenu& menu_;
};

}  // namespace tollbeam

// The item's menu, which panels draw themselves (com.canonical.dbusmenu) or leave to the item. One
// level deep.
#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QStringList>
#include <functional>
#include <vector>

#include "platform/freedesktop/statusbar/sni/SniTypes.h"

namespace tollbeam {

struct StatusMenuEntry {
  enum class Kind { Open, Status, Separator, Settings, Quit };

  /// Never 0, which is the menu itself. An entry keeps its id for ever.
  int id = 0;
  Kind kind = Kind::Status;
  QString label;

  [[nodiscard]] bool enabled() const { return kind != Kind::Status; }
  friend bool operator==(const StatusMenuEntry&, const StatusMenuEntry&) = default;
};

/// "Open" comes first: where a click always opens the menu, it is the way to the popover.
[[nodiscard]] std::vector<StatusMenuEntry> statusMenu(const QStringList& statusLines);

/// Export it with all its slots, signals and properties.
class DBusMenu : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
  Q_PROPERTY(uint Version READ version CONSTANT)
  Q_PROPERTY(QString Status READ status CONSTANT)
  Q_PROPERTY(QString TextDirection READ textDirection)
  Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

 public:
  /// `chosen` is called from the event loop, after the reply to the panel: it may end the program.
  explicit DBusMenu(std::function<void(StatusMenuEntry::Kind)> chosen);

  /// Announces a new layout only if the entries differ.
  void setEntries(std::vector<StatusMenuEntry> entries);
  [[nodiscard]] const std::vector<StatusMenuEntry>& entries() const { return entries_; }

  [[nodiscard]] uint version() const { return 3; }
  [[nodiscard]] QString status() const { return QStringLiteral("normal"); }
  [[nodiscard]] QString textDirection() const;
  [[nodiscard]] QStringList iconThemePath() const { return {}; }

  // QtDBus returns reference parameters as further results of the call.
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
  void LayoutUpdated(uint revision, int parent);

 private:
  [[nodiscard]] const StatusMenuEntry* find(int id) const;

  std::function<void(StatusMenuEntry::Kind)> chosen_;
  std::vector<StatusMenuEntry> entries_;
  uint revision_ = 1;
};

}  // namespace tollbeam

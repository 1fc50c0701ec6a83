#include "platform/freedesktop/statusbar/sni/DBusMenu.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <algorithm>

namespace tollbeam {
namespace {

constexpr int kRoot = 0;
constexpr int kFirstStatusLine = 100;

QString translated(const char* text) {
  return QCoreApplication::translate("tollbeam::StatusMenu", text);
}

// Only what differs from the protocol's defaults, as panels expect. With `names`, only those.
QVariantMap propertiesOf(const StatusMenuEntry* entry, const QStringList& names = {}) {
  QVariantMap properties;
  if (entry == nullptr) {
    properties.insert(QStringLiteral("children-display"), QStringLiteral("submenu"));
  } else if (entry->kind == StatusMenuEntry::Kind::Separator) {
    properties.insert(QStringLiteral("type"), QStringLiteral("separator"));
  } else {
    // A single underscore would mark a mnemonic.
    properties.insert(QStringLiteral("label"),
                      QString(entry->label).replace(QLatin1Char('_'), QLatin1String("__")));
    if (!entry->enabled()) properties.insert(QStringLiteral("enabled"), false);
  }
  if (!names.isEmpty())
    properties.removeIf([&](QVariantMap::iterator at) { return !names.contains(at.key()); });
  return properties;
}

}  // namespace

std::vector<StatusMenuEntry> statusMenu(const QStringList& statusLines) {
  using Kind = StatusMenuEntry::Kind;
  std::vector<StatusMenuEntry> entries;
  entries.push_back(
      {1, Kind::Open, translated(QT_TRANSLATE_NOOP("tollbeam::StatusMenu", "Open Tollbeam"))});
  entries.push_back({2, Kind::Separator, {}});
  int id = kFirstStatusLine;
  for (const auto& line : statusLines) entries.push_back({id++, Kind::Status, line});
  if (!statusLines.isEmpty()) entries.push_back({3, Kind::Separator, {}});
  entries.push_back(
      {4, Kind::Settings, translated(QT_TRANSLATE_NOOP("tollbeam::StatusMenu", "Settings"))});
  entries.push_back({5, Kind::Quit, translated(QT_TRANSLATE_NOOP("tollbeam::StatusMenu", "Quit"))});
  return entries;
}

DBusMenu::DBusMenu(std::function<void(StatusMenuEntry::Kind)> chosen) : chosen_(std::move(chosen)) {
  registerSniTypes();
}

void DBusMenu::setEntries(std::vector<StatusMenuEntry> entries) {
  if (entries == entries_) return;
  entries_ = std::move(entries);
  Q_EMIT LayoutUpdated(++revision_, kRoot);
}

const StatusMenuEntry* DBusMenu::find(int id) const {
  const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                  [id](const StatusMenuEntry& e) { return e.id == id; });
  return entry == entries_.end() ? nullptr : &*entry;
}

QString DBusMenu::textDirection() const {
  return QGuiApplication::isRightToLeft() ? QStringLiteral("rtl") : QStringLiteral("ltr");
}

uint DBusMenu::GetLayout(int parentId, int depth, const QStringList& names, DBusMenuNode& layout) {
  layout.id = parentId;
  const auto* parent = find(parentId);
  if (parent != nullptr || parentId == kRoot) layout.properties = propertiesOf(parent, names);
  if (parentId != kRoot || depth == 0) return revision_;
  for (const auto& entry : entries_)
    layout.children << QDBusVariant(
        QVariant::fromValue(DBusMenuNode{entry.id, propertiesOf(&entry, names), {}}));
  return revision_;
}

DBusMenuPropertiesList DBusMenu::GetGroupProperties(const QList<int>& ids,
                                                    const QStringList& names) {
  DBusMenuPropertiesList list;
  const auto asked = [&](int id) { return ids.isEmpty() || ids.contains(id); };
  if (asked(kRoot)) list << DBusMenuProperties{kRoot, propertiesOf(nullptr, names)};
  for (const auto& entry : entries_) {
    if (asked(entry.id)) list << DBusMenuProperties{entry.id, propertiesOf(&entry, names)};
  }
  return list;
}

QDBusVariant DBusMenu::GetProperty(int id, const QString& name) {
  // An invalid variant cannot be sent; an unknown property reads as empty.
  return QDBusVariant(propertiesOf(find(id)).value(name, QString()));
}

void DBusMenu::Event(int id, const QString& event, const QDBusVariant& /*data*/,
                     uint /*timestamp*/) {
  const auto* entry = find(id);
  if (event != QLatin1String("clicked") || entry == nullptr || !entry->enabled()) return;
  QMetaObject::invokeMethod(
      this, [this, kind = entry->kind] { chosen_(kind); }, Qt::QueuedConnection);
}

QList<int> DBusMenu::EventGroup(const DBusMenuEvents& events) {
  QList<int> unknown;
  for (const auto& event : events) {
    if (event.id != kRoot && find(event.id) == nullptr) unknown << event.id;
    Event(event.id, event.name, event.data, event.timestamp);
  }
  return unknown;
}

bool DBusMenu::AboutToShow(int /*id*/) { return false; }

QList<int> DBusMenu::AboutToShowGroup(const QList<int>& ids, QList<int>& unknown) {
  for (const int id : ids) {
    if (id != kRoot && find(id) == nullptr) unknown << id;
  }
  return {};
}

}  // namespace tollbeam

#include "platform/freedesktop/statusbar/sni/DBusMenu.h"

#include <QGuiApplication>
#include <algorithm>

namespace tollbeam {
namespace {

constexpr int kRoot = 0;

QString withoutMnemonics(QString label) {
  return label.replace(QLatin1Char('_'), QLatin1String("__"));
}

// Only what differs from the protocol's defaults, as its readers expect.
QVariantMap allProperties(const StatusMenuEntry& entry) {
  if (entry.kind == StatusMenuEntry::Kind::Separator)
    return {{QStringLiteral("type"), QStringLiteral("separator")}};
  QVariantMap properties{{QStringLiteral("label"), withoutMnemonics(entry.label)}};
  if (!entry.enabled()) properties.insert(QStringLiteral("enabled"), false);
  return properties;
}

QVariantMap rootProperties() {
  return {{QStringLiteral("children-display"), QStringLiteral("submenu")}};
}

QVariantMap only(QVariantMap properties, const QStringList& names) {
  if (names.isEmpty()) return properties;
  properties.removeIf(
      [&](QVariantMap::iterator property) { return !names.contains(property.key()); });
  return properties;
}

}  // namespace

DBusMenu::DBusMenu(std::function<void(StatusMenuEntry::Kind)> chosen, QObject* parent)
    : QObject(parent), chosen_(std::move(chosen)) {
  registerSniTypes();
  new DBusMenuAdaptor(this);
}

void DBusMenu::setEntries(std::vector<StatusMenuEntry> entries) {
  if (entries == entries_) return;
  entries_ = std::move(entries);
  Q_EMIT layoutChanged(++revision_);
}

const StatusMenuEntry* DBusMenu::find(int id) const {
  const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                  [id](const StatusMenuEntry& e) { return e.id == id; });
  return entry == entries_.end() ? nullptr : &*entry;
}

void DBusMenu::choose(int id) {
  const auto* entry = find(id);
  if (entry == nullptr || !entry->enabled()) return;
  // After the reply: what follows may take a while or end the program.
  QMetaObject::invokeMethod(
      this, [this, kind = entry->kind] { chosen_(kind); }, Qt::QueuedConnection);
}

DBusMenuAdaptor::DBusMenuAdaptor(DBusMenu* menu) : QDBusAbstractAdaptor(menu), menu_(*menu) {
  connect(menu, &DBusMenu::layoutChanged, this,
          [this](uint revision) { Q_EMIT LayoutUpdated(revision, kRoot); });
}

QString DBusMenuAdaptor::textDirection() const {
  return QGuiApplication::isRightToLeft() ? QStringLiteral("rtl") : QStringLiteral("ltr");
}

uint DBusMenuAdaptor::GetLayout(int parentId, int depth, const QStringList& names,
                                DBusMenuNode& layout) {
  layout.id = parentId;
  if (const auto* entry = menu_.find(parentId)) {
    layout.properties = only(allProperties(*entry), names);
  } else if (parentId == kRoot) {
    layout.properties = only(rootProperties(), names);
    if (depth != 0) {
      for (const auto& child : menu_.entries_)
        layout.children << DBusMenuNode{child.id, only(allProperties(child), names), {}};
    }
  }
  return menu_.revision_;
}

DBusMenuPropertiesList DBusMenuAdaptor::GetGroupProperties(const QList<int>& ids,
                                                           const QStringList& names) {
  DBusMenuPropertiesList list;
  const auto wanted = [&](int id) { return ids.isEmpty() || ids.contains(id); };
  if (wanted(kRoot)) list << DBusMenuProperties{kRoot, only(rootProperties(), names)};
  for (const auto& entry : menu_.entries_) {
    if (wanted(entry.id)) list << DBusMenuProperties{entry.id, only(allProperties(entry), names)};
  }
  return list;
}

QDBusVariant DBusMenuAdaptor::GetProperty(int id, const QString& name) {
  const auto* entry = menu_.find(id);
  const auto properties = entry != nullptr ? allProperties(*entry) : rootProperties();
  // An invalid variant cannot be sent; an unknown property reads as empty.
  return QDBusVariant(properties.value(name, QString()));
}

void DBusMenuAdaptor::Event(int id, const QString& event, const QDBusVariant& /*data*/,
                            uint /*timestamp*/) {
  if (event == QLatin1String("clicked")) menu_.choose(id);
}

QList<int> DBusMenuAdaptor::EventGroup(const DBusMenuEvents& events) {
  QList<int> unknown;
  for (const auto& event : events) {
    if (event.id != kRoot && menu_.find(event.id) == nullptr) unknown << event.id;
    if (event.name == QLatin1String("clicked")) menu_.choose(event.id);
  }
  return unknown;
}

bool DBusMenuAdaptor::AboutToShow(int /*id*/) { return false; }

QList<int> DBusMenuAdaptor::AboutToShowGroup(const QList<int>& ids, QList<int>& unknown) {
  for (const int id : ids) {
    if (id != kRoot && menu_.find(id) == nullptr) unknown << id;
  }
  return {};
}

}  // namespace tollbeam

#include "platform/freedesktop/statusbar/sni/StatusMenu.h"

#include <QCoreApplication>

namespace tollbeam {
namespace {

QString translated(const char* text) {
  return QCoreApplication::translate("tollbeam::StatusMenu", text);
}

constexpr int kFirstStatusLine = 100;

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

}  // namespace tollbeam

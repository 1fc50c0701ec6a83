// The entries of the item's menu, the same whether the panel draws it (dbusmenu) or we do.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace tollbeam {

struct StatusMenuEntry {
  enum class Kind { Open, Status, Separator, Settings, Quit };

  /// Never 0, which is the menu itself; the same for the same entry for ever.
  int id = 0;
  Kind kind = Kind::Status;
  QString label;

  [[nodiscard]] bool enabled() const { return kind != Kind::Status; }
  friend bool operator==(const StatusMenuEntry&, const StatusMenuEntry&) = default;
};

/// "Open" first: where a click only ever opens the menu, it is the way to the popover.
[[nodiscard]] std::vector<StatusMenuEntry> statusMenu(const QStringList& statusLines);

}  // namespace tollbeam

// Return and Enter press the button that has the focus. Qt leaves that to dialogs and to the
// desktop's theme, and presses a push button repeatedly while the key is held.
#pragma once

#include <QAbstractButton>
#include <QKeyEvent>

namespace tollbeam {

/// Whether the key was one of them; a held one presses once. The button may be gone afterwards.
[[nodiscard]] inline bool pressByReturn(QAbstractButton& button, const QKeyEvent& event) {
  if (event.key() != Qt::Key_Return && event.key() != Qt::Key_Enter) return false;
  if (!event.isAutoRepeat()) button.click();
  return true;
}

}  // namespace tollbeam

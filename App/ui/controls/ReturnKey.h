// Return and Enter press the button that has the keyboard. Qt leaves them to dialogs and to what
// the desktop's theme says.
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

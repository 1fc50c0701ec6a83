// Helpers for tests of windows: they find a control by its name for screen readers and operate it
// as a user does.
#pragma once

#include <QAccessible>
#include <QApplication>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>
#include <vector>

#include "support/WaitFor.h"

namespace tollbeam::test {

/// The control called `name`, of those whose description is `description`; null when there is none.
template <typename Control>
Control* control(const QWidget& window, const char* name, const char* description = "") {
  for (auto* each : window.findChildren<Control*>()) {
    if (each->accessibleName() == QString::fromUtf8(name) &&
        each->accessibleDescription() == QString::fromUtf8(description)) {
      return each;
    }
  }
  return nullptr;
}

/// Shows the window and waits until it has the keyboard.
inline void showActive(QWidget& window) {
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window, kPatience));
}

/// Turns the wheel over the middle of the widget; one notch is 120, up is positive.
inline void turnWheel(QWidget& widget, int delta) {
  const QPointF at = widget.rect().center();
  QWheelEvent event(at, widget.mapToGlobal(at), {}, {0, delta}, Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  // As if it came from the display: only such an event goes on to the parent when it is ignored.
  QSpontaneKeyEvent::setSpontaneous(&event);
  qApp->notify(&widget, &event);
}

inline QAccessibleInterface* spoken(QObject* object) {
  return QAccessible::queryAccessibleInterface(object);
}

/// The windows of this class that are on the screen.
template <typename Window>
std::vector<Window*> visibleWindows() {
  std::vector<Window*> windows;
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    auto* window = qobject_cast<Window*>(widget);
    if (window && window->isVisible()) windows.push_back(window);
  }
  return windows;
}

}  // namespace tollbeam::test

// What screen readers must know of a widget that Qt cannot tell them by itself. Call these before
// the widget gets its name and text, because Qt remembers the first answer.
#pragma once

#include <QAbstractButton>
#include <QAccessible>
#include <QLineEdit>
#include <cstdint>
#include <functional>

namespace tollbeam {

/// `make` is called when a screen reader first asks about `widget`; the result belongs to Qt.
void setAccessible(QWidget& widget, const std::function<QAccessibleInterface*()>& make);

/// Gives a plain widget another role than Qt would: a heading, a group.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

/// Describes a button by its text and lets screen readers press it. `addState` adds to Qt's state.
void setAccessibleButton(QAbstractButton& button, QAccessible::Role role,
                         std::function<void(QAccessible::State&)> addState);

/// A whole number that screen readers can read, set and step.
struct AccessibleNumber {
  std::int64_t least;
  std::int64_t most;
  std::function<std::int64_t()> value;
  std::function<QString()> text;
  /// Gets numbers from `least` to `most`, and only while the widget is enabled.
  std::function<void(std::int64_t)> set;
  /// Gets 1 or -1, and only while the widget is enabled.
  std::function<void(int)> step;
  /// Where the text can be selected and edited; null when it cannot.
  QLineEdit* line = nullptr;
};

/// Describes the widget as a spin button.
void setAccessibleNumber(QWidget& widget, const AccessibleNumber& number);

/// For texts that are set repeatedly: Qt notifies screen readers even if nothing has changed, and
/// they may read the text out each time.
void setAccessibleNameIfOther(QWidget& widget, const QString& name);
void setAccessibleDescriptionIfOther(QWidget& widget, const QString& description);

}  // namespace tollbeam

// What screen readers are told of a widget that Qt does not know by itself.
#pragma once

#include <QAccessible>
#include <QWidget>

namespace tollbeam {

/// A widget that makes its own description.
class SelfDescribing {
 public:
  SelfDescribing();
  virtual ~SelfDescribing() = default;

  /// Made when someone first asks; whoever asked owns it.
  [[nodiscard]] virtual QAccessibleInterface* describe() = 0;

 protected:
  SelfDescribing(const SelfDescribing&) = default;
  SelfDescribing& operator=(const SelfDescribing&) = default;
};

/// Gives a plain widget another role than Qt would: a heading, a group. Before its name and text,
/// because Qt remembers the first answer.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

/// For what is set again and again: Qt tells screen readers each time, changed or not, and they may
/// say it each time.
void setAccessibleNameIfOther(QWidget& widget, const QString& name);
void setAccessibleDescriptionIfOther(QWidget& widget, const QString& description);

}  // namespace tollbeam

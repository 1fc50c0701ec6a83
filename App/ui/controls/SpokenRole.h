// What a screen reader takes a widget for, where the toolkit does not know: a plain widget is
// nothing in particular to it.
#pragma once

#include <QAccessible>
#include <QAccessibleWidget>

namespace tollbeam {

/// Every `Widget` made from now on is a `role`; calling it again changes nothing.
template <typename Widget, QAccessible::Role role>
void speakAs() {
  constexpr auto kSpoken = [](const QString& /*className*/,
                              QObject* object) -> QAccessibleInterface* {
    auto* widget = qobject_cast<Widget*>(object);
    return widget ? new QAccessibleWidget(widget, role) : nullptr;
  };
  QAccessible::installFactory(kSpoken);
}

}  // namespace tollbeam

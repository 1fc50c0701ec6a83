#include "ui/controls/Accessibility.h"

#include <QAccessibleWidget>
#include <QVariant>

namespace tollbeam {

namespace {

constexpr const char* kRole = "tollbeamRole";

QAccessibleInterface* describe(const QString& /*className*/, QObject* object) {
  if (auto* self = dynamic_cast<SelfDescribing*>(object)) return self->describe();
  auto* widget = qobject_cast<QWidget*>(object);
  const QVariant role = object->property(kRole);
  if (!widget || !role.isValid()) return nullptr;
  return new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()));
}

void install() {
  static const bool once = [] {
    QAccessible::installFactory(describe);
    return true;
  }();
  Q_UNUSED(once)
}

}  // namespace

SelfDescribing::SelfDescribing() { install(); }

void setAccessibleRole(QWidget& widget, QAccessible::Role role) {
  install();
  widget.setProperty(kRole, static_cast<int>(role));
}

void setAccessibleNameIfOther(QWidget& widget, const QString& name) {
  if (name != widget.accessibleName()) widget.setAccessibleName(name);
}

void setAccessibleDescriptionIfOther(QWidget& widget, const QString& description) {
  if (description != widget.accessibleDescription()) widget.setAccessibleDescription(description);
}

}  // namespace tollbeam

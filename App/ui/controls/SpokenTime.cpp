#include "ui/controls/SpokenTime.h"

#include <QLineEdit>

namespace tollbeam {

namespace {

constexpr int kLastMinute = 24 * 60 - 1;

}  // namespace

void* SpokenTime::interface_cast(QAccessible::InterfaceType type) {
  auto* line = QAccessible::queryAccessibleInterface(field()->line());
  if (type == QAccessible::TextInterface) return line->textInterface();
  if (type == QAccessible::EditableTextInterface && field()->isEnabled()) {
    return line->editableTextInterface();
  }
  if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
  return QAccessibleWidget::interface_cast(type);
}

QString SpokenTime::text(QAccessible::Text kind) const {
  return kind == QAccessible::Value ? field()->text() : QAccessibleWidget::text(kind);
}

QAccessible::State SpokenTime::state() const {
  QAccessible::State state = QAccessibleWidget::state();
  state.editable = true;
  return state;
}

QVariant SpokenTime::currentValue() const {
  const TimeOfDay time = field()->timeOfDay();
  return time.hour * 60 + time.minute;
}

QVariant SpokenTime::minimumValue() const { return 0; }

QVariant SpokenTime::maximumValue() const { return kLastMinute; }

QVariant SpokenTime::minimumStepSize() const { return 1; }

void SpokenTime::setCurrentValue(const QVariant& value) {
  // A value from outside this program may be any number.
  const double wanted = value.toDouble();
  if (!field()->isEnabled() || !(wanted >= 0) || !(wanted <= kLastMinute)) return;
  const int minutes = static_cast<int>(wanted);
  field()->setTime(QTime(minutes / 60, minutes % 60));
}

QStringList SpokenTime::actionNames() const {
  return QStringList{increaseAction(), decreaseAction()} + QAccessibleWidget::actionNames();
}

void SpokenTime::doAction(const QString& name) {
  const int step = name == increaseAction() ? 1 : name == decreaseAction() ? -1 : 0;
  if (step == 0) return QAccessibleWidget::doAction(name);
  if (field()->isEnabled()) field()->stepBy(step);
}

}  // namespace tollbeam

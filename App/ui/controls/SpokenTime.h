// What a screen reader is told of a time field: a spin button whose text can be read and written,
// whose chosen part can be stepped, and whose number is the minutes after midnight.
#pragma once

#include <QAccessibleWidget>

#include "ui/controls/TimeField.h"

namespace tollbeam {

class SpokenTime final : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit SpokenTime(TimeField* field) : QAccessibleWidget(field, QAccessible::SpinBox) {}

  void* interface_cast(QAccessible::InterfaceType type) override;
  [[nodiscard]] QString text(QAccessible::Text kind) const override;
  [[nodiscard]] QAccessible::State state() const override;
  [[nodiscard]] int childCount() const override { return 0; }
  [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }

  [[nodiscard]] QVariant currentValue() const override;
  [[nodiscard]] QVariant minimumValue() const override;
  [[nodiscard]] QVariant maximumValue() const override;
  [[nodiscard]] QVariant minimumStepSize() const override;
  void setCurrentValue(const QVariant& value) override;

  [[nodiscard]] QStringList actionNames() const override;
  void doAction(const QString& name) override;

 private:
  [[nodiscard]] TimeField* field() const { return static_cast<TimeField*>(widget()); }
};

}  // namespace tollbeam

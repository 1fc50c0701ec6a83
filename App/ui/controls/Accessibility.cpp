#include "ui/controls/Accessibility.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <utility>

namespace tollbeam {

namespace {

using Maker = std::function<QAccessibleInterface*()>;

constexpr const char* kMaker = "tollbeamAccessible";

QAccessibleInterface* makeFor(const QString& /*className*/, QObject* object) {
  const QVariant maker = object->property(kMaker);
  return maker.isValid() ? maker.value<Maker>()() : nullptr;
}

class SpokenButton final : public QAccessibleWidget {
 public:
  SpokenButton(QAbstractButton& button, QAccessible::Role role,
               std::function<void(QAccessible::State&)> addState)
      : QAccessibleWidget(&button, role), button_(button), addState_(std::move(addState)) {}

  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Name ? button_.text() : QAccessibleWidget::text(kind);
  }
  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    addState_(state);
    return state;
  }
  [[nodiscard]] QStringList actionNames() const override {
    return QStringList{pressAction()} + QAccessibleWidget::actionNames();
  }
  void doAction(const QString& name) override {
    if (name != pressAction()) return QAccessibleWidget::doAction(name);
    button_.click();
  }

 private:
  QAbstractButton& button_;
  const std::function<void(QAccessible::State&)> addState_;
};

class SpokenNumber final : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  SpokenNumber(QWidget& widget, AccessibleNumber number)
      : QAccessibleWidget(&widget, QAccessible::SpinBox), number_(std::move(number)) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    if (number_.line) {
      auto* line = QAccessible::queryAccessibleInterface(number_.line);
      if (type == QAccessible::TextInterface) return line->textInterface();
      if (type == QAccessible::EditableTextInterface && widget()->isEnabled()) {
        return line->editableTextInterface();
      }
    }
    return QAccessibleWidget::interface_cast(type);
  }
  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Value ? number_.text() : QAccessibleWidget::text(kind);
  }
  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.editable = number_.line != nullptr;
    return state;
  }
  [[nodiscard]] int childCount() const override { return 0; }
  [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }

  [[nodiscard]] QVariant currentValue() const override { return variant(number_.value()); }
  [[nodiscard]] QVariant minimumValue() const override { return variant(number_.least); }
  [[nodiscard]] QVariant maximumValue() const override { return variant(number_.most); }
  [[nodiscard]] QVariant minimumStepSize() const override { return variant(1); }
  void setCurrentValue(const QVariant& value) override {
    // Another program may send any number; the negated comparisons also reject NaN.
    const double number = value.toDouble();
    if (!widget()->isEnabled() || !(number >= static_cast<double>(number_.least)) ||
        !(number <= static_cast<double>(number_.most))) {
      return;
    }
    number_.set(static_cast<std::int64_t>(number));
  }

  [[nodiscard]] QStringList actionNames() const override {
    return QStringList{increaseAction(), decreaseAction()} + QAccessibleWidget::actionNames();
  }
  void doAction(const QString& name) override {
    const int step = name == increaseAction() ? 1 : name == decreaseAction() ? -1 : 0;
    if (step == 0) return QAccessibleWidget::doAction(name);
    if (widget()->isEnabled()) number_.step(step);
  }

 private:
  static QVariant variant(std::int64_t number) { return QVariant::fromValue<qlonglong>(number); }

  const AccessibleNumber number_;
};

}  // namespace

void setAccessible(QWidget& widget, const std::function<QAccessibleInterface*()>& make) {
  [[maybe_unused]] static const bool installed = [] {
    QAccessible::installFactory(makeFor);
    return true;
  }();
  widget.setProperty(kMaker, QVariant::fromValue<Maker>(make));
}

void setAccessibleRole(QWidget& widget, QAccessible::Role role) {
  setAccessible(widget, [&widget, role] { return new QAccessibleWidget(&widget, role); });
}

void setAccessibleButton(QAbstractButton& button, QAccessible::Role role,
                         std::function<void(QAccessible::State&)> addState) {
  setAccessible(button, [&button, role, add = std::move(addState)] {
    return new SpokenButton(button, role, add);
  });
}

void setAccessibleNumber(QWidget& widget, const AccessibleNumber& number) {
  setAccessible(widget, [&widget, number] { return new SpokenNumber(widget, number); });
}

void setAccessibleNameIfOther(QWidget& widget, const QString& name) {
  if (name != widget.accessibleName()) widget.setAccessibleName(name);
}

void setAccessibleDescriptionIfOther(QWidget& widget, const QString& description) {
  if (description != widget.accessibleDescription()) widget.setAccessibleDescription(description);
}

}  // namespace tollbeam

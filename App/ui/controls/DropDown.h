// A button that shows one of a few choices and opens the list of all. `chosen` is emitted when the
// user picks another choice, never for the same one again and never for `setValue`. A value that is
// no choice is shown as it is, and none is ticked in the list; where it is too long to be shown
// whole, a tool tip shows it.
//
// It is no QComboBox, whose list is a pop-up window: that grabs the pointer and is no part of this
// window for screen readers, and they cannot read a value that is no choice.
#pragma once

#include <QAbstractButton>
#include <QList>
#include <QPointer>

#include "ui/look/Style.h"

namespace tollbeam {

struct Choice {
  QString text;
  QString value;
  /// A line divides it from the one before.
  bool startsGroup = false;
};

class DropDownList;

class DropDown final : public QAbstractButton {
  Q_OBJECT

 public:
  /// `style` must outlive the button.
  DropDown(const Style& style, QList<Choice> choices, QWidget* parent = nullptr);
  ~DropDown() override;

  void setValue(const QString& value);
  [[nodiscard]] const QString& value() const { return value_; }
  /// The button's text, also where it is cut off.
  [[nodiscard]] QString shownText() const;

  void open();
  /// Null while closed.
  [[nodiscard]] DropDownList* list() const;

  [[nodiscard]] QSize sizeHint() const override;

 Q_SIGNALS:
  void chosen(const QString& value);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void dismiss();
  [[nodiscard]] int indexOf(const QString& value) const;
  [[nodiscard]] QString visibleText() const;
  [[nodiscard]] int widthFor(const QString& text) const;

  const Style& style_;
  const QList<Choice> choices_;
  QString value_;
  QPointer<DropDownList> list_;
};

}  // namespace tollbeam

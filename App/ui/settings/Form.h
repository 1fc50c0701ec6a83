// The page of the settings: headers and cards below each other.
#pragma once

#include <QVBoxLayout>
#include <QWidget>

#include "ui/controls/Card.h"
#include "ui/look/Style.h"

namespace tollbeam {

class Form final : public QWidget {
  Q_OBJECT

 public:
  /// `style` must outlive the form.
  explicit Form(const Style& style);

  /// The heading of the card that is added next, and of those after it.
  void addHeader(const QString& text);
  /// `name` is the group's name for screen readers.
  Card* addCard(const QString& name);

  /// A row, in no card yet, with a label and a control.
  FormRow* row(const QString& label, QWidget* control, Role role = Role::body) const;
  /// Adds a row that explains something, in small print over its whole width.
  FormRow* addNote(Card* card, Text* text,
                   FormRow::Measures measures = {.least = 0, .vertical = 12, .below = 12}) const;

  /// Call it after the last card: the rest of a high window stays empty.
  void finish() { column_->addStretch(1); }

  [[nodiscard]] const Style& style() const { return style_; }

 private:
  void addGap(int measure);

  const Style& style_;
  QVBoxLayout* column_;
  bool afterHeader_ = false;
};

}  // namespace tollbeam

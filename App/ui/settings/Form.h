// The page of the settings: headers and cards below each other, at the look's distances.
#pragma once

#include <QSpacerItem>
#include <QVBoxLayout>
#include <QWidget>
#include <utility>
#include <vector>

#include "ui/controls/Card.h"
#include "ui/look/Style.h"

namespace tollbeam {

class Form final : public QWidget {
  Q_OBJECT

 public:
  explicit Form(const Style& style);

  /// A section's name, over the card that is added next.
  void addHeader(const QString& text);
  /// `name` is what a screen reader calls the group.
  Card* addCard(const QString& name);

  /// A row with a label in the given weight and a control.
  FormRow* row(const QString& label, QWidget* control, Role role = Role::body) const;

  /// After the last card: what is left of a high window stays empty.
  void finish();

  [[nodiscard]] const Style& style() const { return style_; }

 private:
  void restyle();
  void addGap(int measure);

  const Style& style_;
  QVBoxLayout* column_;
  std::vector<std::pair<QSpacerItem*, int>> gaps_;
  std::vector<QWidget*> headers_;
  bool afterHeader_ = false;
};

}  // namespace tollbeam

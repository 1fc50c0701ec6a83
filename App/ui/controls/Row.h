// A label at one end of a line and its value at the other; where both do not fit, the value goes
// below. Screen readers read both as one text: "Battery health: 93% · Good".
#pragma once

#include <QLabel>

#include "ui/look/Style.h"

namespace tollbeam {

class Row final : public QLabel {
  Q_OBJECT

 public:
  /// `style` must outlive the row.
  explicit Row(const Style& style, QWidget* parent = nullptr);

  void setReading(const QString& label, const QString& value, Ink color = Ink::secondary);

  [[nodiscard]] QString label() const { return label_; }
  [[nodiscard]] QString value() const { return value_; }
  [[nodiscard]] Ink color() const { return color_; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;
  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] double widthOf(const QString& text) const;
  [[nodiscard]] double widthOfBoth() const;
  [[nodiscard]] QStringList broken(const QString& text, int width) const;

  const Style& style_;
  QString label_;
  QString value_;
  Ink color_ = Ink::secondary;
};

}  // namespace tollbeam

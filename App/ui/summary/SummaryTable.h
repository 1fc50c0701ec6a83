// The table of the daily summary: a row of headings and a row for each day. Columns grow with the
// language and the font, so that nothing is cut off. A screen reader reads each row as one
// sentence.
#pragma once

#include <QLabel>
#include <QVBoxLayout>
#include <vector>

#include "ui/look/Style.h"
#include "ui/summary/SummaryText.h"

namespace tollbeam {

/// Widths in logical pixels; the day's column takes the rest of the row.
struct SummaryColumns {
  int average = 0;
  int range = 0;
  int charging = 0;
  int gap = 0;

  bool operator==(const SummaryColumns&) const = default;
};

class SummaryRow final : public QLabel {
  Q_OBJECT

 public:
  SummaryRow(const Style& style, Ink ink, QWidget* parent);

  void setContent(const SummaryText& text, const SummaryColumns& columns);
  [[nodiscard]] const SummaryText& content() const { return content_; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Style& style_;
  const Ink ink_;
  SummaryText content_;
  SummaryColumns columns_;
};

class SummaryTable final : public QWidget {
  Q_OBJECT

 public:
  /// `style` must outlive the table.
  explicit SummaryTable(const Style& style, QWidget* parent = nullptr);

  void setDays(std::vector<SummaryText> days);
  /// The owner calls it after a change of the style, before it lays itself out.
  void restyle();
  [[nodiscard]] const std::vector<SummaryText>& days() const { return days_; }
  [[nodiscard]] const SummaryColumns& columns() const { return columns_; }

 private:
  const Style& style_;
  std::vector<SummaryText> days_;
  SummaryColumns columns_;
  QVBoxLayout* column_;
  SummaryRow* headings_;
  std::vector<SummaryRow*> rows_;
};

}  // namespace tollbeam

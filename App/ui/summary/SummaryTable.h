// The daily summary's table: a row a day below the heads. A row is one piece for whoever hears it;
// the columns grow where a language or a font needs it, so that nothing is cut off.
#pragma once

#include <QLabel>
#include <QVBoxLayout>
#include <vector>

#include "ui/look/Style.h"
#include "ui/summary/SummaryText.h"

namespace tollbeam {

/// In logical pixels. The day takes what they leave.
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
  /// Whoever owns the table tells it when the style has changed, to lay itself out after it.
  void restyle();
  [[nodiscard]] const std::vector<SummaryText>& days() const { return days_; }
  [[nodiscard]] const SummaryColumns& columns() const { return columns_; }

 private:
  const Style& style_;
  std::vector<SummaryText> days_;
  SummaryColumns columns_;
  QVBoxLayout* column_;
  SummaryRow* heads_;
  std::vector<SummaryRow*> rows_;
};

}  // namespace tollbeam

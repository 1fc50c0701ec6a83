// The charge of the last days as a line, broken where nothing was recorded. It computes and paints
// only while it is visible; how high it is may be set from outside, 110 at scale 1 is its wish.
#pragma once

#include <QWidget>
#include <vector>

#include "AppModel.h"
#include "history/ChartPoints.h"
#include "ui/controls/Text.h"
#include "ui/look/Style.h"

namespace tollbeam {

class HistoryChart final : public QWidget {
  Q_OBJECT

 public:
  /// All must outlive the chart. It starts with one day.
  HistoryChart(AppModel& model, const Platform& platform, const Style& style,
               QWidget* parent = nullptr);

  /// How many times 86,400 seconds to show, up to now; any number is harmless.
  void setDays(int days);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void restyle();
  void refresh();

  AppModel& model_;
  const Platform platform_;
  const Style& style_;
  int days_ = 1;
  Date from_;
  Date now_;
  std::vector<ChartPoint> points_;
  Text* placeholder_;
};

}  // namespace tollbeam

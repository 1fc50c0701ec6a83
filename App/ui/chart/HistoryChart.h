// The charge of the last days as a line with gaps where nothing was recorded. It computes and
// paints only while it is visible. Its preferred height is 110 at scale 1; the owner may set
// another.
#pragma once

#include <QWidget>
#include <optional>

#include "model/AppModel.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "ui/chart/ChartMarker.h"
#include "ui/chart/ChartPicture.h"
#include "ui/controls/Text.h"
#include "ui/look/Style.h"

namespace tollbeam {

class HistoryChart final : public QWidget {
  Q_OBJECT

 public:
  /// All must outlive the chart. It starts with one day.
  HistoryChart(AppModel& model, const Clock& clock, const Calendar& calendar, const Style& style,
               QWidget* parent = nullptr);

  /// How many times 86,400 seconds up to now to show; any number is harmless.
  void setDays(int days);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
  /// The placeholder's text does not determine the height.
  [[nodiscard]] bool hasHeightForWidth() const override { return false; }

  /// What is shown, for tests; no marker and no points while only the placeholder is.
  [[nodiscard]] const ChartPicture& picture() const { return picture_; }
  [[nodiscard]] const std::optional<ChartMarker>& marker() const { return marker_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  void refresh();
  void follow(std::optional<double> pointer);
  void dropMarker();
  [[nodiscard]] std::optional<ChartMarker> markerAt(std::size_t point) const;

  AppModel& model_;
  const Clock& clock_;
  const Calendar& calendar_;
  const Style& style_;
  int days_ = 1;
  ChartPicture picture_;
  std::optional<double> pointer_;
  std::optional<std::size_t> marked_;
  std::optional<ChartMarker> marker_;
  Text* placeholder_;
};

}  // namespace tollbeam

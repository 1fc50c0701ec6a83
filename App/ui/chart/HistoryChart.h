// The charge of the last days as a line, broken where nothing was recorded. It computes and paints
// only while it is visible. Its height may be set from outside; 110 at scale 1 is its wish.
#pragma once

#include <QWidget>
#include <optional>

#include "model/AppModel.h"
#include "platform/Platform.h"
#include "ui/chart/ChartMarker.h"
#include "ui/chart/ChartPicture.h"
#include "ui/controls/Text.h"
#include "ui/look/Style.h"

namespace tollbeam {

class HistoryChart final : public QWidget {
  Q_OBJECT

 public:
  /// All must outlive the chart, the ports of `platform` too. It starts with one day.
  HistoryChart(AppModel& model, const Platform& platform, const Style& style,
               QWidget* parent = nullptr);

  /// How many times 86,400 seconds to show, up to now; any number is harmless.
  void setDays(int days);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
  /// The placeholder's words do not decide it.
  [[nodiscard]] bool hasHeightForWidth() const override { return false; }

  /// What is shown at the moment, for tests; the placeholder alone has no marker and no points.
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
  void restyle();
  void refresh();
  void follow(std::optional<double> pointer);
  [[nodiscard]] std::optional<ChartMarker> markerAt(std::size_t point) const;

  AppModel& model_;
  const Platform platform_;
  const Style& style_;
  int days_ = 1;
  ChartPicture picture_;
  std::optional<double> pointer_;
  std::optional<std::size_t> marked_;
  std::optional<ChartMarker> marker_;
  Text* placeholder_;
};

}  // namespace tollbeam

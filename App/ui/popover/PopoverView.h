// The popover's content in one column. It reads the model; all it changes is the snooze, which the
// banner's link ends. While hidden it does not follow the model: call `refresh` before measuring
// and showing it. From then on it follows by itself.
#pragma once

#include <QVBoxLayout>
#include <QWidget>
#include <functional>
#include <vector>

#include "model/AppModel.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "ui/chart/HistoryChart.h"
#include "ui/controls/Bar.h"
#include "ui/controls/Divider.h"
#include "ui/controls/Row.h"
#include "ui/controls/SegmentedPicker.h"
#include "ui/look/Style.h"
#include "ui/popover/Header.h"
#include "ui/popover/NoBattery.h"
#include "ui/summary/DailySummaryView.h"

namespace tollbeam {

class PopoverView final : public QWidget {
  Q_OBJECT

 public:
  /// All must outlive the view.
  PopoverView(AppModel& model, const Clock& clock, const Calendar& calendar, const Style& style,
              const std::function<void()>& openSettings);

  /// Shows the model's current values.
  void refresh();

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void layOut(const std::function<void()>& openSettings);
  void refreshBattery(const BatteryState& state);

  AppModel& model_;
  const Clock& clock_;
  const Calendar& calendar_;
  const Style& style_;
  bool stale_ = true;

  NoBattery* noBattery_;
  Header* header_;
  QWidget* cycles_;
  Row* cycleRow_;
  Bar* cycleBar_;
  QWidget* details_;
  std::vector<Row*> detailRows_;
  SegmentedPicker* range_;
  HistoryChart* chart_;
  DailySummaryView* summary_;
};

}  // namespace tollbeam

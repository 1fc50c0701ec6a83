// The popover's content, one column. It only reads the model; what it writes is the snooze that its
// button ends. Hidden it does nothing when the model publishes: whoever shows it calls `refresh`
// first, so that it can be measured, and from then on it follows by itself.
#pragma once

#include <QVBoxLayout>
#include <QWidget>
#include <functional>

#include "model/AppModel.h"
#include "platform/Platform.h"
#include "ui/chart/HistoryChart.h"
#include "ui/controls/Button.h"
#include "ui/controls/Divider.h"
#include "ui/controls/SegmentedPicker.h"
#include "ui/controls/Text.h"
#include "ui/look/Style.h"
#include "ui/popover/CycleBlock.h"
#include "ui/popover/Details.h"
#include "ui/popover/Header.h"
#include "ui/popover/NoBattery.h"
#include "ui/summary/DailySummaryView.h"

namespace tollbeam {

class PopoverView final : public QWidget {
  Q_OBJECT

 public:
  /// All must outlive the view.
  PopoverView(AppModel& model, const Platform& platform, const Style& style,
              std::function<void()> openSettings);

  /// Shows what the model says now.
  void refresh();

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void layOut();
  void restyle();
  void modelChanged();
  void refreshBattery(const BatteryState& state);

  AppModel& model_;
  const Platform platform_;
  const Style& style_;
  bool stale_ = true;

  NoBattery* noBattery_;
  Header* header_;
  CycleBlock* cycles_;
  Details* details_;
  SegmentedPicker* range_;
  HistoryChart* chart_;
  DailySummaryView* summary_;
  Divider* divider_;
  Text* note_;
  Button* settings_;
  Button* quit_;

  QVBoxLayout* column_ = nullptr;
  QVBoxLayout* upToDivider_ = nullptr;
  QVBoxLayout* battery_ = nullptr;
  QVBoxLayout* history_ = nullptr;
};

}  // namespace tollbeam

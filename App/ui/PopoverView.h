// The popover's content. It only reads the model; what it writes is the snooze that its button
// ends.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>
#include <functional>

#include "AppModel.h"
#include "ui/look/Style.h"

namespace tollbeam {

class PopoverView final : public QWidget {
  Q_OBJECT

 public:
  PopoverView(AppModel& model, const Platform& platform, const Style& style,
              std::function<void()> openSettings);

 private:
  void update();

  AppModel& model_;
  QLabel* state_;
  QLabel* details_;
  QWidget* banner_;
  QLabel* bannerText_;
};

}  // namespace tollbeam

#include "ui/controls/AutoRepeat.h"

#include <QStyle>
#include <utility>

namespace tollbeam {

void AutoRepeat::start(std::function<bool()> work) {
  work_ = std::move(work);
  if (!work_()) return;
  timer_.start(widget_.style()->styleHint(QStyle::SH_SpinBox_ClickAutoRepeatThreshold), this);
}

void AutoRepeat::timerEvent(QTimerEvent* /*event*/) {
  timer_.start(widget_.style()->styleHint(QStyle::SH_SpinBox_ClickAutoRepeatRate), this);
  if (!work_()) timer_.stop();
}

}  // namespace tollbeam

// The last seven days as a small table under a title that opens and closes it. The title can be
// clicked up to `kReach` pixels above and below its text. These pixels belong to the view: subtract
// them from the distance to its neighbours. The days are computed only while the table is visible.
#pragma once

#include <QWidget>

#include "model/AppModel.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "ui/controls/Disclosure.h"
#include "ui/look/Style.h"
#include "ui/summary/SummaryTable.h"

namespace tollbeam {

class DailySummaryView final : public QWidget {
  Q_OBJECT

 public:
  /// At scale 1, above and below, open or closed.
  static constexpr int kReach = Disclosure::kReach;

  /// All must outlive the view. It starts closed and stays as the user leaves it.
  DailySummaryView(AppModel& model, const Clock& clock, const Calendar& calendar,
                   const Style& style, QWidget* parent = nullptr);

  /// Checked while the table is open.
  [[nodiscard]] QAbstractButton& title() const { return *title_; }

 protected:
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void restyle();
  void refresh();
  void settle();

  AppModel& model_;
  const Clock& clock_;
  const Calendar& calendar_;
  const Style& style_;
  Disclosure* title_;
  SummaryTable* table_ = nullptr;
};

}  // namespace tollbeam

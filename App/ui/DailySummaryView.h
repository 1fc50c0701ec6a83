// The last seven days as a small table under a title that opens and closes it. The title's row
// takes the pointer 4 pixels (`kReach`) beyond its text: those are part of this view, above and
// below it, so whoever lays it out takes them off the distance to its neighbours.
#pragma once

#include <QLabel>
#include <QToolButton>
#include <QWidget>

#include "AppModel.h"
#include "ui/look/Style.h"

namespace tollbeam {

class DailySummaryView final : public QWidget {
  Q_OBJECT

 public:
  /// At scale 1; both sides, open or closed.
  static constexpr int kReach = 4;

  /// All must outlive the view. It starts closed.
  DailySummaryView(AppModel& model, const Platform& platform, const Style& style,
                   QWidget* parent = nullptr);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void refresh();

  AppModel& model_;
  const Platform platform_;
  const Style& style_;
  QToolButton* title_;
  QLabel* table_;
};

}  // namespace tollbeam

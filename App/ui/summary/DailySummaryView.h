// The last seven days as a small table under a title that opens and closes it. The title takes the
// pointer 4 pixels (`kReach`) beyond its text: those are part of this view, above and below it, so
// whoever lays it out takes them off the distance to its neighbours. It computes only while it is
// open and visible.
#pragma once

#include <QWidget>

#include "model/AppModel.h"
#include "platform/Platform.h"
#include "ui/controls/Disclosure.h"
#include "ui/look/Style.h"
#include "ui/summary/SummaryTable.h"

namespace tollbeam {

class DailySummaryView final : public QWidget {
  Q_OBJECT

 public:
  /// At scale 1; both sides, open or closed.
  static constexpr int kReach = Disclosure::kReach;

  /// All must outlive the view, the ports of `platform` too. It starts closed and stays as the user
  /// leaves it.
  DailySummaryView(AppModel& model, const Platform& platform, const Style& style,
                   QWidget* parent = nullptr);

  /// What a keyboard or a test works; checked is open.
  [[nodiscard]] QAbstractButton& title() const { return *title_; }

 protected:
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void restyle();
  void refresh();
  void onToggled(bool open);
  void settle();

  AppModel& model_;
  const Platform platform_;
  const Style& style_;
  Disclosure* title_;
  SummaryTable* table_ = nullptr;
};

}  // namespace tollbeam

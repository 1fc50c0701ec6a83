// The ring around the control that the keyboard would work: two pixels of accent, two pixels away
// from the control, in its shape. It shows only while the user works with the keyboard. It lies in
// the nearest widget around the control that has room for all of it.
#pragma once

#include <QList>
#include <QPointer>
#include <QWidget>
#include <functional>

#include "ui/look/Style.h"

namespace tollbeam {

class FocusRing final : public QWidget {
  Q_OBJECT

 public:
  /// Gives `control` a ring of `radius` (of the control itself, at scale 1) around `shape()`, the
  /// control's painted part in its own coordinates (its whole rectangle when empty). Both must live
  /// no longer than `style`.
  static void surround(QWidget& control, const Style& style, double radius,
                       std::function<QRect()> shape = {});

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  FocusRing(QWidget& control, const Style& style, double radius, std::function<QRect()> shape);
  [[nodiscard]] QRect around() const;
  void moveIn();
  void follow();
  void appear();

  QWidget& control_;
  const Style& style_;
  const double radius_;
  const std::function<QRect()> shape_;
  QList<QPointer<QWidget>> between_;
};

}  // namespace tollbeam

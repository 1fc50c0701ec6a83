// The open list of a drop-down: it lies over the window's other parts with the ticked row on the
// button, as far as the window has room. It is a part of the window and no pop-up, so that screen
// readers find it and nothing is grabbed. It lives from `open` until it emits `closed`: when a row
// is chosen, at Escape, at a press elsewhere and when another window becomes active.
#pragma once

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QList>

#include "ui/controls/DropDown.h"
#include "ui/look/Shadow.h"
#include "ui/look/Style.h"

namespace tollbeam {

class ScrollPage;

/// One choice. The row with the focus is in the accent colour.
class DropDownRow final : public QAbstractButton {
  Q_OBJECT

 public:
  DropDownRow(const Style& style, const QString& text, bool ticked, QWidget* parent);

  [[nodiscard]] bool isTicked() const { return ticked_; }
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  bool focusNextPrevChild(bool /*next*/) override { return false; }

 private:
  const Style& style_;
  const bool ticked_;
};

class DropDownList final : public QWidget {
  Q_OBJECT

 public:
  /// A child of the button's window. `ticked` is an index, or -1.
  DropDownList(const Style& style, const QList<Choice>& choices, int ticked, QWidget& button);

  void open();
  /// Closes it; it deletes itself later.
  void dismiss();

  [[nodiscard]] const QList<DropDownRow*>& rows() const { return rows_; }

 Q_SIGNALS:
  void chosen(int index);
  void closed();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void place();
  void makeCurrent(int index);
  [[nodiscard]] int current() const;
  void search(const QString& typed);
  [[nodiscard]] QRect body() const;

  const Style& style_;
  QWidget& button_;
  const int ticked_;
  QList<DropDownRow*> rows_;
  ScrollPage* scroll_;
  Shadow shadow_;
  QString typed_;
  QElapsedTimer lastTyped_;
  bool dismissed_ = false;
};

}  // namespace tollbeam

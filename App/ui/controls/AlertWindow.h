// An alert: a small window with a title, a short text and a row of buttons. It is not modal and
// deletes itself when it closes. `answered` is emitted once, unless the window is destroyed first.
#pragma once

#include <QBoxLayout>
#include <QDialog>
#include <QStringList>
#include <optional>

#include "platform/Compositor.h"
#include "ui/look/Shadow.h"
#include "ui/look/Style.h"

namespace tollbeam {

class AlertWindow final : public QDialog {
  Q_OBJECT

 public:
  struct Content {
    QString title;
    QString text;
    /// The first is the default action; it stands last in the row.
    QStringList buttons;
    /// The first cannot be undone: it is red, and the last has the focus.
    bool destructive = false;
  };

  /// The compositor and the style must outlive the window.
  AlertWindow(const Style& style, Compositor& compositor, const Content& content);

  /// Opens in the middle of `over`, or of the screen when that is null.
  void open(const QWidget* over);

 Q_SIGNALS:
  /// The index of the pressed button; absent when the window was closed otherwise.
  void answered(std::optional<std::size_t> button);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void addButtons(const Content& content);
  void place(const QRect& around);
  [[nodiscard]] QRect body() const { return rect().marginsRemoved(shadowMargins_); }

  const Style& style_;
  Compositor& compositor_;
  Shadow shadow_;
  QMargins shadowMargins_;
  QVBoxLayout* column_;
  QHBoxLayout* buttons_;
  QSpacerItem* aboveText_;
  QSpacerItem* aboveButtons_;
  std::optional<std::size_t> pressed_;
};

}  // namespace tollbeam

// A few choices side by side in one track; the chosen one stands out. Each is a radio button: the
// Tab key reaches the chosen one and the arrow keys choose.
#pragma once

#include <QRadioButton>
#include <QStringList>
#include <QWidget>
#include <vector>

#include "ui/controls/Motion.h"
#include "ui/look/Style.h"

namespace tollbeam {

class SegmentedPicker final : public QWidget {
  Q_OBJECT

 public:
  /// The first choice is chosen. `style` must outlive the picker. `name` is what the whole is called
  /// where it cannot be seen.
  SegmentedPicker(const Style& style, const QString& name, const QStringList& choices,
                  QWidget* parent = nullptr);

  /// From 0.
  [[nodiscard]] int chosen() const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;
  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override;

 Q_SIGNALS:
  void chosenChanged(int index);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  class Segment;

  void restyle();
  void placeSegments();
  [[nodiscard]] int heightOf(const QString& text, int width) const;

  const Style& style_;
  std::vector<Segment*> segments_;
  Motion thumb_;
};

}  // namespace tollbeam

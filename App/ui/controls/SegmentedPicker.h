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
  /// The first choice is chosen. `style` must outlive the picker. `name` is for screen readers.
  SegmentedPicker(const Style& style, const QString& name, const QStringList& choices,
                  QWidget* parent = nullptr);

  /// From 0.
  [[nodiscard]] int chosen() const;

 Q_SIGNALS:
  void chosenChanged(int index);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Style& style_;
  std::vector<QRadioButton*> segments_;
  Motion thumb_;
};

}  // namespace tollbeam

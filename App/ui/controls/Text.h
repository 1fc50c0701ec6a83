// A piece of text in one role and one ink. It breaks only as set, is never cut off, and keeps its
// own direction, so that "93% · Good" stays in order inside a mirrored window.
#pragma once

#include <QLabel>

#include "ui/controls/LineBreaks.h"
#include "ui/controls/TextLine.h"
#include "ui/look/Style.h"

namespace tollbeam {

class Text final : public QLabel {
  Q_OBJECT

 public:
  /// `style` must outlive the text.
  Text(const Style& style, Role role, Ink ink, QWidget* parent = nullptr);

  void setInk(Ink ink);
  /// With breaks the text takes the width it is given and the height that it needs there.
  void setBreaks(Breaks breaks);
  /// Makes all digits as wide as the widest, so that nothing moves while they count.
  void setTabularDigits();

  /// The narrowest width, in pixels, in which no word is broken.
  [[nodiscard]] double widestWord() const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;
  [[nodiscard]] bool hasHeightForWidth() const override { return breaks_ != Breaks::never; }
  [[nodiscard]] int heightForWidth(int width) const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] double widthOf(const QString& line) const;
  [[nodiscard]] QStringList linesAt(int width) const;

  const Style& style_;
  const Role role_;
  Ink ink_;
  Breaks breaks_ = Breaks::never;
  Figures figures_ = Figures::proportional;
};

}  // namespace tollbeam

// The program's own battery symbols. Desktop themes disagree on battery icons, so we ship ours:
// each name has three drawings, for pixel grids of 16, 22 and 24, and a symbol is crisp only at
// whole multiples of its grid. Sizes between are therefore padded, never scaled.
#pragma once

#include <QColor>
#include <QHash>
#include <QImage>
#include <QString>
#include <optional>

namespace tollbeam {

class Symbols {
 public:
  Symbols();

  [[nodiscard]] bool contains(const QString& name) const;

  /// A square picture of `side` device pixels, premultiplied, transparent around the symbol. Absent
  /// when there is no such symbol. Pictures are kept between calls.
  [[nodiscard]] std::optional<QImage> image(const QString& name, int side, const QColor& colour);

  /// The largest size not above `side` at which symbols are crisp; at least 16.
  [[nodiscard]] static int crispSide(int side);

 private:
  QHash<QString, QImage> cache_;
};

}  // namespace tollbeam

// Digits that keep their place while they change: fonts without tabular figures are set digit by
// digit in cells as wide as the widest one.
#pragma once

#include <QFont>
#include <QPainter>
#include <QPainterPath>
#include <QString>

namespace tollbeam {

/// The width of `text` with every digit as wide as the widest.
[[nodiscard]] double tabularWidth(const QString& text, const QFont& font);

/// Paints it from `start`, on the baseline, in the painter's pen.
void paintTabular(QPainter& painter, QPointF start, const QString& text, const QFont& font);

/// Its outline, from `start` on the baseline.
[[nodiscard]] QPainterPath tabularOutline(QPointF start, const QString& text, const QFont& font);

}  // namespace tollbeam

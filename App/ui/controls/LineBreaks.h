// Where a text that is too wide for its line is broken. Nothing is ever cut off.
#pragma once

#include <QFont>
#include <QString>
#include <QStringList>
#include <functional>

#include "ui/controls/TextLine.h"

namespace tollbeam {

enum class Breaks {
  never,
  words,          ///< wherever a line is full
  afterComma,     ///< after the first comma
  afterSentence,  ///< after the first sentence
  /// At the space nearest the middle; a longer text into lines of about equal length. A word longer
  /// than a line (a path) is broken anywhere.
  balanced,
};

/// The lines of `text`, each at most `width` wide by `measure` where its words allow it. A part
/// that is still too wide is broken at words.
[[nodiscard]] QStringList brokenLines(const QString& text, double width, Breaks breaks,
                                      const std::function<double(const QString&)>& measure);

/// The same, measured in that font.
[[nodiscard]] QStringList brokenLines(const QString& text, double width, Breaks breaks,
                                      const QFont& font, Figures figures = Figures::proportional);

}  // namespace tollbeam

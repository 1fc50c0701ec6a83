// Where a text that is too wide for its line is broken. Nothing is ever cut off.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace tollbeam {

enum class Breaks {
  never,
  words,          ///< wherever a line is full
  afterComma,     ///< after the first comma
  afterSentence,  ///< after the first sentence
  balanced,       ///< at the space nearest the middle, or into more lines of about one length
};

/// The lines of `text`, each at most `width` wide by `measure`. A part that is still too wide is
/// broken at words, and a word that is wider than the line anywhere.
[[nodiscard]] QStringList brokenLines(const QString& text, double width, Breaks breaks,
                                      const std::function<double(const QString&)>& measure);

}  // namespace tollbeam

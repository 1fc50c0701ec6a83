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
  /// At the space nearest the middle; a longer text into lines of about one length, and a word that
  /// has no line to itself (a path) anywhere.
  balanced,
};

/// The lines of `text`, each at most `width` wide by `measure` where its words allow it. A part
/// that is still too wide is broken at words.
[[nodiscard]] QStringList brokenLines(const QString& text, double width, Breaks breaks,
                                      const std::function<double(const QString&)>& measure);

}  // namespace tollbeam

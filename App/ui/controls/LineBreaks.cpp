#include "ui/controls/LineBreaks.h"

#include <cstdlib>

namespace tollbeam {

namespace {

using Measure = std::function<double(const QString&)>;

// The position after the break's space; 0 when there is none.
qsizetype breakOf(const QString& text, Breaks breaks) {
  const auto after = [&text](QStringView mark) {
    const qsizetype found = text.indexOf(mark);
    return found < 0 ? 0 : found + mark.size();
  };
  switch (breaks) {
    case Breaks::afterComma:
      return after(u", ");
    case Breaks::afterSentence:
      return after(u". ");
    case Breaks::balanced: {
      const qsizetype middle = text.size() / 2;
      qsizetype best = 0;
      for (qsizetype at = text.indexOf(u' '); at >= 0; at = text.indexOf(u' ', at + 1)) {
        if (best == 0 || std::abs(at + 1 - middle) < std::abs(best - middle)) best = at + 1;
      }
      return best;
    }
    case Breaks::never:
    case Breaks::words:
      break;
  }
  return 0;
}

QStringList brokenAtWords(const QString& text, double width, const Measure& measure) {
  QStringList lines;
  QString line;
  for (const QString& word : text.split(u' ', Qt::SkipEmptyParts)) {
    const QString longer = line.isEmpty() ? word : line + u' ' + word;
    if (line.isEmpty() || measure(longer) <= width) {
      line = longer;
    } else {
      lines << line;
      line = word;
    }
  }
  if (!line.isEmpty()) lines << line;
  return lines;
}

}  // namespace

QStringList brokenLines(const QString& text, double width, Breaks breaks, const Measure& measure) {
  if (text.isEmpty()) return {};
  if (breaks == Breaks::never || measure(text) <= width) return {text};
  if (const qsizetype at = breakOf(text, breaks); at > 0 && at < text.size()) {
    return brokenLines(text.left(at).trimmed(), width, Breaks::words, measure) +
           brokenLines(text.mid(at).trimmed(), width, Breaks::words, measure);
  }
  return brokenAtWords(text, width, measure);
}

}  // namespace tollbeam

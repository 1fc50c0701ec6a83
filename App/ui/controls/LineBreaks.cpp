#include "ui/controls/LineBreaks.h"

#include <QTextBoundaryFinder>
#include <algorithm>
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

// The pieces of a word that is longer than a line, such as a file's path: broken after a slash
// where there is one, else wherever the line is full.
QStringList brokenAnywhere(const QString& word, double width, const Measure& measure) {
  QStringList pieces;
  QString rest = word;
  while (measure(rest) > width) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, rest);
    qsizetype end = finder.toNextBoundary();
    for (qsizetype next = end; next >= 0 && measure(rest.left(next)) <= width;
         next = finder.toNextBoundary()) {
      end = next;
    }
    if (end >= rest.size()) break;
    const qsizetype slash = rest.left(end).lastIndexOf(u'/');
    if (slash > 0) end = slash + 1;
    pieces << rest.left(end);
    rest = rest.mid(end);
  }
  return pieces << rest;
}

enum class LongWords { whole, broken };

QStringList brokenAtWords(const QString& text, double width, const Measure& measure,
                          LongWords longWords = LongWords::whole) {
  QStringList lines;
  QString line;
  for (const QString& word : text.split(u' ', Qt::SkipEmptyParts)) {
    const QString longer = line.isEmpty() ? word : line + u' ' + word;
    if (measure(longer) <= width) {
      line = longer;
      continue;
    }
    if (!line.isEmpty()) lines << line;
    line = word;
    if (longWords == LongWords::broken) {
      lines << brokenAnywhere(word, width, measure);
      line = lines.takeLast();
    }
  }
  if (!line.isEmpty()) lines << line;
  return lines;
}

// As few lines as possible, all of about equal length.
QStringList brokenEvenly(const QString& text, double width, const Measure& measure) {
  QStringList lines = brokenAtWords(text, width, measure, LongWords::broken);
  const auto count = lines.size();
  double tooNarrow = width / 2;
  // A word that fits into a line is never broken to make the lines more even.
  for (const QString& word : text.split(u' ', Qt::SkipEmptyParts)) {
    const double needed = measure(word);
    if (needed <= width) tooNarrow = std::max(tooNarrow, needed);
  }
  double enough = width;
  while (enough - tooNarrow > 1) {
    const double middle = (tooNarrow + enough) / 2;
    const QStringList narrower = brokenAtWords(text, middle, measure, LongWords::broken);
    if (narrower.size() > count) {
      tooNarrow = middle;
    } else {
      enough = middle;
      lines = narrower;
    }
  }
  return lines;
}

}  // namespace

QStringList brokenLines(const QString& text, double width, Breaks breaks, const Measure& measure) {
  if (text.isEmpty()) return {};
  if (breaks == Breaks::never || measure(text) <= width) return {text};
  const qsizetype at = breakOf(text, breaks);
  if (breaks == Breaks::balanced &&
      (measure(text.left(at).trimmed()) > width || measure(text.mid(at)) > width)) {
    return brokenEvenly(text, width, measure);
  }
  if (at > 0 && at < text.size()) {
    return brokenLines(text.left(at).trimmed(), width, Breaks::words, measure) +
           brokenLines(text.mid(at).trimmed(), width, Breaks::words, measure);
  }
  return brokenAtWords(text, width, measure);
}

QStringList brokenLines(const QString& text, double width, Breaks breaks, const QFont& font,
                        Figures figures) {
  return brokenLines(text, width, breaks,
                     [&](const QString& line) { return widthOfLine(line, font, figures); });
}

}  // namespace tollbeam

#include "ui/controls/LineBreaks.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tollbeam {
namespace {

double oneEach(const QString& line) { return static_cast<double>(line.size()); }

using Lines = std::vector<std::string>;

Lines lines(const char* text, double width, Breaks breaks) {
  Lines result;
  for (const QString& line : brokenLines(QString::fromUtf8(text), width, breaks, oneEach)) {
    result.push_back(line.toStdString());
  }
  return result;
}

TEST(LineBreaks, LeaveATextThatFitsOnOneLine) {
  EXPECT_EQ(lines("one, two", 8, Breaks::afterComma), Lines{"one, two"});
}

TEST(LineBreaks, NeverCutATextThatMustNotBreak) {
  EXPECT_EQ(lines("one two", 3, Breaks::never), Lines{"one two"});
}

TEST(LineBreaks, ComeAfterTheComma) {
  EXPECT_EQ(lines("Charging, estimating time", 20, Breaks::afterComma),
            (Lines{"Charging,", "estimating time"}));
}

TEST(LineBreaks, ComeAfterTheFirstSentence) {
  EXPECT_EQ(lines("Only reminds you. No more.", 20, Breaks::afterSentence),
            (Lines{"Only reminds you.", "No more."}));
}

TEST(LineBreaks, BalanceTwoLines) {
  EXPECT_EQ(lines("aa bb cc dd ee", 12, Breaks::balanced), (Lines{"aa bb", "cc dd ee"}));
}

TEST(LineBreaks, BalanceMoreThanTwoLines) {
  EXPECT_EQ(lines("aa bb cc dd ee ff gg hh", 10, Breaks::balanced),
            (Lines{"aa bb cc", "dd ee ff", "gg hh"}));
  EXPECT_EQ(lines("aa bb cc dd ee ff gg hh ii", 11, Breaks::balanced),
            (Lines{"aa bb cc", "dd ee ff", "gg hh ii"}));
}

TEST(LineBreaks, KeepAWordThatFitsWholeWhenBalancing) {
  for (double width = 12; width < 14; width += 0.1) {
    const auto broken = lines("Erinnerungen pausiert bis 15:05", width, Breaks::balanced);
    EXPECT_EQ(broken.at(0), "Erinnerungen") << width;
  }
}

TEST(LineBreaks, BreakAPathAfterItsSlashes) {
  EXPECT_EQ(lines("saved to /home/someone/Documents/history.csv", 20, Breaks::balanced),
            (Lines{"saved to", "/home/someone/", "Documents/", "history.csv"}));
}

TEST(LineBreaks, BreakAWordLongerThanALineWhenBalancing) {
  EXPECT_EQ(lines("incomprehensible", 8, Breaks::balanced), (Lines{"incompre", "hensible"}));
  EXPECT_EQ(lines("👩‍🔬👩‍🔬👩‍🔬", 6, Breaks::balanced),
            (Lines{"👩‍🔬", "👩‍🔬", "👩‍🔬"}))
      << "a grapheme is never broken";
  EXPECT_EQ(lines("👩‍🔬", 2, Breaks::balanced), Lines{"👩‍🔬"});
}

TEST(LineBreaks, FillLinesWithWords) {
  EXPECT_EQ(lines("aa bb cc dd", 5, Breaks::words), (Lines{"aa bb", "cc dd"}));
}

TEST(LineBreaks, BreakAPartThatIsStillTooWideAtWords) {
  EXPECT_EQ(lines("On, one two three", 9, Breaks::afterComma), (Lines{"On,", "one two", "three"}));
}

TEST(LineBreaks, KeepAWordWhole) {
  EXPECT_EQ(lines("incomprehensible", 4, Breaks::words), Lines{"incomprehensible"});
}

TEST(LineBreaks, GiveNoLineForAnEmptyText) { EXPECT_EQ(lines("", 4, Breaks::words), Lines()); }

TEST(LineBreaks, LoseNoWord) {
  const auto text = QStringLiteral("Alerts snoozed until 10:15 in the morning, or later. Really.");
  for (int width = 1; width < 70; ++width) {
    for (const auto breaks : {Breaks::words, Breaks::afterComma, Breaks::afterSentence}) {
      EXPECT_EQ(brokenLines(text, width, breaks, oneEach).join(u' '), text);
    }
    // Balancing may also break words that are longer than the line.
    QString balanced = brokenLines(text, width, Breaks::balanced, oneEach).join(u' ');
    if (width < 8) balanced.remove(u' ');
    EXPECT_EQ(balanced, width < 8 ? QString(text).remove(u' ') : text) << width;
  }
}

}  // namespace
}  // namespace tollbeam

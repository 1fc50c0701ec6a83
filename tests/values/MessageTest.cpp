#include "values/Message.h"

#include <gtest/gtest.h>

namespace tollbeam {
namespace {

TEST(Message, PutsTheArgumentsIntoTheirPlaces) {
  EXPECT_EQ(Message("%1 h %2 min", {"3", "47"}).text(), "3 h 47 min");
  EXPECT_EQ(Message("%2 min, %1 h, %1", {"3", "47"}).text(), "47 min, 3 h, 3");
  EXPECT_EQ(Message("“%1”", {"/disk 2/“%1” 40%"}).text(), "“/disk 2/“%1” 40%”");
  EXPECT_EQ(Message("%1%", {"80"}).text(), "80%");
}

TEST(Message, KeepsPlacesWithoutAnArgument) {
  EXPECT_EQ(Message("100% of 5%1").text(), "100% of 5%1");
  EXPECT_EQ(Message("%0 %1 %2 %", {"a"}).text(), "%0 a %2 %");
  EXPECT_EQ(Message().text(), "");
}

TEST(Message, EqualsAnotherOfTheSameText) {
  EXPECT_EQ(Message("%1 min", {"5"}), "5 min");
  EXPECT_NE(Message("%1 min", {"5"}), "%1 min");
}

}  // namespace
}  // namespace tollbeam

#include "ui/controls/Button.h"

#include <gtest/gtest.h>

#include "recorded/RecordedPlatform.h"
#include "support/Keyboard.h"

namespace tollbeam {
namespace {

TEST(Button, IsPressedByTheKeyboard) {
  RecordedAppearance appearance;
  const Style style(appearance);
  Button button(style, QStringLiteral("Quit"));
  test::expectPressedByTheKeyboard(button);
}

}  // namespace
}  // namespace tollbeam

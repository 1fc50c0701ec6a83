#include "ui/shell/StatusItemContent.h"

#include "battery/FormatDecimal.h"
#include "texts/Translated.h"

namespace tollbeam {

namespace {

std::string title(const BatteryState& state, const Prefs& prefs) {
  std::string text;
  if (!state.hasBattery) return text;
  if (prefs.showPercent) text = std::to_string(state.percent) + "%";
  const auto time = prefs.showTime ? state.shortTime() : std::nullopt;
  if (time) {
    if (!text.empty()) text += " · ";
    text += *time;
  }
  return text.empty() ? text : " " + text;
}

std::string toolTip(const BatteryState& state) {
  std::string text =
      state.hasBattery ? std::to_string(state.percent) + "% · " + translatedUtf8(state.stateText())
                       : translatedUtf8("No battery found");
  const auto health = state.healthPercent();
  const auto label = state.healthLabel();
  if (health && label) {
    text += "\n" + translatedUtf8({"Health: %1% (" + *label + ")", {formatDecimal(*health, 0)}});
  }
  if (state.cycleCount) {
    text += "\n" + translatedUtf8({"Cycles: %1", {std::to_string(*state.cycleCount)}});
  }
  return text;
}

}  // namespace

StatusItemContent statusItemContent(const BatteryState& state, const Prefs& prefs) {
  return {.symbolNames = state.symbolNames(),
          .accessibilityDescription = translatedUtf8("Battery"),
          .title = title(state, prefs),
          .toolTip = toolTip(state)};
}

}  // namespace tollbeam

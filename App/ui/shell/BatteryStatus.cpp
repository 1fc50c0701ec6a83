#include "ui/shell/BatteryStatus.h"

#include "battery/FormatDecimal.h"
#include "texts/Translated.h"

namespace tollbeam {

namespace {

std::string title(const BatteryState& state, const Prefs& prefs) {
  if (!state.hasBattery) return {};
  std::string percent = prefs.showPercent ? " " + std::to_string(state.percent) + "%" : "";
  const auto time = prefs.showTime ? state.shortTime() : std::nullopt;
  if (!time) return percent;
  return percent + (percent.empty() ? " " : " · ") + *time;
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

StatusItemContent batteryStatus(const BatteryState& state, const Prefs& prefs) {
  return {.symbolNames = state.symbolNames(),
          .accessibilityDescription = translatedUtf8("Battery"),
          .title = title(state, prefs),
          .toolTip = toolTip(state)};
}

}  // namespace tollbeam

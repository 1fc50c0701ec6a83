#include "ui/StatusItemContent.h"

#include <cstdio>

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
  std::string text = state.hasBattery ? std::to_string(state.percent) + "% · " + state.stateText()
                                      : std::string("No battery found");
  const auto health = state.healthPercent();
  const auto label = state.healthLabel();
  if (health && label) {
    char percent[64];
    std::snprintf(percent, sizeof percent, "%.0f", *health);
    text += std::string("\nHealth: ") + percent + "% (" + *label + ")";
  }
  if (state.cycleCount) text += "\nCycles: " + std::to_string(*state.cycleCount);
  return text;
}

}  // namespace

StatusItemContent statusItemContent(const BatteryState& state, const Prefs& prefs) {
  return {.symbolNames = state.symbolNames(),
          .accessibilityDescription = "Battery",
          .title = title(state, prefs),
          .toolTip = toolTip(state)};
}

}  // namespace tollbeam

#include "platform/freedesktop/power/readings/PowerTableCache.h"

#include <algorithm>
#include <cmath>

#include "platform/freedesktop/power/readings/SupplyReading.h"

namespace tollbeam {

namespace {

constexpr auto unknown = ChargeState::unknown;

bool isInternal(const std::optional<SourceReading>& reading) {
  return reading && hasInternalBattery(powerTable(reading));
}

// UPower's display device has no name, and UPower assumes a charger whenever no battery discharges.
void amend(SourceReading& daemons, const PowerSupplies& supplies,
           const std::optional<SourceReading>& kernels) {
  if (daemons.name.empty() && kernels) daemons.name = kernels->name;
  if (externalPowerConnected(supplies) != false) return;
  const auto state = kernels && !isGlitch(*kernels) ? kernels->state : daemons.state;
  if (state == ChargeState::charging) return;
  daemons.onExternalPower = false;
  if (daemons.state == ChargeState::charging) daemons.state = state;
}

// Whether the two differ by more than rounding. Without a kernel's reading the battery has gone.
bool contradicts(const std::optional<SourceReading>& kernels, const SourceReading& daemons) {
  if (!kernels) return true;
  if (isGlitch(*kernels)) return false;
  const bool bothKnow = kernels->state != unknown && daemons.state != unknown;
  return std::abs(kernels->percent - daemons.percent) > 1 ||
         (bothKnow && kernels->state != daemons.state) ||
         kernels->onExternalPower != daemons.onExternalPower;
}

}  // namespace

PowerTableCache::Table PowerTableCache::update(const std::optional<UPowerAnswer>& upower,
                                               const std::optional<PowerSupplies>& kernel,
                                               Time now) {
  const auto kernels = kernel ? readSupplies(*kernel) : std::nullopt;
  auto daemons = upower ? readUPower(*upower) : std::nullopt;
  const bool comparable = kernel && isInternal(daemons);
  if (comparable) amend(*daemons, *kernel, kernels);
  silence_.compare(comparable && contradicts(kernels, *daemons), now);
  const bool answers = upower && !(silence_.isSilent() && kernel);
  steadied_ = false;
  last_ = decide(answers, daemons, kernel.has_value(), kernels, now);
  // Without a battery there is no contact to wait for.
  if (!steadied_) contact_.forget();
  auto table = last_;
  table.fromKernel = table.fromKernel || !upower || silence_.isInDoubt();
  return table;
}

bool PowerTableCache::heardFromDaemon() {
  const bool wasSilent = silence_.isSilent();
  silence_.heard();
  return wasSilent;
}

std::optional<PowerTableCache::Time> PowerTableCache::due() const {
  const auto contact = contact_.due();
  const auto silence = silence_.due();
  return contact && silence ? std::min(contact, silence) : contact ? contact : silence;
}

PowerTableCache::Table PowerTableCache::decide(bool daemonAnswers,
                                               const std::optional<SourceReading>& daemons,
                                               bool kernelAnswers,
                                               const std::optional<SourceReading>& kernels,
                                               Time now) {
  const bool daemonGlitches = daemonAnswers && daemons && isGlitch(*daemons);
  if (daemonGlitches) {
    // UPower also reports a glitch for a bay that the kernel knows to be empty.
    const bool takenOut = kernelAnswers && !kernels;
    if (last_.sources && hasInternalBattery(*last_.sources) && !takenOut) return last_;
  } else if (daemonAnswers && isInternal(daemons)) {
    return {tableOf(daemons, now), false};
  }
  if (kernels && !isGlitch(*kernels)) return {tableOf(kernels, now), true};
  if (daemonAnswers && !daemonGlitches) return {powerTable(daemons), false};
  if (kernels) return last_.sources ? last_ : Table{List{}, true, true};
  if (kernelAnswers) return {List{}, true};
  // All there is without the kernel is the daemon's glitch, if it has answered.
  return {std::nullopt, true, daemonAnswers};
}

List PowerTableCache::tableOf(const std::optional<SourceReading>& reading, Time now) {
  steadied_ = true;
  return powerTable(contact_.steady(*reading, now));
}

}  // namespace tollbeam

// Thousands of random timelines against what a user may rely on, told independently of how the
// engine does it.
#include <gtest/gtest.h>

#include <map>
#include <random>

#include "alerts/AlertEngine.h"
#include "preferences/Prefs.h"
#include "recorded/RecordedPlatform.h"

namespace tollbeam {
namespace {

struct Step {
  BatteryState state;
  std::optional<Date> since;
  Date now;
  Prefs prefs;
  bool canDeliver = true;
  bool prime = false;
  std::vector<PendingAlert> alerts;
};

class Timeline {
 public:
  explicit Timeline(unsigned seed) : random_(seed) {
    prefs_ = Prefs::current(store_);
    percent_ = pick(0, 100);
    design_ = 5000;
    full_ = pick(3800, 4300);
  }

  std::vector<Step> play(int count) {
    std::vector<Step> steps;
    for (int i = 0; i < count; ++i) steps.push_back(next());
    return steps;
  }

 private:
  int pick(int from, int to) { return std::uniform_int_distribution(from, to)(random_); }
  bool chance(int percent) { return pick(1, 100) <= percent; }

  Step next() {
    now_ = now_ + (chance(80) ? 60.0 : pick(0, 6000));
    if (chance(8)) pluggedIn_ = !pluggedIn_;
    percent_ = std::clamp(percent_ + (pluggedIn_ ? pick(-1, 6) : pick(-6, 1)), 0, 100);
    if (chance(5)) lowPowerMode_ = !lowPowerMode_;
    if (chance(10)) full_ = std::clamp(full_ + pick(-120, 120), 3500, 4800);
    if (chance(3)) prefs_.repeatReminder = !prefs_.repeatReminder;
    if (chance(2)) prefs_.limitEnabled = !prefs_.limitEnabled;
    if (chance(2)) prefs_.lowEnabled = !prefs_.lowEnabled;
    if (chance(2)) prefs_.limit = pick(50, 100);

    Step step;
    step.state.hasBattery = !chance(2);
    step.state.percent = percent_;
    step.state.pluggedIn = pluggedIn_;
    step.state.isCharging = pluggedIn_ && chance(70);
    step.state.lowPowerMode = lowPowerMode_;
    if (chance(95)) {
      step.state.designCapacity = design_;
      step.state.fullCapacity = full_;
    }
    if (!pluggedIn_) since_.reset();
    if (pluggedIn_ && !since_) since_ = now_;
    step.since = since_;
    step.now = now_;
    step.prefs = prefs_;
    step.prime = chance(2);
    step.canDeliver = !step.prime && chance(85);
    step.alerts = engine_.run(step.state, step.since, step.now, step.prefs, step.canDeliver,
                              step.prime, store_);
    return step;
  }

  std::mt19937 random_;
  RecordedUserDefaults store_;
  Prefs prefs_;
  AlertEngine engine_;
  Date now_{1'700'000'000};
  std::optional<Date> since_;
  int percent_ = 50;
  bool pluggedIn_ = false;
  bool lowPowerMode_ = false;
  int design_ = 0;
  int full_ = 0;
};

bool conditionHolds(AlertKind kind, const Step& s) {
  const BatteryState& b = s.state;
  if (!b.hasBattery) return false;
  switch (kind) {
    case AlertKind::chargeLimit:
      return s.prefs.limitEnabled && b.pluggedIn && b.percent >= s.prefs.limit;
    case AlertKind::low:
      return s.prefs.lowEnabled && !b.pluggedIn && b.percent <= s.prefs.low;
    case AlertKind::tooLong:
      return s.prefs.longEnabled && b.pluggedIn && b.percent >= s.prefs.limit && s.since &&
             s.now.secondsSince1970 - s.since->secondsSince1970 >
                 3600.0 * static_cast<double>(s.prefs.longHours);
    case AlertKind::lowPower:
      return s.prefs.lowPowerEnabled && !b.pluggedIn && b.percent < s.prefs.lowPowerAt &&
             !b.lowPowerMode;
    case AlertKind::health:
      return b.designCapacity && b.fullCapacity && *b.fullCapacity * 100 < *b.designCapacity * 80;
  }
  return false;
}

class Timelines : public testing::TestWithParam<unsigned> {};

// An episode is a run of steps on which the condition holds; a primed episode stays silent.
TEST_P(Timelines, EachEpisodeAlertsAsOftenAsPromisedAndNoMore) {
  for (unsigned seed = 0; seed < 250; ++seed) {
    const auto steps = Timeline(GetParam() * 1000 + seed).play(300);
    for (const AlertKind kind :
         {AlertKind::chargeLimit, AlertKind::low, AlertKind::tooLong, AlertKind::lowPower}) {
      int sent = 0;
      bool silent = false;
      std::optional<Date> last;
      for (std::size_t i = 0; i < steps.size(); ++i) {
        const Step& step = steps[i];
        if (!conditionHolds(kind, step)) {
          sent = 0;
          silent = false;
        } else if (step.prime) {
          silent = true;
        }
        const int most = kind == AlertKind::chargeLimit && step.prefs.repeatReminder ? 4 : 1;
        const bool spaced = kind != AlertKind::chargeLimit || sent == 0 || step.now - *last >= 290;
        const bool due = conditionHolds(kind, step) && !silent && step.canDeliver && !step.prime &&
                         sent < most && spaced;
        const auto count = std::count_if(step.alerts.begin(), step.alerts.end(),
                                         [&](const auto& a) { return a.kind == kind; });
        ASSERT_EQ(count, due ? 1 : 0)
            << rawValue(kind) << " at step " << i << " of seed " << GetParam() * 1000 + seed;
        if (due) {
          ++sent;
          last = step.now;
        }
      }
    }
  }
}

TEST_P(Timelines, WornHealthIsAnnouncedOnceUntilItRecovered) {
  for (unsigned seed = 0; seed < 250; ++seed) {
    const auto steps = Timeline(GetParam() * 1000 + seed).play(300);
    bool known = false;
    for (const Step& step : steps) {
      const bool announced = std::any_of(step.alerts.begin(), step.alerts.end(),
                                         [](const auto& a) { return a.kind == AlertKind::health; });
      bool expected = false;
      if (step.state.hasBattery && step.state.fullCapacity) {
        if (conditionHolds(AlertKind::health, step)) {
          expected = !known && step.canDeliver && !step.prime;
          known = known || expected || step.prime;
        } else if (*step.state.fullCapacity * 100 >= *step.state.designCapacity * 82) {
          known = false;
        }
      }
      ASSERT_EQ(announced, expected) << "seed " << GetParam() * 1000 + seed;
    }
  }
}

TEST_P(Timelines, NoAlertIsDueWhilePrimingOrHeldBackOrWithoutABattery) {
  for (unsigned seed = 0; seed < 250; ++seed) {
    for (const Step& step : Timeline(GetParam() * 1000 + seed).play(300)) {
      if (step.prime || !step.canDeliver || !step.state.hasBattery) {
        ASSERT_TRUE(step.alerts.empty());
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Random, Timelines, testing::Values(1U, 2U, 3U, 4U));

}  // namespace
}  // namespace tollbeam

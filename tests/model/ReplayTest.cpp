// Replays recorded days through the whole model. Each tests/data/replay/NAME.trace has its exact
// outcome in NAME.expected: every published value, sample and alert with its time. A difference is
// printed, and the new text is written beside the old as NAME.expected.new.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "history/HistoryCsv.h"
#include "model/AppModel.h"
#include "recorded/RecordedPlatform.h"
#include "recorded/Trace.h"
#include "support/ModelPorts.h"

namespace tollbeam {
namespace {

namespace fs = std::filesystem;

std::string read(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::string timeText(Date date) {
  const std::string csv = csvText(std::vector<Sample>{{date.secondsSince1970, 0, false, false}});
  const auto line = csv.find('\n') + 1;
  return csv.substr(line, csv.find(',', line) - line);
}

std::string optionalTime(std::optional<Date> date) { return date ? timeText(*date) : "none"; }

class Replay {
 public:
  explicit Replay(const std::vector<TraceStep>& steps)
      : platform_(steps.front().at), steps_(steps) {}

  std::string run() {
    take(steps_.front());
    AppModel model(test::modelPorts(platform_));
    observe(model);
    model.start();
    report(model);
    for (std::size_t i = 1; i < steps_.size(); ++i) {
      // Step by step, so that each change of the posted list is told at its own time.
      while (platform_.clock.now() < steps_[i].at) {
        const Date next = std::min(steps_[i].at, platform_.clock.now() + 1);
        platform_.mainQueue.advanceTo(next);
        report(model);
      }
      take(steps_[i]);
      act(model, steps_[i].action);
      platform_.mainQueue.drain();
      report(model);
    }
    return out_.str();
  }

 private:
  void take(const TraceStep& step) {
    if (step.table) platform_.powerSources.table = *step.table;
    if (step.smartBattery) platform_.powerSources.properties = *step.smartBattery;
    if (step.lowPowerMode) platform_.processInfo.lowPowerMode = *step.lowPowerMode;
    for (const auto& [key, value] : step.set) platform_.userDefaults.set(key, value);
  }

  void act(AppModel& model, const std::string& action) {
    if (action == "event") platform_.powerSources.changes.notify();
    if (action == "powerState") platform_.processInfo.changes.notify();
    if (action == "willSleep") platform_.workspace.willSleep.notify();
    if (action == "didWake") platform_.workspace.didWake.notify();
    if (action == "openPopover") model.refresh(AppModel::Reason::event);
    if (action == "quit") model.history().save(platform_.clock.now());
    if (action == "snooze") {
      if (const auto delegate = platform_.notificationCenter.delegate.lock()) {
        delegate->didReceiveNotificationResponse("SNOOZE", [] {});
      }
    }
  }

  void observe(AppModel& model) {
    QObject::connect(&model, &AppModel::stateChanged, &model, [&] {
      const BatteryState& s = model.state();
      say("state " + std::to_string(s.percent) + "% " + s.stateText().text() +
          (s.lowPowerMode ? ", Low Power Mode" : ""));
    });
    QObject::connect(&model, &AppModel::pluggedSinceChanged, &model,
                     [&] { say("pluggedSince " + optionalTime(model.pluggedSince())); });
    QObject::connect(&model, &AppModel::snoozeUntilChanged, &model,
                     [&] { say("snoozeUntil " + optionalTime(model.snoozeUntil())); });
  }

  void report(AppModel& model) {
    const auto& samples = model.history().samples();
    for (; samples_ < samples.size(); ++samples_) {
      const Sample& s = samples[samples_];
      char text[80];
      std::snprintf(text, sizeof text, "sample %s %lld%%%s%s", timeText({s.t}).c_str(),
                    static_cast<long long>(s.p), s.c ? " charging" : "", s.a ? " plugged in" : "");
      out_ << text << '\n';
    }
    for (; posted_ < platform_.notificationCenter.posted.size(); ++posted_) {
      const auto& request = platform_.notificationCenter.posted[posted_];
      say("alert " + request.identifier + ": " + request.content.title.text() + " | " +
          request.content.body.text());
    }
    for (; removed_ < platform_.notificationCenter.removed.size(); ++removed_) {
      say("withdrawn " + platform_.notificationCenter.removed[removed_]);
    }
    if (platform_.fileManager.writes != writes_) {
      writes_ = platform_.fileManager.writes;
      say("saved");
    }
  }

  void say(const std::string& line) {
    out_ << timeText(platform_.clock.now()) << ' ' << line << '\n';
  }

  RecordedPlatform platform_;
  const std::vector<TraceStep>& steps_;
  std::ostringstream out_;
  std::size_t samples_ = 0;
  std::size_t posted_ = 0;
  std::size_t removed_ = 0;
  int writes_ = 0;
};

TEST(Replay, RecordedDaysHaveTheirGoldenOutcome) {
  int traces = 0;
  for (const auto& entry : fs::directory_iterator(fs::path(TOLLBEAM_TEST_DATA) / "replay")) {
    if (entry.path().extension() != ".trace") continue;
    ++traces;
    SCOPED_TRACE(entry.path().filename().string());
    const auto steps = readTrace(read(entry.path()));
    ASSERT_TRUE(steps && !steps->empty()) << "damaged trace";
    const std::string outcome = Replay(*steps).run();
    EXPECT_EQ(outcome, Replay(*steps).run()) << "the same day twice has the same outcome";
    auto expected = entry.path();
    expected.replace_extension(".expected");
    if (outcome != read(expected)) {
      std::ofstream(expected.string() + ".new", std::ios::binary) << outcome;
      EXPECT_EQ(outcome, read(expected));
    }
  }
  EXPECT_GT(traces, 0);
}

TEST(Trace, RejectsADamagedTrace) {
  EXPECT_TRUE(readTrace("{\"t\":1}\n\n{\"t\":1,\"do\":\"event\"}\n"));
  for (const char* text : {"{", "[]", "{\"table\":[]}", "{\"t\":2}\n{\"t\":1}", "{\"t\":1,\"x\":1}",
                           "{\"t\":1,\"table\":{}}", "{\"t\":1,\"smartBattery\":[]}",
                           "{\"t\":1,\"lowPowerMode\":1}", "{\"t\":\"1\"}"}) {
    EXPECT_FALSE(readTrace(text)) << text;
  }
}

}  // namespace
}  // namespace tollbeam

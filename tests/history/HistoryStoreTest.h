// A history on recorded files, for the tests of its parts.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "history/HistoryJson.h"
#include "history/HistoryStore.h"
#include "recorded/RecordedPlatform.h"

namespace tollbeam {

inline constexpr Date kNow{1'700'000'000};
inline constexpr const char* kFile = "/support/Tollbeam/history.json";

class HistoryStoreTest : public testing::Test {
 protected:
  HistoryStore& load(const std::string& text) {
    files.files[kFile] = text;
    return store.emplace(files, kNow);
  }
  HistoryStore& fresh() { return store.emplace(files, kNow); }
  /// A history of samples `seconds` before kNow, plugged in unless negated.
  HistoryStore& withRun(const std::vector<std::pair<double, bool>>& run) {
    std::string text = "[";
    for (const auto& [age, plugged] : run) {
      if (text.size() > 1) text += ",";
      text += R"({"t":)" + std::to_string(kNow.secondsSince1970 - age) +
              R"(,"p":50,"c":false,"a":)" + (plugged ? "true}" : "false}");
    }
    return load(text + "]");
  }

  /// What the store keeps beside its file: text by suffix.
  [[nodiscard]] std::map<std::string, std::string> kept() const {
    std::map<std::string, std::string> texts;
    for (const auto& [path, text] : files.files) {
      if (path != kFile) texts[path.substr(std::string(kFile).size())] = text;
    }
    return texts;
  }

  RecordedFileManager files;
  std::optional<HistoryStore> store;
};

using Kept = std::map<std::string, std::string>;

/// A file of `count` samples, one a minute, the newest `age` seconds before kNow.
inline std::string monthOf(int count, double age = 60) {
  std::vector<Sample> samples;
  for (int i = count; i > 0; --i) {
    samples.push_back({.t = kNow.secondsSince1970 - age - 60 * (i - 1), .p = i % 101});
  }
  return *encodeSamples(samples);
}

}  // namespace tollbeam

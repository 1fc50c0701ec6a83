#include "platform/freedesktop/defaults/JsonUserDefaults.h"

#include <chrono>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/freedesktop/defaults/ValueJson.h"
#include "platform/freedesktop/files/SetAside.h"
#include "platform/freedesktop/files/UserFolders.h"

namespace tollbeam {

namespace {

namespace fs = std::filesystem;

// An editor that writes in place shows half a file for a moment: it is damaged only if it stays so.
constexpr auto kDamageTimeout = std::chrono::seconds(1);

Dictionary overlaid(Dictionary base, const Dictionary& over) {
  for (const auto& [key, value] : over) base.insert_or_assign(key, value);
  return base;
}

}  // namespace

JsonUserDefaults::JsonUserDefaults(FileManager& files, std::optional<std::string> path)
    : files_(files), path_(std::move(path)) {
  if (!path_) return;
  damageTimer_.setSingleShot(true);
  damageTimer_.setInterval(kDamageTimeout);
  damageTimer_.callOnTimeout([this] { takeOver(readOrSetAside()); });
  // While the folder is missing the one above is watched, and every other program's files in it
  // would wake us.
  createFolder();
  // Watched before it is read: a change in between is read twice rather than missed.
  watch_ = std::make_unique<FileWatch>(*path_, [this] { synchronize(); });
  values_ = readOrSetAside().value_or(Dictionary{});
}

JsonUserDefaults::~JsonUserDefaults() {
  if (path_ && !unsaved_.empty()) takeOver(readOrSetAside());
}

std::optional<std::string> JsonUserDefaults::defaultPath() {
  if (auto folder = configHome()) return *folder + "/Tollbeam/preferences.json";
  return std::nullopt;
}

const Value* JsonUserDefaults::stored(std::string_view key) const {
  const Value* value = find(values_, key);
  return value && !value->isNull() ? value : nullptr;
}

Subscription JsonUserDefaults::onChange(std::function<void()> changed) {
  return observers_.add(std::move(changed));
}

void JsonUserDefaults::set(std::string_view key, Value value) {
  // The value counts as the file will give it back. One that no file can hold, such as a number
  // that is not finite, is not taken.
  auto asStored = dictionaryFromJson(toJson({{std::string(key), std::move(value)}}));
  if (!asStored || asStored->empty()) return;
  unsaved_ = overlaid(std::move(unsaved_), *asStored);
  if (path_) synchronize();
  adopt(values_);
}

void JsonUserDefaults::createFolder() {
  files_.createDirectory(fs::path(*path_).parent_path().string());
}

JsonUserDefaults::Stored JsonUserDefaults::read() const {
  const auto bytes = files_.contents(*path_);
  if (bytes) {
    const auto values = dictionaryFromJson(*bytes);
    return {.isDamaged = !values, .values = values};
  }
  std::error_code error;
  const bool isMissing = fs::status(*path_, error).type() == fs::file_type::not_found;
  return {.values = isMissing ? std::optional(Dictionary()) : std::nullopt};
}

std::optional<Dictionary> JsonUserDefaults::readOrSetAside() {
  Stored file = read();
  return file.isDamaged && setAside(*path_) ? Dictionary() : std::move(file.values);
}

void JsonUserDefaults::synchronize() {
  const Stored file = read();
  if (!file.isDamaged) {
    damageTimer_.stop();
    takeOver(file.values);
  } else if (!damageTimer_.isActive()) {
    damageTimer_.start();
  }
}

void JsonUserDefaults::takeOver(const std::optional<Dictionary>& stored) {
  if (!stored) return;
  Dictionary values = overlaid(*stored, unsaved_);
  if (values == *stored) {
    unsaved_.clear();
  } else {
    createFolder();
    if (!files_.write(*path_, toJson(values))) unsaved_.clear();
    watch_->rearm();
  }
  adopt(std::move(values));
}

void JsonUserDefaults::adopt(Dictionary values) {
  values = overlaid(std::move(values), unsaved_);
  if (values == values_) return;
  values_ = std::move(values);
  if (std::exchange(isNotifying_, true)) return;
  // From the event loop, so that a caller who sets several values is notified once, after them.
  QMetaObject::invokeMethod(
      &context_,
      [this] {
        isNotifying_ = false;
        observers_.notify();
      },
      Qt::QueuedConnection);
}

}  // namespace tollbeam

#include "platform/freedesktop/defaults/JsonUserDefaults.h"

#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <utility>

#include "platform/freedesktop/defaults/ValueJson.h"
#include "platform/freedesktop/files/Links.h"
#include "platform/freedesktop/files/SetAside.h"
#include "platform/freedesktop/files/UserFolders.h"

namespace tollbeam {

namespace {

// An editor that writes in place shows half a file for a moment: it is damaged only if it stays so.
constexpr auto kDamageStands = std::chrono::seconds(1);

bool isMissing(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

Dictionary overlaid(Dictionary base, const Dictionary& over) {
  for (const auto& [key, value] : over) base.insert_or_assign(key, value);
  return base;
}

}  // namespace

JsonUserDefaults::JsonUserDefaults(FileManager& files, std::optional<std::string> path)
    : files_(files), path_(std::move(path)) {
  if (!path_) return;
  damageStands_.setSingleShot(true);
  damageStands_.setInterval(kDamageStands);
  damageStands_.callOnTimeout([this] { takeOver(readOrSetAside()); });
  // While the folder is missing the one above is watched, and every other program's files in it
  // would wake us.
  files_.createDirectory(withoutFinalSlash(folderOf(*path_)));
  // Watched before it is read: a change in between is read twice rather than missed.
  watch_ = std::make_unique<FileWatch>(*path_, [this] { synchronize(); });
  values_ = readOrSetAside().values;
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
  // What the file will answer is what counts from now on. A value that no file can hold, such as
  // a number that is not finite, is not taken.
  auto asStored = dictionaryFromJson(toJson({{std::string(key), std::move(value)}}));
  if (!asStored || asStored->empty()) return;
  unsaved_ = overlaid(std::move(unsaved_), *asStored);
  if (path_) synchronize();
  adopt(values_);
}

JsonUserDefaults::Stored JsonUserDefaults::read() const {
  const auto bytes = files_.contents(*path_);
  if (!bytes) return {isMissing(*path_) ? State::missing : State::unreadable, {}};
  auto values = dictionaryFromJson(*bytes);
  if (!values) return {State::damaged, {}};
  return {State::good, std::move(*values)};
}

JsonUserDefaults::Stored JsonUserDefaults::readOrSetAside() {
  Stored file = read();
  if (file.state == State::damaged) {
    file.state = setAside(*path_) ? State::missing : State::unreadable;
  }
  return file;
}

void JsonUserDefaults::synchronize() {
  const Stored file = read();
  if (file.state == State::damaged) {
    if (!damageStands_.isActive()) damageStands_.start();
  } else {
    damageStands_.stop();
    takeOver(file);
  }
}

void JsonUserDefaults::takeOver(const Stored& file) {
  if (file.state == State::unreadable) return;
  Dictionary values = overlaid(file.values, unsaved_);
  if (values == file.values) {
    unsaved_.clear();
  } else {
    files_.createDirectory(withoutFinalSlash(folderOf(*path_)));
    if (!files_.write(*path_, toJson(values))) unsaved_.clear();
    watch_->rearm();
  }
  adopt(std::move(values));
}

void JsonUserDefaults::adopt(Dictionary values) {
  values = overlaid(std::move(values), unsaved_);
  if (values == values_) return;
  values_ = std::move(values);
  if (std::exchange(telling_, true)) return;
  // From the event loop, so that whoever sets a value has finished with it first.
  QMetaObject::invokeMethod(
      &context_,
      [this] {
        telling_ = false;
        observers_.notify();
      },
      Qt::QueuedConnection);
}

}  // namespace tollbeam

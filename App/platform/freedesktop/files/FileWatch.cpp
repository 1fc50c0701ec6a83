#include "platform/freedesktop/files/FileWatch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <deque>
#include <filesystem>
#include <system_error>
#include <utility>

namespace tollbeam {

namespace {

namespace fs = std::filesystem;

constexpr unsigned kItself = IN_DELETE_SELF | IN_MOVE_SELF;
constexpr unsigned kEntries =
    IN_CREATE | IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_ATTRIB;

constexpr auto kBurst = std::chrono::milliseconds(100);

// Folders can come and go while the watches are installed, which then is done again, but not for
// ever.
constexpr int kMostAttempts = 9;
constexpr int kMostLinks = 40;

}  // namespace

FileWatch::FileWatch(std::string path, std::function<void()> changed)
    : path_(std::move(path)), inotify_(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
  if (inotify_ < 0) return;
  settle_.setSingleShot(true);
  settle_.setInterval(kBurst);
  settle_.callOnTimeout(std::move(changed));
  notifier_ = std::make_unique<QSocketNotifier>(inotify_, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                   [this] { readEvents(); });
  rearm();
}

FileWatch::~FileWatch() {
  notifier_.reset();
  if (inotify_ >= 0) ::close(inotify_);
}

FileWatch::NamesByPlace FileWatch::namesToWatch() const {
  NamesByPlace places;
  fs::path folder;
  const fs::path whole = path_;
  std::deque<fs::path> rest(whole.begin(), whole.end());
  for (int links = 0; !rest.empty();) {
    const fs::path name = std::move(rest.front());
    rest.pop_front();
    // Only the root begins an absolute path or link.
    if (name == "/") folder = name;
    if (name == "..") folder = folder.parent_path();
    if (name == "/" || name == ".." || name == "." || name.empty()) continue;
    const fs::path path = folder / name;
    std::error_code error;
    const fs::path link = fs::read_symlink(path, error);
    const bool isLink = !error;
    if (isLink && links++ < kMostLinks) {
      places[path];
      if (rest.empty()) places[folder].insert(name);
      rest.insert(rest.begin(), link.begin(), link.end());
      continue;
    }
    if (rest.empty() || isLink || !fs::is_directory(path, error)) {
      places[folder].insert(name);
      break;
    }
    places[path];
    folder = path;
  }
  return places;
}

void FileWatch::rearm() {
  if (inotify_ < 0) return;
  NamesByPlace places;
  NamesByWatch watches;
  for (int i = 0; i < kMostAttempts; ++i) {
    NamesByPlace now = namesToWatch();
    if (now == places) break;
    places = std::move(now);
    for (const auto& [place, names] : places) {
      const unsigned mask = names.empty() ? kItself : kItself | kEntries;
      const int watch = ::inotify_add_watch(inotify_, place.c_str(), mask | IN_DONT_FOLLOW);
      if (watch >= 0) watches[watch].insert(names.begin(), names.end());
    }
  }
  for (const auto& [watch, names] : watches_) {
    if (!watches.contains(watch)) ::inotify_rm_watch(inotify_, watch);
  }
  watches_ = std::move(watches);
}

bool FileWatch::concernsFile(int watch, unsigned mask, const std::string& name) const {
  if (mask & IN_Q_OVERFLOW) return true;
  const auto names = watches_.find(watch);
  if (names == watches_.end()) return false;
  return (mask & (kItself | IN_IGNORED | IN_UNMOUNT)) || names->second.contains(name);
}

void FileWatch::readEvents() {
  bool changed = false;
  alignas(inotify_event) char buffer[4096];
  for (ssize_t length = 0; (length = ::read(inotify_, buffer, sizeof buffer)) > 0;) {
    for (const char* at = buffer; at < buffer + length;) {
      inotify_event event{};
      std::memcpy(&event, at, sizeof event);
      const std::string name(event.len ? at + sizeof event : "");
      changed = concernsFile(event.wd, event.mask, name) || changed;
      // The kernel has dropped this watch and may give its number to another folder.
      if (event.mask & IN_IGNORED) watches_.erase(event.wd);
      at += sizeof event + event.len;
    }
  }
  if (!changed) return;
  rearm();
  if (!settle_.isActive()) settle_.start();
}

}  // namespace tollbeam

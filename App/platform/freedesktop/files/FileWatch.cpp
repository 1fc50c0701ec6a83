#include "platform/freedesktop/files/FileWatch.h"

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <deque>
#include <sstream>
#include <utility>

#include "platform/freedesktop/files/Links.h"

namespace tollbeam {

namespace {

constexpr unsigned kItself = IN_DELETE_SELF | IN_MOVE_SELF;
constexpr unsigned kEntries =
    IN_CREATE | IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_ATTRIB;

constexpr auto kBurst = std::chrono::milliseconds(100);

// Folders can come and go while we look; then another look is due, but not for ever.
constexpr int kMostLooks = 8;
constexpr int kMostLinks = 40;

bool isFolder(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// The names that a path is made of.
std::deque<std::string> namesOf(const std::string& path) {
  std::deque<std::string> names;
  std::istringstream text(path);
  for (std::string name; std::getline(text, name, '/');) {
    if (!name.empty() && name != ".") names.push_back(std::move(name));
  }
  return names;
}

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

FileWatch::NamesByPlace FileWatch::wanted() const {
  NamesByPlace places;
  std::string folder = "/";
  std::deque<std::string> rest = namesOf(path_);
  int links = 0;
  while (!rest.empty()) {
    const std::string name = std::move(rest.front());
    rest.pop_front();
    if (name == "..") {
      folder = withoutFinalSlash(folderOf(folder));
      continue;
    }
    const std::string path = (folder == "/" ? "" : folder) + '/' + name;
    const auto link = nextLink(path);
    if (link && links++ < kMostLinks) {
      places[path];
      if (rest.empty()) places[folder].insert(name);
      const auto steps = namesOf(*link);
      rest.insert(rest.begin(), steps.begin(), steps.end());
      // An absolute one; a relative one comes as the link's own folder and the text.
      folder = "/";
      continue;
    }
    if (rest.empty() || link || !isFolder(path)) {
      places[folder].insert(name);
      break;
    }
    places[path];
    folder = path;
  }
  return places;
}

FileWatch::NamesByWatch FileWatch::install(const NamesByPlace& places) const {
  NamesByWatch watches;
  for (const auto& [place, names] : places) {
    const unsigned mask = names.empty() ? kItself : kItself | kEntries;
    const int watch = ::inotify_add_watch(inotify_, place.c_str(), mask | IN_DONT_FOLLOW);
    if (watch >= 0) watches[watch].insert(names.begin(), names.end());
  }
  return watches;
}

void FileWatch::rearm() {
  if (inotify_ < 0) return;
  NamesByPlace places = wanted();
  NamesByWatch watches = install(places);
  for (int i = 0; i < kMostLooks; ++i) {
    NamesByPlace now = wanted();
    if (now == places) break;
    places = std::move(now);
    for (const auto& [watch, names] : install(places)) {
      watches[watch].insert(names.begin(), names.end());
    }
  }
  for (const auto& [watch, names] : watches_) {
    if (!watches.contains(watch)) ::inotify_rm_watch(inotify_, watch);
  }
  watches_ = std::move(watches);
}

bool FileWatch::concerns(int watch, unsigned mask, const std::string& name) const {
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
      changed = concerns(event.wd, event.mask, name) || changed;
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

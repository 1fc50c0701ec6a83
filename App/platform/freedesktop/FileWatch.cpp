#include "platform/freedesktop/FileWatch.h"

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <utility>

#include "platform/freedesktop/Links.h"

namespace tollbeam {

namespace {

constexpr unsigned kFolderItself = IN_DELETE_SELF | IN_MOVE_SELF | IN_IGNORED | IN_UNMOUNT;
constexpr unsigned kEntries =
    IN_CREATE | IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_ATTRIB;

constexpr auto kBurst = std::chrono::milliseconds(100);

// Folders can come and go while we look; then another look is due, but not for ever.
constexpr int kMostLooks = 8;
constexpr int kMostLinks = 40;

bool isFolder(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
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

FileWatch::NamesByFolder FileWatch::wanted() const {
  NamesByFolder names;
  std::string path = path_;
  for (int i = 0; i < kMostLinks; ++i) {
    std::string folder = withoutFinalSlash(folderOf(path));
    std::string name = nameOf(path);
    const bool reachable = isFolder(folder);
    while (!isFolder(folder) && folder.size() > 1) {
      name = nameOf(folder);
      folder = withoutFinalSlash(folderOf(folder));
    }
    names[folder].insert(name);
    auto next = reachable ? nextLink(path) : std::nullopt;
    if (!next) break;
    path = std::move(*next);
  }
  return names;
}

FileWatch::NamesByWatch FileWatch::install(const NamesByFolder& folders) const {
  NamesByWatch watches;
  for (const auto& [folder, names] : folders) {
    const int watch = ::inotify_add_watch(inotify_, folder.c_str(),
                                          IN_ONLYDIR | kEntries | IN_DELETE_SELF | IN_MOVE_SELF);
    if (watch >= 0) watches[watch].insert(names.begin(), names.end());
  }
  return watches;
}

void FileWatch::rearm() {
  if (inotify_ < 0) return;
  NamesByFolder folders = wanted();
  NamesByWatch watches = install(folders);
  for (int i = 0; i < kMostLooks; ++i) {
    NamesByFolder now = wanted();
    if (now == folders) break;
    folders = std::move(now);
    for (const auto& [watch, names] : install(folders)) {
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
  return (mask & kFolderItself) || names->second.contains(name);
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

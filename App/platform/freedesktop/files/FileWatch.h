// Reports when a file may have changed, by any program and in any way: written in place, replaced,
// deleted, any folder above it renamed, deleted or made again, any symbolic link on the way pointed
// elsewhere. A burst of changes is reported once.
//
// The folder of the file is watched rather than the file, because a replaced file is another file;
// changes of other files in it wake the program but are not reported. Folders further up and links
// are watched only for their own renaming and removal, so that changes inside them do not wake the
// program. Main thread only.
#pragma once

#include <QSocketNotifier>
#include <QTimer>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>

namespace tollbeam {

class FileWatch {
 public:
  /// `path` is absolute. `changed` is called from the event loop; never where the system has no
  /// watches left.
  FileWatch(std::string path, std::function<void()> changed);
  FileWatch(const FileWatch&) = delete;
  FileWatch& operator=(const FileWatch&) = delete;
  ~FileWatch();

  /// Follows the path to the file again. For a caller that has just made its folder and cannot wait
  /// for the event.
  void rearm();

 private:
  /// Which names matter in which folder. Without names, only the folder or the link itself matters.
  using NamesByPlace = std::map<std::string, std::set<std::string>>;
  /// The same, by the kernel's number of the watch.
  using NamesByWatch = std::map<int, std::set<std::string>>;

  [[nodiscard]] NamesByPlace namesToWatch() const;
  [[nodiscard]] bool concernsFile(int watch, unsigned mask, const std::string& name) const;
  void readEvents();

  std::string path_;
  int inotify_;
  NamesByWatch watches_;
  QTimer settle_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tollbeam

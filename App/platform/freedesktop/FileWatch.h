// Tells when a file may have changed, whoever changed it and however: written in place, replaced,
// deleted, its folder deleted and made again, the target of a symbolic link. Bursts are told once.
// The folders are watched rather than the file, because a replaced file is another file; changes of
// other files in them wake the program but are not told. Main thread only.
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
  /// `changed` is called from the event loop. Where the system has no more watches to give it is
  /// never called.
  FileWatch(std::string path, std::function<void()> changed);
  FileWatch(const FileWatch&) = delete;
  FileWatch& operator=(const FileWatch&) = delete;
  ~FileWatch();

  /// Looks again where the file is. For whoever just made its folder and does not want to wait for
  /// the news of it.
  void rearm();

 private:
  /// Which names matter, by folder and by the kernel's number of its watch.
  using NamesByFolder = std::map<std::string, std::set<std::string>>;
  using NamesByWatch = std::map<int, std::set<std::string>>;

  [[nodiscard]] NamesByFolder wanted() const;
  [[nodiscard]] NamesByWatch install(const NamesByFolder& folders) const;
  [[nodiscard]] bool concerns(int watch, unsigned mask, const std::string& name) const;
  void readEvents();

  std::string path_;
  int inotify_;
  NamesByWatch watches_;
  QTimer settle_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tollbeam

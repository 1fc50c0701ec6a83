#include "platform/freedesktop/files/FolderLock.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <thread>

#include "support/Sandbox.h"

namespace tollbeam {

namespace {

using std::chrono::milliseconds;
using test::Folder;

/// A process that takes the lock and holds it until it is killed.
class Holder {
 public:
  explicit Holder(const std::string& folder) {
    std::array<int, 2> ready{};
    if (::pipe(ready.data()) != 0) std::abort();
    process_ = ::fork();
    if (process_ == 0) {
      FolderLock lock;
      const char taken = lock.take(folder, milliseconds(0)) ? 'y' : 'n';
      if (::write(ready[1], &taken, 1) != 1) ::_exit(1);
      while (true) ::pause();
    }
    char taken = 'n';
    hasLock = ::read(ready[0], &taken, 1) == 1 && taken == 'y';
    ::close(ready[0]);
    ::close(ready[1]);
  }
  Holder(const Holder&) = delete;
  Holder& operator=(const Holder&) = delete;
  ~Holder() { kill(); }

  void kill() {
    if (process_ < 0) return;
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
    process_ = -1;
  }

  bool hasLock = false;

 private:
  pid_t process_;
};

bool isFree(const std::string& folder) { return FolderLock().take(folder, milliseconds(0)); }

}  // namespace

TEST(FolderLock, IsHeldByOneProcessAtATime) {
  const Folder folder;
  const Folder other;
  const Holder holder(folder.path());
  EXPECT_TRUE(holder.hasLock);
  EXPECT_FALSE(isFree(folder.path()));
  EXPECT_TRUE(isFree(other.path()));
  EXPECT_TRUE(folder.names().empty());
}

TEST(FolderLock, IsReleasedWhenItsProcessIsKilled) {
  const Folder folder;
  Holder holder(folder.path());
  holder.kill();
  EXPECT_TRUE(isFree(folder.path()));
}

TEST(FolderLock, IsReleasedWhenItsObjectEnds) {
  const Folder folder;
  for (int i = 0; i < 2; ++i) {
    FolderLock lock;
    EXPECT_TRUE(lock.take(folder.path(), milliseconds(0)));
    EXPECT_FALSE(isFree(folder.path()));
  }
}

TEST(FolderLock, WaitsForAProcessThatIsAboutToEnd) {
  const Folder folder;
  Holder holder(folder.path());
  std::thread end([&] { holder.kill(); });
  EXPECT_TRUE(FolderLock().take(folder.path(), std::chrono::minutes(1)));
  end.join();
}

TEST(FolderLock, IsTakenWhereLocksDoNotWork) {
  const Folder folder;
  EXPECT_TRUE(isFree(folder / "missing"));
}

}  // namespace tollbeam

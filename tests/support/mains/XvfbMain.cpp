// A main for tests that need a real X server: each process gets an Xvfb of its own, which ends with
// it. Without Xvfb the tests fail rather than pass unseen.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

class Xvfb {
 public:
  Xvfb() {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) std::abort();
    pid_ = fork();
    if (pid_ == 0) {
      prctl(PR_SET_PDEATHSIG, SIGTERM);
      dup2(ends[1], 3);
      // It complains of display numbers that are taken, and then takes the next.
      if (std::freopen("/dev/null", "w", stderr) == nullptr) _exit(127);
      execlp("Xvfb", "Xvfb", "-displayfd", "3", "-screen", "0", "640x480x24", "-nolisten", "tcp",
             "-noreset", nullptr);
      _exit(127);
    }
    close(ends[1]);
    char digit = 0;
    while (read(ends[0], &digit, 1) == 1 && digit != '\n') display_ += digit;
    close(ends[0]);
  }
  Xvfb(const Xvfb&) = delete;
  Xvfb& operator=(const Xvfb&) = delete;
  ~Xvfb() {
    kill(pid_, SIGTERM);
    waitpid(pid_, nullptr, 0);
  }

  [[nodiscard]] const std::string& display() const { return display_; }

 private:
  pid_t pid_ = -1;
  std::string display_;
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
  const Xvfb server;
  if (server.display().empty()) {
    std::fputs("Xvfb did not start\n", stderr);
    return 1;
  }
  setenv("DISPLAY", (":" + server.display()).c_str(), 1);
  setenv("QT_QPA_PLATFORM", "xcb", 1);
  const QApplication app(argc, argv);
  return RUN_ALL_TESTS();
}

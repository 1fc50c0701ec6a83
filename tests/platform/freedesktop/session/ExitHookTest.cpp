#include "platform/freedesktop/session/ExitHook.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace tollbeam {
namespace {

using testing::ExitedWithCode;

void save() { std::fputs("saved.", stderr); }

// As a library of a toolkit finds it.
void exitAtOnce(int status) {
  reinterpret_cast<void (*)(int)>(::dlsym(RTLD_DEFAULT, "_exit"))(status);
}

TEST(ExitHookDeathTest, RunsOnceWhenAToolkitCallsExit) {
  EXPECT_EXIT(
      {
        const ExitHook hook(save);
        std::exit(3);
      },
      ExitedWithCode(3), "^saved\\.$");
}

TEST(ExitHookDeathTest, RunsOnceWhenAToolkitCallsUnderscoreExit) {
  EXPECT_EXIT(
      {
        const ExitHook hook(save);
        exitAtOnce(4);
      },
      ExitedWithCode(4), "^saved\\.$");
}

TEST(ExitHookDeathTest, RunsOnceWhenTheActionItselfExits) {
  EXPECT_EXIT(
      {
        const ExitHook hook([] {
          save();
          exitAtOnce(5);
        });
        std::exit(3);
      },
      ExitedWithCode(5), "^saved\\.$");
}

TEST(ExitHookDeathTest, DoesNothingAfterTheOrdinaryEnd) {
  EXPECT_EXIT(
      {
        { const ExitHook hook(save); }
        std::exit(0);
      },
      ExitedWithCode(0), "^$");
}

TEST(ExitHookDeathTest, RunsOnTheMainThreadWhenAnotherThreadExits) {
  for (const auto& end : {exitAtOnce, +[](int status) { std::exit(status); }}) {
    EXPECT_EXIT(
        {
          const auto main = std::this_thread::get_id();
          const ExitHook hook([main] {
            if (std::this_thread::get_id() == main) save();
          });
          std::thread(end, 6).detach();
          QCoreApplication::exec();
        },
        ExitedWithCode(6), "^saved\\.$");
  }
}

TEST(ExitHookDeathTest, DoesNothingInAForkedChild) {
  EXPECT_EXIT(
      {
        const ExitHook hook(save);
        const pid_t child = ::fork();
        if (child == 0) exitAtOnce(0);
        ::waitpid(child, nullptr, 0);
        std::fputs("child gone.", stderr);
        std::exit(0);
      },
      ExitedWithCode(0), "^child gone\\.saved\\.$");
}

}  // namespace
}  // namespace tollbeam

// tollbeam-sound file PATH | event NAME...: plays one sound, of several names the first that the
// sound theme has, and ends with it. Exit code 0: it was played to its end.
#include <canberra.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <latch>
#include <string_view>
#include <vector>

namespace {

// A sound server that does not answer in this time is given up: a late alert sound only confuses.
constexpr unsigned kSecondsToBegin = 5;
constexpr unsigned kSecondsToEnd = 60;

struct Playing {
  std::latch ended{1};
  std::atomic<int> result = CA_ERROR_INTERNAL;
};

// Signals that the parent process had blocked stay blocked over exec, the alarm among them.
void unblockSignals() {
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
}

// On a thread of the sound library.
void onEnd(ca_context* /*context*/, std::uint32_t /*id*/, int error, void* data) {
  auto& playing = *static_cast<Playing*>(data);
  playing.result = error;
  playing.ended.count_down();
}

struct Sound {
  const char* property;
  /// Of the property, the preferred one first.
  std::vector<const char*> values;
};

/// Begins to play the first value that is found. The library's result for the last one tried.
int begin(ca_context* context, const Sound& sound, Playing& playing) {
  int result = CA_ERROR_NOTFOUND;
  for (const char* value : sound.values) {
    ca_proplist* properties = nullptr;
    result = ca_proplist_create(&properties);
    if (result != CA_SUCCESS) break;
    ca_proplist_sets(properties, sound.property, value);
    result = ca_context_play_full(context, 1, properties, onEnd, &playing);
    ca_proplist_destroy(properties);
    if (result == CA_SUCCESS || result == CA_ERROR_NOTAVAILABLE) break;
  }
  return result;
}

/// `driver`: null for the one that the library prefers.
int play(const char* driver, const Sound& sound) {
  ca_context* context = nullptr;
  if (const int result = ca_context_create(&context); result != CA_SUCCESS) return result;
  if (driver) ca_context_set_driver(context, driver);
  // Our own theme inherits the usual one, so that names of both are found where it is installed.
  ca_context_change_props(context, CA_PROP_APPLICATION_NAME, "Tollbeam", CA_PROP_APPLICATION_ID,
                          "org.tollbeam.Tollbeam", CA_PROP_APPLICATION_ICON_NAME,
                          "org.tollbeam.Tollbeam", CA_PROP_CANBERRA_XDG_THEME_NAME, "tollbeam",
                          nullptr);
  Playing playing;
  ::alarm(kSecondsToBegin);
  int result = begin(context, sound, playing);
  if (result == CA_SUCCESS) {
    ::alarm(kSecondsToEnd);
    playing.ended.wait();
    result = playing.result;
  }
  ca_context_destroy(context);
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view kind = argc > 2 ? argv[1] : "";
  if (kind != "file" && kind != "event") return EXIT_FAILURE;
  const Sound sound{kind == "file" ? CA_PROP_MEDIA_FILENAME : CA_PROP_EVENT_ID,
                    {argv + 2, argv + argc}};
  unblockSignals();
  int result = play(nullptr, sound);
  // The library prefers a sound server, and tries nothing else when there is none.
  if (result == CA_ERROR_NOTAVAILABLE && !std::getenv("CANBERRA_DRIVER")) {
    result = play("alsa", sound);
  }
  return result == CA_SUCCESS ? EXIT_SUCCESS : EXIT_FAILURE;
}

// tollbeam-sound file PATH | event NAME...: plays one sound, of several names the first that the
// sound theme has, and ends with it. Exit code 0: it was played to its end.
#include <canberra.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <latch>
#include <string_view>

namespace {

// A sound server that does not answer in this time is left alone: late alert sounds only puzzle.
constexpr unsigned kSecondsToBegin = 5;
constexpr unsigned kSecondsToEnd = 60;

struct Playing {
  std::latch ended{1};
  std::atomic<bool> wholly = false;
};

// On a thread of the sound library.
void onEnd(ca_context* /*context*/, std::uint32_t /*id*/, int error, void* data) {
  auto& playing = *static_cast<Playing*>(data);
  playing.wholly = error == CA_SUCCESS;
  playing.ended.count_down();
}

bool begin(ca_context* context, const char* property, const char* value, Playing& playing) {
  ca_proplist* what = nullptr;
  if (ca_proplist_create(&what) != CA_SUCCESS) return false;
  ca_proplist_sets(what, property, value);
  const bool begun = ca_context_play_full(context, 1, what, onEnd, &playing) == CA_SUCCESS;
  ca_proplist_destroy(what);
  return begun;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view kind = argc > 2 ? argv[1] : "";
  if (kind != "file" && kind != "event") return EXIT_FAILURE;
  ::alarm(kSecondsToBegin);
  ca_context* context = nullptr;
  if (ca_context_create(&context) != CA_SUCCESS) return EXIT_FAILURE;
  // Our own theme leads on to the usual one, so that names of both are found where it is installed.
  ca_context_change_props(context, CA_PROP_APPLICATION_NAME, "Tollbeam", CA_PROP_APPLICATION_ID,
                          "org.tollbeam.Tollbeam", CA_PROP_APPLICATION_ICON_NAME,
                          "org.tollbeam.Tollbeam", CA_PROP_CANBERRA_XDG_THEME_NAME, "tollbeam",
                          nullptr);
  Playing playing;
  bool begun = false;
  const char* property = kind == "file" ? CA_PROP_MEDIA_FILENAME : CA_PROP_EVENT_ID;
  for (int i = 2; i < argc && !begun; ++i) begun = begin(context, property, argv[i], playing);
  if (begun) {
    ::alarm(kSecondsToEnd);
    playing.ended.wait();
  }
  ca_context_destroy(context);
  return playing.wholly ? EXIT_SUCCESS : EXIT_FAILURE;
}

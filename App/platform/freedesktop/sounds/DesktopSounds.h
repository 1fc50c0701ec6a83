// Sounds on a freedesktop system. Our own are files of the bundle, so that they need no
// installation; every other name is looked up in the desktop's sound theme.
//
// They are played by a program of their own, tollbeam-sound, which lives as long as the sound: the
// libraries of a sound server would keep memory, hang with the server and abort on errors. Starting
// it takes this process under 1 ms.
#pragma once

#include <optional>
#include <string>

#include "platform/SystemSounds.h"

namespace tollbeam {

/// The name that sound themes give to the sound of a message that just came. The notification
/// protocol gives it as the example for its sound hint, and every common sound theme has it.
inline constexpr const char* kDefaultSoundEvent = "message-new-instant";

class DesktopSounds final : public SystemSounds {
 public:
  /// `player`: the path of tollbeam-sound. `theme`: the folder of our sound theme. Without either
  /// the sounds are missing.
  DesktopSounds(std::string player, std::string theme);

  void play(const std::string& name) override;
  void playDefault() override;

  /// The file of one of our own sounds; absent for any other name.
  [[nodiscard]] std::optional<std::string> fileOf(const std::string& name) const;

 private:
  std::string player_;
  std::string theme_;
};

}  // namespace tollbeam

// Sounds on a freedesktop system. Ours are files of the bundle, so that they are there without
// being installed; every other name is looked up in the desktop's sound theme.
//
// They are played by a program of their own, tollbeam-sound, which lives as long as the sound: the
// libraries of a sound server would stay in our memory for ever after the first sound (0.9 MB
// beside the 2.4 MB of the whole program), connecting to a server that hangs never returns, and
// their failed assertions end the process they are in. Starting it takes this one under 1 ms.
#pragma once

#include <optional>
#include <string>

#include "platform/SystemSounds.h"

namespace tollbeam {

class DesktopSounds final : public SystemSounds {
 public:
  /// `player`: the path of tollbeam-sound. `theme`: the folder of our sound theme. Neither need be
  /// there.
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

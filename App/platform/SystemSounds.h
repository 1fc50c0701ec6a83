// Sounds by name, as alerts make them: the program's own and those of the desktop's sound theme.
// Asked for and forgotten: nothing tells whether there was anything to hear. A name that nobody
// knows is silent, and so is a machine that cannot play.
#pragma once

#include <string>

namespace tollbeam {

class SystemSounds {
 public:
  SystemSounds() = default;
  SystemSounds(const SystemSounds&) = delete;
  SystemSounds& operator=(const SystemSounds&) = delete;
  virtual ~SystemSounds() = default;

  /// Begins to play the sound once, over any that still plays, and returns without waiting for it.
  /// "default" and "none" are settings, and no names here.
  virtual void play(const std::string& name) = 0;

  /// The same with the desktop's own notification sound.
  virtual void playDefault() = 0;
};

}  // namespace tollbeam

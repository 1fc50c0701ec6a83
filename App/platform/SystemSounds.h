#pragma once

#include <string>

#include "platform/Port.h"

namespace tollbeam {

/// Sounds by name: the program's own and those of the desktop's sound theme. A failure is quiet: an
/// unknown name is silent, and so is a machine that cannot play.
class SystemSounds : public Port {
 public:
  /// Begins to play the sound once, beside any that still plays, and returns without waiting for
  /// it. The settings "default" and "none" are no names here.
  virtual void play(const std::string& name) = 0;

  /// The same with the desktop's own notification sound.
  virtual void playDefault() = 0;
};

}  // namespace tollbeam

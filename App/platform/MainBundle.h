#pragma once

#include <optional>
#include <string>

#include "platform/Port.h"

namespace tollbeam {

/// The folder that the running program lives in. Only a program in an application bundle, which has
/// the extension "app" and an identifier, may post notifications.
class MainBundle : public Port {
 public:
  /// What follows the last dot of the folder's name, as written; empty when there is none.
  [[nodiscard]] virtual std::string pathExtension() const = 0;

  /// The application's identifier; absent when the folder has no readable information file that
  /// names one.
  [[nodiscard]] virtual std::optional<std::string> identifier() const = 0;
};

/// Whether the program runs from an application bundle.
[[nodiscard]] inline bool isApplication(const MainBundle& bundle) {
  return bundle.pathExtension() == "app" && bundle.identifier().has_value();
}

}  // namespace tollbeam

// The folder that the running program lives in. Notifications belong to an application, so they
// are posted only when that folder is an application bundle: extension "app" and an identifier.
#pragma once

#include <optional>
#include <string>

namespace tollbeam {

class MainBundle {
 public:
  MainBundle() = default;
  MainBundle(const MainBundle&) = delete;
  MainBundle& operator=(const MainBundle&) = delete;
  virtual ~MainBundle() = default;

  /// What follows the last dot of the bundle folder's name, as written; empty when there is none.
  [[nodiscard]] virtual std::string pathExtension() const = 0;

  /// Absent when the folder has no readable information file that names one.
  [[nodiscard]] virtual std::optional<std::string> identifier() const = 0;
};

/// True when the program may act as an application.
[[nodiscard]] inline bool isApplication(const MainBundle& bundle) {
  return bundle.pathExtension() == "app" && bundle.identifier().has_value();
}

}  // namespace tollbeam

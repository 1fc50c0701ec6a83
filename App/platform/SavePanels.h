// The desktop's own window in which the user chooses where to save a file.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace tollbeam {

struct SavePanel {
  std::string suggestedName;
  /// Media type and file name extension of the only kind of file that is offered.
  std::string contentType;
  std::string extension;
};

class SavePanels {
 public:
  SavePanels() = default;
  SavePanels(const SavePanels&) = delete;
  SavePanels& operator=(const SavePanels&) = delete;
  virtual ~SavePanels() = default;

  /// Answers on the main thread with the chosen path, never before the call returns; absent when
  /// the user cancelled.
  virtual void runSavePanel(SavePanel panel,
                            std::function<void(std::optional<std::string> path)> answer) = 0;
};

}  // namespace tollbeam

#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/Port.h"

namespace tollbeam {

/// What a save panel offers.
struct SavePanel {
  std::string suggestedName;  ///< file name, with its extension
  std::string contentType;    ///< media type of the only kind of file
  std::string extension;      ///< file name extension of that kind, without the dot
};

/// The desktop's own window in which the user chooses where to save a file.
class SavePanels : public Port {
 public:
  /// Opens the panel. Answers with the chosen path; absent when the user cancelled.
  virtual void runSavePanel(SavePanel panel,
                            std::function<void(std::optional<std::string> path)> answer) = 0;
};

}  // namespace tollbeam

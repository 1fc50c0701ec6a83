#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/SavePanels.h"
#include "values/Message.h"

namespace tollbeam {

/// A question with its answers.
struct AlertDialog {
  Message message;          ///< the question
  Message informativeText;  ///< what the user needs to know for the answer; may be empty
  /// First the one that goes on, last the one that does not.
  std::vector<Message> buttons;
  /// Going on cannot be undone: its button is marked, and the last one has the keyboard.
  bool destructive = false;
};

/// Windows that ask or tell. Each comes to the front and lets the program go on behind it.
class Dialogs : public SavePanels {
 public:
  /// Asks. Answers with the index of the chosen button; absent when the dialog was closed
  /// otherwise.
  virtual void runAlert(AlertDialog alert,
                        std::function<void(std::optional<std::size_t> button)> answer) = 0;

  /// Tells of an error; `reason` is the system's, in the user's language.
  virtual void showError(const Message& message, const std::string& reason) = 0;
};

}  // namespace tollbeam

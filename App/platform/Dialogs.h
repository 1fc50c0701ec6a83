// Windows that ask or tell. Every dialog comes to the front, lets the program go on behind it and
// answers through a callback on the main thread, never before the call returns.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/SavePanels.h"
#include "values/Message.h"

namespace tollbeam {

struct AlertDialog {
  Message message;
  Message informativeText;
  /// First the one that goes on, last the one that does not.
  std::vector<Message> buttons;
  /// Going on cannot be undone: it is marked, and the keyboard is on the last button.
  bool destructive = false;
};

class Dialogs : public SavePanels {
 public:
  /// Answers with the index of the chosen button; absent when the dialog was closed otherwise.
  virtual void runAlert(AlertDialog alert,
                        std::function<void(std::optional<std::size_t> button)> answer) = 0;

  /// Tells of an error, with the system's reason in the user's language.
  virtual void showError(const Message& message, const std::string& reason) = 0;
};

}  // namespace tollbeam

#pragma once

#include <optional>

#include "platform/Port.h"
#include "values/Message.h"

namespace tollbeam {

/// Whether the program starts when the user logs in. The desktop's own settings change it too.
class LoginItem : public Port {
 public:
  /// What the desktop does at a login.
  enum class Status {
    notRegistered,    ///< nothing: it does not know the program
    enabled,          ///< it starts the program
    requiresApproval  ///< nothing: registered, but switched off by the desktop or its administrator
  };

  /// Has the program started at every login. Absent on success; otherwise the reason: a message of
  /// the program, or the system's words in the user's language.
  virtual std::optional<Message> registerItem() = 0;

  /// Has it started no more; answers as `registerItem` does.
  virtual std::optional<Message> unregisterItem() = 0;

  /// Read afresh at each call.
  [[nodiscard]] virtual Status status() const = 0;
};

}  // namespace tollbeam

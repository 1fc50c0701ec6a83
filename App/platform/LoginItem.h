// Whether the application starts when the user logs in. The status is read afresh each time,
// because the desktop's own settings change it too.
#pragma once

#include <optional>

#include "values/Message.h"

namespace tollbeam {

class LoginItem {
 public:
  enum class Status { notRegistered, enabled, requiresApproval };

  LoginItem() = default;
  LoginItem(const LoginItem&) = delete;
  LoginItem& operator=(const LoginItem&) = delete;
  virtual ~LoginItem() = default;

  /// Absent on success; otherwise the reason: a message of ours, or the system's in the user's
  /// language.
  virtual std::optional<Message> registerItem() = 0;
  virtual std::optional<Message> unregisterItem() = 0;

  /// `requiresApproval`: registered, but switched off by the desktop or its administrator.
  [[nodiscard]] virtual Status status() const = 0;
};

}  // namespace tollbeam

#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Port.h"
#include "platform/Subscription.h"
#include "values/Value.h"

namespace tollbeam {

/// The user's settings: a value per key, read with a type. Reads convert between kinds, so that a
/// value that another program stored as the wrong kind still means what it says. Registered
/// defaults answer for keys that the user never set, and are never written.
class UserDefaults : public Port {
 public:
  /// A number is true when not zero; text is true for "yes", "true" and "1" in any case; a list,
  /// a dictionary and an absent key are false.
  [[nodiscard]] bool boolForKey(std::string_view key) const;

  /// A fraction is cut off; a flag is 1 or 0; text counts by the whole number that it starts with,
  /// else 0; a list, a dictionary and an absent key are 0. Fractions and text are held to the
  /// 64-bit range; a whole number of 2^63 or more is the signed integer of the same bits.
  [[nodiscard]] std::int64_t integerForKey(std::string_view key) const;

  /// As `integerForKey`, with the fraction.
  [[nodiscard]] double doubleForKey(std::string_view key) const;

  /// Absent when the key holds no text: numbers are not turned into text.
  [[nodiscard]] std::optional<std::string> stringForKey(std::string_view key) const;

  /// Answers reads of these keys from now on, where the user has set nothing.
  void registerDefaults(const Dictionary& defaults);

  /// Stores at once. A store that cannot be written keeps the value for this run.
  virtual void set(std::string_view key, Value value) = 0;

  /// Calls `changed` after any value has changed, here or by another program.
  virtual Subscription onChange(std::function<void()> changed) = 0;

 protected:
  /// The value that the user set; null when there is none. Valid until the next change.
  [[nodiscard]] virtual const Value* stored(std::string_view key) const = 0;

 private:
  [[nodiscard]] const Value* valueForKey(std::string_view key) const;

  Dictionary registered_;
};

}  // namespace tollbeam

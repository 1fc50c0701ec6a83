#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Port.h"

namespace tollbeam {

/// What a status item shows, in the user's language.
struct StatusItemContent {
  /// The most preferred first; the first that exists is drawn. With none the item has no picture.
  std::vector<std::string> symbolNames;
  std::string accessibilityDescription;  ///< what a screen reader says for the picture
  std::string title;                     ///< beside the picture, after a leading space; or empty
  std::string toolTip;                   ///< lines joined with a line feed

  /// Field by field.
  friend bool operator==(const StatusItemContent&, const StatusItemContent&) = default;
};

/// A place on the screen in logical pixels, in which windows are placed.
struct ClickPosition {
  int x = 0;  ///< from the left
  int y = 0;  ///< from the top

  /// Field by field.
  friend bool operator==(const ClickPosition&, const ClickPosition&) = default;
};

/// The program's picture in the panel. Where the desktop has no place for one, or not yet, it waits
/// and appears when there is a place. It goes when this object is destroyed.
class StatusItem : public Port {
 public:
  /// What the user can ask of the item.
  struct Actions {
    /// A click, or an entry of the menu; the place is absent where the desktop does not say it.
    std::function<void(std::optional<ClickPosition>)> activate;
    std::function<void()> openSettings;  ///< an entry of the menu
    std::function<void()> quit;          ///< an entry of the menu
  };

  /// Draws the item anew if the content is another.
  virtual void setContent(const StatusItemContent& content) = 0;
};

/// The part of the desktop's panel that holds status items.
class StatusBar : public Port {
 public:
  /// A new item; null when this system can never show one.
  [[nodiscard]] virtual std::unique_ptr<StatusItem> createStatusItem(
      StatusItem::Actions actions) = 0;
};

}  // namespace tollbeam

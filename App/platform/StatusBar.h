// The status item: Tollbeam's only presence while idle. Where the desktop has no place for one, or
// not yet, the item waits and appears when a place does.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tollbeam {

struct StatusItemContent {
  /// Symbol names, the most preferred first; the first that exists is drawn. With none the item
  /// stands without a picture.
  std::vector<std::string> symbolNames;
  std::string accessibilityDescription;
  /// Beside the picture; with text a leading space, and empty when there is none.
  std::string title;
  /// Lines joined with a line feed.
  std::string toolTip;

  friend bool operator==(const StatusItemContent&, const StatusItemContent&) = default;
};

/// Where the item was clicked, in physical pixels of the screen, as far as the desktop tells.
struct ClickPosition {
  int x = 0;
  int y = 0;
  bool known = false;
};

class StatusItem {
 public:
  /// What the user asks of the item; the entries of its menu, where the desktop shows one, too.
  struct Actions {
    std::function<void(ClickPosition)> activate;
    std::function<void()> openSettings;
    std::function<void()> quit;
  };

  StatusItem() = default;
  StatusItem(const StatusItem&) = delete;
  StatusItem& operator=(const StatusItem&) = delete;
  virtual ~StatusItem() = default;

  virtual void setContent(const StatusItemContent& content) = 0;
};

class StatusBar {
 public:
  StatusBar() = default;
  StatusBar(const StatusBar&) = delete;
  StatusBar& operator=(const StatusBar&) = delete;
  virtual ~StatusBar() = default;

  /// Null when this system can never show one.
  [[nodiscard]] virtual std::unique_ptr<StatusItem> createStatusItem(
      StatusItem::Actions actions) = 0;
};

}  // namespace tollbeam

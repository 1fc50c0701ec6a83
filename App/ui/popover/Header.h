// The top of the popover: the ring, and beside it what the battery is doing, how long the charger
// has been plugged in, and a banner while alerts are snoozed.
#pragma once

#include <QWidget>

#include "ui/controls/Text.h"
#include "ui/look/Style.h"
#include "ui/popover/RingView.h"
#include "ui/popover/SnoozeBanner.h"

namespace tollbeam {

class Header final : public QWidget {
  Q_OBJECT

 public:
  /// `style` must outlive the header.
  explicit Header(const Style& style, QWidget* parent = nullptr);

  [[nodiscard]] RingView& ring() { return *ring_; }
  [[nodiscard]] SnoozeBanner& banner() { return *banner_; }

  /// The last two are hidden while they are empty.
  void setTexts(const QString& state, const QString& pluggedIn, const QString& snooze);

 private:
  RingView* ring_;
  Text* state_;
  Text* pluggedIn_;
  SnoozeBanner* banner_;
};

}  // namespace tollbeam

// The popover's head: the ring, and beside it what the battery is doing, since when the charger is
// in, and the banner while alerts are snoozed.
#pragma once

#include <QBoxLayout>
#include <QWidget>
#include <optional>

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

  void setState(const QString& text);
  /// The lines below; an absent one takes no room.
  void setPluggedIn(const std::optional<QString>& text);
  void setSnooze(const std::optional<QString>& text);

 private:
  void restyle();

  const Style& style_;
  RingView* ring_;
  Text* state_;
  Text* pluggedIn_;
  SnoozeBanner* banner_;
  QHBoxLayout* row_;
  QVBoxLayout* lines_;
};

}  // namespace tollbeam

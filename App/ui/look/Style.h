// The current colours, fonts and measures of every view. They follow the desktop's palette, font,
// contrast and animation settings. Views hold a reference, read it each time they paint, and lay
// themselves out again when it emits `changed`.
#pragma once

#include <QFont>
#include <QObject>

#include "platform/Appearance.h"
#include "platform/Subscription.h"
#include "ui/look/Colours.h"
#include "ui/look/Type.h"

namespace tollbeam {

class Style final : public QObject {
  Q_OBJECT

 public:
  /// `appearance` must outlive the style.
  explicit Style(Appearance& appearance, QObject* parent = nullptr);

  /// Calls `adapt` now and after every change, for as long as `view` lives.
  template <typename Adapt>
  void follow(const QObject* view, const Adapt& adapt) const {
    adapt();
    connect(this, &Style::changed, view, adapt);
  }

  [[nodiscard]] const Colours& colours() const { return colours_; }

  [[nodiscard]] QFont font(Role role) const { return tollbeam::font(role, base_); }
  [[nodiscard]] QFont ringFont() const { return tollbeam::ringFont(base_, scale_); }

  /// The height of a line in logical pixels; more than its scaled height where a script needs it.
  [[nodiscard]] int lineHeight(Role role) const;

  /// `measure` is in pixels under a font of normal size; the result, in logical pixels, grows with
  /// the desktop's font, up to about four times.
  [[nodiscard]] int px(double measure) const { return qRound(measure * scale_); }
  [[nodiscard]] double scale() const { return scale_; }

  /// False where the user has turned animations off.
  [[nodiscard]] bool animates() const { return appearance_.animations(); }

 Q_SIGNALS:
  void changed();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void update();

  Appearance& appearance_;
  Subscription changes_;
  QFont base_;
  Colours colours_;
  double scale_ = 1;
};

}  // namespace tollbeam

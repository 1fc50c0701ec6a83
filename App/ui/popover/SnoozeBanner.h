// Says until when alerts are snoozed, with a link that ends the snooze.
#pragma once

#include <QWidget>

#include "ui/controls/LinkButton.h"
#include "ui/controls/Text.h"
#include "ui/look/Style.h"

namespace tollbeam {

class SnoozeBanner final : public QWidget {
  Q_OBJECT

 public:
  /// `style` must outlive the banner.
  explicit SnoozeBanner(const Style& style, QWidget* parent = nullptr);

  void setText(const QString& text);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;
  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override;

 Q_SIGNALS:
  void cancelled();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void placeParts();
  /// The width that the link leaves for the text.
  [[nodiscard]] int besideLink(int width) const;
  /// True where a word of the text is too long to fit beside the link.
  [[nodiscard]] bool linkIsBelow(int width) const;

  const Style& style_;
  Text* text_;
  LinkButton* cancel_;
};

}  // namespace tollbeam

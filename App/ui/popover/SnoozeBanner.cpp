#include "ui/popover/SnoozeBanner.h"

#include <QPainter>
#include <QStyle>
#include <algorithm>

namespace tollbeam {

namespace {

constexpr double kRadius = 8;
constexpr double kAbove = 6;
constexpr double kBeside = 10;
constexpr double kGap = 8;

}  // namespace

SnoozeBanner::SnoozeBanner(const Style& style, QWidget* parent)
    : QWidget(parent),
      style_(style),
      text_(new Text(style, Role::caption, Ink::primary, this)),
      cancel_(new LinkButton(style, tr("Cancel"), this)) {
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
  text_->setBreaks(Breaks::balanced);
  connect(cancel_, &QPushButton::clicked, this, &SnoozeBanner::cancelled);
  connect(&style_, &Style::changed, this, [this] {
    placeParts();
    updateGeometry();
    update();
  });
}

void SnoozeBanner::setText(const QString& text) {
  if (text == text_->text()) return;
  text_->setText(text);
  placeParts();
  updateGeometry();
}

// The link's words end at the padding; its clickable edge lies inside the padding.
int SnoozeBanner::besideLink(int width) const {
  return width - 2 * style_.px(kBeside) - style_.px(kGap) - cancel_->sizeHint().width() +
         2 * cancel_->reach();
}

bool SnoozeBanner::linkIsBelow(int width) const { return besideLink(width) < text_->widestWord(); }

QSize SnoozeBanner::sizeHint() const {
  const int width = text_->sizeHint().width() + style_.px(kGap) + cancel_->sizeHint().width() -
                    2 * cancel_->reach() + 2 * style_.px(kBeside);
  return {width, heightForWidth(width)};
}

QSize SnoozeBanner::minimumSizeHint() const { return {0, cancel_->sizeHint().height()}; }

int SnoozeBanner::heightForWidth(int width) const {
  const int above = style_.px(kAbove);
  if (linkIsBelow(width)) {
    return above + text_->heightForWidth(width - 2 * style_.px(kBeside)) +
           cancel_->sizeHint().height();
  }
  return std::max(text_->heightForWidth(besideLink(width)) + 2 * above,
                  cancel_->sizeHint().height());
}

void SnoozeBanner::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  placeParts();
}

void SnoozeBanner::placeParts() {
  const int beside = style_.px(kBeside);
  const QSize link = cancel_->sizeHint();
  QRect text;
  QRect cancel;
  if (linkIsBelow(width())) {
    const int wide = width() - 2 * beside;
    text = QRect(beside, style_.px(kAbove), wide, text_->heightForWidth(wide));
    cancel = QRect(QPoint(beside - cancel_->reach(), text.bottom() + 1), link);
  } else {
    const int wide = besideLink(width());
    const int high = text_->heightForWidth(wide);
    text = QRect(beside, (height() - high) / 2, wide, high);
    cancel = QRect(
        QPoint(width() - beside + cancel_->reach() - link.width(), (height() - link.height()) / 2),
        link);
  }
  text_->setGeometry(QStyle::visualRect(layoutDirection(), rect(), text));
  cancel_->setGeometry(QStyle::visualRect(layoutDirection(), rect(), cancel));
}

void SnoozeBanner::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(style_.colours().banner);
  // Lighter than a control's outline, because the banner cannot be pressed.
  const bool outlined = style_.colours().highContrast;
  painter.setPen(outlined ? QPen(style_.colours().hairline, 1) : QPen(Qt::NoPen));
  const double inset = outlined ? 0.5 : 0;
  const double radius = style_.px(kRadius) - inset;
  painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
}

}  // namespace tollbeam

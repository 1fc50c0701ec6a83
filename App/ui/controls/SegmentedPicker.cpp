#include "ui/controls/SegmentedPicker.h"

#include <QBoxLayout>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/controls/Accessibility.h"
#include "ui/controls/ControlStyle.h"
#include "ui/controls/Fill.h"
#include "ui/controls/FocusRing.h"
#include "ui/controls/FollowStyle.h"
#include "ui/controls/LineBreaks.h"

namespace tollbeam {

namespace {

constexpr double kHeight = 28;
constexpr double kRadius = 8;
constexpr double kInset = 2;
constexpr double kThumbRadius = 6;
constexpr double kPadding = 6;
constexpr int kMilliseconds = 140;
constexpr float kShadow = 0.16F;

// The shade under a raised surface: one pixel down, two pixels soft.
void paintThumbShadow(QPainter& painter, const QRectF& thumb, double radius, double scale) {
  QColor shade(Qt::black);
  for (const double spread : {1.0, 0.5, 0.0}) {
    shade.setAlphaF(kShadow / 3);
    painter.setBrush(shade);
    const double by = spread * scale;
    painter.drawRoundedRect(thumb.translated(0, scale).adjusted(-by, -by, by, by), radius + by,
                            radius + by);
  }
}

class Segment final : public QRadioButton {
 public:
  Segment(const Style& style, const QString& text) : QRadioButton(text), style_(style) {
    setStyle(ControlStyle::of(style));
    setAttribute(Qt::WA_LayoutUsesWidgetRect);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    followStyle(*this, style);
  }

  [[nodiscard]] QSize sizeHint() const override {
    const double words = widthOfLine(text(), style_.font(Role::calloutMedium));
    return {static_cast<int>(std::ceil(words + 2 * style_.px(kPadding))), leastHeight()};
  }
  [[nodiscard]] QSize minimumSizeHint() const override { return {0, leastHeight()}; }
  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override {
    const auto lines = linesAt(width, style_.font(Role::calloutMedium)).size();
    const int inside = 2 * style_.px(kPadding) - 2 * style_.px(kInset);
    return std::max(leastHeight(),
                    static_cast<int>(lines) * style_.lineHeight(Role::callout) + inside);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    const Colours& colours = style_.colours();
    if (!isChecked() && (underMouse() || isDown())) {
      painter.setRenderHint(QPainter::Antialiasing);
      painter.setPen(Qt::NoPen);
      // Over the track: both together have the colour of a control's fill.
      QColor more = colours.primary;
      more.setAlphaF(isDown() ? 0.13F : 0.055F);
      painter.setBrush(more);
      const double radius = style_.px(kThumbRadius);
      painter.drawRoundedRect(rect(), radius, radius);
    }
    painter.setPen(isChecked() ? colours.segmentText : colours.primary);
    const QFont font = style_.font(isChecked() ? Role::calloutMedium : Role::callout);
    const QStringList lines = linesAt(width(), font);
    const int line = style_.lineHeight(Role::callout);
    double top = (height() - static_cast<double>(lines.size()) * line) / 2;
    for (const QString& words : lines) {
      paintLine(painter, {(width() - widthOfLine(words, font)) / 2, top}, line, words, font);
      top += line;
    }
  }

 private:
  [[nodiscard]] int leastHeight() const { return style_.px(kHeight) - 2 * style_.px(kInset); }
  [[nodiscard]] QStringList linesAt(int width, const QFont& font) const {
    return brokenLines(text(), width, Breaks::balanced, font);
  }

  const Style& style_;
};

}  // namespace

SegmentedPicker::SegmentedPicker(const Style& style, const QString& name,
                                 const QStringList& choices, QWidget* parent)
    : QWidget(parent), style_(style), thumb_(*this, style, kMilliseconds) {
  setAccessibleRole(*this, QAccessible::Grouping);
  setAccessibleName(name);
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
  // Filled from its end, so that the last segment gets the odd pixel.
  auto* row = new QBoxLayout(QBoxLayout::RightToLeft, this);
  row->setSpacing(0);
  for (const QString& choice : choices) {
    auto* segment = new Segment(style, choice);
    const auto index = static_cast<int>(segments_.size());
    segment->setChecked(index == 0);
    row->insertWidget(0, segment, 1);
    // The ring surrounds the whole picker, whichever segment has the focus.
    new FocusRing(*segment, style, kRadius, {}, this);
    connect(segment, &QRadioButton::toggled, this, [this, index](bool on) {
      if (!on) return;
      thumb_.glideTo(index);
      Q_EMIT chosenChanged(index);
    });
    segments_.push_back(segment);
  }
  const auto restyle = [this, row] {
    const int inset = style_.px(kInset);
    row->setContentsMargins(inset, inset, inset, inset);
    update();
  };
  connect(&style_, &Style::changed, this, restyle);
  restyle();
}

int SegmentedPicker::chosen() const {
  const auto at = std::find_if(segments_.begin(), segments_.end(),
                               [](const QRadioButton* segment) { return segment->isChecked(); });
  return static_cast<int>(at - segments_.begin());
}

void SegmentedPicker::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Colours& colours = style_.colours();
  paintFill(painter, rect(), style_.px(kRadius), colours, {});
  if (segments_.empty()) return;

  const double inset = style_.px(kInset);
  const double each = (width() - 2 * inset) / static_cast<double>(segments_.size());
  const double at = layoutDirection() == Qt::RightToLeft
                        ? static_cast<double>(segments_.size()) - 1 - thumb_.value()
                        : thumb_.value();
  const QRectF thumb(inset + at * each, inset, each, height() - 2 * inset);
  const double radius = style_.px(kThumbRadius);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  if (!colours.dark && !colours.highContrast) {
    paintThumbShadow(painter, thumb, radius, style_.scale());
  }
  painter.setBrush(colours.segment);
  painter.drawRoundedRect(thumb, radius, radius);
}

}  // namespace tollbeam

#include "ui/controls/TimeField.h"

#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyle>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "texts/LocaleFormats.h"
#include "ui/controls/Digits.h"
#include "ui/controls/Fill.h"
#include "ui/controls/FocusRing.h"
#include "ui/controls/SpokenTime.h"
#include "ui/controls/TextLine.h"

namespace tollbeam {

namespace {

constexpr int kWidth = 88;
constexpr int kHeight = 26;
constexpr double kRadius = 7;
constexpr int kLeading = 10;
constexpr int kTrailing = 8;
constexpr int kGap = 8;
constexpr int kChevronWidth = 10;
constexpr int kChevronHeight = 12;
constexpr double kSelectionRadius = 3;
constexpr int kMostSteps = 60;

TimeOfDay timeOf(QTime time) { return {.hour = time.hour(), .minute = time.minute()}; }

}  // namespace

TimeField::TimeField(const Style& style, QWidget* parent)
    : QTimeEdit(parent), style_(style), repeat_(*this) {
  setAttribute(Qt::WA_Hover);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setFrame(false);
  setWrapping(true);
  setContextMenuPolicy(Qt::NoContextMenu);
  // Qt would turn hours and minutes round in a mirrored window; a time reads the same everywhere.
  setLayoutDirection(Qt::LeftToRight);
  // It goes on taking what is typed; what is seen is painted here.
  lineEdit()->hide();
  // Under the name that Qt gives it, a screen reader finds no text in it.
  lineEdit()->setObjectName(QStringLiteral("time"));
  connect(lineEdit(), &QLineEdit::textChanged, this, [this] { update(); });
  connect(lineEdit(), &QLineEdit::selectionChanged, this, [this] { update(); });
  connect(this, &QTimeEdit::timeChanged, this, &TimeField::take);
  connect(this, &QTimeEdit::editingFinished, this, &TimeField::finish);
  FocusRing::surround(*this, style, kRadius);
  connect(&style_, &Style::changed, this, &TimeField::restyle);
  followLocale();
  restyle();
}

void TimeField::restyle() {
  setFont(style_.font(Role::body));
  updateGeometry();
  update();
}

void TimeField::followLocale() {
  const QSignalBlocker blocker(this);
  // Qt loses its place in its own text where the half of the day comes first and its two words are
  // not equally long: in Assamese, Bodo, Ewe and Konkani.
  const QString own = shortTimeFormat(locale());
  const bool readable = !own.startsWith(u'A', Qt::CaseInsensitive) ||
                        locale().amText().size() == locale().pmText().size();
  setDisplayFormat(readable ? own : QStringLiteral("HH:mm"));
  updateGeometry();
}

void TimeField::setTodaysClock(std::function<TimeOfDay(TimeOfDay)> clock) {
  todaysClock_ = std::move(clock);
}

void TimeField::setTimeOfDay(TimeOfDay time) {
  // Only the answer to what is being typed.
  if (unfinished_ == time) return;
  unfinished_.reset();
  if (time == timeOfDay()) return;
  {
    const QSignalBlocker blocker(this);
    setTime(QTime(time.hour, time.minute));
    if (hasFocus()) setSelectedSection(currentSection());
  }
  tellChange();
}

TimeOfDay TimeField::timeOfDay() const { return timeOf(time()); }

TimeOfDay TimeField::existing(TimeOfDay time) const {
  return todaysClock_ ? todaysClock_(time) : time;
}

void TimeField::tellChange() {
  told_ = timeOfDay();
  QAccessibleValueChangeEvent event(this, told_.hour * 60 + told_.minute);
  QAccessible::updateAccessibility(&event);
}

void TimeField::take() {
  // The Return key makes Qt tell of a time that is the old one.
  if (timeOfDay() == told_) return;
  tellChange();
  const TimeOfDay choice = existing(told_);
  unfinished_ = choice;
  if (!hasFocus()) finish();
  Q_EMIT chosen(choice);
}

void TimeField::finish() {
  if (!unfinished_) return;
  const TimeOfDay choice = *std::exchange(unfinished_, std::nullopt);
  setTimeOfDay(choice);
}

void TimeField::stepBy(int steps) {
  {
    const QSignalBlocker blocker(this);
    QTimeEdit::stepBy(steps);
    const TimeOfDay nearest = existing(timeOfDay());
    // Across a jump to the next time that there is. The half of the day, and the minutes of an hour
    // that is left out, may have none.
    for (int left = kMostSteps; left > 0 && existing(timeOfDay()) != timeOfDay(); --left) {
      QTimeEdit::stepBy(steps < 0 ? -1 : 1);
    }
    const bool found = existing(timeOfDay()) == timeOfDay() && timeOfDay() != told_;
    if (!found) setTime(QTime(nearest.hour, nearest.minute));
    setSelectedSection(currentSection());
  }
  unfinished_.reset();
  if (timeOfDay() == told_) return;
  tellChange();
  Q_EMIT chosen(told_);
}

QSize TimeField::sizeHint() const {
  double widest = 0;
  // Digits are all as wide as each other, so one time of each half of the day will do.
  for (const QTime time : {QTime(10, 0), QTime(22, 0)}) {
    widest = std::max(widest, tabularWidth(locale().toString(time, displayFormat()), font()));
  }
  const int needed =
      static_cast<int>(std::ceil(widest)) + style_.px(kLeading + kGap + kChevronWidth + kTrailing);
  return {std::max(style_.px(kWidth), needed), style_.px(kHeight)};
}

QAccessibleInterface* TimeField::describe() { return new SpokenTime(this); }

Qt::LayoutDirection TimeField::direction() const {
  return parentWidget() ? parentWidget()->layoutDirection() : layoutDirection();
}

QRect TimeField::chevrons() const {
  const QRect box(width() - style_.px(kTrailing + kChevronWidth),
                  (height() - style_.px(kChevronHeight)) / 2, style_.px(kChevronWidth),
                  style_.px(kChevronHeight));
  return QStyle::visualRect(direction(), rect(), box);
}

QRect TimeField::textRect() const {
  const int length = static_cast<int>(std::ceil(tabularWidth(lineEdit()->text(), font())));
  return QStyle::visualRect(direction(), rect(), {style_.px(kLeading), 0, length, height()});
}

void TimeField::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (!isEnabled()) painter.setOpacity(kDisabledOpacity);
  paintFill(painter, rect(), style_.px(kRadius), style_.colours(),
            {isEnabled(), underMouse(), false});
  paintTime(painter);
  paintChevrons(painter);
}

void TimeField::paintTime(QPainter& painter) const {
  const QString text = lineEdit()->text();
  const QFontMetricsF metrics(font());
  const QRectF where = textRect();
  const double top = std::floor((height() - metrics.height()) / 2);
  const auto xOf = [&](qsizetype position) {
    return where.left() + tabularWidth(text.left(position), font());
  };
  const auto paint = [&](const QColor& ink) {
    painter.setPen(ink);
    paintLine(painter, where.topLeft(), height(), text, font(), Figures::tabular);
  };
  paint(style_.colours().primary);

  // The part that arrows and keys change.
  if (!hasFocus() || !lineEdit()->hasSelectedText()) return;
  const qsizetype from = lineEdit()->selectionStart();
  const qsizetype length = lineEdit()->selectedText().size();
  // No wider than its digits: the colon stands right beside them.
  const QRectF selection(QPointF(xOf(from), top),
                         QPointF(xOf(from + length), top + metrics.height()));
  painter.setPen(Qt::NoPen);
  painter.setBrush(style_.colours().accent);
  painter.drawRoundedRect(selection, style_.px(kSelectionRadius), style_.px(kSelectionRadius));
  painter.setClipRect(selection);
  paint(style_.colours().onAccent);
  painter.setClipping(false);
}

void TimeField::paintChevrons(QPainter& painter) const {
  const QRectF box = chevrons();
  painter.save();
  painter.translate(box.topLeft());
  painter.scale(box.width() / kChevronWidth, box.height() / kChevronHeight);
  painter.setPen(QPen(style_.colours().secondary, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  const QPointF up[] = {{2.5, 4}, {5, 1.5}, {7.5, 4}};
  const QPointF down[] = {{2.5, 8}, {5, 10.5}, {7.5, 8}};
  painter.drawPolyline(up, 3);
  painter.drawPolyline(down, 3);
  painter.restore();
}

// Qt would move a cursor that is not to be seen here.
void TimeField::keyPressEvent(QKeyEvent* event) {
  const int step = event->key() == Qt::Key_Right ? 1 : event->key() == Qt::Key_Left ? -1 : 0;
  if (step == 0) {
    if (!takeHalfOfDay(event->text())) QTimeEdit::keyPressEvent(event);
    return;
  }
  setSelectedSection(sectionAt(std::clamp(currentSectionIndex() + step, 0, sectionCount() - 1)));
}

// Its first letter says which half of the day is meant; Qt waits for the whole word.
bool TimeField::takeHalfOfDay(const QString& typed) {
  if (currentSection() != AmPmSection || typed.isEmpty()) return false;
  const bool isMorning = locale().amText().startsWith(typed, Qt::CaseInsensitive);
  const bool isEvening = locale().pmText().startsWith(typed, Qt::CaseInsensitive);
  if (isMorning == isEvening) return false;
  setTime(QTime(time().hour() % 12 + (isEvening ? 12 : 0), time().minute()));
  setSelectedSection(AmPmSection);
  return true;
}

void TimeField::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const QPointF at = event->position();
  const int reach = style_.px(kGap);
  if (chevrons().adjusted(-reach, 0, reach, 0).contains(QPoint(qRound(at.x()), height() / 2))) {
    const int step = at.y() < height() / 2.0 ? 1 : -1;
    repeat_.start([this, step] {
      stepBy(step);
      return true;
    });
    return;
  }
  // The section whose last character lies beyond the pointer.
  const QString text = lineEdit()->text();
  qsizetype position = 0;
  while (position < text.size() &&
         textRect().left() + tabularWidth(text.left(position + 1), font()) < at.x()) {
    ++position;
  }
  lineEdit()->setCursorPosition(static_cast<int>(position));
  setSelectedSection(currentSection());
}

// Qt would look for its own buttons here.
void TimeField::mouseMoveEvent(QMouseEvent* /*event*/) {}

void TimeField::mouseReleaseEvent(QMouseEvent* /*event*/) { repeat_.stop(); }

void TimeField::hideEvent(QHideEvent* event) {
  repeat_.stop();
  QTimeEdit::hideEvent(event);
  finish();
}

void TimeField::changeEvent(QEvent* event) {
  QTimeEdit::changeEvent(event);
  if (event->type() == QEvent::LocaleChange) followLocale();
  if (event->type() == QEvent::EnabledChange) {
    repeat_.stop();
    update();
  }
}

void TimeField::wheelEvent(QWheelEvent* event) {
  // The page scrolls beneath the pointer; only what the user has chosen answers.
  if (hasFocus()) {
    QTimeEdit::wheelEvent(event);
  } else {
    event->ignore();
  }
}

}  // namespace tollbeam

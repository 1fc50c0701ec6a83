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
#include "ui/controls/Accessibility.h"
#include "ui/controls/ControlStyle.h"
#include "ui/controls/Field.h"
#include "ui/controls/FocusRing.h"
#include "ui/controls/FollowStyle.h"
#include "ui/controls/TextLine.h"

namespace tollbeam {

namespace {

constexpr int kWidth = 88;
constexpr double kSelectionRadius = 3;
constexpr int kMostSteps = 60;
constexpr int kLastMinute = 24 * 60 - 1;

int minutesOf(TimeOfDay time) { return time.hour * 60 + time.minute; }

}  // namespace

TimeField::TimeField(const Style& style, QWidget* parent) : QTimeEdit(parent), style_(style) {
  setAccessibleNumber(*this, {.least = 0,
                              .most = kLastMinute,
                              .value = [this] { return minutesOf(timeOfDay()); },
                              .text = [this] { return text(); },
                              .set =
                                  [this](std::int64_t minutes) {
                                    setTime(QTime(0, 0).addSecs(static_cast<int>(minutes) * 60));
                                  },
                              .step = [this](int step) { stepBy(step); },
                              .line = lineEdit()});
  setStyle(ControlStyle::of(style));
  setAttribute(Qt::WA_Hover);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setFrame(false);
  setWrapping(true);
  setContextMenuPolicy(Qt::NoContextMenu);
  // Qt would swap hours and minutes in a mirrored window; a time reads the same everywhere.
  setLayoutDirection(Qt::LeftToRight);
  // It still receives what is typed; the text is painted here.
  lineEdit()->hide();
  // With the name that Qt gives it, screen readers find no text in it.
  lineEdit()->setObjectName(QStringLiteral("time"));
  connect(lineEdit(), &QLineEdit::textChanged, this, [this] { update(); });
  connect(lineEdit(), &QLineEdit::selectionChanged, this, [this] { update(); });
  connect(this, &QTimeEdit::timeChanged, this, &TimeField::onTimeChanged);
  connect(this, &QTimeEdit::editingFinished, this, &TimeField::endTyping);
  new FocusRing(*this, style, kFieldRadius);
  followLocale();
  followStyle(*this, style, Role::body);
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
  // It only confirms what is being typed.
  if (unfinished_ == time) return;
  unfinished_.reset();
  if (time == timeOfDay()) return;
  {
    const QSignalBlocker blocker(this);
    setTime(QTime(time.hour, time.minute));
    if (hasFocus()) setSelectedSection(currentSection());
  }
  announceChange();
}

TimeOfDay TimeField::timeOfDay() const {
  return {.hour = time().hour(), .minute = time().minute()};
}

TimeOfDay TimeField::existing(TimeOfDay time) const {
  return todaysClock_ ? todaysClock_(time) : time;
}

void TimeField::announceChange() {
  announced_ = timeOfDay();
  QAccessibleValueChangeEvent event(this, minutesOf(announced_));
  QAccessible::updateAccessibility(&event);
}

void TimeField::onTimeChanged() {
  // After Return, Qt emits a change to the same time.
  if (timeOfDay() == announced_) return;
  announceChange();
  const TimeOfDay choice = existing(announced_);
  unfinished_ = choice;
  if (!hasFocus()) endTyping();
  Q_EMIT chosen(choice);
}

void TimeField::endTyping() {
  if (!unfinished_) return;
  const TimeOfDay choice = *std::exchange(unfinished_, std::nullopt);
  setTimeOfDay(choice);
}

void TimeField::stepBy(int steps) {
  {
    const QSignalBlocker blocker(this);
    QTimeEdit::stepBy(steps);
    const TimeOfDay nearest = existing(timeOfDay());
    // Across a jump to the next time that exists. Steps of the half of the day, or of the minutes
    // of an hour that is left out, may reach none.
    for (int left = kMostSteps; left > 0 && existing(timeOfDay()) != timeOfDay(); --left) {
      QTimeEdit::stepBy(steps < 0 ? -1 : 1);
    }
    const bool found = existing(timeOfDay()) == timeOfDay() && timeOfDay() != announced_;
    if (!found) setTime(QTime(nearest.hour, nearest.minute));
    setSelectedSection(currentSection());
  }
  unfinished_.reset();
  if (timeOfDay() == announced_) return;
  announceChange();
  Q_EMIT chosen(announced_);
}

QSize TimeField::sizeHint() const {
  double widest = 0;
  // All digits have the same width, so one time of each half of the day will do.
  for (const QTime time : {QTime(10, 0), QTime(22, 0)}) {
    widest = std::max(widest, tabularWidth(locale().toString(time, displayFormat()), font()));
  }
  const int needed = static_cast<int>(std::ceil(widest)) + style_.px(kBesideFieldText);
  return {std::max(style_.px(kWidth), needed), style_.px(kFieldHeight)};
}

Qt::LayoutDirection TimeField::direction() const {
  return parentWidget() ? parentWidget()->layoutDirection() : layoutDirection();
}

QRect TimeField::textRect() const {
  const int length = static_cast<int>(std::ceil(tabularWidth(lineEdit()->text(), font())));
  return QStyle::visualRect(direction(), rect(), {style_.px(kFieldLeading), 0, length, height()});
}

void TimeField::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  paintField(painter, style_, *this, false, direction(),
             {{{{2.5, 4}, {5, 1.5}, {7.5, 4}}}, {{{2.5, 8}, {5, 10.5}, {7.5, 8}}}});
  paintTime(painter);
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

  // The part that arrows and typing change.
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
}

// Left and right choose the part; Qt would move a cursor that is invisible here.
void TimeField::keyPressEvent(QKeyEvent* event) {
  const int step = event->key() == Qt::Key_Right ? 1 : event->key() == Qt::Key_Left ? -1 : 0;
  if (step == 0) {
    if (!typeHalfOfDay(event->text())) QTimeEdit::keyPressEvent(event);
    return;
  }
  setSelectedSection(sectionAt(std::clamp(currentSectionIndex() + step, 0, sectionCount() - 1)));
}

// The first letter chooses the half of the day; Qt waits for the whole word.
bool TimeField::typeHalfOfDay(const QString& typed) {
  if (currentSection() != AmPmSection || typed.isEmpty()) return false;
  const bool isMorning = locale().amText().startsWith(typed, Qt::CaseInsensitive);
  const bool isEvening = locale().pmText().startsWith(typed, Qt::CaseInsensitive);
  if (isMorning == isEvening) return false;
  setTime(QTime(time().hour() % 12 + (isEvening ? 12 : 0), time().minute()));
  setSelectedSection(AmPmSection);
  return true;
}

void TimeField::mousePressEvent(QMouseEvent* event) {
  QTimeEdit::mousePressEvent(event);
  if (event->isAccepted() || event->button() != Qt::LeftButton) return;
  event->accept();
  // Beside the chevrons, it chooses the part whose last character lies beyond the pointer.
  const QString text = lineEdit()->text();
  qsizetype position = 0;
  while (position < text.size() &&
         textRect().left() + tabularWidth(text.left(position + 1), font()) <
             event->position().x()) {
    ++position;
  }
  lineEdit()->setCursorPosition(static_cast<int>(position));
  setSelectedSection(currentSection());
}

void TimeField::hideEvent(QHideEvent* event) {
  QTimeEdit::hideEvent(event);
  endTyping();
}

void TimeField::changeEvent(QEvent* event) {
  QTimeEdit::changeEvent(event);
  if (event->type() == QEvent::LocaleChange) followLocale();
}

void TimeField::wheelEvent(QWheelEvent* event) {
  // Without the focus, the wheel scrolls the page.
  if (!hasFocus()) return event->ignore();
  QTimeEdit::wheelEvent(event);
}

}  // namespace tollbeam

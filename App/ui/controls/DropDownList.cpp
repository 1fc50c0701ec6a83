#include "ui/controls/DropDownList.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleHints>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "ui/controls/Accessibility.h"
#include "ui/controls/Divider.h"
#include "ui/controls/Field.h"
#include "ui/controls/Fill.h"
#include "ui/controls/ScrollPage.h"
#include "ui/controls/TextLine.h"

namespace tollbeam {

namespace {

constexpr int kRowHeight = 26;
constexpr double kRadius = 9;
constexpr double kRowRadius = 6;
constexpr int kPadding = 4;
constexpr int kRowPadding = 6;
constexpr int kTick = 10;
constexpr int kTickGap = 8;
constexpr int kFromWindowEdge = 8;
// A line with room above and below.
constexpr int kDivider = 9;

QLayout* divider(const Style& style) {
  const int height = style.px(kDivider);
  const int inset = style.px(kRowPadding);
  auto* room = new QVBoxLayout;
  room->setContentsMargins(inset, height / 2, inset, height - height / 2 - 1);
  room->addWidget(new Divider(style));
  return room;
}

}  // namespace

DropDownRow::DropDownRow(const Style& style, const QString& text, bool ticked, QWidget* parent)
    : QAbstractButton(parent), style_(style), ticked_(ticked) {
  setAccessibleButton(*this, QAccessible::ListItem, [this](QAccessible::State& state) {
    state.focusable = true;
    state.selectable = true;
    state.selected = ticked_;
  });
  setText(text);
  setFont(style.font(Role::body));
  setFocusPolicy(Qt::NoFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize DropDownRow::sizeHint() const {
  const double words = widthOfLine(text(), font());
  return {static_cast<int>(std::ceil(words)) + style_.px(2 * kRowPadding + kTickGap + kTick),
          style_.px(kRowHeight)};
}

void DropDownRow::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Colours& colours = style_.colours();
  if (hasFocus()) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours.accent);
    painter.drawRoundedRect(rect(), style_.px(kRowRadius), style_.px(kRowRadius));
  }
  const QColor ink = hasFocus() ? colours.onAccent : colours.primary;
  painter.setPen(ink);
  const int padding = style_.px(kRowPadding);
  paintAtLead(painter, rect(), padding, text(), font(), layoutDirection());
  if (!ticked_) return;
  const int size = style_.px(kTick);
  const QRectF box = QStyle::visualRect(
      layoutDirection(), rect(), {width() - padding - size, (height() - size) / 2, size, size});
  paintStroke(painter, box, {kTick, kTick}, 1.6, ink, {{{{1.5, 5.5}, {4, 8}, {8.5, 2}}}});
}

void DropDownRow::enterEvent(QEnterEvent* event) {
  setFocus(Qt::MouseFocusReason);
  QAbstractButton::enterEvent(event);
}

DropDownList::DropDownList(const Style& style, const QList<Choice>& choices, int ticked,
                           QWidget& button)
    : QWidget(button.window()), style_(style), button_(button), ticked_(ticked) {
  setAccessibleRole(*this, QAccessible::List);
  setAccessibleName(button.accessibleName());
  setFocusPolicy(Qt::StrongFocus);
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  for (qsizetype i = 0; i < choices.size(); ++i) {
    const int index = static_cast<int>(i);
    auto* row = new DropDownRow(style, choices[i].text, index == ticked, page);
    connect(row, &QAbstractButton::clicked, this, [this, index] {
      dismiss();
      Q_EMIT chosen(index);
    });
    if (choices[i].startsGroup) column->addLayout(divider(style));
    column->addWidget(row);
    rows_ << row;
  }
  auto* around = new QVBoxLayout(this);
  const int padding = style.px(kPadding);
  around->setContentsMargins(Shadow::reach(style) + padding);
  scroll_ = new ScrollPage(style, page);
  around->addWidget(scroll_);
}

void DropDownList::open() {
  place();
  show();
  raise();
  setFocus(Qt::PopupFocusReason);
  if (ticked_ >= 0) makeCurrent(ticked_);
  qApp->installEventFilter(this);
}

void DropDownList::dismiss() {
  if (dismissed_) return;
  dismissed_ = true;
  qApp->removeEventFilter(this);
  const QWidget* focus = window()->focusWidget();
  // Unless the focus has moved elsewhere already.
  if (focus == this || isAncestorOf(focus)) button_.setFocus(Qt::PopupFocusReason);
  hide();
  deleteLater();
  Q_EMIT closed();
}

void DropDownList::place() {
  const QWidget* page = scroll_->widget();
  const int around = 2 * style_.px(kPadding);
  QSize size = page->sizeHint() + QSize(around, around);
  size.setWidth(std::max(size.width(), button_.width()));
  const int edge = style_.px(kFromWindowEdge);
  const QRect room = parentWidget()->rect().adjusted(edge, edge, -edge, -edge);
  size = size.boundedTo(room.size());
  const QRect button(button_.mapTo(parentWidget(), QPoint()), button_.size());
  // Puts the ticked row over the button.
  page->layout()->setGeometry({QPoint(), page->sizeHint()});
  const QWidget* covering = rows_.value(std::max(ticked_, 0));
  const int above = covering ? covering->geometry().center().y() + around / 2 : 0;
  QRect box(QPoint(), size);
  box.moveTop(button.center().y() - above);
  if (layoutDirection() == Qt::RightToLeft) {
    box.moveLeft(button.left());
  } else {
    box.moveRight(button.right());
  }
  box.moveTop(std::clamp(box.top(), room.top(), room.bottom() - box.height() + 1));
  box.moveLeft(std::clamp(box.left(), room.left(), room.right() - box.width() + 1));
  setGeometry(box.marginsAdded(Shadow::reach(style_)));
}

QRect DropDownList::body() const { return rect().marginsRemoved(Shadow::reach(style_)); }

int DropDownList::current() const {
  return static_cast<int>(rows_.indexOf(qobject_cast<DropDownRow*>(QApplication::focusWidget())));
}

void DropDownList::makeCurrent(int index) {
  DropDownRow* row = rows_[std::clamp(index, 0, static_cast<int>(rows_.size()) - 1)];
  row->setFocus(Qt::PopupFocusReason);
  scroll_->ensureWidgetVisible(row, 0, 0);
}

void DropDownList::keyPressEvent(QKeyEvent* event) {
  const int last = static_cast<int>(rows_.size()) - 1;
  switch (event->key()) {
    case Qt::Key_Down:
      makeCurrent(current() + 1);
      break;
    case Qt::Key_Up:
      makeCurrent(current() < 0 ? last : current() - 1);
      break;
    case Qt::Key_Home:
    case Qt::Key_PageUp:
      makeCurrent(0);
      break;
    case Qt::Key_End:
    case Qt::Key_PageDown:
      makeCurrent(last);
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (current() >= 0) rows_[current()]->click();
      break;
    case Qt::Key_Escape:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_F4:
      dismiss();
      break;
    default:
      search(event->text());
  }
}

void DropDownList::search(const QString& typed) {
  if (typed.isEmpty() || !typed[0].isPrint()) return;
  const bool continues =
      lastTyped_.isValid() &&
      lastTyped_.elapsed() < QGuiApplication::styleHints()->keyboardInputInterval();
  typed_ = continues ? typed_ + typed : typed;
  lastTyped_.start();
  // A new search begins after the current row, so that the same letter goes from match to match.
  const int from = std::max(current(), 0) + (continues ? 0 : 1);
  for (qsizetype i = 0; i < rows_.size(); ++i) {
    const int index = static_cast<int>((from + i) % rows_.size());
    if (rows_[index]->text().startsWith(typed_, Qt::CaseInsensitive)) {
      makeCurrent(index);
      return;
    }
  }
}

bool DropDownList::eventFilter(QObject* watched, QEvent* event) {
  const auto* widget = qobject_cast<QWidget*>(watched);
  if (!widget) return QWidget::eventFilter(watched, event);
  const bool inside = isAncestorOf(widget) || widget == this;
  switch (event->type()) {
    case QEvent::KeyPress: {
      // The page between the rows and the list would scroll. Space presses the row.
      auto* key = static_cast<QKeyEvent*>(event);
      if (!inside || key->key() == Qt::Key_Space || key->key() == Qt::Key_Select) break;
      keyPressEvent(key);
      return true;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel: {
      const QPoint at = static_cast<QSinglePointEvent*>(event)->globalPosition().toPoint();
      // A press on its shadow is one elsewhere.
      if (inside && body().contains(mapFromGlobal(at))) break;
      dismiss();
      // A press in our window only closes the list.
      return widget->window() == window();
    }
    case QEvent::FocusIn:
      // A press that moves the focus arrives here as a press.
      if (!inside && widget->window() == window() &&
          static_cast<QFocusEvent*>(event)->reason() != Qt::MouseFocusReason) {
        dismiss();
      }
      break;
    case QEvent::WindowDeactivate:
    case QEvent::Resize:
    case QEvent::Hide:
      if (widget == window()) dismiss();
      break;
    default:
      break;
  }
  return QWidget::eventFilter(watched, event);
}

void DropDownList::wheelEvent(QWheelEvent* event) { event->accept(); }

void DropDownList::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  shadow_.paint(painter, body(), event->rect(), style_);
  const Colours& colours = style_.colours();
  paintPanel(painter, body(), style_.px(kRadius), colours.card, colours.edge);
}

}  // namespace tollbeam

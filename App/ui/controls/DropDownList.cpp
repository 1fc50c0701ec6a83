#include "ui/controls/DropDownList.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleHints>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

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

class SpokenRow final : public QAccessibleWidget {
 public:
  explicit SpokenRow(DropDownRow* row) : QAccessibleWidget(row, QAccessible::ListItem) {}

  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Name ? row()->text() : QAccessibleWidget::text(kind);
  }
  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.focusable = true;
    state.selectable = true;
    state.selected = row()->isTicked();
    return state;
  }
  [[nodiscard]] QStringList actionNames() const override {
    return QStringList{pressAction()} + QAccessibleWidget::actionNames();
  }
  void doAction(const QString& name) override {
    if (name == pressAction()) {
      row()->click();
    } else {
      QAccessibleWidget::doAction(name);
    }
  }

 private:
  [[nodiscard]] DropDownRow* row() const { return static_cast<DropDownRow*>(widget()); }
};

class ListDivider final : public QWidget {
 public:
  explicit ListDivider(const Style& style) : style_(style) { setFixedHeight(style.px(kDivider)); }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    const int inset = style_.px(kRowPadding);
    painter.fillRect(inset, height() / 2, width() - 2 * inset, 1, style_.colours().hairline);
  }

 private:
  const Style& style_;
};

}  // namespace

DropDownRow::DropDownRow(const Style& style, const QString& text, bool ticked, QWidget* parent)
    : QAbstractButton(parent), style_(style), ticked_(ticked) {
  setText(text);
  setFont(style.font(Role::body));
  setFocusPolicy(Qt::NoFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize DropDownRow::sizeHint() const {
  const double text = QFontMetricsF(font()).horizontalAdvance(this->text());
  return {static_cast<int>(std::ceil(text)) + style_.px(2 * kRowPadding + kTickGap + kTick),
          style_.px(kRowHeight)};
}

QAccessibleInterface* DropDownRow::describe() { return new SpokenRow(this); }

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
  painter.translate(box.topLeft());
  painter.scale(box.width() / kTick, box.height() / kTick);
  painter.setPen(QPen(ink, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  const QPointF tick[] = {{1.5, 5.5}, {4, 8}, {8.5, 2}};
  painter.drawPolyline(tick, 3);
}

void DropDownRow::enterEvent(QEnterEvent* event) {
  setFocus(Qt::MouseFocusReason);
  QAbstractButton::enterEvent(event);
}

void DropDownRow::focusInEvent(QFocusEvent* event) {
  QAbstractButton::focusInEvent(event);
  update();
}

void DropDownRow::focusOutEvent(QFocusEvent* event) {
  QAbstractButton::focusOutEvent(event);
  update();
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
    if (choices[i].startsGroup) column->addWidget(new ListDivider(style));
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
  // The keyboard goes back to where it came from, unless it has gone elsewhere already.
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
  // The row that says what the button says covers it.
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
  const auto found =
      std::find_if(rows_.begin(), rows_.end(), [](DropDownRow* row) { return row->hasFocus(); });
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
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
  const bool goesOn = lastTyped_.isValid() &&
                      lastTyped_.elapsed() < QGuiApplication::styleHints()->keyboardInputInterval();
  typed_ = goesOn ? typed_ + typed : typed;
  lastTyped_.start();
  // A new search begins behind the current row, so that the same letter goes from match to match.
  const int from = std::max(current(), 0) + (goesOn ? 0 : 1);
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
      // Its shadow is not the list.
      if (inside && body().contains(mapFromGlobal(at))) break;
      dismiss();
      // In our window it closes the list and does no more.
      return widget->window() == window();
    }
    case QEvent::FocusIn:
      // A press that moves it is on its way here itself.
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
  painter.setRenderHint(QPainter::Antialiasing);
  const double radius = style_.px(kRadius);
  painter.setPen(Qt::NoPen);
  painter.setBrush(style_.colours().card);
  painter.drawRoundedRect(body(), radius, radius);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(style_.colours().edge, 1));
  painter.drawRoundedRect(QRectF(body()).adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5,
                          radius - 0.5);
}

}  // namespace tollbeam

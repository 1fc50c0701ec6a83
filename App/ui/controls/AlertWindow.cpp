#include "ui/controls/AlertWindow.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>

#include "ui/controls/Button.h"
#include "ui/controls/Fill.h"
#include "ui/controls/Text.h"

namespace tollbeam {

namespace {

constexpr int kWidth = 300;
constexpr int kTop = 20;
constexpr int kPadding = 16;
constexpr int kAboveText = 6;
constexpr int kAboveButtons = 16;
constexpr int kBetweenButtons = 8;

QSpacerItem* gap() { return new QSpacerItem(0, 0, QSizePolicy::Minimum, QSizePolicy::Fixed); }

Text* centred(const Style& style, Role role, Ink ink, const QString& words) {
  auto* text = new Text(style, role, ink);
  text->setText(words);
  text->setBreaks(Breaks::balanced);
  text->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
  return text;
}

}  // namespace

AlertWindow::AlertWindow(const Style& style, Compositor& compositor, const Content& content)
    : QDialog(nullptr, Qt::Dialog | Qt::FramelessWindowHint),
      style_(style),
      compositor_(compositor),
      column_(new QVBoxLayout(this)),
      buttons_(new QHBoxLayout),
      aboveText_(gap()),
      aboveButtons_(gap()) {
  setAttribute(Qt::WA_DeleteOnClose);
  const bool blends = compositor_.isRunning();
  setAttribute(Qt::WA_TranslucentBackground, blends);
  setAttribute(Qt::WA_NoSystemBackground, blends);
  setWindowTitle(content.title);
  setAccessibleDescription(content.text);
  column_->setSpacing(0);
  column_->addWidget(centred(style, Role::headline, Ink::primary, content.title));
  if (!content.text.isEmpty()) {
    column_->addItem(aboveText_);
    column_->addWidget(centred(style, Role::callout, Ink::secondary, content.text));
  } else {
    delete std::exchange(aboveText_, nullptr);
  }
  column_->addItem(aboveButtons_);
  column_->addLayout(buttons_);
  addButtons(content);
  connect(this, &QDialog::finished, this, [this] { Q_EMIT answered(pressed_); });
  connect(&style_, &Style::changed, this, [this] {
    if (isVisible()) place(body().translated(pos()));
    update();
  });
}

void AlertWindow::addButtons(const Content& content) {
  const auto last = static_cast<std::size_t>(content.buttons.size()) - 1;
  const std::size_t chosen = content.destructive ? last : 0;
  // The default action comes last, where reading ends; Tab follows the order on the screen.
  for (std::size_t i = last + 1; i-- > 0;) {
    const Ink ink = content.destructive && i == 0 ? Ink::red : Ink::primary;
    auto* button = new Button(style_, content.buttons[static_cast<qsizetype>(i)], nullptr, ink);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    button->setAutoDefault(true);
    connect(button, &QPushButton::clicked, this, [this, i] {
      pressed_ = i;
      accept();
    });
    buttons_->addWidget(button, 1);
    if (i != chosen) continue;
    button->setDefault(true);
    button->setFocus(Qt::TabFocusReason);
  }
}

void AlertWindow::open(const QWidget* over) {
  const QScreen* screen = over ? over->screen() : QGuiApplication::primaryScreen();
  place(over ? over->frameGeometry() : screen->availableGeometry());
  // It stays above the window that it belongs to, but each can close without the other.
  if (over) windowHandle()->setTransientParent(over->windowHandle());
  show();
  raise();
  activateWindow();
}

void AlertWindow::place(const QRect& around) {
  const QScreen* screen = QGuiApplication::screenAt(around.center());
  if (!screen) screen = QGuiApplication::primaryScreen();
  const QRect area = screen->availableGeometry();

  shadowMargins_ = testAttribute(Qt::WA_TranslucentBackground) ? Shadow::reach(style_) : QMargins();
  if (aboveText_) aboveText_->changeSize(0, style_.px(kAboveText));
  aboveButtons_->changeSize(0, style_.px(kAboveButtons));
  buttons_->setSpacing(style_.px(kBetweenButtons));
  column_->invalidate();
  const int padding = style_.px(kPadding);
  column_->setContentsMargins(shadowMargins_ +
                              QMargins(padding, style_.px(kTop), padding, padding));
  const int width =
      std::min(style_.px(kWidth), area.width()) + shadowMargins_.left() + shadowMargins_.right();
  column_->activate();
  const QSize size(width, column_->totalHeightForWidth(width));
  const QSize bodySize = size.shrunkBy(shadowMargins_);
  QRect box(QPoint(), bodySize);
  box.moveCenter(around.center());
  box.moveLeft(
      std::clamp(box.left(), area.left(), std::max(area.left(), area.right() - box.width() + 1)));
  box.moveTop(
      std::clamp(box.top(), area.top(), std::max(area.top(), area.bottom() - box.height() + 1)));
  setFixedSize(size);
  move(box.topLeft() - QPoint(shadowMargins_.left(), shadowMargins_.top()));

  const double ratio = screen->devicePixelRatio();
  const auto pixels = [ratio](int length) { return qRound(length * ratio); };
  compositor_.setShadow(winId(), {.left = pixels(shadowMargins_.left()),
                                  .top = pixels(shadowMargins_.top()),
                                  .right = pixels(shadowMargins_.right()),
                                  .bottom = pixels(shadowMargins_.bottom()),
                                  .bodyWidth = pixels(bodySize.width()),
                                  .bodyHeight = pixels(bodySize.height())});
}

void AlertWindow::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  const double radius = testAttribute(Qt::WA_TranslucentBackground) ? style_.px(kPopoverRadius) : 0;
  if (!shadowMargins_.isNull()) shadow_.paint(painter, body(), event->rect(), style_);
  const Colours& colours = style_.colours();
  paintPanel(painter, body(), radius, colours.surface, colours.edge);
}

// It has no title bar to be moved by.
void AlertWindow::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) windowHandle()->startSystemMove();
}

}  // namespace tollbeam

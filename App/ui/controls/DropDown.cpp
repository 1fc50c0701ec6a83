#include "ui/controls/DropDown.h"

#include <QAccessibleWidget>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QTextDocument>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/controls/DropDownList.h"
#include "ui/controls/Fill.h"
#include "ui/controls/FocusRing.h"
#include "ui/controls/LineBreaks.h"
#include "ui/controls/TextLine.h"

namespace tollbeam {

namespace {

constexpr int kWidth = 128;
// Choices are always shown whole. Only what is none of them may be longer than there is room.
constexpr int kMostForUnknown = 200;
constexpr int kToolTipWidth = 300;
constexpr int kHeight = 26;
constexpr double kRadius = 7;
constexpr int kLeading = 10;
constexpr int kTrailing = 8;
constexpr int kGap = 8;
constexpr int kChevronWidth = 10;
constexpr int kChevronHeight = 12;

/// A combo box whose text is the choice, as a screen reader expects of one. The list is found among
/// the window's parts once it is open.
class SpokenDropDown final : public QAccessibleWidget, public QAccessibleTextInterface {
 public:
  explicit SpokenDropDown(DropDown* button) : QAccessibleWidget(button, QAccessible::ComboBox) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }

  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Value ? shown() : QAccessibleWidget::text(kind);
  }
  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.hasPopup = true;
    state.expandable = true;
    state.expanded = button()->list() != nullptr;
    state.collapsed = !state.expanded;
    return state;
  }
  [[nodiscard]] QStringList actionNames() const override {
    return QStringList{showMenuAction()} + QAccessibleWidget::actionNames();
  }
  void doAction(const QString& name) override {
    if (name == showMenuAction()) {
      if (button()->isEnabled()) button()->open();
    } else {
      QAccessibleWidget::doAction(name);
    }
  }

  void selection(int /*index*/, int* start, int* end) const override { *start = *end = 0; }
  [[nodiscard]] int selectionCount() const override { return 0; }
  void addSelection(int /*start*/, int /*end*/) override {}
  void removeSelection(int /*index*/) override {}
  void setSelection(int /*index*/, int /*start*/, int /*end*/) override {}
  [[nodiscard]] int cursorPosition() const override { return 0; }
  void setCursorPosition(int /*position*/) override {}
  [[nodiscard]] QString text(int start, int end) const override {
    return shown().mid(start, end - start);
  }
  [[nodiscard]] int characterCount() const override { return static_cast<int>(shown().size()); }
  [[nodiscard]] QRect characterRect(int /*offset*/) const override { return rect(); }
  [[nodiscard]] int offsetAtPoint(const QPoint& /*point*/) const override { return 0; }
  void scrollToSubstring(int /*start*/, int /*end*/) override {}
  [[nodiscard]] QString attributes(int /*offset*/, int* start, int* end) const override {
    *start = 0;
    *end = characterCount();
    return {};
  }

 private:
  [[nodiscard]] DropDown* button() const { return static_cast<DropDown*>(widget()); }
  [[nodiscard]] QString shown() const { return button()->shownText(); }
};

}  // namespace

DropDown::DropDown(const Style& style, QList<Choice> choices, QWidget* parent)
    : QAbstractButton(parent), style_(style), choices_(std::move(choices)) {
  setAttribute(Qt::WA_Hover);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  FocusRing::surround(*this, style, kRadius);
  connect(this, &QAbstractButton::clicked, this, &DropDown::open);
  connect(&style_, &Style::changed, this, &DropDown::restyle);
  restyle();
}

DropDown::~DropDown() { delete list_; }

DropDownList* DropDown::list() const { return list_; }

void DropDown::restyle() {
  dismiss();
  setFont(style_.font(Role::body));
  updateGeometry();
  update();
}

void DropDown::setValue(const QString& value) {
  if (value == value_) return;
  value_ = value;
  updateGeometry();
  update();
  QAccessibleValueChangeEvent event(this, shownText());
  QAccessible::updateAccessibility(&event);
}

QString DropDown::shownText() const {
  const int index = indexOf(value_);
  return index < 0 ? value_ : choices_[index].text;
}

int DropDown::indexOf(const QString& value) const {
  const auto found = std::find_if(choices_.begin(), choices_.end(),
                                  [&](const Choice& choice) { return choice.value == value; });
  return found == choices_.end() ? -1 : static_cast<int>(found - choices_.begin());
}

void DropDown::open() {
  if (list_) return;
  list_ = new DropDownList(style_, choices_, indexOf(value_), *this);
  connect(list_, &DropDownList::chosen, this, &DropDown::choose);
  connect(list_, &DropDownList::closed, this, [this] {
    list_.clear();
    update();
  });
  list_->open();
  update();
}

void DropDown::dismiss() {
  if (list_) list_->dismiss();
}

void DropDown::choose(int index) {
  const QString& value = choices_[index].value;
  if (value != value_) Q_EMIT chosen(value);
}

int DropDown::widthFor(const QString& text) const {
  return static_cast<int>(std::ceil(widthOfLine(text, font(), Figures::proportional))) +
         besideText();
}

int DropDown::besideText() const { return style_.px(kLeading + kGap + kChevronWidth + kTrailing); }

QSize DropDown::sizeHint() const {
  int width =
      std::max(style_.px(kWidth), std::min(widthFor(shownText()), style_.px(kMostForUnknown)));
  for (const Choice& choice : choices_) width = std::max(width, widthFor(choice.text));
  return {width, style_.px(kHeight)};
}

QString DropDown::visibleText() const {
  QString text = shownText();
  if (widthFor(text) <= width()) return text;
  return QFontMetricsF(font()).elidedText(text, Qt::ElideRight, width() - besideText());
}

QAccessibleInterface* DropDown::describe() { return new SpokenDropDown(this); }

void DropDown::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (!isEnabled()) painter.setOpacity(kDisabledOpacity);
  paintFill(painter, rect(), style_.px(kRadius), style_.colours(),
            {isEnabled(), underMouse(), isDown() || list_});
  painter.setPen(style_.colours().primary);
  paintAtLead(painter, rect(), style_.px(kLeading), visibleText(), font(), layoutDirection());

  const QRect chevron(width() - style_.px(kTrailing + kChevronWidth),
                      (height() - style_.px(kChevronHeight)) / 2, style_.px(kChevronWidth),
                      style_.px(kChevronHeight));
  const QRectF box = QStyle::visualRect(layoutDirection(), rect(), chevron);
  painter.translate(box.topLeft());
  painter.scale(box.width() / kChevronWidth, box.height() / kChevronHeight);
  painter.setPen(QPen(style_.colours().secondary, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  const QPointF down[] = {{2, 4.5}, {5, 7.5}, {8, 4.5}};
  painter.drawPolyline(down, 3);
}

// The whole of a text that is cut off, as the plain text that it is.
bool DropDown::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || visibleText() == shownText()) {
    return QAbstractButton::event(event);
  }
  const QFont font = QToolTip::font();
  const auto measure = [&font](const QString& line) {
    return widthOfLine(line, font, Figures::proportional);
  };
  const QStringList lines =
      brokenLines(shownText(), style_.px(kToolTipWidth), Breaks::balanced, measure);
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                     Qt::convertFromPlainText(lines.join(u'\n')), this);
  return true;
}

void DropDown::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_F4:
      open();
      break;
    default:
      QAbstractButton::keyPressEvent(event);
  }
}

void DropDown::hideEvent(QHideEvent* event) {
  dismiss();
  QAbstractButton::hideEvent(event);
}

void DropDown::changeEvent(QEvent* event) {
  if (event->type() == QEvent::EnabledChange) dismiss();
  QAbstractButton::changeEvent(event);
}

}  // namespace tollbeam

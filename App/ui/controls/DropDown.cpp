#include "ui/controls/DropDown.h"

#include <QAccessibleWidget>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QTextDocument>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/controls/Accessibility.h"
#include "ui/controls/DropDownList.h"
#include "ui/controls/Field.h"
#include "ui/controls/FocusRing.h"
#include "ui/controls/FollowStyle.h"
#include "ui/controls/LineBreaks.h"

namespace tollbeam {

namespace {

constexpr int kWidth = 128;
// Choices are always shown whole. Only a value that is none of them may be cut off.
constexpr int kMostForUnknown = 200;
constexpr int kToolTipWidth = 300;

/// A combo box whose text is the choice, as screen readers expect. While the list is open they find
/// it among the window's parts.
class SpokenDropDown final : public QAccessibleWidget, public QAccessibleTextInterface {
 public:
  explicit SpokenDropDown(DropDown* button)
      : QAccessibleWidget(button, QAccessible::ComboBox), button_(*button) {}

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
    state.expanded = button_.list() != nullptr;
    state.collapsed = !state.expanded;
    return state;
  }
  [[nodiscard]] QStringList actionNames() const override {
    return QStringList{showMenuAction()} + QAccessibleWidget::actionNames();
  }
  void doAction(const QString& name) override {
    if (name != showMenuAction()) return QAccessibleWidget::doAction(name);
    if (button_.isEnabled()) button_.open();
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
  [[nodiscard]] QString shown() const { return button_.shownText(); }

  DropDown& button_;
};

}  // namespace

DropDown::DropDown(const Style& style, QList<Choice> choices, QWidget* parent)
    : QAbstractButton(parent), style_(style), choices_(std::move(choices)) {
  setAccessible(*this, [this] { return new SpokenDropDown(this); });
  setAttribute(Qt::WA_Hover);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  new FocusRing(*this, style, kFieldRadius);
  connect(this, &QAbstractButton::clicked, this, &DropDown::open);
  connect(&style_, &Style::changed, this, &DropDown::dismiss);
  followStyle(*this, style, Role::body);
}

DropDown::~DropDown() { delete list_; }

DropDownList* DropDown::list() const { return list_; }

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
  connect(list_, &DropDownList::chosen, this, [this](int index) {
    const QString& value = choices_[index].value;
    if (value != value_) Q_EMIT chosen(value);
  });
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

int DropDown::widthFor(const QString& text) const {
  return static_cast<int>(std::ceil(widthOfLine(text, font()))) + style_.px(kBesideFieldText);
}

QSize DropDown::sizeHint() const {
  int width =
      std::max(style_.px(kWidth), std::min(widthFor(shownText()), style_.px(kMostForUnknown)));
  for (const Choice& choice : choices_) width = std::max(width, widthFor(choice.text));
  return {width, style_.px(kFieldHeight)};
}

QString DropDown::visibleText() const {
  QString text = shownText();
  if (widthFor(text) <= width()) return text;
  return QFontMetricsF(font()).elidedText(text, Qt::ElideRight,
                                          width() - style_.px(kBesideFieldText));
}

void DropDown::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  paintField(painter, style_, *this, isDown() || list_, layoutDirection(),
             {{{{2, 4.5}, {5, 7.5}, {8, 4.5}}}});
  painter.setPen(style_.colours().primary);
  paintAtLead(painter, rect(), style_.px(kFieldLeading), visibleText(), font(), layoutDirection());
}

bool DropDown::event(QEvent* event) {
  if (event->type() == QEvent::Hide || event->type() == QEvent::EnabledChange) dismiss();
  if (event->type() != QEvent::ToolTip || visibleText() == shownText()) {
    return QAbstractButton::event(event);
  }
  const QStringList lines =
      brokenLines(shownText(), style_.px(kToolTipWidth), Breaks::balanced, QToolTip::font());
  // Tags in the text are shown as they are.
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

}  // namespace tollbeam

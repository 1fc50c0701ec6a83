#include "ui/settings/Form.h"

#include "ui/controls/Accessibility.h"

namespace tollbeam {

namespace {

constexpr int kPadding = 20;
constexpr int kBetweenCards = 12;
constexpr int kAboveHeader = 24;
constexpr int kBelowHeader = 8;
constexpr int kHeaderInset = 14;

}  // namespace

Form::Form(const Style& style) : style_(style), column_(new QVBoxLayout(this)) {
  column_->setSpacing(0);
  style_.follow(this, [this] {
    const int padding = style_.px(kPadding);
    column_->setContentsMargins(padding, padding, padding, padding);
  });
}

void Form::addGap(int measure) {
  auto* gap = new QSpacerItem(0, 0);
  column_->addItem(gap);
  style_.follow(this, [this, gap, measure] {
    gap->changeSize(0, style_.px(measure), QSizePolicy::Minimum, QSizePolicy::Fixed);
    column_->invalidate();
  });
}

void Form::addHeader(const QString& text) {
  if (!column_->isEmpty()) addGap(kAboveHeader);
  auto* header = new Text(style_, Role::headline, Ink::primary);
  setAccessibleRole(*header, QAccessible::Heading);
  header->setText(text);
  header->setAccessibleName(text);
  auto* inset = new QHBoxLayout;
  inset->addWidget(header);
  column_->addLayout(inset);
  style_.follow(this, [this, inset] {
    inset->setContentsMargins(style_.px(kHeaderInset), 0, style_.px(kHeaderInset), 0);
  });
  addGap(kBelowHeader);
  afterHeader_ = true;
}

Card* Form::addCard(const QString& name) {
  if (!column_->isEmpty() && !afterHeader_) addGap(kBetweenCards);
  afterHeader_ = false;
  auto* card = new Card(style_, name);
  column_->addWidget(card);
  return card;
}

FormRow* Form::row(const QString& label, QWidget* control, Role role) const {
  auto* text = new Text(style_, role, Ink::primary);
  text->setText(label);
  auto* row = new FormRow(style_);
  row->put(text, control);
  return row;
}

FormRow* Form::addNote(Card* card, Text* text, FormRow::Measures measures) const {
  auto* row = new FormRow(style_, measures);
  row->fill(text);
  card->add(row);
  return row;
}

}  // namespace tollbeam

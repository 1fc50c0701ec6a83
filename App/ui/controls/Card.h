// A card of a grouped form, and its rows. To fade a whole row, disable the row and not the control
// in it.
#pragma once

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <QWidget>

#include "ui/controls/Text.h"
#include "ui/look/Style.h"

namespace tollbeam {

/// One line of a card, with the hairline above it.
class FormRow : public QWidget {
  Q_OBJECT

 public:
  /// Room around what the row holds, at scale 1; `least` is its least height.
  struct Measures {
    int least = 40;
    int vertical = 6;
    int horizontal = 14;
    int below = vertical;
  };

  explicit FormRow(const Style& style) : FormRow(style, Measures()) {}
  FormRow(const Style& style, Measures measures);

  /// `label` at the leading edge, broken into lines where it must be, and the control at the
  /// trailing one. The label's text becomes the control's accessible name.
  void put(Text* label, QWidget* control);
  /// Alone at the leading edge.
  void put(QWidget* control);
  /// Over the row's whole width.
  void fill(Text* text);

  void setMeasures(Measures measures);
  void setHairline(bool on);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void restyle();

  const Style& style_;
  Measures measures_;
  QHBoxLayout* line_;
  bool hairline_ = true;
};

class Card final : public QWidget {
  Q_OBJECT

 public:
  /// `name` is for screen readers.
  Card(const Style& style, const QString& name, QWidget* parent = nullptr);

  /// Takes the row.
  void add(FormRow* row);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Style& style_;
  QVBoxLayout* rows_;
};

}  // namespace tollbeam

#include "ui/SettingsView.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>
#include <limits>

#include "preferences/PrefsKeys.h"

namespace tollbeam {

SettingsView::SettingsView(AppModel& /*model*/, const Platform& platform, const Style& /*style*/)
    : store_(platform.userDefaults) {
  store_.registerDefaults(Prefs::defaults());
  auto* page = new QWidget;
  auto* form = new QFormLayout(page);
  for (const PrefsKey& row : kPrefsKeys) {
    const std::string key(row.key);
    const QString name = QString::fromStdString(key);
    if (std::holds_alternative<bool>(row.registeredDefault)) {
      auto* box = new QCheckBox(name, page);
      connect(box, &QCheckBox::toggled, this, [this, key](bool on) { store_.set(key, on); });
      readers_.emplace_back([this, key, box] {
        const QSignalBlocker quiet(box);
        box->setChecked(store_.boolForKey(key));
      });
      form->addRow(box);
    } else if (std::holds_alternative<std::int64_t>(row.registeredDefault)) {
      auto* box = new QSpinBox(page);
      box->setRange(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
      box->setAccessibleName(name);
      connect(box, &QSpinBox::valueChanged, this,
              [this, key](int value) { store_.set(key, value); });
      readers_.emplace_back([this, key, box] {
        const QSignalBlocker quiet(box);
        box->setValue(static_cast<int>(store_.integerForKey(key)));
      });
      form->addRow(name, box);
    } else {
      auto* edit = new QLineEdit(page);
      edit->setAccessibleName(name);
      connect(edit, &QLineEdit::textEdited, this,
              [this, key](const QString& text) { store_.set(key, text.toStdString()); });
      readers_.emplace_back([this, key, edit] {
        const auto text = store_.stringForKey(key).value_or(kDefaultSound);
        if (edit->text().toStdString() != text) edit->setText(QString::fromStdString(text));
      });
      form->addRow(name, edit);
    }
  }
  auto* scroll = new QScrollArea(this);
  scroll->setWidget(page);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(scroll);
  changes_ = store_.onChange([this] { read(); });
  read();
}

void SettingsView::read() {
  for (const auto& reader : readers_) reader();
}

}  // namespace tollbeam

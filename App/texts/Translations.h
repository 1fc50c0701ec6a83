// The program's own translations, and the toolkit's for its dialogs.
#pragma once

#include <QString>
#include <QTranslator>
#include <memory>
#include <vector>

namespace tollbeam {

class Translations {
 public:
  /// Installs the file in `folder` for the first of the user's languages that has one; English
  /// needs none. The texts stay translated until this object is destroyed.
  explicit Translations(const QString& folder);

 private:
  std::vector<std::unique_ptr<QTranslator>> translators_;
};

}  // namespace tollbeam

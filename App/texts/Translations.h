// The program's own language files, and the toolkit's for its dialogs.
#pragma once

#include <QString>
#include <QTranslator>
#include <memory>
#include <vector>

namespace tollbeam {

class Translations {
 public:
  /// Installs what there is in `folder` for the first of the user's languages that it has; English
  /// needs no file. The texts stay translated while this lives.
  explicit Translations(const QString& folder);

 private:
  bool add(const QString& file, const QString& folder);

  std::vector<std::unique_ptr<QTranslator>> translators_;
};

}  // namespace tollbeam

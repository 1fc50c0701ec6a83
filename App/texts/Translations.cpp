#include "texts/Translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

namespace tollbeam {

Translations::Translations(const QString& folder) {
  const auto add = [this](const QString& file, const QString& from) {
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(file, from)) return false;
    QCoreApplication::installTranslator(translator.get());
    translators_.push_back(std::move(translator));
    return true;
  };
  for (QString language : QLocale().uiLanguages()) {
    // A second language comes after English only for what English lacks.
    if (language == QStringLiteral("C") || language.startsWith(QStringLiteral("en"))) return;
    language.replace(u'-', u'_');
    if (!add(QStringLiteral("tollbeam_") + language, folder)) continue;
    add(QStringLiteral("qtbase_") + language, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    return;
  }
}

}  // namespace tollbeam

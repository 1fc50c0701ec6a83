// Draws the gallery's pictures into a folder: gallery FOLDER [--dark] [--contrast] [--mirrored]
// [--font PIXELS] [--only PREFIX] [--translations FOLDER]. QT_SCALE_FACTOR sets the
// scale.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QPixmap>
#include <QTest>
#include <cstdio>

#include "Pictures.h"
#include "support/WaitFor.h"
#include "texts/Translations.h"

namespace {

QPalette palette(bool dark, bool contrast) {
  const auto make = [](QRgb window, QRgb text, QRgb base, QRgb accent, QRgb onAccent) {
    QPalette p{QColor(window)};
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
      p.setColor(role, text);
    }
    p.setColor(QPalette::Base, base);
    p.setColor(QPalette::Highlight, accent);
    p.setColor(QPalette::HighlightedText, onAccent);
    return p;
  };
  if (contrast) {
    return dark ? make(0xFF000000, 0xFFFFFFFF, 0xFF000000, 0xFF5B90F2, 0xFF000000)
                : make(0xFFFFFFFF, 0xFF000000, 0xFFFFFFFF, 0xFF1A4FB5, 0xFFFFFFFF);
  }
  return dark ? make(0xFF22252A, 0xFFECEEF1, 0xFF2C3036, 0xFF5B90F2, 0xFF0E1116)
              : make(0xFFF4F5F7, 0xFF1B1E23, 0xFFFFFFFF, 0xFF2F6CDB, 0xFFFFFFFF);
}

// Drops the offscreen platform's warnings about what its windows do not support.
void printMessage(QtMsgType /*type*/, const QMessageLogContext& /*context*/,
                  const QString& message) {
  if (message.startsWith(QLatin1String("This plugin does not support"))) return;
  std::fprintf(stderr, "%s\n", qUtf8Printable(message));
}

}  // namespace

int main(int argc, char** argv) {
  qInstallMessageHandler(printMessage);
  QApplication app(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  QCommandLineParser options;
  options.addPositionalArgument(QStringLiteral("folder"), QStringLiteral("where the pictures go"));
  options.addOptions({{QStringLiteral("dark"), {}},
                      {QStringLiteral("contrast"), {}},
                      {QStringLiteral("mirrored"), {}},
                      {QStringLiteral("font"), {}, QStringLiteral("pixels")},
                      {QStringLiteral("only"), {}, QStringLiteral("prefix")},
                      {QStringLiteral("translations"), {}, QStringLiteral("folder")}});
  options.process(app);
  const QDir folder(options.positionalArguments().value(0, QStringLiteral(".")));
  if (!folder.mkpath(QStringLiteral("."))) {
    std::fprintf(stderr, "gallery: no folder %s\n", qUtf8Printable(folder.path()));
    return 1;
  }
  QApplication::setPalette(
      palette(options.isSet(QStringLiteral("dark")), options.isSet(QStringLiteral("contrast"))));
  if (options.isSet(QStringLiteral("mirrored"))) app.setLayoutDirection(Qt::RightToLeft);
  // The pictures must not depend on the machine's font.
  QFont font(QStringLiteral("Inter"));
  font.setPixelSize(
      options.isSet(QStringLiteral("font")) ? options.value(QStringLiteral("font")).toInt() : 14);
  QApplication::setFont(font);

  const tollbeam::Translations translations(options.value(QStringLiteral("translations")));

  using namespace tollbeam::gallery;
  auto pictures = popoverPictures();
  for (auto& picture : settingsPictures()) pictures.push_back(std::move(picture));
  for (auto& picture : chartPictures()) pictures.push_back(std::move(picture));
  for (const Picture& picture : pictures) {
    const QString name = QString::fromStdString(picture.name);
    if (!name.startsWith(options.value(QStringLiteral("only")))) continue;
    const auto window = picture.show();
    if (!QTest::qWaitForWindowExposed(window.get(), tollbeam::test::kPatience)) return 1;
    // Lets animations end.
    QTest::qWait(400);
    if (!window->grab().save(folder.filePath(name + QStringLiteral(".png")))) return 1;
  }
  return 0;
}

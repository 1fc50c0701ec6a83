#include "platform/freedesktop/sounds/DesktopSounds.h"

#include <QFileInfo>
#include <QProcess>
#include <QStringList>
#include <utility>

namespace tollbeam {

namespace {

void start(const std::string& player, const QStringList& arguments) {
  QProcess process;
  process.setProgram(QString::fromStdString(player));
  process.setArguments(arguments);
  // Sound libraries print warnings of their own.
  process.setStandardInputFile(QProcess::nullDevice());
  process.setStandardOutputFile(QProcess::nullDevice());
  process.setStandardErrorFile(QProcess::nullDevice());
  // Detached: it may outlive us, and leaves no zombie.
  process.startDetached();
}

}  // namespace

DesktopSounds::DesktopSounds(std::string player, std::string theme)
    : player_(std::move(player)), theme_(std::move(theme)) {}

void DesktopSounds::play(const std::string& name) {
  const auto file = fileOf(name);
  start(player_, {file ? QStringLiteral("file") : QStringLiteral("event"),
                  QString::fromStdString(file.value_or(name))});
}

void DesktopSounds::playDefault() {
  start(player_,
        {QStringLiteral("event"), QLatin1String(kDefaultSoundEvent), QStringLiteral("bell")});
}

std::optional<std::string> DesktopSounds::fileOf(const std::string& name) const {
  // A name is no path: it must not lead outside our theme.
  if (name.empty() || name.find('/') != std::string::npos) return std::nullopt;
  std::string file = theme_ + "/stereo/" + name + ".oga";
  if (!QFileInfo::exists(QString::fromStdString(file))) return std::nullopt;
  return file;
}

}  // namespace tollbeam

#include "texts/Translated.h"

#include <QCoreApplication>
#include <algorithm>
#include <iterator>

namespace tollbeam {

namespace {

constexpr const char* kContext = "tollbeam::texts";

// The patterns of every message, for translators.
constexpr const char* kTexts[] = {
    // The battery's state, in the popover and in the status item's tooltip.
    QT_TRANSLATE_NOOP("tollbeam::texts", "No battery found"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Fully charged"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Charging, estimating time to full…"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Charging, %1 min to full"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Charging, %1 h to full"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Charging, %1 h %2 min to full"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Plugged in, not charging"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "On battery, estimating time left…"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "On battery, %1 min left"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "On battery, %1 h left"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "On battery, %1 h %2 min left"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Good"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Fair"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Worn"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Health: %1% (Good)"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Health: %1% (Fair)"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Health: %1% (Worn)"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Cycles: %1"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Battery"),
    // Durations.
    QT_TRANSLATE_NOOP("tollbeam::texts", "%1 min"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "%1 h"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "%1 h %2 min"),
    // Notifications.
    QT_TRANSLATE_NOOP("tollbeam::texts", "Charge limit reached"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Battery is at %1%. Unplug to keep it healthy."),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Low battery"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Battery is at %1%. Plug in soon."),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Try Low Power Mode"),
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): one text, too long for a line
    QT_TRANSLATE_NOOP("tollbeam::texts",
                      "Battery is at %1%. Turn on Low Power Mode (System Settings, Battery) to "
                      "stretch it."),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Plugged in for a long time"),
    QT_TRANSLATE_NOOP("tollbeam::texts",
                      "Plugged in for over %1 h at %2%. Unplug it to let the battery rest."),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Battery health is low"),
    QT_TRANSLATE_NOOP("tollbeam::texts",
                      "Battery health has fallen to %1% of its original capacity."),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Snooze 1 hour"),
    // The question before the system's own.
    QT_TRANSLATE_NOOP("tollbeam::texts", "Allow notifications?"),
    QT_TRANSLATE_NOOP("tollbeam::texts",
                      "Tollbeam uses notifications to remind you to unplug at your chosen charge "
                      "level, when the battery is low, and when you have been plugged in too long. "
                      "macOS will ask for permission next."),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Continue"),
    QT_TRANSLATE_NOOP("tollbeam::texts", "Not Now"),
    // Errors.
    QT_TRANSLATE_NOOP("tollbeam::texts", "The history could not be saved to “%1”."),
    QT_TRANSLATE_NOOP("tollbeam::texts",
                      "The program is in a folder whose name has a $, a ` or a \\. Not every "
                      "desktop can start it from there."),
};

}  // namespace

QString translated(const Message& message) {
  const QString pattern = QCoreApplication::translate(kContext, message.pattern.c_str());
  return QString::fromStdString(Message(pattern.toStdString(), message.arguments).text());
}

std::string translatedUtf8(const Message& message) { return translated(message).toStdString(); }

bool isTranslatable(const Message& message) {
  return std::find(std::begin(kTexts), std::end(kTexts), message.pattern) != std::end(kTexts);
}

}  // namespace tollbeam

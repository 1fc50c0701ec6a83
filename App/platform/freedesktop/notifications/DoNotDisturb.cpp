#include "platform/freedesktop/notifications/DoNotDisturb.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QString>
#include <iterator>
#include <utility>

namespace tollbeam {

namespace {

const QString kServer = QStringLiteral("org.freedesktop.Notifications");
const QString kServerPath = QStringLiteral("/org/freedesktop/Notifications");

enum class Answer { yes, no, askNext };

QDBusMessage serversProperty(const char* interface, const char* name) {
  auto call = QDBusMessage::createMethodCall(kServer, kServerPath,
                                             QStringLiteral("org.freedesktop.DBus.Properties"),
                                             QStringLiteral("Get"));
  call << QLatin1String(interface) << QLatin1String(name);
  return call;
}

QDBusMessage serversName() {
  return QDBusMessage::createMethodCall(kServer, kServerPath, kServer,
                                        QStringLiteral("GetServerInformation"));
}

QDBusMessage xfcesSetting() {
  const auto interface = QStringLiteral("org.xfce.Xfconf");
  auto call = QDBusMessage::createMethodCall(interface, QStringLiteral("/org/xfce/Xfconf"),
                                             interface, QStringLiteral("GetProperty"));
  call << QStringLiteral("xfce4-notifyd") << QStringLiteral("/do-not-disturb");
  return call;
}

Answer yesIfTrue(const QDBusMessage& reply) {
  const auto value = reply.arguments().value(0).value<QDBusVariant>().variant();
  return value.typeId() == QMetaType::Bool && value.toBool() ? Answer::yes : Answer::askNext;
}

// The setting says nothing of another desktop's server.
Answer askNextIfXfces(const QDBusMessage& reply) {
  return reply.arguments().value(1).toString() == QLatin1String("Xfce") ? Answer::askNext
                                                                        : Answer::no;
}

struct Question {
  QDBusMessage (*call)();
  Answer (*read)(const QDBusMessage& reply);
};

constexpr Question kQuestions[] = {
    {[] { return serversProperty("org.freedesktop.Notifications", "Inhibited"); }, yesIfTrue},
    {[] { return serversProperty("org.dunstproject.cmd0", "paused"); }, yesIfTrue},
    {serversName, askNextIfXfces},
    {xfcesSetting, yesIfTrue}};

}  // namespace

DoNotDisturb::DoNotDisturb(Bus& sessionBus, std::chrono::milliseconds patience)
    : bus_(sessionBus), patience_(static_cast<int>(patience.count())) {}

void DoNotDisturb::ask(std::function<void(bool on)> answer) { askFrom(0, std::move(answer)); }

void DoNotDisturb::askFrom(std::size_t question, std::function<void(bool on)> answer) {
  if (question == std::size(kQuestions)) return answer(false);
  auto message = kQuestions[question].call();
  message.setAutoStartService(false);
  auto* call = new QDBusPendingCallWatcher(bus_.asyncCall(message, patience_), this);
  connect(call, &QDBusPendingCallWatcher::finished, this,
          [this, question, answer = std::move(answer)](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            // Who hangs would only keep us waiting again.
            if (finished->error().type() == QDBusError::NoReply) return answer(false);
            const auto said = finished->isError() ? Answer::askNext
                                                  : kQuestions[question].read(finished->reply());
            if (said != Answer::askNext) return answer(said == Answer::yes);
            askFrom(question + 1, answer);
          });
}

}  // namespace tollbeam

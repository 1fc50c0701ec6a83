#include "platform/freedesktop/notifications/DoNotDisturb.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVariant>
#include <iterator>
#include <utility>

#include "platform/freedesktop/bus/WhenFinished.h"

namespace tollbeam {

namespace {

enum class Answer { yes, no, askNext };

Answer yesIfTrue(const QDBusMessage& reply) {
  const auto value = reply.arguments().value(0).value<QDBusVariant>().variant();
  return value.typeId() == QMetaType::Bool && value.toBool() ? Answer::yes : Answer::askNext;
}

// Xfce's setting means nothing to the server of another desktop.
Answer askNextIfXfce(const QDBusMessage& reply) {
  const bool isXfce = reply.arguments().value(1).toString() == QLatin1String("Xfce");
  return isXfce ? Answer::askNext : Answer::no;
}

constexpr const char* kServer = "org.freedesktop.Notifications";
constexpr const char* kServerPath = "/org/freedesktop/Notifications";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";
constexpr const char* kXfconf = "org.xfce.Xfconf";

constexpr struct {
  const char* service;
  const char* path;
  const char* interface;
  const char* method;
  /// Both null where the method takes none.
  const char* arguments[2];
  Answer (*read)(const QDBusMessage& reply);
} kQuestions[] = {
    {kServer, kServerPath, kProperties, "Get", {kServer, "Inhibited"}, yesIfTrue},
    {kServer, kServerPath, kProperties, "Get", {"org.dunstproject.cmd0", "paused"}, yesIfTrue},
    {kServer, kServerPath, kServer, "GetServerInformation", {}, askNextIfXfce},
    {kXfconf,
     "/org/xfce/Xfconf",
     kXfconf,
     "GetProperty",
     {"xfce4-notifyd", "/do-not-disturb"},
     yesIfTrue}};

void askFrom(std::size_t index, const Bus& bus, QObject* context, int patience,
             std::function<void(bool on)> answer) {
  if (index == std::size(kQuestions)) return answer(false);
  const auto& question = kQuestions[index];
  auto message = QDBusMessage::createMethodCall(
      QLatin1String(question.service), QLatin1String(question.path),
      QLatin1String(question.interface), QLatin1String(question.method));
  for (const char* argument : question.arguments) {
    if (argument) message << QString::fromLatin1(argument);
  }
  message.setAutoStartService(false);
  whenFinished(bus.asyncCall(message, patience), context,
               [=, &bus, answer = std::move(answer)](const QDBusPendingCall& call) {
                 // A server that hangs would only delay the next answer as well.
                 if (call.error().type() == QDBusError::NoReply) return answer(false);
                 const auto said =
                     call.isError() ? Answer::askNext : kQuestions[index].read(call.reply());
                 if (said != Answer::askNext) return answer(said == Answer::yes);
                 askFrom(index + 1, bus, context, patience, answer);
               });
}

}  // namespace

void askDoNotDisturb(const Bus& bus, QObject* context, std::function<void(bool on)> answer,
                     std::chrono::milliseconds patience) {
  askFrom(0, bus, context, static_cast<int>(patience.count()), std::move(answer));
}

}  // namespace tollbeam

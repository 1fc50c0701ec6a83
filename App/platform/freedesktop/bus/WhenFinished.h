// The answer to a call on the bus.
#pragma once

#include <QDBusPendingCallWatcher>
#include <utility>

namespace tollbeam {

/// Calls `answered(call)` once, from the event loop, when the call has finished; not at all when
/// `context` has gone by then. Main thread only.
template <typename Answered>
void whenFinished(const QDBusPendingCall& call, QObject* context, Answered answered) {
  auto* watcher = new QDBusPendingCallWatcher(call, context);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context,
                   [answered = std::move(answered)](QDBusPendingCallWatcher* finished) {
                     finished->deleteLater();
                     answered(static_cast<const QDBusPendingCall&>(*finished));
                   });
}

}  // namespace tollbeam

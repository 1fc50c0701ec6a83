// One Tollbeam per session. The first start owns the application's name on the session bus; a later
// one activates the first and ends. Without a session bus every start is the first.
#pragma once

#include <QObject>
#include <functional>

#include "platform/freedesktop/bus/Bus.h"

namespace tollbeam {

class SingleInstance final : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

 public:
  /// `sessionBus` outlives this object.
  explicit SingleInstance(Bus& sessionBus, QObject* parent = nullptr);
  ~SingleInstance() override;

  /// Finds out without blocking whether this start is the first, and calls one of the two, never
  /// before this returns. `other` is called when the first one has answered, or has the name and
  /// has not answered within a few seconds.
  void begin(std::function<void()> first, std::function<void()> other);

  /// Called at each later start.
  std::function<void()> onActivate;

 public Q_SLOTS:
  // The application interface of the desktops; ours has nothing to open and no actions.
  Q_SCRIPTABLE void Activate(const QVariantMap& platformData);
  Q_SCRIPTABLE void Open(const QStringList& uris, const QVariantMap& platformData);
  Q_SCRIPTABLE void ActivateAction(const QString& name, const QVariantList& parameter,
                                   const QVariantMap& platformData);

 private:
  void publish();
  void askForName(uint flags, std::function<void()> granted, std::function<void()> taken);

  Bus& bus_;
};

}  // namespace tollbeam

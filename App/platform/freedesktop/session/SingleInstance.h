// One Tollbeam per session. The first one owns the application's name on the session bus; a later
// one asks it to show itself and ends. Without a session bus every start is the first.
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

  /// Finds out whether this is the first, without blocking; one of the two is called, later.
  /// `other` comes when the first one has been asked (or does not answer within a few seconds).
  void begin(std::function<void()> first, std::function<void()> other);

  /// Called whenever a later start asks.
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
  void askTheFirst(std::function<void(bool answered)> then);

  Bus& bus_;
};

}  // namespace tollbeam

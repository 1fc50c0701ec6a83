// The window that owns one of a screen's manager selections: the system tray's, the settings'. It
// comes with a program of the desktop, goes with it, and another may take its place at any time.
#pragma once

#include <QAbstractNativeEventFilter>
#include <QByteArray>
#include <QObject>

#include "platform/freedesktop/x11/XServer.h"

namespace tollbeam {

class ManagerSelection : public QObject, public QAbstractNativeEventFilter {
  Q_OBJECT

 public:
  /// The selection's name without the number of the screen, which is added here.
  ManagerSelection(const XServer& server, const QByteArray& name);
  ~ManagerSelection() override;

  /// None when there is no owner.
  [[nodiscard]] xcb_window_t window() const { return window_; }

  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

 Q_SIGNALS:
  /// Another window, or none. A new owner may set its properties later.
  void ownerChanged();
  /// Of the owner's window.
  void propertyChanged(xcb_atom_t property);

 private:
  void acquire();

  XServer server_;
  xcb_atom_t manager_;
  xcb_atom_t selection_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
};

}  // namespace tollbeam

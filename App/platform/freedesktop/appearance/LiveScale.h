// Keeps windows whole when the screen's scale changes, which is what "larger text" is on many X11
// desktops: more dots per inch. Qt counts in larger pixels from then on, but windows that exist
// keep their size in dots and the store that they are painted into, and show only a part of
// themselves.
#pragma once

#include <QObject>

class QScreen;

namespace tollbeam {

/// While it lives, windows are shown anew when the scale has changed; popovers close.
class LiveScale : public QObject {
 public:
  LiveScale();

 private:
  void watch(QScreen* screen);
};

}  // namespace tollbeam

// Windows that outlive a change of the screen's scale, which is what "larger text" is on many X11
// desktops: more dots to the inch. Qt counts in larger pixels from then on, but windows that exist
// keep their size in dots and the store that they are painted into, and show a part of themselves.
#pragma once

#include <QObject>

class QScreen;

namespace tollbeam {

/// As long as it lives, windows appear anew when the scale has changed; popovers close.
class LiveScale : public QObject {
 public:
  LiveScale();

 private:
  void watch(QScreen* screen);
};

}  // namespace tollbeam

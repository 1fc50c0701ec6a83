// What a held button does: its work at once, and after a moment again and again.
#pragma once

#include <QBasicTimer>
#include <QWidget>
#include <functional>

namespace tollbeam {

class AutoRepeat final : public QObject {
  Q_OBJECT

 public:
  /// The widget's style says how long a moment is. It must outlive this.
  explicit AutoRepeat(const QWidget& widget) : widget_(widget) {}

  /// `work` is false when there is nothing left to do.
  void start(std::function<bool()> work);
  void stop() { timer_.stop(); }

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  const QWidget& widget_;
  QBasicTimer timer_;
  std::function<bool()> work_;
};

}  // namespace tollbeam

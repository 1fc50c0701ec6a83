// Save panels as Qt windows, the desktop's own where Qt has one for it. No panel runs an event
// loop: it stays open while the program goes on. One that is still open when this object ends is
// closed without an answer. Main thread only.
#pragma once

#include <QFileDialog>
#include <QPointer>

#include "platform/SavePanels.h"

namespace tollbeam {

class QtSavePanels final : public SavePanels {
 public:
  QtSavePanels() = default;
  ~QtSavePanels() override;

  /// While a panel is open a second call brings it to the front and answers as if cancelled.
  void runSavePanel(SavePanel panel,
                    std::function<void(std::optional<std::string> path)> answer) override;

 private:
  QObject context_;
  QPointer<QFileDialog> panel_;
};

}  // namespace tollbeam

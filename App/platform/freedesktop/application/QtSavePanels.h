// Save panels as Qt windows, the desktop's own where Qt has one for it. Nothing here runs an event
// loop of its own: a panel stays open while the program goes on. Main thread only. A panel that is
// still open when this object ends is closed without an answer.
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
  /// The one that is asked for; it may still be closing when this is null.
  QPointer<QFileDialog> panel_;
  QPointer<QFileDialog> newest_;
};

}  // namespace tollbeam

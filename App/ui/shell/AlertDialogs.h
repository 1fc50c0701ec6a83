// The program's alerts, painted by itself; only the save panel is the desktop's. Alerts open over
// the settings window when it is open. Main thread only. The destructor closes open alerts without
// an answer.
#pragma once

#include <QPointer>
#include <vector>

#include "platform/Appearance.h"
#include "platform/Compositor.h"
#include "platform/Dialogs.h"
#include "ui/controls/AlertWindow.h"
#include "ui/look/Style.h"

namespace tollbeam {

class AlertDialogs final : public Dialogs {
 public:
  /// All must outlive the dialogs.
  AlertDialogs(Appearance& appearance, Compositor& compositor, SavePanels& savePanels);
  ~AlertDialogs() override;

  void runAlert(AlertDialog alert,
                std::function<void(std::optional<std::size_t> button)> answer) override;
  void runSavePanel(SavePanel panel,
                    std::function<void(std::optional<std::string> path)> answer) override;
  void showError(const Message& message, const std::string& reason) override;

 private:
  AlertWindow* open(const AlertWindow::Content& content);

  Style style_;
  Compositor& compositor_;
  SavePanels& savePanels_;
  std::vector<QPointer<AlertWindow>> open_;
};

}  // namespace tollbeam

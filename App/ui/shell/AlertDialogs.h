// The program's dialogs in its own look; only the save panel is the desktop's. They open over the
// settings when these are open. Main thread only. What is still open when this object ends is
// closed without an answer.
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

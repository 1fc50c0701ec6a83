// Dialogs as Qt windows; the save panel is the desktop's own where Qt has one for it. Nothing here
// runs an event loop of its own: a dialog stays open while the program goes on. Main thread only.
// Dialogs that are still open when this object ends are closed without an answer.
#pragma once

#include <QDialog>
#include <QPointer>
#include <vector>

#include "platform/Dialogs.h"

class QFileDialog;
class QMessageBox;

namespace tollbeam {

class QtDialogs final : public Dialogs {
 public:
  QtDialogs() = default;
  ~QtDialogs() override;

  void runAlert(AlertDialog alert,
                std::function<void(std::optional<std::size_t> button)> answer) override;

  /// While a panel is open a second call brings it to the front and answers as if cancelled.
  void runSavePanel(SavePanel panel,
                    std::function<void(std::optional<std::string> path)> answer) override;

  void showError(const std::string& message, const std::string& reason) override;

 private:
  void present(QDialog* dialog);

  QObject context_;
  QPointer<QFileDialog> savePanel_;
  std::vector<QPointer<QDialog>> open_;
};

}  // namespace tollbeam

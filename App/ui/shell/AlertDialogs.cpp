#include "ui/shell/AlertDialogs.h"

#include <QApplication>
#include <QCoreApplication>
#include <utility>

#include "texts/Translated.h"

namespace tollbeam {

namespace {

// The program's only ordinary window; null while it is closed or minimised.
const QWidget* settings() {
  for (const QWidget* window : QApplication::topLevelWidgets()) {
    if (window->windowType() == Qt::Window && window->isVisible() && !window->isMinimized()) {
      return window;
    }
  }
  return nullptr;
}

}  // namespace

AlertDialogs::AlertDialogs(Appearance& appearance, Compositor& compositor, SavePanels& savePanels)
    : style_(appearance), compositor_(compositor), savePanels_(savePanels) {}

AlertDialogs::~AlertDialogs() {
  for (const auto& window : std::exchange(open_, {})) delete window.data();
}

AlertWindow* AlertDialogs::open(const AlertWindow::Content& content) {
  std::erase_if(open_, [](const auto& other) { return !other; });
  auto* window = new AlertWindow(style_, compositor_, content);
  open_.emplace_back(window);
  window->open(settings());
  return window;
}

void AlertDialogs::runAlert(AlertDialog alert,
                            std::function<void(std::optional<std::size_t> button)> answer) {
  AlertWindow::Content content{.title = translated(alert.message),
                               .text = translated(alert.informativeText),
                               .buttons = {},
                               .destructive = alert.destructive};
  for (const auto& button : alert.buttons) content.buttons << translated(button);
  QObject::connect(open(content), &AlertWindow::answered, std::move(answer));
}

void AlertDialogs::runSavePanel(SavePanel panel,
                                std::function<void(std::optional<std::string> path)> answer) {
  savePanels_.runSavePanel(std::move(panel), std::move(answer));
}

void AlertDialogs::showError(const Message& message, const std::string& reason) {
  open({.title = translated(message),
        .text = QString::fromStdString(reason),
        .buttons = {QCoreApplication::translate("tollbeam::AlertDialogs", "OK")},
        .destructive = false});
}

}  // namespace tollbeam

#include "platform/freedesktop/application/QtSavePanels.h"

#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeDatabase>
#include <QStandardPaths>
#include <utility>

namespace tollbeam {

namespace {

/// Saves under names of one extension only; any other is taken as part of the name. No default
/// suffix is set: Qt would add it after the desktop's own dialog has asked about the shorter name.
class SaveDialog final : public QFileDialog {
 public:
  SaveDialog(const QString& folder, const QString& extension)
      : QFileDialog(nullptr, QString(), folder), ending_(QLatin1Char('.') + extension) {}

  /// Where to save; empty when no file is chosen.
  [[nodiscard]] QString path() const {
    const QString chosen = selectedFiles().value(0);
    return chosen.isEmpty() || chosen.endsWith(ending_, Qt::CaseInsensitive) ? chosen
                                                                             : chosen + ending_;
  }

  void accept() override {
    const QString chosen = selectedFiles().value(0);
    const bool isComplete = path() == chosen || QFileInfo(chosen).isDir();
    // Qt's dialog asks by itself before this file is replaced. The desktop's own, which has no Qt
    // widgets, has asked about the name without the extension.
    const bool isQtDialog = findChild<QLineEdit*>() != nullptr;
    if (!isComplete && isQtDialog) selectFile(path());
    if (isComplete || isQtDialog || !QFileInfo::exists(path())) {
      QFileDialog::accept();
    } else {
      confirmReplacing();
    }
  }

 private:
  void confirmReplacing() {
    // As Qt's own dialog asks, in Qt's own translation.
    const QString text = QFileDialog::tr("%1 already exists.\nDo you want to replace it?");
    auto* question =
        new QMessageBox(QMessageBox::Warning, windowTitle(), text.arg(QFileInfo(path()).fileName()),
                        QMessageBox::Yes | QMessageBox::No, this);
    question->setDefaultButton(QMessageBox::No);
    question->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(question, &QDialog::finished, this, [this](int answer) {
      if (answer == QMessageBox::Yes) {
        QFileDialog::accept();
      } else {
        reject();
      }
    });
    question->open();
  }

  QString ending_;
};

}  // namespace

QtSavePanels::~QtSavePanels() { delete panel_.data(); }

void QtSavePanels::runSavePanel(SavePanel panel,
                                std::function<void(std::optional<std::string> path)> answer) {
  // One that is closed already is only deleted later.
  if (panel_ && panel_->isVisible()) {
    panel_->raise();
    panel_->activateWindow();
    QMetaObject::invokeMethod(
        &context_, [answer = std::move(answer)] { answer(std::nullopt); }, Qt::QueuedConnection);
    return;
  }
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  const QString extension = QString::fromStdString(panel.extension);
  const QString type = QString::fromStdString(panel.contentType);
  auto* dialog = new SaveDialog(QDir(documents).exists() ? documents : QDir::homePath(), extension);
  panel_ = dialog;
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setFileMode(QFileDialog::AnyFile);
  if (QMimeDatabase().mimeTypeForName(type).isValid()) {
    dialog->setMimeTypeFilters({type});
  } else {
    dialog->setNameFilter(QStringLiteral("*.") + extension);
  }
  dialog->selectFile(QString::fromStdString(panel.suggestedName));
  QObject::connect(dialog, &QDialog::finished, dialog,
                   [dialog, answer = std::move(answer)](int result) {
                     const QString path = dialog->path();
                     if (result != QDialog::Accepted || path.isEmpty()) {
                       answer(std::nullopt);
                     } else {
                       answer(QFile::encodeName(path).toStdString());
                     }
                   });
  dialog->open();
  dialog->raise();
  dialog->activateWindow();
}

}  // namespace tollbeam

#include "platform/freedesktop/QtSavePanels.h"

#include <QFile>
#include <QMimeDatabase>
#include <QStandardPaths>
#include <utility>

namespace tollbeam {

namespace {

QString documentsFolder() {
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return QDir(documents).exists() ? documents : QDir::homePath();
}

void offerOnly(QFileDialog* dialog, const SavePanel& panel) {
  const QString type = QString::fromStdString(panel.contentType);
  const QString extension = QString::fromStdString(panel.extension);
  if (QMimeDatabase().mimeTypeForName(type).isValid()) {
    dialog->setMimeTypeFilters({type});
  } else {
    dialog->setNameFilter(QStringLiteral("*.") + extension);
  }
  dialog->setDefaultSuffix(extension);
}

}  // namespace

QtSavePanels::~QtSavePanels() { delete newest_.data(); }

void QtSavePanels::runSavePanel(SavePanel panel,
                                std::function<void(std::optional<std::string> path)> answer) {
  if (panel_) {
    panel_->raise();
    panel_->activateWindow();
    QMetaObject::invokeMethod(
        &context_, [answer = std::move(answer)] { answer(std::nullopt); }, Qt::QueuedConnection);
    return;
  }
  auto* dialog = new QFileDialog(nullptr, QString(), documentsFolder());
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setFileMode(QFileDialog::AnyFile);
  offerOnly(dialog, panel);
  dialog->selectFile(QString::fromStdString(panel.suggestedName));
  QObject::connect(dialog, &QDialog::finished, dialog,
                   [this, dialog, answer = std::move(answer)](int result) {
                     // It is deleted later; a panel that is asked for until then is a new one.
                     panel_.clear();
                     const QStringList chosen = dialog->selectedFiles();
                     if (result != QDialog::Accepted || chosen.isEmpty()) {
                       answer(std::nullopt);
                     } else {
                       answer(QFile::encodeName(chosen.first()).toStdString());
                     }
                   });
  panel_ = newest_ = dialog;
  dialog->open();
  dialog->raise();
  dialog->activateWindow();
}

}  // namespace tollbeam

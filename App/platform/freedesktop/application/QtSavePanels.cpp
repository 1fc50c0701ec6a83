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

/// Saves under names of one extension only; any other is taken as part of the name. There is no
/// default suffix: Qt would add it after the desktop's own dialog has asked about the shorter name.
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
    if (isComplete) {
      QFileDialog::accept();
    } else if (hasWidgets()) {
      // It asks by itself before this file is replaced.
      selectFile(path());
      QFileDialog::accept();
    } else {
      confirmReplacing();
    }
  }

 private:
  /// False for the desktop's own dialog, which has asked about the name without the extension.
  [[nodiscard]] bool hasWidgets() const { return findChild<QLineEdit*>() != nullptr; }

  void confirmReplacing() {
    const QString name = QFileInfo(path()).fileName();
    if (!QFileInfo::exists(path())) {
      QFileDialog::accept();
      return;
    }
    // As Qt's own dialog asks, in Qt's own translation.
    auto* question =
        new QMessageBox(QMessageBox::Warning, windowTitle(),
                        QFileDialog::tr("%1 already exists.\nDo you want to replace it?").arg(name),
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
  auto* dialog = new SaveDialog(documentsFolder(), QString::fromStdString(panel.extension));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setFileMode(QFileDialog::AnyFile);
  offerOnly(dialog, panel);
  dialog->selectFile(QString::fromStdString(panel.suggestedName));
  QObject::connect(dialog, &QDialog::finished, dialog,
                   [this, dialog, answer = std::move(answer)](int result) {
                     // It is deleted later; a panel that is asked for until then is a new one.
                     panel_.clear();
                     const QString path = dialog->path();
                     if (result != QDialog::Accepted || path.isEmpty()) {
                       answer(std::nullopt);
                     } else {
                       answer(QFile::encodeName(path).toStdString());
                     }
                   });
  panel_ = newest_ = dialog;
  dialog->open();
  dialog->raise();
  dialog->activateWindow();
}

}  // namespace tollbeam

#include "platform/freedesktop/QtDialogs.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFile>
#include <QFileDialog>
#include <QIcon>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMimeDatabase>
#include <QPushButton>
#include <QStandardPaths>
#include <QStyle>
#include <algorithm>
#include <utility>

namespace tollbeam {

namespace {

/// Escape and the window's close button close the box. Qt would press a button in the user's name,
/// were it the only one, or refuse when it cannot tell which.
class AlertBox : public QMessageBox {
 public:
  using QMessageBox::QMessageBox;

 protected:
  void closeEvent(QCloseEvent* event) override {
    if (isVisible()) reject();
    event->accept();
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (event->matches(QKeySequence::Cancel)) {
      reject();
    } else {
      QMessageBox::keyPressEvent(event);
    }
  }
};

/// Texts are shown as they are: a file's name may look like markup.
QMessageBox* messageBox(const std::string& message, const std::string& detail) {
  auto* box = new AlertBox;
  box->setTextFormat(Qt::PlainText);
  box->setText(QString::fromStdString(message));
  box->setInformativeText(QString::fromStdString(detail));
  return box;
}

void setApplicationIcon(QMessageBox* box) {
  const QIcon icon = QApplication::windowIcon();
  if (icon.isNull()) {
    box->setIcon(QMessageBox::Information);
    return;
  }
  const int size = box->style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, box);
  box->setIconPixmap(icon.pixmap(QSize(size, size), box->devicePixelRatioF()));
}

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

QtDialogs::~QtDialogs() {
  for (const auto& dialog : std::exchange(open_, {})) delete dialog.data();
}

void QtDialogs::present(QDialog* dialog) {
  std::erase_if(open_, [](const auto& other) { return !other; });
  open_.emplace_back(dialog);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->open();
  dialog->raise();
  dialog->activateWindow();
}

void QtDialogs::runAlert(AlertDialog alert,
                         std::function<void(std::optional<std::size_t> button)> answer) {
  QMessageBox* box = messageBox(alert.message, alert.informativeText);
  setApplicationIcon(box);
  std::vector<QAbstractButton*> buttons;
  for (const auto& text : alert.buttons) {
    const auto role = buttons.empty() ? QMessageBox::AcceptRole : QMessageBox::RejectRole;
    buttons.push_back(box->addButton(QString::fromStdString(text), role));
  }
  if (!buttons.empty()) box->setDefaultButton(qobject_cast<QPushButton*>(buttons.front()));
  QObject::connect(box, &QDialog::finished, box,
                   [box, buttons = std::move(buttons), answer = std::move(answer)] {
                     const auto chosen =
                         std::find(buttons.begin(), buttons.end(), box->clickedButton());
                     if (chosen == buttons.end()) {
                       answer(std::nullopt);
                     } else {
                       answer(static_cast<std::size_t>(chosen - buttons.begin()));
                     }
                   });
  present(box);
}

void QtDialogs::runSavePanel(SavePanel panel,
                             std::function<void(std::optional<std::string> path)> answer) {
  if (savePanel_) {
    savePanel_->raise();
    savePanel_->activateWindow();
    QMetaObject::invokeMethod(
        &context_, [answer = std::move(answer)] { answer(std::nullopt); }, Qt::QueuedConnection);
    return;
  }
  auto* dialog = new QFileDialog(nullptr, QString(), documentsFolder());
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setFileMode(QFileDialog::AnyFile);
  offerOnly(dialog, panel);
  dialog->selectFile(QString::fromStdString(panel.suggestedName));
  QObject::connect(dialog, &QDialog::finished, dialog,
                   [this, dialog, answer = std::move(answer)](int result) {
                     // It is deleted later; a panel that is asked for until then is a new one.
                     savePanel_.clear();
                     const QStringList chosen = dialog->selectedFiles();
                     if (result != QDialog::Accepted || chosen.isEmpty()) {
                       answer(std::nullopt);
                     } else {
                       answer(QFile::encodeName(chosen.first()).toStdString());
                     }
                   });
  savePanel_ = dialog;
  present(dialog);
}

void QtDialogs::showError(const std::string& message, const std::string& reason) {
  QMessageBox* box = messageBox(message, reason);
  box->setIcon(QMessageBox::Warning);
  box->addButton(QMessageBox::Ok);
  present(box);
}

}  // namespace tollbeam

#include "platform/freedesktop/QtDialogs.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include "platform/freedesktop/support/Sandbox.h"
#include "support/PrivateBus.h"

namespace tollbeam {

namespace {

using test::waitFor;

template <typename Window>
std::vector<Window*> visible() {
  std::vector<Window*> windows;
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    auto* window = qobject_cast<Window*>(widget);
    if (window && window->isVisible()) windows.push_back(window);
  }
  return windows;
}

void press(QWidget* window, int key) {
  QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier);
  QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier);
  QApplication::sendEvent(window, &down);
  QApplication::sendEvent(window, &up);
}

QPushButton* button(QMessageBox* box, const char* text) {
  for (QAbstractButton* each : box->buttons()) {
    if (each->text() == QLatin1String(text)) return qobject_cast<QPushButton*>(each);
  }
  return nullptr;
}

class QtDialogsTest : public testing::Test {
 protected:
  QMessageBox* ask(std::vector<std::string> buttons = {"Continue", "Not Now"}) {
    dialogs.runAlert({.message = "Allow?", .informativeText = "Because.", .buttons = buttons},
                     [this](auto button) {
                       ++answers;
                       answer = button;
                     });
    return visible<QMessageBox>().at(0);
  }
  QFileDialog* save() {
    dialogs.runSavePanel(
        {.suggestedName = "Tollbeam-history.csv", .contentType = "text/csv", .extension = "csv"},
        [this](auto chosen) {
          ++answers;
          path = chosen;
        });
    return visible<QFileDialog>().at(0);
  }
  bool answered() {
    return waitFor([&] { return answers == 1 && visible<QDialog>().empty(); });
  }

  // The window tests must not meet a file dialog of the desktop that they run in.
  static void SetUpTestSuite() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

  test::Folder folder;
  QtDialogs dialogs;
  int answers = 0;
  std::optional<std::size_t> answer;
  std::optional<std::string> path;
};

}  // namespace

TEST_F(QtDialogsTest, AnAlertShowsItsTextsAndItsFirstButtonGoesOn) {
  QMessageBox* box = ask();
  EXPECT_EQ(box->text(), QLatin1String("Allow?"));
  EXPECT_EQ(box->informativeText(), QLatin1String("Because."));
  EXPECT_EQ(box->defaultButton(), button(box, "Continue"));
  EXPECT_EQ(answers, 0);
  button(box, "Continue")->click();
  EXPECT_TRUE(answered());
  EXPECT_EQ(answer, 0U);
}

TEST_F(QtDialogsTest, AnAlertTellsTheOtherButton) {
  button(ask(), "Not Now")->click();
  EXPECT_TRUE(answered());
  EXPECT_EQ(answer, 1U);
}

TEST_F(QtDialogsTest, EscapeAndCloseAreNoButtonEvenWithOnlyOneOrThree) {
  for (const auto& buttons : std::vector<std::vector<std::string>>{
           {"OK"}, {"Continue", "Not Now"}, {"Continue", "Not Now", "Never"}}) {
    for (const bool byKey : {true, false}) {
      answers = 0;
      answer = 7;
      QMessageBox* box = ask(buttons);
      if (byKey) {
        press(box, Qt::Key_Escape);
      } else {
        box->close();
      }
      EXPECT_TRUE(answered());
      EXPECT_EQ(answer, std::nullopt);
    }
  }
}

TEST_F(QtDialogsTest, MarkupInAnAlertIsShownAsItIs) {
  dialogs.showError("Could not write <b>file</b>", "No <i>space</i>");
  QMessageBox* box = visible<QMessageBox>().at(0);
  EXPECT_EQ(box->textFormat(), Qt::PlainText);
  EXPECT_EQ(box->text(), QLatin1String("Could not write <b>file</b>"));
  EXPECT_EQ(box->informativeText(), QLatin1String("No <i>space</i>"));
  EXPECT_EQ(box->buttons().size(), 1);
  box->buttons().constFirst()->click();
  EXPECT_TRUE(waitFor([] { return visible<QMessageBox>().empty(); }));
}

TEST_F(QtDialogsTest, TheSavePanelOffersOneKindOfFile) {
  QFileDialog* panel = save();
  EXPECT_EQ(panel->acceptMode(), QFileDialog::AcceptSave);
  EXPECT_EQ(panel->mimeTypeFilters(), QStringList{QStringLiteral("text/csv")});
  EXPECT_EQ(panel->nameFilters().size(), 1);
  EXPECT_TRUE(panel->nameFilters().constFirst().contains(QLatin1String("*.csv")));
  EXPECT_EQ(panel->defaultSuffix(), QLatin1String("csv"));
  EXPECT_FALSE(panel->testOption(QFileDialog::DontConfirmOverwrite));
  EXPECT_EQ(QFileInfo(panel->selectedFiles().constFirst()).fileName(),
            QLatin1String("Tollbeam-history.csv"));
  panel->reject();
  EXPECT_TRUE(answered());
  EXPECT_EQ(path, std::nullopt);
}

TEST_F(QtDialogsTest, TheSavePanelAnswersWithThePathAndAddsTheExtension) {
  QFileDialog* panel = save();
  panel->setDirectory(QString::fromStdString(folder.path()));
  auto* name = panel->findChild<QLineEdit*>();
  ASSERT_NE(name, nullptr);
  name->setText(QStringLiteral("Größe"));
  QMetaObject::invokeMethod(panel, "accept");
  EXPECT_TRUE(answered());
  EXPECT_EQ(path, folder / "Größe.csv");
}

TEST_F(QtDialogsTest, ASecondSavePanelIsTheFirstOne) {
  QFileDialog* panel = save();
  EXPECT_EQ(save(), panel);
  EXPECT_EQ(visible<QFileDialog>().size(), 1U);
  EXPECT_EQ(answers, 0);
  EXPECT_TRUE(waitFor([&] { return answers == 1; }));
  EXPECT_EQ(path, std::nullopt);
  EXPECT_TRUE(panel->isVisible());
  panel->reject();
  EXPECT_TRUE(waitFor([&] { return answers == 2; }));
  // The next one is new.
  EXPECT_TRUE(waitFor([] { return visible<QFileDialog>().empty(); }));
  save()->reject();
  EXPECT_TRUE(waitFor([&] { return answers == 3; }));
}

TEST_F(QtDialogsTest, DialogsThatAreStillOpenEndWithoutAnAnswer) {
  bool told = false;
  {
    QtDialogs ending;
    ending.runAlert({.message = "?", .informativeText = "", .buttons = {"OK"}},
                    [&](auto) { told = true; });
    ending.runSavePanel({.suggestedName = "a.csv", .contentType = "text/csv", .extension = "csv"},
                        [&](const auto&) { told = true; });
    EXPECT_EQ(visible<QDialog>().size(), 2U);
  }
  EXPECT_TRUE(visible<QDialog>().empty());
  EXPECT_FALSE(told);
}

TEST_F(QtDialogsTest, AnAnswerMayOpenTheNextDialog) {
  dialogs.runAlert({.message = "1", .informativeText = "", .buttons = {"OK"}},
                   [this](auto) { ask({"Second"}); });
  visible<QMessageBox>().at(0)->buttons().constFirst()->click();
  EXPECT_TRUE(waitFor([] {
    const auto boxes = visible<QMessageBox>();
    return boxes.size() == 1 && boxes[0]->text() == QLatin1String("Allow?");
  }));
}

}  // namespace tollbeam

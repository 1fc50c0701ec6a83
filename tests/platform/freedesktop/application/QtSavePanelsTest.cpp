#include "platform/freedesktop/application/QtSavePanels.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <filesystem>
#include <utility>

#include "support/PrivateBus.h"
#include "support/Sandbox.h"

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

class QtSavePanelsTest : public testing::Test {
 protected:
  // Answers questions from the event loop, because a question may run one of its own.
  QtSavePanelsTest() {
    QObject::connect(&hand, &QTimer::timeout, [this] {
      for (auto* question : visible<QMessageBox>()) {
        asked = question->text();
        question->button(QMessageBox::No)->click();
      }
    });
    hand.start(10);
  }

  QFileDialog* save() {
    panels.runSavePanel(
        {.suggestedName = "Tollbeam-history.csv", .contentType = "text/csv", .extension = "csv"},
        [this](auto chosen) {
          ++answers;
          path = chosen;
        });
    return visible<QFileDialog>().at(0);
  }
  /// Types a name of a file in this test's folder and presses Save, from the event loop.
  void typeInto(QFileDialog* panel, const char* name) const {
    panel->setDirectory(QString::fromStdString(folder.path()));
    auto* field = panel->findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);
    field->setText(QString::fromUtf8(name));
    QMetaObject::invokeMethod(panel, "accept", Qt::QueuedConnection);
  }
  bool answered() {
    return waitFor([&] { return answers == 1 && visible<QDialog>().empty(); });
  }

  // Not the file dialog of the desktop that the tests run on.
  static void SetUpTestSuite() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

  test::Folder folder;
  QtSavePanels panels;
  QTimer hand;
  /// The last question; it was answered with no.
  QString asked;
  int answers = 0;
  std::optional<std::string> path;
};

}  // namespace

TEST_F(QtSavePanelsTest, OffersOneKindOfFile) {
  QFileDialog* panel = save();
  EXPECT_EQ(panel->acceptMode(), QFileDialog::AcceptSave);
  EXPECT_EQ(panel->mimeTypeFilters(), QStringList{QStringLiteral("text/csv")});
  EXPECT_EQ(panel->nameFilters().size(), 1);
  EXPECT_TRUE(panel->nameFilters().constFirst().contains(QLatin1String("*.csv")));
  EXPECT_EQ(panel->defaultSuffix(), QString()) << "added without a question in some dialogs";
  EXPECT_FALSE(panel->testOption(QFileDialog::DontConfirmOverwrite));
  EXPECT_EQ(QFileInfo(panel->selectedFiles().constFirst()).fileName(),
            QLatin1String("Tollbeam-history.csv"));
  panel->reject();
  EXPECT_TRUE(answered());
  EXPECT_EQ(path, std::nullopt);
}

TEST_F(QtSavePanelsTest, AnswersWithThePathAndAddsTheExtension) {
  typeInto(save(), "Größe");
  EXPECT_TRUE(answered());
  EXPECT_EQ(path, folder / "Größe.csv");
}

TEST_F(QtSavePanelsTest, TakesAnotherExtensionAsPartOfTheName) {
  for (const auto& [typed, file] : {std::pair{"data.txt", "data.txt.csv"},
                                    {"data.csv.gz", "data.csv.gz.csv"},
                                    {"2026.11.21", "2026.11.21.csv"},
                                    {"data.CSV", "data.CSV"},
                                    {"a.csv", "a.csv"}}) {
    answers = 0;
    typeInto(save(), typed);
    EXPECT_TRUE(answered());
    EXPECT_EQ(path, folder / file);
  }
}

TEST_F(QtSavePanelsTest, AsksBeforeItReplacesTheFileOfTheWholeName) {
  test::put(folder / "data.txt.csv", "old");
  QFileDialog* panel = save();
  typeInto(panel, "data.txt");
  ASSERT_TRUE(waitFor([&] { return !asked.isEmpty(); }));
  EXPECT_TRUE(asked.contains(QLatin1String("data.txt.csv"))) << asked.toStdString();
  EXPECT_TRUE(panel->isVisible());
  EXPECT_EQ(answers, 0);
  panel->reject();
  EXPECT_TRUE(answered());
}

TEST_F(QtSavePanelsTest, DoesNotAskAboutTheFileOfTheShorterName) {
  test::put(folder / "data.txt", "other");
  typeInto(save(), "data.txt");
  EXPECT_TRUE(answered());
  EXPECT_EQ(path, folder / "data.txt.csv");
  EXPECT_EQ(asked, QString());
}

TEST_F(QtSavePanelsTest, OpensATypedFolder) {
  std::filesystem::create_directory(folder / "sub.dir");
  QFileDialog* panel = save();
  typeInto(panel, "sub.dir");
  EXPECT_TRUE(waitFor([&] { return panel->directory().dirName() == QLatin1String("sub.dir"); }));
  EXPECT_TRUE(panel->isVisible());
  panel->reject();
  EXPECT_TRUE(answered());
}

TEST_F(QtSavePanelsTest, ShowsOnePanelAtATime) {
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

TEST_F(QtSavePanelsTest, ClosesAnOpenPanelAtTheEndWithoutAnAnswer) {
  bool isAnswered = false;
  {
    QtSavePanels ending;
    ending.runSavePanel({.suggestedName = "a.csv", .contentType = "text/csv", .extension = "csv"},
                        [&](const auto&) { isAnswered = true; });
    EXPECT_EQ(visible<QFileDialog>().size(), 1U);
  }
  EXPECT_TRUE(visible<QFileDialog>().empty());
  EXPECT_FALSE(isAnswered);
}

}  // namespace tollbeam

#include "platform/freedesktop/QtSavePanels.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>

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

class QtSavePanelsTest : public testing::Test {
 protected:
  QFileDialog* save() {
    panels.runSavePanel(
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
  QtSavePanels panels;
  int answers = 0;
  std::optional<std::string> path;
};

}  // namespace

TEST_F(QtSavePanelsTest, TheSavePanelOffersOneKindOfFile) {
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

TEST_F(QtSavePanelsTest, TheSavePanelAnswersWithThePathAndAddsTheExtension) {
  QFileDialog* panel = save();
  panel->setDirectory(QString::fromStdString(folder.path()));
  auto* name = panel->findChild<QLineEdit*>();
  ASSERT_NE(name, nullptr);
  name->setText(QStringLiteral("Größe"));
  QMetaObject::invokeMethod(panel, "accept");
  EXPECT_TRUE(answered());
  EXPECT_EQ(path, folder / "Größe.csv");
}

TEST_F(QtSavePanelsTest, ASecondSavePanelIsTheFirstOne) {
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

TEST_F(QtSavePanelsTest, APanelThatIsStillOpenEndsWithoutAnAnswer) {
  bool told = false;
  {
    QtSavePanels ending;
    ending.runSavePanel({.suggestedName = "a.csv", .contentType = "text/csv", .extension = "csv"},
                        [&](const auto&) { told = true; });
    EXPECT_EQ(visible<QFileDialog>().size(), 1U);
  }
  EXPECT_TRUE(visible<QFileDialog>().empty());
  EXPECT_FALSE(told);
}

}  // namespace tollbeam

#include "ui/shell/AlertDialogs.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QLocale>
#include <QScreen>

#include "model/AppModel.h"
#include "recorded/RecordedPlatform.h"
#include "support/ModelPorts.h"
#include "support/Widgets.h"
#include "texts/Translations.h"
#include "ui/controls/Button.h"

namespace tollbeam {
namespace {

class AlertDialogsTest : public testing::Test {
 protected:
  AlertWindow* ask(std::vector<Message> buttons = {"Continue", "Not Now"},
                   bool destructive = false) {
    dialogs.runAlert({.message = "Allow?",
                      .informativeText = "Because.",
                      .buttons = std::move(buttons),
                      .destructive = destructive},
                     [this](auto button) {
                       ++answers;
                       answer = button;
                     });
    return only();
  }
  static AlertWindow* only() {
    const auto windows = test::visibleWindows<AlertWindow>();
    return windows.size() == 1 ? windows[0] : nullptr;
  }
  static Button* button(const QWidget* window, const char* text) {
    for (auto* each : window->findChildren<Button*>()) {
      if (each->text() == QString::fromUtf8(text)) return each;
    }
    return nullptr;
  }
  static QStringList words(const QWidget* window) {
    QStringList all;
    for (const auto* text : window->findChildren<QLabel*>()) all << text->text();
    return all;
  }
  bool answered() {
    return test::waitFor([&] { return answers == 1 && !only(); });
  }

  RecordedPlatform platform{Date{0}};
  AlertDialogs dialogs{platform.appearance, platform.compositor, platform.dialogs};
  int answers = 0;
  std::optional<std::size_t> answer;
};

TEST_F(AlertDialogsTest, ShowsItsTextsAndAnswersWithTheFirstButton) {
  AlertWindow* window = ask();
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(words(window), (QStringList{QStringLiteral("Allow?"), QStringLiteral("Because.")}));
  EXPECT_TRUE(button(window, "Continue")->isDefault());
  EXPECT_EQ(window->focusWidget(), button(window, "Continue"));
  EXPECT_EQ(answers, 0);
  QTest::mouseClick(button(window, "Continue"), Qt::LeftButton);
  EXPECT_TRUE(answered());
  EXPECT_EQ(answer, 0U);
}

TEST_F(AlertDialogsTest, AnswersWithTheSecondButton) {
  QTest::mouseClick(button(ask(), "Not Now"), Qt::LeftButton);
  EXPECT_TRUE(answered());
  EXPECT_EQ(answer, 1U);
}

TEST_F(AlertDialogsTest, TheFirstButtonIsLastInTheRowAndReturnPressesIt) {
  AlertWindow* window = ask();
  EXPECT_GT(button(window, "Continue")->x(), button(window, "Not Now")->x());
  EXPECT_EQ(button(window, "Continue")->width(), button(window, "Not Now")->width());
  QTest::keyClick(window, Qt::Key_Return);
  EXPECT_TRUE(answered());
  EXPECT_EQ(answer, 0U);
}

TEST_F(AlertDialogsTest, ReturnPressesTheFocusedButton) {
  AlertWindow* window = ask();
  button(window, "Not Now")->setFocus(Qt::TabFocusReason);
  QTest::keyClick(window->focusWidget(), Qt::Key_Return);
  EXPECT_TRUE(answered());
  EXPECT_EQ(answer, 1U);
}

TEST_F(AlertDialogsTest, ReturnDoesNotPressADestructiveButton) {
  AlertWindow* window = ask({"Reset", "Cancel"}, true);
  EXPECT_EQ(window->focusWidget(), button(window, "Cancel"));
  QTest::keyClick(window, Qt::Key_Return);
  EXPECT_TRUE(answered());
  EXPECT_EQ(answer, 1U);
}

TEST_F(AlertDialogsTest, EscapeAndCloseAnswerWithNoButton) {
  for (const auto& buttons : std::vector<std::vector<Message>>{
           {"OK"}, {"Continue", "Not Now"}, {"Continue", "Not Now", "Never"}}) {
    for (const bool byKey : {true, false}) {
      answers = 0;
      answer = 7;
      AlertWindow* window = ask(buttons);
      if (byKey) {
        QTest::keyClick(window, Qt::Key_Escape);
      } else {
        window->close();
      }
      EXPECT_TRUE(answered());
      EXPECT_EQ(answer, std::nullopt);
    }
  }
}

TEST_F(AlertDialogsTest, ShowsAnErrorAsPlainText) {
  dialogs.showError("Could not write <b>file %1</b>", "No <i>space</i> & no time");
  ASSERT_NE(only(), nullptr);
  EXPECT_EQ(words(only()), (QStringList{QStringLiteral("Could not write <b>file %1</b>"),
                                        QStringLiteral("No <i>space</i> & no time")}));
  EXPECT_EQ(only()->findChildren<Button*>().size(), 1);
  QTest::mouseClick(button(only(), "OK"), Qt::LeftButton);
  EXPECT_TRUE(test::waitFor([] { return only() == nullptr; }));
}

TEST_F(AlertDialogsTest, ShowsAFailedExportInTheUsersLanguage) {
  QLocale::setDefault(QLocale(QStringLiteral("de_DE")));
  const Translations german(QStringLiteral(TOLLBEAM_TRANSLATIONS));
  QLocale::setDefault(QLocale::c());
  AppModel model(test::modelPorts(platform));
  model.exportHistoryCSV();
  platform.fileManager.failure = "Read-only file system";
  platform.dialogs.savePanelAnswers.at(0)("/media/disk 2/“my” 50%1.csv");
  const auto& [message, reason] = platform.dialogs.errors.at(0);
  dialogs.showError(message, reason);
  ASSERT_NE(only(), nullptr);
  const QString text = QString::fromUtf8(
      "Der Verlauf konnte nicht unter „/media/disk 2/“my” 50%1.csv“ gespeichert werden.");
  EXPECT_EQ(words(only()), (QStringList{text, QStringLiteral("Read-only file system")}));
  EXPECT_EQ(only()->windowTitle(), text);
}

TEST_F(AlertDialogsTest, IsANonModalWindow) {
  const AlertWindow* window = ask();
  EXPECT_TRUE(window->isWindow());
  EXPECT_FALSE(window->isModal());
  EXPECT_EQ(window->windowTitle(), QStringLiteral("Allow?"));
  QAccessibleInterface* accessible = test::spoken(only());
  EXPECT_EQ(accessible->role(), QAccessible::Dialog);
  EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Allow?"));
  EXPECT_EQ(accessible->text(QAccessible::Description), QStringLiteral("Because."));
}

TEST_F(AlertDialogsTest, OpensOverTheSettingsOrInTheMiddleOfTheScreen) {
  const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
  const auto isNear = [](QPoint a, QPoint b) { return (a - b).manhattanLength() <= 4; };
  EXPECT_TRUE(isNear(ask()->geometry().center(), area.center()));
  only()->close();
  ASSERT_TRUE(answered());
  QWidget settings(nullptr, Qt::Window);
  settings.setGeometry(40, 60, 400, 300);
  settings.show();
  EXPECT_TRUE(isNear(ask()->geometry().center(), settings.geometry().center()));
}

TEST_F(AlertDialogsTest, StaysOnTheScreen) {
  QWidget settings(nullptr, Qt::Window);
  settings.setGeometry(-150, 60, 200, 200);
  settings.show();
  EXPECT_GE(ask()->x(), 0);
}

TEST_F(AlertDialogsTest, HasAShadowWithACompositor) {
  EXPECT_EQ(ask()->width(), 300);
  only()->close();
  ASSERT_TRUE(answered());
  platform.compositor.running = true;
  const AlertWindow* window = ask();
  EXPECT_GT(window->width(), 300);
  ASSERT_FALSE(platform.compositor.shadows.empty());
  EXPECT_EQ(platform.compositor.shadows.back().second.bodyWidth, 300);
}

TEST_F(AlertDialogsTest, GrowsInHeightForLongTexts) {
  const int height = ask()->height();
  only()->close();
  ASSERT_TRUE(answered());
  dialogs.showError(
      "The history could not be saved to "
      "“/home/someone/Documents/a-rather-long-name-without-a-space.csv”.",
      "No space left on device");
  EXPECT_GT(only()->height(), height + 20);
  EXPECT_EQ(only()->width(), 300);
}

TEST_F(AlertDialogsTest, ClosesWithoutAnAnswerWhenTheDialogsEnd) {
  bool answeredHere = false;
  {
    AlertDialogs ending(platform.appearance, platform.compositor, platform.dialogs);
    ending.runAlert({.message = "?", .informativeText = "", .buttons = {"OK"}},
                    [&](auto) { answeredHere = true; });
    EXPECT_NE(only(), nullptr);
  }
  EXPECT_EQ(only(), nullptr);
  EXPECT_FALSE(answeredHere);
}

TEST_F(AlertDialogsTest, AnAnswerMayOpenTheNextDialog) {
  dialogs.runAlert({.message = "1", .informativeText = "", .buttons = {"OK"}},
                   [this](auto) { ask({"Second"}); });
  QTest::mouseClick(button(only(), "OK"), Qt::LeftButton);
  EXPECT_TRUE(
      test::waitFor([] { return only() && only()->windowTitle() == QStringLiteral("Allow?"); }));
}

TEST_F(AlertDialogsTest, UsesTheDesktopsSavePanel) {
  dialogs.runSavePanel({.suggestedName = "a.csv", .contentType = "text/csv", .extension = "csv"},
                       [](auto) {});
  ASSERT_EQ(platform.dialogs.savePanels.size(), 1U);
  EXPECT_EQ(platform.dialogs.savePanels[0].suggestedName, "a.csv");
}

}  // namespace
}  // namespace tollbeam

#include "ui/controls/DropDown.h"

#include <gtest/gtest.h>

#include <QHelpEvent>
#include <QPushButton>
#include <QStyleHints>
#include <QTextDocumentFragment>
#include <QToolTip>
#include <limits>

#include "recorded/RecordedPlatform.h"
#include "support/Widgets.h"
#include "ui/controls/DropDownList.h"

namespace tollbeam {
namespace {

QList<Choice> choices() {
  QList<Choice> all;
  for (const char* name : {"Default", "None", "Glass", "Ping", "Hero", "Pop", "Purr"}) {
    all.append({.text = QString::fromLatin1(name),
                .value = QString::fromLatin1(name).toLower(),
                .startsGroup = all.size() == 2});
  }
  return all;
}

class DropDownTest : public testing::Test {
 protected:
  DropDownTest() {
    window.resize(300, 400);
    button.setGeometry(100, 40, button.sizeHint().width(), button.sizeHint().height());
    other.setGeometry(10, 360, 80, 30);
    button.setAccessibleName(QStringLiteral("Sound"));
    button.setAccessibleDescription(QStringLiteral("Low battery"));
    button.setValue(QStringLiteral("ping"));
    QObject::connect(&button, &DropDown::chosen, [this](const QString& value) {
      chosen << value;
      button.setValue(value);
    });
    test::showActive(window);
    button.setFocus(Qt::TabFocusReason);
  }

  ~DropDownTest() override { QGuiApplication::styleHints()->setKeyboardInputInterval(-1); }

  DropDownList* open() {
    QTest::keyClick(&button, Qt::Key_Space);
    return button.list();
  }
  void key(Qt::Key which) { QTest::keyClick(QApplication::focusWidget(), which); }
  void type(const char* keys) {
    QTest::keyClicks(QApplication::focusWidget(), QString::fromLatin1(keys));
  }
  QString current() const {
    const auto* row = qobject_cast<QAbstractButton*>(QApplication::focusWidget());
    return row ? row->text() : QString();
  }

  // The tool tip that appears when the pointer rests on the button.
  QString toolTip() {
    QToolTip::hideText();
    const QPoint at = button.rect().center();
    QHelpEvent rest(QEvent::ToolTip, at, button.mapToGlobal(at));
    QCoreApplication::sendEvent(&button, &rest);
    return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
  }
  QImage picture() {
    button.resize(button.sizeHint());
    return button.grab().toImage();
  }

  RecordedAppearance appearance;
  Style style{appearance};
  QWidget window;
  DropDown button{style, choices(), &window};
  QPushButton other{&window};
  QStringList chosen;
};

TEST_F(DropDownTest, ShowsTheChoiceAndAnUnknownValueAsItIs) {
  EXPECT_EQ(button.shownText(), QStringLiteral("Ping"));
  button.setValue(QStringLiteral("Doorbell"));
  EXPECT_EQ(button.shownText(), QStringLiteral("Doorbell"));
  for (const DropDownRow* row : open()->rows()) EXPECT_FALSE(row->isTicked());
}

TEST_F(DropDownTest, ALongUnknownValueIsCutOffAndWholeInTheToolTip) {
  const QString rest(200, u'x');
  const QString name = QStringLiteral("<b>Bell</b> ") + rest;
  button.setValue(name);
  EXPECT_EQ(button.sizeHint().width(), style.px(200));
  EXPECT_EQ(test::spoken(&button)->text(QAccessible::Value), name);
  EXPECT_EQ(test::spoken(&button)->textInterface()->characterCount(), name.size());
  const QImage whole = picture();
  button.setValue(QStringLiteral("<b>Bell</b> ") + rest + rest);
  EXPECT_EQ(picture(), whole) << "cut off where the room ends";
  button.setValue(name);
  EXPECT_EQ(toolTip().remove(u'\n').remove(u' '), QString(name).remove(u' '));
  EXPECT_GT(toolTip().count(u'\n'), 0) << "the tool tip has a limited width";
}

TEST_F(DropDownTest, ChoicesAreShownWhole) {
  EXPECT_EQ(toolTip(), QString());
  const QString longest(60, u'W');
  DropDown wide(style, {{.text = longest, .value = QStringLiteral("w")}});
  EXPECT_GT(wide.sizeHint().width(), QFontMetrics(wide.font()).horizontalAdvance(longest));
}

TEST_F(DropDownTest, OpensOnTheTickedRow) {
  const DropDownList* list = open();
  ASSERT_NE(list, nullptr);
  EXPECT_TRUE(list->isVisible());
  EXPECT_EQ(list->window(), &window) << "it must be no window of its own";
  EXPECT_EQ(current(), QStringLiteral("Ping"));
  EXPECT_TRUE(list->rows()[3]->isTicked());
  const QPoint row = list->rows()[3]->mapTo(&window, list->rows()[3]->rect().center());
  EXPECT_NEAR(row.y(), button.geometry().center().y() + 60, 61)
      << "on the button, or in the window";
  EXPECT_TRUE(window.rect().contains(row));
}

TEST_F(DropDownTest, ArrowsHomeAndEndMoveAndReturnChooses) {
  open();
  key(Qt::Key_Down);
  EXPECT_EQ(current(), QStringLiteral("Hero"));
  key(Qt::Key_End);
  EXPECT_EQ(current(), QStringLiteral("Purr"));
  key(Qt::Key_Down);
  EXPECT_EQ(current(), QStringLiteral("Purr"));
  key(Qt::Key_Home);
  EXPECT_EQ(current(), QStringLiteral("Default"));
  key(Qt::Key_Up);
  EXPECT_EQ(current(), QStringLiteral("Default"));
  EXPECT_TRUE(chosen.isEmpty());
  key(Qt::Key_Return);
  EXPECT_EQ(chosen, QStringList{QStringLiteral("default")});
  EXPECT_EQ(button.list(), nullptr);
  EXPECT_TRUE(button.hasFocus());
}

TEST_F(DropDownTest, TypingFindsTheNextMatch) {
  // No pause ends the search, however slowly this runs.
  QGuiApplication::styleHints()->setKeyboardInputInterval(std::numeric_limits<int>::max());
  open();
  type("p");
  EXPECT_EQ(current(), QStringLiteral("Pop"));
  type("u");
  EXPECT_EQ(current(), QStringLiteral("Purr"));
}

TEST_F(DropDownTest, TypingTheSameLetterGoesFromMatchToMatch) {
  open();
  // Every letter begins a new search.
  QGuiApplication::styleHints()->setKeyboardInputInterval(0);
  for (const char* next : {"Pop", "Purr", "Ping", "Pop"}) {
    type("p");
    EXPECT_EQ(current(), QString::fromLatin1(next));
  }
}

TEST_F(DropDownTest, EscapeAndTabCloseWithoutAChoice) {
  for (const Qt::Key closing : {Qt::Key_Escape, Qt::Key_Tab, Qt::Key_F4}) {
    open();
    key(Qt::Key_Down);
    key(closing);
    EXPECT_EQ(button.list(), nullptr);
    EXPECT_TRUE(button.hasFocus());
  }
  EXPECT_TRUE(chosen.isEmpty());
}

TEST_F(DropDownTest, ChoosingTheSameAgainEmitsNothing) {
  open();
  key(Qt::Key_Return);
  EXPECT_TRUE(chosen.isEmpty());
  EXPECT_EQ(button.list(), nullptr);
}

TEST_F(DropDownTest, AClickOnARowChoosesIt) {
  QTest::mouseClick(&button, Qt::LeftButton);
  ASSERT_NE(button.list(), nullptr);
  QTest::mouseClick(button.list()->rows()[0], Qt::LeftButton);
  EXPECT_EQ(chosen, QStringList{QStringLiteral("default")});
}

TEST_F(DropDownTest, AClickElsewhereOnlyClosesTheList) {
  int clicks = 0;
  QObject::connect(&other, &QPushButton::clicked, [&] { ++clicks; });
  open();
  QTest::mouseClick(&other, Qt::LeftButton);
  EXPECT_EQ(button.list(), nullptr);
  EXPECT_EQ(clicks, 0);
  QTest::mouseClick(&other, Qt::LeftButton);
  EXPECT_EQ(clicks, 1);
  EXPECT_TRUE(chosen.isEmpty());
}

TEST_F(DropDownTest, ClosesWhenDisabledOrHidden) {
  open();
  button.setEnabled(false);
  EXPECT_EQ(button.list(), nullptr);
  button.setEnabled(true);
  button.setFocus();
  open();
  window.hide();
  EXPECT_EQ(button.list(), nullptr);
}

TEST_F(DropDownTest, StaysInsideALowWindow) {
  window.resize(300, 120);
  QCoreApplication::processEvents();
  const DropDownList* list = open();
  ASSERT_NE(list, nullptr);
  key(Qt::Key_End);
  const QWidget* last = list->rows().constLast();
  EXPECT_TRUE(window.rect().contains(last->mapTo(&window, last->rect().center()))) << "scrolled to";
}

TEST_F(DropDownTest, IsAComboBoxForAScreenReader) {
  QAccessibleInterface* heard = test::spoken(&button);
  EXPECT_EQ(heard->role(), QAccessible::ComboBox);
  EXPECT_EQ(heard->text(QAccessible::Name), QStringLiteral("Sound"));
  EXPECT_EQ(heard->text(QAccessible::Description), QStringLiteral("Low battery"));
  EXPECT_EQ(heard->text(QAccessible::Value), QStringLiteral("Ping"));
  EXPECT_EQ(heard->textInterface()->text(0, 4), QStringLiteral("Ping"));
  EXPECT_TRUE(heard->state().collapsed);
  heard->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
  ASSERT_NE(button.list(), nullptr);
  EXPECT_TRUE(heard->state().expanded);

  QAccessibleInterface* list = test::spoken(button.list());
  EXPECT_EQ(list->role(), QAccessible::List);
  QAccessibleInterface* row = test::spoken(button.list()->rows()[5]);
  EXPECT_EQ(row->role(), QAccessible::ListItem);
  EXPECT_EQ(row->text(QAccessible::Name), QStringLiteral("Pop"));
  EXPECT_FALSE(row->state().selected);
  EXPECT_TRUE(test::spoken(button.list()->rows()[3])->state().selected);
  row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(chosen, QStringList{QStringLiteral("pop")});
  EXPECT_EQ(heard->text(QAccessible::Value), QStringLiteral("Pop"));
}

}  // namespace
}  // namespace tollbeam

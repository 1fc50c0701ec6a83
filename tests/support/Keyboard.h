// The keys that press every button.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QKeyEvent>
#include <QSignalSpy>
#include <QTest>

namespace tollbeam::test {

inline void expectPressedByTheKeyboard(QAbstractButton& button) {
  QSignalSpy clicks(&button, &QAbstractButton::clicked);
  for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
    clicks.clear();
    QTest::keyClick(&button, key);
    EXPECT_EQ(clicks.size(), 1) << key;
  }
  clicks.clear();
  QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
  QCoreApplication::sendEvent(&button, &held);
  QTest::keyClick(&button, Qt::Key_A);
  EXPECT_EQ(clicks.size(), 0);
}

}  // namespace tollbeam::test

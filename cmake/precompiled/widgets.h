#pragma once

#include "std.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QApplication>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QLocale>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>

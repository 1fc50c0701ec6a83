#pragma once

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "widgets.h"

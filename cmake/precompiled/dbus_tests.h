#pragma once

#include <gtest/gtest.h>

#include "dbus.h"

#pragma once

#include <gtest/gtest.h>

#include "std.h"

#include "ui/AppDelegate.h"

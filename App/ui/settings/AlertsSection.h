// The five alerts: a card each, with the switch, the number that the alert waits for, and its
// sound.
#pragma once

#include <functional>

#include "platform/SystemSounds.h"
#include "ui/settings/Bindings.h"
#include "ui/settings/Form.h"

namespace tollbeam {

/// `switchedOn` is called when the user has switched an alert on.
void addAlerts(Form& form, Bindings& bindings, SystemSounds& sounds,
               const std::function<void()>& switchedOn);

}  // namespace tollbeam

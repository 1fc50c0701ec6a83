// Messages in the user's language.
#pragma once

#include <QString>
#include <string>

#include "values/Message.h"

namespace tollbeam {

/// The message in the language of the installed translators; its English text when none has it.
[[nodiscard]] QString translated(const Message& message);

/// The same in UTF-8, for the ports.
[[nodiscard]] std::string translatedUtf8(const Message& message);

/// Whether translators are shown the pattern of this message.
[[nodiscard]] bool isTranslatable(const Message& message);

}  // namespace tollbeam

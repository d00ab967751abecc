// Boxes with a message or a question, before the dialog that is in use.
#pragma once

#include <QString>
#include <string_view>

#include "platform/message_box.h"

namespace qlm {

// As platform::MessageBox: returns when it is closed. A text that the translation knows is shown in the
// language of the dialogs.
void ShowBox(platform::BoxIcon icon, std::u16string_view title, std::u16string_view text);
// True for Yes; anything else is No.
bool Ask(const QString& title, const QString& question);

}  // namespace qlm

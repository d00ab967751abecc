// Boxes with a message, in a small window of their own.
#pragma once

#include <cstdint>
#include <string_view>

namespace platform {

enum class BoxIcon { kInformation, kWarning, kCritical };

// Shows a text, whose lines may end in CR LF or LF. Returns when any key, its button or its close button was
// pressed, or when the program is asked to end, which the next pump tells; keys of its first quarter of a
// second do not count. It stands before the game window when there is one; what happens to that meanwhile
// comes with the next pump. To standard error where there is no display or no font.
void MessageBox(BoxIcon icon, std::u16string_view title, std::u16string_view text);

// From here on this routine shows the boxes, for as long as another one than the game has the screen; null
// gives them back.
void ShowBoxesWith(void (*shower)(BoxIcon icon, std::u16string_view title, std::u16string_view text));

}  // namespace platform

// Half-width katakana in Latin letters, for a font that has no others.
#pragma once

#include "base/text.h"

namespace qlm {

// Kana by kana, in capitals; a mark or a small kana changes the letters before it. All else stays as it is.
Text Romanise(TextView narrow);

}  // namespace qlm

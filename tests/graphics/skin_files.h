// Skins of a few lines for the tests of this folder.
#pragma once

#include <initializer_list>
#include <string>

#include "tests/graphics/picture_files.h"

namespace qlm {

class SkinTest : public DisplayTest {
 protected:
  // Writes a skin of these lines, each ended by CR LF, into the data folder; gives its path.
  Text WriteSkin(std::initializer_list<const char*> lines) const {
    std::string text;
    for (const char* line : lines) text.append(line).append("\r\n");
    return WriteData(u"_qlmfiles\\ink.brd", text);
  }
};

}  // namespace qlm

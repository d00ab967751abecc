// Text of a chart.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace assetmaker {

// UTF-8 in code page 932, which charts are written in. Nothing when it has a letter that the code page lacks.
std::optional<std::string> InCodePage932(std::string_view utf8);

}  // namespace assetmaker

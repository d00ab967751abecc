// Start values of the skin.
#include "state/skin.h"

#include <tuple>

namespace qlm {
namespace {

template <typename References>
struct ValuesOf;
template <typename... Ts>
struct ValuesOf<std::tuple<Ts&...>> {
  using Type = std::tuple<Ts...>;
};
template <typename References>
using Values = typename ValuesOf<References>::Type;

}  // namespace

void ClearSkinTables() {
  constexpr int16_t kLowestLine = 480;
  SkinTables() = Values<decltype(SkinTables())>();
  JudgeY = kLowestLine;
}

void ResetSkin() {
  ClearSkinTables();
  OptionMark = {};
  skinList.clear();
  SkinPath.clear();
  SkinIndex = 0;
  SkinMapPath = {};
  SkinMapIndex = {};
}

}  // namespace qlm

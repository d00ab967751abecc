// Any bytes as a skin: the tables stay within their limits, with a report and without one they hold the same.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "graphics/clips.h"
#include "graphics/skin_directives.h"
#include "state/skin.h"

namespace {

void Check(const qlm::SkinOrder& order) {
  if (order.last < -1 || order.last > 255) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  qlm::ClearSkinTables();
  qlm::ReadSkin(bytes, nullptr);
  const qlm::SkinOrder clips = qlm::ClipList;
  const auto options = qlm::OptionPos;
  Check(clips);
  Check(qlm::LayerList);
  for (int32_t i = 0; i <= clips.last; ++i) {
    const qlm::SkinClip& clip = qlm::Clip[clips.entries[static_cast<size_t>(i)]];
    if (clip.frames < 1 || !qlm::FrameOf(clip, clip.frames - 1)) std::abort();
  }
  qlm::ClearSkinTables();
  qlm::SkinReport report;
  qlm::ReadSkin(bytes, &report);
  if (qlm::ClipList.last != clips.last || qlm::OptionPos != options) std::abort();
  for (const qlm::SkinReport::Remark& remark : report.remarks) {
    if (remark.line < 1 || static_cast<size_t>(remark.line) > report.lines.size()) std::abort();
  }
  return 0;
}

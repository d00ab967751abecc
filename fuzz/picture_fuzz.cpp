// Any bytes to the picture decoders: they give a surface within the limits, or none.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "platform/picture.h"

namespace {

void Check(const platform::SurfacePtr& surface) {
  if (!surface) return;
  if (int64_t{surface->Width()} * surface->Height() > platform::kMaxPicturePixels) std::abort();
  for (int32_t y = 0; y < surface->Height(); ++y) {
    for (const platform::Colour colour : surface->Row(y)) {
      if (colour > 0xFFFFFF) std::abort();
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Check(platform::DecodeBmp({data, size}));
  Check(platform::DecodePicture({data, size}));
  return 0;
}

// Software images.
#include "platform/surface.h"

namespace platform {

Surface::Surface(int32_t width, int32_t height) : width_(width), height_(height) {}
Surface::~Surface() = default;

}  // namespace platform

// The picture converter: any picture that SDL_image reads, on black, as a BMP of 24 bits or of 256 colours.
#include <SDL_image.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>
#include <vector>

namespace {

struct SurfaceDeleter {
  void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};
using Surface = std::unique_ptr<SDL_Surface, SurfaceDeleter>;

using Color = std::array<Uint8, 3>;  // red, green, blue

// Black is the transparent colour of a layer, so a pixel is either drawn whole or not at all: half covered
// ones would stand around the drawing as a dark seam.
Surface WithHardEdge(SDL_Surface* picture) {
  Surface hard(SDL_ConvertSurfaceFormat(picture, SDL_PIXELFORMAT_ARGB8888, 0));
  if (!hard) return nullptr;
  for (int y = 0; y < hard->h; ++y) {
    auto* row =
        reinterpret_cast<Uint32*>(static_cast<Uint8*>(hard->pixels) + std::ptrdiff_t{y} * hard->pitch);
    for (int x = 0; x < hard->w; ++x) row[x] = row[x] >> 24 < 128 ? 0 : row[x] | 0xFF000000;
  }
  return hard;
}

Surface OnBlack(SDL_Surface* picture) {
  Surface flat(SDL_CreateRGBSurfaceWithFormat(0, picture->w, picture->h, 24, SDL_PIXELFORMAT_BGR24));
  if (!flat) return nullptr;
  SDL_FillRect(flat.get(), nullptr, SDL_MapRGB(flat->format, 0, 0, 0));
  SDL_SetSurfaceBlendMode(picture, SDL_BLENDMODE_BLEND);
  return SDL_BlitSurface(picture, nullptr, flat.get(), nullptr) == 0 ? std::move(flat) : nullptr;
}

// What is drawn on a ground of one colour keeps its soft edges when the ground itself becomes black: they run
// over into the same colour wherever it is laid.
void LiftFrom(const Color& ground, SDL_Surface& flat) {
  for (int y = 0; y < flat.h; ++y) {
    Uint8* pixel = static_cast<Uint8*>(flat.pixels) + std::ptrdiff_t{y} * flat.pitch;
    for (int x = 0; x < flat.w; ++x, pixel += 3) {
      if (Color{pixel[2], pixel[1], pixel[0]} == ground) std::fill_n(pixel, 3, Uint8{0});
    }
  }
}

std::vector<Color> PixelsOf(const SDL_Surface& flat) {
  std::vector<Color> pixels;
  for (int y = 0; y < flat.h; ++y) {
    const Uint8* pixel = static_cast<const Uint8*>(flat.pixels) + std::ptrdiff_t{y} * flat.pitch;
    for (int x = 0; x < flat.w; ++x, pixel += 3) pixels.push_back({pixel[2], pixel[1], pixel[0]});
  }
  return pixels;
}

// Colours that will share one entry of the palette.
struct Box {
  std::vector<Color> colors;
  std::size_t channel = 0;  // in which they differ most
  int spread = 0;           // by how much

  // About what the box costs as long as it is one colour.
  double Error() const { return static_cast<double>(spread) * spread * static_cast<double>(colors.size()); }
};

Box BoxOf(std::vector<Color> colors) {
  Box box{std::move(colors)};
  for (std::size_t channel = 0; channel < 3; ++channel) {
    const auto [low, high] =
        std::minmax_element(box.colors.begin(), box.colors.end(),
                            [=](const Color& a, const Color& b) { return a[channel] < b[channel]; });
    const int spread = (*high)[channel] - (*low)[channel];
    if (spread > box.spread) box.channel = channel, box.spread = spread;
  }
  return box;
}

Color Average(const std::vector<Color>& colors) {
  std::array<std::size_t, 3> sums = {};
  for (const Color& color : colors) {
    for (std::size_t channel = 0; channel < 3; ++channel) sums[channel] += color[channel];
  }
  Color average;
  for (std::size_t channel = 0; channel < 3; ++channel) {
    average[channel] = static_cast<Uint8>((sums[channel] + colors.size() / 2) / colors.size());
  }
  return average;
}

// Median cut: the box with the greatest error is halved until there are enough. Pure black keeps an entry of
// its own.
std::vector<Color> PaletteOf(std::vector<Color> pixels) {
  constexpr std::size_t entries = 256;
  std::vector<Color> palette = {{0, 0, 0}};
  std::erase(pixels, palette.front());
  if (pixels.empty()) return palette;
  std::vector<Box> boxes = {BoxOf(std::move(pixels))};
  while (boxes.size() < entries - 1) {
    const auto worst = std::max_element(boxes.begin(), boxes.end(),
                                        [](const Box& a, const Box& b) { return a.Error() < b.Error(); });
    if (worst->spread == 0) break;
    std::vector<Color> low = std::move(worst->colors);
    const std::size_t channel = worst->channel;
    std::sort(low.begin(), low.end(),
              [=](const Color& a, const Color& b) { return a[channel] < b[channel]; });
    // Equal colours stay together.
    auto cut = std::lower_bound(low.begin(), low.end(), low[low.size() / 2][channel],
                                [=](const Color& a, Uint8 value) { return a[channel] < value; });
    if (cut == low.begin()) {
      cut = std::upper_bound(low.begin(), low.end(), low.front()[channel],
                             [=](Uint8 value, const Color& a) { return value < a[channel]; });
    }
    std::vector<Color> high(cut, low.end());
    low.erase(cut, low.end());
    *worst = BoxOf(std::move(low));
    boxes.push_back(BoxOf(std::move(high)));
  }
  for (const Box& box : boxes) palette.push_back(Average(box.colors));
  return palette;
}

std::size_t Nearest(const std::vector<Color>& palette, const Color& color) {
  std::size_t nearest = 0;
  int least = 1 << 30;
  for (std::size_t i = 0; i < palette.size(); ++i) {
    int distance = 0;
    for (std::size_t channel = 0; channel < 3; ++channel) {
      const int difference = palette[i][channel] - color[channel];
      distance += difference * difference;
    }
    if (distance < least) least = distance, nearest = i;
  }
  return nearest;
}

Surface WithPalette(const SDL_Surface& flat) {
  const std::vector<Color> pixels = PixelsOf(flat);
  const std::vector<Color> palette = PaletteOf(pixels);
  Surface indexed(SDL_CreateRGBSurfaceWithFormat(0, flat.w, flat.h, 8, SDL_PIXELFORMAT_INDEX8));
  if (!indexed) return nullptr;
  std::vector<SDL_Color> colors(256, SDL_Color{0, 0, 0, 255});
  for (std::size_t i = 0; i < palette.size(); ++i)
    colors[i] = {palette[i][0], palette[i][1], palette[i][2], 255};
  SDL_SetPaletteColors(indexed->format->palette, colors.data(), 0, 256);
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    const std::size_t x = i % static_cast<std::size_t>(flat.w), y = i / static_cast<std::size_t>(flat.w);
    static_cast<Uint8*>(indexed->pixels)[y * static_cast<std::size_t>(indexed->pitch) + x] =
        static_cast<Uint8>(Nearest(palette, pixels[i]));
  }
  return indexed;
}

// The colour written as six hexadecimal digits.
std::optional<Color> ColorOf(std::string_view digits) {
  Uint32 rgb = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, rgb, 16);
  if (digits.size() != 6 || error != std::errc() || stop != end) return std::nullopt;
  return Color{static_cast<Uint8>(rgb >> 16), static_cast<Uint8>(rgb >> 8), static_cast<Uint8>(rgb)};
}

}  // namespace

int main(int argc, char** argv) {
  bool palette = false, layer = false, known = argc >= 3;
  std::optional<Color> ground;
  for (int i = 3; i < argc; ++i) {
    const std::string_view option = argv[i];
    if (option == "--palette")
      palette = true;
    else if (option == "--layer")
      layer = true;
    else if (option.starts_with("--ground="))
      known = (ground = ColorOf(option.substr(9))).has_value() && known;
    else
      known = false;
  }
  if (!known) {
    std::fputs("usage: picture_converter IN OUT.bmp [--palette] [--layer] [--ground=RRGGBB]\n", stderr);
    return 2;
  }
  Surface result(IMG_Load(argv[1]));
  if (result && layer) result = WithHardEdge(result.get());
  if (result) result = OnBlack(result.get());
  if (result && ground) LiftFrom(*ground, *result);
  if (result && palette) result = WithPalette(*result);
  if (!result || SDL_SaveBMP(result.get(), argv[2]) != 0) {
    std::fprintf(stderr, "picture_converter: %s to %s: %s\n", argv[1], argv[2], SDL_GetError());
    return 1;
  }
  return 0;
}

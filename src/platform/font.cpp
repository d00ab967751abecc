// Text drawn with an outline font: fonts opened by path, and drawn line by line over what is there.
#include "platform/font.h"

#include <SDL.h>
#include <SDL_ttf.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/text.h"

namespace platform {
namespace {

constexpr int32_t kSmallestHeight = 4;
constexpr int32_t kGreatestHeight = 256;
// What a line of text can hold at most; the screen ends long before.
constexpr size_t kLongestLine = 1024;

// In the order of preference: a later one stands in for a character that those before it lack.
constexpr std::array kFontPaths{"/usr/share/fonts/truetype/monapo/monapo.ttf",
                                "/usr/share/fonts/opentype/ipafont-gothic/ipag.ttf"};

struct FontClose {
  void operator()(TTF_Font* font) const { TTF_CloseFont(font); }
};
using Font = std::unique_ptr<TTF_Font, FontClose>;

using Face = std::pair<int32_t, bool>;  // height in pixels, bold

using FontSet = std::vector<Font>;  // those that could be opened, in the order of the paths
std::map<Face, FontSet> openFonts;

const FontSet& FontsOf(Face face) {
  if (const auto found = openFonts.find(face); found != openFonts.end()) {
    return found->second;
  }
  FontSet& fonts = openFonts[face];
  if (TTF_WasInit() == 0 && TTF_Init() != 0) {
    return fonts;
  }
  const auto [height, bold] = face;
  for (const char* path : kFontPaths) {
    if (Font font{TTF_OpenFont(path, height)}) {
      TTF_SetFontStyle(font.get(), bold ? TTF_STYLE_BOLD : TTF_STYLE_NORMAL);
      TTF_SetFontHinting(font.get(), TTF_HINTING_LIGHT);
      fonts.push_back(std::move(font));
    }
  }
  return fonts;
}

// Neighbouring characters that one font draws.
struct Run {
  TTF_Font* font;
  std::u16string text;
};

bool HighSurrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool LowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

// Control characters and lone surrogates are left out.
std::vector<Run> SplitIntoRuns(std::u16string_view text, const FontSet& fonts) {
  std::vector<Run> runs;
  text = text.substr(0, kLongestLine);
  for (size_t i = 0; i < text.size(); ++i) {
    uint32_t code = text[i];
    size_t units = 1;
    if (HighSurrogate(text[i]) && i + 1 < text.size() && LowSurrogate(text[i + 1])) {
      code = 0x10000 + ((code & 0x3FF) << 10) + (text[i + 1] & 0x3FFU);
      units = 2;
    } else if (code < 0x20 || HighSurrogate(text[i]) || LowSurrogate(text[i])) {
      continue;
    }
    const auto has = [code](const Font& font) { return TTF_GlyphIsProvided32(font.get(), code) != 0; };
    const auto found = std::ranges::find_if(fonts, has);
    TTF_Font* const font = found == fonts.end() ? fonts.front().get() : found->get();
    if (runs.empty() || runs.back().font != font) {
      runs.push_back({font, {}});
    }
    runs.back().text += text.substr(i, units);
    i += units - 1;
  }
  return runs;
}

// Lays the drawn glyphs, whose alpha is their shape, over the surface.
void LayOver(Surface& surface, int64_t left, int64_t top, const SDL_Surface& glyphs, Colour colour) {
  const int64_t firstRow = std::max<int64_t>(0, -top);
  const int64_t endRow = std::min<int64_t>(glyphs.h, surface.Height() - top);
  const int64_t firstColumn = std::max<int64_t>(0, -left);
  const int64_t endColumn = std::min<int64_t>(glyphs.w, surface.Width() - left);
  for (int64_t y = firstRow; y < endRow; ++y) {
    const auto* const shape = reinterpret_cast<const uint32_t*>(  // a 32-bit format, rows aligned by SDL
        static_cast<const unsigned char*>(glyphs.pixels) + y * glyphs.pitch);
    const std::span<Colour> row = surface.Row(static_cast<int32_t>(top + y));
    for (int64_t x = firstColumn; x < endColumn; ++x) {
      Colour& pixel = row[static_cast<size_t>(left + x)];
      pixel = Mix(pixel, colour, shape[x] >> 24);
    }
  }
}

std::vector<Run> RunsOf(std::u16string_view text, int32_t height, bool bold) {
  const FontSet& fonts = FontsOf({std::clamp(height, kSmallestHeight, kGreatestHeight), bold});
  return fonts.empty() ? std::vector<Run>{} : SplitIntoRuns(text, fonts);
}

int32_t WidthOf(const Run& run) {
  int width = 0;
  return TTF_SizeUTF8(run.font, EncodeUtf8(run.text).c_str(), &width, nullptr) == 0 ? width : 0;
}

}  // namespace

void DrawFontText(Surface& surface, int32_t x, int32_t y, std::u16string_view text, int32_t height,
                  Colour colour, bool bold) {
  const std::vector<Run> runs = RunsOf(text, height, bold);
  // The fonts of one line stand on one base line, the first font's.
  int64_t left = x;
  for (const Run& run : runs) {
    SDL_Surface* const glyphs =
        TTF_RenderUTF8_Blended(run.font, EncodeUtf8(run.text).c_str(), SDL_Color{255, 255, 255, 255});
    if (glyphs != nullptr) {
      LayOver(surface, left, int64_t{y} + TTF_FontAscent(runs.front().font) - TTF_FontAscent(run.font),
              *glyphs, colour);
      SDL_FreeSurface(glyphs);
    }
    left += WidthOf(run);
  }
}

int32_t FontTextWidth(std::u16string_view text, int32_t height, bool bold) {
  int32_t width = 0;
  for (const Run& run : RunsOf(text, height, bold)) {
    width += WidthOf(run);
  }
  return width;
}

void CloseFonts() {
  openFonts.clear();
  if (TTF_WasInit() != 0) {
    TTF_Quit();
  }
}

}  // namespace platform

// Text drawn with an outline font: fonts opened by path, and drawn line by line over what is there.
#include "platform/font.h"

#include <SDL.h>
#include <SDL_ttf.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/files.h"
#include "platform/text.h"

namespace platform {
namespace {

constexpr int32_t kSmallestHeight = 4;
constexpr int32_t kGreatestHeight = 256;
// What a line of text can hold at most; the screen ends long before.
constexpr size_t kLongestLine = 1024;

// In the order of preference: a later one stands in for a character that those before it lack.
constexpr std::array kFontFolders{"/usr/share/fonts/truetype/monapo/",
                                  "/usr/share/fonts/opentype/ipafont-gothic/"};
constexpr std::array kFontFiles{"monapo.ttf", "ipag.ttf"};

struct FontClose {
  void operator()(TTF_Font* font) const { TTF_CloseFont(font); }
};
using Font = std::unique_ptr<TTF_Font, FontClose>;

using Face = std::pair<int32_t, bool>;  // height in pixels, bold

using FontSet = std::vector<Font>;  // those that could be opened, in the order of the paths
std::map<Face, FontSet> openFonts;

std::string OwnFonts() { return SystemPath(ProgramFolder() + u"\\fonts\\"); }

const FontSet& FontsOf(Face face) {
  if (const auto found = openFonts.find(face); found != openFonts.end()) {
    return found->second;
  }
  FontSet& fonts = openFonts[face];
  if (TTF_WasInit() == 0 && TTF_Init() != 0) {
    return fonts;
  }
  const auto [height, bold] = face;
  for (size_t i = 0; i < kFontFiles.size(); ++i) {
    // A program that was unpacked into a folder has fonts beside it, for systems that lack them.
    Font font{TTF_OpenFont((std::string(kFontFolders[i]) + kFontFiles[i]).c_str(), height)};
    if (!font) font.reset(TTF_OpenFont((OwnFonts() + kFontFiles[i]).c_str(), height));
    if (font) {
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

std::vector<Run> RunsOf(std::u16string_view text, int32_t height, bool bold) {
  const FontSet& fonts = FontsOf({std::clamp(height, kSmallestHeight, kGreatestHeight), bold});
  return fonts.empty() ? std::vector<Run>{} : SplitIntoRuns(text, fonts);
}

int32_t WidthOf(const Run& run) {
  int width = 0;
  return TTF_SizeUTF8(run.font, EncodeUtf8(run.text).c_str(), &width, nullptr) == 0 ? width : 0;
}

struct SurfaceFree {
  void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};
using Glyphs = std::unique_ptr<SDL_Surface, SurfaceFree>;

// Drawn characters, whose alpha is their shape, and where they stand in the line.
struct Piece {
  Glyphs glyphs;
  int32_t left;
  int32_t top;
};

// The fonts of one line stand on one base line, the first font's.
std::vector<Piece> Draw(const std::vector<Run>& runs) {
  std::vector<Piece> pieces;
  int32_t left = 0;
  for (const Run& run : runs) {
    Glyphs glyphs(
        TTF_RenderUTF8_Blended(run.font, EncodeUtf8(run.text).c_str(), SDL_Color{255, 255, 255, 255}));
    if (glyphs) {
      pieces.push_back(
          {std::move(glyphs), left, TTF_FontAscent(runs.front().font) - TTF_FontAscent(run.font)});
    }
    left += WidthOf(run);
  }
  return pieces;
}

// Puts the shape of a piece into the mask, which is large enough for it.
void Lay(TextMask& mask, const Piece& piece) {
  for (int32_t y = 0; y < piece.glyphs->h; ++y) {
    const auto* const shape = reinterpret_cast<const uint32_t*>(  // a 32-bit format, rows aligned by SDL
        static_cast<const unsigned char*>(piece.glyphs->pixels) + ptrdiff_t{y} * piece.glyphs->pitch);
    const ptrdiff_t row = ptrdiff_t{piece.top - mask.top + y} * mask.width + piece.left;
    for (ptrdiff_t x = 0; x < piece.glyphs->w; ++x) {
      uint8_t& ink = mask.ink[static_cast<size_t>(row + x)];
      ink = std::max(ink, static_cast<uint8_t>(shape[x] >> 24));
    }
  }
}

// The mask brought to `width` columns, each the mean of those that it replaces.
TextMask Narrowed(const TextMask& wide, int32_t width) {
  TextMask narrow{wide.top, width, wide.height, {}};
  narrow.ink.resize(static_cast<size_t>(width) * static_cast<size_t>(wide.height));
  // Both are measured in pieces of which a wide column has `width` and a narrow one `wide.width`.
  for (int64_t y = 0; y < wide.height; ++y) {
    const uint8_t* const row = wide.ink.data() + y * wide.width;
    for (int64_t x = 0; x < width; ++x) {
      int64_t sum = 0;
      for (int64_t at = x * wide.width; at < (x + 1) * wide.width;) {
        const int64_t column = at / width;
        const int64_t next = std::min<int64_t>((column + 1) * width, (x + 1) * wide.width);
        sum += (next - at) * row[column];
        at = next;
      }
      narrow.ink[static_cast<size_t>(y * width + x)] =
          static_cast<uint8_t>((sum + wide.width / 2) / wide.width);
    }
  }
  return narrow;
}

}  // namespace

TextMask RenderText(std::u16string_view text, const FontLook& look) {
  TextMask mask;
  const std::vector<Piece> pieces = Draw(RunsOf(text, look.height, look.bold));
  int32_t bottom = 0;
  for (const Piece& piece : pieces) {
    mask.top = std::min(mask.top, piece.top);
    bottom = std::max(bottom, piece.top + piece.glyphs->h);
    mask.width = std::max(mask.width, piece.left + piece.glyphs->w);
  }
  mask.height = bottom - mask.top;
  mask.ink.resize(static_cast<size_t>(mask.width) * static_cast<size_t>(mask.height));
  for (const Piece& piece : pieces) Lay(mask, piece);
  const int64_t height = std::clamp(look.height, kSmallestHeight, kGreatestHeight);
  const int64_t half = 2 * int64_t{look.width};
  if (look.width <= 0 || half >= height || mask.width == 0) return mask;
  return Narrowed(mask, std::max(1, static_cast<int32_t>(mask.width * half / height)));
}

void DrawMask(Surface& surface, const Rect& clip, int32_t x, int32_t y, const TextMask& mask, Colour colour) {
  const int64_t left = x;
  const int64_t top = int64_t{y} + mask.top;
  const int64_t firstRow = std::max<int64_t>({0, -top, clip.top - top});
  const int64_t endRow = std::min<int64_t>({mask.height, surface.Height() - top, clip.bottom - top});
  const int64_t firstColumn = std::max<int64_t>({0, -left, clip.left - left});
  const int64_t endColumn = std::min<int64_t>({mask.width, surface.Width() - left, clip.right - left});
  for (int64_t line = firstRow; line < endRow; ++line) {
    const uint8_t* const ink = mask.ink.data() + line * mask.width;
    const std::span<Colour> row = surface.Row(static_cast<int32_t>(top + line));
    for (int64_t column = firstColumn; column < endColumn; ++column) {
      if (ink[column] == 0) continue;
      Colour& pixel = row[static_cast<size_t>(left + column)];
      pixel = Mix(pixel, colour, ink[column]);
    }
  }
}

void DrawFontText(Surface& surface, int32_t x, int32_t y, std::u16string_view text, int32_t height,
                  Colour colour, bool bold) {
  DrawMask(surface, surface.Bounds(), x, y, RenderText(text, {.height = height, .bold = bold}), colour);
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

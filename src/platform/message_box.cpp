// The message box: a picture drawn once for each look of the button, and a loop of its own until it is
// closed.
#include "platform/message_box.h"

#include <SDL.h>

#include <algorithm>
#include <bitset>
#include <cmath>
#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/font.h"
#include "platform/line_breaks.h"
#include "platform/surface.h"
#include "platform/text.h"
#include "platform/window.h"

namespace platform {
namespace {

void (*otherShower)(BoxIcon icon, std::u16string_view title, std::u16string_view text) = nullptr;

// Lamp light on a night desk.
constexpr Colour kDeskAbove = Rgb(0x13, 0x1A, 0x2E);
constexpr Colour kDeskBelow = Rgb(0x0B, 0x10, 0x20);
constexpr Colour kEdge = Rgb(0x33, 0x3D, 0x5A);
constexpr Colour kPaper = Rgb(0xF3, 0xEA, 0xD3);
constexpr Colour kTeal = Rgb(0x3F, 0xB8, 0xAF);
constexpr Colour kGold = Rgb(0xD9, 0xA4, 0x41);
constexpr Colour kWax = Rgb(0xC8, 0x38, 0x5A);

// Pixels.
constexpr int32_t kMargin = 24;
constexpr int32_t kIcon = 48;
constexpr int32_t kBesideIcon = 20;
constexpr int32_t kTitleHeight = 18;
constexpr int32_t kTextHeight = 16;
constexpr int32_t kLineHeight = 24;
constexpr int32_t kTextTop = kMargin + kTitleHeight + 22;
constexpr int32_t kTextLeft = kMargin + kIcon + kBesideIcon;
constexpr int32_t kNarrowest = 240;  // of the text
constexpr int32_t kWidest = 448;
constexpr int32_t kButtonWidth = 104;
constexpr int32_t kButtonHeight = 32;
constexpr int32_t kAboveButton = 20;

// For these milliseconds behind the coming of the keyboard keys do not count: nobody can have read anything,
// and a Shift that is held is told anew.
constexpr Uint32 kUnread = 250;

int32_t WidthOfLine(std::u16string_view line) { return FontTextWidth(line, kTextHeight); }

struct Box {
  BoxIcon icon;
  std::u16string title;
  std::vector<std::u16string> lines;
  int32_t width;
  int32_t height;
  Rect button;
};

// Lines past the screen's end are left out.
Box LayOut(BoxIcon icon, std::u16string_view title, std::u16string_view text, const SDL_Rect& screen) {
  const int32_t around = kTextLeft + kMargin;
  const int32_t room = std::clamp(screen.w - around - 2 * kMargin, 1, kWidest);
  Box box{icon, std::u16string(title), BreakLines(text, room, WidthOfLine), 0, 0, {}};
  const int32_t belowText = kAboveButton + kButtonHeight + kMargin;
  const int32_t most = std::max((screen.h - 2 * kMargin - kTextTop - belowText) / kLineHeight, 1);
  box.lines.resize(std::min(box.lines.size(), static_cast<size_t>(most)));

  int32_t textWidth = std::min(std::max(kNarrowest, FontTextWidth(title, kTitleHeight)), room);
  for (const std::u16string& line : box.lines) textWidth = std::max(textWidth, WidthOfLine(line));
  box.width = around + textWidth;
  box.height = kTextTop + static_cast<int32_t>(box.lines.size()) * kLineHeight + belowText;
  const int32_t right = box.width - kMargin;
  const int32_t bottom = box.height - kMargin;
  box.button = {right - kButtonWidth, bottom - kButtonHeight, right, bottom};
  return box;
}

// Fills what `inside` holds of a square of kIcon pixels, in units from -1 to 1, with smooth edges.
template <typename Inside>
void FillShape(Surface& picture, int32_t left, int32_t top, Colour colour, Inside inside) {
  constexpr int32_t kSamples = 4;  // each way
  const auto unit = [](int32_t pixel, int32_t sample) {
    return ((pixel + (sample + 0.5) / kSamples) / kIcon - 0.5) * 2;
  };
  for (int32_t y = 0; y < kIcon; ++y) {
    const std::span<Colour> row = picture.Row(top + y).subspan(static_cast<size_t>(left), kIcon);
    for (int32_t x = 0; x < kIcon; ++x) {
      uint32_t hits = 0;
      for (int32_t sample = 0; sample < kSamples * kSamples; ++sample) {
        if (inside(unit(x, sample % kSamples), unit(y, sample / kSamples))) ++hits;
      }
      Colour& pixel = row[static_cast<size_t>(x)];
      pixel = Mix(pixel, colour, hits * 255 / (kSamples * kSamples));
    }
  }
}

bool InCircle(double x, double y, double radius) { return x * x + y * y <= radius * radius; }

// A triangle that stands on its base, and all that is near its edges, which makes the corners round.
bool InRoundTriangle(double x, double y) {
  constexpr double kTop = -0.72;
  constexpr double kBase = 0.66;
  constexpr double kHalfBase = 0.8;
  constexpr double kRound = 0.14;
  const double side = std::abs(x);
  const double height = kBase - kTop;
  if (y >= kTop && y <= kBase && side * height <= (y - kTop) * kHalfBase) return true;
  if (side <= kHalfBase && y >= kBase && y <= kBase + kRound) return true;
  // The nearest point of the right edge, which runs from the top to the right end of the base.
  const double along = std::clamp(
      (side * kHalfBase + (y - kTop) * height) / (kHalfBase * kHalfBase + height * height), 0.0, 1.0);
  return InCircle(side - along * kHalfBase, y - kTop - along * height, kRound);
}

// A drop of teal with an i, a gold triangle with an exclamation mark, a broken wax seal.
void DrawIcon(Surface& picture, BoxIcon icon) {
  const auto fill = [&](Colour colour, auto inside) { FillShape(picture, kMargin, kMargin, colour, inside); };
  switch (icon) {
    case BoxIcon::kInformation:
      fill(kTeal, [](double x, double y) { return InCircle(x, y, 0.92); });
      fill(kDeskBelow, [](double x, double y) {
        return InCircle(x, y + 0.42, 0.13) || (std::abs(x) <= 0.1 && y >= -0.16 && y <= 0.5);
      });
      break;
    case BoxIcon::kWarning:
      fill(kGold, InRoundTriangle);
      fill(kDeskBelow, [](double x, double y) {
        return InCircle(x, y - 0.38, 0.12) || (std::abs(x) <= 0.1 && y >= -0.34 && y <= 0.14);
      });
      break;
    case BoxIcon::kCritical:
      fill(kWax,
           [](double x, double y) { return InCircle(x, y, 0.88 + 0.05 * std::cos(9 * std::atan2(y, x))); });
      fill(kPaper, [](double x, double y) {
        return InCircle(x, y, 0.5) && std::min(std::abs(x - y), std::abs(x + y)) <= 0.14;
      });
      break;
  }
}

void Frame(Surface& picture, const Rect& rect, Colour colour) {
  picture.Fill({rect.left, rect.top, rect.right, rect.top + 1}, colour);
  picture.Fill({rect.left, rect.bottom - 1, rect.right, rect.bottom}, colour);
  picture.Fill({rect.left, rect.top, rect.left + 1, rect.bottom}, colour);
  picture.Fill({rect.right - 1, rect.top, rect.right, rect.bottom}, colour);
}

void DrawButton(Surface& picture, const Rect& button, bool lit) {
  constexpr std::u16string_view kLabel = u"OK";
  if (lit) picture.Fill(button, kGold);
  Frame(picture, button, kGold);
  const int32_t left = button.left + (button.Width() - FontTextWidth(kLabel, kTextHeight, true)) / 2;
  const int32_t top = button.top + (button.Height() - kTextHeight) / 2;
  DrawFontText(picture, left, top, kLabel, kTextHeight, lit ? kDeskBelow : kGold, true);
}

std::unique_ptr<Surface> Draw(const Box& box, bool lit) {
  auto picture = std::make_unique<Surface>(box.width, box.height);
  for (int32_t y = 0; y < box.height; ++y) {
    const auto depth = static_cast<uint32_t>(y * 255 / box.height);
    picture->Fill({0, y, box.width, y + 1}, Mix(kDeskAbove, kDeskBelow, depth));
  }
  Frame(*picture, picture->Bounds(), kEdge);
  DrawIcon(*picture, box.icon);
  DrawFontText(*picture, kTextLeft, kMargin, box.title, kTitleHeight, kGold);
  const int32_t rule = kMargin + kTitleHeight + 9;
  picture->Fill({kTextLeft, rule, box.width - kMargin, rule + 1}, kEdge);
  int32_t top = kTextTop;
  for (const std::u16string& line : box.lines) {
    DrawFontText(*picture, kTextLeft, top, line, kTextHeight, kPaper);
    top += kLineHeight;
  }
  DrawButton(*picture, box.button, lit);
  return picture;
}

struct Release {
  void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
  void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};

std::bitset<SDL_NUM_SCANCODES> HeldKeys() {
  std::bitset<SDL_NUM_SCANCODES> held;
  int count = 0;
  const Uint8* const states = SDL_GetKeyboardState(&count);
  for (int key = 0; key < count; ++key) held.set(static_cast<size_t>(key), states[key] != 0);
  return held;
}

class BoxWindow {
 public:
  BoxWindow(Box box, SDL_Window* parent, int screen) : box_(std::move(box)) {
    window_.reset(SDL_CreateWindow(EncodeUtf8(box_.title).c_str(), SDL_WINDOWPOS_CENTERED_DISPLAY(screen),
                                   SDL_WINDOWPOS_CENTERED_DISPLAY(screen), box_.width, box_.height,
                                   parent != nullptr ? SDL_WINDOW_ALWAYS_ON_TOP : 0));
    if (!window_) return;
    if (parent != nullptr) SDL_SetWindowModalFor(window_.get(), parent);
    SDL_RaiseWindow(window_.get());
  }

  // 0 when it could not be opened.
  Uint32 Number() const { return window_ ? SDL_GetWindowID(window_.get()) : 0; }
  // Takes an event of its own. True when it closes the box.
  bool Take(const SDL_Event& event) {
    switch (event.type) {
      case SDL_WINDOWEVENT: return TakeOfWindow(event.window);
      case SDL_KEYDOWN: return IsPressed(event.key);
      case SDL_KEYUP: held_.reset(event.key.keysym.scancode); return false;
      case SDL_MOUSEMOTION: Light(OnButton(event.motion.x, event.motion.y)); return false;
      case SDL_MOUSEBUTTONUP:
        return event.button.button == SDL_BUTTON_LEFT && OnButton(event.button.x, event.button.y);
      default: return false;
    }
  }
  void Show() const {
    const std::unique_ptr<Surface> picture = Draw(box_, lit_);
    const std::unique_ptr<SDL_Surface, Release> shown(SDL_CreateRGBSurfaceWithFormatFrom(
        picture->Row(0).data(), box_.width, box_.height, 32, box_.width * static_cast<int>(sizeof(Colour)),
        SDL_PIXELFORMAT_RGB888));
    SDL_BlitSurface(shown.get(), nullptr, SDL_GetWindowSurface(window_.get()), nullptr);
    SDL_UpdateWindowSurface(window_.get());
  }

 private:
  bool TakeOfWindow(const SDL_WindowEvent& event) {
    switch (event.event) {
      case SDL_WINDOWEVENT_EXPOSED: Show(); break;
      case SDL_WINDOWEVENT_LEAVE: Light(false); break;
      case SDL_WINDOWEVENT_FOCUS_GAINED: focusTime_ = event.timestamp; break;
      default: break;
    }
    return event.event == SDL_WINDOWEVENT_CLOSE;
  }
  // The first word of a key that was held before is no press.
  bool IsPressed(const SDL_KeyboardEvent& key) const {
    return !held_.test(key.keysym.scancode) && key.timestamp - focusTime_ >= kUnread;
  }
  bool OnButton(int32_t x, int32_t y) const {
    const Rect& button = box_.button;
    return x >= button.left && x < button.right && y >= button.top && y < button.bottom;
  }
  void Light(bool lit) {
    if (lit == lit_) return;
    lit_ = lit;
    Show();
  }

  Box box_;
  std::bitset<SDL_NUM_SCANCODES> held_ = HeldKeys();
  Uint32 focusTime_ = 0;  // on the window library's clock
  bool lit_ = false;
  std::unique_ptr<SDL_Window, Release> window_;
};

bool BelongsTo(Uint32 window, const SDL_Event& event) {
  switch (event.type) {
    case SDL_WINDOWEVENT: return event.window.windowID == window;
    case SDL_KEYDOWN:
    case SDL_KEYUP: return event.key.windowID == window;
    case SDL_MOUSEMOTION: return event.motion.windowID == window;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP: return event.button.windowID == window;
    default: return false;
  }
}

// Runs until the box is closed, or the program is to end. Gives the events that are not the box's own.
std::vector<SDL_Event> RunUntilClosed(BoxWindow& window) {
  std::vector<SDL_Event> others;
  window.Show();
  while (true) {
    SDL_Event event;
    // Not by the library's own wait: that wakes itself by messages to the window, and one that comes behind
    // the window's end is an error that ends the program.
    if (SDL_PollEvent(&event) == 0) {
      SDL_Delay(10);
      continue;
    }
    if (!BelongsTo(window.Number(), event)) {
      others.push_back(event);
      if (event.type == SDL_QUIT) return others;
    } else if (window.Take(event)) {
      return others;
    }
  }
}

// False when it could not be opened.
bool ShowAndRun(const Box& box, SDL_Window* parent, int screen) {
  std::vector<SDL_Event> others;
  Uint32 number = 0;
  {
    BoxWindow window(box, parent, screen);
    number = window.Number();
    if (number == 0) return false;
    others = RunUntilClosed(window);
  }
  // What else was pressed in the box is not for the game, and the rest is.
  SDL_PumpEvents();
  SDL_FilterEvents(
      [](void* own, SDL_Event* event) { return BelongsTo(*static_cast<Uint32*>(own), *event) ? 0 : 1; },
      &number);
  for (SDL_Event& event : others) SDL_PushEvent(&event);
  return true;
}

// False when it could not be shown.
bool ShowBox(BoxIcon icon, std::u16string_view title, std::u16string_view text) {
  SDL_Window* const parent = SDL_GetWindowFromID(GameWindowNumber());
  const int screen = parent != nullptr ? std::max(SDL_GetWindowDisplayIndex(parent), 0) : 0;
  SDL_Rect area{};
  if (FontTextWidth(text, kTextHeight) == 0 || SDL_GetDisplayUsableBounds(screen, &area) != 0) return false;
  // The last window that is closed would have the program end.
  SDL_SetHint(SDL_HINT_QUIT_ON_LAST_WINDOW_CLOSE, "0");
  const int pointer = SDL_ShowCursor(SDL_ENABLE);
  SDL_StopTextInput();  // an input method would keep keys to itself
  const bool shown = ShowAndRun(LayOut(icon, title, text, area), parent, screen);
  SDL_ShowCursor(pointer);
  SDL_ResetHint(SDL_HINT_QUIT_ON_LAST_WINDOW_CLOSE);
  // Without a window manager nobody else gives the keyboard back.
  if (parent != nullptr) SDL_SetWindowInputFocus(parent);
  return shown;
}

}  // namespace

void ShowBoxesWith(void (*shower)(BoxIcon icon, std::u16string_view title, std::u16string_view text)) {
  otherShower = shower;
}

void MessageBox(BoxIcon icon, std::u16string_view title, std::u16string_view text) {
  if (otherShower != nullptr) return otherShower(icon, title, text);
  std::u16string message(text);
  std::erase(message, u'\r');
  if (HasDisplay() && ShowBox(icon, title, message)) return;
  std::fprintf(stderr, "%s: %s\n", EncodeUtf8(title).c_str(), EncodeUtf8(message).c_str());
}

}  // namespace platform

// The game window on top of SDL: one window, one renderer, one texture that takes each finished frame.
#define SDL_MAIN_HANDLED
#include "platform/window.h"

#include <SDL.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <utility>

#include "platform/clock.h"
#include "platform/text.h"
#include "platform/window_keys.h"

namespace platform {
namespace {

struct Release {
  void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
  void operator()(SDL_Renderer* renderer) const { SDL_DestroyRenderer(renderer); }
  void operator()(SDL_Texture* texture) const { SDL_DestroyTexture(texture); }
};

// Members are released in the reverse order, as SDL wants it.
struct GameWindow {
  std::unique_ptr<SDL_Window, Release> window;
  std::unique_ptr<SDL_Renderer, Release> renderer;
  std::unique_ptr<SDL_Texture, Release> texture;
  int32_t textureWidth = 0;
  int32_t textureHeight = 0;
  std::unique_ptr<SDL_Texture, Release> enlarged;  // the frame by the next whole number, to be scaled down
  int32_t enlargedTimes = 0;
  bool windowed = false;
  Scaling scaling = Scaling::kBest;
  bool waitsForBlank = false;
  int64_t framesShown = 0;
  std::optional<std::pair<int, int>> pointer;  // where it was seen last, while it is in the window
  std::optional<uint32_t> pointerMoved;        // clock at which somebody moved it last
  bool pointerMayShow = false;                 // with the next frame
};
std::optional<GameWindow> game;
bool displayTaken = false;
bool takesCharacters = false;
SDL_Rect inputMethodPlace{};    // as it was told last
bool dropTaken = false;         // of the items that are being dropped, the first has been reported
WindowPlacement lastPlacement;  // of the window that was closed

bool Given(const char* variable) {
  const char* const value = SDL_getenv(variable);
  return value != nullptr && *value != '\0';
}

bool VideoReady() {
  if (SDL_WasInit(SDL_INIT_VIDEO) != 0) return true;
  // Left to itself the library would complain about a missing Wayland session, and where nothing else opens
  // draw for nobody at the cost of a whole processor.
  if (!Given("SDL_VIDEODRIVER")) {
    SDL_SetHintWithPriority(SDL_HINT_VIDEODRIVER,
                            Given("WAYLAND_DISPLAY") ? "x11,wayland,KMSDRM" : "x11,KMSDRM",
                            SDL_HINT_OVERRIDE);
  }
  return SDL_InitSubSystem(SDL_INIT_VIDEO) == 0;
}

bool DrawsForNobody(std::string_view driver) { return driver == "dummy" || driver == "offscreen"; }

SDL_Window* CreateWindow(const WindowOptions& options) {
  SDL_DisplayMode desktop{};
  // The desktop's size at once, for screens without a window manager that would enlarge the window.
  const bool whole = !options.windowed && SDL_GetDesktopDisplayMode(0, &desktop) == 0;
  return SDL_CreateWindow(EncodeUtf8(options.title).c_str(), SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED,
                          std::max(whole ? desktop.w : options.width, 1),
                          std::max(whole ? desktop.h : options.height, 1),
                          options.windowed ? 0 : SDL_WINDOW_FULLSCREEN_DESKTOP);
}

// From what the library knows, without asking the window system.
WindowPlacement PlacementOf(SDL_Window* window) {
  WindowPlacement placement;
  const Uint32 flags = SDL_GetWindowFlags(window);
  placement.state = (flags & SDL_WINDOW_MINIMIZED) != 0 ? 1 : (flags & SDL_WINDOW_MAXIMIZED) != 0 ? 2 : 0;
  SDL_GetWindowPosition(window, &placement.left, &placement.top);
  SDL_GetWindowSize(window, &placement.width, &placement.height);
  return placement;
}

bool MatchTexture(const Surface& frame) {
  if (game->texture && game->textureWidth == frame.Width() && game->textureHeight == frame.Height()) {
    return true;
  }
  game->texture.reset(SDL_CreateTexture(game->renderer.get(), SDL_PIXELFORMAT_ARGB8888,
                                        SDL_TEXTUREACCESS_STREAMING, frame.Width(), frame.Height()));
  game->textureWidth = frame.Width();
  game->textureHeight = frame.Height();
  game->enlarged.reset();
  if (game->texture) {
    SDL_SetTextureBlendMode(game->texture.get(), SDL_BLENDMODE_NONE);
  }
  return game->texture != nullptr;
}

// The whole number by which a frame is enlarged before it is brought down to its place: that keeps the edges
// of pixels sharper than stretching them at once. 1 where the place is a whole multiple or smaller than the
// frame.
int32_t TimesBefore(const Rect& place) {
  const int32_t width = game->textureWidth;
  const int32_t height = game->textureHeight;
  if (place.Width() % width == 0 && place.Height() % height == 0) return 1;
  return std::max((place.Width() + width - 1) / width, (place.Height() + height - 1) / height);
}

// False where there is no such texture.
bool MatchEnlarged(int32_t times) {
  if (game->enlarged && game->enlargedTimes == times) return true;
  game->enlarged.reset(SDL_CreateTexture(game->renderer.get(), SDL_PIXELFORMAT_ARGB8888,
                                         SDL_TEXTUREACCESS_TARGET, game->textureWidth * times,
                                         game->textureHeight * times));
  game->enlargedTimes = times;
  if (!game->enlarged) return false;
  SDL_SetTextureBlendMode(game->enlarged.get(), SDL_BLENDMODE_NONE);
  SDL_SetTextureScaleMode(game->enlarged.get(), SDL_ScaleModeLinear);
  return true;
}

void Enlarge() {
  SDL_SetTextureScaleMode(game->texture.get(), SDL_ScaleModeNearest);
  SDL_SetRenderTarget(game->renderer.get(), game->enlarged.get());
  SDL_RenderCopy(game->renderer.get(), game->texture.get(), nullptr, nullptr);
  SDL_SetRenderTarget(game->renderer.get(), nullptr);
}

// What is to be copied to this place of the window: the frame, or it enlarged.
SDL_Texture* TextureFor(const Rect& place) {
  const int32_t times = TimesBefore(place);
  if (times > 1 && MatchEnlarged(times)) {
    Enlarge();
    return game->enlarged.get();
  }
  const bool whole = place.Width() % game->textureWidth == 0 && place.Height() % game->textureHeight == 0;
  SDL_SetTextureScaleMode(game->texture.get(), whole ? SDL_ScaleModeNearest : SDL_ScaleModeLinear);
  return game->texture.get();
}

// `whole` brought down as `part` is to `of`; at least 1.
int32_t EvenPart(int32_t whole, int32_t part, int32_t of) {
  return static_cast<int32_t>(std::max<int64_t>(int64_t{whole} * part / of, 1));
}

// Where the last frame stands in the window, in its pixels.
std::optional<Rect> FramePlace() {
  int width = 0;
  int height = 0;
  if (SDL_GetRendererOutputSize(game->renderer.get(), &width, &height) != 0 || width < 1 || height < 1 ||
      !game->texture) {
    return {};
  }
  return game->windowed ? Rect{0, 0, width, height}
                        : PlaceFrame(width, height, game->textureWidth, game->textureHeight, game->scaling);
}

void PlacePointer() {
  constexpr int32_t kShowsFor = 1000;  // ms
  const bool moves = game->pointerMoved && Elapsed(Now(), *game->pointerMoved) < kShowsFor;
  SDL_ShowCursor(game->windowed || (moves && game->pointerMayShow) ? SDL_ENABLE : SDL_DISABLE);
  game->pointerMayShow = false;
}

// A pointer that comes into the window, or is where the game has put it, was not moved.
void SeePointer(std::pair<int, int> place) {
  if (!game) return;
  if (game->pointer && game->pointer != place) game->pointerMoved = Now();
  game->pointer = place;
}

// Where the last frame stands, in the units of the pointer, which may be coarser than pixels.
struct PointerFrame {
  double left;
  double top;
  double unitsAcross;  // for one pixel of the frame
  double unitsDown;
};

std::optional<PointerFrame> FrameOfPointer() {
  if (!game) return {};
  const std::optional<Rect> place = FramePlace();
  int windowWidth = 0;
  int outputWidth = 0;
  SDL_GetWindowSize(game->window.get(), &windowWidth, nullptr);
  SDL_GetRendererOutputSize(game->renderer.get(), &outputWidth, nullptr);
  if (!place || outputWidth < 1) return {};
  const double unit = static_cast<double>(windowWidth) / outputWidth;
  return PointerFrame{place->left * unit, place->top * unit, unit * place->Width() / game->textureWidth,
                      unit * place->Height() / game->textureHeight};
}

void ReportMotion(const SDL_MouseMotionEvent& motion, const WindowEvents& events) {
  SeePointer({motion.x, motion.y});
  const std::optional<PointerFrame> frame = FrameOfPointer();
  if (events.mouseMoved == nullptr || !frame) return;
  events.mouseMoved(static_cast<int32_t>(std::lround((motion.x - frame->left) / frame->unitsAcross)),
                    static_cast<int32_t>(std::lround((motion.y - frame->top) / frame->unitsDown)));
}

MouseButton ButtonOf(Uint8 button) {
  switch (button) {
    case SDL_BUTTON_LEFT: return MouseButton::kLeft;
    case SDL_BUTTON_MIDDLE: return MouseButton::kMiddle;
    case SDL_BUTTON_RIGHT: return MouseButton::kRight;
    default: return MouseButton::kOther;
  }
}

void ReportDrop(SDL_DropEvent drop, const WindowEvents& events) {
  const std::string path = drop.file != nullptr ? drop.file : "";
  SDL_free(drop.file);
  if (dropTaken || events.fileDropped == nullptr) return;
  dropTaken = true;
  events.fileDropped(path);
}

// The characters that keys without a letter stand for; 0 for all others.
char16_t ControlCharacter(SDL_Keycode key) {
  switch (key) {
    case SDLK_BACKSPACE: return 8;
    case SDLK_RETURN:
    case SDLK_KP_ENTER: return 13;
    case SDLK_ESCAPE: return 27;
    default: return 0;
  }
}

void ReportKey(const SDL_KeyboardEvent& event, const WindowEvents& events) {
  const bool down = event.type == SDL_KEYDOWN;
  const int32_t key = KeyNumberOf(event.keysym.scancode);
  if (events.key != nullptr && key != 0 && event.repeat == 0) events.key(key, down);
  const char16_t character = ControlCharacter(event.keysym.sym);
  // A held Back Space goes on; a held Enter that began a name does not end it.
  const bool counts = event.repeat == 0 || character == 8;
  if (takesCharacters && down && counts && character != 0 && events.character != nullptr) {
    events.character(character);
  }
}

void ReportText(const char* utf8, const WindowEvents& events) {
  if (!takesCharacters || events.character == nullptr) return;
  for (const char16_t unit : DecodeUtf8(utf8)) events.character(unit);
}

void ReportComposing(const char* utf8, const WindowEvents& events) {
  if (takesCharacters && events.composing != nullptr) events.composing(DecodeUtf8(utf8));
}

void Report(const SDL_Event& event, const WindowEvents& events) {
  switch (event.type) {
    case SDL_QUIT:
      if (events.closeRequested != nullptr) {
        events.closeRequested();
      }
      break;
    case SDL_WINDOWEVENT:
      if (game && event.window.event == SDL_WINDOWEVENT_LEAVE) game->pointer.reset();
      if (events.activated != nullptr && (event.window.event == SDL_WINDOWEVENT_FOCUS_GAINED ||
                                          event.window.event == SDL_WINDOWEVENT_FOCUS_LOST)) {
        events.activated(event.window.event == SDL_WINDOWEVENT_FOCUS_GAINED);
      }
      break;
    case SDL_KEYDOWN:
    case SDL_KEYUP: ReportKey(event.key, events); break;
    case SDL_TEXTINPUT: ReportText(event.text.text, events); break;
    case SDL_TEXTEDITING: ReportComposing(event.edit.text, events); break;
    case SDL_MOUSEMOTION: ReportMotion(event.motion, events); break;
    case SDL_MOUSEBUTTONDOWN:
      if (events.mouseDown != nullptr) events.mouseDown(ButtonOf(event.button.button));
      break;
    case SDL_MOUSEWHEEL:
      if (events.wheelTurned != nullptr && event.wheel.y != 0) events.wheelTurned(event.wheel.y);
      break;
    case SDL_DROPBEGIN: dropTaken = false; break;
    case SDL_DROPFILE: ReportDrop(event.drop, events); break;
    default: break;
  }
}

}  // namespace

bool HasDisplay() {
  if (!VideoReady()) {
    return false;
  }
  const char* const driver = SDL_GetCurrentVideoDriver();
  return driver != nullptr && !DrawsForNobody(driver);
}

bool DesktopHasRoom(int32_t width, int32_t height) {
  constexpr int32_t kTitleBar = 40;  // of most desktops, with the frame below
  SDL_Rect free{};
  return HasDisplay() && SDL_GetDisplayUsableBounds(0, &free) == 0 && width <= free.w &&
         height + kTitleBar <= free.h;
}

bool OpenGameWindow(const WindowOptions& options, std::string& why) {
  CloseGameWindow();
  if (!VideoReady()) {
    why = SDL_GetError();
    return false;
  }
  GameWindow opened;
  opened.windowed = options.windowed;
  opened.scaling = options.scaling;
  opened.waitsForBlank = options.waitForBlank;
  opened.window.reset(CreateWindow(options));
  if (!opened.window) {
    why = SDL_GetError();
    return false;
  }
  const Uint32 blank = options.waitForBlank ? SDL_RENDERER_PRESENTVSYNC : 0;
  opened.renderer.reset(SDL_CreateRenderer(opened.window.get(), -1, blank));
  if (!opened.renderer) {
    opened.renderer.reset(SDL_CreateRenderer(opened.window.get(), -1, SDL_RENDERER_SOFTWARE));
  }
  if (!opened.renderer) {
    why = SDL_GetError();
    return false;
  }
  takesCharacters = false;
  SDL_StopTextInput();  // an input method would keep keys to itself
  game = std::move(opened);
  return true;
}

void CloseGameWindow() {
  lastPlacement = NormalizeWindow();
  game.reset();
}

void AbandonWindow() {
  if (!game) return;
  lastPlacement = PlacementOf(game->window.get());
  static_cast<void>(game->enlarged.release());
  static_cast<void>(game->texture.release());
  static_cast<void>(game->renderer.release());
  static_cast<void>(game->window.release());
  game.reset();
}

bool WindowOpen() { return game.has_value(); }

uint32_t GameWindowNumber() { return game ? SDL_GetWindowID(game->window.get()) : 0; }

void SetWindowTitle(std::u16string_view title) {
  if (game) {
    SDL_SetWindowTitle(game->window.get(), EncodeUtf8(title).c_str());
  }
}

Rect PlaceFrame(int32_t width, int32_t height, int32_t frameWidth, int32_t frameHeight, Scaling scaling) {
  const int32_t times = std::min(width / frameWidth, height / frameHeight);
  int32_t shownWidth = frameWidth * times;
  int32_t shownHeight = frameHeight * times;
  const bool fills =
      int64_t{shownWidth} * 100 >= int64_t{width} * 85 || int64_t{shownHeight} * 100 >= int64_t{height} * 85;
  const bool whole = times >= 1 && (scaling == Scaling::kWhole || (scaling == Scaling::kBest && fills));
  if (!whole) {
    const bool touchesSides = int64_t{width} * frameHeight <= int64_t{height} * frameWidth;
    shownWidth = touchesSides ? width : EvenPart(height, frameWidth, frameHeight);
    shownHeight = touchesSides ? EvenPart(width, frameHeight, frameWidth) : height;
  }
  const int32_t left = (width - shownWidth) / 2;
  const int32_t top = (height - shownHeight) / 2;
  return {left, top, left + shownWidth, top + shownHeight};
}

void ShowFrame(const Surface& frame, bool waitForBlank) {
  if (!game || !MatchTexture(frame)) {
    return;
  }
  const std::optional<Rect> place = FramePlace();
  if (!place) {
    return;
  }
  if (game->waitsForBlank != waitForBlank) {
    game->waitsForBlank = waitForBlank;
    SDL_RenderSetVSync(game->renderer.get(), waitForBlank ? 1 : 0);
  }
  SDL_UpdateTexture(game->texture.get(), nullptr, frame.Row(0).data(),
                    frame.Width() * static_cast<int>(sizeof(Colour)));
  SDL_Texture* const source = TextureFor(*place);
  SDL_SetRenderDrawColor(game->renderer.get(), 0, 0, 0, 255);
  SDL_RenderClear(game->renderer.get());
  const SDL_Rect target{place->left, place->top, place->Width(), place->Height()};
  SDL_RenderCopy(game->renderer.get(), source, nullptr, &target);
  SDL_RenderPresent(game->renderer.get());
  ++game->framesShown;
  PlacePointer();
}

int64_t WindowFrames() { return game ? game->framesShown : 0; }

void TakeDisplayAway(bool away) { displayTaken = away; }

bool DisplayAvailable() {
  if (displayTaken) return false;
  if (!game || game->windowed) {
    return true;
  }
  return (SDL_GetWindowFlags(game->window.get()) & (SDL_WINDOW_MINIMIZED | SDL_WINDOW_HIDDEN)) == 0;
}

void TakeCharacters(bool take) {
  if (!game || take == takesCharacters) return;
  takesCharacters = take;
  inputMethodPlace = {};
  take ? SDL_StartTextInput() : SDL_StopTextInput();
}

void PlaceInputMethod(const Rect& place) {
  const std::optional<PointerFrame> frame = FrameOfPointer();
  if (!frame || !takesCharacters) return;
  const auto across = [&](int32_t x) { return static_cast<int>(std::lround(x * frame->unitsAcross)); };
  const auto down = [&](int32_t y) { return static_cast<int>(std::lround(y * frame->unitsDown)); };
  const SDL_Rect rect{static_cast<int>(frame->left) + across(place.left),
                      static_cast<int>(frame->top) + down(place.top), across(place.Width()),
                      down(place.Height())};
  // An input method is told over a bus, which must not happen with every frame.
  if (SDL_RectEquals(&rect, &inputMethodPlace) == SDL_TRUE) return;
  inputMethodPlace = rect;
  SDL_SetTextInputRect(&rect);
}

void PumpWindowEvents(const WindowEvents& events) {
  SDL_Event event;
  while (SDL_WasInit(SDL_INIT_EVENTS) != 0 && SDL_PollEvent(&event) != 0) {
    Report(event, events);
  }
}

bool WaitForWindowEvents(int64_t until, bool eachMs) {
  constexpr int64_t kMillisecond = 1000;
  const bool hasEvents = SDL_WasInit(SDL_INIT_EVENTS) != 0;
  if (ClockIsVirtual()) {
    if (!hasEvents) return false;
    SDL_PumpEvents();
    return SDL_PeepEvents(nullptr, 1, SDL_PEEKEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT) > 0;
  }
  while (true) {
    const int64_t left = (until - Microseconds()) / kMillisecond;
    if (left < 1) return false;
    const int wait = static_cast<int>(eachMs ? 1 : std::min<int64_t>(left, kMillisecond));
    if (!hasEvents) {
      SleepFor(static_cast<uint32_t>(wait));
    } else if (SDL_WaitEventTimeout(nullptr, wait) != 0) {
      return true;
    }
    if (eachMs) return true;
  }
}

int32_t RefreshRate() {
  constexpr int32_t kUsual = 60;
  constexpr int32_t kSlowest = 20;
  constexpr int32_t kFastest = 1000;
  SDL_DisplayMode mode{};
  if (!game || SDL_GetCurrentDisplayMode(SDL_GetWindowDisplayIndex(game->window.get()), &mode) != 0) {
    return kUsual;
  }
  return mode.refresh_rate >= kSlowest && mode.refresh_rate <= kFastest ? mode.refresh_rate : kUsual;
}

WindowPlacement NormalizeWindow() {
  if (!game) {
    return lastPlacement;
  }
  const int32_t state = PlacementOf(game->window.get()).state;
  if (state != 0) {
    SDL_RestoreWindow(game->window.get());
  }
  WindowPlacement placement = PlacementOf(game->window.get());
  placement.state = state;
  return placement;
}

void LetMovingPointerShow() {
  if (game) game->pointerMayShow = true;
}

void MoveMouse(int32_t x, int32_t y) {
  const std::optional<PointerFrame> frame = FrameOfPointer();
  if (!frame) return;
  game->pointer = {static_cast<int>(std::lround(frame->left + x * frame->unitsAcross)),
                   static_cast<int>(std::lround(frame->top + y * frame->unitsDown))};
  SDL_WarpMouseInWindow(game->window.get(), game->pointer->first, game->pointer->second);
}

}  // namespace platform

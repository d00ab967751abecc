// The players' table and the rivals' gauge graphs.
#include "play_screen/net_status.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include "base/text.h"
#include "graphics/draw.h"
#include "graphics/inks.h"
#include "platform/font.h"
#include "state/network.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/surfaces.h"
#include "state/timeline.h"

namespace qlm {
namespace {

using platform::Colour;
using platform::FontLook;
using platform::Rgb;
using platform::TextMask;

constexpr FontLook kListFont{.height = 10};
constexpr Colour kSongColour = Rgb(0x7F, 0xD8, 0xCF);

// The places of the first player; each next one stands 80 pixels further down.
constexpr int32_t kPlayers = 5;
constexpr int32_t kPlayerHeight = 80;
constexpr Rect kStandingBox{372, 36, 632, 48};
constexpr Rect kSongBox{372, 48, 632, 60};
constexpr Rect kFigures{452, 64, 636, 110};  // the ground of graph and figures
constexpr int32_t kGraphLeft = 456;
constexpr int32_t kGraphBottom = 108;
constexpr int32_t kGraphHeight = 42;
constexpr int32_t kFiguresLeft = 566;

constexpr std::array<Colour, kPlayers> kInks = {inks::kPaper, inks::kTeal, inks::kGold, Rgb(0x6F, 0xA8, 0xF0),
                                                Rgb(0xB0, 0x86, 0xE8)};
constexpr Colour kMark = Rgb(0x80, 0x62, 0x2C);
constexpr int32_t kClearMark = 80;

// What a player's lines were laid out from, and their shapes. The figure that moves during a play is put
// together from digits.
struct PlayerLines {
  bool made = false;
  Text name;
  bool detected = false;
  bool standby = false;
  bool ended = false;
  Text songA;
  Text songB;
  Text songC;
  int32_t level = 0;

  TextMask standing;
  TextMask song;
};

struct Lines {
  std::array<PlayerLines, kPlayers> players;
  std::array<TextMask, 10> digits;
  TextMask tail;
  bool digitsMade = false;
};
Lines lines;

constexpr Rect Below(const Rect& first, int32_t player) {
  const int32_t down = kPlayerHeight * player;
  return {first.left, first.top + down, first.right, first.bottom + down};
}

constexpr Colour QuarterOf(Colour colour) { return colour >> 2 & 0x3F3F3F; }

// What lies there is kept as a shade of a quarter of its light.
void Darken(const Rect& rect) {
  for (int32_t y = rect.top; y < rect.bottom; ++y) {
    for (Colour& pixel :
         DDBack->Row(y).subspan(static_cast<size_t>(rect.left), static_cast<size_t>(rect.Width()))) {
      pixel = QuarterOf(pixel);
    }
  }
}

// The words between the flags.
struct Labels {
  TextView song;
  TextView load;
  TextView end;
};

Labels LabelsOfTheLanguage() {
  if (MenuLanguage == u"en") return {u" (song:", u" , loaded:", u", done:"};
  return {u" (曲:", u" , ロード:", u", 完了:"};
}

int32_t Flag(bool flag) { return flag ? -1 : 0; }

bool SameStanding(const PlayerLines& made, const NetUser& user) {
  return made.made && made.name == user.name && made.detected == user.detected &&
         made.standby == user.standby && made.ended == user.ended;
}

bool SameSong(const PlayerLines& made, const NetUser& user) {
  return made.made && made.level == user.level && made.songA == user.songA && made.songB == user.songB &&
         made.songC == user.songC;
}

void LayOut(PlayerLines& made, int32_t index, const NetUser& user) {
  if (!SameStanding(made, user)) {
    made.name = user.name;
    made.detected = user.detected;
    made.standby = user.standby;
    made.ended = user.ended;
    const Labels labels = LabelsOfTheLanguage();
    made.standing =
        platform::RenderText(Join(index, u"  ", user.name, labels.song, Flag(user.detected), labels.load,
                                  Flag(user.standby), labels.end, Flag(user.ended), u"["),
                             kListFont);
  }
  if (!SameSong(made, user)) {
    made.level = user.level;
    made.songA = user.songA;
    made.songB = user.songB;
    made.songC = user.songC;
    made.song = platform::RenderText(
        Join(u"★", made.level, u" [", user.songA, u"] ", user.songB, u" / ", user.songC), kListFont);
  }
  made.made = true;
}

void LayOutDigits() {
  if (lines.digitsMade) return;
  lines.digitsMade = true;
  for (size_t digit = 0; digit < lines.digits.size(); ++digit) {
    lines.digits[digit] = platform::RenderText(Text(1, static_cast<char16_t>(u'0' + digit)), kListFont);
  }
  lines.tail = platform::RenderText(u"%])", kListFont);
}

// Gives the place behind it.
int32_t DrawPiece(const Rect& box, int32_t x, const TextMask& mask, Colour colour) {
  platform::DrawMask(*DDBack, box, x, box.top + 1, mask, colour);
  return x + mask.width;
}

// The lines begin as far to the right as they fit, for the sake of what lies to their left.
int32_t LeftOf(const PlayerLines& made) {
  const int32_t standing = made.standing.width + 3 * lines.digits[0].width + lines.tail.width;
  const int32_t wanted = kStandingBox.right - std::max(standing, made.song.width);
  return std::clamp(wanted, kStandingBox.left, kGraphLeft);
}

void DrawLines(int32_t index, const NetUser& user) {
  PlayerLines& made = lines.players[static_cast<size_t>(index)];
  LayOut(made, index, user);
  const int32_t left = LeftOf(made);
  const Rect box = Below(kStandingBox, index);
  const Rect songBox = Below(kSongBox, index);
  Darken({left - 4, box.top - 2, box.right + 4, songBox.bottom + 2});
  int32_t x = DrawPiece(box, left, made.standing, inks::kPaper);
  for (int32_t place = user.netSlot >= 100 ? 100 : user.netSlot >= 10 ? 10 : 1; place > 0; place /= 10) {
    x = DrawPiece(box, x, lines.digits[static_cast<size_t>(user.netSlot / place % 10)], inks::kPaper);
  }
  DrawPiece(box, x, lines.tail, inks::kPaper);
  DrawPiece(songBox, left, made.song, kSongColour);
}

// The gauge in one of the hundred slots that the others see.
int32_t GaugeAt(int32_t index, int32_t slot) {
  const uint8_t* const sample = index == network.NetMyIndex
                                    ? GaugeHistory[0].Find(int64_t{slot} * kSamplesASlot - 1)
                                    : network.NetUsers[index].history.Find(slot);
  return sample == nullptr ? 0 : std::min<int32_t>(*sample, 100);
}

int32_t HeightOf(int32_t gauge) { return gauge * (kGraphHeight - 2) / 100; }

void DrawGraph(int32_t index, const NetUser& user) {
  const int32_t bottom = kGraphBottom + kPlayerHeight * index;
  const Colour ink = kInks[static_cast<size_t>(index)];
  const int32_t mark = bottom - 1 - HeightOf(kClearMark);
  DDBack->Line(kGraphLeft, mark, kGraphLeft + 100, mark, kMark);
  DDBack->Line(kGraphLeft, bottom, kGraphLeft + 100, bottom, kMark);
  const int32_t last = std::min<int32_t>(user.netSlot, 99);
  for (int32_t slot = 1; slot <= last; ++slot) {
    const int32_t x = kGraphLeft + slot;
    const int32_t y = bottom - 1 - HeightOf(GaugeAt(index, slot));
    const int32_t before = slot == 1 ? y : bottom - 1 - HeightOf(GaugeAt(index, slot - 1));
    DDBack->Fill({x, std::min(y, before), x + 1, std::max(y, before) + 1}, ink);
    DDBack->Fill({x, std::max(y, before) + 1, x + 1, bottom}, QuarterOf(ink));
  }
}

// What comes with the last message is the gauge of a third of the song.
std::array<uint8_t, 3> GaugeDigits(int32_t index, const NetUser& user) {
  if (user.netSlot < 100) return user.gaugeDigits;
  const int32_t gauge = GaugeAt(index, 99);
  return {static_cast<uint8_t>(gauge / 100), static_cast<uint8_t>(gauge / 10 % 10),
          static_cast<uint8_t>(gauge % 10)};
}

template <size_t Count>
void DrawDigits(int32_t y, const std::array<uint8_t, Count>& digits, TextView behind) {
  std::array<char16_t, Count + 1> text{};
  std::ranges::transform(digits, text.begin(), [](uint8_t digit) {
    return digit == 10 ? u'-' : static_cast<char16_t>(u'0' + digit);
  });
  std::ranges::copy(behind, text.begin() + Count);
  DrawText(kFiguresLeft, y, TextView(text.data(), Count + behind.size()), 0);
}

void DrawGauge(int32_t index, const NetUser& user) {
  const Rect ground = Below(kFigures, index);
  Darken(ground);
  DrawGraph(index, user);
  DrawDigits(ground.top + 5, GaugeDigits(index, user), u"%");
  DrawDigits(ground.top + 25, user.jptsDigits, u"");
}

// From the play to the results, where the second side's field leaves the room for it.
bool ShowsGauges() {
  if (GameState == kStatePlay) return SideCount < 2;
  return GameState == kStatePlayOver || GameState == kStateResults;
}

}  // namespace

void DrawNetStatus() {
  if (!network.NetActive || !DDBack) return;
  DrawText(0, 0, Join(u"NET:", network.NetUserCount), 0);
  LayOutDigits();
  for (int32_t index = 0; index < network.NetUserCount; ++index) {
    const NetUser& user = network.NetUsers[index];
    DrawLines(index, user);
    if (ShowsGauges()) DrawGauge(index, user);
  }
}

}  // namespace qlm

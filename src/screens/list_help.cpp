// The help of the list screens.
#include "screens/list_help.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "base/numbers.h"
#include "base/text.h"
#include "platform/clock.h"
#include "screens/list_text.h"
#include "screens/words.h"
#include "state/session.h"
#include "state/song_find.h"

namespace qlm {
namespace {

using platform::Colour;
using platform::Rgb;

constexpr Colour kHelpColour = Rgb(0xC4, 0xBE, 0xB0);

struct Help {
  int32_t state;
  TextView first;
  TextView second;
};

constexpr TextView kTyping = u"[ESC]:検索をやめる";
constexpr TextView kTypingEnds = u"[Enter]:この一覧から選ぶ";
constexpr TextView kFiltered = u"[ESC]:全曲に戻す [/]:検索";

constexpr std::array<Help, 6> kHelp = {{
    {kStateSongSelect, u"[ESC]:終了 [TAB]:モード切替 [←]:JukeBox選択",
     u"[↑/↓/PageUP/PageDN]:選択 [Enter]:決定"},
    {kStateBattleSongs, u"他のプレイヤーが曲を決定するまでしばらくお待ち下さい。", u""},
    {kStateBattleStart, u"他のプレイヤーの曲読み込み完了を待っています…", u""},
    {kStateLists, u"[ESC]:終了 [TAB]:モード切替", u"[↑/↓/PageUP/PageDN]:選択 [→/Enter]:開く"},
    {kStateCourses, u"[ESC]:終了 [TAB]:モード切替 [スペース]:コース編集",
     u"[↑/↓/PageUP/PageDN]:選択 [Enter]:コース決定"},
    {kStateEnterCourse, u"[ESC]:終了 [Enter]:決定 [文字]:入力", u""},
}};

// The lines sway to the right and back once a second.
int32_t Sway() {
  constexpr double kReach = 12;
  const double turn = platform::Now() % 1000 / 1000.0;
  return static_cast<int32_t>(RoundHalfEven(kReach * (1 - std::cos(turn * 2 * std::numbers::pi)) / 2));
}

}  // namespace

void DrawHelp() {
  constexpr int32_t kTop = 380;
  constexpr int32_t kLineHeight = 18;
  const int32_t left = 300 + Sway();
  const auto draw = [&](TextView first, TextView second) {
    DrawLine({left, kTop, 640, kTop + kLineHeight}, Words(first), kRowFont, kHelpColour);
    DrawLine({left, kTop + kLineHeight, 640, kTop + 2 * kLineHeight}, Words(second), kRowFont, kHelpColour);
  };
  if (songFind.typing && IsListState(GameState)) return draw(kTyping, kTypingEnds);
  const auto* const help = std::ranges::find(kHelp, GameState, &Help::state);
  if (help == kHelp.end()) return;
  draw(songFind.filtered && IsListState(GameState) ? kFiltered : help->first, help->second);
}

}  // namespace qlm

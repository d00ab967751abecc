// The English of the game's Japanese lines.
#include "screens/words.h"

#include <algorithm>

#include "state/settings.h"

namespace qlm {
namespace {

struct Line {
  TextView japanese;
  TextView english;
};

constexpr Line kLines[] = {
    // Help of the lists.
    {u"[ESC]:終了 [TAB]:モード切替 [←]:JukeBox選択", u"[ESC]: quit  [TAB]: courses  [←]: jukeboxes"},
    {u"[↑/↓/PageUP/PageDN]:選択 [Enter]:決定", u"[↑/↓/PageUp/PageDn]: choose  [Enter]: play"},
    {u"[ESC]:終了 [TAB]:モード切替", u"[ESC]: quit  [TAB]: courses"},
    {u"[↑/↓/PageUP/PageDN]:選択 [→/Enter]:開く", u"[↑/↓/PageUp/PageDn]: choose  [→/Enter]: open"},
    {u"[ESC]:終了 [TAB]:モード切替 [スペース]:コース編集",
     u"[ESC]: quit  [TAB]: songs  [Space]: edit the course"},
    {u"[↑/↓/PageUP/PageDN]:選択 [Enter]:コース決定",
     u"[↑/↓/PageUp/PageDn]: choose  [Enter]: play the course"},
    {u"[ESC]:終了 [Enter]:決定 [文字]:入力", u"[ESC]: leave  [Enter]: done  [letters]: type"},
    // The search within a list.
    {u"[ESC]:検索をやめる", u"[ESC]: all rows again"},
    {u"[Enter]:この一覧から選ぶ", u"[Enter]: choose from these"},
    {u"[ESC]:全曲に戻す [/]:検索", u"[ESC]: all rows again  [/]: find"},
    {u"曲名・アーティスト・ジャンルで検索", u"Find in titles, artists and genres"},
    {u"見つかりません", u"nothing found"},
    // Waiting in a battle.
    {u"他のプレイヤーが曲を決定するまでしばらくお待ち下さい。",
     u"Please wait until the other players have decided."},
    {u"他のプレイヤーの曲読み込み完了を待っています…", u"Waiting until the other players have loaded…"},
    {u"接続中の他のプレイヤーの演奏が終了するまでお待ち下さい。",
     u"Please wait until the other players have finished."},
    // The course editor.
    {u"コース名を入力してください. Enterで決定.", u"Type the name of the course, then press Enter."},
    {u"Enterでコース名入力. ", u"Enter: type the name of the course."},
    {u"←→キーで☆の数を決めてください. 表示のみで難易度には影響しません.",
     u"Left and Right set the stars. They are only shown, and make nothing harder."},
    {u"Enterキーを押すと新規に曲を追加します.", u"Enter: add a song."},
    {u"Enterキーを押すと曲の変更. Delキーで曲を削除.",
     u"Enter: choose another song. Delete: remove this one."},
};

}  // namespace

TextView Words(TextView japanese) {
  if (MenuLanguage != u"en") return japanese;
  const auto* const line = std::ranges::find(kLines, japanese, &Line::japanese);
  return line == std::end(kLines) ? japanese : line->english;
}

}  // namespace qlm

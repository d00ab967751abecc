// Panels of settings.
#include "forms/panels.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <QVariant>
#include <array>
#include <cstdint>
#include <optional>

#include "base/numbers.h"
#include "base/paths.h"
#include "forms/controls.h"
#include "forms/language.h"
#include "state/settings.h"
#include "state/skin.h"

namespace qlm {
namespace {

// Rows of a label and its field, and of what takes the whole width.
class Rows {
 public:
  explicit Rows(QWidget* of) : grid_(new QGridLayout(of)) { grid_->setColumnStretch(1, 1); }
  void Add(QLabel* label, QWidget* field) {
    const int row = grid_->rowCount();
    grid_->addWidget(label, row, 0);
    grid_->addWidget(field, row, 1);
  }
  // Fields no wider than they need, beside free room.
  void LeaveRoom() {
    grid_->setColumnStretch(1, 0);
    grid_->setColumnStretch(2, 1);
  }
  void Add(QWidget* whole) { grid_->addWidget(whole, grid_->rowCount(), 0, 1, 3); }
  void Add(QLayout* whole) { grid_->addLayout(whole, grid_->rowCount(), 0, 1, 3); }
  void End() { grid_->setRowStretch(grid_->rowCount(), 1); }

 private:
  QGridLayout* grid_;
};

// The skins of skinList that `fits` takes; what is chosen goes to `setting`. A skin that is not among them
// shows by the name of its file, and stays until another is chosen.
template <typename Fits>
QComboBox* SkinChoice(Controls& controls, const char* name, Text& setting, Fits fits,
                      const char* tip = nullptr) {
  QComboBox* const box = controls.Box(name, {}, tip);
  int chosen = -1;
  for (size_t index = 0; index < skinList.size(); ++index) {
    const SkinEntry& skin = skinList[index];
    if (!fits(skin)) continue;
    if (EqualsAnyCase(skin.path, setting)) chosen = box->count();
    box->addItem(ToQt(skin.title), static_cast<int>(index));
  }
  box->setPlaceholderText(ToQt(GetFileName(setting)));
  box->setCurrentIndex(chosen);
  QObject::connect(box, &QComboBox::activated, [box, &setting](int item) {
    setting = skinList[static_cast<size_t>(box->itemData(item).toInt())].path;
  });
  return box;
}

QWidget* LoadingGroup(Controls& controls) {
  QGroupBox* const group = controls.Group("基本設定");
  Rows rows(group);
  QComboBox* const sounds = controls.Choice("cmbWAVMode", WAVLoadmode, 0, {"初回一括", "逐次読込"},
                                            "逐次読み込みはHDDが速い場合は効果があります。");
  rows.Add(controls.LabelFor(sounds, "WAVEロード方法:"), sounds);
  QComboBox* const pictures = controls.Choice("cmbBGAMode", BMPLoadmode, 0, {"初回一括", "逐次読込"},
                                              "BGAの逐次読み込みはお勧めしません");
  rows.Add(controls.LabelFor(pictures, "BMPロード方法:"), pictures);
  QComboBox* const course =
      controls.Choice("cmbCourse", CourseLoadMode, 0, {"逐次読込", "曲ごと", "初回一括"},
                      "メモリーが裕福な環境は一括でokです。普通は曲ごとがいいかも。");
  rows.Add(controls.LabelFor(course, "Course play時:"), course);
  rows.Add(controls.Tick("chkBGARelease", BMPRelease, "BGA逐次解放を有効にする",
                         "プレイ中BGAが必要なくなった時点でメモリから解放します。"));
  rows.Add(
      controls.Tick("chkWide", WideCharts, "最近の書式のBMSを読む(Wide)",
                    "FFより先の番号、停止、ロングノート、UTF-8などを読みます。スコアは別に保存されます。"));
  rows.Add(controls.Button("cmdKeyCfg", "キーコンフィグ"));
  rows.End();
  return group;
}

QWidget* PlayGroup(Controls& controls) {
  QGroupBox* const group = controls.Group("プレイ関連");
  Rows rows(group);
  QComboBox* const colours = controls.Choice(
      "cmbScrColors", ScreenColors, 0, {"8bit(256)", "16bit(65536)", "24bit(16777216)", "32bit(16777216)"},
      "画面色数は基本的に16bitで。8bitはかなり荒れます。");
  rows.Add(controls.LabelFor(colours, "画面色数:"), colours);
  QComboBox* const skin = SkinChoice(
      controls, "cmbSkin", brd, [](const SkinEntry&) { return true; },
      "使用するスキンファイルを選択します。ゲーム中もF9キーで切り替え可能です。");
  rows.Add(controls.LabelFor(skin, "スキン:"), skin);
  QComboBox* const limit =
      controls.Choice("cmbDrawLimit", DRAWLIMIT, 1, {"無制限(1)", "ちょっと制限(2)", "かなり制限(3)"},
                      "描画制限を行います。制限するほど軽くはなりますがかなりアレです。プレイ中もF11キーで"
                      "切り替え可能です");
  rows.Add(controls.LabelFor(limit, "DrawLimit:"), limit);
  rows.Add(controls.Note("※遅いときはこの辺弄るといいかもー"));
  rows.Add(controls.Tick("chkDontStretch", DontStretch, "拡大処理を無効にする",
                         "拡大処理を行わないようにします。遅いグラフィック用。"));
  auto* const showing = new QHBoxLayout;
  showing->addWidget(controls.Tick("chkDirectBlt", DirectBlt, "DirectBlt",
                                   "FlipではなくBltを行います。必要時のみチェックしてください"));
  showing->addWidget(
      controls.Tick("chkNoWait", NOVSync, "NO VSYNC",
                    "垂直回帰信号と同期しません。必要時のみチェックしてください。(特にDirectBlt時は"
                    "不安定になります。)"));
  rows.Add(showing);
  rows.Add(controls.Tick("chkRealtimeStretch", RealtimeStretch, "use another BGA Stretch Method ",
                         "G400等で通常ではBGA拡大がまともに動かないときにチェックしてください。"));
  rows.Add(controls.Tick("chkcourseShowSBG", CourseEffect, "コース曲変わり目エフェクト",
                         "コースの曲の変わり目でステージ画像を表示します"));
  rows.End();
  return group;
}

bool TakePreviewDelay(TextView text) {
  const std::optional<double> seconds = ToDouble(text);
  const std::optional<int32_t> ms = seconds && *seconds >= 0 ? Round(*seconds * 1000) : std::nullopt;
  Assign(PreviewDelay, ms);
  return ms.has_value();
}

QWidget* SelectGroup(Controls& controls) {
  QGroupBox* const group = controls.Group("曲セレ関連");
  Rows rows(group);
  rows.Add(controls.Tick("chkPreview", BMSPreview, "BMS Preview 機能を有効にする",
                         "曲セレ時にその曲をプレビューできます。"));
  auto* const wait = new QHBoxLayout;
  QLineEdit* const seconds = controls.Field("txtWait", ToQt(ToText(PreviewDelay / 1000.0)), TakePreviewDelay);
  seconds->setMaximumWidth(seconds->fontMetrics().averageCharWidth() * 10);
  seconds->setAlignment(Qt::AlignRight);
  wait->addWidget(seconds);
  wait->addWidget(controls.LabelFor(seconds, "秒後に再生開始"), 1);
  rows.Add(wait);
  rows.Add(controls.Tick("chkEndless", ENDLESSMODE, "Endlessモードは1P曲のみ",
                         "Endlessモードの時に1p曲以外が出なくなります。"));
  rows.Add(controls.Tick("chkNoSmooth", NOSMOOTHSCROLL, "曲リストをスムーズスクロールしない",
                         "曲リストをスムーズにスクロールしません。"));
  rows.Add(controls.Tick("chkClearList", ShowClearedOnList, "クリアした曲は文字色を変える",
                         "クリアした曲はリストで文字色が変わります。但し仮実装"));
  rows.End();
  return group;
}

QLineEdit* TextField(Controls& controls, const char* name, Text& setting) {
  return controls.Field(name, ToQt(setting), [&setting](TextView text) {
    setting = Text(text);
    return true;
  });
}

QWidget* NetworkGroup(Controls& controls) {
  QGroupBox* const group = controls.Group("ネットワーク");
  auto* const grid = new QGridLayout(group);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(4, 1);
  QLineEdit* const name = TextField(controls, "txtUserName", MyName);
  grid->addWidget(controls.LabelFor(name, "あなたの名前:"), 0, 0);
  grid->addWidget(name, 0, 1);
  grid->addWidget(controls.Note("※スコアランクのデフォルト名にもなります。"), 0, 2, 1, 3);
  QLineEdit* const address = TextField(controls, "txtAddress", NetAddress);
  controls.Say([=] { address->setPlaceholderText(Words("空欄なら近くのサーバーを探します")); });
  grid->addWidget(controls.LabelFor(address, "サーバーのアドレス:"), 1, 0);
  grid->addWidget(address, 1, 1);
  grid->addWidget(controls.Button("cmdConnect", "接続", "サーバーへ接続します。"), 1, 2);
  grid->addWidget(controls.Button("cmdServer", "サーバー起動", "自らをサーバーとして起動します。"), 1, 3);
  auto* const found = new QLabel;
  found->setObjectName(QStringLiteral("lblNetwork"));
  found->setTextFormat(Qt::PlainText);
  found->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  grid->addWidget(found, 1, 4);
  return group;
}

bool TakeObjectLimit(TextView text) {
  const std::optional<int32_t> limit = ToWhole(text);
  Assign(numObjs, limit);
  return limit.has_value();
}

QWidget* SkinMapGroup(Controls& controls) {
  QGroupBox* const group = controls.Group("スキンマッパー");
  Rows rows(group);
  rows.LeaveRoom();
  struct Side {
    const char* name;
    const char* label;
    bool SkinEntry::*style;
  };
  constexpr std::array<Side, 3> kSides = {Side{"cmbSkinMap0", "1P:", &SkinEntry::for1P},
                                          Side{"cmbSkinMap1", "2P:", &SkinEntry::for2P},
                                          Side{"cmbSkinMap2", "DP:", &SkinEntry::forDP}};
  for (size_t side = 0; side < kSides.size(); ++side) {
    const Side& of = kSides[side];
    QComboBox* const box = SkinChoice(controls, of.name, SkinMapPath[side],
                                      [&](const SkinEntry& skin) { return skin.forAny || skin.*of.style; });
    // Those of the modes are as wide as each other, whatever their skins are called.
    box->setMinimumWidth(box->fontMetrics().averageCharWidth() * 40);
    rows.Add(controls.LabelFor(box, of.label), box);
  }
  rows.Add(
      controls.Note("それぞれの時にロードするスキンを割り当てます。なお、プレイ中に変更(F9キー)した場合は"
                    "そのファイル名が保存されます。"));
  rows.Add(
      controls.Tick("chkWatchSkins", WatchSkins, "スキンのファイルが変わったら読み直す",
                    "スキンを作る人のために、保存するたびに画面へ反映します。間違いは画面に行番号で示し、"
                    "直るまで前のスキンのまま続けます。"));
  return group;
}

QWidget* TurntableGroup(Controls& controls) {
  QGroupBox* const group = controls.Group("スクラッチ配置");
  Rows rows(group);
  rows.LeaveRoom();
  QComboBox* const first = controls.Choice("cmbScrAlign0", SCRATCH1P, 0, {"左", "右"});
  rows.Add(controls.LabelFor(first, "1P:"), first);
  QComboBox* const second = controls.Choice("cmbScrAlign1", SCRATCH2P, 0, {"左", "右"});
  rows.Add(controls.LabelFor(second, "2P:"), second);
  return group;
}

}  // namespace

QWidget* MakeMainPanel(Controls& controls) {
  auto* const panel = new QWidget;
  auto* const grid = new QGridLayout(panel);
  grid->addWidget(LoadingGroup(controls), 0, 0);
  grid->addWidget(PlayGroup(controls), 0, 1);
  grid->addWidget(SelectGroup(controls), 0, 2);
  grid->addWidget(NetworkGroup(controls), 1, 0, 1, 3);
  for (const int column : {0, 1, 2}) grid->setColumnStretch(column, 1);
  grid->setRowStretch(0, 1);
  return panel;
}

QWidget* MakeOtherPanel(Controls& controls) {
  auto* const panel = new QWidget;
  auto* const around = new QVBoxLayout(panel);
  QGroupBox* const group = controls.Group("その他の設定");
  around->addWidget(group);
  around->addStretch(1);
  auto* const rows = new QVBoxLayout(group);
  rows->addWidget(controls.Tick("chkDebugDisp", Debug, "Debug"));
  rows->addWidget(controls.Tick("chkHalfsize", Halfsize, "ハーフ(奇)"));
  rows->addWidget(controls.Tick("chkWindowed", Windowed, "Windowモード(同時にDirectBltをチェックすべし)"));
  auto* const scaling = new QHBoxLayout;
  QComboBox* const enlarged =
      controls.Choice("cmbScaling", Scaling, 0, {"自動", "整数倍のみ", "画面いっぱい"},
                      "全画面での拡大方法です。自動では、整数倍で大きく余る画面だけいっぱいに拡大します。");
  scaling->addWidget(controls.LabelFor(enlarged, "画面の拡大:"));
  scaling->addWidget(enlarged);
  scaling->addStretch(1);
  rows->addLayout(scaling);
  auto* const limit = new QHBoxLayout;
  QLineEdit* const objects =
      controls.Field("txtMaxObj", ToQt(ToText(numObjs)), TakeObjectLimit,
                     "内部で確保するオブジェ配列の数を指定します。コース時で曲多いと固まる時に。");
  objects->setMaximumWidth(objects->fontMetrics().averageCharWidth() * 16);
  limit->addWidget(controls.LabelFor(objects, "内部オブジェ数上限:"));
  limit->addWidget(objects);
  limit->addWidget(controls.Note("ヘタに弄ると死にます。"), 1);
  rows->addLayout(limit);
  return panel;
}

QWidget* MakeSkinPanel(Controls& controls) {
  auto* const panel = new QWidget;
  auto* const around = new QVBoxLayout(panel);
  around->addWidget(SkinMapGroup(controls));
  around->addWidget(TurntableGroup(controls));
  around->addStretch(1);
  return panel;
}

}  // namespace qlm

// Each control of the panels shows its setting when the menu opens, writes it at once, and says the words
// that are known for it.
#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QTest>
#include <map>
#include <optional>
#include <variant>

#include "base/paths.h"
#include "forms/controls.h"
#include "state/settings.h"
#include "state/skin.h"
#include "tests/forms/menu_test.h"

namespace qlm {
namespace {

using Strings = std::vector<std::string>;

struct TickCase {
  const char* name;
  std::variant<bool*, uint8_t*, int32_t*> setting;
  const char* caption;
  const char* tip;
};

const TickCase kTicks[] = {
    {"chkBGARelease", &BMPRelease, "BGA逐次解放を有効にする",
     "プレイ中BGAが必要なくなった時点でメモリから解放します。"},
    {"chkWide", &WideCharts, "最近の書式のBMSを読む(Wide)",
     "FFより先の番号、停止、ロングノート、UTF-8などを読みます。スコアは別に保存されます。"},
    {"chkPreview", &BMSPreview, "BMS Preview 機能を有効にする", "曲セレ時にその曲をプレビューできます。"},
    {"chkDontStretch", &DontStretch, "拡大処理を無効にする",
     "拡大処理を行わないようにします。遅いグラフィック用。"},
    {"chkEndless", &ENDLESSMODE, "Endlessモードは1P曲のみ", "Endlessモードの時に1p曲以外が出なくなります。"},
    {"chkNoSmooth", &NOSMOOTHSCROLL, "曲リストをスムーズスクロールしない",
     "曲リストをスムーズにスクロールしません。"},
    {"chkDirectBlt", &DirectBlt, "DirectBlt", "FlipではなくBltを行います。必要時のみチェックしてください"},
    {"chkNoWait", &NOVSync, "NO VSYNC",
     "垂直回帰信号と同期しません。必要時のみチェックしてください。(特にDirectBlt時は不安定になります。)"},
    {"chkRealtimeStretch", &RealtimeStretch, "use another BGA Stretch Method ",
     "G400等で通常ではBGA拡大がまともに動かないときにチェックしてください。"},
    {"chkcourseShowSBG", &CourseEffect, "コース曲変わり目エフェクト",
     "コースの曲の変わり目でステージ画像を表示します"},
    {"chkClearList", &ShowClearedOnList, "クリアした曲は文字色を変える",
     "クリアした曲はリストで文字色が変わります。但し仮実装"},
    {"chkDebugDisp", &Debug, "Debug", ""},
    {"chkHalfsize", &Halfsize, "ハーフ(奇)", ""},
    {"chkWatchSkins", &WatchSkins, "スキンのファイルが変わったら読み直す",
     "スキンを作る人のために、保存するたびに画面へ反映します。間違いは画面に行番号で示し、直るまで前のスキン"
     "のまま"
     "続けます。"},
    {"chkWindowed", &Windowed, "Windowモード(同時にDirectBltをチェックすべし)", ""},
};

int Value(const TickCase& tick) {
  return std::visit([](const auto* setting) { return static_cast<int>(*setting); }, tick.setting);
}
void Set(const TickCase& tick, int value) {
  std::visit([&](auto* setting) { *setting = static_cast<std::remove_pointer_t<decltype(setting)>>(value); },
             tick.setting);
}

TEST_F(MenuTest, TicksShowTheirSettingAndWriteItAtOnce) {
  for (const int before : {0, 1}) {
    for (const TickCase& tick : kTicks) Set(tick, before);
    Open();
    for (const TickCase& tick : kTicks) {
      EXPECT_EQ(Tick(tick.name).isChecked(), before == 1) << tick.name;
      EXPECT_EQ(Tick(tick.name).text().toStdString(), tick.caption);
      EXPECT_EQ(Tick(tick.name).toolTip().toStdString(), tick.tip) << tick.name;
      // Windowed takes DirectBlt along, so that it is done when it is its turn.
      Toggle(tick.name);
      EXPECT_EQ(Value(tick), 1 - before) << tick.name;
      Toggle(tick.name);
      EXPECT_EQ(Value(tick), before) << tick.name;
    }
    Close();
  }
}

TEST_F(MenuTest, NumbersOutOfATicksRangeStayUntilTheyAreChanged) {
  BMPRelease = 7;
  BMSPreview = 200;
  Open();
  EXPECT_TRUE(Tick("chkBGARelease").isChecked());
  EXPECT_TRUE(Tick("chkPreview").isChecked());
  EXPECT_EQ(BMPRelease, 7);
  EXPECT_EQ(BMSPreview, 200);
  Toggle("chkBGARelease");
  Toggle("chkPreview");
  Toggle("chkPreview");
  EXPECT_EQ(BMPRelease, 0);
  EXPECT_EQ(BMSPreview, 1);
  Close();
  BMPRelease = -4;
  Open();
  EXPECT_FALSE(Tick("chkBGARelease").isChecked());
  EXPECT_EQ(BMPRelease, -4);
}

struct ChoiceCase {
  const char* name;
  std::variant<bool*, uint8_t*, int32_t*> setting;
  int first;
  Strings items;
  const char* label;
  const char* tip;
};

const ChoiceCase kChoices[] = {
    {"cmbWAVMode",
     &WAVLoadmode,
     0,
     {"初回一括", "逐次読込"},
     "WAVEロード方法:",
     "逐次読み込みはHDDが速い場合は効果があります。"},
    {"cmbBGAMode",
     &BMPLoadmode,
     0,
     {"初回一括", "逐次読込"},
     "BMPロード方法:",
     "BGAの逐次読み込みはお勧めしません"},
    {"cmbCourse",
     &CourseLoadMode,
     0,
     {"逐次読込", "曲ごと", "初回一括"},
     "Course play時:",
     "メモリーが裕福な環境は一括でokです。普通は曲ごとがいいかも。"},
    {"cmbScrColors",
     &ScreenColors,
     0,
     {"8bit(256)", "16bit(65536)", "24bit(16777216)", "32bit(16777216)"},
     "画面色数:",
     "画面色数は基本的に16bitで。8bitはかなり荒れます。"},
    {"cmbDrawLimit",
     &DRAWLIMIT,
     1,
     {"無制限(1)", "ちょっと制限(2)", "かなり制限(3)"},
     "DrawLimit:",
     "描画制限を行います。制限するほど軽くはなりますがかなりアレです。プレイ中もF11キーで切り替え可能です"},
    {"cmbScaling",
     &Scaling,
     0,
     {"自動", "整数倍のみ", "画面いっぱい"},
     "画面の拡大:",
     "全画面での拡大方法です。自動では、整数倍で大きく余る画面だけいっぱいに拡大します。"},
    {"cmbScrAlign0", &SCRATCH1P, 0, {"左", "右"}, "1P:", ""},
    {"cmbScrAlign1", &SCRATCH2P, 0, {"左", "右"}, "2P:", ""},
};

int Value(const ChoiceCase& choice) {
  return std::visit([](const auto* setting) { return static_cast<int>(*setting); }, choice.setting);
}
void Set(const ChoiceCase& choice, int value) {
  std::visit([&](auto* setting) { *setting = static_cast<std::remove_pointer_t<decltype(setting)>>(value); },
             choice.setting);
}

TEST_F(MenuTest, ChoicesShowTheirSettingAndWriteItAtOnce) {
  for (const ChoiceCase& choice : kChoices) {
    const int items = static_cast<int>(choice.items.size());
    for (int shown = 0; shown < items; ++shown) {
      Set(choice, choice.first + shown);
      Open();
      EXPECT_EQ(Items(choice.name), choice.items);
      EXPECT_EQ(Choice(choice.name).currentIndex(), shown) << choice.name;
      EXPECT_EQ(Choice(choice.name).toolTip().toStdString(), choice.tip);
      const int other = (shown + 1) % items;
      Choose(choice.name, other);
      EXPECT_EQ(Value(choice), choice.first + other) << choice.name;
      Close();
    }
  }
}

TEST_F(MenuTest, NumbersOutOfAChoicesRangeShowAsTheNearestItemAndStayUntilTheyAreChanged) {
  WAVLoadmode = 9;
  CourseLoadMode = -3;
  ScreenColors = 200;
  DRAWLIMIT = 0;
  Open();
  EXPECT_EQ(Choice("cmbWAVMode").currentIndex(), 1);
  EXPECT_EQ(Choice("cmbCourse").currentIndex(), 0);
  EXPECT_EQ(Choice("cmbScrColors").currentIndex(), 3);
  EXPECT_EQ(Choice("cmbDrawLimit").currentIndex(), 0);
  EXPECT_EQ(WAVLoadmode, 9);
  EXPECT_EQ(CourseLoadMode, -3);
  EXPECT_EQ(ScreenColors, 200);
  EXPECT_EQ(DRAWLIMIT, 0);
  // The item that shows can be chosen too.
  QTest::keyClick(&Choice("cmbScrColors"), Qt::Key_Up);
  QTest::keyClick(&Choice("cmbScrColors"), Qt::Key_Down);
  EXPECT_EQ(ScreenColors, 3);
  Choose("cmbDrawLimit", 1);
  EXPECT_EQ(DRAWLIMIT, 2);
}

TEST_F(MenuTest, FieldsThatBelongToALabelAreTiedToIt) {
  Open();
  std::map<std::string, std::string> labels;
  for (const QLabel* const label : menu->findChildren<QLabel*>()) {
    if (label->buddy() != nullptr)
      labels[label->buddy()->objectName().toStdString()] = label->text().toStdString();
  }
  for (const ChoiceCase& choice : kChoices) EXPECT_EQ(labels[choice.name], choice.label);
  EXPECT_EQ(labels["cmbSkin"], "スキン:");
  EXPECT_EQ(labels["txtWait"], "秒後に再生開始");
  EXPECT_EQ(labels["txtUserName"], "あなたの名前:");
  EXPECT_EQ(labels["txtAddress"], "サーバーのアドレス:");
  EXPECT_EQ(labels["txtMaxObj"], "内部オブジェ数上限:");
  EXPECT_EQ(labels["cmbSkinMap0"], "1P:");
  EXPECT_EQ(labels["cmbSkinMap1"], "2P:");
  EXPECT_EQ(labels["cmbSkinMap2"], "DP:");
  EXPECT_EQ(labels["lstSPath"],
            "検索対象をチェックして「検索開始」してください。検索開始を押すまでリストは保存されません。\r\n"
            "追加はリストに直接フォルダをドラッグ&&ドロップしてもOKです。");
}

TEST_F(MenuTest, HeadsAndRemarksAreTheKnownOnes) {
  Open();
  std::vector<std::string> words;
  for (const QGroupBox* const group : menu->findChildren<QGroupBox*>())
    words.push_back(group->title().toStdString());
  for (const QLabel* const label : menu->findChildren<QLabel*>())
    words.push_back(label->text().toStdString());
  constexpr const char* kSkinNote =
      "それぞれの時にロードするスキンを割り当てます。なお、プレイ中に変更(F9キー)した場合は"
      "そのファイル名が保存されます。";
  for (const char* const expected :
       {"基本設定", "プレイ関連", "曲セレ関連", "ネットワーク", "その他の設定", "スキンマッパー",
        "BMS検索パス", "スクラッチ配置", "※スコアランクのデフォルト名にもなります。",
        "※遅いときはこの辺弄るといいかもー", "ヘタに弄ると死にます。",
        "基本的に、設定は項目にマウスカーソルを持っていくと出る「ツールチップ」を参考にしてください。",
        kSkinNote}) {
    EXPECT_EQ(std::count(words.begin(), words.end(), expected), 1) << expected;
  }
  const std::map<std::string, std::pair<const char*, const char*>> buttons = {
      {"cmdNorm", {"起動", ""}},
      {"cmdKeyCfg", {"キーコンフィグ", ""}},
      {"cmdConnect", {"接続", "サーバーへ接続します。"}},
      {"cmdServer", {"サーバー起動", "自らをサーバーとして起動します。"}},
      {"cmdAdd0", {"追加", "追加は左のリストへドラッグ&ドロップでも行えます。"}},
      {"cmdAdd1", {"削除", ""}},
      {"cmdSStart", {"検索開始", ""}},
  };
  for (const auto& [name, words_] : buttons) {
    EXPECT_EQ(Button(name).text().toStdString(), words_.first);
    EXPECT_EQ(Button(name).toolTip().toStdString(), words_.second);
  }
  EXPECT_EQ(Tick("chkNoConfirm").text().toStdString(), "無確認で削除");
  EXPECT_EQ(Tick("chkNoLimit").text().toStdString(), "階層無制限に検索");
  EXPECT_EQ(Tick("chkNoLimit").toolTip().toStdString(), "検索する階層を制限しません。");
  EXPECT_EQ(List().toolTip().toStdString(), "エクスプローラからフォルダをドラッグ&ドロップでも追加できます");
  EXPECT_EQ(Field("txtMaxObj").toolTip().toStdString(),
            "内部で確保するオブジェ配列の数を指定します。コース時で曲多いと固まる時に。");
  EXPECT_EQ(menu->windowTitle().toStdString(), "quillmarch startup menu");
}

TEST_F(MenuTest, WindowedTakesDirectBltAlongToTheSameValue) {
  Open();
  Toggle("chkWindowed");
  EXPECT_TRUE(Windowed);
  EXPECT_TRUE(DirectBlt);
  EXPECT_TRUE(Tick("chkDirectBlt").isChecked());
  Toggle("chkWindowed");
  EXPECT_FALSE(DirectBlt);
  EXPECT_FALSE(Tick("chkDirectBlt").isChecked());
  // By itself DirectBlt changes alone.
  Toggle("chkDirectBlt");
  EXPECT_FALSE(Windowed);
  EXPECT_TRUE(DirectBlt);
  Toggle("chkWindowed");
  EXPECT_TRUE(DirectBlt);
}

bool IsRed(const QLineEdit& field) {
  return field.palette().color(QPalette::Base) == QColor(0xC8, 0x38, 0x5A);
}

TEST_F(MenuTest, WaitIsInSecondsAndKeepsItsValueWhileItIsNoNumber) {
  PreviewDelay = 300;
  Open();
  EXPECT_EQ(Field("txtWait").text().toStdString(), "0.3");
  Type("txtWait", "1.5");
  EXPECT_EQ(PreviewDelay, 1500);
  Type("txtWait", "0.0025");  // 2.5 ms, half to even
  EXPECT_EQ(PreviewDelay, 2);
  Type("txtWait", "0");
  EXPECT_EQ(PreviewDelay, 0);
  Type("txtWait", "4");
  EXPECT_FALSE(IsRed(Field("txtWait")));
  for (const char* const wrong : {"x", "4 s", "", "-", "9999999999"}) {
    Type("txtWait", "4");
    Type("txtWait", wrong);
    // The digits of the last one are numbers on the way, up to the longest that fits.
    const int32_t stays = std::string_view(wrong) == "9999999999" ? 999'999'000 : 4000;
    EXPECT_EQ(PreviewDelay, stays) << wrong;
    EXPECT_TRUE(IsRed(Field("txtWait"))) << wrong;
  }
  EXPECT_FALSE(Field("txtWait").accessibleDescription().isEmpty());
  Type("txtWait", "2");
  EXPECT_EQ(PreviewDelay, 2000);
  EXPECT_FALSE(IsRed(Field("txtWait")));
  EXPECT_TRUE(Field("txtWait").accessibleDescription().isEmpty());
}

TEST_F(MenuTest, ObjectLimitKeepsItsValueWhileItIsNoNumber) {
  Open();
  EXPECT_EQ(Field("txtMaxObj").text().toStdString(), "65535");
  Type("txtMaxObj", "9000");
  EXPECT_EQ(numObjs, 9000);
  Type("txtMaxObj", "many");
  EXPECT_EQ(numObjs, 9000);
  EXPECT_TRUE(IsRed(Field("txtMaxObj")));
  Type("txtMaxObj", "70000");
  EXPECT_EQ(numObjs, 70000);
  EXPECT_FALSE(IsRed(Field("txtMaxObj")));
}

TEST_F(MenuTest, NameAndAddressAreWrittenAsTheyAreTyped) {
  Open();
  EXPECT_EQ(Field("txtUserName").text().toStdString(), "Default");
  Type("txtUserName", "Quill");
  EXPECT_EQ(MyName, u"Quill");
  Type("txtAddress", "127.0.0.1:21520");
  EXPECT_EQ(NetAddress, u"127.0.0.1:21520");
  Close();
  MyName = u"羽ペン";
  Open();
  EXPECT_EQ(Field("txtUserName").text().toStdString(), "羽ペン");
  EXPECT_EQ(Field("txtAddress").text().toStdString(), "127.0.0.1:21520");
}

class SkinChoiceTest : public MenuTest {
 protected:
  SkinChoiceTest() {
    WriteText(u"_qlmfiles\\a.brd", u"#TITLE any\r\n");
    WriteText(u"_qlmfiles\\b.brd", u"#TITLE one\r\n#SKINSTYLE 1P\r\n");
    WriteText(u"_qlmfiles\\c.brd", u"#TITLE both\r\n#SKINSTYLE 1P,2P\r\n");
    WriteText(u"_qlmfiles\\d.brd", u"#TITLE double\r\n#SKINSTYLE DP\r\n");
  }
  static Text Path(TextView name) { return Join(AppPath, u"\\_qlmfiles\\", name); }
};

TEST_F(SkinChoiceTest, EachModeHasTheSkinsOfItsStyleAndThoseOfNone) {
  brd = Path(u"D.brd");
  SkinMapPath = {Path(u"c.brd"), Path(u"a.brd"), Path(u"d.brd")};
  Open();
  EXPECT_EQ(Items("cmbSkin"), (Strings{"ANY", "ONE", "BOTH", "DOUBLE"}));
  EXPECT_EQ(Items("cmbSkinMap0"), (Strings{"ANY", "ONE", "BOTH"}));
  EXPECT_EQ(Items("cmbSkinMap1"), (Strings{"ANY", "BOTH"}));
  EXPECT_EQ(Items("cmbSkinMap2"), (Strings{"ANY", "DOUBLE"}));
  EXPECT_EQ(Choice("cmbSkin").currentIndex(), 3);
  EXPECT_EQ(Choice("cmbSkinMap0").currentIndex(), 2);
  EXPECT_EQ(Choice("cmbSkinMap1").currentIndex(), 0);
  EXPECT_EQ(Choice("cmbSkinMap2").currentIndex(), 1);
  Choose("cmbSkin", 1);
  Choose("cmbSkinMap0", 1);
  Choose("cmbSkinMap1", 1);
  Choose("cmbSkinMap2", 0);
  EXPECT_EQ(brd, Path(u"b.brd"));
  EXPECT_EQ(SkinMapPath, (std::array{Path(u"b.brd"), Path(u"c.brd"), Path(u"a.brd")}));
}

TEST_F(SkinChoiceTest, SkinThatIsNotThereShowsByItsFileAndStaysUntilAnotherIsChosen) {
  SkinMapPath[0] = Path(u"lost.brd");
  SkinMapPath[2] = Path(u"b.brd");  // for one player
  Open();
  EXPECT_EQ(Choice("cmbSkinMap0").currentIndex(), -1);
  EXPECT_EQ(Choice("cmbSkinMap0").placeholderText().toStdString(), "lost.brd");
  EXPECT_EQ(Choice("cmbSkinMap2").currentIndex(), -1);
  EXPECT_EQ(SkinMapPath[0], Path(u"lost.brd"));
  Choose("cmbSkinMap0", 0);
  EXPECT_EQ(SkinMapPath[0], Path(u"a.brd"));
}

TEST_F(MenuTest, FolderWithoutSkinsHasEmptyChoices) {
  Open();
  EXPECT_EQ(Choice("cmbSkin").count(), 0);
  QTest::keyClick(&Choice("cmbSkin"), Qt::Key_Down);
  EXPECT_TRUE(brd.ends_with(u"qlm_scr.brd"));
}

}  // namespace
}  // namespace qlm

// The dialog of the key configuration, with real key events.
#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QTest>
#include <algorithm>
#include <filesystem>
#include <vector>

#include "base/hooks.h"
#include "base/paths.h"
#include "files/key_table.h"
#include "forms/key_functions.h"
#include "forms/key_picture.h"
#include "forms/language.h"
#include "input/input.h"
#include "state/settings.h"
#include "tests/forms/key_config_form.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDefaultRows =
    "11\t[44]\n12\t[31]\n13\t[45]\n14\t[32]\n15\t[46]\n16\t[42][57]\n17\t\n18\t[33]\n19\t[47]\n"
    "21\t[49]\n22\t[36]\n23\t[50]\n24\t[37]\n25\t[51]\n26\t[38]\n27\t\n28\t[52]\n29\t[28][54]\n"
    "01ESC\t\n02TAB\t\n03Enter\t\n04↑\t\n05↓\t\n06←\t\n07→\t\n08★\t";

TEST_F(KeyConfigTest, OpensOnTheFirstLaneWithTheDefaultsWhereThereIsNoFile) {
  KeyMap.Fill(5);
  Open([](const Form& form) {
    EXPECT_EQ(form.Rows(), kDefaultRows);
    EXPECT_EQ(form.Selected(), "11");
    EXPECT_EQ(QApplication::focusWidget(), &form.Lanes());
  });
}

TEST_F(KeyConfigTest, ReadsTheFileAnewAtEachOpening) {
  struct Case {
    int32_t key;
    std::string_view inputs;
  };
  for (const auto& [key, inputs] : {Case{400, "[400]"}, Case{30, "[30]"}}) {
    KeyMap.Clear();
    KeyMap[key] = 21;
    SaveKeyTable();
    KeyMap.Clear();
    Open([expected = inputs](const Form& form) { EXPECT_EQ(form.InputsOf("21"), expected); });
  }
}

TEST_F(KeyConfigTest, ShortFileLeavesTheRestWithoutAFunction) {
  WriteData(u"_qlmfiles\\qlm_keycnf.dat", std::string("\0\0\x0B\0\x0C", 5));
  Open([](const Form& form) {
    EXPECT_EQ(form.InputsOf("11"), "[1]");
    EXPECT_EQ(form.InputsOf("12"), "[2]");
    EXPECT_EQ(form.InputsOf("13"), "");
  });
}

TEST_F(KeyConfigTest, FileThatCannotBeOpenedCountsAsMissing) {
  fs::create_directory(SystemFolder() + "/_qlmfiles/qlm_keycnf.dat");
  testing::internal::CaptureStderr();
  Open([](const Form& form) { EXPECT_EQ(form.Rows(), kDefaultRows); });
  EXPECT_EQ(testing::internal::GetCapturedStderr().find("リセット"), std::string::npos) << "no box";
}

TEST_F(KeyConfigTest, SaysWhatIsTold) {
  Open([](const Form& form) {
    EXPECT_EQ(form.Dialog().windowTitle(), QStringLiteral(u"KeyConfig"));
    EXPECT_EQ(form.Find<QAbstractButton>("cmdOK").text(), QStringLiteral(u"設定完了"));
    EXPECT_EQ(form.Find<QAbstractButton>("cmdCancel").text(), QStringLiteral(u"キャンセル"));
    EXPECT_EQ(form.Find<QAbstractButton>("cmdDefault").text(), QStringLiteral(u"初期状態"));
    EXPECT_EQ(form.Find<QAbstractButton>("cmdClear").text(), QStringLiteral(u"クリア"));
    EXPECT_EQ(form.Find<QAbstractButton>("chkXY").text(), QStringLiteral(u"XY軸移動を検知"));
    EXPECT_EQ(form.Find<QAbstractButton>("chkXY").toolTip(),
              QStringLiteral(u"方向入力を検知します。結構敏感に反応する設定にしてます。"));
    EXPECT_EQ(form.Find<QGroupBox>("Frame1").title(), QStringLiteral(u"特殊キー"));
    EXPECT_EQ(form.Find<QLabel>("lblCount").text(),
              QStringLiteral(u"コントローラはID1,2のみ有効です。認識数:0"));
    QStringList labels;
    for (const QLabel* const label : form.Dialog().findChildren<QLabel*>()) labels += label->text();
    for (const QString& told :
         {QStringLiteral(u"設定したいボタンをクリックして、そのキーを押してください。1,2でも移動可能です。"),
          QStringLiteral(
              u"コントローラー用。キーボード時は不要です。\nESCをSTART、★をSELECTに割り当てると吉。")}) {
      EXPECT_TRUE(labels.contains(told)) << told.toStdString();
    }
  });
}

bool IsJapanese(const QString& words) {
  return std::any_of(words.begin(), words.end(), [](QChar letter) {
    return letter.script() == QChar::Script_Hiragana || letter.script() == QChar::Script_Katakana ||
           letter.script() == QChar::Script_Han;
  });
}

TEST_F(KeyConfigTest, SaysAllOfItInEnglish) {
  MenuLanguage = u"en";
  ShowChosenLanguage();
  Open([](const Form& form) {
    EXPECT_EQ(form.Dialog().windowTitle(), QStringLiteral("KeyConfig"));
    EXPECT_EQ(form.Find<QAbstractButton>("cmdOK").text(), QStringLiteral("Done"));
    form.Press(2);
    for (const int key : {3, 16, 30, 44}) form.Key(key, true);
    EXPECT_EQ(
        form.HeldLine(),
        "key number 3 → the next function   key number 16 → 11 (1P key 1)   key number 30 → 11 (1P key 1)   "
        "key number 44 → 11 (1P key 1)");
    const auto look = [&form] {
      QStringList words;
      for (const QWidget* const widget : form.Dialog().findChildren<QWidget*>()) {
        words << widget->toolTip() << widget->accessibleName();
        if (const auto* const label = qobject_cast<const QLabel*>(widget)) words += label->text();
        if (const auto* const button = qobject_cast<const QAbstractButton*>(widget)) words += button->text();
        if (const auto* const group = qobject_cast<const QGroupBox*>(widget)) words += group->title();
      }
      EXPECT_FALSE(IsJapanese(words.join(' '))) << words.join(' ').toStdString();
    };
    look();
    form.ClickShape(16);
    form.Click("cmdClear");
    form.Key(2, true);
    look();
    form.Key(45, true);
    look();
  });
  MenuLanguage = u"ja";
  ShowChosenLanguage();
}

TEST_F(KeyConfigTest, KeysTakeTheFunctionInHandAndTheFocusDoesNotAdvance) {
  Open([](const Form& form) {
    form.Press(30);
    form.Press(16);
    EXPECT_EQ(form.InputsOf("11"), "[16][30][44]");
    EXPECT_EQ(form.Selected(), "11");
    form.ClickShape(21);
    form.Press(30);
    EXPECT_EQ(form.InputsOf("11"), "[16][44]");
    EXPECT_EQ(form.InputsOf("21"), "[30][49]");
    EXPECT_EQ(form.Selected(), "21");
  });
}

TEST_F(KeyConfigTest, Keys1And2StepAndAreNeverGiven) {
  Open([](const Form& form) {
    std::string forward;
    for (int i = 0; i < 26; ++i) {
      form.Press(3);
      forward += form.Selected() + " ";
    }
    EXPECT_EQ(forward,
              "12 13 14 15 18 19 16 17 21 22 23 24 25 28 29 26 27 "
              "01ESC 02TAB 03Enter 04↑ 05↓ 06← 07→ 08★ 11 ");
    std::string back;
    for (int i = 0; i < 10; ++i) {
      form.Press(2);
      back += form.Selected() + " ";
    }
    EXPECT_EQ(back, "08★ 07→ 06← 05↓ 04↑ 03Enter 02TAB 01ESC 25 24 ");
    EXPECT_EQ(form.Rows(), kDefaultRows);
  });
}

TEST_F(KeyConfigTest, WhatTheFileGivesTheKeys1And2StaysAndShows) {
  KeyMap[2] = 17;
  SaveKeyTable();
  Open([](const Form& form) {
    EXPECT_EQ(form.InputsOf("17"), "[2]");
    form.Press(2);
    form.Press(3);
    form.Click("cmdOK");
  });
  EXPECT_EQ(KeyMap[2], 17);
}

TEST_F(KeyConfigTest, NoKeyMovesTheFocusOrClosesTheDialog) {
  struct Named {
    int code;
    Qt::Key name;
  };
  constexpr Named kKeys[] = {
      {1, Qt::Key_Escape},    {15, Qt::Key_Tab},     {15, Qt::Key_Backtab}, {28, Qt::Key_Return},
      {96, Qt::Key_Enter},    {57, Qt::Key_Space},   {103, Qt::Key_Up},     {108, Qt::Key_Down},
      {105, Qt::Key_Left},    {106, Qt::Key_Right},  {104, Qt::Key_PageUp}, {42, Qt::Key_Shift},
      {54, Qt::Key_Shift},    {56, Qt::Key_Alt},     {100, Qt::Key_AltGr},  {29, Qt::Key_Control},
      {97, Qt::Key_Control},  {125, Qt::Key_Meta},   {59, Qt::Key_F1},      {87, Qt::Key_F11},
      {58, Qt::Key_CapsLock}, {92, Qt::Key_Henkan},  {89, Qt::Key_unknown}, {119, Qt::Key_Pause},
      {99, Qt::Key_Print},    {111, Qt::Key_Delete}, {127, Qt::Key_Menu},   {62, Qt::Key_F4},
  };
  Open([&](const Form& form) {
    form.Click("cmdClear");
    for (const Named& key : kKeys) {
      form.Press(key.code, key.name);
      EXPECT_EQ(QApplication::focusWidget(), &form.Lanes()) << key.code;
      ASSERT_TRUE(form.Dialog().isVisible()) << key.code;
    }
    EXPECT_EQ(form.InputsOf("11"),
              "[1][15][28][29][42][54][56][57][58][59][62][87][115][121][156][157][183][184][197][200][201]"
              "[203][205][208][211][219][221]");
  });
}

TEST_F(KeyConfigTest, RepeatsAndKeysWithoutANumberAreNoPresses) {
  Open([](const Form& form) {
    form.Click("cmdClear");
    form.Key(30, true, Qt::Key_A, true);
    form.Press(85);   // no number
    form.Press(240);  // nor this one
    form.Press(-8);   // no code at all
    EXPECT_EQ(form.InputsOf("11"), "");
    form.Key(30, true, Qt::Key_A);
    form.ClickShape(12);
    form.Key(30, true, Qt::Key_A, true);
    form.Key(30, false, Qt::Key_A, true);
    form.Key(30, true, Qt::Key_A, true);
    EXPECT_EQ(form.InputsOf("11"), "[30]");
  });
}

TEST_F(KeyConfigTest, RepeatThatComesAsAReleaseAndAPressIsNoPress) {
  Open([](const Form& form) {
    form.Key(30, true);
    form.ClickShape(12);
    form.RepeatUnseen(30);
    EXPECT_EQ(form.InputsOf("11"), "[30][44]");
    EXPECT_EQ(form.HeldLine(), "キー番号 30 → 11 (1P 鍵盤 1)");
    form.Key(30, false);
    form.Key(30, true);
    EXPECT_EQ(form.InputsOf("12"), "[30][31]");
    // One that was held before the dialog opened.
    form.RepeatUnseen(28);
    EXPECT_EQ(form.InputsOf("29"), "[28][54]");
  });
}

TEST_F(KeyConfigTest, ClicksOnShapesAndRowsSelect) {
  Open([](const Form& form) {
    int row = 0;
    for (const int16_t function : ListedFunctions()) {
      const std::string item = Utf8(FunctionItem(function));
      form.ClickShape(function);
      EXPECT_EQ(form.Selected(), item);
      form.ClickRow((row + 13) % 26);
      EXPECT_NE(form.Selected(), item);
      form.ClickRow(row++);
      EXPECT_EQ(form.Selected(), item);
    }
    EXPECT_EQ(form.Rows(), kDefaultRows);
    form.ClickRow(19);
    form.Press(30);
    EXPECT_EQ(form.InputsOf("02TAB"), "[30]");
    EXPECT_EQ(QApplication::focusWidget(), &form.Lanes());
  });
}

TEST_F(KeyConfigTest, ClicksBesideTheShapesSelectNothing) {
  Open([](const Form& form) {
    form.ClickShape(12);
    QTest::mouseClick(&form.Lanes(), Qt::LeftButton, {}, {2, 2});
    QTest::mouseClick(&form.Menus(), Qt::LeftButton, {}, {2, 2});
    EXPECT_EQ(form.Selected(), "12");
  });
}

TEST_F(KeyConfigTest, ShapesLieApartAndWithinTheirPicture) {
  Open([](const Form& form) {
    for (const KeyPicture* const picture : {&form.Lanes(), &form.Menus()}) {
      std::vector<QRectF> shapes;
      for (int32_t function = 1; function <= 29; ++function) {
        const QRectF shape = picture->shapKey(function);
        if (shape.isEmpty()) continue;
        EXPECT_TRUE(QRectF(picture->rect()).contains(shape)) << function;
        for (const QRectF& other : shapes) EXPECT_FALSE(shape.intersects(other)) << function;
        shapes.push_back(shape);
      }
      EXPECT_EQ(shapes.size(), picture == &form.Lanes() ? 18U : 8U);
    }
  });
}

TEST_F(KeyConfigTest, OkTakesTheTableAndWritesItsFile) {
  Open([](const Form& form) {
    form.ClickShape(17);
    form.Press(30);
    form.Press(44);
    form.Click("cmdOK");
    EXPECT_FALSE(form.Dialog().isVisible());
  });
  EXPECT_EQ(KeyMap[30], 17);
  EXPECT_EQ(KeyMap[44], 17);
  EXPECT_EQ(KeyMap[31], 12);
  const std::string bytes = FileBytes();
  ASSERT_EQ(bytes.size(), 802U);
  EXPECT_EQ(bytes.substr(60, 4), std::string("\x11\0\x0C\0", 4));
  EXPECT_EQ(bytes.substr(88, 4), std::string("\x11\0\x0D\0", 4));
}

TEST_F(KeyConfigTest, CancelLeavesTheTableAndWritesNothing) {
  for (const char* const way : {"cmdCancel", "window"}) {
    Open([&](const Form& form) {
      form.Press(30);
      form.Click("cmdClear");
      if (std::string_view(way) == "cmdCancel") form.Click(way);
    });
    EXPECT_EQ(KeyTableBytes(), (SetDefaultKeyMap(), KeyTableBytes())) << way;
    EXPECT_EQ(FileBytes(), "") << way;
  }
}

TEST_F(KeyConfigTest, ClearAndOkLeaveNoKeyAtAll) {
  Open([](const Form& form) {
    form.ClickShape(13);
    form.Click("cmdClear");
    EXPECT_EQ(form.Selected(), "13");
    form.Click("cmdOK");
  });
  for (const int16_t function : KeyMap) EXPECT_EQ(function, 0);
  EXPECT_EQ(FileBytes(), std::string(802, '\0'));
}

TEST_F(KeyConfigTest, DefaultBringsTheDefaultMapBack) {
  WriteData(u"_qlmfiles\\qlm_keycnf.dat", std::string(802, '\1'));
  Open([](const Form& form) {
    form.ClickShape(8);
    form.Click("cmdDefault");
    EXPECT_EQ(form.Rows(), kDefaultRows);
    EXPECT_EQ(form.Selected(), "08★");
    form.Click("cmdOK");
  });
  EXPECT_EQ(FileBytes(), (SetDefaultKeyMap(), KeyTableBytes()));
}

TEST_F(KeyConfigTest, FileThatCannotBeWrittenIsToldAndTheTableHoldsAllTheSame) {
  static Text told;
  told.clear();
  hooks.unwritten = [](TextView path) { told = path; };
  fs::create_directory(SystemFolder() + "/_qlmfiles/qlm_keycnf.dat");
  Open([](const Form& form) {
    form.Press(30);
    form.Click("cmdOK");
  });
  EXPECT_EQ(told, DataPath(u"qlm_keycnf.dat"));
  EXPECT_EQ(KeyMap[30], 11);
}

TEST_F(KeyConfigTest, AxesAreASettingAtOnceAndAlsoOnCancel) {
  for (const bool before : {false, true}) {
    JoyXYEnable = before;
    Open([&](const Form& form) {
      auto& box = form.Find<QCheckBox>("chkXY");
      EXPECT_EQ(box.isChecked(), before);
      QTest::mouseClick(&box, Qt::LeftButton, {}, {8, box.height() / 2});
      EXPECT_EQ(JoyXYEnable, !before);
      form.Click("cmdCancel");
    });
    EXPECT_EQ(JoyXYEnable, !before);
  }
}

TEST_F(KeyConfigTest, ShowsLiveWhatAHeldKeyDoes) {
  Open([](const Form& form) {
    const std::string idle = form.HeldLine();
    const QPoint key3 = form.Lanes().shapKey(13).topLeft().toPoint() + QPoint(8, 8);
    const QRgb before = form.Lanes().grab().toImage().pixel(key3);
    form.ClickShape(13);
    form.Key(45, true);
    EXPECT_EQ(form.HeldLine(), "キー番号 45 → 13 (1P 鍵盤 3)");
    EXPECT_GT(qGray(form.Lanes().grab().toImage().pixel(key3)), qGray(before));
    form.ClickShape(27);
    form.Key(30, true);
    EXPECT_EQ(form.HeldLine(), "キー番号 30 → 27 (2P スクラッチ left)   キー番号 45 → 13 (1P 鍵盤 3)");
    form.ClickShape(7);
    form.Key(30, false);
    form.Key(45, false);
    EXPECT_EQ(form.HeldLine(), idle);
    form.Key(16, true);
    EXPECT_EQ(form.HeldLine(), "キー番号 16 → 07→ (↓)");
    form.Click("cmdClear");
    EXPECT_EQ(form.HeldLine(), "キー番号 16 → 機能なし");
    form.Key(16, false);
    form.Key(2, true);
    EXPECT_EQ(form.HeldLine(), "キー番号 2 → 前の機能へ");
    form.Key(2, false);
    form.Key(3, true);
    EXPECT_EQ(form.HeldLine(), "キー番号 3 → 次の機能へ");
  });
}

TEST_F(KeyConfigTest, FrameStandsAroundTheShapeInHand) {
  Open([](const Form& form) {
    const auto framed = [&](const KeyPicture& picture, int32_t function) {
      const QRectF shape = picture.shapKey(function);
      const QImage image = const_cast<KeyPicture&>(picture).grab().toImage();
      // Somewhere in the small space above it.
      const int across = static_cast<int>(shape.center().x());
      const int top = static_cast<int>(shape.top());
      int brightest = 0;
      for (int y = top - 4; y < top; ++y) brightest = std::max(brightest, qGray(image.pixel(across, y)));
      return brightest > 150;
    };
    EXPECT_TRUE(framed(form.Lanes(), 11));
    form.ClickShape(2);
    EXPECT_FALSE(framed(form.Lanes(), 11));
    EXPECT_TRUE(framed(form.Menus(), 2));
    form.ClickShape(24);
    EXPECT_FALSE(framed(form.Menus(), 2));
    EXPECT_TRUE(framed(form.Lanes(), 24));
  });
}

TEST_F(KeyConfigTest, ClosesWithoutATraceWhenItIsNoLongerTheActiveWindow) {
  Open([](const Form& form) {
    form.Press(30);
    form.Poll();
    EXPECT_TRUE(form.Dialog().isVisible());
    QWidget other;
    QApplication::setActiveWindow(&other);
    EXPECT_TRUE(Until([&] { return !form.Dialog().isVisible(); }));
  });
  EXPECT_EQ(KeyMap[30], 0);
  EXPECT_EQ(FileBytes(), "");
}

TEST_F(KeyConfigTest, GivesTheKeysBackAsTheyWere) {
  static std::string heard;
  heard.clear();
  hooks.keyDown = [](int32_t key) { heard.append("+").append(std::to_string(key)); };
  hooks.keyUp = [](int32_t key) { heard.append("-").append(std::to_string(key)); };
  Open([](const Form& form) {
    form.Key(30, true);
    form.Click("cmdOK");
  });
  EXPECT_EQ(heard, "") << "what happens in the dialog is not the game's";
  EXPECT_FALSE(KeyHeld[30]);
  DispatchKey(44, true);
  DispatchKey(44, false);
  EXPECT_EQ(heard, "+44-44");
}

}  // namespace
}  // namespace qlm

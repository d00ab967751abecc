// The dialog of the key configuration, with real key events and virtual controllers.
#include "forms/key_config.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QTest>
#include <QWindow>
#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <random>
#include <vector>

#include "base/hooks.h"
#include "base/paths.h"
#include "files/key_table.h"
#include "forms/key_functions.h"
#include "forms/key_picture.h"
#include "forms/language.h"
#include "input/input.h"
#include "state/settings.h"
#include "tests/forms/until.h"
#include "tests/support/game_test.h"
#include "tests/support/virtual_stick.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

// The open dialog, as a person sees and works it.
class Form {
 public:
  explicit Form(QDialog& dialog) : dialog_(dialog) {}

  QDialog& Dialog() const { return dialog_; }
  template <typename Control>
  Control& Find(const char* name) const {
    auto* const control = dialog_.findChild<Control*>(name);
    EXPECT_NE(control, nullptr) << name;
    return *control;
  }
  QListWidget& List() const { return Find<QListWidget>("lstKeyList"); }
  KeyPicture& Lanes() const { return Find<KeyPicture>("picKeyDown"); }
  KeyPicture& Menus() const { return Find<KeyPicture>("picSpecialKeys"); }

  void Click(const char* button) const { QTest::mouseClick(&Find<QWidget>(button), Qt::LeftButton); }
  void ClickShape(int32_t function) const {
    KeyPicture& picture = function < 11 ? Menus() : Lanes();
    QTest::mouseClick(&picture, Qt::LeftButton, {}, picture.shapKey(function).center().toPoint());
  }
  void ClickRow(int row) const {
    QListWidget& list = List();
    list.scrollToItem(list.item(row));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(row)).center());
  }

  // A key by the kernel's code, as the window system tells it.
  void Key(int code, bool down, Qt::Key name = Qt::Key_unknown, bool repeat = false) const {
    QKeyEvent event(down ? QEvent::KeyPress : QEvent::KeyRelease, name, Qt::NoModifier,
                    static_cast<quint32>(code) + 8, 0, 0, QString(), repeat);
    event.setTimestamp(++moment_);
    QCoreApplication::sendEvent(dialog_.windowHandle(), &event);
  }
  // What X makes of a held key where the toolkit does not see through it.
  void RepeatUnseen(int code) const {
    Key(code, false);
    --moment_;
    Key(code, true);
  }
  void Press(int code, Qt::Key name = Qt::Key_unknown) const {
    Key(code, true, name);
    Key(code, false, name);
  }

  // The selected row's first word.
  std::string Selected() const {
    const QListWidgetItem* const item = List().currentItem();
    return item == nullptr ? std::string() : item->text().section('\t', 0, 0).toStdString();
  }
  // The row of a function, from its tab on.
  std::string InputsOf(const std::string& item) const {
    for (int row = 0; row < List().count(); ++row) {
      const QString text = List().item(row)->text();
      if (text.section('\t', 0, 0).toStdString() == item) return text.section('\t', 1).toStdString();
    }
    return "no row " + item;
  }
  std::string Rows() const {
    QStringList rows;
    for (int row = 0; row < List().count(); ++row) rows += List().item(row)->text();
    return rows.join('\n').toStdString();
  }
  std::string HeldLine() const { return Find<QLabel>("lblHeld").text().toStdString(); }

  // For as long as it takes to poll the controllers several times.
  static void Poll() { QTest::qWait(100); }

 private:
  QDialog& dialog_;
  mutable quint64 moment_ = 0;  // of the last key event
};

class KeyConfigTest : public GameTest {
 protected:
  static void SetUpTestSuite() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int words = 1;
    static char name[] = "key_config_test";
    static char* arguments[] = {name, nullptr};
    application = new QApplication(words, arguments);
  }
  static void TearDownTestSuite() { delete std::exchange(application, nullptr); }

  KeyConfigTest() { SetDefaultKeyMap(); }

  // Opens the dialog and lets a hand work in it; what is still open then is closed like a window.
  static void Open(const std::function<void(const Form&)>& hand) {
    bool opened = false;
    const auto work = [&] {
      auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      opened = true;
      EXPECT_TRUE(Until([&] { return dialog->isActiveWindow(); }));
      hand(Form(*dialog));
      if (dialog->isVisible()) dialog->close();
    };
    QMetaObject::invokeMethod(application, work, Qt::QueuedConnection);
    OpenKeyConfig(nullptr);
    EXPECT_TRUE(opened);
  }

  std::string FileBytes() const { return ReadBytes(DataPath(u"qlm_keycnf.dat")); }

  static QApplication* application;
};
QApplication* KeyConfigTest::application = nullptr;

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

class KeyConfigSticks : public KeyConfigTest {
 protected:
  KeyConfigSticks() { InitDI_Joystick(); }
  ~KeyConfigSticks() override { ReleaseDI(); }
  void SetUp() override {
    if (JoyCount > 0) GTEST_SKIP() << "there are controllers plugged into this machine";
  }
};

TEST_F(KeyConfigSticks, ButtonsAreInputs) {
  VirtualStick first;
  VirtualStick second;
  Open([&](const Form& form) {
    form.ClickShape(11);
    first.Button(0, true);
    EXPECT_TRUE(Until([&] { return form.InputsOf("11") == "[44][260]"; }));
    first.Button(0, false);
    form.ClickShape(12);
    first.Button(31, true);
    EXPECT_TRUE(Until([&] { return form.InputsOf("12") == "[31][291]"; }));
    EXPECT_EQ(form.HeldLine(), "キー番号 291 → 12 (1P 鍵盤 2)");
    form.ClickShape(21);
    second.Button(0, true);
    EXPECT_TRUE(Until([&] { return form.InputsOf("21") == "[49][300]"; }));
    form.ClickShape(22);
    second.Button(20, true);  // past the last that counts
    second.Button(19, true);
    EXPECT_TRUE(Until([&] { return form.InputsOf("22") == "[36][319]"; }));
    form.Click("cmdOK");
  });
  EXPECT_EQ(KeyMap[260], 11);
  EXPECT_EQ(KeyMap[291], 12);
  EXPECT_EQ(KeyMap[300], 21);
  EXPECT_EQ(KeyMap[319], 22);
  EXPECT_EQ(KeyMap[320], 0);
}

TEST_F(KeyConfigSticks, AxesAreInputsOnlyWithTheTickAndFromOneHundredAndOneOn) {
  VirtualStick first;
  VirtualStick second;
  Open([&](const Form& form) {
    form.Click("cmdClear");
    first.Axis(0, -32768);
    EXPECT_TRUE(Until([&] {
      return form.Find<QLabel>("lblSticks").text() == QStringLiteral("> [X:-10000,Y:0]  > [X:0,Y:0]  ");
    }));
    EXPECT_EQ(form.InputsOf("11"), "");
    first.Axis(0, 0);
    auto& box = form.Find<QCheckBox>("chkXY");
    QTest::mouseClick(&box, Qt::LeftButton, {}, {8, box.height() / 2});
    // 330 * 10000 / 32767 = 100.7 is cut to 100.
    for (const int32_t axis : {0, 1}) first.Axis(axis, 330);
    EXPECT_TRUE(Until([&] {
      return form.Find<QLabel>("lblSticks").text() == QStringLiteral("> [X:100,Y:100]  > [X:0,Y:0]  ");
    }));
    EXPECT_EQ(form.InputsOf("11"), "");
    first.Axis(0, 331);
    EXPECT_TRUE(Until([&] { return form.InputsOf("11") == "[257]"; }));
    first.Axis(0, -331);
    EXPECT_TRUE(Until([&] { return form.InputsOf("11") == "[256][257]"; }));
    first.Axis(1, -331);
    EXPECT_TRUE(Until([&] { return form.InputsOf("11") == "[256][257][258]"; }));
    first.Axis(1, 331);
    EXPECT_TRUE(Until([&] { return form.InputsOf("11") == "[256][257][258][259]"; }));
    second.Axis(1, 32767);
    EXPECT_TRUE(Until([&] { return form.InputsOf("11") == "[256][257][258][259][299]"; }));
  });
}

TEST_F(KeyConfigSticks, AllAreCountedAndTheThirdIsIgnored) {
  VirtualStick first;
  VirtualStick second;
  auto third = std::make_unique<VirtualStick>();
  Open([&](const Form& form) {
    EXPECT_TRUE(Until([&] { return form.Find<QLabel>("lblCount").text().endsWith(":3"); }));
    form.Click("cmdClear");
    for (int32_t button = 0; button < 32; ++button) third->Button(button, true);
    third->Hat(true, false, true, false);
    form.Poll();
    first.Button(1, true);
    EXPECT_TRUE(Until([&] { return form.InputsOf("11") == "[261]"; }));
    EXPECT_EQ(form.Find<QLabel>("lblSticks").text(), QStringLiteral("> [X:0,Y:0]  > [X:0,Y:0]  "));
    third.reset();
    EXPECT_TRUE(Until([&] { return form.Find<QLabel>("lblCount").text().endsWith(":2"); }));
  });
}

TEST_F(KeyConfigSticks, WhatIsHeldAtTheOpeningWasNotPressedForIt) {
  VirtualStick stick;
  stick.Button(2, true);
  Open([&](const Form& form) {
    form.Click("cmdClear");
    stick.Button(3, true);
    EXPECT_TRUE(Until([&] { return form.InputsOf("11") == "[263]"; }));
    stick.Button(2, false);
    form.Poll();
    stick.Button(2, true);
    EXPECT_TRUE(Until([&] { return form.InputsOf("11") == "[262][263]"; }));
  });
}

TEST_F(KeyConfigSticks, NumbersThatAreNoFunctionDoNothing) {
  VirtualStick stick;
  KeyMap.Clear();
  constexpr int16_t kNone[] = {9, 10, 20, 30, -1, 32767, -32768};
  int32_t button = 0;
  for (const int16_t function : kNone) {
    KeyMap[260 + button] = function;
    stick.Button(button++, true);
  }
  SaveKeyTable();
  Open([](const Form& form) {
    for (const int16_t function : ListedFunctions())
      EXPECT_EQ(form.InputsOf(Utf8(FunctionItem(function))), "");
    EXPECT_TRUE(form.HeldLine().starts_with("キー番号 260 → 機能なし   キー番号 261 → 機能なし   "));
    form.Click("cmdOK");
  });
  for (button = 0; button < 7; ++button) EXPECT_EQ(KeyMap[260 + button], kNone[button]);
}

TEST_F(KeyConfigSticks, OneThatIsUnpluggedLetsItsButtonsGo) {
  auto stick = std::make_unique<VirtualStick>();
  Open([&](const Form& form) {
    const std::string idle = form.HeldLine();
    stick->Button(0, true);
    EXPECT_TRUE(Until([&] { return form.HeldLine() == "キー番号 260 → 11 (1P 鍵盤 1)"; }));
    stick.reset();
    EXPECT_TRUE(Until([&] { return form.HeldLine() == idle; }));
    EXPECT_TRUE(form.Find<QLabel>("lblCount").text().endsWith(":0"));
    const VirtualStick another;
    EXPECT_TRUE(Until([&] { return form.Find<QLabel>("lblCount").text().endsWith(":1"); }));
  });
}

// Whatever a person does, the list is what the told rules make of it.
TEST_F(KeyConfigSticks, AnyHandLeavesTheTableThatTheRulesGive) {
  std::mt19937 dice(20260722);
  const auto roll = [&dice](int below) { return static_cast<int>(dice() % static_cast<unsigned>(below)); };
  std::vector<std::unique_ptr<VirtualStick>> sticks;
  KeyTable expected = DefaultKeyTable();
  Open([&](const Form& form) {
    int32_t function = 11;
    const auto polled = [&form] {
      // The count is written by each poll.
      auto& count = form.Find<QLabel>("lblCount");
      count.clear();
      ASSERT_TRUE(Until([&] { return !count.text().isEmpty(); }));
    };
    for (int step = 0; step < 400; ++step) {
      switch (roll(8)) {
        case 0:
        case 1:
        case 2: {
          const int code = 1 + roll(83);
          form.Press(code);
          if (code == 2) function = PreviousFunction(function);
          if (code == 3) function = NextFunction(function);
          if (code != 2 && code != 3) expected[code] = static_cast<int16_t>(function);
          break;
        }
        case 3: form.ClickShape(function = ListedFunctions()[static_cast<size_t>(roll(26))]); break;
        case 4: {
          const int row = roll(26);
          form.ClickRow(row);
          function = ListedFunctions()[static_cast<size_t>(row)];
          break;
        }
        case 5:
          if (sticks.size() < 3) {
            sticks.push_back(std::make_unique<VirtualStick>());
          } else {
            sticks.pop_back();
          }
          polled();
          break;
        case 6: {
          if (sticks.empty()) break;
          const int pad = roll(static_cast<int>(sticks.size()));
          const int button = roll(32);
          VirtualStick& stick = *sticks[static_cast<size_t>(pad)];
          stick.Button(button, true);
          polled();
          if (pad == 0 || (pad == 1 && button < 20)) {
            expected[256 + 40 * pad + 4 + button] = static_cast<int16_t>(function);
          }
          stick.Button(button, false);
          polled();
          break;
        }
        default:
          if (roll(40) > 0) break;
          form.Click("cmdClear");
          expected.Clear();
          break;
      }
      for (const int16_t listed : ListedFunctions()) {
        ASSERT_EQ(form.InputsOf(Utf8(FunctionItem(listed))),
                  Utf8(FunctionRow(expected, listed)).substr(Utf8(FunctionItem(listed)).size() + 1))
            << step;
      }
      ASSERT_EQ(form.Selected(), Utf8(FunctionItem(function))) << step;
    }
    form.Click("cmdOK");
  });
  for (int32_t code = 0; code <= KeyTable::kLast; ++code) EXPECT_EQ(KeyMap[code], expected[code]) << code;
}

}  // namespace
}  // namespace qlm

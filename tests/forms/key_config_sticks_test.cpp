// The dialog of the key configuration with virtual controllers.
#include <QCheckBox>
#include <QLabel>
#include <QTest>
#include <memory>
#include <random>
#include <vector>

#include "files/key_table.h"
#include "forms/key_functions.h"
#include "input/input.h"
#include "state/settings.h"
#include "tests/forms/key_config_form.h"
#include "tests/support/virtual_stick.h"

namespace qlm {
namespace {

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

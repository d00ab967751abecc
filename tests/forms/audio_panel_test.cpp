// The panel of the sound device, with drivers that need no sound card.
#include "forms/audio_panel.h"

#include <unistd.h>

#include <QAccessible>
#include <QApplication>
#include <QGroupBox>
#include <QTest>
#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "platform/sound_device.h"
#include "state/settings.h"
#include "tests/forms/menu_test.h"
#include "tests/forms/until.h"
#include "tests/support/whole_file.h"

namespace qlm {
namespace {

class AudioPanelTest : public MenuTest {
 public:
  ~AudioPanelTest() override {
    Close();
    setenv("SDL_AUDIODRIVER", "dummy", 1);
    for (const char* const name : {"SDL_DISKAUDIOFILE", "SDL_DISKAUDIODELAY"}) unsetenv(name);
  }

  // The panel as a person comes to it.
  void Show(const char* driver = "dummy") {
    setenv("SDL_AUDIODRIVER", driver, 1);
    Open();
    EXPECT_FALSE(DeviceIsOpen());
    Panels().setCurrentIndex(Panels().count() - 1);
    QApplication::processEvents();
  }
  std::string Label(const std::string& name) const { return Get<QLabel>(name).text().toStdString(); }
  static bool DeviceIsOpen() { return platform::SoundVolume().has_value(); }
};

TEST_F(AudioPanelTest, TheDeviceIsOpenAsLongAsThePanelShows) {
  Show();
  EXPECT_TRUE(DeviceIsOpen());
  Panels().setCurrentIndex(0);
  EXPECT_FALSE(DeviceIsOpen());
  Panels().setCurrentIndex(Panels().count() - 1);
  QApplication::processEvents();
  EXPECT_TRUE(DeviceIsOpen());
  menu->close();
  EXPECT_FALSE(DeviceIsOpen());
}

TEST_F(AudioPanelTest, TheBlocksAreOfferedAndTheChosenOneIsAskedFor) {
  Show();
  EXPECT_EQ(Items("cmbSoundBlock"),
            (std::vector<std::string>{"64 フレーム (1.5 ms)", "128 フレーム (2.9 ms)",
                                      "256 フレーム (5.8 ms)", "512 フレーム (11.6 ms)",
                                      "1024 フレーム (23.2 ms)", "2048 フレーム (46.4 ms)"}));
  EXPECT_EQ(Choice("cmbSoundBlock").currentIndex(), 2);
  EXPECT_EQ(Label("lblSoundBlock"), "256 フレーム (5.8 ms)");
  for (int item = 0; item < 6; ++item) {
    Choose("cmbSoundBlock", item);
    EXPECT_EQ(SoundBlock, 64 << item);
    EXPECT_EQ(Label("lblSoundBlock"), Items("cmbSoundBlock")[static_cast<size_t>(item)]);
  }
}

TEST_F(AudioPanelTest, TheTickForKeysAtOnceShowsItsSettingAndWritesIt) {
  for (const bool before : {false, true}) {
    KeysAtOnce = before;
    Show();
    EXPECT_EQ(Tick("chkKeysAtOnce").isChecked(), before);
    Toggle("chkKeysAtOnce");
    EXPECT_EQ(KeysAtOnce, !before);
    Close();
  }
}

TEST_F(AudioPanelTest, NothingOfItMustBeScrolledInEitherLanguage) {
  for (const TextView language : {u"ja", u"en"}) {
    MenuLanguage = language;
    Show();
    const QWidget& page = *Panels().currentWidget();
    const QWidget* const panel = Button("cmdTap").parentWidget()->parentWidget();
    EXPECT_EQ(panel->minimumSizeHint().boundedTo(page.size()), panel->minimumSizeHint()) << Utf8(language);
    EXPECT_LE(panel->heightForWidth(page.width()), page.height()) << Utf8(language);
    Close();
  }
}

TEST_F(AudioPanelTest, EveryControlHasANameForAScreenReader) {
  Show();
  for (const char* const name : {"cmbSoundBlock", "cmdTone", "cmdMeasureSound", "chkKeysAtOnce", "cmdTap"}) {
    QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(&Get<QWidget>(name));
    ASSERT_NE(reader, nullptr);
    EXPECT_FALSE(reader->text(QAccessible::Name).isEmpty()) << name;
  }
}

TEST_F(AudioPanelTest, ASettingThatIsNoBlockShowsTheUsualOneAndStays) {
  SoundBlock = 100;
  Show();
  EXPECT_EQ(Choice("cmbSoundBlock").currentIndex(), 2);
  EXPECT_EQ(SoundBlock, 100);
}

TEST_F(AudioPanelTest, TheDeviceIsToldAndWhatWasLateInTheLastPlay) {
  WriteData(u"_qlmfiles\\late_blocks.txt", "12");
  Show();
  EXPECT_EQ(Label("lblSoundDevice"), "dummy, 音は聞こえません");
  EXPECT_EQ(Label("lblLateBlocks"), "いま 0、前回のプレイ 12");
  EXPECT_EQ(Label("lblSoundAhead"), "まだ測っていません");
  EXPECT_TRUE(Until([] { return platform::SoundAheadMicroseconds() > 0; })) << "the first blocks";
  Press("cmdMeasureSound");
  EXPECT_TRUE(Until([&] { return Label("lblSoundAhead").ends_with(" ms"); }));
  EXPECT_TRUE(Until([] { return platform::LateSoundBlocks() > 0; }));
  EXPECT_EQ(Label("lblLateBlocks"), "いま 0、前回のプレイ 12") << "the gap was wanted";
}

TEST_F(AudioPanelTest, WithoutADeviceItSaysSoAndOffersNothingThatSounds) {
  Show("nosuchdriver");
  EXPECT_TRUE(Label("lblSoundDevice").starts_with("音を出せません。 ")) << Label("lblSoundDevice");
  EXPECT_EQ(Label("lblSoundBlock"), "-");
  for (const char* const name : {"cmdTone", "cmdMeasureSound", "cmdTap"})
    EXPECT_FALSE(Button(name).isEnabled());
  Choose("cmbSoundBlock", 0);
  EXPECT_EQ(SoundBlock, 64) << "the choice holds for the game all the same";
}

// What the device of the disk got, in 16-bit frames.
TEST_F(AudioPanelTest, TheTestToneIsAnAForASecond) {
  const std::filesystem::path file =
      std::filesystem::temp_directory_path() / ("audio_panel_test." + std::to_string(getpid()) + ".raw");
  setenv("SDL_DISKAUDIOFILE", file.c_str(), 1);
  setenv("SDL_DISKAUDIODELAY", "1", 1);  // ms a block: faster than time
  Show("disk");
  Press("cmdTone");
  constexpr std::uintmax_t kTwoSeconds = 2 * 176400;
  const std::uintmax_t before = std::filesystem::file_size(file);
  EXPECT_TRUE(Until([&] { return std::filesystem::file_size(file) > before + kTwoSeconds; }));
  Close();
  const std::string bytes = WholeFile(file);
  std::filesystem::remove(file);
  std::vector<int16_t> left;
  for (size_t at = 0; at + 3 < bytes.size(); at += 4) {
    left.push_back(static_cast<int16_t>(static_cast<unsigned char>(bytes[at]) |
                                        static_cast<unsigned char>(bytes[at + 1]) << 8));
  }
  int rises = 0;
  for (size_t i = 1; i < left.size(); ++i) rises += left[i - 1] <= 0 && left[i] > 0 ? 1 : 0;
  EXPECT_EQ(rises, 440);
  EXPECT_EQ(*std::max_element(left.begin(), left.end()), 8000);
}

TEST_F(AudioPanelTest, TapsAreTakenUntilEscOrLeaving) {
  Show();
  EXPECT_EQ(Button("cmdTap").text().toStdString(), "始める");
  EXPECT_EQ(Label("lblTaps"), "まだ測っていません");
  Button("cmdTap").setFocus();
  const auto begin = [&] { QTest::keyClick(&Button("cmdTap"), Qt::Key_Space); };
  begin();
  EXPECT_EQ(Button("cmdTap").text().toStdString(), "叩いてください (0回)");
  // Enter would press the menu's own button, were it not taken.
  for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Z, Qt::Key_Return})
    QTest::keyClick(&Button("cmdTap"), key);
  Press("cmdTap");
  EXPECT_EQ(Button("cmdTap").text().toStdString(), "叩いてください (4回)");
  EXPECT_TRUE(menu->isVisible());
  QTest::keyClick(&Button("cmdTap"), Qt::Key_Escape);
  EXPECT_EQ(Button("cmdTap").text().toStdString(), "始める");
  EXPECT_EQ(Label("lblTaps"), "まだ測っていません");
  begin();
  QTest::keyClick(&Button("cmdTap"), Qt::Key_Tab);
  EXPECT_EQ(Button("cmdTap").text().toStdString(), "始める");
}

// On a device that does not wait, the clicks are over before anybody can tap to them.
TEST_F(AudioPanelTest, TooFewTapsGiveNoResult) {
  setenv("SDL_DISKAUDIOFILE", "/dev/null", 1);
  setenv("SDL_DISKAUDIODELAY", "0", 1);
  Show("disk");
  Press("cmdTap");
  EXPECT_TRUE(Until([&] { return Label("lblTaps") == "足りません。8回以上、音の近くで叩いてください。"; }));
  EXPECT_EQ(Button("cmdTap").text().toStdString(), "始める");
}

TEST_F(AudioPanelTest, EverythingThatIsToldHasItsEnglish) {
  Show();
  const auto said = [this] {
    std::vector<std::pair<QString, QString>> texts;
    const QWidget* const panel = Button("cmdTap").parentWidget()->parentWidget();
    for (const QWidget* const each : panel->findChildren<QWidget*>()) {
      QString text = each->toolTip();
      if (const auto* const label = qobject_cast<const QLabel*>(each)) text += label->text();
      if (const auto* const button = qobject_cast<const QAbstractButton*>(each)) text += button->text();
      if (const auto* const group = qobject_cast<const QGroupBox*>(each)) text += group->title();
      if (!text.isEmpty()) texts.emplace_back(each->objectName(), text);
    }
    return texts;
  };
  const auto japanese = said();
  Press("cmdLanguage");
  QApplication::processEvents();
  EXPECT_EQ(Label("lblSoundBlock"), "256 frames (5.8 ms)");
  EXPECT_EQ(Label("lblSoundDevice"), "dummy, nobody hears it");
  EXPECT_EQ(Label("lblSoundAhead"), "not measured yet");
  EXPECT_EQ(Label("lblLateBlocks"), "now 0, in the last play 0");
  Button("cmdTap").setFocus();
  QTest::keyClick(&Button("cmdTap"), Qt::Key_Space);
  EXPECT_EQ(Button("cmdTap").text().toStdString(), "Tap now (0 so far)");
  QTest::keyClick(&Button("cmdTap"), Qt::Key_Escape);
  const auto english = said();
  ASSERT_EQ(english.size(), japanese.size());
  EXPECT_GE(english.size(), 20U);
  for (const auto& [name, text] : english) {
    EXPECT_TRUE(std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x3000; }))
        << name.toStdString() << ": " << text.toStdString();
  }
  Press("cmdLanguage");
  QApplication::processEvents();
  EXPECT_EQ(said(), japanese);
}

// --- taps ---

constexpr int64_t kFirst = 5'000'000;

// Taps so many microseconds from the clicks 4, 5, 6 …
std::vector<int64_t> TapsAt(std::initializer_list<int64_t> distances) {
  std::vector<int64_t> taps;
  int64_t click = kFirst + kClicksUncounted * kClickGap;
  for (const int64_t distance : distances) {
    taps.push_back(click + distance);
    click += kClickGap;
  }
  return taps;
}

TEST(Taps, MedianAndMiddleHalfAreTold) {
  // Sorted: 10 20 30 40 50 60 70 80 90. The middle one is 50, the quarters are the third and the seventh.
  EXPECT_EQ(
      ResultOfTaps(TapsAt({90'000, 10'000, 80'000, 20'000, 70'000, 30'000, 60'000, 40'000, 50'000}), kFirst),
      (TapResult{.taps = 9, .median = 50, .spread = 40}));
  // Eight, some of them early: -40 -30 -20 -10 10 20 30 40; between -10 and 10, and from -22.5 to 22.5.
  EXPECT_EQ(
      ResultOfTaps(TapsAt({-40'000, 40'000, -30'000, 30'000, -20'000, 20'000, -10'000, 10'000}), kFirst),
      (TapResult{.taps = 8, .median = 0, .spread = 45}));
}

TEST(Taps, LessThanEightTellNothing) {
  EXPECT_EQ(ResultOfTaps({}, kFirst), std::nullopt);
  EXPECT_EQ(ResultOfTaps(TapsAt({1000, 1000, 1000, 1000, 1000, 1000, 1000}), kFirst), std::nullopt);
}

TEST(Taps, TheFirstClicksAreNotCounted) {
  std::vector<int64_t> taps;
  for (int64_t click = -2; click < 11; ++click) taps.push_back(kFirst + click * kClickGap);
  EXPECT_EQ(ResultOfTaps(taps, kFirst), std::nullopt) << "seven of thirteen";
  taps.push_back(kFirst + 11 * kClickGap);
  EXPECT_EQ(ResultOfTaps(taps, kFirst), (TapResult{.taps = 8}));
}

TEST(Taps, NoneBehindTheLastClickCountsAndNoneTwice) {
  std::vector<int64_t> taps;
  for (int64_t click = 12; click < 25; ++click) {
    taps.push_back(kFirst + click * kClickGap + 5000);
    taps.push_back(kFirst + click * kClickGap + 90'000);
  }
  EXPECT_EQ(ResultOfTaps(taps, kFirst), (TapResult{.taps = 8, .median = 5, .spread = 0})) << "12 to 19";
}

TEST(Taps, OneFarFromEveryClickCountsForNone) {
  std::vector<int64_t> taps = TapsAt({0, 0, 0, 0, 0, 0, 0, 200'000});
  EXPECT_EQ(ResultOfTaps(taps, kFirst)->taps, 8);
  taps.back() += 1;
  EXPECT_EQ(ResultOfTaps(taps, kFirst), std::nullopt);
  taps.back() += 400'000 - 1;  // 600,000 behind its click: at the next one
  EXPECT_EQ(ResultOfTaps(taps, kFirst)->taps, 8);
}

}  // namespace
}  // namespace qlm

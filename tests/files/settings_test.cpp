// The settings file: every key with both of its defaults, conversions that fail, and what is written.
#include "files/settings_file.h"

#include <array>
#include <set>

#include "base/paths.h"
#include "files/settings_keys.h"
#include "platform/files.h"
#include "state/options.h"
#include "state/settings.h"
#include "state/skin.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

struct Expected {
  TextView section;
  TextView key;
  TextView absent;  // the value when the file lacks the key; "\" begins one below the program's folder
  TextView noFile;
};

constexpr std::array<Expected, 54> kExpected = {{
    {u"Setting", u"Sleep", u"0", u"0"},
    {u"Setting", u"NoBGA", u"False", u"False"},
    {u"Setting", u"NoWAV", u"False", u"False"},
    {u"Setting", u"ShowObj", u"False", u"True"},
    {u"Setting", u"ShowBGA", u"False", u"True"},
    {u"Setting", u"PlaySound", u"False", u"True"},
    {u"Setting", u"PlayKeySound", u"False", u"False"},
    {u"Setting", u"UserPlay", u"False", u"True"},
    {u"Setting", u"UserRec", u"False", u"False"},
    {u"Setting", u"ShowRec", u"False", u"False"},
    {u"Setting", u"PlayRec", u"False", u"False"},
    {u"Setting", u"DEMOMode", u"False", u"False"},
    {u"Setting", u"ShowVLine", u"False", u"False"},
    {u"Setting", u"ShowGlid", u"False", u"False"},
    {u"Setting", u"HiSpeed", u"0", u"1"},
    {u"Setting", u"RealHiSpeed", u"0", u"1"},
    {u"Setting", u"PolMode", u"False", u"False"},
    {u"NetSetting", u"MyName", u"Default", u"Default"},
    {u"Setting", u"ShowGauge", u"False", u"True"},
    {u"NoteSetting", u"Hidden", u"False", u"False"},
    {u"NoteSetting", u"Sudden", u"False", u"False"},
    {u"NoteSetting", u"Stealth", u"False", u"False"},
    {u"NoteSetting", u"Reverse", u"False", u"False"},
    {u"NoteSetting", u"Accel", u"False", u"False"},
    {u"NoteSetting", u"Quil", u"False", u"False"},
    {u"Setting", u"DontStretch", u"False", u"False"},
    {u"Setting", u"ScreenColors", u"1", u"1"},
    {u"Setting", u"WAVLoadmode", u"0", u"0"},
    {u"Setting", u"BMPLoadmode", u"0", u"0"},
    {u"Setting", u"BMPRelease", u"0", u"0"},
    {u"Setting", u"BMSPreview", u"1", u"1"},
    {u"Setting", u"CourseLoadMode", u"1", u"0"},
    {u"Setting", u"NOVSync", u"False", u"False"},
    {u"Setting", u"Font", u"ＭＳ Ｐゴシック", u""},
    {u"Setting", u"brd", u"\\_qlmfiles\\qlm_scr.brd", u"\\_qlmfiles\\qlm_scr.brd"},
    {u"Setting", u"DrawLimit", u"1", u"1"},
    {u"Setting", u"ENDLESSMODE", u"1", u"1"},
    {u"Setting", u"NOSMOOTHSCROLL", u"False", u"False"},
    {u"Setting", u"DirectBlt", u"False", u"False"},
    {u"Setting", u"JoyXYEnable", u"False", u"False"},
    {u"Setting", u"WaitVBlank", u"True", u"False"},
    {u"Setting", u"RealtimeStretch", u"False", u"False"},
    {u"Setting", u"CourseEffect", u"True", u"True"},
    {u"Setting", u"ShowClearedOnList", u"True", u"True"},
    {u"Setting", u"PreviewDelay", u"1000", u"1000"},
    {u"Skin", u"1P", u"\\_qlmfiles\\default.brd", u"\\_qlmfiles\\default.brd"},
    {u"Skin", u"2P", u"\\_qlmfiles\\default.brd", u"\\_qlmfiles\\default.brd"},
    {u"Skin", u"DP", u"\\_qlmfiles\\default_dp.brd", u"\\_qlmfiles\\default_dp.brd"},
    {u"Core", u"numObjs", u"65535", u"65535"},
    {u"Core", u"Windowed", u"False", u"False"},
    {u"Core", u"Halfsize", u"False", u"False"},
    {u"Setting", u"SCRATCH1P", u"0", u"0"},
    {u"Setting", u"SCRATCH2P", u"1", u"0"},
    {u"Core", u"Debug", u"False", u"False"},
}};

class SettingsTest : public GameTest {
 protected:
  void WriteSettings(TextView text) const { WriteText(u"_qlmfiles\\qlm_conf.ini", text); }
  std::string Saved() const {
    SaveSettings();
    return ReadBytes(DataPath(u"qlm_conf.ini"));
  }
  static Text Full(TextView value) { return value.starts_with(u'\\') ? Join(AppPath, value) : Text(value); }
};

TEST_F(SettingsTest, KeysStandInTheirOrder) {
  ASSERT_EQ(SettingKeys().size(), kExpected.size());
  for (size_t i = 0; i < kExpected.size(); ++i) {
    EXPECT_EQ(Utf8(SettingKeys()[i].section), Utf8(kExpected[i].section)) << i;
    EXPECT_EQ(Utf8(SettingKeys()[i].key), Utf8(kExpected[i].key)) << i;
  }
}

TEST_F(SettingsTest, OwnKeysAreReadAlwaysAndWrittenWhereTheyStandOrWereChanged) {
  WriteSettings(u"");
  LoadSettings();
  EXPECT_EQ(LoadBudget, 0);
  EXPECT_EQ(Saved().find("[quillmarch]"), std::string::npos);
  LoadBudget = 300;
  EXPECT_TRUE(Saved().ends_with("[quillmarch]\r\nLoadBudget=300\r\n")) << Saved();
  LoadBudget = 0;
  LoadSettings();
  EXPECT_EQ(LoadBudget, 300);
  LoadBudget = 0;
  EXPECT_TRUE(Saved().ends_with("[quillmarch]\r\nLoadBudget=0\r\n")) << Saved();
}

TEST_F(SettingsTest, MissingFileGivesANewInstallation) {
  LoadSettings();
  for (size_t i = 0; i < kExpected.size(); ++i) {
    EXPECT_EQ(Utf8(SettingText(SettingKeys()[i].variable)), Utf8(Full(kExpected[i].noFile)))
        << Utf8(kExpected[i].key);
  }
  EXPECT_EQ(CourseLoadMode, 0);
  EXPECT_TRUE(Font.empty());
  EXPECT_FALSE(RandomHiSpeed);
}

TEST_F(SettingsTest, EmptyFileGivesTheDefaultsOfAbsentKeys) {
  WriteSettings(u"");
  LoadSettings();
  for (size_t i = 0; i < kExpected.size(); ++i) {
    EXPECT_EQ(Utf8(SettingText(SettingKeys()[i].variable)), Utf8(Full(kExpected[i].absent)))
        << Utf8(kExpected[i].key);
  }
  EXPECT_TRUE(SCRATCH2P);
  EXPECT_TRUE(RandomHiSpeed) << "HiSpeed stays 0 when its key is absent";
}

TEST_F(SettingsTest, EveryKeyReachesItsVariable) {
  WriteSettings(
      u"[MainForm]\r\nLeft=9\r\n"
      u"[SETTING]\r\nSleep=3\r\nNoBGA=True\r\nNoWAV=1\r\nShowObj=-1\r\nShowBGA=true\r\nPlaySound=TRUE\r\n"
      u"PlayKeySound=True\r\nUserPlay=True\r\nUserRec=True\r\nShowRec=True\r\nPlayRec=True\r\nDEMOMode="
      u"True\r\n"
      u"ShowVLine=True\r\nShowGlid=True\r\nHiSpeed=2.25\r\nRealHiSpeed=0.95\r\nPolMode=True\r\nShowGauge="
      u"True\r\n"
      u"DontStretch=1\r\nScreenColors=3\r\nWAVLoadmode=1\r\nBMPLoadmode=2\r\nBMPRelease=4\r\nBMSPreview=0\r\n"
      u"CourseLoadMode=2\r\nNOVSync=1\r\nFont=Monapo\r\nbrd=\\s\\a.brd\r\nDRAWLIMIT=3\r\nENDLESSMODE=2\r\n"
      u"NOSMOOTHSCROLL=1\r\nDirectBlt=1\r\nJoyXYEnable=1\r\nWaitVBlank=0\r\nRealtimeStretch=True\r\n"
      u"CourseEffect=False\r\nShowClearedOnList=False\r\nPreviewDelay=1500\r\nSCRATCH1P=1\r\nSCRATCH2P=0\r\n"
      u"[NetSetting]\r\nMyName=羽\r\n"
      u"[NoteSetting]\r\nHidden=True\r\nSudden=True\r\nStealth=True\r\nReverse=True\r\nAccel=True\r\nQuil="
      u"True\r\n"
      u"[SKIN]\r\n1P=\\s\\1.brd\r\n2P=\\s\\2.brd\r\nDP=\\s\\d.brd\r\n"
      u"[Core]\r\nnumObjs=1000\r\nWindowed=True\r\nHalfsize=True\r\nDebug=True\r\n");
  LoadSettings();
  EXPECT_EQ(Sleep, 3);
  EXPECT_TRUE(NoBGA);
  EXPECT_TRUE(NoWAV);
  EXPECT_TRUE(ShowObj);
  EXPECT_TRUE(ShowBGA);
  EXPECT_TRUE(PlaySound);
  EXPECT_TRUE(PlayKeySound);
  EXPECT_TRUE(UserPlay);
  EXPECT_TRUE(UserRec);
  EXPECT_TRUE(ShowRec);
  EXPECT_TRUE(PlayRec);
  EXPECT_TRUE(DEMOMode);
  EXPECT_TRUE(ShowVLine);
  EXPECT_TRUE(ShowGlid);
  EXPECT_EQ(HiSpeed, 2.25F);
  EXPECT_EQ(RealHiSpeed, 0.95F);
  EXPECT_TRUE(PolMode);
  EXPECT_TRUE(ShowGauge);
  EXPECT_TRUE(DontStretch);
  EXPECT_EQ(ScreenColors, 3);
  EXPECT_EQ(WAVLoadmode, 1);
  EXPECT_EQ(BMPLoadmode, 2);
  EXPECT_EQ(BMPRelease, 4);
  EXPECT_EQ(BMSPreview, 0);
  EXPECT_EQ(CourseLoadMode, 2);
  EXPECT_TRUE(NOVSync);
  EXPECT_EQ(Font, u"Monapo");
  EXPECT_EQ(brd, u"\\s\\a.brd");
  EXPECT_EQ(DRAWLIMIT, 3);
  EXPECT_EQ(ENDLESSMODE, 2);
  EXPECT_TRUE(NOSMOOTHSCROLL);
  EXPECT_TRUE(DirectBlt);
  EXPECT_TRUE(JoyXYEnable);
  EXPECT_FALSE(WaitVBlank);
  EXPECT_TRUE(RealtimeStretch);
  EXPECT_FALSE(CourseEffect);
  EXPECT_FALSE(ShowClearedOnList);
  EXPECT_EQ(PreviewDelay, 1500);
  EXPECT_TRUE(SCRATCH1P);
  EXPECT_FALSE(SCRATCH2P);
  EXPECT_EQ(MyName, u"羽");
  EXPECT_TRUE(Hidden);
  EXPECT_TRUE(Sudden);
  EXPECT_TRUE(Stealth);
  EXPECT_TRUE(Reverse);
  EXPECT_TRUE(Accel);
  EXPECT_TRUE(Quil);
  EXPECT_EQ(SkinMapPath, (std::array<Text, 3>{u"\\s\\1.brd", u"\\s\\2.brd", u"\\s\\d.brd"}));
  EXPECT_EQ(numObjs, 1000);
  EXPECT_TRUE(Windowed);
  EXPECT_TRUE(Halfsize);
  EXPECT_TRUE(Debug);
  EXPECT_FALSE(RandomHiSpeed);
}

TEST_F(SettingsTest, HiSpeedOfZeroMeansRandom) {
  WriteSettings(u"[Setting]\r\nHiSpeed=0\r\n");
  LoadSettings();
  EXPECT_TRUE(RandomHiSpeed);
}

TEST_F(SettingsTest, ValueThatDoesNotConvertLeavesItsVariable) {
  WriteSettings(
      u"[Setting]\r\nSleep=abc\r\nHiSpeed=fast\r\nNoBGA=yes\r\nScreenColors=256\r\nBMSPreview=-1\r\n"
      u"WAVLoadmode=\r\nDRAWLIMIT=&H2\r\nPreviewDelay=99999999999\r\nSCRATCH2P=x\r\n[Core]\r\nnumObjs="
      u"many\r\n");
  NoBGA = true;
  SCRATCH2P = true;
  LoadSettings();
  EXPECT_EQ(Sleep, 0);
  EXPECT_EQ(HiSpeed, 0);
  EXPECT_TRUE(NoBGA);
  EXPECT_EQ(ScreenColors, 0);
  EXPECT_EQ(BMSPreview, 0);
  EXPECT_EQ(WAVLoadmode, 0);
  EXPECT_EQ(DRAWLIMIT, 0);
  EXPECT_EQ(PreviewDelay, 1000);
  EXPECT_TRUE(SCRATCH2P);
  EXPECT_EQ(numObjs, 65535);
}

TEST_F(SettingsTest, NumbersRoundHalfToEvenAndTurntablesTakeAnyNumber) {
  WriteSettings(u"[Setting]\r\nSleep=2.5\r\nWAVLoadmode=1.5\r\nSCRATCH1P=-7\r\nSCRATCH2P=0\r\nNoBGA=0.5\r\n");
  LoadSettings();
  EXPECT_EQ(Sleep, 2);
  EXPECT_EQ(WAVLoadmode, 2);
  EXPECT_TRUE(SCRATCH1P);
  EXPECT_FALSE(SCRATCH2P);
  EXPECT_TRUE(NoBGA);
}

// The folder of the program was moved behind the last start, with the skins in it.
TEST_F(SettingsTest, ASkinIsFoundInAMovedFolder) {
  WriteData(u"_qlmfiles\\own.brd", "");
  WriteSettings(
      u"[Setting]\r\nbrd=\\old\\_qlmfiles\\own.brd\r\n[Skin]\r\n1P=\\old\\own.brd\r\n2P=\\old\\_"
      u"qlmfiles\\other.brd\r\n");
  LoadSettings();
  EXPECT_EQ(brd, DataPath(u"own.brd"));
  EXPECT_EQ(SkinMapPath[0], u"\\old\\own.brd");
  EXPECT_EQ(SkinMapPath[1], u"\\old\\_qlmfiles\\other.brd");
}

TEST_F(SettingsTest, LongValuesAreCutAt127Characters) {
  const Text longPath = u"\\" + Text(200, u'x');
  WriteSettings(Join(u"[Setting]\r\nbrd=", longPath, u"\r\n"));
  LoadSettings();
  EXPECT_EQ(brd, longPath.substr(0, 127));
}

TEST_F(SettingsTest, GetIniValueEndsAtTheFirstNul) {
  const IniText file(std::string_view("[A]\r\nk=ab\0cd\r\n", 14));
  EXPECT_EQ(GetIniValue(file, u"a", u"K", u"x"), u"ab");
  EXPECT_EQ(GetIniValue(file, u"A", u"other", u"x"), u"x");
  EXPECT_EQ(GetIniValue(file, u"A", u"other", Text(128, u'x')), Text(127, u'x'));
}

TEST_F(SettingsTest, NewFileHoldsEveryKeyInOrder) {
  LoadSettings();
  AppPath = u"\\g";
  SetDefaultSettings();
  const std::string expected =
      "[MainForm]\r\nLeft=0\r\nTop=0\r\nWidth=0\r\nHeight=0\r\nWindowState=0\r\n"
      "[Setting]\r\nSleep=0\r\nNoBGA=False\r\nNoWAV=False\r\nShowObj=True\r\nShowBGA=True\r\nPlaySound="
      "True\r\n"
      "PlayKeySound=False\r\nUserPlay=True\r\nUserRec=False\r\nShowRec=False\r\nPlayRec=False\r\n"
      "DEMOMode=False\r\nShowVLine=False\r\nShowGlid=False\r\nHiSpeed=1\r\nRealHiSpeed=1\r\nPolMode=False\r\n"
      "ShowGauge=True\r\nDontStretch=False\r\nScreenColors=1\r\nWAVLoadmode=0\r\nBMPLoadmode=0\r\n"
      "BMPRelease=0\r\nBMSPreview=1\r\nCourseLoadMode=0\r\nNOVSync=False\r\nFont=\r\n"
      "brd=\\g\\_qlmfiles\\qlm_scr.brd\r\nDrawLimit=1\r\nENDLESSMODE=1\r\nNOSMOOTHSCROLL=False\r\n"
      "DirectBlt=False\r\nJoyXYEnable=False\r\nWaitVBlank=False\r\nRealtimeStretch=False\r\n"
      "CourseEffect=True\r\nShowClearedOnList=True\r\nPreviewDelay=1000\r\nSCRATCH1P=0\r\nSCRATCH2P=0\r\n"
      "[NetSetting]\r\nMyName=Default\r\n"
      "[NoteSetting]\r\nHidden=False\r\nSudden=False\r\nStealth=False\r\nReverse=False\r\nAccel=False\r\n"
      "Quil=False\r\n"
      "[Skin]\r\n1P=\\g\\_qlmfiles\\default.brd\r\n2P=\\g\\_qlmfiles\\default.brd\r\n"
      "DP=\\g\\_qlmfiles\\default_dp.brd\r\n"
      "[Core]\r\nnumObjs=65535\r\nWindowed=False\r\nHalfsize=False\r\nDebug=False\r\n";
  AppPath = platform::InnerPath(SystemFolder());
  EXPECT_EQ(Saved(), expected);
}

TEST_F(SettingsTest, AfterASaveNoKeyIsAbsent) {
  LoadSettings();
  SaveSettings();
  ResetSettings();
  ResetOptions();
  LoadSettings();
  for (size_t i = 0; i < kExpected.size(); ++i) {
    EXPECT_EQ(Utf8(SettingText(SettingKeys()[i].variable)), Utf8(Full(kExpected[i].noFile)))
        << Utf8(kExpected[i].key);
  }
}

TEST_F(SettingsTest, SaveKeepsWhatItDoesNotKnow) {
  LoadSettings();
  SaveSettings();
  std::string bytes = ReadBytes(DataPath(u"qlm_conf.ini"));
  bytes.insert(bytes.find("Sleep=0"), "; \x94\xE9 note\r\nOwnKey = \x83\x5C \r\n");
  bytes.replace(bytes.find("HiSpeed=1"), 9, "hISPEED =  1");
  bytes += "[Other]\nx\n";
  WriteData(u"_qlmfiles\\qlm_conf.ini", bytes);
  EXPECT_EQ(Saved(), bytes);
  Sleep = 7;
  bytes.replace(bytes.find("Sleep=0"), 7, "Sleep=7");
  EXPECT_EQ(Saved(), bytes);
}

TEST_F(SettingsTest, NumbersAreWrittenInTheirShortestForm) {
  LoadSettings();
  RealHiSpeed = 0.1F + 0.2F;
  HiSpeed = 12.5F;
  DRAWLIMIT = 255;
  SCRATCH2P = true;
  const std::string saved = Saved();
  EXPECT_NE(saved.find("RealHiSpeed=0.3\r\n"), std::string::npos) << saved;
  EXPECT_NE(saved.find("HiSpeed=12.5\r\n"), std::string::npos);
  EXPECT_NE(saved.find("DrawLimit=255\r\n"), std::string::npos);
  EXPECT_NE(saved.find("SCRATCH2P=1\r\n"), std::string::npos);
}

TEST_F(SettingsTest, FailedSaveIsPassedOver) {
  AppPath = Join(AppPath, u"\\nowhere");
  SaveSettings();
  EXPECT_FALSE(FileExists(DataPath(u"qlm_conf.ini")));
}

}  // namespace
}  // namespace qlm

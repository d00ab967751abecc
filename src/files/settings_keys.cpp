// The table of keys, and how their texts and their variables meet.
#include "files/settings_keys.h"

#include <array>

#include "base/numbers.h"
#include "base/paths.h"
#include "state/options.h"
#include "state/settings.h"
#include "state/skin.h"

namespace qlm {
namespace {

template <typename... Fs>
struct Overloaded : Fs... {
  using Fs::operator()...;
};
template <typename... Fs>
Overloaded(Fs...) -> Overloaded<Fs...>;

constexpr TextView kScreenSkin = u"\\_qlmfiles\\qlm_scr.brd";
constexpr TextView kOneSideSkin = u"\\_qlmfiles\\default.brd";
constexpr TextView kTwoSideSkin = u"\\_qlmfiles\\default_dp.brd";

// Quirk: a key that the file lacks and a file that is missing give different values. A file without `HiSpeed`
// runs with 0, which is the random scroll factor, and one without `RealHiSpeed` stands still.
constexpr SettingKey kKeys[] = {
    // section, key, variable, absent, no file
    {u"Setting", u"Sleep", &Sleep, kNothing, u"0"},
    {u"Setting", u"NoBGA", &NoBGA, kNothing, u"False"},
    {u"Setting", u"NoWAV", &NoWAV, kNothing, u"False"},
    {u"Setting", u"ShowObj", &ShowObj, kNothing, u"True"},
    {u"Setting", u"ShowBGA", &ShowBGA, kNothing, u"True"},
    {u"Setting", u"PlaySound", &PlaySound, kNothing, u"True"},
    {u"Setting", u"PlayKeySound", &PlayKeySound, kNothing, u"False"},
    {u"Setting", u"UserPlay", &UserPlay, kNothing, u"True"},
    {u"Setting", u"UserRec", &UserRec, kNothing, u"False"},
    {u"Setting", u"ShowRec", &ShowRec, kNothing, u"False"},
    {u"Setting", u"PlayRec", &PlayRec, kNothing, u"False"},
    {u"Setting", u"DEMOMode", &DEMOMode, kNothing, u"False"},
    {u"Setting", u"ShowVLine", &ShowVLine, kNothing, u"False"},
    {u"Setting", u"ShowGlid", &ShowGlid, kNothing, u"False"},
    {u"Setting", u"HiSpeed", &HiSpeed, kNothing, u"1"},
    {u"Setting", u"RealHiSpeed", &RealHiSpeed, kNothing, u"1"},
    {u"Setting", u"PolMode", &PolMode, kNothing, u"False"},
    {u"NetSetting", u"MyName", &MyName, u"Default", u"Default"},
    {u"Setting", u"ShowGauge", &ShowGauge, kNothing, u"True"},
    {u"NoteSetting", u"Hidden", &Hidden, kNothing, u"False"},
    {u"NoteSetting", u"Sudden", &Sudden, kNothing, u"False"},
    {u"NoteSetting", u"Stealth", &Stealth, kNothing, u"False"},
    {u"NoteSetting", u"Reverse", &Reverse, kNothing, u"False"},
    {u"NoteSetting", u"Accel", &Accel, kNothing, u"False"},
    {u"NoteSetting", u"Quil", &Quil, kNothing, u"False"},
    {u"Setting", u"DontStretch", &DontStretch, u"0", u"False"},
    {u"Setting", u"ScreenColors", &ScreenColors, u"1", u"1"},
    {u"Setting", u"WAVLoadmode", &WAVLoadmode, u"0", u"0"},
    {u"Setting", u"BMPLoadmode", &BMPLoadmode, u"0", u"0"},
    {u"Setting", u"BMPRelease", &BMPRelease, u"0", u"0"},
    {u"Setting", u"BMSPreview", &BMSPreview, u"1", u"1"},
    {u"Setting", u"CourseLoadMode", &CourseLoadMode, u"1", u"0"},
    {u"Setting", u"NOVSync", &NOVSync, u"0", u"False"},
    {u"Setting", u"Font", &Font, u"ＭＳ Ｐゴシック", u""},
    {u"Setting", u"brd", ProgramPath{&brd}, kScreenSkin, kScreenSkin},
    {u"Setting", u"DrawLimit", &DRAWLIMIT, u"1", u"1"},
    {u"Setting", u"ENDLESSMODE", &ENDLESSMODE, u"1", u"1"},
    {u"Setting", u"NOSMOOTHSCROLL", &NOSMOOTHSCROLL, u"0", u"False"},
    {u"Setting", u"DirectBlt", &DirectBlt, u"0", u"False"},
    {u"Setting", u"JoyXYEnable", &JoyXYEnable, u"0", u"False"},
    {u"Setting", u"WaitVBlank", &WaitVBlank, u"True", u"False"},
    {u"Setting", u"RealtimeStretch", &RealtimeStretch, u"False", u"False"},
    {u"Setting", u"CourseEffect", &CourseEffect, u"True", u"True"},
    {u"Setting", u"ShowClearedOnList", &ShowClearedOnList, u"True", u"True"},
    {u"Setting", u"PreviewDelay", &PreviewDelay, kNothing, kStays},
    {u"Skin", u"1P", ProgramPath{&SkinMapPath[0]}, kOneSideSkin, kOneSideSkin},
    {u"Skin", u"2P", ProgramPath{&SkinMapPath[1]}, kOneSideSkin, kOneSideSkin},
    {u"Skin", u"DP", ProgramPath{&SkinMapPath[2]}, kTwoSideSkin, kTwoSideSkin},
    {u"Core", u"numObjs", &numObjs, u"65535", u"65535"},
    {u"Core", u"Windowed", &Windowed, u"False", u"False"},
    {u"Core", u"Halfsize", &Halfsize, u"False", u"False"},
    {u"Setting", u"SCRATCH1P", TurntableSide{&SCRATCH1P}, u"0", u"0"},
    {u"Setting", u"SCRATCH2P", TurntableSide{&SCRATCH2P}, u"1", u"0"},
    {u"Core", u"Debug", &Debug, u"False", u"False"},
};

constexpr SettingKey kOwnKeys[] = {
    {u"quillmarch", u"LoadBudget", &LoadBudget, u"0", u"0"},
    {u"quillmarch", u"WideCharts", &WideCharts, u"False", u"False"},
    {u"quillmarch", u"Scaling", &Scaling, u"0", u"0"},
    {u"quillmarch", u"KeysAtOnce", &KeysAtOnce, u"False", u"False"},
    {u"quillmarch", u"SoundBlock", &SoundBlock, u"256", u"256"},
    {u"quillmarch", u"NetPort", &NetPort, u"21520", u"21520"},
    {u"quillmarch", u"NetAddress", &NetAddress, u"", u""},
    {u"quillmarch", u"MenuLanguage", &MenuLanguage, u"", u""},
    {u"quillmarch", u"WatchSkins", &WatchSkins, u"False", u"False"},
};

// A program's folder may have been moved since it wrote this path, with the skins in it.
Text WhereItIsNow(TextView path) {
  const Text own = DataPath(GetFileName(path));
  const bool moved = GetFolder(path).ends_with(u"\\_qlmfiles\\") && !FileExists(path) && FileExists(own);
  return moved ? own : Text(path);
}

template <typename T, typename U>
bool Store(T& target, const std::optional<U>& value) {
  Assign(target, value);
  return value.has_value();
}

}  // namespace

std::span<const SettingKey> SettingKeys() { return kKeys; }

std::span<const SettingKey> OwnSettingKeys() { return kOwnKeys; }

bool StoreSetting(const SettingVariable& variable, TextView text) {
  return std::visit(
      Overloaded{
          [&](bool* flag) { return Store(*flag, ToBoolean(text)); },
          [&](int32_t* whole) { return Store(*whole, ToWhole(text)); },
          [&](uint8_t* byte) { return Store(*byte, ToByte(text)); },
          [&](float* single) { return Store(*single, ToSingle(text)); },
          [&](Text* words) { return Store(*words, std::optional(text)); },
          [&](ProgramPath path) { return Store(*path.path, std::optional(WhereItIsNow(text))); },
          [&](TurntableSide side) {
            const std::optional<int32_t> number = ToWhole(text);
            if (number) *side.right = *number != 0;
            return number.has_value();
          },
      },
      variable);
}

Text SettingText(const SettingVariable& variable) {
  return std::visit(Overloaded{
                        [](const ProgramPath& path) { return *path.path; },
                        [](const TurntableSide& side) { return Text(*side.right ? u"1" : u"0"); },
                        [](const uint8_t* byte) { return ToText(int32_t{*byte}); },
                        [](const auto* value) { return Text(ToText(*value)); },
                    },
                    variable);
}

Text DefaultText(const SettingVariable& variable, TextView text) {
  return std::holds_alternative<ProgramPath>(variable) ? Join(AppPath, text) : Text(text);
}

}  // namespace qlm

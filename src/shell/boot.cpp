// Main and Start, step by step.
#include "shell/boot.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "base/log.h"
#include "base/paths.h"
#include "files/data_folder.h"
#include "files/key_table.h"
#include "files/settings_file.h"
#include "files/stock_data.h"
#include "files/title_dictionary.h"
#include "forms/startup_menu.h"
#include "graphics/display.h"
#include "graphics/skin.h"
#include "graphics/skin_list.h"
#include "input/input.h"
#include "library/lists.h"
#include "library/scan.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "platform/window.h"
#include "platform/window_system.h"
#include "screens/boot_screen.h"
#include "screens/song_select.h"
#include "screens/stills.h"
#include "shell/command_line.h"
#include "shell/exit.h"
#include "shell/main_form.h"
#include "shell/meeting.h"
#include "shell/play_report.h"
#include "shell/set_value.h"
#include "shell/version.h"
#include "sound/play.h"
#include "state/chart.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/records.h"
#include "state/reset.h"
#include "state/settings.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

// A step of Start: in the log, then on the boot screen.
void BootLog(TextView message, int32_t indentDelta = 0) {
  DebugLog(message, indentDelta);
  DrawBootScreen();
}

Text StartTime() {
  const platform::WallTime now = platform::WallClock();
  return Join(Padded(now.year, 4), u"/", Padded(now.month, 2), u"/", Padded(now.day, 2), u" ",
              Padded(now.hour, 2), u":", Padded(now.minute, 2), u":", Padded(now.second, 2));
}

void ReportMissingDataFolder() {
  platform::MessageBox(
      platform::BoxIcon::kCritical, u"critical error",
      Join(u"_qlmfilesフォルダが存在しません。フルセットをダウンロードして展開してください。", kCrLf,
           u"エクスプローラでcabファイルを展開した場合は、フォルダが正常に展開されないためこのエラーが発生し"
           u"ている場合"
           u"があります。",
           kCrLf, u"同梱されているmake.batを実行してください。"));
  std::fprintf(stderr, "quillmarch: the folder %s is missing\n",
               platform::SystemPath(Join(AppPath, u"\\_qlmfiles")).c_str());
}

// The boot screen tells it too.
void ReportSecondProgram() {
  std::fprintf(stderr, "quillmarch: another one runs from %s; this one keeps no log and saves nothing\n",
               platform::SystemPath(AppPath).c_str());
}

// An installed program's first start, and the first of each later version. Nothing can be logged yet.
void TakeStock(TextView stock) {
  const auto tell = [] {
    std::fprintf(stderr, "quillmarch: the stock songs, skins and sounds go to %s\n",
                 platform::SystemPath(AppPath).c_str());
  };
  if (BringStock(stock, FullVersion(), tell)) return;
  std::fputs("quillmarch: not all of them could be written; is the disk full, or the folder read-only?\n",
             stderr);
  platform::MessageBox(platform::BoxIcon::kWarning, u"quillmarch",
                       Join(u"Not all stock songs, skins and sounds could be written to", kCrLf,
                            platform::DecodeUtf8(platform::SystemPath(AppPath)), kCrLf,
                            u"Is the disk full, or the folder read-only?"));
}

void MakeDataFolders() {
  for (const TextView folder : {u"", u"jukelist", u"courselist", u"wav"}) {
    platform::MakeFolder(DataPath(folder));
  }
}

void SetDrawConstants() {
  FullRect = kScreen;
  ScreenRect = kScreen;
  BgaX = 192;
  BgaY = 128;
  BgaW = 256;
  BgaH = 256;
}

// What the command line sets is saved at the end, like what keys change in a play. False, with a word to the
// person at the terminal, when there is no such setting or the value does not fit.
bool TakeSettings(const Launch& launch) {
  for (const Text& setting : launch.settings) {
    const auto place = std::min(setting.find(u'='), setting.size());
    const std::optional<Text> wrong = SetValue(TextView(setting).substr(0, place),
                                               TextView(setting).substr(std::min(place + 1, setting.size())));
    if (!wrong) continue;
    std::fprintf(stderr, "quillmarch: --set %s: %s\n", platform::EncodeUtf8(setting).c_str(),
                 platform::EncodeUtf8(*wrong).c_str());
    return false;
  }
  return true;
}

// In a window of twice the frame's size where the desktop has room for it, otherwise as the settings say.
void PlayInWindow() {
  constexpr int32_t kTimes = 2;
  if (!platform::DesktopHasRoom(kTimes * kScreen.Width(), kTimes * kScreen.Height())) return;
  UseThisRun(Windowed, true);
  UseThisRun(DirectBlt, true);
  windowTimes = kTimes;
}

// The play that the command line asks for: whether its chart could be loaded, nothing when there is none.
std::optional<bool> PlayFromCommandLine(TextView command) {
  if (command.empty()) return std::nullopt;
  BeginPlayReport();
  const std::optional<bool> played = RunCommandLine(command);
  WritePlayReport();
  return played;
}

// From here on the lists, until the player leaves.
void OpenLists(TextView jukebox) {
  BootLog(u"Values initialized.");
  LoadSS();
  BootLog(u"Read JukeBoxes...");
  JukeReady();
  BootLog(u"Loading default skin...");
  loadSkin(brd, false);
  listCursor = 0;
  PrintBoot(u"initialize complete. songlist mode.");
  DrawBootScreen();
  KeyHeld.Clear();
  selectLocked = false;
  ListAnm(jukebox);
}

void RunGame(const Launch& launch) {
  const std::optional<bool> played = PlayFromCommandLine(launch.command);
  // Without a display nobody could use the lists, nor leave them.
  if (!launch.once && platform::HasDisplay()) OpenLists(launch.open);
  if (!played) std::fputs("quillmarch: no chart was named; quillmarch --help tells how\n", stderr);
  ExitApp(played.value_or(true) ? 0 : 1);
}

bool WantsMenu(const Launch& launch) {
  return !launch.noMenu && !launch.once && !launch.host && launch.connect.empty() &&
         !NamesChart(launch.command) && MenuCanBeShown();
}

// The toolkit calls exit() when the display goes away under the menu.
bool menuIsUp = false;

void SaveIfMenuIsUp() {
  if (!menuIsUp) return;
  menuIsUp = false;
  SaveWithoutDisplay();
  std::fflush(nullptr);
  // What is left would ask the lost display.
  std::_Exit(1);
}

// False when the program is to end.
bool RunMenu() {
  std::atexit(SaveIfMenuIsUp);
  menuIsUp = true;
  const bool starts = RunStartupMenu([] { platform::OnDisplayGone(SaveWithoutDisplay); });
  menuIsUp = false;
  // The toolkit has left routines of its own behind.
  platform::OnDisplayGone(SaveWithoutDisplay);
  return starts;
}

}  // namespace

int Main(const Launch& launch) {
  ResetState();
  const DataPlace place = FindDataPlace(platform::ProgramFolder());
  AppPath = place.folder;
  if (!place.stock.empty()) MakeFolders(DataPath(u""));
  const bool first = TakeDataFolder();
  if (first && !place.stock.empty()) TakeStock(place.stock);
  if (first) platform::DeleteFile(LogPath());
  DebugLog(Text(67, u'-'));
  DebugLog(Join(u"[Main] quillmarch ", VersionText(), u" start on ", StartTime()), 1);
  LoadSettings();
  if (!platform::IsFolder(Join(AppPath, u"\\_qlmfiles"))) {
    ReportMissingDataFolder();
    return 1;
  }
  if (!first) ReportSecondProgram();
  MakeDataFolders();
  if (!TakeSettings(launch)) return 2;
  if (launch.demo) UseThisRun(DEMOMode, true);
  if (launch.window) PlayInWindow();
  if (launch.wide) UseThisRun(WideCharts, true);
  if (launch.watch) UseThisRun(WatchSkins, true);
  ConnectHooks();
  platform::OnDisplayGone(SaveWithoutDisplay);
  platform::EndOnHangup();
  InitDX();
  InitDI_Keyboard();
  InitDI_Joystick();
  if (!LoadKeyTable()) {
    platform::MessageBox(platform::BoxIcon::kInformation, u"information",
                         u"キーコンフィグをリセットしました。");
  }
  if (WantsMenu(launch) && !RunMenu()) ExitApp();
  if (!MeetOthers(launch)) ExitApp(1);
  Start(launch);
  return 0;
}

void Start(const Launch& launch) {
  PrepareForm();
  InitDD();
  CreateSurfaces();
  LoadDesk();
  PrintBoot(u"");
  PrintBoot(u"");
  PrintBoot(Join(u"quillmarch ", ProgramVersion().revision, u" booting... "));
  if (!keepsDataFolder) PrintBoot(u"another one runs: nothing is saved");
  InitDS();
  // No list is up yet that keys could choose from.
  selectLocked = true;
  BootLog(u"[Start] preparing...");
  if (PreviewDelay == 0) PreviewDelay = 1;
  BootLog(u"Updating list contents", 1);
  UpdateCourseList();
  UpdateSkinList();
  UpdateJukeList();
  BootLog(u"Done");
  if (lastSong < 0) BootLog(u"# BMS-list(s) not found. Make now.");
  if ((lastSong < 0 || launch.scan) && !MakeBMSListFile(false)) ExitApp(1);
  BootLog(u"Opening MixerHandle...");
  SetDrawConstants();
  BootLog(u"Loading ConvDict...");
  LoadTitleDictionary();
  RecCount = 0;
  RecCursor = 0;
  UserPlay = true;
  ShowGauge = true;
  RunGame(launch);
}

}  // namespace qlm

// Settings as they stand at program start.
#include "state/settings.h"

namespace qlm {

void ResetSettings() {
  numObjs = 65535;
  windowTimes = 1;
  Windowed = Halfsize = Debug = false;
  Sleep = 0;
  ScreenColors = 0;
  DirectBlt = NOVSync = WaitVBlank = KeysAtOnce = DontStretch = RealtimeStretch = false;
  Font.clear();
  DRAWLIMIT = 0;
  NOSMOOTHSCROLL = ShowObj = ShowGauge = ShowVLine = ShowGlid = PolMode = ShowClearedOnList = false;
  NoBGA = NoWAV = false;
  WAVLoadmode = BMPLoadmode = BMPRelease = CourseLoadMode = 0;
  BMSPreview = ENDLESSMODE = 0;
  PreviewDelay = 1000;
  CourseEffect = false;
  Scaling = 0;
  LoadBudget = 0;
  WideCharts = false;
  WatchSkins = false;
  ShowBGA = PlaySound = PlayKeySound = UserPlay = UserRec = ShowRec = PlayRec = DEMOMode = false;
  SoundBlock = 256;
  JoyXYEnable = SCRATCH1P = SCRATCH2P = false;
  MyName.clear();
  NetPort = 21520;
  NetAddress.clear();
  MenuLanguage.clear();
  brd.clear();
}

}  // namespace qlm

// The settings file in memory. Start values are those before any file is read.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

// Core
inline int32_t numObjs = 65535;  // highest index of the object table
inline bool Windowed = false;
inline int32_t windowTimes = 1;  // a window's size by that of its frame; not saved
inline bool Halfsize = false;    // in a window, the frame at 320 by 240
inline bool Debug = false;       // memory and voice lines on the frame

// Screen
inline int32_t Sleep = 0;         // ms rested in each frame, 0 to 15
inline uint8_t ScreenColors = 0;  // display depth is (value + 1) * 8 bits
inline bool DirectBlt = false;    // shows by a copy and not by a flip
inline bool NOVSync = false;
inline bool WaitVBlank = false;
inline bool KeysAtOnce = false;   // keys are served while a finished frame waits for its flip
inline bool DontStretch = false;  // the judgement word and a course's title picture are not stretched
inline bool RealtimeStretch = false;
inline Text Font;              // face of text drawn by the platform
inline uint8_t DRAWLIMIT = 0;  // 1 to 3; below 3 the lists have a moving background
inline bool NOSMOOTHSCROLL = false;
inline bool ShowObj = false;
inline bool ShowGauge = false;
inline bool ShowVLine = false;
inline bool ShowGlid = false;
inline bool PolMode = false;
inline bool ShowClearedOnList = false;

// Chart and its files
inline bool NoBGA = false;
inline bool NoWAV = false;
inline int32_t WAVLoadmode = 0;  // 0 each sound while reading, others at first use
inline int32_t BMPLoadmode = 0;
inline int32_t BMPRelease = 0;
inline int32_t CourseLoadMode = 0;  // 2 all files of a course while reading, others while playing
inline uint8_t BMSPreview = 0;
inline uint8_t ENDLESSMODE = 0;
inline int32_t PreviewDelay = 1000;  // ms
inline bool CourseEffect = false;
inline Text MenuLanguage;    // "ja", "en", or empty: the menu follows the system
inline int32_t Scaling = 0;  // on the whole desktop: 0 what looks best, 1 by a whole number, 2 to the edges
inline bool WideCharts = false;  // charts are read as they are written today: chart/wide_reading.h
inline int32_t LoadBudget = 0;  // MiB that sounds and pictures may hold together; up to 0: half of the memory

// Play
inline bool ShowBGA = false;
inline bool PlaySound = false;     // background objects sound
inline bool PlayKeySound = false;  // notes sound by themselves
inline int32_t SoundBlock = 256;   // frames that the sound device is to ask for at a time
inline bool UserPlay = false;
inline bool UserRec = false;
inline bool ShowRec = false;
inline bool PlayRec = false;
inline bool DEMOMode = false;  // the machine plays
inline bool JoyXYEnable = false;
inline bool SCRATCH1P = false;  // turntable on the right
inline bool SCRATCH2P = false;
inline Text MyName;
inline int32_t NetPort = 21520;  // of a battle's session; 1 to 65535
inline Text NetAddress;  // HOST or HOST:PORT of the session to join; empty: the local network is asked

inline bool WatchSkins = false;  // a skin is read anew when one of its files changes
inline Text brd;                 // skin of the screens outside a play, with its full path

void ResetSettings();

}  // namespace qlm

// Start values of the skin.
#include "state/skin.h"

namespace qlm {

void ClearSkinTables() {
  Clip.Clear();
  ClipList = {};
  Number.Clear();
  NoteSkin.Clear();
  LayerClip.Clear();
  LayerX.Clear();
  LayerY.Clear();
  LayerWide.Clear();
  LayerList = {};
  ScoreCountPos = {};
  JudgePos = {};
  JudgeLinePos = {};
  BombPos = {};
  LinePos = {};
  LineList = {};
  KeyPos = {};
  BlinkPos = {};
  ClassPos = {};
  LenPos = {};
  LenUsed = {};
  ScorePos = JPointPos = MaxPos = {};
  GaugeNumPos = GaugePos = GaugeBackPos = ExGaugePos = ExGaugeBackPos = {};
  FanPos = {};
  OptionPos = {};
  JudgeY = 480;
  GaugeStep = 0;
  BpmPos = PlayPos1 = PlayFullPos = CountPos = StagePos = FpsPos = {};
  ComboNumber = 0;
  TitleRect = {};
  BgaRect = {};
  NoMissClip = MaxComboClip = PressureClip = ComboGraphClip = ComboGraphBackClip = 0;
}

void ResetSkin() {
  ClearSkinTables();
  OptionMark = {};
  skinList.clear();
  SkinPath.clear();
  SkinIndex = 0;
  SkinMapPath = {};
  SkinMapIndex = {};
}

}  // namespace qlm

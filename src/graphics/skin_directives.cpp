// The directives of a skin, each a routine, and the table that finds them.
#include "graphics/skin_directives.h"

#include <algorithm>
#include <cmath>

#include "base/paths.h"
#include "graphics/bitmaps.h"
#include "graphics/clips.h"
#include "graphics/skin_lines.h"
#include "platform/text.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

// Place of `word` in a list of words.
template <size_t N>
std::optional<size_t> PlaceOf(TextView word, const std::array<TextView, N>& words) {
  const auto found = std::find(words.begin(), words.end(), word);
  if (found == words.end()) return std::nullopt;
  return static_cast<size_t>(found - words.begin());
}

// ReadSkinPos: id, x, y, p3, p4 behind the first blank.
void ReadSkinPos(SkinReading& in, SkinPos& pos, SkinPart part, AtEdge atEdge = AtEdge::kCut,
                 Field place = Field::kNeeded) {
  in.ArgumentsBehindBlank();
  in.Sets(&pos);
  in.Hex(part == SkinPart::kNumber ? u"the number of the digits" : u"the clip", pos.id);
  in.Whole(u"x", pos.x, place);
  in.Whole(u"y", pos.y, place);
  in.Whole(u"the fourth field", pos.p3, Field::kMayBeLeftOut);
  in.Whole(u"the fifth field", pos.p4, Field::kMayBeLeftOut);
  in.Uses(part, pos.id);
  in.Stands(part, pos.id, pos.x, pos.y, atEdge);
}

void RemarkNoSide(SkinReading& in) { in.Remark(u"the word does not end in a side, 1P or 2P"); }
void RemarkKeyword(SkinReading& in, TextView keyword) {
  in.Remark(u"the word is none that this directive knows: ", keyword);
}

// A position for the side that the word ends in.
void ReadSided(SkinReading& in, BySide<SkinPos>& table, SkinPart part, AtEdge atEdge = AtEdge::kCut) {
  const std::optional<size_t> side = in.SidedWord().side;
  if (!side) return RemarkNoSide(in);
  ReadSkinPos(in, table[*side], part, atEdge);
}

// The pictures.

// Without a display there is nowhere to load it to.
void LoadPicture(SkinReading& in, TextView name, SurfacePtr& surface) {
  if (!displayOpen) return;
  const Text path = SkinPicturePath(name);
  Rect rect;
  LoadAnyBitmap(path, surface, rect);
  if (surface != nullptr || in.Report() == nullptr) return;
  in.Remark(FileExists(path) ? u"this is no picture that the game can load: " : u"there is no such picture: ",
            name);
}

void ReadBack(SkinReading& in) {
  in.ArgumentsFrom(9);
  const TextView name = in.Name(u"the name of the picture");
  if (name.empty()) return;
  in.Sets(&DDSkinBack);
  if (in.Report() != nullptr) in.Report()->background = name;
  LoadPicture(in, name, DDSkinBack);
}

void ReadFile(SkinReading& in) {
  in.row = in.HexDigits(6);
  in.ArgumentsFrom(9);
  const TextView name = in.Name(u"the name of the picture");
  uint32_t key = 0;
  in.Hex(u"the transparent colour", key, Field::kMayBeLeftOut);
  if (name.empty()) return;
  SurfacePtr& sheet = SkinFile[in.row];
  in.Sets(&sheet);
  if (in.Report() != nullptr) in.Report()->files[in.row] = name;
  LoadPicture(in, name, sheet);
  if (sheet) sheet->SetColourKey(key, key);
}

void ReadClip(SkinReading& in) {
  in.row = in.HexDigits(6);
  SkinClip& clip = Clip[in.row];
  in.ArgumentsFrom(9);
  in.Sets(&clip);
  int32_t direction = 0;
  int32_t gap = 0;
  in.WholeOrZero(u"the sheet", clip.file);
  in.WholeOrZero(u"x", clip.x);
  in.WholeOrZero(u"y", clip.y);
  in.WholeOrZero(u"the width", clip.width);
  in.WholeOrZero(u"the height", clip.height);
  in.WholeOrZero(u"the direction", direction, Field::kMayBeLeftOut);
  in.WholeOrZero(u"the gap", gap, Field::kMayBeLeftOut);
  in.WholeOrZero(u"the number of frames", clip.frames, Field::kMayBeLeftOut);
  const double speed = in.SingleOrZero(u"the speed", Field::kMayBeLeftOut);
  in.WholeOrZero(u"the flag", clip.flag, Field::kMayBeLeftOut);
  clip.frames = std::max<uint16_t>(clip.frames, 1);
  Assign(clip.speed, Narrow(std::abs(speed)));
  clip.animMode = speed >= 0 ? kClipByClock : kClipByPosition;
  const bool down = direction == 2;
  clip.stepX = down ? 0 : int64_t{clip.width} + gap;
  clip.stepY = down ? int64_t{clip.height} + gap : 0;
  Assign(clip.rect, FrameOf(clip, 0));
  Append(ClipList, static_cast<uint8_t>(in.row));
  in.Uses(SkinPart::kSheet, clip.file);
}

void ReadNumber(SkinReading& in) {
  in.row = in.HexDigits(5);
  SkinNumber& number = Number[in.row];
  in.ArgumentsFrom(8);
  in.Sets(&number);
  int32_t x = 0;
  int32_t y = 0;
  int32_t spacing = 0;
  in.Whole(u"the sheet", number.file);
  in.Whole(u"x", x);
  in.Whole(u"y", y);
  in.Whole(u"the width", number.width);
  in.Whole(u"the height", number.height);
  in.Whole(u"the spacing on the sheet", spacing, Field::kMayBeLeftOut);
  in.Whole(u"the gap", number.gap, Field::kMayBeLeftOut);
  for (int32_t glyph = 0; glyph < kGlyphs; ++glyph) {
    const int64_t left = x + glyph * (int64_t{number.width} + spacing);
    Assign(number.rects[static_cast<size_t>(glyph)],
           FittingRect(left, y, left + number.width, int64_t{y} + number.height));
  }
  in.Uses(SkinPart::kSheet, number.file);
}

// Notes and lanes.

void ReadNote(SkinReading& in) {
  const std::optional<int32_t> channel = in.DecimalDigits(6);
  if (!channel) return;
  LaneSkin* note = NoteSkin.Find(int64_t{*channel} - 10);
  if (note == nullptr) return in.Remark(u"channels go from 10 to 60");
  in.ArgumentsFrom(9);
  in.Sets(note);
  in.Hex(u"the clip of the note", note->clip);
  in.Hex(u"the clip of the beam", note->beamClip);
  in.Hex(u"the third clip", note->spareClip, Field::kMayBeLeftOut);
  in.Whole(u"x with the turntable on the left", note->xLeft);
  in.Whole(u"x with the turntable on the right", note->xRight);
  in.Whole(u"the sixth field", note->p5, Field::kMayBeLeftOut);
  in.Whole(u"the seventh field", note->p6, Field::kMayBeLeftOut);
  note->x = note->xLeft;
  Assign(note->yOffset, RoundTo<int16_t>(-static_cast<double>(Clip[note->clip].height)));
  in.Uses(SkinPart::kClip, note->clip);
  if (note->beamClip != 0) in.Uses(SkinPart::kClip, note->beamClip);
  if (in.Report() != nullptr && Clip[note->clip].height == 0) {
    in.Remark(u"a note finds its height only in a clip that stands further up");
  }
  in.Stands(SkinPart::kClip, note->clip, note->xLeft, 0, AtEdge::kCut);
  in.Stands(SkinPart::kClip, note->clip, note->xRight, 0, AtEdge::kCut);
}

void ReadBlink(SkinReading& in) {
  const std::optional<int32_t> channel = ToWhole(in.Word().Piece(1));
  if (!channel || *channel < 11 || *channel > 29)
    return in.Remark(u"the word names no channel from 11 to 29");
  const auto lane = static_cast<size_t>(*channel - 11);
  SkinPos& left = BlinkPos[0][lane];
  SkinPos& right = BlinkPos[1][lane];
  in.ArgumentsBehindBlank();
  in.Sets(&left);
  in.Whole(u"y", left.y);
  right.y = left.y;
  in.Whole(u"x with the turntable on the left", left.x);
  in.Whole(u"the clip with the turntable on the left", left.id);
  in.Whole(u"x with the turntable on the right", right.x);
  in.Whole(u"the clip with the turntable on the right", right.id);
  for (const SkinPos& pos : {left, right}) {
    in.Uses(SkinPart::kClip, pos.id);
    in.Stands(SkinPart::kClip, pos.id, pos.x, pos.y, AtEdge::kCut);
  }
}

// The side of words that are not cut: the first character of the second piece.
std::optional<size_t> LeadingSide(const SkinWord& word) {
  if (word.Piece(1).starts_with(u'1')) return 0;
  if (word.Piece(1).starts_with(u'2')) return 1;
  return std::nullopt;
}

size_t TurntableOf(SkinReading& in, TextView letter) {
  if (letter != u"L" && letter != u"R") {
    in.Remark(u"the word names no place of the turntable, L or R: it counts as L");
  }
  return letter == u"R" ? 1 : 0;
}

void ReadLine(SkinReading& in) {
  const SkinWord word = in.Word();
  const std::optional<size_t> side = LeadingSide(word);
  const std::optional<int32_t> number = ToWhole(Mid(word.Piece(2), 2));
  if (!side) return in.Remark(u"the second part of the word is no side, 1P or 2P");
  if (!number || *number < 0 || *number > 15) return in.Remark(u"the word ends in no number from 0 to 15");
  const size_t right = TurntableOf(in, Left(word.Piece(2), 1));
  ReadSkinPos(in, LinePos[*side][right][static_cast<size_t>(*number)], SkinPart::kClip, AtEdge::kRefused);
  if (in.Report() != nullptr && LinePos[*side][right][static_cast<size_t>(*number)].id == 0) {
    in.Remark(u"clip 00 stands for no line");
  }
}

// POOR, BAD, GOOD, GREAT, PERFECT by row.
constexpr std::array<TextView, 5> kGrades = {u"POOR", u"BAD", u"GOOD", u"GREAT", u"PERFECT"};

void ReadGraded(SkinReading& in, BySide<std::array<SkinPos, 5>>& table, SkinPart part) {
  const SkinWord word = in.SidedWord();
  const std::optional<size_t> grade = PlaceOf(word.Piece(1), kGrades);
  if (!grade) return RemarkKeyword(in, word.Piece(1));
  if (!word.side) return RemarkNoSide(in);
  ReadSkinPos(in, table[*word.side][*grade], part);
}

void ReadJudge(SkinReading& in) {
  const SkinWord word = in.Word();
  if (word.Piece(0) == u"#JUDGE") return ReadGraded(in, JudgePos, SkinPart::kClip);
  if (word.Piece(0) != u"#JUDGEPOS") return RemarkKeyword(in, word.Piece(0));
  const std::optional<size_t> side = LeadingSide(word);
  if (!side) return in.Remark(u"the second part of the word is no side, 1P or 2P");
  ReadSkinPos(in, JudgeLinePos[*side][TurntableOf(in, word.Piece(2))], SkinPart::kClip, AtEdge::kRefused);
}

// Quirk: the words of #KEY and #PLA must stand in capitals, and no others.
void ReadKey(SkinReading& in) {
  const bool second = in.Line().starts_with(u"#KEY2P");
  if (!second && !in.Line().starts_with(u"#KEY1P")) {
    return in.Remark(u"the line begins neither with #KEY1P nor with #KEY2P, in capitals");
  }
  const TextView turntable = Mid(in.Line(), 8, 1);
  if (turntable != u"L" && turntable != u"R") {
    in.Remark(u"column 8 holds neither L nor R, in capitals: it counts as L");
  }
  const size_t row = (second ? 2 : 0) + (turntable == u"R" ? 1 : 0);
  ReadSkinPos(in, KeyPos[row], SkinPart::kClip, AtEdge::kRefused);
}

void ReadJudgeY(SkinReading& in) {
  in.ArgumentsFrom(11);
  in.Sets(&JudgeY);
  in.Whole(u"y", JudgeY);
}

// Numbers and words on the screen.

void ReadBpm(SkinReading& in) {
  in.ArgumentsFrom(9);
  in.Sets(&BpmPos);
  in.Whole(u"the number of the digits", BpmPos.id);
  in.Whole(u"x", BpmPos.x);
  in.Whole(u"y", BpmPos.y);
  in.Whole(u"the fourth field", BpmPos.p3, Field::kMayBeLeftOut);
  in.Whole(u"the fifth field", BpmPos.p4, Field::kMayBeLeftOut);
  in.Uses(SkinPart::kNumber, BpmPos.id);
  in.Stands(SkinPart::kNumber, BpmPos.id, BpmPos.x, BpmPos.y, AtEdge::kCut);
}

// Four numbers as the file gives them.
void ReadFour(SkinReading& in, Rect& rect, Field size) {
  in.Sets(&rect);
  in.Whole(u"x", rect.left);
  in.Whole(u"y", rect.top);
  in.Whole(u"the width", rect.right, size);
  in.Whole(u"the height", rect.bottom, Field::kMayBeLeftOut);
}

void ReadTitle(SkinReading& in) {
  in.ArgumentsFrom(11);
  ReadFour(in, TitleRect, Field::kNeeded);
}

void ReadMessage(SkinReading& in) {
  in.ArgumentsFrom(9);
  ReadFour(in, MessageRect, Field::kMayBeLeftOut);
}

void ReadPlayTime(SkinReading& in) {
  if (in.WholeWord() == u"#PLAYPOS") return ReadSkinPos(in, PlayPos1, SkinPart::kNumber);
  if (in.WholeWord() == u"#PLAY_FULLPOS") return ReadSkinPos(in, PlayFullPos, SkinPart::kNumber);
  in.Remark(u"the word is neither #PLAYPOS nor #PLAY_FULLPOS, in capitals");
}

void ReadCount(SkinReading& in) { ReadSkinPos(in, CountPos, SkinPart::kNumber); }
void ReadStage(SkinReading& in) { ReadSkinPos(in, StagePos, SkinPart::kNumber); }
void ReadFps(SkinReading& in) { ReadSkinPos(in, FpsPos, SkinPart::kNumber); }

void ReadCombo(SkinReading& in) {
  in.ArgumentsBehindBlank();
  in.Sets(&ComboNumber);
  in.Whole(u"the number of the digits", ComboNumber);
  in.Uses(SkinPart::kNumber, ComboNumber);
}

void ReadScoreCount(SkinReading& in) { ReadGraded(in, ScoreCountPos, SkinPart::kNumber); }
void ReadScore(SkinReading& in) { ReadSided(in, ScorePos, SkinPart::kNumber); }
void ReadJPoint(SkinReading& in) { ReadSided(in, JPointPos, SkinPart::kNumber); }
void ReadMaxCombo(SkinReading& in) { ReadSided(in, MaxPos, SkinPart::kNumber); }

void ReadLength(SkinReading& in) {
  const size_t blank = in.Line().find(u' ');
  const char16_t digit = blank == TextView::npos ? u'\0' : in.Line()[blank - 1];
  if (digit < u'1' || digit > u'4') return in.Remark(u"the word does not end in a digit from 1 to 4");
  const auto row = static_cast<size_t>(digit - u'1');
  ReadSkinPos(in, LenPos[row], SkinPart::kClip, AtEdge::kRefused);
  LenUsed[row] = true;
}

void ReadClass(SkinReading& in) {
  const std::optional<size_t> side = in.SidedWord().side;
  if (!side) return RemarkNoSide(in);
  auto& rows = ClassPos[*side];
  in.ArgumentsBehindBlank();
  in.Sets(&rows);
  const std::optional<uint8_t> first = in.HexByte(u"the first clip");
  in.Whole(u"x", rows[0].x);
  in.Whole(u"y", rows[0].y);
  for (size_t row = 0; row < rows.size(); ++row) {
    if (first) Assign(rows[row].id, RoundTo<uint8_t>(*first + static_cast<double>(row)));
    rows[row].x = rows[0].x;
    rows[row].y = rows[0].y;
    in.Uses(SkinPart::kClip, first ? int64_t{*first} + static_cast<int64_t>(row) : rows[row].id);
    in.Stands(SkinPart::kClip, rows[row].id, rows[row].x, rows[row].y, AtEdge::kCut);
  }
}

void ReadBomb(SkinReading& in) {
  constexpr std::array<TextView, 3> kWords = {u"GOOD", u"GREAT", u"PERFECT"};
  const SkinWord word = in.Word();
  const std::optional<size_t> row = PlaceOf(word.Piece(1), kWords);
  if (!row) return RemarkKeyword(in, word.Piece(1));
  // It bursts where the note was.
  ReadSkinPos(in, BombPos[*row], SkinPart::kClip, AtEdge::kCut, Field::kMayBeLeftOut);
}

// Gauges, fan and combo box.

// The word before its last "_", its last letter cut off.
Text BeforeSide(const SkinReading& in) {
  const TextView word = in.WholeWord();
  const TextView cut = Left(word, Len(word) - 1);
  return UCase(cut.substr(0, cut.rfind(u'_')));
}

void ReadGauge(SkinReading& in) {
  const Text word = BeforeSide(in);
  if (word == u"#GAUGESTE") {
    in.ArgumentsFrom(12);
    in.Sets(&GaugeStep);
    return in.Single(u"the step", GaugeStep);
  }
  if (word == u"#GAUGEPOSBG") return ReadSided(in, GaugeBackPos, SkinPart::kClip, AtEdge::kRefused);
  if (word == u"#GAUGEPOS") return ReadSided(in, GaugePos, SkinPart::kClip);
  if (word == u"#GAUGE") return ReadSided(in, GaugeNumPos, SkinPart::kNumber);
  RemarkKeyword(in, in.WholeWord());
}

void ReadExGauge(SkinReading& in) {
  const Text word = BeforeSide(in);
  if (word == u"#EXGAUGEPOSBG") return ReadSided(in, ExGaugeBackPos, SkinPart::kClip, AtEdge::kRefused);
  if (word == u"#EXGAUGEPOS") return ReadSided(in, ExGaugePos, SkinPart::kClip);
  RemarkKeyword(in, in.WholeWord());
}

void ReadFan(SkinReading& in) {
  constexpr std::array<int32_t, 4> kSteps = {0, 20, 80, 99};
  const SkinWord word = in.SidedWord();
  const std::optional<int32_t> step = ToWhole(Mid(word.Piece(0), 5));
  const auto found = step ? std::find(kSteps.begin(), kSteps.end(), *step) : kSteps.end();
  if (found == kSteps.end()) return in.Remark(u"the number in the word is not 0, 20, 80 or 99");
  if (!word.side) return RemarkNoSide(in);
  ReadSkinPos(in, FanPos[*word.side][static_cast<size_t>(found - kSteps.begin())], SkinPart::kClip,
              AtEdge::kRefused);
}

void ReadComboBox(SkinReading& in) {
  constexpr std::array<TextView, 5> kWords = {u"NOMISS", u"MAXCOMBO", u"PRESSURE", u"COMBOGRAPH",
                                              u"COMBOGRAPHBG"};
  constexpr std::array<int32_t*, 5> kClips = {&NoMissClip, &MaxComboClip, &PressureClip, &ComboGraphClip,
                                              &ComboGraphBackClip};
  const SkinWord word = in.Word();
  const std::optional<size_t> row = PlaceOf(word.Piece(1), kWords);
  if (!row) return RemarkKeyword(in, word.Piece(1));
  in.ArgumentsBehindBlank();
  in.Sets(kClips[*row]);
  in.Hex(u"the clip", *kClips[*row]);
  in.Uses(SkinPart::kClip, *kClips[*row]);
}

// Options.

// The words from row 1 on, in the spelling of the format.
constexpr std::array<TextView, 17> kOptions = {
    u"HIDDEN", u"SUDDEN", u"HIDSUD", u"STEALTH", u"RANDOM", u"SHUFFLE",  u"EXRANDOM", u"MIRROR",  u"ACCEL",
    u"QUIL",   u"5KEY",   u"7KEY",   u"DOBULE",  u"BATTLE", u"AUTOPLAY", u"REPLAY",   u"PREESURE"};

void ReadOption(SkinReading& in) {
  const SkinWord word = in.Word();
  const std::optional<size_t> known = PlaceOf(word.Piece(1), kOptions);
  if (known) in.row = static_cast<int64_t>(*known) + 1;
  // Quirk: a made-up word falls on the row that the last number of the load left.
  if (in.row >= static_cast<int64_t>(OptionPos[0].size())) {
    return in.Remark(u"the option is none that the game knows, and this line sets nothing: ", word.Piece(1));
  }
  const auto row = static_cast<size_t>(in.row);
  if (!known && row != 0) {
    in.Remark(u"the option is none that the game knows, and this line sets the mark of ", kOptions[row - 1]);
  }
  SkinPos& first = OptionPos[0][row];
  SkinPos& second = OptionPos[1][row];
  in.ArgumentsBehindBlank();
  in.Sets(&first);
  in.Hex(u"the clip", first.id);
  second.id = first.id;
  in.Whole(u"x for 1P", first.x);
  in.Whole(u"y for 1P", first.y);
  in.Whole(u"x for 2P", second.x);
  in.Whole(u"y for 2P", second.y);
  in.Uses(SkinPart::kClip, first.id);
  for (const SkinPos& pos : {first, second}) {
    in.Stands(SkinPart::kClip, pos.id, pos.x, pos.y, AtEdge::kCut);
  }
}

// BGA, layers and the font.

void ReadBga(SkinReading& in) {
  const std::optional<size_t> side = in.SidedWord().side;
  if (!side) return RemarkNoSide(in);
  in.ArgumentsBehindBlank();
  ReadFour(in, BgaRect[*side], Field::kNeeded);
}

void ReadLayer(SkinReading& in) {
  const std::optional<int32_t> number = in.DecimalDigits(7);
  if (!number || !LayerClip.Holds(*number)) return;
  uint8_t& clip = LayerClip[*number];
  int32_t wide = LayerWide[*number] ? 1 : 0;
  in.ArgumentsFrom(10);
  in.Sets(&clip);
  in.Hex(u"the clip", clip);
  in.Whole(u"x", LayerX[*number]);
  in.Whole(u"y", LayerY[*number]);
  in.Whole(u"the mark of a layer for two sides", wide, Field::kMayBeLeftOut);
  LayerWide[*number] = wide != 0;
  Append(LayerList, static_cast<uint8_t>(*number));
  in.Uses(SkinPart::kClip, clip);
  in.Stands(SkinPart::kClip, clip, LayerX[*number], LayerY[*number], AtEdge::kCut);
  if (LayerX[*number] < 0 || LayerY[*number] < 0) in.Remark(u"a layer with x or y below 0 is left out");
}

void ReadSystemFont(SkinReading& in) {
  int32_t x = 0;
  int32_t y = 0;
  in.ArgumentsFrom(10);
  in.Sets(&SysFont);
  in.Whole(u"x", x);
  in.Whole(u"y", y);
  in.Whole(u"the width of a cell", SysFontW);
  in.Whole(u"the height of a cell", SysFontH);
  in.Uses(SkinPart::kSheet, 1);
  // Quirk: the first code of a row, such as that of "@", lies one cell to the left of x, in its own row.
  for (int32_t code = 33; code <= 128; ++code) {
    const int64_t left = x + (code % 32 - 1) * int64_t{SysFontW};
    const int64_t top = y + (code / 32 - 1) * int64_t{SysFontH};
    Assign(SysFont[code - 32], FittingRect(left, top, left + SysFontW, top + SysFontH));
  }
}

struct Directive {
  TextView key;  // four characters, in capitals
  void (*read)(SkinReading& in);
};

constexpr Directive kDirectives[] = {
    {u"#BAC", ReadBack},       {u"#FIL", ReadFile},    {u"#YPO", ReadJudgeY},   {u"#CLI", ReadClip},
    {u"#NUM", ReadNumber},     {u"#BPM", ReadBpm},     {u"#SON", ReadTitle},    {u"#PLA", ReadPlayTime},
    {u"#KEY", ReadKey},        {u"#BLI", ReadBlink},   {u"#MSG", ReadMessage},  {u"#COU", ReadCount},
    {u"#STA", ReadStage},      {u"#BGA", ReadBga},     {u"#CLA", ReadClass},    {u"#FPS", ReadFps},
    {u"#LEN", ReadLength},     {u"#NOT", ReadNote},    {u"#LAY", ReadLayer},    {u"#SC_", ReadScoreCount},
    {u"#LIN", ReadLine},       {u"#JUD", ReadJudge},   {u"#BOM", ReadBomb},     {u"#SCO", ReadScore},
    {u"#COM", ReadCombo},      {u"#J-P", ReadJPoint},  {u"#ST_", ReadComboBox}, {u"#MAX", ReadMaxCombo},
    {u"#FAN", ReadFan},        {u"#EXG", ReadExGauge}, {u"#GAU", ReadGauge},    {u"#OP_", ReadOption},
    {u"#SYS", ReadSystemFont},
};

// What the list of skins reads.
bool IsOfTheList(TextView line) { return BeginsWith(line, u"#SKINSTYLE") || BeginsWith(line, u"#TITLE"); }

void ReadSkinLine(SkinReading& in) {
  if (!in.Line().starts_with(u'#')) return;
  for (const Directive& directive : kDirectives) {
    if (BeginsWith(in.Line(), directive.key)) return directive.read(in);
  }
  if (!IsOfTheList(in.Line())) in.Remark(u"there is no such directive");
}

}  // namespace

Text SkinPicturePath(TextView name) {
  return name.find(u':') == TextView::npos ? DataPath(name) : Text(name);
}

void ReadSkin(std::string_view bytes, SkinReport* report) {
  SkinReading in(report);
  const Text whole = platform::DecodeCp932(bytes);
  for (TextView text = whole; !text.empty();) {
    const size_t end = text.find(kLf);
    TextView raw = text.substr(0, end);
    text.remove_prefix(end == TextView::npos ? text.size() : end + 1);
    if (raw.ends_with(kCr)) raw.remove_suffix(1);
    const Text line = CleanSkinLine(raw);
    in.Begin(line);
    ReadSkinLine(in);
  }
}

void Append(SkinOrder& order, uint8_t number) {
  if (order.last + 1 >= static_cast<int32_t>(order.entries.size())) return;
  order.entries[static_cast<size_t>(++order.last)] = number;
}

}  // namespace qlm

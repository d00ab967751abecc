// The command `skin`: the tables that a skin fills, and what its author would want to know.
#include "graphics/skin.h"
#include "graphics/clips.h"
#include "graphics/display.h"
#include "graphics/skin_check.h"
#include "graphics/skin_report.h"
#include "state/chart.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/surfaces.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/engine.h"

namespace probe {
namespace {

using qlm::Rect;
using qlm::SkinPos;

void PutValue(Json& json, const SkinPos& pos) { json.Row(pos.id, pos.x, pos.y, pos.p3, pos.p4); }
void PutValue(Json& json, const Rect& rect) { json.Row(rect.left, rect.top, rect.right, rect.bottom); }
void PutValue(Json& json, const qlm::SkinOrder& order) {
  json.BeginArray();
  for (int32_t i = 0; i <= order.last; ++i) json.Value(order.entries[static_cast<size_t>(i)]);
  json.EndArray();
}
template <typename Iterator>
void PutValues(Json& json, Iterator begin, Iterator end);
template <typename T, size_t N>
void PutValue(Json& json, const std::array<T, N>& values) {
  PutValues(json, values.begin(), values.end());
}
template <typename Iterator>
void PutValues(Json& json, Iterator begin, Iterator end) {
  json.BeginArray();
  for (; begin != end; ++begin) PutValue(json, *begin);
  json.EndArray();
}
template <typename T>
void Put(Json& json, std::string_view key, const T& value) {
  json.Key(key);
  PutValue(json, value);
}

// Those entries of a table that the skin set, under their numbers.
template <typename Table, typename PutEntry>
void PutSparse(Json& json, std::string_view key, const qlm::SkinReport& report, const Table& table,
               PutEntry putEntry) {
  json.Key(key).BeginObject();
  for (int64_t n = 0; n <= Table::kLast; ++n) {
    if (!report.set.contains(&table[n])) continue;
    json.Key(std::to_string(n)).BeginObject();
    putEntry(n);
    json.EndObject();
  }
  json.EndObject();
}

void PutSprites(Json& json, const qlm::SkinReport& report) {
  PutSparse(json, "Clip", report, qlm::Clip, [&](int64_t n) {
    const qlm::SkinClip& clip = qlm::Clip[n];
    json.Put("file", clip.file);
    json.Put("frames", clip.frames);
    json.Key("rects").BeginArray();
    for (int64_t frame = 0; frame < clip.frames; ++frame) PutValue(json, *qlm::FrameOf(clip, frame));
    json.EndArray();
    json.Put("speed", clip.speed);
    json.Put("animMode", clip.animMode);
    Put(json, "rect", clip.rect);
    json.Put("width", clip.width);
    json.Put("height", clip.height);
    json.Put("flag", clip.flag);
  });
  Put(json, "ClipList", qlm::ClipList);
  PutSparse(json, "Number", report, qlm::Number, [&](int64_t n) {
    const qlm::SkinNumber& number = qlm::Number[n];
    json.Put("file", number.file);
    json.Key("rects");
    PutValues(json, number.rects.begin(), number.rects.begin() + qlm::kGlyphs);
    json.Put("width", number.width);
    json.Put("height", number.height);
    json.Put("gap", number.gap);
  });
}

void PutLanesAndLayers(Json& json, const qlm::SkinReport& report) {
  PutSparse(json, "NoteSkin", report, qlm::NoteSkin, [&](int64_t n) {
    const qlm::LaneSkin& note = qlm::NoteSkin[n];
    json.Put("clip", note.clip);
    json.Put("x", note.x);
    json.Put("yOffset", note.yOffset);
    json.Put("xLeft", note.xLeft);
    json.Put("xRight", note.xRight);
    json.Put("p5", note.p5);
    json.Put("p6", note.p6);
    json.Put("beamClip", note.beamClip);
    json.Put("spareClip", note.spareClip);
  });
  PutSparse(json, "Layer", report, qlm::LayerClip, [&](int64_t n) {
    json.Put("clip", qlm::LayerClip[n]);
    json.Put("x", qlm::LayerX[n]);
    json.Put("y", qlm::LayerY[n]);
    json.Put("wide", qlm::LayerWide[n]);
  });
  Put(json, "LayerList", qlm::LayerList);
  Put(json, "LineList", qlm::LineList);
}

void PutPlaces(Json& json) {
  json.Put("LenUsed", qlm::LenUsed);
  Put(json, "ScoreCountPos", qlm::ScoreCountPos);
  Put(json, "JudgePos", qlm::JudgePos);
  Put(json, "JudgeLinePos", qlm::JudgeLinePos);
  Put(json, "BombPos", qlm::BombPos);
  Put(json, "LinePos", qlm::LinePos);
  Put(json, "KeyPos", qlm::KeyPos);
  Put(json, "BlinkPos", qlm::BlinkPos);
  Put(json, "ClassPos", qlm::ClassPos);
  Put(json, "LenPos", qlm::LenPos);
  Put(json, "ScorePos", qlm::ScorePos);
  Put(json, "JPointPos", qlm::JPointPos);
  Put(json, "MaxPos", qlm::MaxPos);
  Put(json, "GaugeNumPos", qlm::GaugeNumPos);
  Put(json, "GaugePos", qlm::GaugePos);
  Put(json, "GaugeBackPos", qlm::GaugeBackPos);
  Put(json, "ExGaugePos", qlm::ExGaugePos);
  Put(json, "ExGaugeBackPos", qlm::ExGaugeBackPos);
  Put(json, "FanPos", qlm::FanPos);
  Put(json, "OptionPos", qlm::OptionPos);
  Put(json, "BpmPos", qlm::BpmPos);
  Put(json, "PlayPos1", qlm::PlayPos1);
  Put(json, "PlayFullPos", qlm::PlayFullPos);
  Put(json, "CountPos", qlm::CountPos);
  Put(json, "StagePos", qlm::StagePos);
  Put(json, "FpsPos", qlm::FpsPos);
}

void PutSingleValues(Json& json) {
  json.Put("JudgeY", qlm::JudgeY);
  json.Put("GaugeStep", qlm::GaugeStep);
  json.Put("ComboNumber", qlm::ComboNumber);
  json.Put("SysFontW", qlm::SysFontW);
  json.Put("SysFontH", qlm::SysFontH);
  json.Put("TitleChars", qlm::TitleChars);
  json.Put("NoMissClip", qlm::NoMissClip);
  json.Put("MaxComboClip", qlm::MaxComboClip);
  json.Put("PressureClip", qlm::PressureClip);
  json.Put("ComboGraphClip", qlm::ComboGraphClip);
  json.Put("ComboGraphBackClip", qlm::ComboGraphBackClip);
  Put(json, "TitleRect", qlm::TitleRect);
  Put(json, "MessageRect", qlm::MessageRect);
  Put(json, "BgaRect", qlm::BgaRect);
  json.Key("SysFont");
  PutValues(json, qlm::SysFont.begin() + 1, qlm::SysFont.end());  // the codes from 33 on
}

void PutFilesAndWarnings(Json& json, const qlm::SkinReport& report) {
  json.Key("files").BeginObject();
  for (const auto& [number, name] : report.files) json.Put(std::to_string(number), qlm::TextView(name));
  json.EndObject();
  json.Put("background", qlm::TextView(report.background));
  json.Key("warnings").BeginArray();
  for (const qlm::SkinReport::Remark& remark : CheckSkin(report)) {
    json.BeginObject();
    json.Put("line", remark.line);
    json.Put("text", qlm::TextView(remark.text));
    json.EndObject();
  }
  json.EndArray();
}

}  // namespace

int SkinCommand(Arguments& arguments) {
  StartEngine(arguments);
  if (const auto right = arguments.Number("--scratch1p")) qlm::SCRATCH1P = *right != 0;
  if (const auto right = arguments.Number("--scratch2p")) qlm::SCRATCH2P = *right != 0;
  if (const auto sides = arguments.Number("--side-count")) qlm::SideCount = static_cast<int32_t>(*sides);
  const std::vector<std::string>& files = arguments.Files();
  if (!arguments.Good()) return kWrongUsage;
  if (!CheckReadable(files[0])) return kRefused;

  // With a display the pictures are loaded too, so that it is known whether they can be.
  qlm::InitDD(qlm::DisplayOutput::kUnseen);
  qlm::CreateSurfaces();
  qlm::SkinReport report;
  qlm::loadSkin(GamePath(files[0]), false, &report);
  Json json;
  PutSprites(json, report);
  PutLanesAndLayers(json, report);
  PutPlaces(json);
  PutSingleValues(json);
  PutFilesAndWarnings(json, report);
  return Print(json, kDone);
}

}  // namespace probe

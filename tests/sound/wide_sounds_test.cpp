// The sound files of today in the wide reading: which file stands for a name, what is told, what sounds.
#include "base/paths.h"
#include "sound/buffers.h"
#include "sound/slots.h"
#include "state/chart.h"
#include "state/message.h"
#include "state/options.h"
#include "state/settings.h"
#include "tests/sound/silent_frames.h"
#include "tests/sound/sound_test.h"
#include "tools/media_files/encoded.h"

namespace qlm {
namespace {

using media::Coding;
using Lines = std::vector<Text>;

const std::vector<float> kHalf = {0.5F, 0.25F, -0.5F, -0.25F};
const Samples kHalf16 = {16384, 8192, -16384, -8192};

class WideSounds : public SoundTest {
 protected:
  WideSounds() { WideCharts = true; }

  // The path of a chart that names this sound in the folder "song".
  Text Named(TextView name) const { return Join(AppPath, u"\\song\\", name); }
  Text Found(TextView name) const {
    Text path = Named(name);
    FindWideSound(path);
    return path.substr(Len(Named(u"")));
  }
  std::string Flac() const { return media::EncodedSound(Coding::kFlac, kHalf, 1, 44100); }
  // What the buffer of a slot holds, as it sounds at full volume.
  Samples Sound(int32_t slot, size_t frames) {
    WavBuffer[slot]->Play(false);
    return Render(frames);
  }
  void Load(int32_t slot, TextView name) {
    WavFile[slot] = Named(name);
    loadwav(slot);
  }
};

TEST_F(WideSounds, TheGivenNameComesFirstAndThenTheKindsInTheirOrder) {
  EXPECT_EQ(Found(u"kick.wav"), u"kick.wav") << "nothing is there";
  const Text kinds[] = {u"kick.mp3", u"kick.opus", u"kick.flac", u"kick.ogg", u"kick.wav"};
  for (const Text& kind : kinds) {
    WriteData(Join(u"song\\", kind), "x");
    EXPECT_EQ(Found(u"kick.aac"), kind);
  }
  EXPECT_EQ(Found(u"kick.flac"), u"kick.flac");
  EXPECT_EQ(Found(u"kick"), u"kick.wav");
  WriteData(u"song\\kick.aac", "x");
  EXPECT_EQ(Found(u"kick.aac"), u"kick.aac");
}

TEST_F(WideSounds, LetterCaseAndFoldersDoNotMatter) {
  WriteData(u"song\\Snare.OGG", "x");
  WriteData(u"song\\v1.0\\low.ogg", "x");
  EXPECT_EQ(Found(u"SNARE.wav"), u"SNARE.ogg");
  EXPECT_TRUE(FileExists(Named(Found(u"SNARE.wav"))));
  EXPECT_EQ(Found(u"v1.0/low.wav"), u"v1.0/low.ogg");
  EXPECT_EQ(Found(u"v1.0/low"), u"v1.0/low.ogg");
  EXPECT_EQ(Found(u""), u"");
  EXPECT_EQ(Found(u"v1.0/"), u"v1.0/");
}

TEST_F(WideSounds, TheClassicReadingFindsWhatItAlwaysFound) {
  WideCharts = false;
  WriteData(u"song\\kick.flac", Flac());
  EXPECT_EQ(Found(u"kick.wav"), u"kick.wav");
  Load(1, u"kick.wav");
  EXPECT_EQ(log, (Lines{u"loadwav: 1", u"LoadWav:kick.wav - ERROR", u"> complete in 0 ms"}));
  EXPECT_EQ(WavBuffer[1], nullptr);
  log.clear();
  Load(2, u"kick.flac");
  EXPECT_EQ(log, (Lines{u"loadwav: 2", u"CreateSndBuf:kick.flac", u"ファイルサイズが小さすぎます",
                        u"> Err[-2005401500]: DSERR_BADFORMAT", u"> complete in 0 ms"}));
}

TEST_F(WideSounds, ALoadFillsTheSlotAndKeepsTheNameThatWasFound) {
  WriteData(u"song\\kick.flac", Flac());
  Load(31, u"kick.wav");
  EXPECT_EQ(log, (Lines{u"loadwav: 31", u"CreateSndBuf:kick.flac", u"> Decode complete in 0ms",
                        u"44100Hz 16bits 1ch 16bps 88200byte/sec 0bytes", u"> complete in 0 ms"}));
  EXPECT_EQ(WavHeldName[31], Named(u"kick.flac"));
  EXPECT_EQ(WavFile[31], Named(u"kick.flac"));
  EXPECT_EQ(WavFrequency[31], 44100);
  EXPECT_FLOAT_EQ(WavLengthMs[31], 4 / 44.1F);
  EXPECT_EQ(Sound(31, 4), kHalf16);
}

TEST_F(WideSounds, ASoundThatIsHeldIsNotLoadedAgainWhateverNameTheChartGives) {
  WriteData(u"song\\kick.flac", Flac());
  Load(1, u"kick.wav");
  const platform::SoundBuffer* const first = WavBuffer[1].get();
  log.clear();
  Load(1, u"kick.wav");
  EXPECT_EQ(log, (Lines{u"loadwav: 1 > cancelled"}));
  EXPECT_EQ(WavBuffer[1].get(), first);
}

TEST_F(WideSounds, AllKindsSound) {
  std::vector<float> tone;
  for (int i = 0; i < 4800; ++i) tone.push_back(0.5F);
  int32_t slot = 1;
  for (const Coding coding : {Coding::kVorbis, Coding::kOpus, Coding::kFlac, Coding::kWav24,
                              Coding::kWavFloat, Coding::kWavAdpcm, Coding::kWavPlain}) {
    const bool wav = coding >= Coding::kWav24 && coding <= Coding::kWavPlain;
    const Text name = Join(u"s", slot,
                           coding == Coding::kFlac   ? u".flac"
                           : coding == Coding::kOpus ? u".opus"
                           : wav                     ? u".wav"
                                                     : u".ogg");
    WriteData(Join(u"song\\", name), media::EncodedSound(coding, tone, 1, 48000));
    Load(slot, name);
    ASSERT_NE(WavBuffer[slot], nullptr) << slot;
    EXPECT_EQ(WavFrequency[slot], 48000) << slot;
    ++slot;
  }
}

TEST_F(WideSounds, Mp3GoesThroughTheDecoderThatStands) {
  WriteData(u"song\\kick.mp3", kLayer3.Times(4));
  Load(1, u"kick.wav");
  EXPECT_TRUE(Logged(u"> MP3 loading mode."));
  EXPECT_TRUE(Logged(u"acmStreamCloseに失敗\n続ける？"));
  ASSERT_NE(WavBuffer[1], nullptr);
  // In a WAV too.
  media::WavFile wrapped;
  wrapped.tag = 85;
  wrapped.data = kLayer3.Times(4);
  WriteData(u"song\\hat.wav", wrapped.Bytes());
  log.clear();
  Load(2, u"hat.wav");
  EXPECT_TRUE(Logged(u"> Format ID = 85 : MPEG file"));
  EXPECT_NE(WavBuffer[2], nullptr);
}

TEST_F(WideSounds, APlainWavSoundsAsEver) {
  WriteData(u"song\\a.wav", MonoWav({100, -200, 300}));
  Load(1, u"a.wav");
  EXPECT_EQ(Sound(1, 3), (Samples{100, -200, 300}));
  // The library wants the chunk of the format to call itself so; the game never looked.
  media::WavFile odd;
  odd.formatId = "FMT?";
  odd.data = SampleBytes({7, 8});
  WriteData(u"song\\odd.wav", odd.Bytes());
  Load(2, u"odd.wav");
  ASSERT_NE(WavBuffer[2], nullptr);
  EXPECT_EQ(Sound(2, 2), (Samples{7, 8}));
}

TEST_F(WideSounds, WhatIsWrongIsTold) {
  WriteData(u"song\\bad.ogg", "OggS" + std::string(200, 'x'));
  Load(1, u"bad.wav");
  EXPECT_EQ(log, (Lines{u"loadwav: 1", u"CreateSndBuf:bad.ogg",
                        u"# bad.ogg: it is damaged, or of a coding that is not known",
                        u"> Err[-2005401500]: DSERR_BADFORMAT", u"> complete in 0 ms"}));
  log.clear();
  WriteData(u"song\\six.wav", media::WavBytes(Samples(60), 6, 44100));
  Load(2, u"six.wav");
  EXPECT_TRUE(Logged(u"# six.wav: it has more than 2 channels"));
  EXPECT_EQ(WavBuffer[2], nullptr);
  WriteData(u"song\\none.wav", media::WavBytes({}, 1, 44100));
  Load(3, u"none.wav");
  EXPECT_TRUE(Logged(u"# none.wav: there are no samples in it"));
  log.clear();
  Load(4, u"gone.wav");
  EXPECT_EQ(log, (Lines{u"loadwav: 4", u"LoadWav:gone.wav - ERROR",
                        u"# there is none as .wav, .ogg, .flac, .opus or .mp3", u"> complete in 0 ms"}));
  log.clear();
  Load(4, u"gone.wav");
  EXPECT_EQ(log, (Lines{u"loadwav: 4 > cancelled"})) << "the disk is asked once";
}

TEST_F(WideSounds, TheLoadBudgetHoldsForThemToo) {
  LoadBudget = 1;
  WriteData(u"song\\long.flac", media::EncodedSound(Coding::kFlac, std::vector<float>(600'000), 1, 44100));
  Load(1, u"long.wav");
  EXPECT_EQ(WavBuffer[1], nullptr);
  EXPECT_TRUE(Logged(u"# over the load budget of 1 MiB: long.flac"));
}

TEST_F(WideSounds, ACourseFindsThem) {
  CourseWavFile[0][1] = Named(u"kick.wav");
  WriteData(u"song\\kick.flac", Flac());
  LoadCourseSound(0, 1);
  ASSERT_NE(CourseWavBuffer[0][1], nullptr);
  EXPECT_TRUE(CourseWavLoaded[0][1]);
}

}  // namespace
}  // namespace qlm

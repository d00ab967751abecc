// The probe's commands: what they print, what they refuse, and with which exit status.
#include "tests/tools/probe.h"

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>

#include "base/cursor.h"
#include "platform/files.h"
#include "platform/picture.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

// Two notes, a tempo change, a picture and a sound that are not there.
const std::vector<std::string> kLines = {
    "#PLAYER 1",    "#TITLE t",     "#ARTIST a",   "#GENRE g",    "#BPM 120",    "#PLAYLEVEL 4", "#RANK 1",
    "#WAV01 x.wav", "#BMP0A y.bmp", "#BPM02 60.5", "#00002:0.75", "#00011:0102", "#00103:78",    "#00218:01"};

// The places of these keys in the output, in rising order.
void ExpectKeysInOrder(const std::string& output, const std::vector<std::string>& keys) {
  size_t from = 0;
  for (const std::string& key : keys) {
    const size_t at = output.find("\n  \"" + key + "\": ", from);
    ASSERT_NE(at, std::string::npos) << key << " is missing or out of order in " << output;
    from = at + 1;
  }
  size_t count = 0;
  for (size_t at = output.find("\n  \""); at != std::string::npos; at = output.find("\n  \"", at + 1))
    ++count;
  EXPECT_EQ(count, keys.size()) << output;
}

const std::vector<std::string> kRawKeys = {"header", "uses89", "lastMeasure", "totalNotes", "objCount",
                                           "objs",   "wav",    "bmp",         "bpmTable",   "measureLen"};
const std::vector<std::string> kPreparedKeys = {
    "keySoundChanges", "keySoundCount", "lengthMs",  "bmsId",       "scoreSide",
    "gaugeGain",       "scorePerNote",  "marquee",   "curBPM",      "rawBPM",
    "pixPerMs",        "lastObjPos",    "sideCount", "judgeWindow", "historyStep"};

std::vector<std::string> Joined(std::vector<std::string> a, const std::vector<std::string>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

TEST_F(ProbeTest, ChartHasItsKeysInOrder) {
  const ProcessResult result = Probe({"chart", Chart("a.bms", kLines)});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_EQ(result.errors, "");
  ExpectKeysInOrder(result.output, Joined(Joined(kRawKeys, kPreparedKeys), {"log"}));
}

TEST_F(ProbeTest, ChartTellsWhatTheLoadLeft) {
  const std::string output = Probe({"chart", Chart("a.bms", kLines)}).output;
  EXPECT_TRUE(Holds(output, "\"bpm\": 120,\n    \"player\": 1,\n    \"playLevel\": 4,\n    \"rank\": 1,"));
  EXPECT_TRUE(Holds(output, "\"uses89\": true"));
  EXPECT_TRUE(Holds(output, "\"totalNotes\": [3, 0]"));
  EXPECT_TRUE(Holds(output, "\"objCount\": 8"));
  // Measure 0 is 144 units long: the second note moves from tick 96 to 72.
  EXPECT_TRUE(Holds(output, "[0, 72, 96, 11, 2, false, 1]"));
  EXPECT_TRUE(Holds(output, "\"wav\": {\n    \"01\": \"x.wav\"\n  }"));
  EXPECT_TRUE(Holds(output, "\"bmp\": {\n    \"0A\": \"y.bmp\"\n  }"));
  EXPECT_TRUE(Holds(output, "\"bpmTable\": {\n    \"02\": 60.5\n  }"));
  EXPECT_TRUE(Holds(output, "\"measureLen\": {\n    \"0\": 0.75,\n    \"1\": 1,"));
  EXPECT_TRUE(Holds(output, "\"gaugeGain\": [34.333332, \"Infinity\"]"));
  EXPECT_TRUE(Holds(output, "\"pixPerMs\": 0.096,"));
  EXPECT_TRUE(Holds(output, "\"judgeWindow\": [2, 4, 12, 16]"));
  EXPECT_TRUE(Holds(output, "\"marquee\": \"t / a\""));
  EXPECT_TRUE(Holds(output, "\"[BMSLoad] a.bms\",\n    \"    [BMSInit] Initializing values\""));
}

TEST_F(ProbeTest, RawStopsBehindTheReader) {
  const ProcessResult result = Probe({"chart", Chart("a.bms", kLines), "--raw"});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  ExpectKeysInOrder(result.output, Joined(kRawKeys, {"log"}));
  EXPECT_TRUE(Holds(result.output, "\"objCount\": 4"));
  EXPECT_TRUE(Holds(result.output, "\"measureLen\": {\n    \"0\": 0.75\n  }"));
}

TEST_F(ProbeTest, LoadOptionsReachTheEngine) {
  const std::string chart = Chart("a.bms", kLines);
  EXPECT_TRUE(Holds(Probe({"chart", chart, "--player-force", "3"}).output, "\"player\": 3"));
  EXPECT_TRUE(Holds(Probe({"chart", chart, "--no-wav"}).output, "\"wav\": {}"));
  EXPECT_TRUE(Holds(Probe({"chart", chart, "--no-bga"}).output, "\"bmp\": {}"));
  EXPECT_TRUE(Holds(Probe({"chart", chart, "--hazard"}).output, "\"gaugeGain\": [0.05, 0.05]"));
  EXPECT_TRUE(Holds(Probe({"chart", chart, "--preview"}).output, "[BMSPrepare] minimum: True"));
  EXPECT_TRUE(Holds(Probe({"chart", chart, "--real-hispeed", "1.5"}).output, "\"curBPM\": 180"));
  EXPECT_TRUE(Holds(Probe({"chart", chart, "--random"}).output, "<RANDOM> Randomize keymap"));
  EXPECT_TRUE(Holds(Probe({"chart", chart, "--4d", "--rnd", "0.5", "--raw"}).output,
                    "[0, 0, 0, 11, 1, false, 1.25]"));
}

TEST_F(ProbeTest, RandomNumbersComeFromTheListInTurn) {
  const std::string chart = Chart("a.bms", {"#RANDOM 4", "#IF 2", "#00111:01", "#ENDIF"});
  EXPECT_TRUE(Holds(Probe({"chart", chart, "--rnd", "0.25"}).output, "RANDOM: 2/4"));
  EXPECT_TRUE(Holds(Probe({"chart", chart, "--rnd", "0.99,0.25"}).output, "RANDOM: 4/4"));
}

TEST_F(ProbeTest, ChartsBeforeLeaveTheirTitles) {
  const std::string output =
      Probe({"chart", Chart("a.bms", {"#00111:01"}), "--before", Chart("b.bms", {"#TITLE kept"})}).output;
  EXPECT_TRUE(Holds(output, "\"title\": \"kept\""));
  EXPECT_TRUE(Holds(output, "[BMSLoad] b.bms"));
}

TEST_F(ProbeTest, MoreObjectsThanFitAreFatal) {
  const ProcessResult result = Probe({"chart", Chart("a.bms", kLines), "--num-objs", "3"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_TRUE(Holds(result.output,
                    "\"fatal\": \"this time, I need at least 4 objs. but current numObjs value is "
                    "3.\\u000d\\u000aplease check"));
  EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
}

TEST_F(ProbeTest, MissingFileIsToldInOneLine) {
  for (const std::string command : {"chart", "course", "header", "play"}) {
    const ProcessResult result = Probe({command, At("none.bms")});
    EXPECT_EQ(result.exitStatus, 1) << command;
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "qlmprobe: " + At("none.bms") + ": there is no such file\n");
  }
}

TEST_F(ProbeTest, FolderIsNoChart) {
  const ProcessResult result = Probe({"chart", SystemFolder()});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "qlmprobe: " + SystemFolder() + ": this is a folder\n");
}

TEST_F(ProbeTest, NamesInShiftJisBytesArePrintedInUtf8) {
  // 83 5C holds the byte of a "\".
  const std::string raw = SystemFolder() + "/\x83\x5C";
  fs::rename(Chart("a.bms", {"#TITLE t", "#ARTIST a", "#GENRE g", "#00011:01"}), raw + ".bms");
  EXPECT_TRUE(Holds(Probe({"check", raw + ".bms"}).output, "/ソ.bms\", "));
  EXPECT_TRUE(Holds(Probe({"frame", raw + ".bms", "--at", "0", "--out", raw}).output, "/ソ-0.png\"}"));
  EXPECT_TRUE(fs::exists(raw + "-0.png"));
}

TEST_F(ProbeTest, WrongUsageHasItsOwnStatus) {
  const std::string chart = Chart("a.bms", kLines);
  const std::vector<std::vector<std::string>> wrong = {{"wat"},
                                                       {"chart"},
                                                       {"chart", chart, chart},
                                                       {"chart", chart, "--wat"},
                                                       {"chart", chart, "--num-objs", "many"},
                                                       {"chart", chart, "--player-force", "4"},
                                                       {"chart", chart, "--rnd", "1"},
                                                       {"chart", chart, "--real-hispeed", "x"},
                                                       {"chart", chart, "--before"},
                                                       {"header"},
                                                       {"frame", chart, "--out", "x"},
                                                       {"frame", chart, "--at", "0"},
                                                       {"frame", chart, "--at", "soon", "--out", "x"},
                                                       {"audio", chart},
                                                       {"video", chart},
                                                       {"video", chart, "--out", "x", "--record", "y"},
                                                       {"play", chart, "--fps", "0"},
                                                       {"play", chart, "--set", "HiSpeed"},
                                                       {"play", chart, "--set", "HiSpeed=fast"},
                                                       {"play", chart, "--set", "Wat=1"},
                                                       {"dump", chart}};
  for (const std::vector<std::string>& words : wrong) {
    const ProcessResult result = Probe(words);
    EXPECT_EQ(result.exitStatus, 2) << testing::PrintToString(words);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
  }
}

TEST_F(ProbeTest, HelpNamesEveryCommand) {
  const ProcessResult result = Probe({"--help"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_TRUE(Holds(result.output, "Usage: qlmprobe COMMAND FILE"));
  EXPECT_TRUE(Holds(result.output, "\n  title "));
  for (const std::string command :
       {"chart", "course", "header", "play", "frame", "audio", "video", "check", "skin", "keys", "dump"}) {
    EXPECT_TRUE(Holds(result.output, "\n  " + command + " "));
    const ProcessResult own = Probe({command, "--help"});
    EXPECT_EQ(own.exitStatus, 0);
    EXPECT_TRUE(Holds(own.output, "Usage: qlmprobe " + command + " FILE"));
    EXPECT_TRUE(Holds(own.output, "\n  --log FILE "));
    EXPECT_TRUE(Holds(own.output, "Exit status: 0 done"));
  }
  EXPECT_TRUE(Holds(Probe({"chart", "--help"}).output, "\n  --before FILE "));
  EXPECT_EQ(Probe({"chart", "--help"}).output.find("--fps"), std::string::npos);
}

// The first line of what a command says of itself, which is therefore a sentence.
TEST_F(ProbeTest, HelpSaysEachCommandInOneWholeSentence) {
  std::istringstream help(Probe({"--help"}).output);
  std::string line;
  while (std::getline(help, line) && line != "Commands:") {
  }
  int commands = 0;
  for (; std::getline(help, line) && !line.empty(); ++commands) EXPECT_TRUE(line.ends_with(".")) << line;
  EXPECT_EQ(commands, 15);
}

TEST_F(ProbeTest, VersionIsTheGames) {
  const ProcessResult result = Probe({"--version"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_TRUE(result.output.starts_with("qlmprobe ")) << result.output;
}

TEST_F(ProbeTest, WrongWordsAreNamed) {
  const std::string chart = Chart("a.bms", kLines);
  const auto error = [&](std::vector<std::string> words) { return Probe(std::move(words)).errors; };
  EXPECT_EQ(qlm::Run({QLM_BINARY_DIR "/qlmprobe"}, {}, 100).errors,
            "qlmprobe: a command is missing; see qlmprobe --help\n");
  EXPECT_EQ(error({"wat"}), "qlmprobe: there is no command wat; see qlmprobe --help\n");
  EXPECT_TRUE(Holds(error({"chart"}), "FILE is required"));
  EXPECT_TRUE(Holds(error({"chart", chart, "b.bms"}), "not expected: b.bms"));
  EXPECT_TRUE(Holds(error({"chart", chart, "--wat"}), "not expected: --wat"));
  EXPECT_TRUE(Holds(error({"chart", chart, "--num-objs", "many"}),
                    "--num-objs: a whole number from 0 to 16777215 is wanted, not many"));
  EXPECT_TRUE(Holds(error({"frame", chart, "--out", "x"}), "--at is required"));
}

// What of the output cannot be written is told, and the exit status says so.
class ProbeOutputTest : public ProbeTest {
 protected:
  // Runs the probe's words in a shell, which may close its streams or lead them elsewhere.
  ProcessResult InShell(const std::string& words) const {
    return qlm::Run({"/bin/sh", "-c", QLM_BINARY_DIR "/qlmprobe " + words + " --data " + SystemFolder()}, {},
                    100);
  }
};

TEST_F(ProbeOutputTest, FullStandardOutputIsToldByTheStatus) {
  const std::string chart = Chart("a.bms", kLines);
  for (const std::string& words : {"chart " + chart, "check " + chart, std::string("--help")}) {
    const ProcessResult result = InShell(words + " > /dev/full");
    EXPECT_EQ(result.exitStatus, 1) << words;
    EXPECT_EQ(result.errors, "qlmprobe: the output cannot be written\n") << words;
  }
}

TEST_F(ProbeOutputTest, ClosedStandardOutputIsToldAndNothingGoesIntoOtherFiles) {
  const ProcessResult result =
      InShell("chart " + Chart("a.bms", kLines) + " --log " + At("log.txt") + " >&-");
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.errors, "qlmprobe: the output cannot be written: it is closed\n");
  EXPECT_FALSE(fs::exists(At("log.txt")));
}

TEST_F(ProbeOutputTest, MessagesDoNotGoIntoTheLogWhenStandardErrorIsClosed) {
  const ProcessResult result =
      InShell("chart " + Chart("a.bms", kLines) + " --num-objs 3 --log " + At("log.txt") + " 2>&-");
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(ReadBytes(platform::InnerPath(At("log.txt"))).find("qlmprobe:"), std::string::npos);
}

TEST_F(ProbeOutputTest, FilesThatCannotBeWrittenAreToldByTheStatus) {
  const std::string chart = Chart("a.bms", kLines);
  const ProcessResult log = Probe({"chart", chart, "--log", "/dev/full"});
  EXPECT_EQ(log.exitStatus, 1);
  EXPECT_EQ(log.errors, "qlmprobe: the log file cannot be written\n");
  const ProcessResult sound = Probe({"audio", chart, "--seconds", "1", "--out", "/dev/full"});
  EXPECT_EQ(sound.exitStatus, 1);
  EXPECT_EQ(sound.errors, "qlmprobe: /dev/full cannot be written\n");
  // A picture's file has a name of its own: here it leads to the full device.
  fs::create_symlink("/dev/full", At("shot-0.png"));
  const ProcessResult picture = Probe({"frame", chart, "--at", "0", "--out", At("shot")});
  EXPECT_EQ(picture.exitStatus, 1);
  EXPECT_EQ(picture.errors, "qlmprobe: " + At("shot-0.png") + " cannot be written\n");
  EXPECT_EQ(Probe({"keys", "/proc/none/k.dat", "--set", "44=11"}).exitStatus, 1);
}

TEST_F(ProbeTest, NothingIsWrittenBesideTheChart) {
  const std::string chart = Chart("s/a.bms", kLines);
  for (const std::string command : {"chart", "course", "header", "play", "check"}) Probe({command, chart});
  EXPECT_EQ(std::distance(fs::directory_iterator(At("s")), fs::directory_iterator()), 1);
  EXPECT_TRUE(fs::is_empty(At("_qlmfiles")));
}

TEST_F(ProbeTest, LogFileHoldsTheLinesOfTheRun) {
  Probe({"chart", Chart("a.bms", kLines), "--log", At("log.txt")});
  const std::string log = ReadBytes(platform::InnerPath(At("log.txt")));
  EXPECT_TRUE(log.starts_with("[BMSLoad] a.bms\n    [BMSInit] Initializing values\n")) << log;
  EXPECT_TRUE(log.ends_with("loaded.\n")) << log;
}

// Read with the chart, and when the play comes to it.
TEST_F(ProbeTest, SoundOfAnotherNameIsLoadedOnceForAPlay) {
  WriteWav("kick.mp3", {1, 2, 3});
  const std::string chart = Chart("a.bms", {"#WAV01 kick.wav", "#00111:01010101", "#00101:01010101"});
  EXPECT_TRUE(Holds(Probe({"chart", chart}).output, "\"01\": \"kick.mp3\""));
  for (const std::string mode : {"WAVLoadmode=0", "WAVLoadmode=1"}) {
    Probe({"play", chart, "--set", mode, "--log", At("log.txt")});
    const std::string log = ReadBytes(platform::InnerPath(At("log.txt")));
    const size_t first = log.find("CreateSndBuf:kick.mp3");
    EXPECT_NE(first, std::string::npos) << log;
    EXPECT_EQ(log.find("CreateSndBuf:kick.mp3", first + 1), std::string::npos) << log;
  }
}

TEST_F(ProbeTest, HeaderHasTheEntryOfTheLibrary) {
  const ProcessResult result = Probe({"header", Chart("a.bms", kLines)});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  ExpectKeysInOrder(result.output, {"title", "artist", "genre", "bpm", "player", "playLevel", "midiFile",
                                    "rank", "volWav", "total", "lengthMs", "stageFile", "numWav", "numBmp"});
  EXPECT_TRUE(Holds(result.output, "\"numWav\": 1,\n  \"numBmp\": 1\n"));
}

TEST_F(ProbeTest, TitleShowsEachStageAndBothLines) {
  const ProcessResult result = Probe({"title", "漢字 [ANOTHER]"});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  ExpectKeysInOrder(result.output, {"byDict", "byMSIME", "toNarrow", "result", "main", "sub"});
  EXPECT_TRUE(Holds(result.output, "\"byMSIME\": \"カンジ [ANOTHER]\""));
  EXPECT_TRUE(Holds(result.output, "\"toNarrow\": \"ｶﾝｼﾞ [ANOTHER]\""));
  EXPECT_TRUE(Holds(result.output, "\"result\": \"KANJI [ANOTHER]\""));
  EXPECT_TRUE(Holds(result.output, "\"main\": \"漢字\",\n  \"sub\": \"[ANOTHER]\""));
}

TEST_F(ProbeTest, TitleTakesADictionaryThatIsNamed) {
  WriteText(u"_qlmfiles\\cnvdict.txt", u"漢字\tx");
  WriteText(u"mine.txt", u"漢字\tHanzi");
  EXPECT_TRUE(Holds(Probe({"title", "漢字"}).output, "\"result\": \"KANJI\""));
  EXPECT_TRUE(Holds(Probe({"title", "漢字", "--dict", At("mine.txt")}).output, "\"result\": \"Hanzi\""));
  EXPECT_EQ(Probe({"title", "漢字", "--dict", At("none.txt")}).exitStatus, 1);
}

// As on a machine that has no dictionary of readings; the log says so once, however many titles there are.
TEST_F(ProbeTest, WithoutReadingsKanjiAreQuestionMarks) {
  const std::string chart = Chart("a.bms", {"#TITLE \x8A\xBF", "#00111:01"});
  const std::string probe = QLM_BINARY_DIR "/qlmprobe";
  const ProcessResult result =
      qlm::Run({probe, "play", chart, "--before", chart, "--data", SystemFolder(), "--log", At("log.txt")},
               {{"MECABRC", "/nowhere"}});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  const std::string log = ReadBytes(platform::InnerPath(At("log.txt")));
  EXPECT_TRUE(Holds(log, "-- RESULT:?? /\n"));
  const std::string words = "# no dictionary of readings: kanji are shown as question marks\n";
  const size_t first = log.find(words);
  EXPECT_NE(first, std::string::npos) << log;
  EXPECT_EQ(log.find(words, first + 1), std::string::npos) << log;
}

TEST_F(ProbeTest, CourseJoinsItsSongs) {
  const ProcessResult result =
      Probe({"course", Chart("a.bms", kLines), Chart("b.bms", {"#BPM 90", "#00111:01"})});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  ExpectKeysInOrder(result.output, Joined(Joined(kRawKeys, kPreparedKeys), {"log", "courseSongs"}));
  EXPECT_TRUE(Holds(result.output,
                    "{\"rank\": 1, \"playLevel\": 4, \"bpm\": 120},\n"
                    "    {\"rank\": 2, \"playLevel\": 3, \"bpm\": 90}\n"));
  EXPECT_TRUE(Holds(result.output, "\"marquee\": \"COURSE MODE!\""));
}

TEST_F(ProbeTest, CoursePrintsTheFilesOfItsLastSong) {
  const std::string output = Probe({"course", Chart("a/a.bms", {"#WAV01 first.wav", "#BMP02 first.bmp"}),
                                    Chart("b/b.bms", {"#WAV0a sub\\last.wav", "#BMPFF last.bmp"})})
                                 .output;
  EXPECT_TRUE(Holds(output, "\"wav\": {\n    \"0A\": \"sub\\\\last.wav\"\n  }"));
  EXPECT_TRUE(Holds(output, "\"bmp\": {\n    \"FF\": \"last.bmp\"\n  }"));
}

TEST_F(ProbeTest, RawCourseStopsBehindTheReader) {
  const ProcessResult result = Probe({"course", Chart("a.bms", {"#00011:01"}), "--raw"});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  ExpectKeysInOrder(result.output, Joined(kRawKeys, {"log", "courseSongs"}));
  // Neither bar lines nor an order yet: the note, the song's tempo, its marker.
  EXPECT_TRUE(Holds(result.output,
                    "\"objs\": [\n"
                    "    [2, 384, 0, 11, 1, false, 1],\n"
                    "    [2, 384, 0, 3, 120, false, 0],\n"
                    "    [1, 192, 0, -2, 0, false, 0]\n"
                    "  ]"));
}

TEST_F(ProbeTest, PlayHasItsKeysInOrder) {
  const ProcessResult result = Probe({"play", Chart("a.bms", kLines)});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  ExpectKeysInOrder(result.output, {"judgements", "counts", "combo", "maxCombo", "gauge", "score", "jpts",
                                    "jptsMax", "class", "exPts", "playFailed", "playCleared", "endClock",
                                    "starts", "bpmLog", "gaugeHistory", "posSamples"});
}

TEST_F(ProbeTest, PlayPrintsEachJudgement) {
  // 0.096 units a millisecond: each of the three notes falls on a turn.
  const std::string output =
      Probe(
          {"play", Chart("a.bms", {"#BPM 120", "#RANK 2", "#00011:0102", "#00112:00010000"}), "--fps", "10"})
          .output;
  EXPECT_TRUE(Holds(output,
                    "{\"turn\": 0, \"clock\": 0, \"playPos\": 0, \"obj\": 1, \"channel\": 11, \"pos\": 0, "
                    "\"delta_used\": 0, \"grade\": 4, \"tooEarly\": false, \"side\": 0}"))
      << output;
  EXPECT_TRUE(Holds(output, "\"counts\": [\n    [3, 0, 0, 0, 0],")) << output;
  EXPECT_TRUE(Holds(output, "\"class\": 0,"));
  EXPECT_TRUE(Holds(output, "\"exPts\": 6,"));
}

TEST_F(ProbeTest, NotesThatNobodyPressesAreMissed) {
  WriteData(u"none.txt", "");
  const std::string output =
      Probe({"play", Chart("a.bms", {"#BPM 120", "#00011:01", "#00211:01"}), "--events", At("none.txt")})
          .output;
  EXPECT_TRUE(Holds(output, "\"delta_used\": 48, \"grade\": 0, \"tooEarly\": false, \"side\": 0}")) << output;
  EXPECT_TRUE(Holds(output, "\"class\": 6,"));
}

TEST_F(ProbeTest, MachineStartsEachSoundInItsTurn) {
  // 120 beats a minute: a measure lasts 2000 ms, and the second half of the first begins at 1000 ms.
  const std::string chart = Chart("a.bms", {"#BPM 120", "#00011:0102", "#00001:03"});
  const std::string at60 = Probe({"play", chart}).output;
  EXPECT_TRUE(Holds(at60, "\"starts\": [\n    [0, "));
  EXPECT_TRUE(Holds(at60, "    [1000, 2]\n  ]"));
  // At 7 turns a second the first turn at or behind 1000 ms is number 7.
  EXPECT_TRUE(Holds(Probe({"play", chart, "--fps", "7"}).output, "    [1000, 2]\n  ]"));
  // At 3 turns a second turn 3 happens at 1000 ms, turn 2 at 666.
  EXPECT_TRUE(Holds(Probe({"play", chart, "--fps", "3"}).output, "    [1000, 2]\n  ]"));
}

TEST_F(ProbeTest, TurnsHappenAtWholeMillisecondsRoundedDown) {
  // Each 50th turn is told; 50 turns at 60 a second take 833.33 ms.
  const std::string output = Probe({"play", Chart("a.bms", {"#BPM 120", "#00211:01"})}).output;
  EXPECT_TRUE(Holds(output, "\"posSamples\": [\n    [0, 0],\n    [833, 79.968],\n    [1666, 159.936],\n"));
}

TEST_F(ProbeTest, TempoChangesAreTold) {
  // The tempo object lies at 192 units, which 120 beats a minute reach at 2000 ms.
  const std::string output = Probe({"play", Chart("a.bms", {"#BPM 120", "#00103:F0", "#00211:01"})}).output;
  EXPECT_TRUE(Holds(output, "\"bpmLog\": [\n    [2000, 240, -192]\n  ]"));
}

TEST_F(ProbeTest, PlayOfOneChartIsTheSameEveryTime) {
  const std::string chart = Chart("a.bms", {"#BPM 177.7", "#00011:01010001", "#00103:B2", "#00111:01"});
  const std::vector<std::string> play = {"play", chart, "--random", "--set", "RandomHiSpeed=True"};
  const std::string once = Probe(play).output;
  EXPECT_FALSE(once.empty());
  EXPECT_EQ(Probe(play).output, once);
}

TEST_F(ProbeTest, TurnsRunFromOneToAThousandASecond) {
  // The second note lies at 96 units, which 144 beats a minute reach at 833.33 ms.
  const std::string chart = Chart("a.bms", {"#BPM 144", "#00011:0102"});
  EXPECT_TRUE(Holds(Probe({"play", chart, "--fps", "1000"}).output, "    [834, 2]\n  ]"));
  EXPECT_TRUE(Holds(Probe({"play", chart, "--fps", "1"}).output, "    [1000, 2]\n  ]"));
}

TEST_F(ProbeTest, StandingChartIsStoppedByItsLimit) {
  const std::string chart = Chart("a.bms", {"#BPM 120", "#00011:0102"});
  const ProcessResult result = Probe({"play", chart, "--real-hispeed", "0", "--limit", "3000"});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "\"playCleared\": false,"));
}

TEST_F(ProbeTest, EventsFileTakesTheMachinesHandsAway) {
  WriteData(u"none.txt", "");
  const std::string chart = Chart("a.bms", {"#BPM 120", "#00011:0102", "#00001:03"});
  const ProcessResult result = Probe({"play", chart, "--events", At("none.txt")});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "\"starts\": [\n    [0, 3]\n  ]"));
  EXPECT_TRUE(Holds(Probe({"play", chart, "--events", At("none.txt"), "--set", "DEMOMode=True"}).output,
                    "[1000, 2]"));
}

TEST_F(ProbeTest, EscHeldEndsThePlay) {
  // Served in the turn at 100 ms, it has been held for more than 500 ms in the turn at 616 ms; the fade of
  // more than 200 ms is over in the turn at 833 ms.
  WriteData(u"esc.txt", "100 down 1\r\n\r\n2000 up 1\n");
  const ProcessResult result =
      Probe({"play", Chart("a.bms", {"#BPM 60", "#00911:01"}), "--events", At("esc.txt")});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "\"playCleared\": false,\n  \"endClock\": 833,"));
}

TEST_F(ProbeTest, EscReleasedInTimeDoesNothing) {
  WriteData(u"esc.txt", "100 down 1\n590 up 1\n");
  const std::string output =
      Probe({"play", Chart("a.bms", {"#BPM 240", "#00111:01"}), "--events", At("esc.txt")}).output;
  EXPECT_TRUE(Holds(output, "\"playCleared\": true"));
}

TEST_F(ProbeTest, ShiftWithEscStopsAtOnce) {
  WriteData(u"esc.txt", "50 down 42\n100 down 1\n");
  const std::string output =
      Probe({"play", Chart("a.bms", {"#BPM 60", "#00911:01"}), "--events", At("esc.txt")}).output;
  EXPECT_TRUE(Holds(output, "\"playCleared\": false,\n  \"endClock\": 100,"));
}

TEST_F(ProbeTest, EventsNeedNotStandInTheOrderOfTheirTimes) {
  WriteData(u"esc.txt", "100 down 1\n2000 up 1\n");
  WriteData(u"turned.txt", "9000000000000000000 up 44\n2000 up 1\n100 down 1\n");
  const std::string chart = Chart("a.bms", {"#BPM 60", "#00911:01"});
  EXPECT_EQ(Probe({"play", chart, "--events", At("turned.txt")}).output,
            Probe({"play", chart, "--events", At("esc.txt")}).output);
}

TEST_F(ProbeTest, EventsOfOneTurnAreServedInTheOrderOfTheFile) {
  // Both in the turn at 1000 ms, the one before it being at 983 ms.
  WriteData(u"two.txt", "1000 down 45\n990 down 44\n");
  const std::string chart = Chart("a.bms", {"#BPM 240", "#00111:01", "#00113:02"});
  EXPECT_TRUE(Holds(Probe({"play", chart, "--events", At("two.txt")}).output,
                    "\"starts\": [\n    [1000, 2],\n    [1000, 1]\n  ]"));
}

TEST_F(ProbeTest, EventsFilesThatCannotBeReadAreRefused) {
  const std::string chart = Chart("a.bms", kLines);
  for (const std::string text : {"100 push 1\n", "x down 1\n", "1 down 401\n", "1 down 1 2\n", "1 down\n"}) {
    WriteData(u"bad.txt", "0 up 1\n" + text);
    const ProcessResult result = Probe({"play", chart, "--events", At("bad.txt")});
    EXPECT_EQ(result.exitStatus, 1) << text;
    EXPECT_TRUE(Holds(result.errors, "line 2 is not"));
  }
  EXPECT_EQ(Probe({"play", chart, "--events", At("missing.txt")}).exitStatus, 1);
}

TEST_F(ProbeTest, LimitStopsAPlay) {
  const std::string output =
      Probe({"play", Chart("a.bms", {"#BPM 60", "#00911:01"}), "--limit", "500"}).output;
  EXPECT_TRUE(Holds(output, "\"endClock\": 500,"));
}

TEST_F(ProbeTest, PreviewLoadIsPlayedToItsEnd) {
  const ProcessResult result = Probe({"play", Chart("a.bms", {"#BPM 240", "#00111:01"}), "--preview"});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "\"playCleared\": true"));
}

TEST_F(ProbeTest, FramesAreSavedAsPictures) {
  WriteBmp("p.bmp", 256, 256);
  const std::string chart = Chart("a.bms", {"#BPM 120", "#BMP01 p.bmp", "#00004:01", "#00111:01"});
  const ProcessResult result = Probe({"frame", chart, "--at", "510,-300,99999", "--out", At("f")});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  // The last turn before 510 ms is number 30; the last of the pre-roll up to -300 ms is number -18. The bar
  // line of measure 2 is passed at 4000 ms, the fade begins a turn later and is over behind 200 ms more.
  EXPECT_TRUE(Holds(result.output, "{\"at\": -300, \"turn\": -300, \"file\": \"" + At("f--300.png") + "\"}"));
  EXPECT_TRUE(Holds(result.output, "{\"at\": 510, \"turn\": 500, \"file\": \"" + At("f-510.png") + "\"}"));
  EXPECT_TRUE(Holds(result.output, "{\"at\": 99999, \"turn\": 4233,"));
  const std::string png = ReadBytes(platform::InnerPath(At("f-510.png")));
  const platform::SurfacePtr picture =
      platform::DecodePicture({reinterpret_cast<const unsigned char*>(png.data()), png.size()});
  ASSERT_NE(picture, nullptr);
  EXPECT_EQ(picture->Width(), 640);
  EXPECT_EQ(picture->Height(), 480);
}

TEST_F(ProbeTest, MomentsBeforeThePreRollHaveNoFrame) {
  const ProcessResult result = Probe({"frame", Chart("a.bms", kLines), "--at", "-1001", "--out", At("f")});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_TRUE(Holds(result.output, "\"frames\": []"));
}

// The samples of the left channel of a WAV file that the probe wrote.
std::vector<int16_t> LeftSamples(const std::string& wav) {
  Cursor cursor(wav);
  cursor.Skip(44);
  std::vector<int16_t> samples;
  while (cursor.Left() >= 4) {
    samples.push_back(static_cast<int16_t>(cursor.U16()));
    cursor.Skip(2);
  }
  return samples;
}

TEST_F(ProbeTest, AudioStartsEachSoundOnTheSampleOfItsTurn) {
  WriteWav("x.wav", std::vector<int16_t>(441, 20000));
  const std::string chart = Chart("a.bms", {"#BPM 120", "#WAV01 x.wav", "#00011:0001"});
  const ProcessResult result = Probe({"audio", chart, "--out", At("o.wav")});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  ExpectKeysInOrder(result.output, {"length", "peak", "starts"});
  EXPECT_TRUE(Holds(result.output, "\"starts\": [\n    [1000, 1]\n  ]"));
  const std::vector<int16_t> samples = LeftSamples(ReadBytes(platform::InnerPath(At("o.wav"))));
  ASSERT_GT(samples.size(), 44600U);
  EXPECT_EQ(samples[44099], 0);
  EXPECT_GT(samples[44200], 1000);
  EXPECT_EQ(samples[44600], 0);
}

TEST_F(ProbeTest, FirstSampleOfASoundIsThatOfItsTurnRoundedDown) {
  // 64 of 192 units at 144 beats a minute are 555.6 ms: turn 34, at 566 ms, and 566 * 44.1 is 24960.6.
  WriteWav("x.wav", std::vector<int16_t>(441, 20000));
  const std::string chart = Chart("a.bms", {"#BPM 144", "#WAV01 x.wav", "#00011:000100"});
  EXPECT_TRUE(Holds(Probe({"audio", chart, "--out", At("o.wav")}).output, "[566, 1]\n"));
  EXPECT_TRUE(Holds(Probe({"play", chart}).output, "[566, 1]\n"));
  const std::vector<int16_t> samples = LeftSamples(ReadBytes(platform::InnerPath(At("o.wav"))));
  ASSERT_GT(samples.size(), 25402U);
  EXPECT_EQ(samples[24959], 0);
  // 20000 turned down by 500 hundredths of a decibel: 20000 * 10 ^ -0.25 is 11246.8.
  EXPECT_EQ(samples[24960], 11247);
  EXPECT_EQ(samples[25400], 11247);
  EXPECT_EQ(samples[25401], 0);
}

TEST_F(ProbeTest, AudioStopsAfterTheSecondsAskedFor) {
  const std::string chart = Chart("a.bms", {"#BPM 60", "#00911:01"});
  const ProcessResult result = Probe({"audio", chart, "--out", At("o.wav"), "--seconds", "2"});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "\"length\": 2,"));
  EXPECT_EQ(LeftSamples(ReadBytes(platform::InnerPath(At("o.wav")))).size(), 88200U);
}

TEST_F(ProbeTest, AudioOfOneChartIsTheSameEveryTime) {
  WriteWav("x.wav", std::vector<int16_t>(2000, 9000));
  const std::string chart = Chart("a.bms", {"#BPM 177.7", "#WAV01 x.wav", "#00011:01010001", "#00101:01"});
  Probe({"audio", chart, "--out", At("a.wav")});
  Probe({"audio", chart, "--out", At("b.wav")});
  EXPECT_EQ(ReadBytes(platform::InnerPath(At("a.wav"))), ReadBytes(platform::InnerPath(At("b.wav"))));
}

TEST_F(ProbeTest, NewKeyFileStartsFromTheDefaultKeys) {
  const ProcessResult result =
      Probe({"keys", At("k.dat"), "--set", "260=7", "--set", "44=12", "--set", "31=0"});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  ExpectKeysInOrder(result.output, {"functions", "unknown"});
  EXPECT_TRUE(Holds(result.output, "{\"code\": 11, \"inputs\": [], \"text\": \"11\\u0009\"}"));
  EXPECT_TRUE(Holds(result.output, "{\"code\": 12, \"inputs\": [44], \"text\": \"12\\u0009[44]\"}"));
  EXPECT_TRUE(Holds(result.output, "{\"code\": 16, \"inputs\": [42, 57], \"text\": \"16\\u0009[42][57]\"}"));
  EXPECT_TRUE(Holds(result.output, "{\"code\": 7, \"inputs\": [260], \"text\": \"07→\\u0009[260]\"}"));
  EXPECT_EQ(ReadBytes(platform::InnerPath(At("k.dat"))).size(), 802U);
  EXPECT_EQ(Probe({"keys", At("k.dat")}).output, result.output);
}

TEST_F(ProbeTest, KeyFileIsChangedInItsPlace) {
  Probe({"keys", At("k.dat"), "--set", "260=7"});
  const std::string output = Probe({"keys", At("k.dat"), "--set", "261=7"}).output;
  EXPECT_TRUE(Holds(output, "\"07→\\u0009[260][261]\""));
}

TEST_F(ProbeTest, ChartsOfMoreThan256MiBAreRefused) {
  const std::string chart = Chart("a.bms", {"#BPM 240", "#00111:01"});
  std::filesystem::resize_file(chart, (256U << 20) + 1);
  for (const char* const command : {"chart", "check", "header", "play"}) {
    const ProcessResult result = Probe({command, chart});
    EXPECT_EQ(result.exitStatus, 1) << command;
    EXPECT_EQ(result.errors, "qlmprobe: " + chart + ": a chart of more than 256 MiB is refused\n") << command;
  }
}

TEST_F(ProbeTest, FunctionsStandInTheOrderOfTheList) {
  const std::string output = Probe({"keys", At("k.dat"), "--set", "260=7"}).output;
  size_t from = 0;
  for (const int code :
       {11, 12, 13, 14, 15, 16, 17, 18, 19, 21, 22, 23, 24, 25, 26, 27, 28, 29, 1, 2, 3, 4, 5, 6, 7, 8}) {
    const size_t at = output.find("{\"code\": " + std::to_string(code) + ",", from);
    ASSERT_NE(at, std::string::npos) << code;
    from = at;
  }
}

TEST_F(ProbeTest, KeyFileThatCannotBeReadOrWrittenIsRefused) {
  EXPECT_EQ(Probe({"keys", At("none.dat")}).exitStatus, 1);
  EXPECT_EQ(Probe({"keys", SystemFolder(), "--set", "44=11"}).exitStatus, 1);
  EXPECT_EQ(Probe({"keys", At("no/such/k.dat"), "--set", "44=11"}).exitStatus, 1);
  for (const std::string set : {"44", "0=11", "401=11", "44=9", "44=10", "44=20", "44=30", "44=-1", "x=11"}) {
    EXPECT_EQ(Probe({"keys", At("k.dat"), "--set", set}).exitStatus, 2) << set;
  }
  EXPECT_EQ(Probe({"keys"}).exitStatus, 2);
}

TEST_F(ProbeTest, DumpOfAKeyFileIsItsKeys) {
  Probe({"keys", At("qlm_keycnf.dat"), "--set", "300=8"});
  const ProcessResult result = Probe({"dump", At("qlm_keycnf.dat")});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_EQ(result.output, Probe({"keys", At("qlm_keycnf.dat")}).output);
  WriteData(u"odd\\qlm_keycnf.dat", std::string("\0\0\x63\0\xFF\xFF", 6));
  EXPECT_TRUE(Holds(Probe({"dump", At("odd/qlm_keycnf.dat")}).output,
                    "\"unknown\": [\n    [1, 99],\n    [2, -1]\n  ]"));
}

TEST_F(ProbeTest, HandsPlayByTheDefaultKeysOrByThoseOfAFile) {
  // A measure a second: lane 1 at 1 s, lane 2 at 2 s, both in turns of 60 a second.
  const std::string chart = Chart("a.bms", {"#BPM 240", "#RANK 3", "#00111:01", "#00212:02", "#00401:01"});
  WriteData(u"hands.txt", "1000 down 44\n1100 up 44\n2000 down 31\n2100 up 31\n");
  WriteData(u"crossed.txt", "1000 down 31\n1100 up 31\n2000 down 44\n2100 up 44\n");
  Probe({"keys", At("k.dat"), "--set", "44=12", "--set", "31=11"});
  const auto perfect = [&](const std::string& hands, std::vector<std::string> more) {
    std::vector<std::string> words = {"play", chart, "--events", At(hands)};
    words.insert(words.end(), more.begin(), more.end());
    return Probe(words).output.find("\"counts\": [\n    [2, 0, 0, 0, 0]") != std::string::npos;
  };
  const std::vector<std::string> keyFile = {"--set", "keys=" + At("k.dat")};
  EXPECT_TRUE(perfect("hands.txt", {}));
  EXPECT_FALSE(perfect("crossed.txt", {}));
  EXPECT_TRUE(perfect("crossed.txt", keyFile));
  EXPECT_FALSE(perfect("hands.txt", keyFile));
  EXPECT_EQ(Probe({"play", chart, "--set", "keys=" + At("none.dat")}).exitStatus, 1);
}

TEST_F(ProbeTest, DumpTellsWhatTheGameTakesFromItsSettings) {
  WriteText(u"_qlmfiles\\qlm_conf.ini",
            u"[Setting]\r\nHiSpeed=2.5\r\nSleep=abc\r\nSCRATCH1P=1\r\nMine=x\r\n[MainForm]\r\nLeft=3\r\n"
            u"[quillmarch]\r\nLoadBudget=9\r\n");
  const ProcessResult result = Probe({"dump", At("_qlmfiles/qlm_conf.ini")});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  ExpectKeysInOrder(result.output, {"settings", "absent", "refused", "unknown"});
  EXPECT_TRUE(Holds(result.output, "[\"Setting\", \"HiSpeed\", 2.5]"));
  EXPECT_TRUE(Holds(result.output, "[\"Setting\", \"SCRATCH1P\", true]"));
  EXPECT_TRUE(Holds(result.output, "[\"Setting\", \"CourseLoadMode\", 1]"));
  EXPECT_TRUE(Holds(result.output, "\"refused\": [\n    [\"Setting\", \"Sleep\"]\n  ]"));
  EXPECT_TRUE(Holds(result.output, "\"unknown\": [\n    [\"Setting\", \"Mine\", \"x\"]\n  ]"));
}

}  // namespace
}  // namespace qlm

// The probe's words and its commands that load charts: what they print, what they refuse, and with which exit
// status.
#include "tests/tools/probe.h"

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>

#include "platform/files.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

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
  const ProcessResult result = Probe({"chart", Chart("a.bms", kSmallChart)});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_EQ(result.errors, "");
  ExpectKeysInOrder(result.output, Joined(Joined(kRawKeys, kPreparedKeys), {"log"}));
}

TEST_F(ProbeTest, ChartTellsWhatTheLoadLeft) {
  const std::string output = Probe({"chart", Chart("a.bms", kSmallChart)}).output;
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
  const ProcessResult result = Probe({"chart", Chart("a.bms", kSmallChart), "--raw"});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  ExpectKeysInOrder(result.output, Joined(kRawKeys, {"log"}));
  EXPECT_TRUE(Holds(result.output, "\"objCount\": 4"));
  EXPECT_TRUE(Holds(result.output, "\"measureLen\": {\n    \"0\": 0.75\n  }"));
}

TEST_F(ProbeTest, LoadOptionsReachTheEngine) {
  const std::string chart = Chart("a.bms", kSmallChart);
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
  const ProcessResult result = Probe({"chart", Chart("a.bms", kSmallChart), "--num-objs", "3"});
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
  const std::string chart = Chart("a.bms", kSmallChart);
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
  const std::string chart = Chart("a.bms", kSmallChart);
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
  const std::string chart = Chart("a.bms", kSmallChart);
  for (const std::string& words : {"chart " + chart, "check " + chart, std::string("--help")}) {
    const ProcessResult result = InShell(words + " > /dev/full");
    EXPECT_EQ(result.exitStatus, 1) << words;
    EXPECT_EQ(result.errors, "qlmprobe: the output cannot be written\n") << words;
  }
}

TEST_F(ProbeOutputTest, ClosedStandardOutputIsToldAndNothingGoesIntoOtherFiles) {
  const ProcessResult result =
      InShell("chart " + Chart("a.bms", kSmallChart) + " --log " + At("log.txt") + " >&-");
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.errors, "qlmprobe: the output cannot be written: it is closed\n");
  EXPECT_FALSE(fs::exists(At("log.txt")));
}

TEST_F(ProbeOutputTest, MessagesDoNotGoIntoTheLogWhenStandardErrorIsClosed) {
  const ProcessResult result =
      InShell("chart " + Chart("a.bms", kSmallChart) + " --num-objs 3 --log " + At("log.txt") + " 2>&-");
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(ReadBytes(platform::InnerPath(At("log.txt"))).find("qlmprobe:"), std::string::npos);
}

TEST_F(ProbeOutputTest, FilesThatCannotBeWrittenAreToldByTheStatus) {
  const std::string chart = Chart("a.bms", kSmallChart);
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
  const std::string chart = Chart("s/a.bms", kSmallChart);
  for (const std::string command : {"chart", "course", "header", "play", "check"}) Probe({command, chart});
  EXPECT_EQ(std::distance(fs::directory_iterator(At("s")), fs::directory_iterator()), 1);
  EXPECT_TRUE(fs::is_empty(At("_qlmfiles")));
}

TEST_F(ProbeTest, LogFileHoldsTheLinesOfTheRun) {
  Probe({"chart", Chart("a.bms", kSmallChart), "--log", At("log.txt")});
  const std::string log = ReadBytes(platform::InnerPath(At("log.txt")));
  EXPECT_TRUE(log.starts_with("[BMSLoad] a.bms\n    [BMSInit] Initializing values\n")) << log;
  EXPECT_TRUE(log.ends_with("loaded.\n")) << log;
}

TEST_F(ProbeTest, HeaderHasTheEntryOfTheLibrary) {
  const ProcessResult result = Probe({"header", Chart("a.bms", kSmallChart)});
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
      Probe({"course", Chart("a.bms", kSmallChart), Chart("b.bms", {"#BPM 90", "#00111:01"})});
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

TEST_F(ProbeTest, ChartsOfMoreThan256MiBAreRefused) {
  const std::string chart = Chart("a.bms", {"#BPM 240", "#00111:01"});
  std::filesystem::resize_file(chart, (256U << 20) + 1);
  for (const char* const command : {"chart", "check", "header", "play"}) {
    const ProcessResult result = Probe({command, chart});
    EXPECT_EQ(result.exitStatus, 1) << command;
    EXPECT_EQ(result.errors, "qlmprobe: " + chart + ": a chart of more than 256 MiB is refused\n") << command;
  }
}

}  // namespace
}  // namespace qlm

// Line by line: orders stand at the line's beginning, music behind blanks belongs to the order above it.
#include "sections.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <utility>

#include "code_page.h"
#include "strokes.h"

namespace assetmaker {
namespace {

constexpr std::string_view blanks = " \t";
constexpr int beat = wholeNote / 4;
// What a chart can say of a tempo in one cell, and of a song in its measure numbers.
constexpr double fastest = 255;
constexpr std::size_t mostBars = 999;

std::vector<std::string_view> WordsOf(std::string_view line) {
  std::vector<std::string_view> words;
  while (true) {
    line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
    if (line.empty()) return words;
    words.push_back(line.substr(0, line.find_first_of(blanks)));
    line.remove_prefix(words.back().size());
  }
}

template <typename T, std::size_t N>
using Names = std::array<std::pair<std::string_view, T>, N>;

template <typename T, std::size_t N>
std::optional<T> Named(const Names<T, N>& names, std::string_view name) {
  for (const auto& [text, value] : names) {
    if (text == name) return value;
  }
  return std::nullopt;
}

constexpr Names<Role, 13> roleNames = {{{"melody", Role::melody},
                                        {"harmony", Role::harmony},
                                        {"bells", Role::bells},
                                        {"chords", Role::chords},
                                        {"pad", Role::pad},
                                        {"bass", Role::bass},
                                        {"field", Role::field},
                                        {"low-drum", Role::lowDrum},
                                        {"metal", Role::metal},
                                        {"brush", Role::brush},
                                        {"pen", Role::pen},
                                        {"tap", Role::tap},
                                        {"scratch", Role::scratch}}};

constexpr Names<Reading, 4> readings = {{{"notes", Reading::notes},
                                         {"chords", Reading::chords},
                                         {"struck", Reading::struck},
                                         {"broken", Reading::broken}}};

constexpr Names<Keep, 5> keeps = {{{"all", Keep::all},
                                   {"eighths", Keep::eighths},
                                   {"quarters", Keep::quarters},
                                   {"halves", Keep::halves},
                                   {"accents", Keep::accents}}};

constexpr Names<Fingering, 3> fingerings = {
    {{"contour", Fingering::contour}, {"rhythm", Fingering::rhythm}, {"turntable", Fingering::turntable}}};

// Channels of a chart.
constexpr Names<int, 3> pictureChannels = {{{"base", 4}, {"miss", 6}, {"layer", 7}}};

const Hand fiveKeys = {{11, 12, 13, 14, 15}, 16};
const Hand sevenKeys = {{11, 12, 13, 14, 15, 18, 19}, 16};
const Hand rightHand = {{21, 22, 23, 24, 25, 28, 29}, 26};

template <typename T>
std::optional<T> Number(std::string_view word, T least, T most) {
  T number{};
  const char* const end = word.data() + word.size();
  const auto [stop, error] = std::from_chars(word.data(), end, number);
  const bool inRange = number >= least && number <= most;  // what is no number is in no range
  if (error != std::errc() || stop != end || !inRange) return std::nullopt;
  return number;
}

std::optional<int> Hexadecimal(std::string_view word) {
  int number = 0;
  const char* const end = word.data() + word.size();
  const auto [stop, error] = std::from_chars(word.data(), end, number, 16);
  return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

std::string Quoted(std::string_view word) { return '"' + std::string(word) + '"'; }

class Reader {
 public:
  explicit Reader(ScoreError& error) : error_(error) {}

  // `line` without its line end. False when it is wrong.
  bool Take(std::string_view line) {
    ++line_;
    const std::size_t start = line.find_first_not_of(blanks);
    // Lines that say nothing count too, so that a place in the music tells its line.
    const bool silent = start == std::string_view::npos || line[start] == '#';
    if (inChart_ && silent) return true;
    if (inChart_ && start > 0) return TakeChartLine(WordsOf(line));
    if (silent || start > 0) return TakeMusic(silent ? std::string_view() : line);
    music_ = nullptr;
    inChart_ = false;
    return TakeOrder(WordsOf(line));
  }

  // Behind the last line.
  bool Finish() {
    if (sections_.empty()) return Fail("there is no section");
    return CloseSection() && ChartsNameSections();
  }

  SongText Song() && { return {std::move(head_), std::move(sections_)}; }

 private:
  using Words = std::vector<std::string_view>;

  bool Fail(std::string message) { return FailAt(line_, std::move(message)); }
  bool FailAt(int line, std::string message) {
    error_ = {line, std::move(message)};
    return false;
  }

  bool TakeMusic(std::string_view line) {
    if (music_ == nullptr) return line.empty() || Fail("this music belongs to no line, part or strokes");
    if (music_->firstLine == 0) music_->firstLine = line_;
    music_->text.append(line).append("\n");
    return true;
  }

  bool TakeOrder(const Words& words) {
    if (words[0] == "title") return TakeText(words, head_.title);
    if (words[0] == "genre") return TakeText(words, head_.genre);
    if (words[0] == "stage") return TakeText(words, head_.stageFile);
    if (words[0] == "sounds") return TakeSounds(words);
    if (words[0] == "level") return TakeLevel(words);
    if (words[0] == "picture") return TakePicture(words);
    if (words[0] == "chart") return TakeChart(words);
    if (words[0] == "line") return TakeLine(words);
    if (words[0] == "section") return TakeSection(words);
    const bool ofSection = words[0] == "beats" || words[0] == "tempo" || words[0] == "part" ||
                           words[0] == "strokes" || words[0] == "show";
    if (!ofSection) return Fail("no order is called " + Quoted(words[0]));
    if (sections_.empty()) return Fail(Quoted(words[0]) + " stands before the first section");
    if (words[0] == "beats") return TakeBeats(words);
    if (words[0] == "tempo") return TakeTempo(words);
    if (words[0] == "part") return TakePart(words);
    if (words[0] == "show") return TakeShow(words);
    return TakeStrokes(words);
  }

  bool TakeText(const Words& words, std::string& text) {
    if (words.size() != 2) return Fail("behind " + Quoted(words[0]) + " stands one word");
    const auto converted = InCodePage932(words[1]);
    if (!converted) return Fail(Quoted(words[1]) + " has letters that a chart cannot hold");
    text = *converted;
    return true;
  }

  bool TakeSounds(const Words& words) {
    if (words.size() != 2 || (words[1] != "wav" && words[1] != "mp3"))
      return Fail("behind sounds stands wav or mp3");
    head_.asMp3 = words[1] == "mp3";
    return true;
  }

  bool TakeLevel(const Words& words) {
    const auto level = words.size() == 2 ? Number(words[1], -20.0, 20.0) : std::nullopt;
    if (!level) return Fail("behind level stands a number of decibels from -20 to 20");
    head_.level = *level;
    return true;
  }

  // One picture, or a row of them: "page0.bmp to 16" are page0.bmp to page16.bmp, in one slot after another.
  bool TakePicture(const Words& words) {
    const bool row = words.size() == 5 && words[3] == "to";
    if (words.size() != 3 && !row)
      return Fail("it is written: picture SLOT FILE, or picture SLOT FILE to NUMBER");
    const auto slot = Hexadecimal(words[1]);
    if (!slot || *slot < 1 || *slot > 255) return Fail(Quoted(words[1]) + " is no slot from 01 to FF");
    if (!row) return PutPicture(*slot, std::string(words[2]));
    const std::size_t dot = std::min(words[2].rfind('.'), words[2].size());
    const std::size_t digits = words[2].substr(0, dot).find_last_not_of("0123456789") + 1;
    const auto first = Number(words[2].substr(digits, dot - digits), 0, 254);
    const auto last = first ? Number(words[4], *first, *first + 255 - *slot) : std::nullopt;
    if (!last) return Fail("such a row of pictures does not fit");
    for (int n = *first; n <= *last; ++n) {
      const std::string file =
          std::string(words[2].substr(0, digits)) + std::to_string(n) + std::string(words[2].substr(dot));
      if (!PutPicture(*slot + n - *first, file)) return false;
    }
    return true;
  }

  bool PutPicture(int slot, const std::string& file) {
    return head_.pictures.emplace(slot, file).second ||
           Fail("two pictures share the slot of " + Quoted(file));
  }

  bool TakeChart(const Words& words) {
    const bool written = words.size() == 11 && words[3] == "keys" && words[5] == "level" &&
                         words[7] == "rank" && words[9] == "total";
    if (!written) return Fail("it is written: chart FILE SUFFIX keys 7 level 5 rank 2 total 280");
    const auto keys = Number(words[4], 5, 14), level = Number(words[6], 1, 99), rank = Number(words[8], 0, 3),
               total = Number(words[10], 1, 9999);
    if (!keys || (*keys != 5 && *keys != 7 && *keys != 14)) return Fail("a chart has 5, 7 or 14 keys");
    if (!level || !rank || !total) return Fail("level is 1 to 99, rank 0 to 3, total 1 to 9999");
    head_.charts.push_back(
        {line_, std::string(words[1]), std::string(words[2]), *keys, *level, *rank, *total, {}, {}});
    inChart_ = true;
    return true;
  }

  bool TakeChartLine(const Words& words) { return words[0] == "idle" ? TakeIdle(words) : TakeTask(words); }

  bool TakeIdle(const Words& words) {
    const auto stroke = words.size() > 3 && words[1].size() == 1 ? StrokeNamed(words[1][0]) : std::nullopt;
    if (!stroke || words[2] != "in") return Fail("it is written: idle STROKE in SECTION");
    head_.charts.back().idle.push_back({stroke->voice, {words.begin() + 3, words.end()}});
    return true;
  }

  bool TakeTask(const Words& words) {
    if (words.size() < 3) return Fail("it is written: ROLE WHICH FINGERING");
    const auto role = Named(roleNames, words[0]);
    if (!role) return Fail("no role is called " + Quoted(words[0]));
    const auto keep = Named(keeps, words[1]);
    if (!keep) return Fail(Quoted(words[1]) + " is none of all, eighths, quarters, halves and accents");
    const auto fingering = Named(fingerings, words[2]);
    if (!fingering) return Fail(Quoted(words[2]) + " is none of contour, rhythm and turntable");
    ChartPlan& chart = head_.charts.back();
    Task task = {{}, *role, *keep, *fingering, chart.keys == 5 ? fiveKeys : sevenKeys};
    std::size_t at = 3;
    if (at < words.size() && chart.keys == 14 && words[at] == "right") task.hand = rightHand, ++at;
    if (at + 1 < words.size() && words[at] == "most") {
      const auto most = Number(words[at + 1], 1, 8);
      if (!most) return Fail("behind most stands a number from 1 to 8");
      task.most = *most;
      at += 2;
    }
    if (at + 1 < words.size() && words[at] == "in") {
      task.sections = {words.begin() + static_cast<std::ptrdiff_t>(at) + 1, words.end()};
      at = words.size();
    }
    if (at < words.size()) return Fail("this line has more words than it takes: " + Quoted(words[at]));
    chart.tasks.push_back(std::move(task));
    return true;
  }

  bool ChartsNameSections() {
    const auto known = [this](const std::vector<std::string>& names) {
      return std::all_of(names.begin(), names.end(), [this](const std::string& name) {
        return std::any_of(sections_.begin(), sections_.end(),
                           [&](const Section& section) { return section.name == name; });
      });
    };
    for (const ChartPlan& chart : head_.charts) {
      const bool all = std::all_of(chart.tasks.begin(), chart.tasks.end(),
                                   [&](const Task& task) { return known(task.sections); }) &&
                       std::all_of(chart.idle.begin(), chart.idle.end(),
                                   [&](const IdleSound& sound) { return known(sound.sections); });
      if (!all) return FailAt(chart.line, "this chart names a section that there is not");
    }
    return true;
  }

  bool TakeShow(const Words& words) {
    const auto channel =
        words.size() == 2 || words.size() == 3 ? Named(pictureChannels, words[1]) : std::nullopt;
    if (!channel) return Fail("it is written: show base, show layer or show miss");
    std::vector<Show>& shows = sections_.back().shows;
    shows.push_back({line_, *channel, {}});
    if (words.size() == 2) {
      music_ = &shows.back().music;
      return true;
    }
    const auto line = lines_.find(words[2]);
    if (line == lines_.end()) return Fail("no line above is called " + Quoted(words[2]));
    shows.back().music = line->second;
    return true;
  }

  bool TakeLine(const Words& words) {
    if (words.size() != 2) return Fail("it is written: line NAME");
    const auto [line, isNew] = lines_.try_emplace(std::string(words[1]));
    if (!isNew) return Fail("there is a line " + Quoted(words[1]) + " already");
    music_ = &line->second;
    return true;
  }

  bool TakeSection(const Words& words) {
    if (!sections_.empty() && !CloseSection()) return false;
    if (words.size() != 2) return Fail("it is written: section NAME");
    sections_.push_back({line_, std::string(words[1]), 0, {}, {}, {}, {}, {}});
    return true;
  }

  bool CloseSection() {
    const Section& section = sections_.back();
    if (section.barLengths.empty()) return FailAt(section.line, "this section has no beats");
    if (section.tempo == 0) return FailAt(section.line, "this section has no tempo");
    bars_ += section.barLengths.size();
    if (bars_ <= mostBars) return true;
    return FailAt(section.line,
                  "with this section the song is longer than " + std::to_string(mostBars) + " bars");
  }

  bool TakeBeats(const Words& words) {
    Section& section = sections_.back();
    if (!section.barLengths.empty()) return Fail("this section has its beats already");
    for (std::size_t i = 1; i < words.size(); ++i) {
      const auto beats = Number(words[i], 1, 16);
      if (!beats) return Fail(Quoted(words[i]) + " is no number of beats from 1 to 16");
      section.barLengths.push_back(*beats * beat);
    }
    return words.size() > 1 || Fail("it is written: beats 4 4 3 4, with a number for each bar");
  }

  bool TakeTempo(const Words& words) {
    Section& section = sections_.back();
    const bool inside = words.size() == 5 && words[2] == "at";
    if (words.size() != 2 && !inside) return Fail("it is written: tempo NUMBER, or tempo NUMBER at BAR BEAT");
    const auto tempo = Number(words[1], 1.0, fastest);
    if (!tempo) return Fail(Quoted(words[1]) + " is no tempo from 1 to 255");
    if (!inside) {
      if (section.tempo != 0) return Fail("this section has its first tempo already");
      section.tempo = *tempo;
      return true;
    }
    const auto bar = Number(words[3], 1, static_cast<int>(section.barLengths.size()));
    if (!bar) return Fail("the section has no bar " + std::string(words[3]));
    const auto inBar = Number(words[4], 1, section.barLengths[static_cast<std::size_t>(*bar - 1)] / beat);
    if (!inBar) return Fail("bar " + std::string(words[3]) + " has no beat " + std::string(words[4]));
    section.nudges.push_back({*bar - 1, (*inBar - 1) * beat, *tempo});
    return true;
  }

  bool TakePart(Words words) {
    if (words.size() < 4) return Fail("it is written: part ROLE VOICE HOW");
    const auto role = Named(roleNames, words[1]);
    if (!role) return Fail("no role is called " + Quoted(words[1]));
    const auto voice = PitchedVoiceNamed(words[2]);
    if (!voice) return Fail("no voice is called " + Quoted(words[2]));
    const auto reading = Named(readings, words[3]);
    if (!reading) return Fail(Quoted(words[3]) + " is none of notes, chords, struck and broken");
    Tune tune = {line_, *role, *voice, *reading, {}, {}, 0};
    words.erase(words.begin(), words.begin() + 4);
    if (tune.reading == Reading::struck && !TakeRhythm(words, tune)) return false;
    if (!TakeTransposition(words, tune)) return false;
    if (words.size() > 1) return Fail("this part has more words than it takes: " + Quoted(words[1]));
    const auto line = words.empty() ? lines_.end() : lines_.find(words[0]);
    if (!words.empty() && line == lines_.end()) return Fail("no line above is called " + Quoted(words[0]));
    if (!words.empty()) tune.music = line->second;
    std::vector<Tune>& tunes = sections_.back().tunes;
    tunes.push_back(std::move(tune));
    if (words.empty()) music_ = &tunes.back().music;
    return true;
  }

  bool TakeRhythm(Words& words, Tune& tune) {
    const bool rhythmical = !words.empty() && words[0].find_first_not_of(".x") == std::string_view::npos;
    if (!rhythmical) return Fail("behind struck stands a rhythm of dots and x, as in ..x...x.");
    tune.rhythm = words[0];
    words.erase(words.begin());
    return true;
  }

  bool TakeTransposition(Words& words, Tune& tune) {
    const auto way = std::find_if(words.begin(), words.end(),
                                  [](std::string_view word) { return word == "up" || word == "down"; });
    if (way == words.end()) return true;
    const auto semitones = words.end() - way == 2 ? Number(way[1], 1, 48) : std::nullopt;
    if (!semitones) return Fail("behind " + std::string(*way) + " stands a number of semitones from 1 to 48");
    tune.transposed = *way == "up" ? *semitones : -*semitones;
    words.erase(way, words.end());
    return true;
  }

  bool TakeStrokes(const Words& words) {
    if (words.size() != 1) return Fail("strokes stand on the lines below the word");
    music_ = &sections_.back().strokes.emplace_back();
    return true;
  }

  ScoreError& error_;
  int line_ = 0;
  bool inChart_ = false;
  SongHead head_;
  Music* music_ = nullptr;                           // that of the last order, if it takes any
  std::map<std::string, Music, std::less<>> lines_;  // by name
  std::vector<Section> sections_;
  std::size_t bars_ = 0;  // of all sections that are closed
};

}  // namespace

std::optional<SongText> ReadSongText(std::string_view text, ScoreError& error) {
  Reader reader(error);
  while (!text.empty()) {
    std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (!reader.Take(line)) return std::nullopt;
  }
  if (!reader.Finish()) return std::nullopt;
  return std::move(reader).Song();
}

}  // namespace assetmaker

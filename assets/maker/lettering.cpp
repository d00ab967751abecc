// Lettering: reading faces, and turning the text of a drawing into squares.
#include "lettering.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <sstream>
#include <utility>

namespace assetmaker {
namespace {

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

// One band: the letters named on its first line, each in the columns of its place.
bool ReadBand(std::istream& lines, const std::string& names, Face& face, LetteringError& error) {
  std::vector<char> letters;
  std::istringstream words(names);
  for (std::string word; words >> word;) letters.push_back(word.front());
  const auto width = static_cast<std::size_t>(face.drawnWidth);
  for (int row = 0; row < face.drawnHeight; ++row) {
    std::string line;
    if (!std::getline(lines, line) || line.size() < letters.size() * (width + 1) - 1) {
      error.message = "row " + std::to_string(row + 1) + " of the band" + names + " is too short";
      return false;
    }
    for (std::size_t i = 0; i < letters.size(); ++i) {
      face.letters[letters[i]].push_back(line.substr(i * (width + 1), width));
    }
  }
  return true;
}

// The value of an attribute and where it stands, from its name to its closing quote.
struct Attribute {
  std::size_t begin = 0, end = 0;
  std::string value;
};

std::optional<Attribute> FindAttribute(const std::string& tag, const std::string& name) {
  const std::string opening = " " + name + "=\"";
  const std::size_t begin = tag.find(opening);
  if (begin == std::string::npos) return std::nullopt;
  const std::size_t value = begin + opening.size();
  const std::size_t quote = tag.find('"', value);
  if (quote == std::string::npos) return std::nullopt;
  return Attribute{begin, quote + 1, tag.substr(value, quote - value)};
}

// Takes the attribute out of the tag; nothing if it is not there.
std::optional<std::string> TakeAttribute(std::string& tag, const std::string& name) {
  const std::optional<Attribute> found = FindAttribute(tag, name);
  if (!found) return std::nullopt;
  tag.erase(found->begin, found->end - found->begin);
  return found->value;
}

int NumberOr0(const std::optional<std::string>& text) {
  int number = 0;
  if (text) std::from_chars(text->data(), text->data() + text->size(), number);
  return number;
}

std::string WithoutEntities(std::string text) {
  const std::pair<std::string_view, char> entities[] = {
      {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}, {"&amp;", '&'}};
  for (const auto& [name, letter] : entities) {
    for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name, at + 1)) {
      text.replace(at, name.size(), 1, letter);
    }
  }
  return text;
}

}  // namespace

std::optional<Face> ReadFace(std::string_view text, LetteringError& error) {
  Face face;
  std::istringstream lines{std::string(text)};
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line.starts_with("//")) continue;
    std::istringstream words(line);
    std::string key;
    words >> key;
    if (key == "cell") {
      words >> face.cellWidth >> face.cellHeight;
    } else if (key == "from") {
      words >> face.left >> face.top;
    } else if (key == "drawn") {
      words >> face.drawnWidth >> face.drawnHeight;
    } else if (key == "=") {
      if (!ReadBand(lines, line.substr(1), face, error)) return std::nullopt;
      continue;
    } else {
      words.setstate(std::ios::failbit);
    }
    if (!words) {
      error.message = "not understood: " + Quoted(line);
      return std::nullopt;
    }
  }
  return face;
}

std::string PathOf(const Face& face, std::string_view text, int x, int y) {
  std::ostringstream path;
  for (const char letter : text) {
    const auto found = face.letters.find(letter);
    const std::size_t rows = found == face.letters.end() ? 0 : found->second.size();
    for (std::size_t row = 0; row < rows; ++row) {
      const std::string& ink = found->second[row];
      for (std::size_t begin = ink.find('#'); begin != std::string::npos;) {
        const std::size_t end = std::min(ink.find_first_not_of('#', begin), ink.size());
        const std::size_t length = end - begin;
        path << 'M' << x + face.left + static_cast<int>(begin) << ' ' << y + face.top + static_cast<int>(row)
             << 'h' << length << "v1h-" << length << 'z';
        begin = ink.find('#', end);
      }
    }
    x += face.cellWidth;
  }
  return path.str();
}

std::optional<std::string> SetLettering(std::string_view drawing, const std::map<std::string, Face>& faces,
                                        LetteringError& error) {
  const std::string source(drawing);
  const std::string closing = "</text>";
  std::string result;
  std::size_t done = 0;
  for (std::size_t at = source.find("<text "); at != std::string::npos; at = source.find("<text ", done)) {
    const std::size_t tagEnd = source.find('>', at);
    const std::size_t close = source.find(closing, at);
    if (tagEnd == std::string::npos || close == std::string::npos || close < tagEnd) {
      error.message = "a <text> is not closed";
      return std::nullopt;
    }
    std::string tag = source.substr(at + 5, tagEnd - at - 5);
    const std::optional<std::string> name = TakeAttribute(tag, "face");
    const auto face = faces.find(name.value_or(""));
    if (face == faces.end()) {
      error.message = "there is no face " + Quoted(name.value_or(""));
      return std::nullopt;
    }
    const int x = NumberOr0(TakeAttribute(tag, "x")), y = NumberOr0(TakeAttribute(tag, "y"));
    const std::string text = WithoutEntities(source.substr(tagEnd + 1, close - tagEnd - 1));
    result += source.substr(done, at - done) + "<path shape-rendering=\"crispEdges\"" + tag + " d=\"" +
              PathOf(face->second, text, x, y) + "\"/>";
    done = close + closing.size();
  }
  return result + source.substr(done);
}

}  // namespace assetmaker

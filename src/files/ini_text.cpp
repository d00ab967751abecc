// Reading and changing of settings texts, line by line.
#include "files/ini_text.h"

#include <algorithm>

#include "platform/text.h"

namespace qlm {
namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kLineEnds = "\r\n";

struct Span {
  size_t begin;
  size_t end;
};

// The part of bytes[begin, end) without blanks at both ends.
Span TrimSpan(std::string_view bytes, size_t begin, size_t end) {
  while (begin < end && kBlanks.find(bytes[begin]) != std::string_view::npos) ++begin;
  while (end > begin && kBlanks.find(bytes[end - 1]) != std::string_view::npos) --end;
  return {begin, end};
}

Text Decode(std::string_view bytes, Span span) {
  return platform::DecodeCp932(bytes.substr(span.begin, span.end - span.begin));
}

// Behind the line end that begins at or after `begin`.
size_t LineBehind(std::string_view bytes, size_t begin) {
  const size_t end = bytes.find_first_of(kLineEnds, begin);
  if (end == std::string_view::npos) return bytes.size();
  return end + (bytes.substr(end, 2) == "\r\n" ? 2 : 1);
}

std::string_view LineEndOf(std::string_view line) {
  const size_t end = line.find_first_of(kLineEnds);
  return end == std::string_view::npos ? std::string_view() : line.substr(end);
}

}  // namespace

IniText::IniText(std::string_view bytes) {
  for (size_t begin = 0; begin < bytes.size();) {
    const size_t next = LineBehind(bytes, begin);
    lines_.push_back(Parse(bytes.substr(begin, next - begin)));
    begin = next;
  }
  if (lines_.empty()) return;
  const std::string_view firstEnd = LineEndOf(lines_.front().bytes);
  if (!firstEnd.empty()) lineEnd_ = firstEnd;
}

IniText::Line IniText::Parse(std::string_view bytes) {
  Line line;
  line.bytes = bytes;
  const Span content = TrimSpan(bytes, 0, bytes.size() - LineEndOf(bytes).size());
  if (content.begin == content.end) {
    line.kind = Kind::kBlank;
    return line;
  }
  if (bytes[content.begin] == ';') return line;
  if (bytes[content.begin] == '[') {
    // Decoded first: a "]" may be the second byte of a character.
    const Text text = Decode(bytes, {content.begin + 1, content.end});
    const size_t end = text.find(u']');
    if (end == Text::npos) return line;
    line.kind = Kind::kSection;
    line.name = Trim(TextView(text).substr(0, end));
    return line;
  }
  const size_t equals = bytes.find('=', content.begin);
  if (equals >= content.end) return line;
  const Span name = TrimSpan(bytes, content.begin, equals);
  const Span value = TrimSpan(bytes, equals + 1, content.end);
  if (name.begin == name.end) return line;
  line.kind = Kind::kKey;
  line.name = Decode(bytes, name);
  line.valueBegin = value.begin;
  line.valueEnd = value.end;
  return line;
}

Text IniText::Value(const Line& line) {
  Span span = {line.valueBegin, line.valueEnd};
  const auto& bytes = line.bytes;
  const bool quoted = span.end - span.begin >= 2 && (bytes[span.begin] == '"' || bytes[span.begin] == '\'') &&
                      bytes[span.end - 1] == bytes[span.begin];
  if (quoted) span = {span.begin + 1, span.end - 1};
  return Decode(bytes, span);
}

IniText::Range IniText::FindSection(TextView section) const {
  const auto isSection = [](const Line& line) { return line.kind == Kind::kSection; };
  const auto begin = std::find_if(lines_.begin(), lines_.end(), [&](const Line& line) {
    return isSection(line) && EqualsAnyCase(line.name, section);
  });
  if (begin == lines_.end()) return {lines_.size(), lines_.size()};
  const auto end = std::find_if(begin + 1, lines_.end(), isSection);
  return {static_cast<size_t>(begin - lines_.begin()), static_cast<size_t>(end - lines_.begin())};
}

size_t IniText::FindKey(TextView section, TextView key) const {
  const Range range = FindSection(section);
  for (size_t i = range.begin; i < range.end; ++i) {
    if (lines_[i].kind == Kind::kKey && EqualsAnyCase(lines_[i].name, key)) return i;
  }
  return lines_.size();
}

std::optional<Text> IniText::Find(TextView section, TextView key) const {
  const size_t at = FindKey(section, key);
  if (at == lines_.size()) return std::nullopt;
  return Value(lines_[at]);
}

void IniText::Insert(size_t at, std::string_view content) {
  // The line before may be the last one of a text that does not end in a line end.
  if (at > 0 && LineEndOf(lines_[at - 1].bytes).empty()) lines_[at - 1].bytes += lineEnd_;
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(at),
                Parse(std::string(content).append(lineEnd_)));
}

void IniText::Put(TextView section, TextView key, TextView value) {
  if (const size_t at = FindKey(section, key); at < lines_.size()) {
    Line& line = lines_[at];
    if (Value(line) == value) return;
    std::string bytes = line.bytes;
    bytes.replace(line.valueBegin, line.valueEnd - line.valueBegin, platform::EncodeCp932(value));
    line = Parse(bytes);
    return;
  }
  Range range = FindSection(section);
  if (range.begin == lines_.size()) {
    Insert(lines_.size(), platform::EncodeCp932(Join(u"[", section, u"]")));
    range = {lines_.size() - 1, lines_.size()};
  }
  while (lines_[range.end - 1].kind == Kind::kBlank) --range.end;
  Insert(range.end, platform::EncodeCp932(Join(key, u"=", value)));
}

std::string IniText::Bytes() const {
  std::string bytes;
  for (const Line& line : lines_) bytes += line.bytes;
  return bytes;
}

std::vector<IniText::Entry> IniText::Entries() const {
  std::vector<Entry> entries;
  const Text* section = nullptr;
  for (const Line& line : lines_) {
    if (line.kind == Kind::kSection) section = &line.name;
    if (line.kind == Kind::kKey && section != nullptr) entries.push_back({*section, line.name, Value(line)});
  }
  return entries;
}

}  // namespace qlm

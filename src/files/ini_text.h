// A settings text in sections, `key=value` a line, that keeps every byte which is not changed on purpose.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"

namespace qlm {

// Lines may end in CR LF, LF or CR. A line that begins with ";" is a comment; what is neither a section in
// brackets nor holds a "=" says nothing. Names are compared without regard to letter case; of several equal
// ones the first counts. The bytes are code page 932.
class IniText {
 public:
  explicit IniText(std::string_view bytes);

  // The value without outer blanks and without the quotation marks around it. Nothing when there is no such
  // key; a key with nothing behind its "=" gives an empty text.
  std::optional<Text> Find(TextView section, TextView key) const;

  // Changes the value where it differs. A new key goes behind the last line of its section that is not blank,
  // a new section to the end, both ended as the first line of the text is, CR LF in an empty one.
  void Put(TextView section, TextView key, TextView value);

  std::string Bytes() const;

  struct Entry {
    Text section;
    Text key;
    Text value;
  };
  // Every key in a section, in order of the text, repeated ones too.
  std::vector<Entry> Entries() const;

 private:
  enum class Kind { kBlank, kSection, kKey, kOther };
  struct Line {
    std::string bytes;  // with its line end
    Kind kind = Kind::kOther;
    Text name;              // of the section or key
    size_t valueBegin = 0;  // place of a key's value in `bytes`, quotation marks included
    size_t valueEnd = 0;
  };

  static Line Parse(std::string_view bytes);
  static Text Value(const Line& line);
  // Index of the section's first line and of the line behind its last one; both lines_.size() when it is not
  // there.
  struct Range {
    size_t begin;
    size_t end;
  };
  Range FindSection(TextView section) const;
  // lines_.size() when the section has no such key.
  size_t FindKey(TextView section, TextView key) const;
  void Insert(size_t at, std::string_view content);

  std::vector<Line> lines_;
  std::string lineEnd_ = "\r\n";
};

}  // namespace qlm

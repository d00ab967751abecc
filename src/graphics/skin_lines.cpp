// Lines of a skin, word by word and field by field.
#include "graphics/skin_lines.h"

#include <algorithm>
#include <cmath>

namespace qlm {
namespace {

bool IsHexText(TextView text) { return !text.empty() && std::all_of(text.begin(), text.end(), IsHexDigit); }

}  // namespace

Text CleanSkinLine(TextView raw) {
  Text line(raw.substr(0, raw.find(u"//")));
  std::replace(line.begin(), line.end(), u'\t', u' ');
  return Text(Trim(line));
}

void SkinReading::Begin(TextView line) {
  ++lineNumber_;
  line_ = line;
  rest_.reset();
  if (report_ != nullptr) report_->lines.emplace_back(line);
}

SkinWord SkinReading::SplitWord(TextView word) {
  SkinWord result{Split(UCase(word), u"_"), {}};
  const TextView last = result.pieces.back();
  if (last.ends_with(u'1')) result.side = 0;
  if (last.ends_with(u'2')) result.side = 1;
  return result;
}

int64_t SkinReading::HexDigits(int64_t column) {
  const TextView digits = Mid(line_, column, 2);
  if (!IsHexText(digits) || digits.size() < 2) {
    Remark(u"columns ", column, u" and ", column + 1, u" hold no two hexadecimal digits");
  } else {
    CheckBlankAt(column + 2);
  }
  return ValHex(digits);
}

std::optional<int32_t> SkinReading::DecimalDigits(int64_t column) {
  const TextView digits = Mid(line_, column, 2);
  if (digits.size() < 2 || !std::all_of(digits.begin(), digits.end(), IsDigit)) {
    Remark(u"columns ", column, u" and ", column + 1, u" hold no two digits");
  } else {
    CheckBlankAt(column + 2);
  }
  return ToWhole(digits);
}

void SkinReading::TakeArguments(TextView arguments) {
  rest_.reset();
  if (!arguments.empty()) rest_ = arguments;
}

void SkinReading::ArgumentsFrom(int64_t column) {
  CheckColumn(column);
  TakeArguments(Mid(line_, column));
}

void SkinReading::ArgumentsBehindBlank() {
  const size_t blank = line_.find(u' ');
  TakeArguments(blank == TextView::npos ? TextView() : line_.substr(blank + 1));
}

void SkinReading::CheckBlankAt(int64_t column) {
  const TextView behind = Mid(line_, column, 1);
  if (!behind.empty() && behind != u" ") Remark(u"column ", column, u" holds no blank");
}

// Between the word and the column there must be blanks and nothing else, or an author has miscounted.
void SkinReading::CheckColumn(int64_t column) {
  if (report_ == nullptr) return;
  const size_t blank = line_.find(u' ');
  if (blank == TextView::npos) return;  // the missing fields are told of
  const auto begin = static_cast<int64_t>(line_.find_first_not_of(u' ', blank)) + 1;
  if (static_cast<int64_t>(blank) + 1 > column || begin < column) {
    Remark(u"the arguments are read from column ", column, u" on, but stand at column ", begin);
  }
}

std::optional<TextView> SkinReading::Next(TextView name, Field field) {
  if (!rest_) {
    if (field == Field::kNeeded) Remark(name, u" is missing");
    return std::nullopt;
  }
  const TextView arguments = *rest_;
  const size_t comma = arguments.find(u',');
  rest_.reset();
  if (comma != TextView::npos) rest_ = arguments.substr(comma + 1);
  return Trim(arguments.substr(0, comma));
}

std::optional<double> SkinReading::Decimal(TextView name, TextView text, Field field) {
  const std::optional<double> number = ToDouble(text);
  if (!number && text.empty() && field == Field::kNeeded) Remark(name, u" is missing");
  if (!number && !text.empty()) Remark(name, u" is no number: ", text);
  return number;
}

uint32_t SkinReading::Hexadecimal(TextView name, TextView text, Field field) {
  if (text.empty() && field == Field::kNeeded) Remark(name, u" is missing");
  if (!text.empty() && !IsHexText(text)) Remark(name, u" is no hexadecimal number: ", text);
  return ValHex(text);
}

std::optional<uint8_t> SkinReading::HexByte(TextView name) {
  const std::optional<TextView> text = Next(name, Field::kNeeded);
  if (!text) return std::nullopt;
  const uint32_t number = Hexadecimal(name, *text, Field::kNeeded);
  if (text->empty() || !IsHexDigit(text->front())) return std::nullopt;
  if (number <= UINT8_MAX) return static_cast<uint8_t>(number);
  Remark(name, u" is out of range: ", *text);
  return std::nullopt;
}

void SkinReading::Single(TextView name, float& target) {
  const std::optional<TextView> text = Next(name, Field::kNeeded);
  const std::optional<double> number = text ? Decimal(name, *text, Field::kNeeded) : std::nullopt;
  if (number) Store(name, target, Narrow(*number), *text);
}

double SkinReading::SingleOrZero(TextView name, Field field) {
  const std::optional<TextView> text = Next(name, field);
  const std::optional<double> number = text ? Decimal(name, *text, field) : std::nullopt;
  return number.value_or(0);
}

TextView SkinReading::Name(TextView name) {
  const std::optional<TextView> text = Next(name, Field::kNeeded);
  if (text && text->empty()) Remark(name, u" is missing");
  return text.value_or(TextView());
}

void SkinReading::AddRemark(Text text) { report_->remarks.push_back({lineNumber_, std::move(text)}); }

void SkinReading::AddSet(const void* entry) {
  const auto [place, fresh] = report_->set.try_emplace(entry, lineNumber_);
  if (fresh) return;
  AddRemark(Join(u"line ", place->second, u" has set this already"));
  place->second = lineNumber_;
}

}  // namespace qlm

// One description of each frame's fields serves the writing and the reading.
#include "platform/session_wire.h"

#include <algorithm>
#include <type_traits>

namespace platform {
namespace {

constexpr size_t kMostListed = 16;                        // more than any honest list has
constexpr uint64_t kQuestionMagic = 0x316B7341'624D4C51;  // "QLMbAsk1"
constexpr uint64_t kAnswerMagic = 0x31736E41'624D4C51;    // "QLMbAns1"
constexpr size_t kQuestionBytes = 96;

class Writer {
 public:
  template <typename Number>
  void Whole(const Number& value) {
    const auto bits = static_cast<std::make_unsigned_t<Number>>(value);
    for (size_t i = 0; i < sizeof bits; ++i) bytes.push_back(static_cast<char>(bits >> (8 * i) & 0xFF));
  }
  template <typename Kind>
  void Choice(const Kind& kind, Kind, Kind) {
    Whole(static_cast<uint8_t>(kind));
  }
  void Body(const std::string& body) { bytes += body; }  // always last: its length is what is left
  void Name(const std::u16string& name) {
    Whole(static_cast<uint8_t>(name.size()));
    for (const char16_t unit : name) Whole(static_cast<uint16_t>(unit));
  }
  template <typename Element, typename Each>
  void List(const std::vector<Element>& list, Each each) {
    const size_t count = std::min(list.size(), kMostListed);
    Whole(static_cast<uint8_t>(count));
    for (size_t i = 0; i < count; ++i) each(list[i]);
  }

  std::string bytes;
};

// Whatever the bytes say, it reads no further than their end; what fails makes all that follows fail.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : left_(bytes) {}

  template <typename Number>
  void Whole(Number& value) {
    using Bits = std::make_unsigned_t<Number>;
    Bits bits = 0;
    if (left_.size() < sizeof bits) return Fail();
    for (size_t i = 0; i < sizeof bits; ++i) {
      bits = static_cast<Bits>(bits | static_cast<Bits>(static_cast<unsigned char>(left_[i])) << (8 * i));
    }
    left_.remove_prefix(sizeof bits);
    value = static_cast<Number>(bits);
  }
  template <typename Kind>
  void Choice(Kind& kind, Kind first, Kind last) {
    uint8_t number = 0;
    Whole(number);
    if (number < static_cast<uint8_t>(first) || number > static_cast<uint8_t>(last)) return Fail();
    kind = static_cast<Kind>(number);
  }
  void Body(std::string& body) {
    if (left_.size() > kLargestSessionMessage) return Fail();
    body = left_;
    left_ = {};
  }
  void Name(std::u16string& name) {
    uint8_t length = 0;
    Whole(length);
    if (left_.size() < size_t{2} * length) return Fail();
    std::u16string units;
    for (; length > 0; --length) {
      uint16_t unit = 0;
      Whole(unit);
      units.push_back(static_cast<char16_t>(unit));
    }
    name = CleanPlayerName(units);
  }
  template <typename Element, typename Each>
  void List(std::vector<Element>& list, Each each) {
    uint8_t count = 0;
    Whole(count);
    list.clear();
    if (count > kMostListed) return Fail();
    for (; count > 0 && !failed_; --count) each(list.emplace_back());
  }

  void Fail() {
    failed_ = true;
    left_ = {};
  }
  bool Good() const { return !failed_ && left_.empty(); }

 private:
  std::string_view left_;
  bool failed_ = false;
};

// `Wire` is the Writer or the Reader, and the frame const for the Writer.
template <typename Wire, typename Entry>
void PlayerFields(Wire& wire, Entry& entry) {
  wire.Whole(entry.id);
  wire.Whole(entry.place);
  wire.Name(entry.name);
}

template <typename Wire, typename Ids>
void IdFields(Wire& wire, Ids& ids) {
  wire.List(ids, [&](auto& id) { wire.Whole(id); });
}

template <typename Wire, typename Item>
void ItemFields(Wire& wire, Item& item) {
  wire.Whole(item.number);
  IdFields(wire, item.recipients);
  wire.Choice(item.kind, ItemKind::kMessage, ItemKind::kLeave);
  if (item.kind == ItemKind::kNewcomer) PlayerFields(wire, item.newcomer);
  if (item.kind != ItemKind::kMessage) return;
  wire.Whole(item.from);
  wire.Body(item.body);
}

template <typename Wire, typename AnyFrame>
void Fields(Wire& wire, AnyFrame& frame) {
  using Kind = std::remove_const_t<AnyFrame>;
  if constexpr (std::is_same_v<Kind, HelloFrame>) {
    wire.Whole(frame.magic);
    wire.Whole(frame.version);
    wire.Name(frame.name);
  } else if constexpr (std::is_same_v<Kind, RefusalFrame>) {
    wire.Whole(frame.magic);
    wire.Whole(frame.version);
    wire.Choice(frame.reason, Refusal::kFull, Refusal::kNotHost);
  } else if constexpr (std::is_same_v<Kind, WelcomeFrame>) {
    wire.Whole(frame.session);
    PlayerFields(wire, frame.you);
    wire.List(frame.members, [&](auto& member) {
      PlayerFields(wire, member.player);
      wire.Whole(member.address.host);
      wire.Whole(member.address.port);
      wire.Whole(member.token);
    });
    IdFields(wire, frame.gone);
  } else if constexpr (std::is_same_v<Kind, ExpectFrame>) {
    wire.Whole(frame.id);
    wire.Whole(frame.token);
  } else if constexpr (std::is_same_v<Kind, LinkFrame>) {
    wire.Whole(frame.magic);
    wire.Whole(frame.version);
    wire.Whole(frame.session);
    wire.Whole(frame.id);
    wire.Whole(frame.token);
  } else if constexpr (std::is_same_v<Kind, ItemFrame>) {
    ItemFields(wire, frame);
  } else if constexpr (std::is_same_v<Kind, DirectFrame>) {
    wire.Whole(frame.from);
    wire.Body(frame.body);
  } else if constexpr (std::is_same_v<Kind, ForwardFrame>) {
    wire.Whole(frame.origin);
    ItemFields(wire, frame.item);
  } else if constexpr (std::is_same_v<Kind, GoneFrame> || std::is_same_v<Kind, SettledFrame>) {
    IdFields(wire, frame.ids);
  } else if constexpr (std::is_same_v<Kind, AliveFrame>) {
    wire.List(frame.received, [&](auto& pair) {
      wire.Whole(pair.first);
      wire.Whole(pair.second);
    });
  } else {
    static_assert(std::is_same_v<Kind, LinkedFrame>);
  }
}

// Reads the frame whose kind is the index `kind`, from `index` on.
template <size_t index = 0>
std::optional<Frame> DecodeKind(size_t kind, std::string_view bytes) {
  if constexpr (index == std::variant_size_v<Frame>) {
    return std::nullopt;
  } else {
    if (kind != index) return DecodeKind<index + 1>(kind, bytes);
    std::variant_alternative_t<index, Frame> frame;
    Reader reader(bytes);
    Fields(reader, frame);
    if (!reader.Good()) return std::nullopt;
    return frame;
  }
}

template <typename Wire, typename Answer>
void AnswerFields(Wire& wire, Answer& answer) {
  wire.Whole(answer.nonce);
  wire.Whole(answer.session);
  wire.Whole(answer.players);
  wire.Name(answer.name);
}

// Takes the magic number and the version; false when they are not ours.
bool Begins(Reader& reader, uint64_t wantedMagic) {
  uint64_t magic = 0;
  uint16_t version = 0;
  reader.Whole(magic);
  reader.Whole(version);
  return magic == wantedMagic && version == kSessionVersion;
}

}  // namespace

std::string EncodeFrame(const Frame& frame) {
  Writer writer;
  writer.Whole(static_cast<uint8_t>(frame.index()));
  std::visit([&](const auto& fields) { Fields(writer, fields); }, frame);
  return std::move(writer.bytes);
}

std::optional<Frame> DecodeFrame(std::string_view bytes) {
  if (bytes.empty() || bytes.size() > kLargestFrame) return std::nullopt;
  return DecodeKind(static_cast<unsigned char>(bytes[0]), bytes.substr(1));
}

std::u16string CleanPlayerName(std::u16string_view name) {
  const auto isHigh = [](char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; };
  const auto isLow = [](char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; };
  const auto isControl = [](char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit < 0xA0); };
  std::u16string clean;
  for (size_t i = 0; i < name.size(); ++i) {
    const bool pair = isHigh(name[i]) && i + 1 < name.size() && isLow(name[i + 1]);
    const size_t units = pair ? 2 : 1;
    if (!pair && (isHigh(name[i]) || isLow(name[i]) || isControl(name[i]))) continue;
    if (clean.size() + units > kLongestPlayerName) break;
    clean += name.substr(i, units);
    i += units - 1;
  }
  return clean;
}

std::string EncodeQuestion(const SearchQuestion& question) {
  Writer writer;
  writer.Whole(kQuestionMagic);
  writer.Whole(kSessionVersion);
  writer.Whole(question.nonce);
  writer.bytes.resize(kQuestionBytes);
  return std::move(writer.bytes);
}

std::optional<SearchQuestion> DecodeQuestion(std::string_view bytes) {
  if (bytes.size() != kQuestionBytes) return std::nullopt;
  Reader reader(bytes);
  SearchQuestion question;
  if (!Begins(reader, kQuestionMagic)) return std::nullopt;
  reader.Whole(question.nonce);
  return question;
}

std::string EncodeAnswer(const SearchAnswer& answer) {
  Writer writer;
  writer.Whole(kAnswerMagic);
  writer.Whole(kSessionVersion);
  AnswerFields(writer, answer);
  return std::move(writer.bytes);
}

std::optional<SearchAnswer> DecodeAnswer(std::string_view bytes) {
  Reader reader(bytes);
  SearchAnswer answer;
  if (bytes.size() > kQuestionBytes || !Begins(reader, kAnswerMagic)) return std::nullopt;
  AnswerFields(reader, answer);
  if (!reader.Good()) return std::nullopt;
  return answer;
}

}  // namespace platform

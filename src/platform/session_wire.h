// What the members of a session tell each other, and its bytes: a byte for the kind, then the fields of its
// struct in their order. Numbers are little-endian, lists and texts begin with their length.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/session.h"

namespace platform {

constexpr uint32_t kSessionMagic = 0x424D4C51;  // "QLMB"
constexpr uint16_t kSessionVersion = 1;
constexpr size_t kLargestFrame = kLargestSessionMessage + 256;

struct SessionAddress {
  uint32_t host = 0;  // 127.0.0.1 is 0x7F000001
  uint16_t port = 0;
  friend bool operator==(const SessionAddress&, const SessionAddress&) = default;
};

// A player as all members know it. The smaller the place, the longer it has been here; the host is first.
struct PlayerEntry {
  int32_t id = 0;
  uint32_t place = 0;
  std::u16string name = {};
};

// The first frame of one who wants to come in, to the host.
struct HelloFrame {
  uint32_t magic = kSessionMagic;
  uint16_t version = kSessionVersion;
  std::u16string name = {};
};

enum class Refusal : uint8_t { kFull = 1, kVersion = 2, kNotHost = 3 };

// The host's answer to one that does not come in. Other versions can read it too.
struct RefusalFrame {
  uint32_t magic = kSessionMagic;
  uint16_t version = kSessionVersion;
  Refusal reason = Refusal::kFull;
};

struct WelcomeMember {
  PlayerEntry player = {};
  SessionAddress address = {};  // as the host sees it; nothing for the host itself
  uint64_t token = 0;           // what the newcomer proves itself with; nothing for the host
};

// The host's answer to one that comes in.
struct WelcomeFrame {
  uint64_t session = 0;
  PlayerEntry you = {};
  std::vector<WelcomeMember> members = {};
  std::vector<int32_t> gone = {};  // their messages are still being settled among the others
};

// From the host to each member: how the newcomer will prove itself to it.
struct ExpectFrame {
  int32_t id = 0;
  uint64_t token = 0;
};

// The first frame of a newcomer to each member but the host, and the answer.
struct LinkFrame {
  uint32_t magic = kSessionMagic;
  uint16_t version = kSessionVersion;
  uint64_t session = 0;
  int32_t id = 0;
  uint64_t token = 0;
};
struct LinkedFrame {};

enum class ItemKind : uint8_t { kMessage = 1, kNewcomer = 2, kLeave = 3 };

// One message of a player to all others. They are numbered, and each says who is to get it, so that the
// others can settle who lacks it when the player dies.
struct ItemFrame {
  uint32_t number = 0;
  std::vector<int32_t> recipients = {};
  ItemKind kind = ItemKind::kMessage;
  int32_t from = 0;           // of a message: whom the host speaks for; 0 for the sender
  std::string body = {};      // of a message
  PlayerEntry newcomer = {};  // of the host's word that someone comes in
};

// A message to this member alone.
struct DirectFrame {
  int32_t from = 0;
  std::string body = {};
};

// What the sender of this has of a player that is gone.
struct ForwardFrame {
  int32_t origin = 0;
  ItemFrame item = {};
};

// These are gone for me, I take nothing more of them, and you have now all that I have of them.
struct GoneFrame {
  std::vector<int32_t> ids = {};
};

// I have told my game that these are gone.
struct SettledFrame {
  std::vector<int32_t> ids = {};
};

// I am here, and have the messages of these up to these numbers. Sent without a guarantee, over and over.
struct AliveFrame {
  std::vector<std::pair<int32_t, uint32_t>> received = {};
};

using Frame = std::variant<HelloFrame, RefusalFrame, WelcomeFrame, ExpectFrame, LinkFrame, LinkedFrame,
                           ItemFrame, DirectFrame, ForwardFrame, GoneFrame, SettledFrame, AliveFrame>;

std::string EncodeFrame(const Frame& frame);
// Nothing for what is no frame: an unknown kind, a length that does not fit, bytes left over.
std::optional<Frame> DecodeFrame(std::string_view bytes);

// A name as players see it: without control characters and lone surrogates, cut to kLongestPlayerName.
std::u16string CleanPlayerName(std::u16string_view name);

// "Which sessions are there?" and the answer. The question is as long as the longest answer, so that nobody
// can make a session send more than it was sent.
struct SearchQuestion {
  uint64_t nonce = 0;
};
struct SearchAnswer {
  uint64_t nonce = 0;  // of the question
  uint64_t session = 0;
  uint8_t players = 0;
  std::u16string name = {};
};
std::string EncodeQuestion(const SearchQuestion& question);
std::optional<SearchQuestion> DecodeQuestion(std::string_view bytes);
std::string EncodeAnswer(const SearchAnswer& answer);
std::optional<SearchAnswer> DecodeAnswer(std::string_view bytes);

}  // namespace platform

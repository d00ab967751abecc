// Code page tables built once from the system's converter; case and normal forms from ICU.
#include "platform/text.h"

#include <iconv.h>
#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

namespace platform {
namespace {

constexpr char16_t kMiddleDot = 0x30FB;
constexpr char16_t kReplacement = 0xFFFD;

constexpr bool IsLead(unsigned char byte) {
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}
constexpr bool IsTrail(unsigned char byte) { return byte >= 0x40 && byte <= 0xFC && byte != 0x7F; }

// Runs one short conversion; an empty result stands for a failure.
class Converter {
 public:
  Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
  ~Converter() {
    if (Good()) iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  std::string Convert(std::string in) const {
    if (!Good()) return {};
    std::array<char, 16> out{};
    char* source = in.data();
    char* target = out.data();
    size_t sourceLeft = in.size();
    size_t targetLeft = out.size();
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    if (iconv(handle_, &source, &sourceLeft, &target, &targetLeft) == static_cast<size_t>(-1)) return {};
    return {out.data(), out.size() - targetLeft};
  }

 private:
  bool Good() const { return handle_ != reinterpret_cast<iconv_t>(-1); }
  iconv_t handle_;
};

struct Cp932 {
  std::array<char16_t, 256> single{};
  std::array<char16_t, 65536> pair{};   // by lead * 256 + trail
  std::array<uint16_t, 65536> bytes{};  // by character; 0 is none

  Cp932() {
    pair.fill(kMiddleDot);
    const Converter decode("UTF-16LE", "CP932");
    const Converter encode("CP932", "UTF-16LE");
    const auto unitOf = [&](const std::string& in) -> char16_t {
      const std::string out = decode.Convert(in);
      if (out.size() != 2) return 0;
      return static_cast<char16_t>(static_cast<unsigned char>(out[0]) | static_cast<unsigned char>(out[1])
                                                                            << 8);
    };
    for (int byte = 0; byte < 256; ++byte) single[byte] = unitOf(std::string(1, static_cast<char>(byte)));
    single[0x80] = 0x80;
    single[0xA0] = 0xA0;
    single[0xFD] = 0xF8F1;
    single[0xFE] = 0xF8F2;
    single[0xFF] = 0xF8F3;
    for (int byte = 1; byte < 256; ++byte) {
      if (IsLead(static_cast<unsigned char>(byte))) single[byte] = kMiddleDot;
    }
    for (int lead = 0x81; lead <= 0xFC; ++lead) {
      if (!IsLead(static_cast<unsigned char>(lead))) continue;
      for (int trail = 0x40; trail <= 0xFC; ++trail) {
        if (!IsTrail(static_cast<unsigned char>(trail))) continue;
        const char16_t unit = unitOf({static_cast<char>(lead), static_cast<char>(trail)});
        if (unit != 0) pair[lead << 8 | trail] = unit;
      }
    }
    for (int unit = 1; unit < 65536; ++unit) {
      const std::string out = encode.Convert({static_cast<char>(unit & 255), static_cast<char>(unit >> 8)});
      if (out.size() == 1) bytes[unit] = static_cast<unsigned char>(out[0]);
      if (out.size() == 2) {
        bytes[unit] = static_cast<uint16_t>(static_cast<unsigned char>(out[0]) << 8 |
                                            static_cast<unsigned char>(out[1]));
      }
    }
    for (const int byte : {0x80, 0xA0, 0xFD, 0xFE, 0xFF}) bytes[single[byte]] = static_cast<uint16_t>(byte);
  }
};

// Whether eight bytes are ASCII.
bool IsAscii(const unsigned char* bytes) {
  uint64_t eight = 0;
  std::memcpy(&eight, bytes, sizeof(eight));
  return (eight & 0x8080808080808080) == 0;
}

const Cp932& Tables() {
  static const Cp932 tables;
  return tables;
}

}  // namespace

std::u16string DecodeCp932(std::string_view bytes) {
  const Cp932& tables = Tables();
  std::u16string text(bytes.size(), u'\0');
  const auto* in = reinterpret_cast<const unsigned char*>(bytes.data());
  const unsigned char* const end = in + bytes.size();
  char16_t* out = text.data();
  while (in != end) {
    // Charts are ASCII for the most part, and that goes eight at a time.
    for (; end - in >= 8 && IsAscii(in); in += 8, out += 8) {
      for (int i = 0; i < 8; ++i) out[i] = in[i];
    }
    if (in == end) break;
    const unsigned char byte = *in++;
    if (byte < 0x80) {
      *out++ = byte;
    } else if (IsLead(byte) && in != end && IsTrail(*in)) {
      *out++ = tables.pair[byte << 8 | *in++];
    } else {
      *out++ = tables.single[byte];
    }
  }
  text.resize(static_cast<size_t>(out - text.data()));
  return text;
}

std::string EncodeCp932(std::u16string_view text) {
  const Cp932& tables = Tables();
  std::string bytes;
  bytes.reserve(text.size() * 2);
  for (const char16_t unit : text) {
    const uint16_t code = tables.bytes[unit];
    if (code > 255) bytes += static_cast<char>(code >> 8);
    bytes += unit == 0 ? '\0' : code == 0 ? '?' : static_cast<char>(code & 255);
  }
  return bytes;
}

std::u16string DecodeUtf8(std::string_view bytes) {
  std::u16string text(bytes.size() + 1, u'\0');
  int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF8WithSub(text.data(), static_cast<int32_t>(text.size()), &length, bytes.data(),
                       static_cast<int32_t>(bytes.size()), kReplacement, nullptr, &status);
  text.resize(U_SUCCESS(status) ? static_cast<size_t>(length) : 0);
  return text;
}

std::string EncodeUtf8(std::u16string_view text) {
  std::string bytes(text.size() * 3 + 1, '\0');
  int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strToUTF8WithSub(bytes.data(), static_cast<int32_t>(bytes.size()), &length, text.data(),
                     static_cast<int32_t>(text.size()), kReplacement, nullptr, &status);
  bytes.resize(U_SUCCESS(status) ? static_cast<size_t>(length) : 0);
  return bytes;
}

bool IsUtf8(std::string_view bytes) {
  int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF8(nullptr, 0, &length, bytes.data(), static_cast<int32_t>(bytes.size()), &status);
  return U_SUCCESS(status) || status == U_BUFFER_OVERFLOW_ERROR;
}

std::u16string FoldName(std::u16string_view name) {
  UErrorCode status = U_ZERO_ERROR;
  const UNormalizer2* folder = unorm2_getNFKCCasefoldInstance(&status);
  std::u16string folded(name.size() * 4 + 32, u'\0');
  const int32_t length = unorm2_normalize(folder, name.data(), static_cast<int32_t>(name.size()),
                                          folded.data(), static_cast<int32_t>(folded.size()), &status);
  if (U_FAILURE(status)) return std::u16string(name);
  folded.resize(static_cast<size_t>(length));
  return folded;
}

char16_t UpperCase(char16_t unit) {
  if (unit < 0x80) return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 32) : unit;
  const UChar32 upper = u_toupper(unit);
  return upper <= 0xFFFF ? static_cast<char16_t>(upper) : unit;
}

}  // namespace platform

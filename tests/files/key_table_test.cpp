// The key table and its file.
#include "files/key_table.h"

#include <filesystem>

#include "base/paths.h"
#include "state/keys.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

class KeyTableTest : public GameTest {
 protected:
  Text WriteFile(std::string_view bytes) const { return WriteData(u"_qlmfiles\\qlm_keycnf.dat", bytes); }
  std::string FileBytes() const { return ReadBytes(DataPath(u"qlm_keycnf.dat")); }
};

// By hand: what a new installation has, in the order of the key numbers.
void ExpectDefaultMap() {
  std::string map;
  for (int32_t key = 0; key <= 400; ++key) {
    if (KeyMap[key] != 0) map += std::to_string(key) + "=" + std::to_string(KeyMap[key]) + " ";
  }
  EXPECT_EQ(map,
            "28=29 31=12 32=14 33=18 36=22 37=24 38=26 42=16 44=11 45=13 46=15 47=19 49=21 50=23 51=25 52=28 "
            "54=29 57=16 ");
}

TEST_F(KeyTableTest, DefaultMapReplacesWhateverTheTableHeld) {
  KeyMap.Fill(99);
  SetDefaultKeyMap();
  ExpectDefaultMap();
}

TEST_F(KeyTableTest, WithoutAFileTheDefaultsGoIn) {
  EXPECT_TRUE(LoadKeyTable());
  ExpectDefaultMap();
  EXPECT_TRUE(Logged(u"# Key-config file wasn't detected. Load default setting."));
  EXPECT_FALSE(Logged(u"Key-config loaded."));
  EXPECT_EQ(FileBytes(), "") << "the file is written at the end of the program";
}

TEST_F(KeyTableTest, FileIs802BytesLowByteFirst) {
  KeyMap[0] = 1;
  KeyMap[1] = 258;
  KeyMap[400] = -2;
  SaveKeyTable();
  const std::string bytes = FileBytes();
  ASSERT_EQ(bytes.size(), 802U);
  EXPECT_EQ(bytes.substr(0, 4), std::string("\x01\x00\x02\x01", 4));
  EXPECT_EQ(bytes.substr(4, 796), std::string(796, '\0'));
  EXPECT_EQ(bytes.substr(800), "\xFE\xFF");
}

TEST_F(KeyTableTest, WhatIsSavedIsLoaded) {
  for (int32_t key = 0; key <= 400; ++key) KeyMap[key] = static_cast<int16_t>(key * 163 - 32000);
  const auto saved = KeyMap;
  SaveKeyTable();
  KeyMap.Clear();
  LoadKeyTable();
  for (int32_t key = 0; key <= 400; ++key) EXPECT_EQ(KeyMap[key], saved[key]) << key;
  EXPECT_TRUE(Logged(u"Key-config loaded."));
}

TEST_F(KeyTableTest, TwoFunctionsForOneKeyLeaveTheLast) {
  KeyMap[44] = 11;
  KeyMap[44] = 12;
  SaveKeyTable();
  LoadKeyTable();
  EXPECT_EQ(KeyMap[44], 12);
}

TEST_F(KeyTableTest, ShortFileLeavesTheRestAt0) {
  KeyMap.Fill(7);
  WriteFile(std::string("\x0B\x00\x0C\x00\x0D", 5));  // the third value has lost its high byte
  LoadKeyTable();
  EXPECT_EQ(KeyMap[0], 11);
  EXPECT_EQ(KeyMap[1], 12);
  EXPECT_EQ(KeyMap[2], 13);
  for (int32_t key = 3; key <= 400; ++key) EXPECT_EQ(KeyMap[key], 0) << key;
}

TEST_F(KeyTableTest, EmptyFileLeavesNoKey) {
  WriteFile("");
  LoadKeyTable();
  for (const int16_t code : KeyMap) EXPECT_EQ(code, 0);
  EXPECT_TRUE(Logged(u"Key-config loaded."));
}

TEST_F(KeyTableTest, LongFileIsReadAsFarAsTheTableGoes) {
  WriteFile(std::string(802, '\0') + "\x0B\x0B");
  LoadKeyTable();
  for (const int16_t code : KeyMap) EXPECT_EQ(code, 0);
}

TEST_F(KeyTableTest, AnyLengthIsTakenAsFarAsItGoes) {
  // The last byte of an odd length is a low one.
  const auto expected = [](size_t length, size_t key) -> int16_t {
    if (2 * key + 1 < length) return 0x1111;
    return 2 * key < length ? 0x11 : 0;
  };
  for (const size_t length : {size_t{1}, size_t{801}, size_t{802}, size_t{803}, size_t{10'000'000}}) {
    KeyMap.Fill(7);
    WriteFile(std::string(length, '\x11'));
    LoadKeyTable();
    for (int32_t key = 0; key <= 400; ++key) {
      ASSERT_EQ(KeyMap[key], expected(length, static_cast<size_t>(key))) << key << " of " << length;
    }
  }
}

TEST_F(KeyTableTest, WhatCannotBeReadIsToldAndGivesTheDefaults) {
  fs::create_directory(SystemFolder() + "/_qlmfiles/qlm_keycnf.dat");
  EXPECT_FALSE(LoadKeyTable());
  ExpectDefaultMap();
}

TEST_F(KeyTableTest, WhatCannotBeWrittenIsPassedOver) {
  fs::create_directory(SystemFolder() + "/_qlmfiles/qlm_keycnf.dat");
  SaveKeyTable();
  EXPECT_TRUE(fs::is_directory(SystemFolder() + "/_qlmfiles/qlm_keycnf.dat"));
}

}  // namespace
}  // namespace qlm

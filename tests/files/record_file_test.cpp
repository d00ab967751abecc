// Play records and their files.
#include "files/record_file.h"

#include <cstring>

#include "state/settings.h"
#include "tests/support/bytes.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

SongEntry Header() {
  SongEntry header;
  header.title = u"羽";
  header.artist = u"us";
  header.bpm = 132;
  header.player = 1;
  header.playLevel = 5;
  header.midiFile = u"m";
  header.rank = 2;
  header.volWav = 100;
  header.total = 300;
  header.lengthMs = 65536;
  header.stageFile = u"s.png";
  header.numWav = 3;
  header.numBmp = 4;
  header.path = u"\\a.bms";
  return header;
}

// 羽 is 89 48 in code page 932; 132 is 1.03125 * 2^7.
std::vector<FileField> HeaderFields() {
  return {{"BMSID", FromHex("FE FF FF FF")},
          {"title", FromHex("02 00 89 48")},
          {"artist", FromHex("02 00 75 73")},
          {"genre", FromHex("00 00")},
          {"bpm", FromHex("00 00 04 43")},
          {"player", FromHex("01 00 00 00")},
          {"playLevel", FromHex("05 00 00 00")},
          {"midiFile", FromHex("01 00 6D")},
          {"rank", FromHex("02 00 00 00")},
          {"volWav", FromHex("64 00 00 00")},
          {"total", FromHex("2C 01 00 00")},
          {"lengthMs", FromHex("00 00 01 00")},
          {"stageFile", FromHex("05 00 73 2E 70 6E 67")},
          {"numWav", FromHex("03 00 00 00")},
          {"numBmp", FromHex("04 00 00 00")},
          {"path", FromHex("06 00 5C 61 2E 62 6D 73")}};
}

size_t LengthOf(const std::vector<FileField>& fields) {
  size_t length = 0;
  for (const FileField& field : fields) length += field.bytes.size();
  return length;
}

const std::vector<RecEvent> kEvents = {{.pos = 192, .kind = 11, .delta = 2, .colour = 65535},
                                       {.pos = 198, .kind = -11},
                                       {.pos = 982, .kind = 1024}};

TEST(RecordFile, IsHeaderRowCountAndEvents) {
  ScoreEntry entry;
  entry.clear = -1;
  std::memcpy(entry.name.data(), "Me      ", 8);
  std::vector<FileField> fields = HeaderFields();
  fields.push_back({"zero bytes behind the header", std::string(1023 - LengthOf(fields), '\0')});
  fields.push_back({"the row's clear flag", FromHex("FF FF")});
  fields.push_back({"the row's name", "Me      "});
  fields.push_back({"the rest of the row", std::string(34, '\0')});
  fields.push_back({"zero bytes behind the row", std::string(1439 - 1067, '\0')});
  fields.push_back({"RecCount", FromHex("03 00 00 00")});
  fields.push_back({"a press", FromHex("C0 00 00 00  0B 00 00 00  00 00 00 40  FF FF 00 00  00 00")});
  fields.push_back({"a release", FromHex("C6 00 00 00  F5 FF FF FF  00 00 00 00  00 00 00 00  00 00")});
  fields.push_back({"the end", FromHex("D6 03 00 00  00 04 00 00  00 00 00 00  00 00 00 00  00 00")});
  EXPECT_TRUE(HasFields(RecordBytes(-2, Header(), entry, 3, kEvents), fields));
}

TEST(RecordFile, LongTextsEndBeforeTheRow) {
  SongEntry header = Header();
  const std::string plain = RecordBytes(7, header, {}, 3, kEvents);
  header.path = Text(5000, u'p');
  const std::string bytes = RecordBytes(7, header, {}, 3, kEvents);
  EXPECT_EQ(bytes.size(), plain.size());
  EXPECT_EQ(bytes.substr(1023), plain.substr(1023));
  // 1023 less the ID, six lengths, nine numbers and the 10 bytes of the texts ahead: 961 letters.
  EXPECT_EQ(bytes.substr(60, 2), FromHex("C1 03"));
  EXPECT_EQ(bytes.substr(62, 961), std::string(961, 'p'));

  header.title = Text(5000, u't');
  const std::string longTitle = RecordBytes(7, header, {}, 3, kEvents);
  EXPECT_EQ(longTitle.substr(1023), plain.substr(1023));
  EXPECT_EQ(longTitle.substr(4, 2), FromHex("CB 03")) << "971 letters, which leaves none for the others";
  EXPECT_EQ(longTitle.substr(1021, 2), FromHex("00 00")) << "the length of the path";
}

TEST(RecordFile, WhatIsWrittenIsRead) {
  ScoreEntry entry;
  entry.hiSpeed = -1;
  entry.counts = {1, 2, 3, 4, 5};
  const RecordFile record = TakeRecord(RecordBytes(42, Header(), entry, 3, kEvents));
  EXPECT_EQ(record.bmsId, 42);
  EXPECT_EQ(record.entry, entry);
  EXPECT_EQ(record.count, 3);
  EXPECT_EQ(record.events, kEvents);
  EXPECT_EQ(record.looked, 1443U + 54);
}

TEST(RecordFile, EventsThatWereNotKeptAreZeroBytes) {
  const std::string bytes = RecordBytes(1, {}, {}, 5, kEvents);
  EXPECT_EQ(bytes.size(), 1443U + 5 * 18);
  EXPECT_EQ(bytes.substr(1443 + 3 * 18), std::string(36, '\0'));
  EXPECT_EQ(TakeRecord(bytes).events.size(), 5U);
}

TEST(RecordFile, ShortFilesHoldWhatTheyHold) {
  ScoreEntry entry;
  entry.clear = -1;
  entry.counts[4] = 9;
  const std::string whole = RecordBytes(42, Header(), entry, 3, kEvents);
  for (size_t length = 0; length <= whole.size(); ++length) {
    const RecordFile record = TakeRecord(whole.substr(0, length));
    EXPECT_EQ(record.bmsId, length >= 4 ? 42 : 0) << length;
    EXPECT_EQ(record.entry.clear, length >= 1025 ? -1 : 0) << length;
    EXPECT_EQ(record.entry.counts[4], length >= 1067 ? 9 : 0) << length;
    EXPECT_EQ(record.count, length >= 1443 ? 3 : 0) << length;
    EXPECT_EQ(record.events.size(), length < 1443 ? 0U : (length - 1443) / 18) << length;
    EXPECT_LE(record.looked, length) << length;
  }
  EXPECT_EQ(TakeRecord(whole.substr(0, 1500)).looked, 1497U);
  EXPECT_EQ(TakeRecord(whole.substr(0, 1490)).looked, 1443U + 36) << "half an event is none";
  EXPECT_EQ(TakeRecord(whole.substr(0, 1300)).looked, 1067U);
  EXPECT_EQ(TakeRecord(whole.substr(0, 1030)).looked, 1030U);
  EXPECT_EQ(TakeRecord(whole.substr(0, 500)).looked, 4U);
}

TEST(RecordFile, ImpossibleCountsTakeNoMemory) {
  std::string bytes = RecordBytes(1, {}, {}, 0, {});
  for (const char* const count : {"FF FF FF 7F", "00 00 00 80", "FF FF FF FF"}) {
    const RecordFile record = TakeRecord(bytes.replace(1439, 4, FromHex(count)));
    EXPECT_TRUE(record.events.empty()) << count;
    EXPECT_EQ(record.events.capacity(), 0U) << count;
  }
  // 100,001 events at most, as in a play.
  bytes = RecordBytes(1, {}, {}, 100'010, {});
  EXPECT_EQ(TakeRecord(bytes).events.size(), 100'001U);
  EXPECT_EQ(TakeRecord(bytes).count, 100'010);
}

TEST(RecordPath, LiesBesideTheChart) {
  EXPECT_EQ(RecordPath(u"\\a.b\\c.d.bms"), u"\\a.b\\c.d.qpd");
  EXPECT_EQ(RecordPath(u"\\a.b\\chart"), u"\\a.b\\chart.bpd");
}

TEST(RecordPath, WidePlaysHaveRecordsOfTheirOwn) {
  WideCharts = true;
  EXPECT_EQ(RecordPath(u"\\a.b\\c.d.bms"), u"\\a.b\\c.d.w.qpd");
  EXPECT_EQ(RecordPath(u"\\a.b\\chart"), u"\\a.b\\chart.w.qpd");
  WideCharts = false;
}

}  // namespace
}  // namespace qlm

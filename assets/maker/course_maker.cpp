// Writes a stock course from its charts, as the course editor would save it.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "base/bytes.h"
#include "files/list_file.h"
#include "library/song_list.h"
#include "platform/files.h"
#include "state/lists.h"

namespace {

// Head, then the rows of the active list.
std::string CourseBytes(uint8_t stars) {
  constexpr std::string_view magic = "qlmcourse2              ";
  static_assert(magic.size() == 24);
  qlm::ByteWriter bytes;
  bytes.Bytes(magic);
  bytes.U8(stars);
  bytes.U8(static_cast<uint8_t>(qlm::songList.size()));
  bytes.U16(0);  // a course's title is the name of its file
  bytes.I32(static_cast<int32_t>(qlm::listTotalTime));
  for (const qlm::SongEntry& song : qlm::songList) qlm::PutSongEntry(bytes, song);
  return bytes.Take();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4) {
    std::fputs("usage: course_maker COURSE.qcl STARS CHART...\n", stderr);
    return 2;
  }
  for (int i = 3; i < argc; ++i) {
    qlm::AddSong(platform::InnerPath(std::filesystem::absolute(argv[i]).string()));
    if (!qlm::songList.back().path.empty()) continue;
    std::fprintf(stderr, "course_maker: cannot read %s\n", argv[i]);
    return 1;
  }
  const std::string bytes = CourseBytes(static_cast<uint8_t>(std::stoi(argv[2])));
  std::ofstream file(argv[1], std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (file.flush().good()) return 0;
  std::fprintf(stderr, "course_maker: cannot write %s\n", argv[1]);
  return 1;
}

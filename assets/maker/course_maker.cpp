// Writes a stock course from its charts, as the course editor would save it.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "files/course_files.h"
#include "library/song_list.h"
#include "platform/files.h"
#include "state/lists.h"

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
  qlm::CourseFile course;
  course.stars = static_cast<uint8_t>(std::stoi(argv[2]));
  course.songs = static_cast<uint8_t>(qlm::songList.size());
  course.length = qlm::LengthOfSongs(qlm::songList);
  course.rows = qlm::songList;
  const std::string bytes = qlm::CourseFileBytes(course);
  std::ofstream file(argv[1], std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (file.flush().good()) return 0;
  std::fprintf(stderr, "course_maker: cannot write %s\n", argv[1]);
  return 1;
}

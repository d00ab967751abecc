// Writes a stock course from its charts, as the course editor would save it but for the paths: those begin
// with the word for the program's folder, so that the course can be played wherever it is copied to.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "files/course_files.h"
#include "files/search_folders.h"
#include "library/song_list.h"
#include "platform/files.h"
#include "state/lists.h"

int main(int argc, char** argv) {
  if (argc < 5) {
    std::fputs("usage: course_maker COURSE.qcl STARS FOLDER CHART...\n", stderr);
    return 2;
  }
  const qlm::Text folder = platform::InnerPath(argv[3]);
  for (int i = 4; i < argc; ++i) {
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
  for (qlm::SongEntry& row : course.rows) row.path.replace(0, folder.size(), qlm::kCurrentFolder);
  const std::string bytes = qlm::CourseFileBytes(course);
  std::ofstream file(argv[1], std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (file.flush().good()) return 0;
  std::fprintf(stderr, "course_maker: cannot write %s\n", argv[1]);
  return 1;
}

// The file header, the picture's header, the table, the rows.
#include "tools/media_files/bmp.h"

#include <initializer_list>

#include "tools/media_files/wav.h"

namespace media {

std::string BmpFile::Bytes() const {
  const auto offset = static_cast<uint32_t>(54 + 4 * table.size());
  std::string bytes = "BM";
  const auto put = [&](std::initializer_list<uint32_t> values, int count) {
    for (const uint32_t value : values) bytes += Little(value, count);
  };
  put({offset + static_cast<uint32_t>(data.size()), 0, offset}, 4);
  put({40, static_cast<uint32_t>(width), static_cast<uint32_t>(height)}, 4);
  put({1, bits}, 2);
  put({compression, 0, 0, 0, coloursUsed, 0}, 4);
  for (const uint32_t entry : table) put({entry}, 4);
  bytes.append(data.begin(), data.end());
  return bytes;
}

std::string BmpOf(const std::vector<std::vector<uint32_t>>& rows) {
  BmpFile file;
  file.width = static_cast<int32_t>(rows.front().size());
  file.height = static_cast<int32_t>(rows.size());
  for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
    for (const uint32_t colour : *row) {
      for (int byte = 0; byte < 3; ++byte)
        file.data.push_back(static_cast<unsigned char>(colour >> (8 * byte)));
    }
    file.data.resize((file.data.size() + 3) / 4 * 4);
  }
  return file.Bytes();
}

std::string SolidBmp(int32_t width, int32_t height, uint32_t colour) {
  return BmpOf({static_cast<size_t>(height), std::vector<uint32_t>(static_cast<size_t>(width), colour)});
}

}  // namespace media

// The sorts of the active list.
#include "library/sorts.h"

#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "base/sort.h"
#include "base/text.h"
#include "platform/collation.h"
#include "state/lists.h"

namespace qlm {
namespace {

// Sorts the rows by their keys, which are made once. Rows go their way as if they were swapped themselves.
template <typename MakeKey>
void SortRows(MakeKey makeKey) {
  struct Place {
    decltype(makeKey(songList[0])) key;
    size_t row;
  };
  std::vector<Place> places;
  places.reserve(songList.size());
  for (const SongEntry& song : songList) places.push_back({makeKey(song), places.size()});
  SortInScheme(
      std::span(places), [](const Place& place) -> const auto& { return place.key; });
  std::vector<SongEntry> sorted;
  sorted.reserve(places.size());
  for (const Place& place : places) sorted.push_back(std::move(songList[place.row]));
  songList = std::move(sorted);
  // A row keeps its marks.
  const auto order = [&](std::vector<bool>& marks) {
    marks.resize(places.size());
    std::vector<bool> moved(marks.size());
    for (size_t i = 0; i < places.size(); ++i) moved[i] = marks[places[i].row];
    marks = std::move(moved);
  };
  order(songCleared);
  order(songHasRecord);
}

void SortByText(Text SongEntry::*field) {
  const platform::Collation collation;
  SortRows([&](const SongEntry& song) { return collation.Key(song.*field); });
}

}  // namespace

void SortByLevel() {
  SortRows([](const SongEntry& song) { return song.playLevel; });
}

void SortByGenre() { SortByText(&SongEntry::genre); }

void SortByTitle() { SortByText(&SongEntry::title); }

void SortByArtist() { SortByText(&SongEntry::artist); }

}  // namespace qlm

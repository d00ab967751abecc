// Lettering in drawings: faces whose letters are made of whole pixels, and the SVG text set in them.
//
// A face is a text file. "cell W H" is the room of a letter, "from X Y" where its drawn part begins there,
// "drawn W H" how large that part is. Then come bands of letters: a line "= A B C" names them, and H lines
// show them side by side,
// '#' for ink, a blank between two letters. Lines that begin with "//" are comments. A letter that no band
// shows is blank.
//
// In a drawing, <text face="desk" x="8" y="16" fill="#F3EAD3">Score</text> becomes a path of squares with the
// left top corner of its first cell at (8, 16). Other attributes stay as they are.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace assetmaker {

struct Face {
  int cellWidth = 0, cellHeight = 0;
  int left = 0, top = 0;
  int drawnWidth = 0, drawnHeight = 0;
  std::map<char, std::vector<std::string>> letters;  // the rows of each, '#' for ink
};

// What is wrong with a face or a drawing, for whoever wrote it.
struct LetteringError {
  std::string message;
};

// On an error nothing is returned and `error` is set.
std::optional<Face> ReadFace(std::string_view text, LetteringError& error);

// The text as SVG path data, its first cell at (x, y).
std::string PathOf(const Face& face, std::string_view text, int x, int y);

// The drawing with every <text face="..."> replaced. A face that is not among `faces` is an error.
std::optional<std::string> SetLettering(std::string_view drawing, const std::map<std::string, Face>& faces,
                                        LetteringError& error);

}  // namespace assetmaker

// The sounds that a chart names behind the line in hand, so that other cores can decode them meanwhile.
#pragma once

#include <cstddef>
#include <deque>

#include "base/text.h"

namespace qlm {

// Looks ahead of the reader as far as the cores have work, up to the first line of data: a chart names its
// sounds before. Nothing it does can be seen but in the time that a load takes.
class SoundsAhead {
 public:
  // `text` is the chart's, `folder` the one of its sounds; both outlive this.
  SoundsAhead(TextView text, TextView folder) : text_(text), folder_(folder) {}
  ~SoundsAhead();
  SoundsAhead(const SoundsAhead&) = delete;
  SoundsAhead& operator=(const SoundsAhead&) = delete;

  // `line`, a part of the text, is read now.
  void Reach(TextView line);

 private:
  size_t PlaceOf(TextView line) const { return static_cast<size_t>(line.data() - text_.data()); }
  void Begin(TextView line) const;

  TextView text_;
  TextView folder_;
  size_t seen_ = 0;           // the text up to here was looked at
  std::deque<size_t> begun_;  // places of the lines, from the one in hand on, whose sounds were begun
};

}  // namespace qlm

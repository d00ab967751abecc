// The look ahead over a chart's lines.
#include "chart/sounds_ahead.h"

#include "chart/lines.h"
#include "sound/buffers.h"
#include "sound/decoder.h"
#include "state/sounds.h"

namespace qlm {

SoundsAhead::~SoundsAhead() { ForgetSoundsAhead(); }

void SoundsAhead::Reach(TextView line) {
  const size_t place = PlaceOf(line);
  while (!begun_.empty() && begun_.front() < place) begun_.pop_front();
  if (seen_ < place) seen_ = place;
  while (begun_.size() < SoundsAtOnce() && seen_ != TextView::npos) {
    const TextView next = text_.substr(seen_, FindLineEnd(text_, seen_ + 1) - seen_);
    if (IsNumbered(next)) {
      seen_ = TextView::npos;
    } else {
      if (Word(next) == Word(u"WAV")) {
        begun_.push_back(seen_);
        Begin(next);
      }
      seen_ = FindCommand(text_, seen_ + next.size());
    }
  }
}

void SoundsAhead::Begin(TextView line) const {
  Text file = Join(folder_, Argument(line, 7));
  FindWideSound(file);
  const Text* const held = CourseMode ? nullptr : WavHeldName.Find(SlotOf(line));
  if (held == nullptr || *held != file) LoadAhead(file);
}

}  // namespace qlm

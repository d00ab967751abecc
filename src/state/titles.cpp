// No words, and nothing said of readings.
#include "state/titles.h"

namespace qlm {

void ResetTitles() {
  DictFrom = {{}};
  DictTo = {{}};
  ToldOfNoReadings = false;
}

}  // namespace qlm

// What stands under the message of a play, and the line that tells of a pause.
#pragma once

namespace qlm {

// A dark strip, where a message would otherwise stand on the chart's picture. While a pause lasts, the strip
// says so at its right end, and names the key that goes on; a long message takes that place for its time.
// Else draws nothing.
void DrawMessageStrip();

}  // namespace qlm

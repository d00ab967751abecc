// What stands under the message of a play, and the line that tells of a pause.
#pragma once

namespace qlm {

// A dark strip, where a message would otherwise stand on the chart's picture. While a pause lasts, the strip
// says so at its right end, and names the key that goes on; a long message takes that place for its time.
// Else draws nothing.
void DrawMessageStrip();

// What keeps the chart from being played as its author meant it, at the lower edge of the picture.
void DrawTroubleStrip();

}  // namespace qlm

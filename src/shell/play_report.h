// What a play from the command line did, for scripts: written to the file that the environment names.
#pragma once

namespace qlm {

// With QUILLMARCH_TRANSCRIPT in the environment, which names a file: keeps judgements from here on.
void BeginPlayReport();
// Writes the file: one JSON object a line, for each judgement its clock, channel, pos, delta, grade (4
// PERFECT … 0 POOR), tooEarly and side, and at last the figures of the play. Does nothing when none was
// begun. A file that cannot be written is told on standard error.
void WritePlayReport();

}  // namespace qlm

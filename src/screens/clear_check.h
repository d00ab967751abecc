// The clear check: which rows have been cleared, and which have a record.
#pragma once

namespace qlm {

// Looks for the score and the record of the next row, once the wheel has come to rest. One row a call.
void CheckNextRow();

}  // namespace qlm

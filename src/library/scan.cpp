// Searching folders for charts.
#include "library/scan.h"

namespace qlm {

void FindFiles(Text&, TextView, bool) {}

void ScanFolder(TextView) {}

bool MakeBMSListFile(bool) { return false; }

}  // namespace qlm

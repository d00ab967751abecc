// The dialog of the key configuration.
#include "forms/key_config.h"

namespace qlm {

void OpenKeyConfig(QWidget* /*parent*/) {}

}  // namespace qlm

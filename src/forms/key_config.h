// The key configuration: the dialog that edits which key and which input of a controller does what.
#pragma once

class QWidget;

namespace qlm {

// Shows the dialog before `parent` and returns when it is closed. Needs a QApplication.
void OpenKeyConfig(QWidget* parent);

}  // namespace qlm

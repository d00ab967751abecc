// The one picture of the startup menu: a narrow banner with a quill on a desk at night.
#pragma once

#include <QWidget>

namespace qlm {

class Banner : public QWidget {
 public:
  Banner();

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace qlm

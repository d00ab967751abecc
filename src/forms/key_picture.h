// The drawn part of the key configuration: shapes for functions, which can be clicked, and light up.
#pragma once

#include <QPainterPath>
#include <QRectF>
#include <QSet>
#include <QString>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <vector>

namespace qlm {

// What stands for one function on a picture.
struct KeyShape {
  enum class Kind { kWide, kNarrow, kLeftHalf, kRightHalf, kMenu };
  int32_t function;
  Kind kind;
  QRectF rect;  // in units of the picture
  QString label;
};

// A picture of shapes, in a scale of its own: at 1 its writing suits a font of usual size.
class KeyPicture : public QWidget {
 public:
  // Two controllers, with the lanes' functions.
  static KeyPicture* MakeControllers(QWidget* parent, qreal scale);
  // The functions of menus.
  static KeyPicture* MakeSpecialKeys(QWidget* parent, qreal scale);

  // Runs with the function whose shape was clicked.
  std::function<void(int32_t)> clicked;

  // The frame around one shape; a function that has no shape here takes it away.
  void MoveFrame(int32_t function);
  // Functions that some input has, and those of which one is held.
  void ShowStates(const QSet<int32_t>& given, const QSet<int32_t>& held);

  // Where the shape stands in the widget; empty for a function that has none here.
  QRectF shapKey(int32_t function) const;

 private:
  KeyPicture(QWidget* parent, qreal scale, QSizeF size, std::vector<KeyShape> shapes, bool controllers);
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

  void DrawShape(QPainter& painter, const KeyShape& shape) const;

  qreal scale_;  // pixels of a unit
  QSizeF size_;
  std::vector<KeyShape> shapes_;  // in ascending order of their functions
  bool controllers_;
  int32_t current_ = 0;
  QSet<int32_t> given_;
  QSet<int32_t> held_;
};

}  // namespace qlm

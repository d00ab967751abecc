// The banner, drawn as shapes so that it is sharp at every scale.
#include "forms/banner.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

namespace qlm {
namespace {

constexpr int kHeight = 56;
constexpr QColor kDeskAbove(0x13, 0x1A, 0x2E);
constexpr QColor kDeskBelow(0x0B, 0x10, 0x20);
constexpr QColor kLamp(0xD9, 0xA4, 0x41, 60);
constexpr QColor kPaper(0xF3, 0xEA, 0xD3);
constexpr QColor kShade(0xB9, 0xAD, 0x93);
constexpr QColor kGold(0xD9, 0xA4, 0x41);
constexpr QColor kTeal(0x3F, 0xB8, 0xAF);

void DrawDesk(QPainter& painter, const QRectF& desk) {
  QLinearGradient night(desk.topLeft(), desk.bottomLeft());
  night.setColorAt(0, kDeskAbove);
  night.setColorAt(1, kDeskBelow);
  painter.fillRect(desk, night);
  QRadialGradient lamp(QPointF(90, desk.top() - 20), 260);
  lamp.setColorAt(0, kLamp);
  lamp.setColorAt(1, Qt::transparent);
  painter.fillRect(desk, lamp);
}

// The line that the quill has written, with the heads of five notes on it.
void DrawLine(QPainter& painter, const QRectF& desk, qreal from) {
  const qreal y = desk.bottom() - 13;
  painter.setPen(QPen(kTeal, 1.2));
  painter.drawLine(QPointF(from, y), QPointF(desk.right() - 24, y));
  painter.setPen(Qt::NoPen);
  for (int i = 0; i < 5; ++i) {
    painter.setBrush(i % 2 == 0 ? kPaper : kTeal);
    painter.drawRoundedRect(QRectF(desk.right() - 230 + 42 * i, y - 9 - 5 * (i % 3), 22, 4), 1.5, 1.5);
  }
}

// Its nib stands at the origin, and its feather rises to the upper right.
void DrawQuill(QPainter& painter) {
  QPainterPath vane(QPointF(10, -8));
  vane.cubicTo(18, -26, 36, -33, 66, -34);
  vane.cubicTo(62, -20, 44, -8, 22, -7);
  vane.lineTo(25, -10);
  vane.lineTo(15, -6.5);
  vane.closeSubpath();
  painter.setPen(Qt::NoPen);
  painter.setBrush(kPaper);
  painter.drawPath(vane);
  QPainterPath half(QPointF(10, -8));
  half.cubicTo(26, -17, 44, -27, 66, -34);
  half.cubicTo(62, -20, 44, -8, 22, -7);
  half.lineTo(25, -10);
  half.lineTo(15, -6.5);
  half.closeSubpath();
  painter.setBrush(kShade);
  painter.drawPath(half);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(kDeskBelow, 1));
  QPainterPath shaft(QPointF(8, -7));
  shaft.cubicTo(24, -16, 42, -26, 62, -32.5);
  painter.drawPath(shaft);
  QPainterPath nib(QPointF(0, 0));
  nib.lineTo(5, -9);
  nib.lineTo(11, -4.5);
  nib.closeSubpath();
  painter.setPen(Qt::NoPen);
  painter.setBrush(kGold);
  painter.drawPath(nib);
}

void DrawName(QPainter& painter, const QRectF& desk) {
  QFont face(QStringLiteral("serif"));
  face.setItalic(true);
  face.setPixelSize(28);
  painter.setFont(face);
  painter.setPen(kPaper);
  painter.drawText(desk.adjusted(104, 0, 0, -8), Qt::AlignVCenter | Qt::AlignLeft,
                   QStringLiteral("quillmarch"));
}

}  // namespace

Banner::Banner() {
  setFixedHeight(kHeight);
  setAccessibleName(QStringLiteral("quillmarch"));
}

void Banner::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF desk = rect();
  DrawDesk(painter, desk);
  DrawLine(painter, desk, 24);
  DrawName(painter, desk);
  painter.translate(26, desk.bottom() - 13);
  DrawQuill(painter);
}

}  // namespace qlm

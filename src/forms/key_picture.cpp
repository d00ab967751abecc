// Ink, paper and lamp light, drawn in units that the painter scales.
#include "forms/key_picture.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <algorithm>
#include <array>
#include <utility>

namespace qlm {
namespace {

const QColor kDeskAbove(0x13, 0x1A, 0x2E);
const QColor kDeskBelow(0x0B, 0x10, 0x20);
const QColor kPlate(0x20, 0x2A, 0x47);
const QColor kEdge(0x3A, 0x47, 0x6B);
const QColor kPaper(0xF3, 0xEA, 0xD3);
const QColor kTeal(0x3F, 0xB8, 0xAF);
const QColor kGold(0xD9, 0xA4, 0x41);
const QColor kInk(0x0B, 0x10, 0x20);
const QColor kLamp(0xFF, 0xF6, 0xDA);

using Kind = KeyShape::Kind;

// Units, all within a plate.
constexpr qreal kMargin = 14;
constexpr qreal kPlateWidth = 268;
constexpr qreal kPlateHeight = 184;
constexpr qreal kBetweenPlates = 14;
constexpr qreal kKeyWidth = 28;
constexpr qreal kKeyStep = 32;
constexpr qreal kKeysWidth = 3 * kKeyStep + kKeyWidth;
constexpr qreal kBesideKeys = 14;
constexpr qreal kUpperTop = 22;
constexpr qreal kUpperHeight = 62;
constexpr qreal kLowerTop = 92;
constexpr qreal kLowerHeight = 72;
constexpr qreal kRadius = 47;  // of the turntable
constexpr qreal kTableHeight = 92;

QColor Mix(const QColor& a, const QColor& b, qreal share) {
  const auto mixed = [share](int from, int to) { return qRound(from + (to - from) * share); };
  return {mixed(a.red(), b.red()), mixed(a.green(), b.green()), mixed(a.blue(), b.blue())};
}

QRectF Plate(int32_t side) {
  return {kMargin + side * (kPlateWidth + kBetweenPlates), kMargin, kPlateWidth, kPlateHeight};
}

// The second side mirrors the first, but for the order of its keys.
qreal KeysLeft(int32_t side) {
  const QRectF plate = Plate(side);
  return side == 0 ? plate.right() - kBesideKeys - kKeysWidth : plate.left() + kBesideKeys;
}

QPointF TurntableCentre(int32_t side) {
  const QRectF plate = Plate(side);
  const qreal across = (kPlateWidth - kBesideKeys - kKeysWidth) / 2;
  return {side == 0 ? plate.left() + across : plate.right() - across, plate.top() + kTableHeight};
}

std::vector<KeyShape> ControllerShapes() {
  constexpr std::array<int32_t, 7> kKeys = {11, 12, 13, 14, 15, 18, 19};
  std::vector<KeyShape> shapes;
  for (int32_t side = 0; side < 2; ++side) {
    const int32_t first = side * 10;
    const qreal top = Plate(side).top();
    for (int32_t key = 0; key < 7; ++key) {
      const bool upper = key % 2 == 1;
      const qreal left = KeysLeft(side) + key * kKeyStep / 2;
      shapes.push_back({kKeys.at(static_cast<size_t>(key)) + first, upper ? Kind::kNarrow : Kind::kWide,
                        upper ? QRectF(left, top + kUpperTop, kKeyWidth, kUpperHeight)
                              : QRectF(left, top + kLowerTop, kKeyWidth, kLowerHeight),
                        QString::number(key + 1)});
    }
    const QPointF centre = TurntableCentre(side);
    const QSizeF half(kRadius, 2 * kRadius);
    shapes.push_back({16 + first, Kind::kRightHalf, {centre + QPointF(0, -kRadius), half}, "right"});
    shapes.push_back({17 + first, Kind::kLeftHalf, {centre + QPointF(-kRadius, -kRadius), half}, "left"});
  }
  return shapes;
}

std::vector<KeyShape> SpecialShapes() {
  constexpr qreal kWidth = 62;
  constexpr qreal kHeight = 32;
  constexpr qreal kAcross = kMargin + kWidth + 8;
  constexpr qreal kDown = kMargin + kHeight + 8;
  constexpr qreal kArrow = 26;
  const QPointF middle(kAcross + kWidth + 20 + 1.5 * kArrow, kMargin + kHeight + 4);
  const auto arrow = [&](qreal across, qreal down) {
    return QRectF(middle.x() + across * (kArrow + 1) - kArrow / 2,
                  middle.y() + down * (kArrow - 2) - kArrow / 2, kArrow, kArrow);
  };
  return {{1, Kind::kMenu, {kMargin, kMargin, kWidth, kHeight}, "ESC"},
          {2, Kind::kMenu, {kAcross, kMargin, kWidth, kHeight}, "TAB"},
          {3, Kind::kMenu, {kMargin, kDown, kWidth, kHeight}, "Enter"},
          {4, Kind::kMenu, arrow(0, -1), QStringLiteral(u"↑")},
          {5, Kind::kMenu, arrow(0, 1), QStringLiteral(u"↓")},
          {6, Kind::kMenu, arrow(-1, 0), QStringLiteral(u"←")},
          {7, Kind::kMenu, arrow(1, 0), QStringLiteral(u"→")},
          {8, Kind::kMenu, {kAcross, kDown, kWidth, kHeight}, QStringLiteral(u"★")}};
}

QColor InkOf(const KeyShape& shape) {
  switch (shape.kind) {
    case Kind::kWide: return kPaper;
    case Kind::kNarrow: return kTeal;
    case Kind::kLeftHalf:
    case Kind::kRightHalf: return kGold;
    case Kind::kMenu: return shape.function == 8 ? kGold : kPaper;
  }
  return kPaper;
}

bool IsHalf(Kind kind) { return kind == Kind::kLeftHalf || kind == Kind::kRightHalf; }

// A half is a ring's, so that the middle of the turntable stays free.
QPainterPath Outline(const KeyShape& shape) {
  QPainterPath path;
  if (!IsHalf(shape.kind)) {
    path.addRoundedRect(shape.rect, 6, 6);
    return path;
  }
  constexpr qreal kInner = 16;
  constexpr qreal kFromMiddle = 2;
  const bool left = shape.kind == Kind::kLeftHalf;
  const QPointF centre(left ? shape.rect.right() : shape.rect.left(), shape.rect.center().y());
  QPainterPath ring;
  ring.addEllipse(centre, kRadius, kRadius);
  ring.addEllipse(centre, kInner, kInner);
  path.addRect(shape.rect.adjusted(left ? 0 : kFromMiddle, 0, left ? -kFromMiddle : 0, 0));
  return ring.intersected(path);
}

void DrawText(QPainter& painter, const QRectF& place, const QString& text, qreal height, const QColor& colour,
              bool bold = false) {
  QFont font = painter.font();
  font.setPixelSize(100);  // laid out large, so that every scale has the same shape
  font.setBold(bold);
  const QFontMetricsF metrics(font);
  const qreal scale = height / 100;
  painter.save();
  painter.setFont(font);
  painter.setPen(colour);
  painter.translate(place.center());
  painter.scale(scale, scale);
  painter.drawText(QPointF(-metrics.horizontalAdvance(text) / 2, metrics.capHeight() / 2), text);
  painter.restore();
}

// From the top of the turntable round its side to a head that points the way it turns.
void DrawTurn(QPainter& painter, const KeyShape& shape, const QColor& colour) {
  constexpr qreal kArc = 31;
  const bool left = shape.kind == Kind::kLeftHalf;
  const qreal way = left ? -1 : 1;
  const QPointF centre(left ? shape.rect.right() : shape.rect.left(), shape.rect.center().y());
  painter.save();
  painter.translate(centre);
  painter.scale(way, 1);
  painter.setPen(QPen(colour, 3.4, Qt::SolidLine, Qt::RoundCap));
  painter.setBrush(Qt::NoBrush);
  // Clockwise from a little behind the top, in sixteenths of a degree.
  painter.drawArc(QRectF(-kArc, -kArc, 2 * kArc, 2 * kArc), 62 * 16, -88 * 16);
  painter.rotate(26);
  painter.translate(kArc, 0);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  painter.drawPolygon(QPolygonF({QPointF(-7.5, -1), QPointF(7.5, -1), QPointF(0, 10)}));
  painter.restore();
}

void DrawPlate(QPainter& painter, int32_t side) {
  const QRectF plate = Plate(side);
  QLinearGradient light(plate.topLeft(), plate.bottomLeft());
  light.setColorAt(0, kPlate);
  light.setColorAt(1, Mix(kPlate, kDeskBelow, 0.55));
  painter.setBrush(light);
  painter.setPen(QPen(kEdge, 1));
  painter.drawRoundedRect(plate, 14, 14);

  const QPointF centre = TurntableCentre(side);
  painter.setPen(Qt::NoPen);
  painter.setBrush(kDeskBelow);
  painter.drawEllipse(centre, kRadius + 5, kRadius + 5);
  painter.setBrush(Mix(kDeskBelow, kGold, 0.35));
  painter.drawEllipse(centre, 5, 5);

  const QRectF name(side == 0 ? plate.left() + 10 : plate.right() - 42, plate.top() + 8, 32, 18);
  DrawText(painter, name, side == 0 ? QStringLiteral("1P") : QStringLiteral("2P"), 15, kGold, true);
  const QColor quiet = Mix(kPlate, kPaper, 0.75);
  DrawText(painter, {centre.x() - 60, plate.bottom() - 21, 120, 14},
           QCoreApplication::translate("KeyConfig", "(回転方向)"), 10.5, quiet);
  const qreal words = plate.bottom() - 37;
  DrawText(painter, {centre.x() - 50, words, 40, 14}, QStringLiteral("left"), 10.5, quiet);
  DrawText(painter, {centre.x() + 10, words, 40, 14}, QStringLiteral("right"), 10.5, quiet);
}

}  // namespace

KeyPicture* KeyPicture::MakeControllers(QWidget* parent, qreal scale) {
  return new KeyPicture(parent, scale,
                        {2 * (kMargin + kPlateWidth) + kBetweenPlates, kPlateHeight + 2 * kMargin},
                        ControllerShapes(), true);
}

KeyPicture* KeyPicture::MakeSpecialKeys(QWidget* parent, qreal scale) {
  return new KeyPicture(parent, scale, {2 * kMargin + 2 * 62 + 8 + 20 + 3 * 26 + 2, 2 * kMargin + 72},
                        SpecialShapes(), false);
}

KeyPicture::KeyPicture(QWidget* parent, qreal scale, QSizeF size, std::vector<KeyShape> shapes,
                       bool controllers)
    : QWidget(parent), scale_(scale), size_(size), shapes_(std::move(shapes)), controllers_(controllers) {
  std::sort(shapes_.begin(), shapes_.end(),
            [](const KeyShape& a, const KeyShape& b) { return a.function < b.function; });
  setFixedSize((size_ * scale_).toSize());
}

QRectF KeyPicture::shapKey(int32_t function) const {
  const auto shape = std::find_if(shapes_.begin(), shapes_.end(),
                                  [function](const KeyShape& each) { return each.function == function; });
  if (shape == shapes_.end()) return {};
  return {shape->rect.topLeft() * scale_, shape->rect.size() * scale_};
}

void KeyPicture::MoveFrame(int32_t function) {
  current_ = function;
  update();
}

void KeyPicture::ShowStates(const QSet<int32_t>& given, const QSet<int32_t>& held) {
  given_ = given;
  held_ = held;
  update();
}

void KeyPicture::mousePressEvent(QMouseEvent* event) {
  const auto hit = std::find_if(shapes_.begin(), shapes_.end(), [&](const KeyShape& shape) {
    return shapKey(shape.function).contains(event->position());
  });
  if (hit != shapes_.end() && clicked) clicked(hit->function);
}

// Full of ink when some input has its function, an outline when none has, and lit while one is held.
void KeyPicture::DrawShape(QPainter& painter, const KeyShape& shape) const {
  const QColor ink = InkOf(shape);
  const bool held = held_.contains(shape.function);
  const bool given = given_.contains(shape.function);
  const QPainterPath outline = Outline(shape);
  if (held) {
    for (int ring = 5; ring >= 1; --ring) {
      painter.setPen(QPen(QColor(kLamp.red(), kLamp.green(), kLamp.blue(), 26), ring * 3, Qt::SolidLine,
                          Qt::RoundCap, Qt::RoundJoin));
      painter.setBrush(Qt::NoBrush);
      painter.drawPath(outline);
    }
  }
  QLinearGradient fill(shape.rect.topLeft(), shape.rect.bottomLeft());
  const QColor above = held ? kLamp : given ? ink : Mix(kDeskBelow, ink, 0.16);
  fill.setColorAt(0, above);
  fill.setColorAt(1, held ? Mix(kLamp, ink, 0.35) : given ? Mix(ink, kInk, 0.22) : Mix(kDeskBelow, ink, 0.1));
  painter.setPen(QPen(given || held ? Mix(ink, kInk, 0.3) : Mix(kDeskBelow, ink, 0.55), 1.2));
  painter.setBrush(fill);
  painter.drawPath(outline);

  const QColor writing = given || held ? kInk : Mix(kDeskBelow, ink, 0.8);
  if (IsHalf(shape.kind)) {
    DrawTurn(painter, shape, writing);
    return;
  }
  if (shape.kind == Kind::kMenu) {
    DrawText(painter, shape.rect, shape.label, 14, writing, true);
    return;
  }
  // The number of the key, and below it the one of its row in the list.
  const QRectF foot(shape.rect.left(), shape.rect.bottom() - 17, shape.rect.width(), 14);
  DrawText(painter, foot, QString::number(shape.function), 10, writing);
  DrawText(painter, shape.rect.adjusted(0, 0, 0, -14), shape.label, 17, writing, true);
}

void KeyPicture::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(scale_, scale_);
  const QRectF ground({0, 0}, size_);
  QLinearGradient desk(ground.topLeft(), ground.bottomLeft());
  desk.setColorAt(0, kDeskAbove);
  desk.setColorAt(1, kDeskBelow);
  painter.setPen(Qt::NoPen);
  painter.setBrush(desk);
  painter.drawRoundedRect(ground, 8, 8);

  const auto current = std::find_if(shapes_.begin(), shapes_.end(),
                                    [this](const KeyShape& shape) { return shape.function == current_; });
  if (controllers_) {
    DrawPlate(painter, 0);
    DrawPlate(painter, 1);
  }
  for (const KeyShape& shape : shapes_) DrawShape(painter, shape);
  if (current == shapes_.end()) return;
  // shapCurrent: in lamp light on dark, so that it stands out from any ink.
  const QRectF frame = current->rect.adjusted(-3, -3, 3, 3);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(kInk, 4));
  painter.drawRoundedRect(frame, 7, 7);
  painter.setPen(QPen(kLamp, 2));
  painter.drawRoundedRect(frame, 7, 7);
}

}  // namespace qlm

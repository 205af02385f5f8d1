#include "Design.h"

#include <QFont>
#include <QPainter>
#include <QPainterPath>

#include "Landscape.h"
#include "Noise.h"
#include "Phone.h"

namespace kelvar::examples {
namespace {

/// The screen in points, and pixels per point.
constexpr QSizeF kScreen(390, 844);
constexpr int kScale = 3;
constexpr double kMargin = 24;
constexpr double kSheetTop = 398;

constexpr QColor kInk(0x12, 0x26, 0x30);
constexpr QColor kQuiet(0x6C, 0x7D, 0x86);
constexpr QColor kLine(0xE6, 0xEB, 0xED);
constexpr QColor kTeal(0x1B, 0x6B, 0x73);
constexpr QColor kOrange(0xE8, 0x6A, 0x33);
constexpr QColor kPaper(0xFF, 0xFF, 0xFF);

void write(QPainter& painter, const QRectF& frame, const QString& text, double size,
           QFont::Weight weight, const QColor& color, Qt::Alignment align = Qt::AlignLeft) {
  QFont font(QStringLiteral("Inter"));
  font.setPixelSize(100);
  font.setWeight(weight);
  font.setLetterSpacing(QFont::PercentageSpacing, size > 20 ? 98 : 99.5);
  font.setHintingPreference(QFont::PreferNoHinting);
  // Only whole pixel sizes are exact, so this is set at 100 pixels and scaled down.
  const double shrink = size / 100;
  painter.save();
  painter.setFont(font);
  painter.setPen(color);
  painter.translate(frame.topLeft());
  painter.scale(shrink, shrink);
  painter.drawText(QRectF(QPointF(), frame.size() / shrink),
                   static_cast<int>(align | Qt::AlignVCenter | Qt::TextDontClip), text);
  painter.restore();
}

void drawStatusBar(QPainter& painter) {
  write(painter, {36, 16, 80, 22}, QStringLiteral("8:20"), 16, QFont::DemiBold, Qt::white);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::white);
  for (int bar = 0; bar < 4; ++bar) {
    const double height = 4.5 + 2.5 * bar;
    painter.drawRoundedRect(QRectF(290 + 5 * bar, 33 - height, 3.2, height), 1, 1);
  }
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(255, 255, 255, 150), 1.1));
  painter.drawRoundedRect(QRectF(321, 21, 24, 12), 3.6, 3.6);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::white);
  painter.drawRoundedRect(QRectF(323, 23, 15, 8), 2, 2);
  painter.drawRoundedRect(QRectF(346.4, 25, 1.6, 4), 0.8, 0.8);
}

/// A round button of frosted glass with a line drawing in it.
void drawGlassButton(QPainter& painter, QPointF middle, const QPainterPath& sign) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0x10, 0x2B, 0x3A, 90));
  painter.drawEllipse(middle, 21, 21);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(Qt::white, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(sign.translated(middle));
}

void drawHeader(QPainter& painter) {
  QPainterPath back(QPointF(3, -6.5));
  back.lineTo(-3.5, 0);
  back.lineTo(3, 6.5);
  drawGlassButton(painter, {kMargin + 21, 82}, back);

  QPainterPath ribbon(QPointF(-5.5, -7.5));
  ribbon.lineTo(5.5, -7.5);
  ribbon.lineTo(5.5, 7.5);
  ribbon.lineTo(0, 3.2);
  ribbon.lineTo(-5.5, 7.5);
  ribbon.closeSubpath();
  drawGlassButton(painter, {kScreen.width() - kMargin - 21, 82}, ribbon);

  write(painter, {kMargin, 306, 340, 42}, QStringLiteral("Blue Tarn Loop"), 35, QFont::Bold,
        Qt::white);
  write(painter, {kMargin, 350, 340, 22}, QStringLiteral("Northern fells  ·  day hike"), 16,
        QFont::Medium, QColor(255, 255, 255, 215));
}

void drawStat(QPainter& painter, const QRectF& frame, const QString& value, const QString& unit,
              const QString& caption) {
  QFont font(QStringLiteral("Inter"));
  font.setPixelSize(100);
  font.setWeight(QFont::Bold);
  const double width = QFontMetricsF(font).horizontalAdvance(value) * 0.25;
  write(painter, {frame.left(), frame.top(), frame.width(), 30}, value, 26, QFont::Bold, kInk);
  write(painter, {frame.left() + width + 5, frame.top() + 3, 60, 28}, unit, 15, QFont::Medium,
        kQuiet);
  write(painter, {frame.left(), frame.top() + 32, frame.width(), 20}, caption, 14, QFont::Medium,
        kQuiet);
}

void drawStats(QPainter& painter) {
  constexpr double kTop = kSheetTop + 28;
  drawStat(painter, {kMargin, kTop, 110, 60}, QStringLiteral("12.4"), QStringLiteral("km"),
           QStringLiteral("Distance"));
  drawStat(painter, {kMargin + 122, kTop, 110, 60}, QStringLiteral("640"), QStringLiteral("m"),
           QStringLiteral("Climb"));
  drawStat(painter, {kMargin + 244, kTop, 110, 60}, QStringLiteral("4:10"), QStringLiteral("h"),
           QStringLiteral("Walking"));
  painter.setPen(QPen(kLine, 1));
  painter.drawLine(QPointF(kMargin, kTop + 72), QPointF(kScreen.width() - kMargin, kTop + 72));
}

/// Height of the trail at `x` of its length, both 0 to 1.
double trail(double x) {
  const double hills = 0.14 + 0.70 * smoothstep(0.0, 0.60, x) - 0.64 * smoothstep(0.56, 1.0, x);
  return hills + 0.34 * (fractalNoise({x * 9, 3.3, 0}, 3) - 0.5) + 0.05 * std::sin(17 * x);
}

void drawElevation(QPainter& painter) {
  constexpr double kTop = 514;
  write(painter, {kMargin, kTop, 200, 26}, QStringLiteral("Elevation"), 19, QFont::DemiBold, kInk);
  write(painter, {kMargin, kTop, kScreen.width() - 2 * kMargin, 26},
        QStringLiteral("812 m at the top"), 14, QFont::Medium, kQuiet, Qt::AlignRight);

  const QRectF chart(kMargin, kTop + 40, kScreen.width() - 2 * kMargin, 74);
  const auto at = [&](double x) {
    return QPointF(chart.left() + x * chart.width(), chart.bottom() - trail(x) * chart.height());
  };
  QPainterPath line(at(0));
  double top = 0;
  for (int i = 1; i <= 300; ++i) {
    line.lineTo(at(i / 300.0));
    if (trail(i / 300.0) > trail(top)) top = i / 300.0;
  }
  QPainterPath area = line;
  area.lineTo(chart.right(), chart.bottom() + 4);
  area.lineTo(chart.left(), chart.bottom() + 4);
  QLinearGradient fill(0, chart.top(), 0, chart.bottom() + 4);
  fill.setColorAt(0, QColor(0x1B, 0x6B, 0x73, 90));
  fill.setColorAt(1, QColor(0x1B, 0x6B, 0x73, 0));
  painter.fillPath(area, fill);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(kTeal, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(line);

  painter.setPen(QPen(kPaper, 3.5));
  painter.setBrush(kOrange);
  painter.drawEllipse(at(top), 7.5, 7.5);
}

enum class Sky { Sun, Few, Cloud };

void drawWeatherSign(QPainter& painter, QPointF middle, Sky sky) {
  painter.setPen(Qt::NoPen);
  if (sky != Sky::Cloud) {
    painter.setBrush(QColor(0xF6, 0xB0, 0x3C));
    const bool alone = sky == Sky::Sun;
    painter.drawEllipse(middle + (alone ? QPointF() : QPointF(4, -4)), alone ? 9 : 7.5,
                        alone ? 9 : 7.5);
  }
  if (sky == Sky::Sun) return;
  QPainterPath cloud;
  cloud.setFillRule(Qt::WindingFill);
  cloud.addRoundedRect(QRectF(-12, -1, 23, 10.5), 5.25, 5.25);
  cloud.addEllipse(QPointF(-2.5, -0.5), 6.8, 6.8);
  painter.fillPath(cloud.translated(middle), QColor(0xA9, 0xBC, 0xC6));
}

void drawWeather(QPainter& painter) {
  struct Hour {
    QString name;
    Sky sky;
    QString degrees;
  };
  const Hour hours[] = {{QStringLiteral("Now"), Sky::Sun, QStringLiteral("14°")},
                        {QStringLiteral("10"), Sky::Sun, QStringLiteral("16°")},
                        {QStringLiteral("12"), Sky::Few, QStringLiteral("18°")},
                        {QStringLiteral("14"), Sky::Few, QStringLiteral("17°")},
                        {QStringLiteral("16"), Sky::Cloud, QStringLiteral("15°")}};
  constexpr double kTop = 656, kWidth = 62, kGap = 8;
  for (int i = 0; i < 5; ++i) {
    const QRectF chip(kMargin + i * (kWidth + kGap), kTop, kWidth, 82);
    const bool isNow = i == 0;
    painter.setPen(Qt::NoPen);
    painter.setBrush(isNow ? QColor(0xE3, 0xF0, 0xF0) : QColor(0xF4, 0xF6, 0xF7));
    painter.drawRoundedRect(chip, 18, 18);
    write(painter, {chip.left(), kTop + 8, kWidth, 18}, hours[i].name, 13, QFont::Medium,
          isNow ? kTeal : kQuiet, Qt::AlignHCenter);
    drawWeatherSign(painter, {chip.center().x(), kTop + 41}, hours[i].sky);
    write(painter, {chip.left(), kTop + 55, kWidth, 20}, hours[i].degrees, 15, QFont::DemiBold,
          kInk, Qt::AlignHCenter);
  }
}

void drawStartButton(QPainter& painter) {
  const QRectF button(kMargin, 756, kScreen.width() - 2 * kMargin, 54);
  QLinearGradient fill(button.topLeft(), button.topRight());
  fill.setColorAt(0, QColor(0xEE, 0x78, 0x3C));
  fill.setColorAt(1, QColor(0xE2, 0x5B, 0x2C));
  painter.setPen(Qt::NoPen);
  painter.setBrush(fill);
  painter.drawRoundedRect(button, 27, 27);
  write(painter, button, QStringLiteral("Start hike"), 18, QFont::DemiBold, Qt::white,
        Qt::AlignHCenter);
  painter.setBrush(kInk);
  painter.drawRoundedRect(QRectF(kScreen.width() / 2 - 66, 829, 132, 4.6), 2.3, 2.3);
}

}  // namespace

QImage drawDesign() {
  QImage image((kScreen * kScale).toSize(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  painter.scale(kScale, kScale);
  const double corner = kScreen.width() * Phone::kScreenRadius / Phone::kScreenWidth;
  QPainterPath outline;
  outline.addRoundedRect(QRectF(QPointF(), kScreen), corner, corner);

  drawLandscape(painter, {0, 0, kScreen.width(), kSheetTop + 40});
  painter.setPen(Qt::NoPen);
  painter.setBrush(kPaper);
  painter.drawRoundedRect(QRectF(0, kSheetTop, kScreen.width(), 500), 30, 30);
  drawStatusBar(painter);
  drawHeader(painter);
  drawStats(painter);
  drawElevation(painter);
  drawWeather(painter);
  drawStartButton(painter);

  // Round the corners last, by coverage: clipping would leave them jagged.
  painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
  QImage mask(image.size(), QImage::Format_ARGB32_Premultiplied);
  mask.fill(Qt::transparent);
  QPainter masking(&mask);
  masking.setRenderHint(QPainter::Antialiasing);
  masking.scale(kScale, kScale);
  masking.fillPath(outline, Qt::black);
  masking.end();
  painter.resetTransform();
  painter.drawImage(0, 0, mask);
  return image;
}

}  // namespace kelvar::examples

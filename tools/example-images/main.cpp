#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFontInfo>
#include <QGuiApplication>
#include <QImageWriter>
#include <cstdio>

#include "Design.h"
#include "Photo.h"

namespace {

/// The corners in the syntax of `kelvar map --points`.
QByteArray pointString(const QPolygonF& corners) {
  QStringList points;
  for (const QPointF& corner : corners) {
    points << QStringLiteral("%1,%2").arg(corner.x(), 0, 'f', 2).arg(corner.y(), 0, 'f', 2);
  }
  return points.join(u' ').toLatin1();
}

bool save(const QImage& image, const QString& path, int quality) {
  QImageWriter writer(path);
  writer.setQuality(quality);
  writer.setOptimizedWrite(true);
  if (writer.write(image)) return true;
  std::fprintf(stderr, "%s: %s\n", qPrintable(path), qPrintable(writer.errorString()));
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication application(argc, argv);
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral(
      "Draws the example images: design.png, phone.jpg and the corners of the phone's screen, "
      "phone.points. The full photo takes about a quarter of an hour on two cores."));
  parser.addHelpOption();
  parser.addPositionalArgument(QStringLiteral("folder"), QStringLiteral("Output folder."));
  const QCommandLineOption preview(QStringLiteral("preview"),
                                   QStringLiteral("Draw a small, grainy photo in a few seconds."));
  const QCommandLineOption points(QStringLiteral("points"),
                                  QStringLiteral("Only print the corners of the screen."));
  parser.addOptions({preview, points});
  parser.process(application);

  const QByteArray corners = pointString(kelvar::examples::photoScreenCorners());
  if (parser.isSet(points)) return std::puts(corners.constData()) < 0;
  if (parser.positionalArguments().size() != 1) parser.showHelp(2);
  const QDir folder(parser.positionalArguments().constFirst());
  if (QFontInfo(QFont(QStringLiteral("Inter"))).family() != u"Inter") {
    std::fputs("The design requires the typeface Inter: install fonts-inter.\n", stderr);
    return 1;
  }

  QFile list(folder.filePath(QStringLiteral("phone.points")));
  const bool written =
      list.open(QIODevice::WriteOnly) && list.write(corners + '\n') > 0 && list.flush() &&
      save(kelvar::examples::drawDesign(), folder.filePath(QStringLiteral("design.png")), 0) &&
      save(parser.isSet(preview) ? kelvar::examples::drawPhoto(0.4, 24)
                                 : kelvar::examples::drawPhoto(1, 160),
           folder.filePath(QStringLiteral("phone.jpg")), 92);
  return written ? 0 : 1;
}

#include "platform/ImageFile.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QSaveFile>
#include <QSvgRenderer>
#include <QtMath>

namespace kelvar {

namespace {

QImage drawSvg(const QByteArray& data, const ImageFile::ReadOptions& options, QSizeF* natural) {
  QSvgRenderer renderer(data);
  *natural = renderer.defaultSize();
  const QSizeF size = options.vectorSize ? options.vectorSize(*natural) : *natural;
  QImage image(qCeil(size.width()), qCeil(size.height()), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  renderer.render(&painter);
  return image;
}

}  // namespace

ImageRef ImageFile::read(const QString& path, const ReadOptions& options, QString* error) {
  QFile file(path);
  const bool open =
      path == u"-" ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
  QByteArray data = open ? file.readAll() : QByteArray();
  if (data.trimmed().startsWith('<')) {
    QSizeF natural;
    const QImage image = drawSvg(data, options, &natural);
    if (!image.isNull()) return std::make_shared<Image>(image, natural);
  }
  QBuffer buffer(&data);
  QImageReader reader(&buffer);
  reader.setAutoTransform(true);
  const QImage image = reader.read();
  if (!image.isNull()) return std::make_shared<Image>(image);
  *error = QStringLiteral("cannot read %1: %2").arg(path, reader.errorString());
  return nullptr;
}

bool ImageFile::write(const Image& image, const QString& path, QString* error) {
  if (path == u"-") {
    QFile out;
    return out.open(stdout, QIODevice::WriteOnly) && image.pixels().save(&out, "png");
  }
  QSaveFile file(path);
  if (file.open(QIODevice::WriteOnly) &&
      image.pixels().save(&file, QFileInfo(path).suffix().toLatin1()) && file.commit()) {
    return true;
  }
  *error = QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
  return false;
}

std::optional<QString> ImageFile::cannotWrite(const QString& path) {
  if (path == u"-" || QFileInfo(QFileInfo(path).absolutePath()).isDir()) return std::nullopt;
  return QStringLiteral("cannot write %1: its folder does not exist").arg(path);
}

}  // namespace kelvar

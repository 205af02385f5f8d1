#include "platform/ImageFile.h"

#include <unistd.h>

#include <QFileInfo>
#include <cerrno>

#include "platform/FileName.h"
#include "platform/JpegFile.h"
#include "platform/PngReader.h"
#include "platform/PngWriter.h"
#include "platform/SvgFile.h"
#include "platform/WebPFile.h"
#include "platform/WholeFile.h"

namespace kelvar {

namespace {

enum class Format { None, Png, Jpeg, WebP, Svg };

bool isStandardStream(const QString& path) { return path == u"-"; }

Format formatOfContent(const QByteArray& head) {
  if (head.startsWith("\x89PNG\r\n\x1a\n")) return Format::Png;
  if (head.startsWith("\xff\xd8\xff")) return Format::Jpeg;
  if (head.startsWith("RIFF") && head.mid(8, 4) == "WEBP") return Format::WebP;
  const QByteArray text = head.startsWith("\xef\xbb\xbf") ? head.mid(3) : head;
  return text.trimmed().startsWith('<') && text.contains("<svg") ? Format::Svg : Format::None;
}

Format formatOfEnding(const QString& path) {
  const QString ending = QFileInfo(path).suffix().toLower();
  if (ending == u"png") return Format::Png;
  if (ending == u"jpg" || ending == u"jpeg") return Format::Jpeg;
  return ending == u"webp" ? Format::WebP : Format::None;
}

const auto kNoPicture =
    QStringLiteral("it is no PNG, JPEG, WebP or SVG picture, whatever its name says");

QString objectionToContent(const QByteArray& head) {
  if (head.isEmpty()) return QStringLiteral("the file is empty");
  return formatOfContent(head) == Format::None ? kNoPicture : QString();
}

QString folderOf(const QString& path) {
  const QString folder = QFileInfo(path).path();
  return folder == u"." ? QStringLiteral("the current folder")
                        : QStringLiteral("the folder ") + folder;
}

/// Why nothing can be written at `path`, or none.
QString outputObjection(const QString& path) {
  const QString folder = QFileInfo(path).path();
  if (path.isEmpty()) return QStringLiteral("the path is empty");
  if (isFolder(path)) return QStringLiteral("there is a folder of that name");
  if (!ImageFile::hasKnownEnding(path)) {
    return QStringLiteral(
        "its ending tells no format; the known ones are .png, .jpg, .jpeg and "
        ".webp");
  }
  if (!fileExists(folder)) return folderOf(path) + QStringLiteral(" does not exist");
  if (!isFolder(folder)) return folder + QStringLiteral(" is not a folder");
  const bool isThere = fileExists(path);
  const QByteArray written = fileNameBytes(isThere ? path : folder);
  if (::access(written.constData(), W_OK) == 0) return {};
  if (errno != EACCES) return systemWords(errno);
  return isThere ? QStringLiteral("its permissions do not let you overwrite it")
                 : QStringLiteral("the permissions of ") + folderOf(path) +
                       QStringLiteral(" do not let you write there");
}

/// Why the picture cannot be encoded, or none: what fails in the device, the device knows.
QString encode(const QImage& pixels, Format format, QIODevice* device) {
  QString error;
  QByteArray bytes;
  if (format == Format::Jpeg) {
    bytes = packJpeg(pixels, &error);
  } else if (format == Format::WebP) {
    bytes = packWebP(pixels, &error);
  } else {
    writePng(pixels, device);
  }
  device->write(bytes);
  return error;
}

ImageRef decode(const QByteArray& file, Format format, const ImageFile::ReadOptions& options,
                QString* problem) {
  QImage pixels;
  QSizeF natural;
  if (format == Format::Png) pixels = readPng(file, problem);
  if (format == Format::Jpeg) pixels = readJpeg(file, problem);
  if (format == Format::WebP) pixels = readWebP(file, problem);
  if (format == Format::Svg) pixels = readSvg(file, options.vectorSize, &natural, problem);
  if (pixels.isNull()) return nullptr;
  return std::make_shared<Image>(pixels, format == Format::Svg ? natural : pixels.size());
}

}  // namespace

ImageRef ImageFile::fromBytes(const QByteArray& bytes, const ReadOptions& options, QString* error) {
  const Format format = formatOfContent(bytes.first(std::min(bytes.size(), WholeFile::kHeadBytes)));
  if (format != Format::None) return decode(bytes, format, options, error);
  *error = kNoPicture;
  return nullptr;
}

ImageRef ImageFile::read(const QString& path, const ReadOptions& options, QString* error) {
  const bool isStream = isStandardStream(path);
  QByteArray file;
  if (!(isStream ? WholeFile::readStandardInput(kMaxBytes, &file, error, objectionToContent)
                 : WholeFile::read(path, kMaxBytes, &file, error, objectionToContent))) {
    return nullptr;
  }
  QString problem;
  const ImageRef image = fromBytes(file, options, &problem);
  if (image) return image;
  *error = QStringLiteral("cannot read %1: %2")
               .arg(isStream ? QStringLiteral("standard input") : path, problem);
  return nullptr;
}

bool ImageFile::write(const Image& image, const QString& path, QString* error) {
  const bool isStream = isStandardStream(path);
  const auto contents = [&](QIODevice* device) {
    if (!image.isValid()) return QStringLiteral("there is no picture to write");
    return encode(image.pixels(), isStream ? Format::Png : formatOfEnding(path), device);
  };
  if (isStream) return WholeFile::writeStandardOutput(contents, error);
  if (const auto problem = cannotWrite(path)) {
    *error = *problem;
    return false;
  }
  return WholeFile::write(path, contents, error);
}

bool ImageFile::hasKnownEnding(const QString& path) {
  return isStandardStream(path) || isFileStream(path) || formatOfEnding(path) != Format::None;
}

std::optional<QString> ImageFile::cannotWrite(const QString& path) {
  const QString problem = isStandardStream(path) ? QString() : outputObjection(path);
  if (problem.isEmpty()) return std::nullopt;
  return QStringLiteral("cannot write %1: %2")
      .arg(path.isEmpty() ? QStringLiteral("\"\"") : path, problem);
}

}  // namespace kelvar

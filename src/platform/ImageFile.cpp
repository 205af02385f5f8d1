#include "platform/ImageFile.h"

#include <fcntl.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "platform/JpegFile.h"
#include "platform/PngReader.h"
#include "platform/PngWriter.h"
#include "platform/SvgFile.h"
#include "platform/WebPFile.h"

namespace kelvar {

namespace {

enum class Format { None, Png, Jpeg, WebP, Svg };

/// Enough to tell the formats apart, behind what may stand in front of an SVG's first element.
constexpr qsizetype kHeadBytes = 64 << 10;
constexpr qint64 kStep = 1 << 20;

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

/// Opens `path` for reading; else why not.
QString openInput(const QString& path, QFile* file) {
  if (isStandardStream(path)) {
    return file->open(stdin, QIODevice::ReadOnly) ? QString()
                                                  : QStringLiteral("it is not open for reading");
  }
  const QFileInfo info(path);
  if (path.isEmpty()) return QStringLiteral("the path is empty");
  if (info.isDir()) return QStringLiteral("it is a folder, not a picture");
  file->setFileName(path);
  if (file->open(QIODevice::ReadOnly)) return {};
  if (!info.exists() && !info.isSymLink()) return QStringLiteral("there is no such file");
  if (!info.isReadable()) return QStringLiteral("its permissions do not let you read it");
  return file->errorString();
}

/// All of the file, unless it is larger than any picture within the limits.
bool readWhole(QFile* file, QByteArray* data) {
  if (!file->isSequential()) {
    if (file->size() > ImageFile::kMaxBytes) return false;
    *data = file->readAll();
    return true;
  }
  data->clear();
  for (QByteArray part = file->read(kStep); !part.isEmpty(); part = file->read(kStep)) {
    *data += part;
    if (data->size() > ImageFile::kMaxBytes) return false;
  }
  return true;
}

const auto kNoPicture =
    QStringLiteral("it is no PNG, JPEG, WebP or SVG picture, whatever its name says");

QString readFile(const QString& path, QByteArray* data, Format* format) {
  QFile file;
  const QString objection = openInput(path, &file);
  if (!objection.isEmpty()) return objection;
  *format = formatOfContent(file.peek(kHeadBytes));
  if (*format != Format::None && !readWhole(&file, data)) {
    return QStringLiteral("it is larger than 1 GiB");
  }
  if (file.error() != QFile::NoError) return file.errorString();
  if (*format != Format::None) return {};
  return file.peek(1).isEmpty() ? QStringLiteral("the file is empty") : kNoPicture;
}

QString folderOf(const QString& path) {
  const QString folder = QFileInfo(path).path();
  return folder == u"." ? QStringLiteral("the current folder")
                        : QStringLiteral("the folder ") + folder;
}

/// Why nothing can be written at `path`, or none.
QString outputObjection(const QString& path) {
  const QFileInfo target(path), folder(target.absolutePath());
  if (path.isEmpty()) return QStringLiteral("the path is empty");
  if (target.isDir()) return QStringLiteral("there is a folder of that name");
  if (!ImageFile::hasKnownEnding(path)) {
    return QStringLiteral(
        "its ending tells no format; the known ones are .png, .jpg, .jpeg and "
        ".webp");
  }
  if (!folder.exists()) return folderOf(path) + QStringLiteral(" does not exist");
  if (!folder.isDir()) return QFileInfo(path).path() + QStringLiteral(" is not a folder");
  if (target.exists() && !target.isWritable()) {
    return QStringLiteral("its permissions do not let you overwrite it");
  }
  if (!target.exists() && !folder.isWritable()) {
    return QStringLiteral("the permissions of ") + folderOf(path) +
           QStringLiteral(" do not let you write there");
  }
  return {};
}

bool writeAll(const QByteArray& bytes, QIODevice* device) {
  return !bytes.isEmpty() && device->write(bytes) == bytes.size();
}

/// False with `*error` empty when it is the device that failed.
bool encode(const QImage& pixels, Format format, QIODevice* device, QString* error) {
  if (format == Format::Jpeg) return writeAll(packJpeg(pixels, error), device);
  if (format == Format::WebP) return writeAll(packWebP(pixels, error), device);
  return writePng(pixels, device);
}

QString deviceProblem(const QFileDevice& device) {
  return device.error() == QFileDevice::ResourceError
             ? QStringLiteral("the disk is full, or another limit is reached (%1)")
                   .arg(device.errorString())
             : device.errorString();
}

/// Standard output, a terminal or a device: there is no place beside it, and nothing to keep.
QString writeStream(const QImage& pixels, Format format, QFile* stream) {
  QString error;
  if (encode(pixels, format, stream, &error) && stream->flush()) return {};
  return error.isEmpty() ? deviceProblem(*stream) : error;
}

QString writeStandardOutput(const QImage& pixels) {
  QFile out;
  if (!out.open(stdout, QIODevice::WriteOnly)) return out.errorString();
  return writeStream(pixels, Format::Png, &out);
}

/// QSaveFile flushes too, but overlooks what fails in it: a disk whose space turns out short, or
/// bad. This waits for the data alone, so that the costly flush of the journal happens once.
bool reachesTheDisk(int file) {
  constexpr unsigned kWhole =
      SYNC_FILE_RANGE_WAIT_BEFORE | SYNC_FILE_RANGE_WRITE | SYNC_FILE_RANGE_WAIT_AFTER;
  return ::sync_file_range(file, 0, 0, kWhole) == 0;
}

QString writeFile(const QImage& pixels, const QString& path) {
  const QString objection = outputObjection(path);
  if (!objection.isEmpty()) return objection;
  const Format format = formatOfEnding(path);
  const QFileInfo target(path);
  if (target.exists() && !target.isFile()) {
    QFile stream(path);
    if (!stream.open(QIODevice::WriteOnly)) return stream.errorString();
    return writeStream(pixels, format, &stream);
  }
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return deviceProblem(file);
  QString error;
  if (!encode(pixels, format, &file, &error) || !file.flush()) {
    return error.isEmpty() ? deviceProblem(file) : error;
  }
  if (!reachesTheDisk(file.handle())) return QString::fromLocal8Bit(std::strerror(errno));
  return file.commit() ? QString() : deviceProblem(file);
}

QString readable(const QString& path, const char* standardStream) {
  if (path.isEmpty()) return QStringLiteral("\"\"");
  return isStandardStream(path) ? QString::fromLatin1(standardStream) : path;
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
  const Format format = formatOfContent(bytes.first(std::min(bytes.size(), kHeadBytes)));
  if (format != Format::None) return decode(bytes, format, options, error);
  *error = kNoPicture;
  return nullptr;
}

ImageRef ImageFile::read(const QString& path, const ReadOptions& options, QString* error) {
  QByteArray file;
  Format format = Format::None;
  QString problem = readFile(path, &file, &format);
  if (problem.isEmpty()) {
    const ImageRef image = decode(file, format, options, &problem);
    if (image) return image;
  }
  *error = QStringLiteral("cannot read %1: %2").arg(readable(path, "standard input"), problem);
  return nullptr;
}

bool ImageFile::write(const Image& image, const QString& path, QString* error) {
  QString problem;
  if (!image.isValid()) {
    problem = QStringLiteral("there is no picture to write");
  } else {
    problem = isStandardStream(path) ? writeStandardOutput(image.pixels())
                                     : writeFile(image.pixels(), path);
  }
  if (problem.isEmpty()) return true;
  *error = QStringLiteral("cannot write %1: %2").arg(readable(path, "standard output"), problem);
  return false;
}

bool ImageFile::hasKnownEnding(const QString& path) {
  const QFileInfo target(path);
  const bool isDevice = target.exists() && !target.isFile();
  return isStandardStream(path) || isDevice || formatOfEnding(path) != Format::None;
}

std::optional<QString> ImageFile::cannotWrite(const QString& path) {
  const QString problem = isStandardStream(path) ? QString() : outputObjection(path);
  if (problem.isEmpty()) return std::nullopt;
  return QStringLiteral("cannot write %1: %2").arg(readable(path, "standard output"), problem);
}

}  // namespace kelvar

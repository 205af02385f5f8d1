#include "platform/image/ImageFile.h"

#include <unistd.h>

#include <QFileInfo>
#include <cerrno>

#include "pixels/codec/Jpeg.h"
#include "pixels/codec/PngReader.h"
#include "pixels/codec/PngWriter.h"
#include "pixels/codec/WebP.h"
#include "platform/QtError.h"
#include "platform/files/File.h"
#include "platform/files/FileName.h"
#include "platform/image/ColorProfile.h"
#include "platform/image/PixelViews.h"
#include "platform/image/VectorFile.h"

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

Format formatOfExtension(const QString& path) {
  const QString extension = QFileInfo(path).suffix().toLower();
  if (extension == u"png") return Format::Png;
  if (extension == u"jpg" || extension == u"jpeg") return Format::Jpeg;
  return extension == u"webp" ? Format::WebP : Format::None;
}

Result<void> checkContent(const QByteArray& head) {
  if (head.isEmpty()) return failure(Error::Kind::Damaged, "the file is empty");
  if (formatOfContent(head) != Format::None) return {};
  return failure(Error::Kind::Unsupported,
                 "it is not a PNG, JPEG, WebP or SVG image, whatever its name says");
}

QString folderOf(const QString& path) {
  const QString folder = QFileInfo(path).path();
  return folder == u"." ? QStringLiteral("the current folder")
                        : QStringLiteral("the folder ") + folder;
}

Result<void> checkAccess(const QString& path) {
  const bool isThere = fileExists(path);
  const QByteArray written = fileNameBytes(isThere ? path : QFileInfo(path).path());
  if (::access(written.constData(), W_OK) == 0) return {};
  if (errno != EACCES) return systemFailure(errno);
  if (isThere) return failure(Error::Kind::Io, "its permissions do not let you overwrite it");
  return failure(Error::Kind::Io, QStringLiteral("the permissions of ") + folderOf(path) +
                                      QStringLiteral(" do not let you write there"));
}

Result<void> checkOutput(const QString& path) {
  const QString folder = QFileInfo(path).path();
  if (path.isEmpty()) return failure(Error::Kind::InvalidArgument, "the path is empty");
  if (isFolder(path)) return failure(Error::Kind::Io, "there is a folder of that name");
  if (!ImageFile::hasSupportedExtension(path)) {
    return failure(Error::Kind::InvalidArgument,
                   "its extension names no format; the known ones are .png, .jpg, .jpeg and .webp");
  }
  if (!fileExists(folder)) {
    return failure(Error::Kind::NotFound, folderOf(path) + QStringLiteral(" does not exist"));
  }
  if (!isFolder(folder)) {
    return failure(Error::Kind::Io, folder + QStringLiteral(" is not a folder"));
  }
  return checkAccess(path);
}

/// A failed write ends the encoding. The device's owner knows why it failed.
ByteSink sinkTo(QIODevice* device) {
  return [device](std::span<const uint8_t> bytes) -> Result<void> {
    const auto size = static_cast<qint64>(bytes.size());
    if (device->write(reinterpret_cast<const char*>(bytes.data()), size) == size) return {};
    return failure(Error::Kind::Io, device->errorString());
  };
}

Result<void> encode(const Image& image, Format format, QIODevice* device) {
  if (!image.isValid()) {
    return failure(Error::Kind::InvalidArgument, "there is no image to write");
  }
  const ConstPixelView pixels = viewOf(image.pixels());
  if (format == Format::Jpeg) return writeJpeg(pixels, sinkTo(device));
  if (format == Format::WebP) return writeWebP(pixels, sinkTo(device));
  return writePng(pixels, sinkTo(device));
}

Result<ImageRef> fromDecoded(Result<DecodedImage> decoded) {
  if (!decoded) return tl::unexpected(decoded.error());
  const auto& profile = decoded->iccProfile;
  const auto icc = QByteArray::fromRawData(reinterpret_cast<const char*>(profile.data()),
                                           qsizetype(profile.size()));
  return std::make_shared<Image>(toSRgb(toQImage(std::move(decoded->pixels)), icc));
}

}  // namespace

Result<ImageRef> ImageFile::fromBytes(const QByteArray& bytes, const ReadOptions& options) {
  const QByteArray head = bytes.first(std::min(bytes.size(), File::kHeadBytes));
  switch (formatOfContent(head)) {
    case Format::Png:
      return fromDecoded(readPng(bytesOf(bytes)));
    case Format::Jpeg:
      return fromDecoded(readJpeg(bytesOf(bytes)));
    case Format::WebP:
      return fromDecoded(readWebP(bytesOf(bytes)));
    case Format::Svg:
      return readSvg(bytes, options.rasterizationSize);
    case Format::None:
      break;
  }
  return tl::unexpected(checkContent(head).error());
}

Result<ImageRef> ImageFile::read(const QString& path, const ReadOptions& options) {
  const bool isStream = isStandardStream(path);
  const auto file = isStream ? File::readStandardInput(kMaxBytes, checkContent)
                             : File::readAll(path, kMaxBytes, checkContent);
  if (!file) return tl::unexpected(file.error());
  auto image = fromBytes(*file, options);
  if (image) return image;
  const QString name = isStream ? QStringLiteral("standard input") : path;
  return failureIn(QStringLiteral("cannot read ") + name, image.error());
}

Result<void> ImageFile::write(const Image& image, const QString& path) {
  const bool isStream = isStandardStream(path);
  const auto contents = [&](QIODevice* device) {
    return encode(image, isStream ? Format::Png : formatOfExtension(path), device);
  };
  if (isStream) return File::writeStandardOutput(contents);
  return checkWritable(path).and_then([&] { return File::writeAtomically(path, contents); });
}

QByteArray ImageFile::toPng(const Image& image) {
  Q_ASSERT(image.isValid());
  QByteArray bytes;
  // Only a sink can fail, and this one does not.
  (void)writePng(viewOf(image.pixels()), [&](std::span<const uint8_t> part) -> Result<void> {
    bytes.append(reinterpret_cast<const char*>(part.data()), qsizetype(part.size()));
    return {};
  });
  return bytes;
}

bool ImageFile::hasSupportedExtension(const QString& path) {
  return isStandardStream(path) || isFileStream(path) || formatOfExtension(path) != Format::None;
}

Result<void> ImageFile::checkWritable(const QString& path) {
  if (isStandardStream(path)) return {};
  const auto writable = checkOutput(path);
  if (writable) return {};
  const QString name = path.isEmpty() ? QStringLiteral("\"\"") : path;
  return failureIn(QStringLiteral("cannot write ") + name, writable.error());
}

}  // namespace kelvar

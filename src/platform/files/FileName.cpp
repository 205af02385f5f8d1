#include "platform/files/FileName.h"

#include <sys/stat.h>

#include <algorithm>
#include <system_error>

namespace kelvar {
namespace {

constexpr char16_t kFirstEscape = 0xdc80;
constexpr char16_t kLastEscape = 0xdcff;

bool isEscape(QChar c) { return c.unicode() >= kFirstEscape && c.unicode() <= kLastEscape; }

/// Length in bytes of the UTF-8 character at the start of `bytes`; 0 when there is none.
qsizetype characterLength(QByteArrayView bytes) {
  const auto first = uint8_t(bytes.front());
  const qsizetype length = first < 0x80 ? 1 : first < 0xe0 ? 2 : first < 0xf0 ? 3 : 4;
  if (length > bytes.size()) return 0;
  return bytes.first(length).isValidUtf8() ? length : 0;
}

/// Calls `text` and `escape` for the parts of a name, in order. A surrogate pair is text.
template <class Text, class Escape>
void eachPart(const QString& name, const Text& text, const Escape& escape) {
  qsizetype start = 0;
  for (qsizetype i = 0; i < name.size(); ++i) {
    const bool isPair = name[i].isHighSurrogate() && i + 1 < name.size();
    if (isPair && name[i + 1].isLowSurrogate()) {
      ++i;
    } else if (isEscape(name[i])) {
      text(QStringView(name).sliced(start, i - start));
      escape(uint8_t(name[i].unicode() - kFirstEscape + 0x80));
      start = i + 1;
    }
  }
  text(QStringView(name).sliced(start));
}

std::filesystem::file_status statusOf(const QString& name) {
  std::error_code ignored;
  return std::filesystem::status(filePath(name), ignored);
}

}  // namespace

QString fileNameFromBytes(QByteArrayView bytes) {
  if (bytes.isValidUtf8()) return QString::fromUtf8(bytes);
  QString name;
  while (!bytes.isEmpty()) {
    const qsizetype length = characterLength(bytes);
    name += length > 0 ? QString::fromUtf8(bytes.first(length))
                       : QString(QChar(char16_t(kFirstEscape - 0x80 + uint8_t(bytes.front()))));
    bytes = bytes.sliced(std::max<qsizetype>(length, 1));
  }
  return name;
}

QByteArray fileNameBytes(const QString& name) {
  QByteArray bytes;
  eachPart(
      name, [&](QStringView text) { bytes += text.toUtf8(); },
      [&](uint8_t byte) { bytes += char(byte); });
  return bytes;
}

std::filesystem::path filePath(const QString& name) { return fileNameBytes(name).toStdString(); }

QString absoluteFileName(const QString& name) {
  std::error_code ignored;
  const std::filesystem::path whole = std::filesystem::absolute(filePath(name), ignored);
  return fileNameFromBytes(whole.lexically_normal().native());
}

QString readableFileName(const QString& name) {
  QString readable;
  eachPart(
      name, [&](QStringView text) { readable += text; },
      [&](uint8_t byte) { readable += QStringLiteral("\\x%1").arg(uint(byte), 0, 16); });
  return readable;
}

QString systemMessage(int errorNumber) {
  return QString::fromStdString(std::generic_category().message(errorNumber));
}

bool isFile(const QString& name) { return std::filesystem::is_regular_file(statusOf(name)); }
bool isFolder(const QString& name) { return std::filesystem::is_directory(statusOf(name)); }
bool fileExists(const QString& name) { return std::filesystem::exists(statusOf(name)); }

bool isFileStream(const QString& name) { return std::filesystem::is_other(statusOf(name)); }

FileState fileState(const QString& name) {
  struct stat facts {};
  if (::stat(fileNameBytes(name).constData(), &facts) != 0) return {};
  return {facts.st_mtim.tv_sec, facts.st_mtim.tv_nsec, facts.st_size};
}

bool isSameFile(const QString& one, const QString& other) {
  std::error_code error;
  return std::filesystem::equivalent(filePath(one), filePath(other), error) && !error;
}

}  // namespace kelvar

#include "scripting/foundation/FileFunctions.h"

#include <unistd.h>

#include <QDateTime>
#include <algorithm>
#include <filesystem>
#include <system_error>

#include "platform/Permissions.h"
#include "platform/QtError.h"
#include "platform/files/File.h"
#include "platform/files/FileName.h"
#include "platform/plist/PropertyList.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

/// Maximum size of a file that a script reads, in bytes.
constexpr qsizetype kMaxFile = qsizetype{512} << 20;

/// The numbers of the platform's file errors.
enum ErrorCode {
  kNoSuchFile = 4,
  kReadFailed = 256,
  kReadNotPermitted = 257,
  kReadNoSuchFile = 260,
  kWriteFailed = 512,
  kWriteNotPermitted = 513,
  kFileExists = 516,
};

QVariantMap failed(int code, const QString& path, const QString& message) {
  return {{u"code"_s, code}, {u"path"_s, path}, {u"message"_s, message}};
}

/// For a change that the system refused.
QVariantMap refused(const QString& doing, const QString& path, const std::error_code& error) {
  const int code = error == std::errc::no_such_file_or_directory ? kNoSuchFile
                   : error == std::errc::permission_denied       ? kWriteNotPermitted
                   : error == std::errc::file_exists             ? kFileExists
                                                                 : kWriteFailed;
  return failed(
      code, path,
      u"cannot %1 %2: %3"_s.arg(doing, readableFileName(path), systemMessage(error.value())));
}

QVariantMap resultOf(const QString& doing, const QString& path, const std::error_code& error) {
  return error ? refused(doing, path, error) : QVariantMap();
}

using Access = Permissions::Kind;

/// A failure if scripts may not do that; empty otherwise. The script gets an exception as well.
QVariantMap refusal(Access access, const QString& path) {
  const Result<void> may = Permissions::check(access, path);
  if (may) return {};
  const int code = access == Access::Read ? kReadNotPermitted : kWriteNotPermitted;
  return failed(code, path, messageOf(may.error()));
}

bool mayRead(const QString& path) { return Permissions::check(Access::Read, path).has_value(); }

QVariantMap readFile(const QString& path) {
  if (const QVariantMap no = refusal(Access::Read, path); !no.isEmpty()) return no;
  const Result<QByteArray> bytes = File::readAll(path, kMaxFile);
  // An empty file has bytes as well.
  if (bytes) return {{u"bytes"_s, bytes->isNull() ? QByteArray("") : *bytes}};
  const bool isMissing = bytes.error().kind == Error::Kind::NotFound;
  return failed(isMissing ? kReadNoSuchFile : kReadFailed, path, messageOf(bytes.error()));
}

QVariantMap writeFile(const QString& path, const QByteArray& bytes) {
  if (const QVariantMap no = refusal(Access::Write, path); !no.isEmpty()) return no;
  const Result<void> written = File::writeAtomically(path, bytes);
  if (written) return {};
  const bool isMissing = written.error().kind == Error::Kind::NotFound;
  return failed(isMissing ? kNoSuchFile : kWriteFailed, path, messageOf(written.error()));
}

QVariant readPropertyList(const QString& path) {
  if (!mayRead(path)) return {};
  const Result<QByteArray> bytes = File::readAll(path, PropertyList::kMaxBytes);
  const Result<QVariant> value = bytes ? PropertyList::read(*bytes) : Result<QVariant>(QVariant());
  return value ? *value : QVariant();
}

QVariantMap writePropertyList(const QString& path, const QVariant& value) {
  const Result<QByteArray> bytes = PropertyList::write(value, PropertyList::Format::Xml);
  return bytes ? writeFile(path, *bytes) : failed(kWriteFailed, path, messageOf(bytes.error()));
}

/// The names in a folder, sorted; a failure has no "names".
QVariantMap namesInFolder(const QString& path) {
  if (const QVariantMap no = refusal(Access::Read, path); !no.isEmpty()) return no;
  std::error_code error;
  QStringList names;
  for (fs::directory_iterator entry(filePath(path), error), end; !error && entry != end;
       entry.increment(error)) {
    names.append(fileNameFromBytes(entry->path().filename().native()));
  }
  if (error) {
    QVariantMap failure = refused(u"read the folder"_s, path, error);
    if (failure[u"code"_s] == kNoSuchFile) failure[u"code"_s] = kReadNoSuchFile;
    if (failure[u"code"_s] == kWriteNotPermitted) failure[u"code"_s] = kReadNotPermitted;
    return failure;
  }
  names.sort();
  return {{u"names"_s, names}};
}

QVariantMap createFolder(const QString& path, bool createsParents) {
  if (const QVariantMap no = refusal(Access::Write, path); !no.isEmpty()) return no;
  std::error_code error;
  const bool isMade = createsParents ? fs::create_directories(filePath(path), error)
                                     : fs::create_directory(filePath(path), error);
  const bool isThere = !error && !isMade && (!createsParents || !isFolder(path));
  if (isThere) error = std::make_error_code(std::errc::file_exists);
  return resultOf(u"create the folder"_s, path, error);
}

QVariantMap remove(const QString& path) {
  if (const QVariantMap no = refusal(Access::Write, path); !no.isEmpty()) return no;
  std::error_code error;
  const auto removed = fs::remove_all(filePath(path), error);
  if (!error && removed == 0) error = std::make_error_code(std::errc::no_such_file_or_directory);
  return resultOf(u"remove"_s, path, error);
}

QVariantMap copy(const QString& from, const QString& to) {
  if (const QVariantMap no = refusal(Access::Read, from); !no.isEmpty()) return no;
  if (const QVariantMap no = refusal(Access::Write, to); !no.isEmpty()) return no;
  std::error_code error;
  if (fs::exists(fs::symlink_status(filePath(to), error))) {
    error = std::make_error_code(std::errc::file_exists);
    return refused(u"copy %1 to"_s.arg(readableFileName(from)), to, error);
  }
  error.clear();
  fs::copy(filePath(from), filePath(to),
           fs::copy_options::recursive | fs::copy_options::copy_symlinks, error);
  return resultOf(u"copy"_s, from, error);
}

QVariantMap move(const QString& from, const QString& to) {
  if (const QVariantMap no = refusal(Access::Write, from); !no.isEmpty()) return no;
  if (const QVariantMap no = refusal(Access::Write, to); !no.isEmpty()) return no;
  std::error_code error;
  if (fs::exists(fs::symlink_status(filePath(to), error))) {
    error = std::make_error_code(std::errc::file_exists);
    return refused(u"move %1 to"_s.arg(readableFileName(from)), to, error);
  }
  error.clear();
  fs::rename(filePath(from), filePath(to), error);
  if (error != std::errc::cross_device_link) return resultOf(u"move"_s, from, error);
  const QVariantMap failure = copy(from, to);
  return failure.isEmpty() ? remove(from) : failure;
}

QVariantMap createLink(const QString& path, const QString& target) {
  if (const QVariantMap no = refusal(Access::Write, path); !no.isEmpty()) return no;
  std::error_code error;
  fs::create_symlink(filePath(target), filePath(path), error);
  return resultOf(u"create the link"_s, path, error);
}

QString typeOf(const fs::file_status& status) {
  switch (status.type()) {
    case fs::file_type::regular:
      return u"NSFileTypeRegular"_s;
    case fs::file_type::directory:
      return u"NSFileTypeDirectory"_s;
    case fs::file_type::symlink:
      return u"NSFileTypeSymbolicLink"_s;
    default:
      return u"NSFileTypeUnknown"_s;
  }
}

/// What the platform's attributes of a file are; a failure has no "NSFileType".
QVariantMap attributesOf(const QString& path) {
  if (const QVariantMap no = refusal(Access::Read, path); !no.isEmpty()) return no;
  std::error_code error;
  const fs::path file = filePath(path);
  const fs::file_status status = fs::symlink_status(file, error);
  if (!fs::exists(status)) {
    return failed(kReadNoSuchFile, path,
                  u"cannot examine %1: %2"_s.arg(readableFileName(path), systemMessage(ENOENT)));
  }
  const FileState state = fileState(path);
  const qint64 milliseconds = state.seconds * 1000 + state.nanoseconds / 1'000'000;
  return {{u"NSFileType"_s, typeOf(status)},
          {u"NSFileSize"_s, state.bytes},
          {u"NSFilePosixPermissions"_s, int(status.permissions()) & 07777},
          {u"NSFileModificationDate"_s, QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC)}};
}

QVariantMap setPermissions(const QString& path, int permissions) {
  if (const QVariantMap no = refusal(Access::Write, path); !no.isEmpty()) return no;
  std::error_code error;
  fs::permissions(filePath(path), fs::perms(permissions & 07777), error);
  return resultOf(u"set the permissions of"_s, path, error);
}

bool isAccessible(const QString& path, const QString& mode) {
  if (!mayRead(path)) return false;
  const int wanted = mode == u"read" ? R_OK : mode == u"write" ? W_OK : X_OK;
  return access(fileNameBytes(path).constData(), wanted) == 0;
}

QString resolvedPath(const QString& path) {
  if (!mayRead(path)) return path;
  std::error_code error;
  const fs::path resolved = fs::weakly_canonical(filePath(path), error);
  return error ? path : fileNameFromBytes(resolved.native());
}

bool isReadableFolder(const QString& path) { return mayRead(path) && isFolder(path); }

bool exists(const QString& path) { return mayRead(path) && fileExists(path); }

}  // namespace

const ClassInfo& FileFunctions::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<FileFunctions>("")
          .classOperation("readFile", readFile, "The file's bytes, or a failure.")
          .classOperation("writeFile", writeFile, "Replaces a file as a whole.")
          .classOperation("readPropertyList", readPropertyList, "The value, or nothing.")
          .classOperation("writePropertyList", writePropertyList, "Replaces a file as a whole.")
          .classOperation("namesInFolder", namesInFolder, "The names, or a failure.")
          .classOperation("createFolder", createFolder, "Creates one, or its parents as well.")
          .classOperation("removeFile", remove, "Removes a file, or a folder and all in it.")
          .classOperation("copyFile", copy, "Copies a file or a folder to a new place.")
          .classOperation("moveFile", move, "Moves a file or a folder to a new place.")
          .classOperation("createLink", createLink, "Creates a symbolic link.")
          .classOperation("attributesOf", attributesOf, "The attributes, or a failure.")
          .classOperation("setPermissions", setPermissions, "Sets who may use a file.")
          .classOperation("isAccessible", isAccessible, "Whether one may read or write it.")
          .classOperation("isFolder", isReadableFolder, "Whether it is a folder.")
          .classOperation("fileExists", exists, "Whether there is such a file or folder.")
          .classOperation("resolvedPath", resolvedPath, "The path without symbolic links.");
  return kClass;
}

}  // namespace kelvar

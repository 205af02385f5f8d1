#include "scripting/runtime/fileIgnoringCase.h"

#include <QDir>
#include <QStringList>
#include <filesystem>
#include <system_error>

#include "platform/files/FileName.h"

namespace kelvar {
namespace {

/// The only entry of the folder that is called so but for case; else `name` itself.
QString entryIgnoringCase(const QString& folder, const QString& name) {
  QStringList found;
  std::error_code isUnreadable;
  for (const auto& entry : std::filesystem::directory_iterator(filePath(folder), isUnreadable)) {
    const QString each = fileNameFromBytes(entry.path().filename().native());
    if (each.compare(name, Qt::CaseInsensitive) == 0) found.append(each);
  }
  return found.size() == 1 ? found.first() : name;
}

}  // namespace

QString fileIgnoringCase(const QString& folder, const QString& name) {
  QString path = QDir(folder).filePath(name);
  if (fileExists(path) || QDir::isAbsolutePath(name)) return path;
  path = folder;
  for (const QString& component : QDir::cleanPath(name).split(u'/')) {
    const QString exact = QDir(path).filePath(component);
    path = fileExists(exact) ? exact : QDir(path).filePath(entryIgnoringCase(path, component));
  }
  return fileExists(path) ? path : QDir(folder).filePath(name);
}

}  // namespace kelvar

#include "platform/store/UserDefaults.h"

#include <pwd.h>
#include <unistd.h>

#include <QDir>
#include <QSet>
#include <mutex>

#include "platform/Log.h"
#include "platform/QtError.h"
#include "platform/files/FileName.h"

namespace kelvar {
namespace {

/// Whether this is the first failure of the file.
bool isFirst(const QString& path) {
  static std::mutex mutex;
  static QSet<QString> reported;
  const std::scoped_lock lock(mutex);
  if (reported.contains(path)) return false;
  reported.insert(path);
  return true;
}

/// From the user database where the environment has none, as in services.
QString homeFolder() {
  const QString named = fileNameFromBytes(qgetenv("HOME"));
  if (QDir::isAbsolutePath(named)) return QDir::cleanPath(named);
  QByteArray buffer(1 << 14, Qt::Uninitialized);
  passwd entry{};
  passwd* found = nullptr;
  ::getpwuid_r(::getuid(), &entry, buffer.data(), size_t(buffer.size()), &found);
  return found ? fileNameFromBytes(found->pw_dir) : QDir::rootPath();
}

QString configurationFolder() {
  const QString folder = fileNameFromBytes(qgetenv("XDG_CONFIG_HOME"));
  if (QDir::isAbsolutePath(folder)) return folder;
  return homeFolder() + QStringLiteral("/.config");
}

}  // namespace

UserDefaults UserDefaults::standard() {
  const QString named = fileNameFromBytes(qgetenv("KELVAR_DEFAULTS"));
  if (!named.isEmpty()) {
    return UserDefaults(SettingsStore(named, SettingsStore::UnknownFile::Refuse));
  }
  return UserDefaults(configurationFolder() + QStringLiteral("/kelvar/settings.sqlite"));
}

bool UserDefaults::setObject(const QVariant& value, const QString& key) const {
  const Result<void> written = store_.write(value, key);
  if (!written) report(written.error());
  return written.has_value();
}

QVariant UserDefaults::objectForKey(const QString& key) const {
  const Result<QVariant> value = store_.read(key);
  if (!value) report(value.error());
  return value.value_or(QVariant());
}

bool UserDefaults::removeObjectForKey(const QString& key) const {
  const Result<void> removed = store_.remove(key);
  if (!removed) report(removed.error());
  return removed.has_value();
}

QStringList UserDefaults::keys() const {
  const Result<QStringList> keys = store_.keys();
  if (!keys) report(keys.error());
  return keys.value_or(QStringList());
}

void UserDefaults::report(const Error& error) const {
  if (error.kind == Error::Kind::Io && isFirst(path())) return warnUser(messageOf(error));
  logLine(u"UserDefaults: %@", {messageOf(error)});
}

}  // namespace kelvar

#include "platform/SystemInfo.h"

#include <QFile>
#include <QGuiApplication>
#include <QLocale>
#include <QScreen>
#include <QSysInfo>
#include <QTimeZone>

namespace kelvar {

QString SystemInfo::locale() {
  const QLocale locale = QLocale::system();
  // The POSIX locale stands for American English.
  if (locale.language() == QLocale::C) return QStringLiteral("en-US");
  return QStringLiteral("%1-%2").arg(QLocale::languageToCode(locale.language()),
                                     QLocale::territoryToCode(locale.territory()));
}

QString SystemInfo::timeZone() { return QString::fromUtf8(QTimeZone::systemTimeZoneId()); }

SystemInfo::Screen SystemInfo::screen() {
  // The offscreen platform invents a screen.
  const bool isReal = qobject_cast<QGuiApplication*>(QCoreApplication::instance()) &&
                      QGuiApplication::platformName() != QStringLiteral("offscreen");
  const QScreen* const screen = isReal ? QGuiApplication::primaryScreen() : nullptr;
  if (!screen) return {};
  return {QSizeF(screen->size()), screen->devicePixelRatio()};
}

QString SystemInfo::machineModel(const QString& root) {
  for (const char* place : {"sys/class/dmi/id/product_name", "proc/device-tree/model"}) {
    QFile file(root + QLatin1String(place));
    if (!file.open(QIODevice::ReadOnly)) continue;
    QByteArray name = file.read(256);
    while (name.endsWith('\0')) name.chop(1);  // Device trees end theirs so.
    name = name.trimmed();
    if (!name.isEmpty()) return QString::fromUtf8(name);
  }
  return QStringLiteral("");
}

QString SystemInfo::architecture() { return QSysInfo::currentCpuArchitecture(); }

QString SystemInfo::operatingSystemVersionString() {
  // Rolling distributions have no number: use the kernel's.
  const QString release = QSysInfo::productVersion();
  const QString number = release == QStringLiteral("unknown") ? QSysInfo::kernelVersion() : release;
  return QStringLiteral("Version %1 (%2)").arg(number, QSysInfo::prettyProductName());
}

}  // namespace kelvar

#include "platform/SystemFacts.h"

#include <QFile>
#include <QGuiApplication>
#include <QLocale>
#include <QScreen>
#include <QSysInfo>
#include <QTimeZone>

namespace kelvar {

QString SystemFacts::locale() {
  const QLocale locale = QLocale::system();
  // POSIX's own locale speaks American English.
  if (locale.language() == QLocale::C) return QStringLiteral("en-US");
  return QStringLiteral("%1-%2").arg(QLocale::languageToCode(locale.language()),
                                     QLocale::territoryToCode(locale.territory()));
}

QString SystemFacts::timeZone() { return QString::fromUtf8(QTimeZone::systemTimeZoneId()); }

SystemFacts::Screen SystemFacts::screen() {
  // What draws into memory alone makes a screen up.
  const bool isReal = qobject_cast<QGuiApplication*>(QCoreApplication::instance()) &&
                      QGuiApplication::platformName() != QStringLiteral("offscreen");
  const QScreen* const screen = isReal ? QGuiApplication::primaryScreen() : nullptr;
  if (!screen) return {};
  return {QSizeF(screen->size()), screen->devicePixelRatio()};
}

QString SystemFacts::machineModel(const QString& root) {
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

QString SystemFacts::architecture() { return QSysInfo::currentCpuArchitecture(); }

QString SystemFacts::operatingSystemVersionString() {
  // Distributions without releases have no number: then the kernel's.
  const QString release = QSysInfo::productVersion();
  const QString number = release == QStringLiteral("unknown") ? QSysInfo::kernelVersion() : release;
  return QStringLiteral("Version %1 (%2)").arg(number, QSysInfo::prettyProductName());
}

}  // namespace kelvar

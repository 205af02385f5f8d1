#include "platform/SystemInfo.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

namespace kelvar {
namespace {

TEST(SystemInfoTest, SecondWordOfOperatingSystemIsItsVersion) {
  const QString text = SystemInfo::operatingSystemVersionString();
  EXPECT_TRUE(text.startsWith(QStringLiteral("Version "))) << text.toStdString();
  EXPECT_TRUE(text.section(u' ', 1, 1).at(0).isDigit()) << text.toStdString();
  QFile release(QStringLiteral("/etc/os-release"));
  ASSERT_TRUE(release.open(QIODevice::ReadOnly));
  const QByteArray lines = '\n' + release.readAll();
  if (!lines.contains("\nVERSION_ID=\"12\"\n") || !lines.contains("\nID=debian\n")) return;
  EXPECT_EQ(text, QStringLiteral("Version 12 (Debian GNU/Linux 12 (bookworm))"));
}

TEST(SystemInfoTest, ReadsModelFromFirmware) {
  const QTemporaryDir root;
  const QString folder = root.path() + u'/';
  const auto write = [&](const char* place, const QByteArray& text) {
    const QString path = folder + QLatin1String(place);
    QDir().mkpath(path.section(u'/', 0, -2));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  };
  EXPECT_EQ(SystemInfo::machineModel(folder), QString());
  EXPECT_FALSE(SystemInfo::machineModel(folder).isNull());
  write("proc/device-tree/model", QByteArray("Board 4\0", 8));
  EXPECT_EQ(SystemInfo::machineModel(folder), QStringLiteral("Board 4"));
  write("sys/class/dmi/id/product_name", "\n");
  EXPECT_EQ(SystemInfo::machineModel(folder), QStringLiteral("Board 4"));
  write("sys/class/dmi/id/product_name", "Laptop X1\n");
  EXPECT_EQ(SystemInfo::machineModel(folder), QStringLiteral("Laptop X1"));
}

TEST(SystemInfoTest, OffscreenPlatformHasNoScreen) {
  EXPECT_EQ(SystemInfo::screen().density, 0) << "without an application";
  for (const auto& [platform, isSeen] : {std::pair("offscreen", false), {"minimal", true}}) {
    int count = 3;
    char name[] = "test";
    char option[] = "-platform";
    QByteArray value(platform);
    char* arguments[] = {name, option, value.data(), nullptr};
    const QGuiApplication application(count, arguments);
    EXPECT_EQ(SystemInfo::screen().density, isSeen ? 1 : 0) << platform;
    EXPECT_EQ(SystemInfo::screen().size.isEmpty(), !isSeen) << platform;
  }
}

}  // namespace
}  // namespace kelvar

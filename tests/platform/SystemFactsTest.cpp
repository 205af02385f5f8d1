#include "platform/SystemFacts.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

namespace kelvar {
namespace {

TEST(SystemFacts, TheSecondWordOfTheOperatingSystemIsItsNumber) {
  const QString text = SystemFacts::operatingSystemVersionString();
  EXPECT_TRUE(text.startsWith(QStringLiteral("Version "))) << text.toStdString();
  EXPECT_TRUE(text.section(u' ', 1, 1).at(0).isDigit()) << text.toStdString();
  QFile release(QStringLiteral("/etc/os-release"));
  ASSERT_TRUE(release.open(QIODevice::ReadOnly));
  const QByteArray lines = '\n' + release.readAll();
  if (!lines.contains("\nVERSION_ID=\"12\"\n") || !lines.contains("\nID=debian\n")) return;
  EXPECT_EQ(text, QStringLiteral("Version 12 (Debian GNU/Linux 12 (bookworm))"));
}

TEST(SystemFacts, TheModelIsWhatTheFirmwareSays) {
  const QTemporaryDir root;
  const QString folder = root.path() + u'/';
  const auto write = [&](const char* place, const QByteArray& text) {
    const QString path = folder + QLatin1String(place);
    QDir().mkpath(path.section(u'/', 0, -2));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  };
  EXPECT_EQ(SystemFacts::machineModel(folder), QString());
  EXPECT_FALSE(SystemFacts::machineModel(folder).isNull());
  write("proc/device-tree/model", QByteArray("Board 4\0", 8));
  EXPECT_EQ(SystemFacts::machineModel(folder), QStringLiteral("Board 4"));
  write("sys/class/dmi/id/product_name", "\n");
  EXPECT_EQ(SystemFacts::machineModel(folder), QStringLiteral("Board 4"));
  write("sys/class/dmi/id/product_name", "Laptop X1\n");
  EXPECT_EQ(SystemFacts::machineModel(folder), QStringLiteral("Laptop X1"));
}

TEST(SystemFacts, AScreenIsOneThatCanBeSeen) {
  EXPECT_EQ(SystemFacts::screen().density, 0) << "without an application";
  for (const auto& [platform, isSeen] : {std::pair("offscreen", false), {"minimal", true}}) {
    int count = 3;
    char name[] = "test";
    char option[] = "-platform";
    QByteArray value(platform);
    char* arguments[] = {name, option, value.data(), nullptr};
    const QGuiApplication application(count, arguments);
    EXPECT_EQ(SystemFacts::screen().density, isSeen ? 1 : 0) << platform;
    EXPECT_EQ(SystemFacts::screen().size.isEmpty(), !isSeen) << platform;
  }
}

}  // namespace
}  // namespace kelvar

#include <gtest/gtest.h>

#include <QDateTime>
#include <QProcess>
#include <QTemporaryDir>

#include "platform/store/SqliteDatabase.h"
#include "platform/store/UserDefaults.h"

namespace kelvar {
namespace {

/// The built program with its own settings.
class SettingsTest : public testing::Test {
 protected:
  /// Its standard output. If it fails, its exit status, ": " and its standard error are appended.
  QByteArray run(const QStringList& arguments) const {
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("KELVAR_DEFAULTS"), path_);
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(KELVAR_PROGRAM),
                  QStringList(QStringLiteral("settings")) + arguments);
    if (!program.waitForFinished(-1)) return "did not run";
    const QByteArray out = program.readAllStandardOutput();
    if (program.exitCode() == 0) return out;
    return out + QByteArray::number(program.exitCode()) + ": " + program.readAllStandardError();
  }

  static QStringList words(const char* line) { return QString::fromUtf8(line).split(u' '); }

  QTemporaryDir dir_;
  const QString path_ = dir_.filePath(QStringLiteral("settings.sqlite"));
  const UserDefaults defaults_{path_};
};

TEST_F(SettingsTest, KeepsRequestedType) {
  const std::tuple<const char*, QVariant, const char*> cases[] = {
      {"a 12", QStringLiteral("12"), "12\n"},
      {"a -12 --type integer", -12, "-12\n"},
      {"a 18446744073709551615 --type integer", qulonglong(-1), "18446744073709551615\n"},
      {"a 1 --type real", 1.0, "1.0\n"},
      {"a true --type bool", true, "true\n"},
      {"a 1969-07-20T22:17:40.5+02:00 --type date",
       QDateTime(QDate(1969, 7, 20), QTime(20, 17, 40, 500), Qt::UTC),
       "1969-07-20T20:17:40.500Z\n"},
      {"a AP8= --type data", QByteArray("\0\xff", 2), "AP8=\n"},
      {"a [1,1.0,{\"b\":\"ü\"}] --type json",
       QVariantList{1, 1.0, QVariantMap{{QStringLiteral("b"), QStringLiteral("ü")}}},
       "[1,1.0,{\"b\":\"ü\"}]\n"}};
  for (const auto& [line, value, text] : cases) {
    EXPECT_EQ(run(QStringList(QStringLiteral("set")) + words(line)), "") << line;
    const QVariant stored = defaults_.objectForKey(QStringLiteral("a"));
    EXPECT_EQ(stored, value) << line;
    EXPECT_EQ(stored.typeId() == QMetaType::Double, value.typeId() == QMetaType::Double) << line;
    EXPECT_EQ(run(words("get a")), text) << line;
  }
}

TEST_F(SettingsTest, ListsAndRemoves) {
  EXPECT_EQ(run(words("list")), "");
  EXPECT_EQ(run(words("list --json")), "[]\n");
  defaults_.setObject(QStringLiteral("x\ny"), QStringLiteral("b"));
  defaults_.setObject(2.0, QStringLiteral("a\tkey"));
  EXPECT_EQ(run(words("list")), "\"a\\tkey\"\treal\t2.0\nb\tstring\t\"x\\ny\"\n");
  EXPECT_EQ(run(words("list --json")),
            "[{\"key\":\"a\\tkey\",\"type\":\"real\",\"value\":2.0},"
            "{\"key\":\"b\",\"type\":\"string\",\"value\":\"x\\ny\"}]\n");
  EXPECT_EQ(run(words("get b --json")),
            "{\"key\":\"b\",\"type\":\"string\",\"value\":\"x\\ny\"}\n");
  EXPECT_EQ(run(words("remove b --json")), "{\"key\":\"b\",\"removed\":true}\n");
  EXPECT_EQ(run(words("remove b")), "");
  EXPECT_EQ(defaults_.keys(), QStringList(QStringLiteral("a\tkey")));
}

TEST_F(SettingsTest, ReplacesTerminalControlCharacters) {
  const QString red = QStringLiteral("\u009b31m");
  const QByteArray shown =
      "\"\xef\xbf\xbd"
      "31m\"";
  defaults_.setObject(1, red);
  defaults_.setObject(red, QStringLiteral("value"));
  EXPECT_EQ(run(words("list")), "value\tstring\t" + shown + "\n" + shown + "\tinteger\t1\n");
  EXPECT_EQ(run({QStringLiteral("remove"), red}), "");
  EXPECT_EQ(run({QStringLiteral("get"), red}),
            "1: kelvar: nothing is stored under " + shown + "\n");
}

TEST_F(SettingsTest, ListsOthersBesideDamagedValue) {
  defaults_.setObject(1, QStringLiteral(""));
  defaults_.setObject(2, QStringLiteral("b"));
  ASSERT_TRUE(SqliteDatabase::open(path_)->execute("INSERT INTO settings VALUES ('a', x'00')"));
  const QByteArray list = run(words("list"));
  EXPECT_TRUE(list.startsWith("\"\"\tinteger\t1\nb\tinteger\t2\n1: kelvar: ")) << list.constData();
  EXPECT_EQ(list.count('\n'), 3) << list.constData();
  EXPECT_EQ(run(words("remove a")), "");
  EXPECT_EQ(run(words("list")), "\"\"\tinteger\t1\nb\tinteger\t2\n");
}

TEST_F(SettingsTest, ReportsDamagedFileOnce) {
  defaults_.setObject(1, QStringLiteral("a"));
  QFile file(path_);
  ASSERT_TRUE(file.resize(file.size() / 2));
  const QString words = QStringLiteral("kelvar: the settings in %1 are damaged (").arg(path_);
  const QByteArray said = run({QStringLiteral("get"), QStringLiteral("a")});
  EXPECT_TRUE(said.startsWith("1: " + words.toUtf8())) << said.constData();
  EXPECT_TRUE(said.contains("/settings.sqlite.damaged-")) << said.constData();
  EXPECT_TRUE(said.endsWith("kelvar: nothing is stored under a\n")) << said.constData();
  EXPECT_EQ(said.count('\n'), 2) << said.constData();
}

TEST_F(SettingsTest, ReportsErrorsInOneLine) {
  const std::pair<const char*, const char*> cases[] = {
      {"get none", "1: kelvar: nothing is stored under none\n"},
      {"set a 1.5 --type integer",
       "2: kelvar: --type integer takes a 64-bit integer such as -12, not \"1.5\"\n"},
      {"set a yes --type bool", "2: kelvar: --type bool takes true or false, not \"yes\"\n"},
      {"set a [1 --type json", "2: kelvar: --type json takes JSON, not \"[1\"\n"},
      {"set a A --type data", "2: kelvar: --type data takes Base64, not \"A\"\n"},
      {"set a May --type date",
       "2: kelvar: --type date takes a date such as 2026-05-01T12:00:00Z, not \"May\"\n"}};
  for (const auto& [line, answer] : cases) EXPECT_EQ(run(words(line)), answer) << line;
  for (const char* line : {"set a [null] --type json", "set a"}) {
    EXPECT_TRUE(run(words(line)).contains(": kelvar: ")) << line;
  }
  EXPECT_EQ(defaults_.keys(), QStringList());
}

}  // namespace
}  // namespace kelvar

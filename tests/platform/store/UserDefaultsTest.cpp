#include "platform/store/UserDefaults.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>
#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <random>
#include <thread>

#include "platform/LogCapture.h"
#include "platform/QtError.h"
#include "platform/store/SqliteDatabase.h"

namespace kelvar {
namespace {

/// Runs `work` in a process of its own, which exits with 0 when it says true.
pid_t inChild(const std::function<bool()>& work) {
  const pid_t child = fork();
  if (child == 0) _exit(work() ? 0 : 1);
  return child;
}

bool succeeded(pid_t child) {
  int status = -1;
  return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

int mode(const QString& path) {
  struct stat found {};
  return stat(QFile::encodeName(path).constData(), &found) == 0 ? int(found.st_mode & 0777) : -1;
}

QByteArray contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void overwrite(const QString& path, qint64 at, const QByteArray& bytes) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(at));
  ASSERT_EQ(file.write(bytes), bytes.size());
}

/// A store in a folder of its own: in memory where there is such a folder, since many writes that
/// each wait for the disk take long, and no test here takes the power away.
class UserDefaultsTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(dir_.isValid()); }

  static QString templateName() {
    const QString memory = QStringLiteral("/dev/shm");
    return (access("/dev/shm", W_OK) == 0 ? memory : QDir::tempPath()) +
           QStringLiteral("/kelvar-defaults-XXXXXX");
  }

  QTemporaryDir dir_{templateName()};
  const QString folder_ = dir_.filePath(QStringLiteral("kelvar"));
  const QString path_ = folder_ + QStringLiteral("/settings.sqlite");
  const UserDefaults defaults_{path_};
  const QString key_ = QStringLiteral("io.kelvarlabs.kelvar.test");
};

TEST_F(UserDefaultsTest, KeepsNumberTypesAndEveryOtherType) {
  const QDateTime date(QDate(1969, 7, 20), QTime(20, 17, 40, 123), Qt::UTC);
  const QVariantMap record{{QStringLiteral("read"), false},
                           {QStringLiteral("id"), -1},
                           {QStringLiteral(""), QStringLiteral("")},
                           {QString(u'\0') + u'k', QString(u'\0') + u'v'}};
  const std::pair<QVariant, QMetaType::Type> cases[] = {
      {true, QMetaType::Bool},
      {false, QMetaType::Bool},
      {1, QMetaType::LongLong},
      {-1, QMetaType::LongLong},
      {std::numeric_limits<qlonglong>::min(), QMetaType::LongLong},
      {std::numeric_limits<qulonglong>::max(), QMetaType::ULongLong},
      {1.0, QMetaType::Double},
      {-0.1, QMetaType::Double},
      {std::numeric_limits<double>::infinity(), QMetaType::Double},
      {QStringLiteral(""), QMetaType::QString},
      {QStringLiteral("1"), QMetaType::QString},
      {QStringLiteral("ünï\n\u0001😀 e\u0301"), QMetaType::QString},
      {QByteArray(""), QMetaType::QByteArray},
      {QByteArray("\0\xff", 2), QMetaType::QByteArray},
      {date, QMetaType::QDateTime},
      {date.addYears(200), QMetaType::QDateTime},
      {QVariantList(), QMetaType::QVariantList},
      {QVariantMap(), QMetaType::QVariantMap},
      {QVariantList{record, QVariantList{QVariantMap()}, 2, 2.0, true}, QMetaType::QVariantList}};
  for (const auto& [value, type] : cases) {
    ASSERT_TRUE(defaults_.setObject(value, key_)) << value.typeName();
    const QVariant read = UserDefaults(path_).objectForKey(key_);
    EXPECT_EQ(read.typeId(), type) << value.typeName();
    EXPECT_EQ(read, value) << value.typeName();
  }
  const QVariantList list = defaults_.objectForKey(key_).toList();
  EXPECT_EQ(list[0].toMap()[QStringLiteral("read")].typeId(), QMetaType::Bool);
  EXPECT_EQ(list[2].typeId(), QMetaType::LongLong);
  EXPECT_EQ(list[3].typeId(), QMetaType::Double);
}

TEST_F(UserDefaultsTest, UsesKeysVerbatim) {
  const QStringList keys{
      QStringLiteral(""),           QString(u'\0'),           QString(u'\0') + u'a',
      QStringLiteral("%' OR 1 --"), QStringLiteral("Key"),    QStringLiteral("e\u0301"),
      QStringLiteral("key"),        QStringLiteral("key "),   QString(5000, u'k'),
      QStringLiteral("\u00e9"),     QStringLiteral("\uffff"), QStringLiteral("😀")};
  for (const QString& key : keys) ASSERT_TRUE(defaults_.setObject(key + u'!', key));
  EXPECT_EQ(defaults_.keys(), keys);
  for (const QString& key : defaults_.keys()) EXPECT_EQ(defaults_.objectForKey(key), key + u'!');
  for (const QString& key : keys) {
    EXPECT_TRUE(defaults_.removeObjectForKey(key));
    EXPECT_FALSE(defaults_.objectForKey(key).isValid());
  }
  EXPECT_EQ(defaults_.keys(), QStringList());
}

TEST_F(UserDefaultsTest, RejectsNonPropertyListsBeforeWriting) {
  const QVariant null = QVariant::fromValue(nullptr);
  ASSERT_TRUE(defaults_.setObject(7, key_));
  const QByteArray before = contents(path_);
  for (const QVariant& value :
       {QVariant(), null, QVariant(QUrl(QStringLiteral("https://a.example"))), QVariant(QString()),
        QVariant(QDateTime()), QVariant(QVariantMap{{key_, QVariantList{null}}})}) {
    const LogCapture log;
    EXPECT_FALSE(defaults_.setObject(value, key_)) << value.typeName();
    const Result<void> written = defaults_.store().write(value, key_);
    ASSERT_FALSE(written) << value.typeName();
    ASSERT_EQ(log.lines().size(), 1);
    EXPECT_TRUE(log.lines()[0].contains(key_));
    EXPECT_TRUE(log.lines()[0].contains(messageOf(written.error())));
  }
  for (const QString& key : {QString(), QString(QChar(0xd83d))}) {
    EXPECT_FALSE(defaults_.setObject(7, key));
    EXPECT_FALSE(defaults_.objectForKey(key).isValid());
  }
  EXPECT_EQ(contents(path_), before);
  EXPECT_EQ(defaults_.objectForKey(key_), 7);
}

TEST_F(UserDefaultsTest, OnlyWritingCreatesTheFileWithPrivateMode) {
  EXPECT_FALSE(defaults_.objectForKey(key_).isValid());
  EXPECT_TRUE(defaults_.removeObjectForKey(key_));
  EXPECT_EQ(defaults_.keys(), QStringList());
  EXPECT_FALSE(QFile::exists(folder_));
  const mode_t mask = umask(0);
  EXPECT_TRUE(defaults_.setObject(1, key_));
  umask(mask);
  EXPECT_EQ(mode(folder_), 0700);
  EXPECT_EQ(mode(path_), 0600);
}

TEST_F(UserDefaultsTest, LocationFollowsEnvironment) {
  const std::tuple<const char*, const char*, QString> cases[] = {
      {"", "/config", QStringLiteral("/config/kelvar/settings.sqlite")},
      {"", "relative", QDir::homePath() + QStringLiteral("/.config/kelvar/settings.sqlite")},
      {"", "", QDir::homePath() + QStringLiteral("/.config/kelvar/settings.sqlite")},
      {"/else/where", "/config", QStringLiteral("/else/where")},
      {"here", "/config", QDir::current().absoluteFilePath(QStringLiteral("here"))}};
  const QByteArray named = qgetenv("KELVAR_DEFAULTS"), config = qgetenv("XDG_CONFIG_HOME"),
                   home = qgetenv("HOME");
  for (const auto& [file, folder, path] : cases) {
    qputenv("KELVAR_DEFAULTS", file);
    qputenv("XDG_CONFIG_HOME", folder);
    EXPECT_EQ(UserDefaults::standard().path(), path);
  }
  qunsetenv("KELVAR_DEFAULTS");
  qunsetenv("XDG_CONFIG_HOME");
  const QString known = QFile::decodeName(getpwuid(getuid())->pw_dir);
  for (const char* relative : {"", "home"}) {
    qputenv("HOME", relative);
    EXPECT_EQ(UserDefaults::standard().path(),
              known + QStringLiteral("/.config/kelvar/settings.sqlite"));
  }
  qputenv("HOME", home);
  qputenv("KELVAR_DEFAULTS", named);
  qputenv("XDG_CONFIG_HOME", config);
}

/// A value that tells when parts of it are of different writes.
QVariant stamped(int number) { return QVariantList(1 + number % 40 * 10, number); }

int stampOf(const QVariant& value) {
  const QVariantList list = value.toList();
  return !list.isEmpty() && value == stamped(list[0].toInt()) ? list[0].toInt() : -1;
}

TEST_F(UserDefaultsTest, ProcessesShareFile) {
  constexpr int kWriters = 4, kKeys = 500;
  const auto keyOf = [](int writer, int i) { return QStringLiteral("%1/%2").arg(writer).arg(i); };
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);  // Closed when the writers are done.
  std::vector<pid_t> writers, readers;
  for (int reader = 0; reader < 2; ++reader) {
    readers.push_back(inChild([&] {
      close(ends[1]);
      fcntl(ends[0], F_SETFL, O_NONBLOCK);
      bool good = true;
      for (char byte = 0; good && read(ends[0], &byte, 1) < 0;) {
        const SettingsStore& store = defaults_.store();
        for (int writer = 0; writer < kWriters; ++writer) {
          const Result<QVariant> value = store.read(keyOf(writer, 0));
          good = good && value && (!value->isValid() || stampOf(*value) >= 0);
        }
        const Result<QStringList> keys = store.keys();
        good = good && keys && keys->size() <= kWriters * kKeys;
      }
      return good;
    }));
  }
  for (int writer = 0; writer < kWriters; ++writer) {
    writers.push_back(inChild([&] {
      bool good = true;
      for (int i = 0; i < kKeys; ++i) {
        // The readers' key changes, too.
        good = good && defaults_.setObject(stamped(i), keyOf(writer, i % 2 == 0 ? 0 : i)) &&
               defaults_.setObject(stamped(i), keyOf(writer, i));
      }
      return good;
    }));
  }
  for (const pid_t writer : writers) EXPECT_TRUE(succeeded(writer)) << "a writer failed";
  close(ends[1]);
  for (const pid_t reader : readers) EXPECT_TRUE(succeeded(reader)) << "a reader failed";
  close(ends[0]);
  EXPECT_EQ(defaults_.keys().size(), kWriters * kKeys);
  for (int writer = 0; writer < kWriters; ++writer) {
    for (int i = 1; i < kKeys; ++i) {
      EXPECT_EQ(stampOf(defaults_.objectForKey(keyOf(writer, i))), i) << writer;
    }
  }
}

TEST_F(UserDefaultsTest, ThreadsShareFile) {
  constexpr int kThreads = 4, kKeys = 50;
  std::atomic<int> failures = 0;
  {
    std::vector<std::jthread> threads;
    for (int t = 0; t < kThreads; ++t) {
      threads.emplace_back([&, t] {
        for (int i = 0; i < kKeys; ++i) {
          const QString key = QStringLiteral("%1/%2").arg(t).arg(i);
          failures += !UserDefaults(path_).setObject(stamped(i), key);
          failures += stampOf(defaults_.objectForKey(key)) != i;
        }
      });
    }
  }
  EXPECT_EQ(failures, 0);
  EXPECT_EQ(defaults_.keys().size(), kThreads * kKeys);
}

TEST_F(UserDefaultsTest, KeepsCompletedWritesIfWriterIsKilled) {
  constexpr int kRounds = 200, kKeys = 20;
  const auto keyOf = [](int number) { return QString::number(number % kKeys); };
  std::mt19937 random(std::random_device{}());
  std::uniform_int_distribution<int> microseconds(0, 6000);
  int next = 1;
  std::map<QString, int> returned;
  for (int round = 0; round < kRounds; ++round) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = inChild([&] {
      for (int number = next;; ++number) {
        if (!defaults_.setObject(stamped(number), keyOf(number))) return false;
        if (write(ends[1], &number, sizeof number) != sizeof number) return false;
      }
    });
    close(ends[1]);
    const auto readOne = [&] {
      int number = 0;
      if (read(ends[0], &number, sizeof number) != sizeof number) return false;
      returned[keyOf(number)] = number;
      next = number + 1;
      return true;
    };
    // However slow the machine is, a writer is killed among its writes and not before them.
    readOne();
    usleep(useconds_t(microseconds(random)));
    kill(child, SIGKILL);
    while (readOne()) {
    }
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status)) << "a write failed";
    for (const auto& [key, number] : returned) {
      // The write that was under way may be there or not, but not in part.
      const int stamp = stampOf(defaults_.objectForKey(key));
      ASSERT_TRUE(stamp == number || (stamp == next && key == keyOf(next))) << stamp << number;
    }
  }
  EXPECT_GT(next, kRounds) << "a writer did not write";
  EXPECT_EQ(QDir(folder_).entryList({QStringLiteral("*damaged*")}), QStringList());
}

TEST_F(UserDefaultsTest, FullDiskKeepsOldValues) {
  ASSERT_TRUE(defaults_.setObject(QByteArray(1000, 'o'), key_));
  EXPECT_TRUE(succeeded(inChild([&] {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{1 << 16, 1 << 16};
    setrlimit(RLIMIT_FSIZE, &limit);
    const LogCapture log;
    const bool refused = !defaults_.setObject(QByteArray(1 << 20, 'n'), key_);
    return refused && log.lines().size() == 1 && log.lines()[0].contains(path_) &&
           log.lines()[0].contains(QStringLiteral("File too large")) &&
           defaults_.objectForKey(key_) == QByteArray(1000, 'o') &&
           defaults_.setObject(1, QStringLiteral("small"));
  })));
  EXPECT_EQ(defaults_.objectForKey(key_), QByteArray(1000, 'o'));
  EXPECT_EQ(defaults_.objectForKey(QStringLiteral("small")), 1);
}

/// Gives up the right to write everywhere, which root has.
bool becomeNobody(const QStringList& paths) {
  constexpr uid_t kNobody = 65534;
  if (geteuid() != 0) return true;
  for (const QString& path : paths) {
    if (chown(QFile::encodeName(path).constData(), kNobody, kNobody) != 0) return false;
  }
  return setgid(kNobody) == 0 && setuid(kNobody) == 0;
}

TEST_F(UserDefaultsTest, ReadOnlyFolderKeepsOldValues) {
  ASSERT_TRUE(defaults_.setObject(7, key_));
  const UserDefaults missing(folder_ + QStringLiteral("/new/settings.sqlite"));
  ASSERT_EQ(chmod(QFile::encodeName(path_).constData(), 0400), 0);
  ASSERT_EQ(chmod(QFile::encodeName(folder_).constData(), 0500), 0);
  EXPECT_TRUE(succeeded(inChild([&] {
    if (!becomeNobody({dir_.path(), folder_, path_})) return false;
    const LogCapture log;
    const bool refused = !defaults_.setObject(8, key_) && !defaults_.removeObjectForKey(key_) &&
                         !missing.setObject(8, key_);
    return refused && log.lines().size() == 3 &&
           log.lines()[0].contains(QStringLiteral("readonly")) &&
           log.lines()[2].contains(QStringLiteral("Permission denied")) &&
           defaults_.objectForKey(key_) == 7 && log.lines().size() == 3;
  })));
  ASSERT_EQ(chmod(QFile::encodeName(folder_).constData(), 0700), 0);
}

TEST_F(UserDefaultsTest, LeavesSpecialFilesAlone) {
  ASSERT_EQ(mkfifo(QFile::encodeName(dir_.filePath(QStringLiteral("pipe"))).constData(), 0600), 0);
  for (const QString& path : {dir_.filePath(QStringLiteral("pipe")), dir_.path()}) {
    const Result<void> written = SettingsStore(path).write(1, key_);
    ASSERT_FALSE(written);
    EXPECT_TRUE(messageOf(written.error()).contains(QStringLiteral("not a regular file")))
        << written.error().message;
    EXPECT_FALSE(UserDefaults(path).objectForKey(key_).isValid());
  }
  const auto all = QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot;
  EXPECT_EQ(QDir(dir_.path()).entryList(all), QStringList(QStringLiteral("pipe")));
}

TEST_F(UserDefaultsTest, SetsDamagedFileAside) {
  for (int i = 0; i < 200; ++i) defaults_.setObject(stamped(i), QString::number(i));
  const QByteArray whole = contents(path_);
  const QByteArray cases[] = {QByteArray("This is not a database.\n").repeated(100),
                              whole.first(whole.size() / 2), whole.first(100),
                              whole.first(4096) + QByteArray(whole.size() - 4096, '\x55')};
  const QString left = QStringLiteral("settings.sqlite.damaged-*");
  for (const QByteArray& damaged : cases) {
    QFile::remove(path_);
    overwrite(path_, 0, damaged);
    const LogCapture log;
    EXPECT_FALSE(defaults_.objectForKey(QStringLiteral("7")).isValid());
    EXPECT_EQ(log.lines().size(), 1) << log.lines().join(u'\n').toStdString();
    const QStringList aside = QDir(folder_).entryList({left}, QDir::Files, QDir::Name);
    ASSERT_EQ(aside.size(), 1) << damaged.size();
    EXPECT_TRUE(log.lines()[0].contains(aside[0]));
    EXPECT_EQ(contents(QDir(folder_).filePath(aside[0])), damaged);
    EXPECT_TRUE(defaults_.setObject(1, key_));
    EXPECT_EQ(defaults_.keys(), QStringList(key_));
    QFile::remove(QDir(folder_).filePath(aside[0]));
  }
  QFile::remove(path_);
  overwrite(path_, 0, "");
  const LogCapture log;
  EXPECT_FALSE(defaults_.objectForKey(key_).isValid());
  EXPECT_EQ(log.lines(), QStringList()) << "an empty file is an empty store";
}

TEST_F(UserDefaultsTest, RejectsForeignDatabasesAndLeavesThemAlone) {
  ASSERT_TRUE(defaults_.setObject(1, key_));
  const QByteArray store = contents(path_);
  const auto changed = [&](qsizetype at, const char* bytes) {
    return QByteArray(store).replace(at, 4, QByteArray(bytes, 4));
  };
  const QByteArray text("Chapter one.\n");
  const struct {
    const char* what;
    QByteArray bytes;
    const char* reason;
    bool isRefusedByNameAlone = false;
  } cases[] = {
      {"another application's", changed(68, "MPBX"), "another program's database"},
      {"nobody's", changed(68, "\0\0\0\0"), "another program's database"},
      {"a damaged one of another", changed(68, "MPBX").first(1000), "another program's database"},
      {"a newer one", changed(60, "\0\0\0\2"), "in format 2 instead of 1"},
      {"a text", text, "not a Kelvar settings file", true},
      {"a long text", text.repeated(1000), "not a Kelvar settings file", true},
      {"a store's start", store.first(60), "not a Kelvar settings file", true},
  };
  const QByteArray named = qgetenv("KELVAR_DEFAULTS");
  qputenv("KELVAR_DEFAULTS", path_.toUtf8());
  for (const auto& [what, bytes, reason, isRefusedByNameAlone] : cases) {
    for (const bool isNamed : {false, true}) {
      if (isRefusedByNameAlone && !isNamed) continue;
      const UserDefaults defaults = isNamed ? UserDefaults::standard() : defaults_;
      QFile::remove(path_);
      overwrite(path_, 0, bytes);
      const Result<void> written = defaults.store().write(2, key_);
      ASSERT_FALSE(written) << what;
      EXPECT_TRUE(messageOf(written.error()).contains(QLatin1String(reason)))
          << what << ": " << written.error().message;
      EXPECT_FALSE(defaults.objectForKey(key_).isValid()) << what;
      EXPECT_FALSE(defaults.removeObjectForKey(key_)) << what;
      EXPECT_EQ(defaults.keys(), QStringList()) << what;
      EXPECT_EQ(contents(path_), bytes) << what;
      EXPECT_EQ(QDir(folder_).entryList(QDir::Files),
                QStringList(QStringLiteral("settings.sqlite")))
          << what;
    }
  }
  // What is marked as ours is, also when it is damaged.
  QFile::remove(path_);
  overwrite(path_, 0, store.first(store.size() / 2));
  EXPECT_TRUE(UserDefaults::standard().setObject(2, key_));
  qputenv("KELVAR_DEFAULTS", named);
}

TEST_F(UserDefaultsTest, ProcessesSetDamagedFileAsideOnce) {
  ASSERT_TRUE(defaults_.setObject(1, key_));
  overwrite(path_, 0, QByteArray(8192, 'x'));
  std::vector<pid_t> children;
  for (int i = 0; i < 6; ++i) {
    children.push_back(
        inChild([&, i] { return defaults_.setObject(i, QStringLiteral("key %1").arg(i)); }));
  }
  for (const pid_t child : children) EXPECT_TRUE(succeeded(child));
  EXPECT_EQ(defaults_.keys().size(), 6);
  EXPECT_EQ(QDir(folder_).entryList(QDir::Files).size(), 2);
}

TEST_F(UserDefaultsTest, DamagedValueReadsAsInvalid) {
  ASSERT_TRUE(defaults_.setObject(1, key_));
  auto database = SqliteDatabase::open(path_);
  ASSERT_TRUE(
      database &&
      database->execute("INSERT INTO settings VALUES"
                        "('junk', x'6a756e6b'), ('cut', x'62706c6973743030'), ('empty', x'')"));
  const LogCapture log;
  for (const auto* key : {"junk", "cut", "empty"}) {
    EXPECT_FALSE(defaults_.objectForKey(QLatin1String(key)).isValid());
  }
  EXPECT_EQ(log.lines().size(), 3);
  EXPECT_EQ(defaults_.objectForKey(key_), 1);
  EXPECT_EQ(defaults_.keys().size(), 4);
}

}  // namespace
}  // namespace kelvar

#include "platform/files/File.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <QDir>
#include <QTemporaryDir>
#include <csignal>
#include <thread>

#include "platform/QtError.h"
#include "platform/files/FileLock.h"
#include "platform/files/FileName.h"

namespace kelvar {
namespace {

using namespace std::chrono_literals;

TEST(FileNameTest, RoundTripsAnyBytes) {
  const struct {
    QByteArray bytes;
    QString text, readable;
  } cases[] = {
      {"plain.png", QStringLiteral("plain.png"), QStringLiteral("plain.png")},
      {"caf\xc3\xa9 \xf0\x9f\x98\x80", QStringLiteral("café 😀"), QStringLiteral("café 😀")},
      {"caf\xe9", QStringLiteral("caf") + QChar(0xdce9), QStringLiteral("caf\\xe9")},
      {"\xf0\x9f\x98\x80\xff", QStringLiteral("😀") + QChar(0xdcff), QStringLiteral("😀\\xff")},
      {"\xe2\x82", QString(QChar(0xdce2)) + QChar(0xdc82), QStringLiteral("\\xe2\\x82")},
      {"\xc0\xaf", QString(QChar(0xdcc0)) + QChar(0xdcaf), QStringLiteral("\\xc0\\xaf")},
      {"\xed\xb3\xa9z", QString(QChar(0xdced)) + QChar(0xdcb3) + QChar(0xdca9) + u'z',
       QStringLiteral("\\xed\\xb3\\xa9z")},
      {"", QString(), QString()},
  };
  for (const auto& [bytes, text, readable] : cases) {
    EXPECT_EQ(fileNameFromBytes(bytes), text) << bytes.constData();
    EXPECT_EQ(fileNameBytes(text), bytes) << bytes.constData();
    EXPECT_EQ(readableFileName(text), readable) << bytes.constData();
  }
}

class FileTest : public testing::Test {
 protected:
  QString path(const QByteArray& name) const {
    return folder_.path() + u'/' + fileNameFromBytes(name);
  }
  std::string nativePath(const QByteArray& name) const {
    return fileNameBytes(path(name)).toStdString();
  }
  QByteArray read(const QByteArray& name) {
    const Result<QByteArray> bytes = File::readAll(path(name), 1 << 20);
    error_ = bytes ? QString() : messageOf(bytes.error());
    return bytes.value_or(QByteArray());
  }
  bool write(const QByteArray& name, const QByteArray& bytes) {
    const Result<void> written = File::writeAtomically(path(name), bytes);
    error_ = written ? QString() : messageOf(written.error());
    return written.has_value();
  }
  struct stat facts(const QByteArray& name) const {
    struct stat facts {};
    EXPECT_EQ(::lstat(nativePath(name).c_str(), &facts), 0) << name.constData();
    return facts;
  }
  qsizetype fileCount() const {
    return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden | QDir::System).size();
  }

  QTemporaryDir folder_;
  QString error_;
};

TEST_F(FileTest, NamesAreBytes) {
  for (const QByteArray name : {"caf\xe9", "caf\xe8", "café"}) {
    ASSERT_TRUE(write(name, name)) << qPrintable(error_);
    EXPECT_TRUE(isFile(path(name)));
    EXPECT_EQ(fileState(path(name)).bytes, name.size());
  }
  for (const QByteArray name : {"caf\xe9", "caf\xe8", "café"}) EXPECT_EQ(read(name), name);
  EXPECT_EQ(::access((folder_.path().toStdString() + "/caf\xe9").c_str(), F_OK), 0);
  EXPECT_FALSE(isSameFile(path("caf\xe9"), path("caf\xe8")));
  EXPECT_FALSE(fileExists(path("caf?")));
  EXPECT_FALSE(File::readAll(path("café") + QChar(u'\0') + u'x', 9));
}

TEST_F(FileTest, OverwritingKeepsOwnerModeAndAttributes) {
  const mode_t mask = ::umask(027);
  ASSERT_TRUE(write("new", "1"));
  ::umask(mask);
  EXPECT_EQ(facts("new").st_mode & 07777, 0640u);
  const char* const name = "user.note";
  const bool hasAttributes = ::setxattr(nativePath("new").c_str(), name, "x", 1, 0) == 0;
  const bool isRoot = ::geteuid() == 0;
  if (isRoot) {
    ASSERT_EQ(::chown(nativePath("new").c_str(), 65534, 12), 0);
  }
  ASSERT_EQ(::chmod(nativePath("new").c_str(), 0606), 0);
  ASSERT_EQ(::symlink("new", nativePath("link").c_str()), 0);
  ASSERT_EQ(::link(nativePath("new").c_str(), nativePath("hard").c_str()), 0);

  ASSERT_TRUE(write("link", "2")) << qPrintable(error_);
  EXPECT_EQ(read("new"), "2");
  EXPECT_EQ(read("hard"), "1");
  EXPECT_TRUE(S_ISLNK(facts("link").st_mode));
  EXPECT_EQ(facts("new").st_mode & 07777, 0606u);
  if (isRoot) {
    EXPECT_EQ(facts("new").st_uid, 65534u);
    EXPECT_EQ(facts("new").st_gid, 12u);
  }
  char value = 0;
  if (hasAttributes) {
    EXPECT_EQ(::getxattr(nativePath("new").c_str(), name, &value, 1), 1);
  }
  ASSERT_EQ(::symlink("later", nativePath("ahead").c_str()), 0);
  ASSERT_TRUE(write("ahead", "3"));
  EXPECT_EQ(read("later"), "3");
}

TEST_F(FileTest, ReportsSystemErrors) {
  ASSERT_TRUE(QDir(folder_.path()).mkdir(QStringLiteral("folder")));
  ASSERT_EQ(::symlink("nowhere", nativePath("broken").c_str()), 0);
  ASSERT_EQ(::symlink("circle", nativePath("circle").c_str()), 0);
  const struct {
    const char* name;
    const char16_t *reading, *writing;
  } cases[] = {
      {"folder", u"it is a folder", u"there is a folder of that name"},
      {"no/file", u"there is no such file", u"No such file or directory"},
      {"broken", u"it is a link to nowhere, which does not exist", nullptr},
      {"circle", u"Too many levels of symbolic links", u"Too many levels of symbolic links"},
      {"../../../../../../../../dev/full", nullptr, u"No space left on device"},
  };
  for (const auto& [name, reading, writing] : cases) {
    if (reading) {
      EXPECT_TRUE(read(name).isNull()) << name;
      EXPECT_EQ(error_, QStringLiteral("cannot read %1: %2").arg(path(name), reading));
    }
    if (writing) {
      EXPECT_FALSE(write(name, "x")) << name;
      EXPECT_EQ(error_, QStringLiteral("cannot write %1: %2").arg(path(name), writing));
    }
  }
  const qsizetype before = fileCount();
  rlimit old{};
  getrlimit(RLIMIT_FSIZE, &old);
  const rlimit little{5000, old.rlim_max};
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &little);
  EXPECT_FALSE(write("large", QByteArray(9000, 'x')));
  setrlimit(RLIMIT_FSIZE, &old);
  std::signal(SIGXFSZ, handler);
  EXPECT_TRUE(error_.endsWith(u": File too large")) << qPrintable(error_);
  EXPECT_EQ(fileCount(), before);
}

TEST_F(FileTest, LockBlocksOthers) {
  ASSERT_TRUE(write("a", "1"));
  EXPECT_TRUE(FileLock::take(path("none"), 0ms));
  auto lock = FileLock::take(path("a"), 0ms);
  ASSERT_TRUE(lock);
  EXPECT_TRUE(FileLock::take(path("none"), 0ms));
  const auto refused = FileLock::take(path("a"), 30ms);
  ASSERT_FALSE(refused);
  EXPECT_EQ(messageOf(refused.error()), QStringLiteral("another program is changing ") + path("a"));
  Result<std::unique_ptr<FileLock>> next;
  std::thread waiter([&] { next = FileLock::take(path("a"), 10min); });
  ASSERT_TRUE(write("a", "2"));
  lock->reset();
  waiter.join();
  ASSERT_TRUE(next);
  EXPECT_FALSE(FileLock::take(path("a"), 0ms)) << "the new file is locked, not the old one";
}

}  // namespace
}  // namespace kelvar

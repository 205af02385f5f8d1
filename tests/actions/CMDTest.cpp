#include "actions/CMD.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "actions/KVBashAction.h"
#include "platform/LogCapture.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

class CMDTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(dir_.isValid() && other_.isValid()); }

  void write(const QTemporaryDir& dir, const QString& name, const QByteArray& text,
             bool executable = true) {
    QFile file(dir.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    const auto mode = QFile::ReadOwner | QFile::WriteOwner;
    file.setPermissions(executable ? mode | QFile::ExeOwner : mode);
  }

  CMD command() const {
    CMD cmd;
    cmd.setCd(dir_.path());
    return cmd;
  }

  QTemporaryDir dir_;
  QTemporaryDir other_;
};

TEST_F(CMDTest, RunsProgramInItsDirectory) {
  write(dir_, QStringLiteral("a file"), "");
  write(dir_, QStringLiteral("ls"), "#!/bin/sh\necho the wrong one\n");
  EXPECT_EQ(command().exec(QStringLiteral("ls -1")), QStringLiteral("a file\nls\n"));
  EXPECT_TRUE(command().exec(QStringLiteral("ls -la")).contains(QStringLiteral(" a file\n")));
  EXPECT_EQ(CMD().cd(), QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).path());
  EXPECT_EQ(CMD().exports(), QStringLiteral("/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin"));
}

TEST_F(CMDTest, SplitsWordsAtSingleSpaces) {
  write(dir_, QStringLiteral("words"), "#!/bin/sh\nprintf '<%s>' \"$@\"\n");
  const std::pair<const char16_t*, const char16_t*> cases[] = {
      {u"words", u"<>"},  // What printf makes of no argument.
      {u"words a", u"<a>"},
      {u"words a  b", u"<a><><b>"},
      {u"words ", u"<>"},
      {u"words 'a b' | \"$HOME\" ; *", u"<'a><b'><|><\"$HOME\"><;><*>"},
      {u"words \u00e4\u20ac", u"<\u00e4\u20ac>"}};
  for (const auto& [line, output] : cases) {
    EXPECT_EQ(command().exec(QString::fromUtf16(line)), QString::fromUtf16(output));
  }
}

TEST_F(CMDTest, MergesBothStreamsInOrder) {
  write(dir_, QStringLiteral("both"),
        "#!/bin/sh\necho 1\necho 2 >&2\necho 3\nprintf %s \"$PATH\"\nexit 7\n");
  EXPECT_EQ(command().exec(QStringLiteral("both")),
            QStringLiteral("1\n2\n3\n") + qEnvironmentVariable("PATH"));
}

TEST_F(CMDTest, FirstFileOfThatNameIsTheProgram) {
  write(dir_, QStringLiteral("tool"), "#!/bin/sh\necho cd\n");
  write(other_, QStringLiteral("tool"), "#!/bin/sh\necho exports\n");
  CMD cmd = command();
  EXPECT_EQ(cmd.exec(QStringLiteral("tool")), QStringLiteral("cd\n"));
  cmd.setExports(QStringLiteral("/nowhere:") + other_.path());
  EXPECT_EQ(cmd.exec(QStringLiteral("tool")), QStringLiteral("exports\n"));
  cmd.setExports(QString());
  EXPECT_EQ(cmd.exec(QStringLiteral("tool")), QStringLiteral("cd\n"));
  // The search does not check whether the file is executable.
  write(other_, QStringLiteral("tool"), "text", false);
  cmd.setExports(other_.path());
  EXPECT_FALSE(cmd.run(QStringLiteral("tool")));
  EXPECT_TRUE(cmd.exec(QStringLiteral("tool")).isNull());
  // `cd` is relative to the caller's working directory, not to the program's.
  cmd.setExports(QStringLiteral("/nowhere"));
  cmd.setCd(QDir::current().relativeFilePath(dir_.path()));
  EXPECT_EQ(cmd.exec(QStringLiteral("tool")), QStringLiteral("cd\n"));
}

TEST_F(CMDTest, ReportsWhatWasNotLaunched) {
  const LogCapture log;
  for (const char* line : {"no-such-program a", "", " ls", "/bin/ls"}) {
    EXPECT_TRUE(command().exec(QLatin1String(line)).isNull()) << line;
  }
  EXPECT_EQ(log.lines().size(), 4);
  EXPECT_TRUE(log.lines().contains(QStringLiteral("CMD: there is no program \"no-such-program\"")));
  CMD nowhere;
  nowhere.setCd(QStringLiteral("/nowhere"));
  const Result<QString> output = nowhere.run(QStringLiteral("ls"));
  ASSERT_FALSE(output);
  EXPECT_NE(output.error().message.find("/nowhere"), std::string::npos) << output.error().message;
}

TEST_F(CMDTest, OutputIsUtf8) {
  write(dir_, QStringLiteral("latin1"), "#!/bin/sh\nprintf '\\344'\n");
  const Result<QString> output = command().run(QStringLiteral("latin1"));
  ASSERT_FALSE(output);
  EXPECT_EQ(output.error().kind, Error::Kind::Damaged) << "it was launched";
  const QString nothing = command().exec(QStringLiteral("true"));
  EXPECT_TRUE(nothing.isEmpty() && !nothing.isNull());
}

TEST_F(CMDTest, BashActionsLookForHostOutput) {
  EXPECT_EQ(KVBashAction::nothing()->command(), QStringLiteral("echo please restart manually"));
  EXPECT_FALSE(KVBashAction::nothing()->exec());
  EXPECT_EQ(KVBashAction::restart()->command(),
            QStringLiteral("killall Sketch ; echo 'COScript.app(\"Sketch\")' | coscript"));
  const std::pair<const char*, bool> cases[] = {{"echo <NSApplication: 0x1>", true},
                                                {"ls NSApplication:", true},  // Complains, fails.
                                                {"echo NSApplication", false},
                                                {"no-such-program NSApplication:", false}};
  for (const auto& [line, succeeds] : cases) {
    EXPECT_EQ(KVBashAction::bash(QLatin1String(line))->exec(), succeeds) << line;
  }
}

TEST_F(CMDTest, IsCallableBySelector) {
  const ClassInfo* const cmd = ClassInfo::find(QStringLiteral("CMD"));
  ASSERT_TRUE(cmd);
  const auto runner = cmd->create(QStringLiteral("init"));
  EXPECT_TRUE(runner->setValueForKey(dir_.path(), QStringLiteral("cd")));
  EXPECT_EQ(cmd->call(*runner, QStringLiteral("exec:"), {QStringLiteral("pwd")}),
            QVariant(QDir(dir_.path()).canonicalPath() + u'\n'));

  const ClassInfo* const bash = ClassInfo::find(QStringLiteral("KVBashAction"));
  ASSERT_TRUE(bash);
  const auto action = bash->callClass(QStringLiteral("nothing"))->value<ObjectRef>();
  EXPECT_EQ(bash->call(*action, QStringLiteral("exec")), QVariant(false));
}

}  // namespace
}  // namespace kelvar

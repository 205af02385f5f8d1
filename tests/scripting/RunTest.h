#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace kelvar {

/// Runs `kelvar run`.
class RunTest : public testing::Test {
 protected:
  RunTest() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("KELVAR_DEFAULTS"),
                       dir_.filePath(QStringLiteral("settings")));
    environment.insert(QStringLiteral("DO_NOT_TRACK"), QStringLiteral("1"));
    environment.remove(QStringLiteral("KELVAR_API_SERVER"));
    program_.setProcessEnvironment(environment);
    program_.setWorkingDirectory(dir_.path());
  }

  void write(const QString& name, const char* text) const {
    const QString path = dir_.filePath(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }

  void start(const QString& line) {
    program_.start(QStringLiteral(KELVAR_PROGRAM),
                   QStringList(QStringLiteral("run")) + line.split(u' '));
    ASSERT_TRUE(program_.waitForStarted());
  }

  /// What it prints; for a failure followed by its exit status and its error message.
  std::string run(const QString& line) {
    start(line);
    return finish();
  }
  std::string finish() {
    if (!program_.waitForFinished(-1)) return "did not end";
    const QByteArray printed = program_.readAllStandardOutput();
    if (program_.exitCode() == 0) return printed.toStdString();
    return (printed + QByteArray::number(program_.exitCode()) + ": " +
            program_.readAllStandardError())
        .toStdString();
  }

  QTemporaryDir dir_;
  QProcess program_;
};

}  // namespace kelvar

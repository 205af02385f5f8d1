#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

namespace kelvar {

/// The built program with its own settings and a server that the test starts.
class ProgramOnServer : public testing::Test {
 protected:
  explicit ProgramOnServer(const char* command) : command_(QLatin1String(command)) {}

  /// Runs the command and returns its standard output.
  QByteArray run(const QString& server, const QStringList& options = {}) {
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("KELVAR_DEFAULTS"), path_);
    environment.insert(QStringLiteral("KELVAR_API_SERVER"), server);
    for (const char* proxy : {"http_proxy", "https_proxy", "all_proxy"}) {
      environment.remove(QLatin1String(proxy));
    }
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(KELVAR_PROGRAM), QStringList(command_) + options);
    program.waitForFinished(-1);
    status_ = program.exitCode();
    error_ = program.readAllStandardError();
    return program.readAllStandardOutput();
  }

  QString command_;
  int count_ = 1;
  char name_[5] = "test";
  char* arguments_[2] = {name_, nullptr};
  QCoreApplication application_{count_, arguments_};
  QTemporaryDir dir_;
  QString path_ = dir_.filePath(QStringLiteral("settings.sqlite"));
  int status_ = -1;
  QByteArray error_;
};

}  // namespace kelvar

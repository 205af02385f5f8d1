#include "scripting/host/ProgramFunctions.h"

#include <QProcess>
#include <memory>
#include <vector>

#include "platform/Permissions.h"
#include "platform/files/FileName.h"
#include "runtime/raise.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

std::vector<std::unique_ptr<QProcess>>& programs() {
  static std::vector<std::unique_ptr<QProcess>> kPrograms;
  return kPrograms;
}

QProcess& program(int number) { return *programs().at(size_t(number)); }

QProcess::ProcessChannelMode channelMode(const QVariantMap& options) {
  const bool pipesOutput = options[u"pipesOutput"_s].toBool();
  if (pipesOutput && options[u"mergesErrors"_s].toBool()) return QProcess::MergedChannels;
  const bool pipesErrors = options[u"pipesErrors"_s].toBool();
  return pipesOutput   ? pipesErrors ? QProcess::SeparateChannels : QProcess::ForwardedErrorChannel
         : pipesErrors ? QProcess::ForwardedOutputChannel
                       : QProcess::ForwardedChannels;
}

QProcessEnvironment environmentFrom(const QVariantMap& variables) {
  QProcessEnvironment environment;
  for (auto i = variables.begin(); i != variables.end(); ++i) {
    environment.insert(i.key(), i.value().toString());
  }
  return environment;
}

/// The options that are not there have their usual values: the script's folder, environment and
/// channels.
int launch(const QString& path, const QStringList& arguments, const QVariantMap& options) {
  orRaise(Permissions::check(Permissions::Kind::Run, path));
  auto process = std::make_unique<QProcess>();
  process->setProgram(path);
  process->setArguments(arguments);
  process->setWorkingDirectory(options[u"folder"_s].toString());
  if (options.contains(u"environment"_s)) {
    process->setProcessEnvironment(environmentFrom(options[u"environment"_s].toMap()));
  }
  process->setProcessChannelMode(channelMode(options));
  const bool pipesInput = options[u"pipesInput"_s].toBool();
  process->setInputChannelMode(pipesInput ? QProcess::ManagedInputChannel
                                          : QProcess::ForwardedInputChannel);
  process->start();
  if (!process->waitForStarted(-1)) {
    raise(u"cannot launch %1: %2"_s.arg(readableFileName(path), process->errorString()));
  }
  programs().push_back(std::move(process));
  return int(programs().size()) - 1;
}

void wait(int number) { program(number).waitForFinished(-1); }

/// Looks for a moment, as nothing else notices while a script runs.
bool isRunning(int number) {
  constexpr int kMoment = 5;
  program(number).waitForFinished(kMoment);
  return program(number).state() != QProcess::NotRunning;
}

QByteArray read(QProcess& process, bool isErrors) {
  const QByteArray bytes =
      isErrors ? process.readAllStandardError() : process.readAllStandardOutput();
  return bytes.isNull() ? QByteArray("") : bytes;
}

QByteArray readToEnd(int number, bool isErrors) {
  wait(number);
  return read(program(number), isErrors);
}

/// What there is, once there is something; empty at the end.
QByteArray readSome(int number, bool isErrors) {
  QProcess& process = program(number);
  process.setReadChannel(isErrors ? QProcess::StandardError : QProcess::StandardOutput);
  if (process.bytesAvailable() == 0) process.waitForReadyRead(-1);
  return read(process, isErrors);
}

void write(int number, const QByteArray& bytes) {
  program(number).write(bytes);
  program(number).waitForBytesWritten(-1);
}

void closeInput(int number) { program(number).closeWriteChannel(); }

QVariantMap state(int number) {
  const QProcess& process = program(number);
  return {{u"status"_s, process.exitCode()},
          {u"isSignal"_s, process.exitStatus() == QProcess::CrashExit},
          {u"identifier"_s, process.processId()}};
}

void end(int number) { program(number).terminate(); }

}  // namespace

const ClassInfo& ProgramFunctions::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<ProgramFunctions>("")
          .classOperation("launchProgram", launch, "Starts a program; its number.")
          .classOperation("waitForProgram", wait, "Waits until it has ended.")
          .classOperation("isProgramRunning", isRunning, "Whether it has not ended yet.")
          .classOperation("readProgram", readToEnd, "All that it still writes.")
          .classOperation("readSomeOfProgram", readSome, "What it has written.")
          .classOperation("writeToProgram", write, "Gives it input.")
          .classOperation("closeProgramInput", closeInput, "Ends its input.")
          .classOperation("stateOfProgram", state, "How it ended, and its identifier.")
          .classOperation("endProgram", end, "Asks it to end.");
  return kClass;
}

}  // namespace kelvar

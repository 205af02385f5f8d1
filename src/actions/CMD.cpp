#include "actions/CMD.h"

#include <QFileInfo>
#include <QStringDecoder>

#include "platform/ChildProcess.h"
#include "platform/Log.h"
#include "platform/QtError.h"
#include "platform/files/FileName.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&CMD::staticClassInfo);

Result<QString> text(const QByteArray& bytes) {
  using Flag = QStringDecoder::Flag;
  QStringDecoder decoder(QStringDecoder::Utf8, Flag::ConvertInitialBom | Flag::Stateless);
  const QString decoded = decoder(bytes);
  if (decoder.hasError()) {
    return failure(Error::Kind::Damaged, QStringLiteral("the program's output is not UTF-8"));
  }
  return decoded.isNull() ? QStringLiteral("") : decoded;
}

}  // namespace

const ClassInfo& CMD::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<CMD>("CMD")
          .initializer(
              "init", [] { return std::make_shared<CMD>(); },
              "Creates a runner that works in the host application's directory.")
          .operation(
              "exec:", [](CMD& cmd, const QString& line) { return cmd.exec(line); },
              "Runs a command line without a shell, waits, and returns everything that it printed; "
              "nil if it could not run.")
          .property("cd", &CMD::cd, &CMD::setCd, "The directory to run programs in.")
          .property("exports", &CMD::exports, &CMD::setExports,
                    "The directories to search for programs, separated by colons.");
  return kClass;
}

Result<QString> CMD::run(const QString& commandLine) const {
  QStringList words = commandLine.split(u' ');
  const QString path = launchPath(words.first());
  if (path.isNull()) {
    return failure(Error::Kind::NotFound,
                   QStringLiteral("there is no program \"%1\"").arg(words.first()));
  }
  words.first() = path;
  return ChildProcess::run(words, cd_).and_then(text);
}

QString CMD::exec(const QString& commandLine) const {
  const Result<QString> output = run(commandLine);
  if (!output) logLine(u"CMD: %@", {messageOf(output.error())});
  return output.value_or(QString());
}

QString CMD::launchPath(const QString& program) const {
  QStringList directories = exports_.split(u':');
  directories.append(cd_);
  for (const QString& directory : directories) {
    // A program that begins with a slash is looked up below the directory as well.
    const QString file = directory.isEmpty() ? program : directory + u'/' + program;
    if (fileExists(file)) return absoluteFileName(file);
  }
  return {};
}

QString CMD::hostDirectory() {
  return QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).path();
}

}  // namespace kelvar

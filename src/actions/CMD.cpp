#include "actions/CMD.h"

#include <QFileInfo>
#include <QStringDecoder>

#include "platform/ChildProcess.h"
#include "platform/FileName.h"
#include "platform/Log.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&CMD::theClass);

/// Null when the bytes are not UTF-8.
QString text(const QByteArray& bytes) {
  using Flag = QStringDecoder::Flag;
  QStringDecoder decoder(QStringDecoder::Utf8, Flag::ConvertInitialBom | Flag::Stateless);
  const QString decoded = decoder(bytes);
  if (decoder.hasError()) return {};
  return decoded.isNull() ? QStringLiteral("") : decoded;
}

}  // namespace

const ClassInfo& CMD::theClass() {
  static const ClassInfo kClass =
      Description<CMD>("CMD")
          .initialiser("init", [] { return std::make_shared<CMD>(); })
          .operation("exec:", [](CMD& cmd, const QString& line) { return cmd.exec(line); })
          .property("cd", &CMD::cd, &CMD::setCd)
          .property("exports", &CMD::exports, &CMD::setExports);
  return kClass;
}

QString CMD::exec(const QString& commandLine, QString* error) const {
  QStringList words = commandLine.split(u' ');
  const QString path = launchPath(words.first());
  QString problem = QStringLiteral("there is no program \"%1\"").arg(words.first());
  if (!path.isNull()) {
    words.first() = path;
    const auto output = ChildProcess::run(words, cd_, &problem);
    if (output) return text(*output);
  }
  logLine(u"CMD: %@", {problem});
  if (error) *error = problem;
  return {};
}

QString CMD::launchPath(const QString& program) const {
  QStringList directories = exports_.split(u':');
  directories.append(cd_);
  for (const QString& directory : directories) {
    // Also a program that begins with a slash is looked for below the directory.
    const QString file = directory.isEmpty() ? program : directory + u'/' + program;
    if (fileExists(file)) return absoluteFileName(file);
  }
  return {};
}

QString CMD::hostDirectory() {
  return QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).path();
}

}  // namespace kelvar

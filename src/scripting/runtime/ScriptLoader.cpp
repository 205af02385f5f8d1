#include "scripting/runtime/ScriptLoader.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringList>
#include <filesystem>
#include <system_error>

#include "platform/Permissions.h"
#include "platform/QtError.h"
#include "platform/files/File.h"
#include "platform/files/FileName.h"
#include "scripting/dialect/ScriptPreprocessor.h"
#include "scripting/runtime/fileIgnoringCase.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

/// Maximum size of a script in bytes.
constexpr qsizetype kMaxScript = qsizetype{16} << 20;

/// Calls `evaluate` with the context, each chunk, the file and the chunk's first line.
template <class Evaluate>
void forEachChunk(JSContextRef context, const QStringList& chunks, const QString& file,
                  Evaluate evaluate) {
  // Comments may precede it.
  static const QRegularExpression kStrict(
      uR"(^(?:\s|//[^\n]*|/\*[\s\S]*?\*/)*+(["'])use strict\1)"_s);
  const bool isStrict = kStrict.match(chunks.first()).hasMatch();
  int line = 1;
  for (const QString& chunk : chunks) {
    // The engine does not record the place of an exception in a script's very first expression, so
    // a semicolon precedes it; but nothing may precede "use strict" and #!.
    const QString whole = isStrict && line > 1                 ? u"'use strict';"_s + chunk
                          : isStrict || chunk.startsWith(u'#') ? chunk
                                                               : u';' + chunk;
    JSValueRef exception = nullptr;
    evaluate(context, EngineString(whole), EngineString(file), line, &exception);
    if (exception) throw ThrownValue{exception};
    line += int(chunk.count(u'\n'));
  }
}

}  // namespace

ScriptLoader::ScriptLoader(const EngineContext& context, ErrorLocator& locator)
    : context_(context), locator_(locator) {
  const JSObjectRef import = context_.function([this](const EngineContext::Call& call) {
    this->import(call.arguments.empty() ? QString() : context_.text(call.arguments[0]));
    return context_.undefined();
  });
  context_.set(context_.global(), QString::fromLatin1(kImportFunction), import);
}

void ScriptLoader::evaluate(const QString& script, const QString& file) {
  locator_.addSource(file, script);
  const QStringList chunks = preprocess(script);
  // Finds a syntax error in a later chunk before the first one runs.
  if (chunks.size() > 1) forEachChunk(context_, chunks, file, JSCheckScriptSyntax);
  forEachChunk(context_, chunks, file,
               [](JSContextRef context, JSStringRef chunk, JSStringRef url, int line,
                  JSValueRef* exception) {
                 JSEvaluateScript(context, chunk, nullptr, url, line, exception);
               });
}

void ScriptLoader::import(const QString& path) {
  const QString importer = locator_.here().file;
  const QString folder = importer.isEmpty() ? QString() : QFileInfo(importer).path();
  const QString file = folder.isEmpty() ? path : QDir::cleanPath(fileIgnoringCase(folder, path));
  std::error_code isMissing;
  const auto whole = std::filesystem::canonical(filePath(file), isMissing);
  const QString canonical = fileNameFromBytes(whole.native());
  if (!canonical.isEmpty() && imported_.contains(canonical)) return;
  imported_.insert(canonical);
  evaluate(read(file), file);
}

QString ScriptLoader::read(const QString& file) {
  const Result<QByteArray> bytes = Permissions::check(Permissions::Kind::Read, file).and_then([&] {
    return File::readAll(file, kMaxScript);
  });
  if (!bytes) throw NativeError(messageOf(bytes.error()));
  return QString::fromUtf8(*bytes);
}

}  // namespace kelvar

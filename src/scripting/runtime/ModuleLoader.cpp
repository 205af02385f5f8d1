#include "scripting/runtime/ModuleLoader.h"

#include <QDir>
#include <QFileInfo>
#include <filesystem>
#include <system_error>

#include "platform/Permissions.h"
#include "platform/QtError.h"
#include "platform/files/FileName.h"
#include "scripting/dialect/ScriptPreprocessor.h"
#include "scripting/runtime/ScriptLoader.h"
#include "scripting/runtime/fileIgnoringCase.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

constexpr auto kHead = u"(function (exports, require, module, __filename, __dirname) {";

QString canonicalName(const QString& file) {
  std::error_code isMissing;
  return fileNameFromBytes(std::filesystem::canonical(filePath(file), isMissing).native());
}

}  // namespace

ModuleLoader::ModuleLoader(const EngineContext& context, ErrorLocator& locator)
    : context_(context), locator_(locator) {
  using Call = EngineContext::Call;
  const JSObjectRef native = context_.prelude("native");
  const auto define = [&](const QString& name, EngineContext::Function function) {
    context_.set(native, name, context_.function(std::move(function)));
  };
  const auto text = [this](const Call& call, size_t i) { return context_.text(call.arguments[i]); };
  define(u"callersFolder"_s, [this](const Call&) { return context_.string(callersFolder()); });
  define(u"findModule"_s,
         [this, text](const Call& call) { return find(text(call, 0), text(call, 1)); });
  define(u"readScript"_s, [this, text](const Call& call) {
    return context_.string(ScriptLoader::read(text(call, 0)));
  });
  define(u"compileModule"_s,
         [this, text](const Call& call) { return compile(text(call, 0), text(call, 1)); });
}

QString ModuleLoader::callersFolder() const {
  const QString file = locator_.here().file;
  return file.isEmpty() ? u"."_s : QFileInfo(file).path();
}

JSValueRef ModuleLoader::find(const QString& folder, const QString& name) const {
  const Result<void> may =
      Permissions::check(Permissions::Kind::Read, QDir::cleanPath(QDir(folder).filePath(name)));
  if (!may) throw NativeError(messageOf(may.error()));
  for (const QString& rest : {u""_s, u".js"_s, u".json"_s, u"/index.js"_s, u"/index.json"_s}) {
    const QString file = QDir::cleanPath(fileIgnoringCase(folder, name + rest));
    if (!isFile(file)) continue;
    const JSObjectRef found = JSObjectMake(context_, nullptr, nullptr);
    context_.set(found, u"path"_s, context_.string(file));
    context_.set(found, u"absolute"_s, context_.string(absoluteFileName(file)));
    context_.set(found, u"canonical"_s, context_.string(canonicalName(file)));
    return found;
  }
  return context_.null();
}

JSValueRef ModuleLoader::compile(const QString& file, const QString& text) const {
  locator_.addSource(file, text);
  const QString body = text.startsWith(u"#!") ? u"//"_s + text : text;
  const QString script = preprocess(QString::fromUtf16(kHead) + body + u"\n})"_s).join(u"");
  JSValueRef exception = nullptr;
  const JSValueRef made =
      JSEvaluateScript(context_, EngineString(script), nullptr, EngineString(file), 1, &exception);
  if (exception) throw ThrownValue{exception};
  return made;
}

}  // namespace kelvar

#include "scripting/runtime/ErrorLocator.h"

#include <QRegularExpression>
#include <QStringList>
#include <optional>

#include "scripting/dialect/ScriptPreprocessor.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

/// The innermost frame of the script in the engine's call stack. Our own frames have no file.
std::optional<ScriptError> frameOf(const QString& stack) {
  static const QRegularExpression kFrame(u"@(.+):([0-9]+):[0-9]+$"_s,
                                         QRegularExpression::MultilineOption);
  const QRegularExpressionMatch found = kFrame.match(stack);
  if (!found.hasMatch()) return std::nullopt;
  return ScriptError{{}, found.captured(1), found.captured(2).toInt(), {}};
}

}  // namespace

ErrorLocator::ErrorLocator(const EngineContext& context)
    : context_(context), lastThrown_(JSObjectMake(context, nullptr, nullptr)) {
  JSValueProtect(context_, lastThrown_);
  const JSObjectRef record = context_.function([this](const EngineContext::Call& call) {
    context_.set(lastThrown_, u"value"_s, call.arguments[0]);
    context_.set(lastThrown_, u"where"_s, context_.error({}));
    return context_.undefined();
  });
  context_.defineAccessor(context_.global(), QString::fromLatin1(kThrownVariable), nullptr, record);
}

ScriptError ErrorLocator::errorFor(JSValueRef exception) const {
  QString message;
  try {
    message = context_.described(context_.callPrelude("caught", {exception}));
    const JSObjectRef origin = originOf(exception);
    ScriptError error = origin ? placeOf(origin) : ScriptError();
    error.message = message;
    return error;
  } catch (const ThrownValue&) {
    // The exception is an object whose members throw.
    return {message, {}, 0, {}};
  }
}

/// The error itself, or the one that was made when the value was thrown; null if there is none.
JSObjectRef ErrorLocator::originOf(JSValueRef exception) const {
  const JSObjectRef error = context_.object(exception);
  if (error && !JSValueIsUndefined(context_, context_.get(error, u"line"_s))) return error;
  const JSValueRef last = context_.get(lastThrown_, u"value"_s);
  if (!JSValueIsStrictEqual(context_, last, exception)) return nullptr;
  return context_.object(context_.get(lastThrown_, u"where"_s));
}

ScriptError ErrorLocator::placeOf(JSObjectRef error) const {
  ScriptError place;
  const JSValueRef line = context_.get(error, u"line"_s);
  if (JSValueIsNumber(context_, line)) {
    place.line = int(JSValueToNumber(context_, line, nullptr));
  }
  const JSValueRef file = context_.get(error, u"sourceURL"_s);
  if (JSValueIsString(context_, file)) {
    place.file = context_.text(file);
  } else if (const auto frame = frameOf(context_.text(context_.get(error, u"stack"_s)))) {
    place = *frame;
  }
  place.text = lineOf(place.file, place.line);
  return place;
}

QString ErrorLocator::lineOf(const QString& file, int line) const {
  return line > 0 ? sources_.value(file).split(u'\n').value(line - 1).trimmed() : QString();
}

}  // namespace kelvar

#include "scripting/Reference.h"

#include <QRegularExpression>
#include <QSet>
#include <QStringList>
#include <functional>

#include "runtime/ClassInfo.h"
#include "runtime/DelegateInfo.h"
#include "scripting/Catalogue.h"
#include "scripting/PluginBundle.h"
#include "scripting/SelectorName.h"
#include "scripting/TypeName.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Kind = ClassInfo::Kind;

/// Not to be names of parameters in TypeScript.
bool isReserved(const QString& word) {
  static const QSet<QString> kWords{u"with"_s, u"in"_s, u"new"_s, u"for"_s, u"delete"_s};
  return kWords.contains(word);
}

/// A name for each argument: the last word of its part of the selector.
QStringList parameterNames(const QString& selector, size_t count) {
  static const QRegularExpression kLastWord(u"([A-Z][a-z]+|[A-Z]+|[a-z]+)[0-9]*$"_s);
  QStringList names;
  const QStringList parts = selector.split(u':');
  for (size_t i = 0; i < count; ++i) {
    const QString word = kLastWord.match(parts.value(qsizetype(i))).captured().toLower();
    const bool isTaken = word.isEmpty() || names.contains(word) || isReserved(word);
    names.append(isTaken ? u"argument%1"_s.arg(i + 1) : word);
  }
  return names;
}

QStringList typeNames(const std::vector<ValueType>& types) {
  QStringList names;
  for (const ValueType& type : types) names.append(scriptTypeName(type));
  return names;
}

template <class Operation>
QString row(const Operation& operation, const QString& gives, const QString& kind) {
  const QStringList takes = typeNames(operation.parameters);
  return u"| `%1` | `%2` | %3 | %4 | %5 |\n"_s.arg(
      operation.selector, scriptName(operation.selector),
      takes.isEmpty() ? u"–"_s : takes.join(u", "), gives, kind);
}

bool isAccessor(const ClassInfo& info, const ClassInfo::Operation& operation) {
  if (operation.kind != Kind::Operation) return false;
  for (const ClassInfo::Property& property : info.properties()) {
    const QString& key = property.key;
    if (operation.selector == key || operation.selector == ClassInfo::setterOf(key)) return true;
  }
  return false;
}

QString kindName(Kind kind) {
  return kind == Kind::Initialiser      ? u"initialiser"_s
         : kind == Kind::ClassOperation ? u"of the class"_s
                                        : u"of the object"_s;
}

QString markdownOf(const ClassInfo& info) {
  QString text = u"\n### %1\n\n"_s.arg(info.name());
  if (info.base()) text += u"Has all of `%1` too.\n\n"_s.arg(info.base()->name());
  if (!info.properties().empty()) {
    text += u"| Property | Type | |\n|---|---|---|\n"_s;
    for (const ClassInfo::Property& property : info.properties()) {
      text += u"| `%1` | %2 | %3 |\n"_s.arg(property.key, scriptTypeName(property.type),
                                            property.set ? u"read, set"_s : u"read"_s);
    }
    text += u'\n';
  }
  QString operations;
  for (const ClassInfo::Operation& operation : info.operations()) {
    if (isAccessor(info, operation)) continue;
    const bool makes = operation.kind == Kind::Initialiser;
    operations += row(operation, makes ? info.name() : scriptTypeName(operation.result),
                      kindName(operation.kind));
  }
  if (operations.isEmpty()) return text;
  return text + u"| Selector | In a script | Takes | Gives | |\n|---|---|---|---|---|\n"_s +
         operations;
}

/// Nil is taken wherever it does not stand for zero.
QString parameterTypeName(const ValueType& type) {
  const QString name = typeScriptName(type);
  static const QSet<QString> kValues{u"any"_s,     u"number"_s, u"boolean"_s,
                                     u"NSPoint"_s, u"NSSize"_s, u"NSRect"_s};
  return kValues.contains(name) ? name : name + u" | null"_s;
}

using TypeName = std::function<QString(const ValueType& type)>;

template <class Operation>
QString signature(const Operation& operation, const QString& name, const TypeName& takes,
                  const TypeName& gives) {
  const QStringList names = parameterNames(operation.selector, operation.parameters.size());
  QStringList parameters;
  for (size_t i = 0; i < operation.parameters.size(); ++i) {
    parameters.append(u"%1: %2"_s.arg(names[qsizetype(i)], takes(operation.parameters[i])));
  }
  return u"%1(%2): %3;\n"_s.arg(name, parameters.join(u", "), gives(operation.result));
}

/// By both its names.
template <class Operation>
QString member(const Operation& operation, const TypeName& takes, const TypeName& gives,
               const QString& mark = {}) {
  const QString name = scriptName(operation.selector);
  const QString shorter = shortScriptName(operation.selector);
  const auto line = [&](const QString& called) {
    return u"  "_s + signature(operation, called + mark, takes, gives);
  };
  return shorter == name ? line(name) : line(name) + line(shorter);
}

/// What can be set is assigned as a value, and read as an operation.
QString settable(const ClassInfo::Property& property) {
  return u"  get %1(): () => %2;\n  set %1(value: %3);\n"_s.arg(
      property.key, typeScriptName(property.type), parameterTypeName(property.type));
}

QString interfaceOf(const ClassInfo& info) {
  QString text = u"\ninterface %1%2 {\n"_s.arg(
      info.name(), info.base() ? u" extends %1"_s.arg(info.base()->name()) : QString());
  QSet<QString> settables;
  for (const ClassInfo::Property& property : info.properties()) {
    if (!property.set) continue;
    settables.insert(property.key);
    text += settable(property);
  }
  for (const ClassInfo::Operation& operation : info.operations()) {
    if (operation.kind != Kind::Operation || settables.contains(operation.selector)) continue;
    text += member(operation, parameterTypeName, typeScriptName);
  }
  return text + u"}\n"_s;
}

QString classOf(const ClassInfo& info) {
  const QString& name = info.name();
  QString initialisers = u"\ninterface %1Allocated {\n"_s.arg(name);
  QString ofClass = u"\ndeclare const %1: KelvarClass & {\n  alloc(): %1Allocated;\n"_s.arg(name);
  for (const ClassInfo::Operation& operation : info.operations()) {
    if (operation.kind == Kind::Initialiser) {
      initialisers += member(operation, parameterTypeName, [&](const ValueType&) { return name; });
      if (operation.selector == u"init") ofClass += u"  \"new\"(): %1;\n"_s.arg(name);
    } else if (operation.kind == Kind::ClassOperation) {
      ofClass += member(operation, parameterTypeName, typeScriptName);
    }
  }
  return initialisers + u"}\n"_s + ofClass + u"};\n"_s;
}

/// Classes of what the context holds, which scripts do not see by name.
QList<const ClassInfo*> classesOfContext() {
  return {&PluginCommand::theClass(), &PluginBundle::theClass()};
}

constexpr const char* kTypeScriptOfBridge =
    R"(// Kelvar's classes for scripts, made from their descriptions; do not edit. Needs TypeScript 5.1.
// What is said to give an object, a string or a list may give nil as well.

// Scripts run in no browser, whose Event is another one.
/// <reference no-default-lib="true" />
/// <reference lib="es2022" />

interface NSPoint { x: number; y: number; }
interface NSSize { width: number; height: number; }
interface NSRect { origin: NSPoint; size: NSSize; }
interface CGImage {}
interface Array<T> {
  count(): number;
  objectAtIndex_(index: number): T;
  objectAtIndex(index: number): T;
  firstObject(): T | null;
  lastObject(): T | null;
  objectEnumerator(): { nextObject(): T | null };
  each(): any;
  shuffle(): T[];
}
interface String {
  MD5String(): string;
  base64String(): string;
}
interface Uint8Array { base64String(): string; }

/** What each class answers. */
interface KelvarClass {
  name(): string;
  class(): KelvarClass;
  [Symbol.hasInstance](value: any): boolean;
}
/** What each object answers. */
interface NSObject {
  class(): KelvarClass;
  className(): string;
  isKindOfClass_(class_: KelvarClass): boolean;
  isKindOfClass(class_: KelvarClass): boolean;
  respondsToSelector_(selector: string): boolean;
  respondsToSelector(selector: string): boolean;
}

/** What a command's function is called with. */
interface ScriptContext {
  document: SketchDocument | null;
  selection: SketchLayer[];
  command: PluginCommand | null;
  plugin: PluginBundle | null;
  scriptPath: string;
  arguments: string[];
}

declare const nil: null;
declare const context: ScriptContext;
interface Console { log(...values: any[]): void; }
declare var console: Console;
declare function log(...values: any[]): void;
declare function print(...values: any[]): void;
declare function setTimeout(call: Function, milliseconds?: number, ...values: any[]): number;
declare function setInterval(call: Function, milliseconds?: number, ...values: any[]): number;
declare function clearTimeout(timer: number): void;
declare function clearInterval(timer: number): void;
)";

}  // namespace

QString Reference::markdown() {
  QString text =
      u"# Reference for scripts\n\nMade from the descriptions of the classes; do not edit.\nThe "
      u"last underscore of a name may be left out. "
      "[How to write a script](scripting.md).\n\n## Classes\n\nEvery class answers `alloc`, "
      "`class` "
      "and `name`, and `new` where it has `init`; every object answers `class`, `className`, "
      "`isKindOfClass:` and\n`respondsToSelector:`. Strings answer `MD5String` and `base64String`, "
      "bytes `base64String`,\nand lists `each` and `shuffle`.\n"_s;
  for (const ClassInfo* const each : Catalogue::classes()) text += markdownOf(*each);
  text += u"\n## Classes of the context\n"_s;
  for (const ClassInfo* const each : classesOfContext()) text += markdownOf(*each);
  text += u"\n## Delegates\n"_s;
  for (const DelegateInfo* const each : Catalogue::delegates()) {
    text +=
        u"\n### %1\n\n| Selector | In a script | Told | Answers | |\n|---|---|---|---|---|\n"_s.arg(
            each->name());
    for (const auto& operation : each->operations())
      text += row(operation, scriptTypeName(operation.result), u"optional"_s);
  }
  text +=
      u"\n## Functions\n\n| Function | In a script | Takes | Gives | |\n|---|---|---|---|---|\n"_s;
  for (const auto& operation : Catalogue::functions().operations())
    text += row(operation, scriptTypeName(operation.result), u""_s);
  text += u"\n## Constants\n\n"_s;
  for (const Catalogue::Constant& constant : Catalogue::constants()) {
    text += u"- `%1`\n"_s.arg(constant.name);
  }
  return text;
}

QString Reference::typeScript() {
  QString text = QString::fromUtf8(kTypeScriptOfBridge);
  for (const ClassInfo* const each : Catalogue::classes())
    text += interfaceOf(*each) + classOf(*each);
  for (const ClassInfo* const each : classesOfContext()) text += interfaceOf(*each);
  for (const DelegateInfo* const each : Catalogue::delegates()) {
    text += u"\ninterface %1 {\n"_s.arg(each->name());
    for (const auto& operation : each->operations()) {
      text += member(operation, typeScriptName, parameterTypeName, u"?"_s);
    }
    text += u"}\n"_s;
  }
  text += u'\n';
  for (const auto& operation : Catalogue::functions().operations()) {
    text += u"declare function "_s +
            signature(operation, operation.selector, parameterTypeName, typeScriptName);
  }
  for (const Catalogue::Constant& constant : Catalogue::constants()) {
    const bool isText = constant.value.typeId() == QMetaType::QString;
    text += u"declare const %1: %2;\n"_s.arg(constant.name, isText ? u"string"_s : u"number"_s);
  }
  return text;
}

}  // namespace kelvar

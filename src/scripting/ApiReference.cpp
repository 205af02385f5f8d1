#include "scripting/ApiReference.h"

#include <QRegularExpression>
#include <QSet>
#include <QStringList>
#include <functional>

#include "runtime/ClassInfo.h"
#include "runtime/DelegateInfo.h"
#include "scripting/ScriptApi.h"
#include "scripting/SelectorName.h"
#include "scripting/TypeName.h"
#include "scripting/plugin/PluginBundle.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Kind = ClassInfo::Kind;

/// Words that TypeScript does not accept as parameter names.
bool isReserved(const QString& word) {
  static const QSet<QString> kWords{
      u"break"_s,    u"case"_s,    u"catch"_s,  u"class"_s,      u"const"_s, u"continue"_s,
      u"debugger"_s, u"default"_s, u"delete"_s, u"do"_s,         u"else"_s,  u"enum"_s,
      u"export"_s,   u"extends"_s, u"false"_s,  u"finally"_s,    u"for"_s,   u"function"_s,
      u"if"_s,       u"import"_s,  u"in"_s,     u"instanceof"_s, u"new"_s,   u"null"_s,
      u"return"_s,   u"super"_s,   u"switch"_s, u"this"_s,       u"throw"_s, u"true"_s,
      u"try"_s,      u"typeof"_s,  u"var"_s,    u"void"_s,       u"while"_s, u"with"_s};
  return kWords.contains(word);
}

/// Names each argument after the last word of its part of the selector.
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

/// The first cells of a table row: the operation's names, arguments and result.
template <class Operation>
QString row(const Operation& operation, const QString& result) {
  const QStringList takes = typeNames(operation.parameters);
  return u"| `%1` | `%2` | %3 | %4 | "_s.arg(operation.selector, scriptName(operation.selector),
                                             takes.isEmpty() ? u"–"_s : takes.join(u", "), result);
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
  return kind == Kind::Initializer      ? u"initializer"_s
         : kind == Kind::ClassOperation ? u"class"_s
                                        : u"object"_s;
}

QString markdownOf(const ClassInfo& info) {
  QString text = u"\n### %1\n\n"_s.arg(info.name());
  if (info.base()) text += u"Inherits from `%1`.\n\n"_s.arg(info.base()->name());
  if (const ClassInfo::Protocol* const protocol = info.protocol()) {
    text += u"A script's own object with `%1` may stand for it.\n\n"_s.arg(
        protocol->required.join(u"`, `"_s));
  }
  if (!info.properties().empty()) {
    text += u"| Property | Type | Access | Description |\n|---|---|---|---|\n"_s;
    for (const ClassInfo::Property& property : info.properties()) {
      text += u"| `%1` | %2 | %3 | %4 |\n"_s.arg(property.key, scriptTypeName(property.type),
                                                 property.set ? u"read, set"_s : u"read"_s,
                                                 QString::fromUtf8(property.sentence));
    }
    text += u'\n';
  }
  QString operations;
  for (const ClassInfo::Operation& operation : info.operations()) {
    if (isAccessor(info, operation)) continue;
    const bool makes = operation.kind == Kind::Initializer;
    operations +=
        row(operation, makes ? info.name() : scriptTypeName(operation.result)) +
        u"%1 | %2 |\n"_s.arg(kindName(operation.kind), QString::fromUtf8(operation.sentence));
  }
  if (operations.isEmpty()) return text;
  return text +
         u"| Selector | In a script | Takes | Returns | Kind | Description |\n"
         "|---|---|---|---|---|---|\n"_s +
         operations;
}

constexpr const char* kAboutHostClasses = R"(# The host's classes

Generated from the descriptions of the classes; do not edit.
[How to write a script](scripting.md) · [Foundation](scripting-foundation.md) ·
[The reference, with a sentence for each selector](scripting-reference.md).

These classes of Sketch and of its platform are there for scripts, in addition to those on the page
about Foundation, with exactly these selectors. Setters are not listed: a property that is set as well is
marked with an asterisk. A class also has what it inherits. What is not listed does not exist: an
unknown class is a `ReferenceError`, and an unknown selector an exception that names the nearest one.
Neither the JavaScript API of newer versions (`require("sketch")`) nor the windows, menus and
inspectors of the Mac application are there.

| Class | Inherits from | Class selectors | Properties | Operations |
|---|---|---|---|---|
)";

/// The prefixes of the host's own classes and of its platform's.
bool isOfHost(const ClassInfo& info) {
  return info.name().startsWith(u"MS") || info.name().startsWith(u"NS") ||
         info.name().startsWith(u"CG");
}

QString rowOf(const ClassInfo& info) {
  QStringList makers, properties, operations;
  for (const ClassInfo::Property& property : info.properties()) {
    properties.append(u'`' + property.key + u'`' + (property.set ? u"*"_s : QString()));
  }
  for (const ClassInfo::Operation& operation : info.operations()) {
    if (isAccessor(info, operation)) continue;
    const bool isOperation = operation.kind == ClassInfo::Kind::Operation;
    (isOperation ? operations : makers).append(u'`' + operation.selector + u'`');
  }
  const QString base = info.base() ? u'`' + info.base()->name() + u'`' : QString();
  return u"| `%1` | %2 | %3 | %4 | %5 |\n"_s.arg(info.name(), base, makers.join(u", "),
                                                 properties.join(u", "), operations.join(u", "));
}

/// When a delegate's operation is called, and what its answer means.
QString sentencesOf(const DelegateInfo::Operation& operation) {
  return QString::fromUtf8(operation.when) + (*operation.answer ? u" "_s : QString()) +
         QString::fromUtf8(operation.answer);
}

QString markdownOf(const DelegateInfo& info) {
  QString text =
      u"\n### %1\n\n| Selector | In a script | Takes | Returns | Description |\n"
      "|---|---|---|---|---|\n"_s.arg(info.name());
  for (const DelegateInfo::Operation& operation : info.operations()) {
    text +=
        row(operation, scriptTypeName(operation.result)) + u"%1 |\n"_s.arg(sentencesOf(operation));
  }
  return text;
}

QString markdownOfFunctions() {
  QString text =
      u"\n## Functions\n\n| Function | In a script | Takes | Returns | Description |\n"
      "|---|---|---|---|---|\n"_s;
  for (const auto& operation : ScriptApi::functions().operations()) {
    text += row(operation, scriptTypeName(operation.result)) +
            u"%1 |\n"_s.arg(QString::fromUtf8(operation.sentence));
  }
  return text;
}

/// Everything but values, where nil is converted to zero, accepts nil.
QString parameterTypeName(const ValueType& type) {
  if (type.staticClassInfo && type.staticClassInfo().protocol()) {
    return u"%1 | %1Implementation | null"_s.arg(typeScriptName(type));
  }
  if (type.staticElementInfo && type.staticElementInfo().protocol()) {
    return u"(%1 | %1Implementation)[] | null"_s.arg(type.staticElementInfo().name());
  }
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

QString comment(const QString& sentences) { return u"  /** %1 */\n"_s.arg(sentences); }

/// The operation under its full name and the short one. `mark` follows the name.
template <class Operation>
QString member(const Operation& operation, const QString& sentences, const TypeName& takes,
               const TypeName& gives, const QString& mark = {}) {
  const QString name = scriptName(operation.selector);
  const QString shorter = shortScriptName(operation.selector);
  const auto line = [&](const QString& called) {
    return comment(sentences) + u"  "_s + signature(operation, called + mark, takes, gives);
  };
  return shorter == name ? line(name) : line(name) + line(shorter);
}

/// A property is assigned as a value but read as a method.
QString settable(const ClassInfo::Property& property) {
  return comment(QString::fromUtf8(property.sentence)) +
         u"  get %1(): () => %2;\n  set %1(value: %3);\n"_s.arg(
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
    text +=
        member(operation, QString::fromUtf8(operation.sentence), parameterTypeName, typeScriptName);
  }
  return text + u"}\n"_s;
}

/// What a script's own object may have to stand for an object of the class.
QString implementationOf(const ClassInfo& info) {
  if (!info.protocol()) return {};
  QString text = u"\ninterface %1Implementation {\n"_s.arg(info.name());
  for (const ClassInfo::Operation& operation : info.operations()) {
    if (operation.kind != Kind::Operation || isAccessor(info, operation)) continue;
    text += member(operation, QString::fromUtf8(operation.sentence), typeScriptName,
                   parameterTypeName, u"?"_s);
  }
  return text + u"}\n"_s;
}

QString classOf(const ClassInfo& info) {
  const QString& name = info.name();
  QString initializers = u"\ninterface %1Allocated {\n"_s.arg(name);
  QString ofClass = u"\ndeclare const %1: KelvarClass & {\n  alloc(): %1Allocated;\n"_s.arg(name);
  for (const ClassInfo::Operation& operation : info.operations()) {
    const QString sentence = QString::fromUtf8(operation.sentence);
    if (operation.kind == Kind::Initializer) {
      initializers +=
          member(operation, sentence, parameterTypeName, [&](const ValueType&) { return name; });
      if (operation.selector == u"init") {
        ofClass += comment(sentence) + u"  \"new\"(): %1;\n"_s.arg(name);
      }
    } else if (operation.kind == Kind::ClassOperation) {
      ofClass += member(operation, sentence, parameterTypeName, typeScriptName);
    }
  }
  return initializers + u"}\n"_s + ofClass + u"};\n"_s;
}

/// A function may stand for the only operation of a delegate.
QString typeOf(const DelegateInfo& info) {
  QString members;
  for (const auto& operation : info.operations()) {
    members += member(operation, sentencesOf(operation), typeScriptName, parameterTypeName, u"?"_s);
  }
  if (info.operations().size() != 1) {
    return u"\ninterface %1 {\n%2}\n"_s.arg(info.name(), members);
  }
  QStringList parameters;
  const DelegateInfo::Operation& only = info.operations().front();
  const QStringList names = parameterNames(only.selector, only.parameters.size());
  for (size_t i = 0; i < only.parameters.size(); ++i) {
    parameters.append(u"%1: %2"_s.arg(names[qsizetype(i)], typeScriptName(only.parameters[i])));
  }
  return u"\ntype %1 = {\n%2} | ((%3) => any);\n"_s.arg(info.name(), members,
                                                        parameters.join(u", "));
}

/// Classes of the context's objects, which scripts cannot reach by name.
QList<const ClassInfo*> classesOfContext() {
  return {&PluginCommand::staticClassInfo(), &PluginBundle::staticClassInfo()};
}

constexpr const char* kTypeScriptOfBridge =
    R"(// Kelvar's classes for scripts, generated from their descriptions; do not edit. Needs TypeScript 5.1.
// Methods that return an object, string or array may also return nil.

// Scripts do not run in a browser, whose Event is a different class.
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
  base64UrlEncodedString(): string;
}
interface Uint8Array {
  base64String(): string;
  base64UrlEncodedString(): string;
}
declare const Each: {
  alloc(): {
    init(): any;
    initWithArray_(array: any[]): any;
    initWithArray(array: any[]): any;
  };
  "new"(): any;
};

/** Methods of every class. */
interface KelvarClass {
  name(): string;
  class(): KelvarClass;
  [Symbol.hasInstance](value: any): boolean;
}
/** Methods of every object. */
interface NSObject {
  class(): KelvarClass;
  className(): string;
  isKindOfClass_(class_: KelvarClass): boolean;
  isKindOfClass(class_: KelvarClass): boolean;
  respondsToSelector_(selector: string): boolean;
  respondsToSelector(selector: string): boolean;
}

/** The argument of a command's function. */
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

QString ApiReference::markdown() {
  QString text =
      u"# Reference for scripts\n\nGenerated from the descriptions of the classes; do not edit.\n"
      "The last underscore of a name may be left out. [How to write a script](scripting.md).\n\n"
      "## Classes\n\nEvery class has `alloc`, `class` and `name`, and `new` if it has `init`. "
      "Every object has\n`class`, `className`, `isKindOfClass:` and `respondsToSelector:`. "
      "Strings have `MD5String` and\n`base64String`, bytes have `base64String`, and lists have "
      "`each` and `shuffle`.\n"_s;
  for (const ClassInfo* const each : ScriptApi::classes()) text += markdownOf(*each);
  text += u"\n## Classes of the context\n"_s;
  for (const ClassInfo* const each : classesOfContext()) text += markdownOf(*each);
  text +=
      u"\n## Delegates\n\nA delegate implements any of these operations. "
      "A function may stand for a delegate\nthat has only one.\n"_s;
  for (const DelegateInfo* const each : ScriptApi::delegates()) text += markdownOf(*each);
  text += markdownOfFunctions() + u"\n## Constants\n\n"_s;
  for (const ScriptApi::Constant& constant : ScriptApi::constants()) {
    text += u"- `%1`\n"_s.arg(constant.name);
  }
  return text;
}

QString ApiReference::hostClasses() {
  QString text = QString::fromUtf8(kAboutHostClasses);
  const QList<const ClassInfo*> classes = ScriptApi::classes();
  QSet<const ClassInfo*> listed;
  for (const ClassInfo* const each : classes) {
    if (!isOfHost(*each)) continue;
    for (const ClassInfo* info = each; info; info = info->base()) listed.insert(info);
  }
  for (const ClassInfo* const each : classes) {
    if (listed.contains(each)) text += rowOf(*each);
  }
  return text;
}

QString ApiReference::typeScript() {
  QString text = QString::fromUtf8(kTypeScriptOfBridge);
  for (const ClassInfo* const each : ScriptApi::classes())
    text += interfaceOf(*each) + implementationOf(*each) + classOf(*each);
  for (const ClassInfo* const each : classesOfContext()) text += interfaceOf(*each);
  for (const DelegateInfo* const each : ScriptApi::delegates()) text += typeOf(*each);
  text += u'\n';
  for (const auto& operation : ScriptApi::functions().operations()) {
    text += u"/** %1 */\ndeclare function "_s.arg(QString::fromUtf8(operation.sentence)) +
            signature(operation, operation.selector, parameterTypeName, typeScriptName);
  }
  for (const ScriptApi::Constant& constant : ScriptApi::constants()) {
    const bool isText = constant.value.typeId() == QMetaType::QString;
    text += u"declare const %1: %2;\n"_s.arg(constant.name, isText ? u"string"_s : u"number"_s);
  }
  return text;
}

}  // namespace kelvar

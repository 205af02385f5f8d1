#include "scripting/Reference.h"

#include <QStringList>

#include "runtime/ClassInfo.h"
#include "runtime/DelegateInfo.h"
#include "scripting/Catalogue.h"
#include "scripting/SelectorName.h"
#include "scripting/TypeName.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Kind = ClassInfo::Kind;

/// A name for each argument: the last word of its part of the selector.
QStringList parameterNames(const QString& selector, size_t count) {
  QStringList names;
  const QStringList parts = selector.split(u':');
  for (size_t i = 0; i < count; ++i) {
    const QString part = parts.value(qsizetype(i));
    qsizetype start = part.size();
    while (start > 0 && part[start - 1].isLower()) --start;
    const QString word = part.sliced(std::max<qsizetype>(0, start - 1)).toLower();
    const bool isTaken = word.isEmpty() || names.contains(word) || word == u"with" ||
                         word == u"in" || word == u"new" || word == u"bundle";
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
QString row(const Operation& operation, const QString& kind) {
  const QStringList takes = typeNames(operation.parameters);
  return u"| `%1` | `%2` | %3 | %4 | %5 |\n"_s.arg(
      operation.selector, scriptName(operation.selector),
      takes.isEmpty() ? u"–"_s : takes.join(u", "), scriptTypeName(operation.result), kind);
}

bool isSetter(const ClassInfo& info, const QString& selector) {
  for (const ClassInfo::Property& property : info.properties()) {
    const QString& key = property.key;
    if (selector == u"set%1%2:"_s.arg(key.first(1).toUpper(), key.sliced(1))) return true;
  }
  return false;
}

bool isAccessor(const ClassInfo& info, const ClassInfo::Operation& operation) {
  if (operation.kind != Kind::Operation) return false;
  for (const ClassInfo::Property& property : info.properties()) {
    if (operation.selector == property.key) return true;
  }
  return isSetter(info, operation.selector);
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
    if (!isAccessor(info, operation)) operations += row(operation, kindName(operation.kind));
  }
  if (operations.isEmpty()) return text;
  return text + u"| Selector | In a script | Takes | Gives | |\n|---|---|---|---|---|\n"_s +
         operations;
}

template <class Operation>
QString signature(const Operation& operation, const QString& name, const QString& result) {
  const QStringList names = parameterNames(operation.selector, operation.parameters.size());
  QStringList parameters;
  for (size_t i = 0; i < operation.parameters.size(); ++i) {
    parameters.append(
        u"%1: %2"_s.arg(names[qsizetype(i)], typeScriptName(operation.parameters[i])));
  }
  return u"%1(%2): %3;\n"_s.arg(name, parameters.join(u", "), result);
}

QString typeScriptOf(const ClassInfo& info) {
  const QString name = info.name();
  QString object = u"\ninterface %1%2 {\n"_s.arg(
      name, info.base() ? u" extends %1"_s.arg(info.base()->name()) : QString());
  QString initialisers = u"\ninterface %1Allocated {\n"_s.arg(name);
  QString ofClass = u"\ndeclare const %1: {\n  alloc(): %1Allocated;\n"_s.arg(name);
  for (const ClassInfo::Operation& operation : info.operations()) {
    const QString called = scriptName(operation.selector);
    if (operation.kind == Kind::Operation) {
      object += u"  "_s + signature(operation, called, typeScriptName(operation.result));
    } else if (operation.kind == Kind::Initialiser) {
      initialisers += u"  "_s + signature(operation, called, name);
      if (called == u"init") ofClass += u"  new(): %1;\n"_s.arg(name);
    } else {
      ofClass += u"  "_s + signature(operation, called, typeScriptName(operation.result));
    }
  }
  return object + u"}\n"_s + initialisers + u"}\n"_s + ofClass + u"};\n"_s;
}

/// The classes, and first those that they are based on or speak of.
QList<const ClassInfo*> allClasses() {
  QList<const ClassInfo*> all;
  const auto add = [&](const auto& self, const ClassInfo* info) -> void {
    if (!info || all.contains(info)) return;
    self(self, info->base());
    all.append(info);
  };
  const auto addOf = [&](const ValueType& type) {
    if (type.theClass) add(add, &type.theClass());
  };
  for (const ClassInfo* const each : Catalogue::classes()) add(add, each);
  for (qsizetype i = 0; i < all.size(); ++i) {
    for (const ClassInfo::Operation& operation : all[i]->operations()) {
      addOf(operation.result);
      for (const ValueType& type : operation.parameters) addOf(type);
    }
  }
  return all;
}

}  // namespace

QString Reference::markdown() {
  QString text =
      u"# Reference for scripts\n\nMade from the descriptions of the classes; do not edit.\nThe "
      u"last underscore of a name may be left out. "
      "[How to write a script](scripting.md).\n\n## Classes\n"_s;
  for (const ClassInfo* const each : allClasses()) text += markdownOf(*each);
  text += u"\n## Delegates\n"_s;
  for (const DelegateInfo* const each : Catalogue::delegates()) {
    text +=
        u"\n### %1\n\n| Selector | In a script | Told | Answers | |\n|---|---|---|---|---|\n"_s.arg(
            each->name());
    for (const auto& operation : each->operations()) text += row(operation, u"optional"_s);
  }
  text +=
      u"\n## Functions\n\n| Function | In a script | Takes | Gives | |\n|---|---|---|---|---|\n"_s;
  for (const auto& operation : Catalogue::functions().operations()) text += row(operation, u""_s);
  text += u"\n## Constants\n\n"_s;
  for (const Catalogue::Constant& constant : Catalogue::constants()) {
    text += u"- `%1`\n"_s.arg(constant.name);
  }
  return text;
}

QString Reference::typeScript() {
  QString text =
      u"// Kelvar's classes for scripts, made from their descriptions; do not edit.\n"
      "// Each name may be written without its last underscore.\n\n"
      "interface NSPoint { x: number; y: number; }\n"
      "interface NSSize { width: number; height: number; }\n"
      "interface NSRect { origin: NSPoint; size: NSSize; }\n"
      "interface CGImage {}\ninterface NSBezierPath {}\ninterface NSColor {}\n"
      "interface Array<T> {\n  count(): number;\n  objectAtIndex_(index: number): T;\n"
      "  firstObject(): T | null;\n  lastObject(): T | null;\n}\n\n"
      "declare const nil: null;\ndeclare const context: any;\n"
      "declare function log(...values: any[]): void;\n"
      "declare function print(...values: any[]): void;\n"
      "declare function setTimeout(call: () => void, milliseconds?: number): number;\n"
      "declare function setInterval(call: () => void, milliseconds?: number): number;\n"
      "declare function clearTimeout(timer: number): void;\n"
      "declare function clearInterval(timer: number): void;\n"_s;
  for (const ClassInfo* const each : allClasses()) text += typeScriptOf(*each);
  for (const DelegateInfo* const each : Catalogue::delegates()) {
    text += u"\ninterface %1 {\n"_s.arg(each->name());
    for (const auto& operation : each->operations()) {
      text += u"  "_s + signature(operation, scriptName(operation.selector) + u'?',
                                  typeScriptName(operation.result));
    }
    text += u"}\n"_s;
  }
  text += u'\n';
  for (const auto& operation : Catalogue::functions().operations()) {
    text += u"declare function "_s +
            signature(operation, operation.selector, typeScriptName(operation.result));
  }
  for (const Catalogue::Constant& constant : Catalogue::constants()) {
    const bool isText = constant.value.typeId() == QMetaType::QString;
    text += u"declare const %1: %2;\n"_s.arg(constant.name, isText ? u"string"_s : u"number"_s);
  }
  return text;
}

}  // namespace kelvar

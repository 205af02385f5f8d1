#include "scripting/TypeName.h"

#include <QDateTime>
#include <QPointF>
#include <QRectF>

#include "runtime/ClassInfo.h"
#include "runtime/DelegateInfo.h"
#include "runtime/ObjectGraph.h"
#include "scripting/Boxed.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

struct Name {
  QMetaType type;
  const char* script;
  const char* typeScript;
};

const Name* nameOf(QMetaType type) {
  static const Name kNames[] = {
      {QMetaType::fromType<void>(), "nothing", "void"},
      {QMetaType::fromType<QVariant>(), "anything", "any"},
      {QMetaType::fromType<ObjectGraph>(), "anything", "any"},
      {QMetaType::fromType<bool>(), "boolean", "boolean"},
      {QMetaType::fromType<QString>(), "string", "string"},
      {QMetaType::fromType<QStringList>(), "list of strings", "string[]"},
      {QMetaType::fromType<QVariantList>(), "list", "any[]"},
      {QMetaType::fromType<QVariantMap>(), "dictionary", "Record<string, any>"},
      {QMetaType::fromType<QDateTime>(), "date", "Date"},
      {QMetaType::fromType<QByteArray>(), "bytes", "Uint8Array"},
      {QMetaType::fromType<QPointF>(), "point", "NSPoint"},
      {QMetaType::fromType<QSizeF>(), "size", "NSSize"},
      {QMetaType::fromType<QRectF>(), "rectangle", "NSRect"}};
  for (const Name& name : kNames) {
    if (name.type == type) return &name;
  }
  return nullptr;
}

QString nameIn(const ValueType& type, const char* Name::*language, const char* otherwise) {
  if (type.staticClassInfo) return type.staticClassInfo().name();
  if (type.staticDelegateInfo) return type.staticDelegateInfo().name();
  if (const Name* const name = nameOf(type.type)) return QString::fromLatin1(name->*language);
  if (const ClassInfo* const boxed = Boxed::classFor(type.type)) return boxed->name();
  const QVariant zero(type.type);
  return QString::fromLatin1(isNumber(zero) ? "number" : otherwise);
}

}  // namespace

QString scriptTypeName(const ValueType& type) {
  if (type.staticElementInfo) return u"list of "_s + type.staticElementInfo().name();
  return nameIn(type, &Name::script, "value");
}

QString typeScriptName(const ValueType& type) {
  if (type.staticElementInfo) return type.staticElementInfo().name() + u"[]"_s;
  return nameIn(type, &Name::typeScript, "any");
}

}  // namespace kelvar

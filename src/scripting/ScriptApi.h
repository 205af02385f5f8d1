#pragma once

#include <QList>
#include <QVariant>

#include "platform/Export.h"

namespace kelvar {

class ClassInfo;
class DelegateInfo;

/// Everything that scripts can reach by name.
struct KELVAR_EXPORT ScriptApi {
  struct Constant {
    QString name;
    QVariant value;
  };

  /// The exported classes and those that their operations take or return, each after its base.
  static QList<const ClassInfo*> classes();
  /// A class without a name, whose class operations are the functions.
  static const ClassInfo& functions();
  static QList<Constant> constants();
  /// The delegates that the classes' properties take, in that order.
  static QList<const DelegateInfo*> delegates();
};

}  // namespace kelvar

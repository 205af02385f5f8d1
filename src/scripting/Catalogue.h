#pragma once

#include <QList>
#include <QVariant>

#include "platform/Export.h"

namespace kelvar {

class ClassInfo;
class DelegateInfo;

/// Everything that scripts can see by name.
struct KELVAR_EXPORT Catalogue {
  struct Constant {
    QString name;
    QVariant value;
  };

  /// The classes that plug-ins rely on, each with those that it is based on before it and those
  /// that it speaks of somewhere behind.
  static QList<const ClassInfo*> classes();
  /// Class operations whose selectors are the functions' names. Has no name.
  static const ClassInfo& functions();
  static QList<Constant> constants();
  /// Those that the classes' properties take, in that order.
  static QList<const DelegateInfo*> delegates();
};

}  // namespace kelvar

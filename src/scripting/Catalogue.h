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

  static QList<const ClassInfo*> classes();
  /// Class operations whose selectors are the functions' names.
  static const ClassInfo& functions();
  static QList<Constant> constants();
  /// Those that the classes' properties take, in that order.
  static QList<const DelegateInfo*> delegates();
};

}  // namespace kelvar

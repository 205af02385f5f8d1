#pragma once

#include <QString>
#include <QVariant>
#include <memory>

#include "platform/Export.h"

namespace kelvar {

class ClassInfo;
class Coder;
class Object;
using ObjectRef = std::shared_ptr<Object>;

/// Base class of all objects that are shared by reference, identified by class name and accessed by
/// key. Created with `std::make_shared`; a `QVariant` holds an `ObjectRef`.
class KELVAR_EXPORT Object : public std::enable_shared_from_this<Object> {
 public:
  virtual ~Object();

  static const ClassInfo& staticClassInfo();
  /// The description of the object's own class. Overridden by every described class.
  virtual const ClassInfo& classInfo() const;

  /// The value for `key`; invalid when there is no such key. Objects are `ObjectRef`s. Reads the
  /// property of that name; an override passes keys that it does not know to its base.
  virtual QVariant valueForKey(const QString& key) const;

  /// False if there is no such key or the value is of the wrong type. An invalid value clears the
  /// property.
  virtual bool setValueForKey(const QVariant& value, const QString& key);

  /// Follows keys joined by dots, each looked up in the value of the one before.
  virtual QVariant valueForKeyPath(const QString& keyPath) const;

  /// One line for logs and display: "<name of the class>" unless overridden.
  virtual QString description() const;

  /// The class name that an archive records: the object's own, unless overridden.
  virtual QString classForCoder() const;
  /// Object to encode in place of this one; defaults to this. Null writes nothing.
  virtual ObjectRef replacementObjectForCoder(Coder& coder);
  /// Writes the properties that `initWithCoder` of the class reads, under their names.
  virtual void encodeWithCoder(Coder& coder) const;
  /// Object to use in place of this one after decoding; defaults to this. Null drops it.
  virtual ObjectRef awakeAfterUsingCoder(Coder& coder);
};

/// Looks up a dotted path in an object, a map or a list. A list yields the list of its elements'
/// values, null (`nullptr`) for an element without one. Anything else has no keys.
KELVAR_EXPORT QVariant valueForKeyPath(const QVariant& value, const QString& keyPath);

}  // namespace kelvar

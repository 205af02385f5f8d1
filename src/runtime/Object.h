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

/// What is shared by reference, known by its class's name and reached by key. Made with
/// `std::make_shared`. In a `QVariant` it is carried as an `ObjectRef`.
class KELVAR_EXPORT Object : public std::enable_shared_from_this<Object> {
 public:
  virtual ~Object();

  static const ClassInfo& theClass();
  /// The description of the object's own class. Classes that are described override it.
  virtual const ClassInfo& classInfo() const;

  /// The value under `key`; invalid when there is no such key. Objects come as `ObjectRef`. Reads
  /// the property of that name; who overrides it leaves the keys that are not its own to its base.
  virtual QVariant valueForKey(const QString& key) const;

  /// False when there is no such key, or the value does not fit it. An invalid value is none.
  virtual bool setValueForKey(const QVariant& value, const QString& key);

  /// The value at the end of keys joined by dots, each looked up in what the one before gave.
  virtual QVariant valueForKeyPath(const QString& keyPath) const;

  /// One line for logs and people: "<name of the class>" unless overridden.
  virtual QString description() const;

  /// The name under which an archive keeps the object: its class's, unless overridden.
  virtual QString classForCoder() const;
  /// Who writes in the object's place: itself, unless overridden. Null writes nothing.
  virtual ObjectRef replacementObjectForCoder(Coder& coder);
  /// Writes what `initWithCoder` of the class reads, under the names of the properties.
  virtual void encodeWithCoder(Coder& coder) const;
  /// Who is to stand for the object once it is read: itself, unless overridden. Null for nobody.
  virtual ObjectRef awakeAfterUsingCoder(Coder& coder);
};

/// Looks up a dotted path in an object, a map or a list. A list gives the list of what its
/// elements give, null (`nullptr`) for an element that gives nothing. Anything else has no keys.
KELVAR_EXPORT QVariant valueForKeyPath(const QVariant& value, const QString& keyPath);

}  // namespace kelvar

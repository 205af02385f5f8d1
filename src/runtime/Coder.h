#pragma once

#include <QByteArray>
#include <QVariant>
#include <cstdint>

#include "platform/Export.h"

namespace kelvar {

/// Objects write themselves to a coder and read themselves from one, by key. As everywhere, an
/// invalid `QVariant` means no value, and objects are `ObjectRef`s.
class KELVAR_EXPORT Coder {
 public:
  virtual ~Coder();

  virtual bool allowsKeyedCoding() const = 0;

  /// An invalid value writes nothing.
  virtual void encodeObject(const QVariant& object, const QString& key) = 0;
  /// Writes a reference to an object that was written before; any other object is not written.
  virtual void encodeConditionalObject(const QVariant& object, const QString& key) = 0;
  virtual void encodeBool(bool value, const QString& key) = 0;
  virtual void encodeInt(int32_t value, const QString& key) = 0;
  virtual void encodeInt32(int32_t value, const QString& key) = 0;
  virtual void encodeInt64(int64_t value, const QString& key) = 0;
  virtual void encodeFloat(float value, const QString& key) = 0;
  virtual void encodeDouble(double value, const QString& key) = 0;
  virtual void encodeBytes(const QByteArray& bytes, const QString& key) = 0;

  virtual bool containsValueForKey(const QString& key) const = 0;
  /// Invalid for a missing key. Scalars are then zero and bytes empty.
  virtual QVariant decodeObject(const QString& key) = 0;
  virtual bool decodeBool(const QString& key) = 0;
  virtual int32_t decodeInt(const QString& key) = 0;
  virtual int32_t decodeInt32(const QString& key) = 0;
  virtual int64_t decodeInt64(const QString& key) = 0;
  virtual float decodeFloat(const QString& key) = 0;
  virtual double decodeDouble(const QString& key) = 0;
  virtual QByteArray decodeBytes(const QString& key) = 0;
};

}  // namespace kelvar

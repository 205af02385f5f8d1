#pragma once

#include <QByteArray>
#include <QVariant>
#include <cstdint>

#include "platform/Export.h"

namespace kelvar {

/// What an object writes itself to and reads itself from, by key. Dynamic values are as everywhere:
/// an invalid `QVariant` is none, objects are `ObjectRef`.
class KELVAR_EXPORT Coder {
 public:
  virtual ~Coder();

  virtual bool allowsKeyedCoding() const = 0;

  /// None writes nothing.
  virtual void encodeObject(const QVariant& object, const QString& key) = 0;
  /// Writes only what has been written before, as a reference to it.
  virtual void encodeConditionalObject(const QVariant& object, const QString& key) = 0;
  virtual void encodeBool(bool value, const QString& key) = 0;
  virtual void encodeInt(int32_t value, const QString& key) = 0;
  virtual void encodeInt32(int32_t value, const QString& key) = 0;
  virtual void encodeInt64(int64_t value, const QString& key) = 0;
  virtual void encodeFloat(float value, const QString& key) = 0;
  virtual void encodeDouble(double value, const QString& key) = 0;
  virtual void encodeBytes(const QByteArray& bytes, const QString& key) = 0;

  virtual bool containsValueForKey(const QString& key) const = 0;
  /// None for a missing key. The scalars then are zero and the bytes empty.
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

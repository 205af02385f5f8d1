#include <stdexcept>

#include "archive/HRCoder.h"
#include "archive/MutableData.h"
#include "runtime/ClassInfo.h"
#include "runtime/ObjectGraph.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&HRCoder::staticClassInfo);

/// Bytes, or an object that has them; null for none.
QByteArray bytesOf(const QVariant& value) {
  if (isNothing(value)) return {};
  if (value.typeId() == QMetaType::QByteArray) {
    const QByteArray bytes = value.toByteArray();
    return bytes.isNull() ? QByteArray("") : bytes;
  }
  const auto data = fromVariant<std::shared_ptr<Data>>(value).value_or(nullptr);
  if (!data) throw std::invalid_argument("the data must be bytes");
  return data->bytes().isNull() ? QByteArray("") : data->bytes();
}

QVariantMap known(const HRCoder& coder) {
  QVariantMap objects;
  const auto& byPath = coder.knownObjects();
  for (auto i = byPath.begin(); i != byPath.end(); ++i) objects.insert(i.key(), i.value());
  return objects;
}

QVariantMap unresolved(const HRCoder& coder) {
  QVariantMap aliases;
  const auto& byPath = coder.unresolvedAliases();
  for (auto i = byPath.begin(); i != byPath.end(); ++i) aliases.insert(i.key(), i.value());
  return aliases;
}

using Builder = ClassInfoBuilder<HRCoder>;

/// A whole graph at once.
Builder&& describeArchiving(Builder&& builder) {
  return std::move(builder)
      .classOperation("classNameKey", &HRCoder::classNameKey,
                      "Returns \"$class\", the key of the class's name.")
      .classOperation(
          "archivedPlistWithRootObject:",
          [](const ObjectGraph& graph) { return HRCoder::archivedPlistWithRootObject(graph.root); },
          "Returns the archive of the value as a tree of property-list values.")
      .classOperation(
          "archivedJSONWithRootObject:",
          [](const ObjectGraph& graph) { return HRCoder::archivedJSONWithRootObject(graph.root); },
          "Returns the archive of the value as a tree of JSON values.")
      .classOperation(
          "archivedDataWithRootObject:",
          [](const ObjectGraph& graph) -> QVariant {
            const QByteArray bytes = HRCoder::archivedDataWithRootObject(graph.root);
            return bytes.isNull() ? QVariant() : bytes;
          },
          "Returns the archive of the value as the bytes of an XML property list.")
      .classOperation(
          "archiveRootObject:toFile:",
          [](const ObjectGraph& graph, const QString& path) {
            return HRCoder::archiveRootObject(graph.root, path);
          },
          "Writes the archive of the value to a file and returns whether that worked.")
      .classOperation(
          "unarchiveObjectWithPlistOrJSON:",
          [](const QVariant& tree) {
            return ObjectGraph{HRCoder::unarchiveObjectWithPlistOrJSON(tree), true};
          },
          "Returns the value of a tree; nil if it cannot be read.")
      .classOperation(
          "unarchiveObjectWithData:",
          [](const QVariant& data) {
            return ObjectGraph{HRCoder::unarchiveObjectWithData(bytesOf(data)), true};
          },
          "Returns the value of a property list or JSON in bytes; nil if it cannot be read.")
      .classOperation(
          "unarchiveObjectWithFile:",
          [](const QString& path) {
            return ObjectGraph{HRCoder::unarchiveObjectWithFile(path), true};
          },
          "Returns the value of a file; nil if it cannot be read.")
      .operation(
          "archiveRootObject:",
          [](HRCoder& coder, const ObjectGraph& graph) {
            return coder.archiveRootObject(graph.root);
          },
          "Returns the archive of the value as a tree in the form for `outputFormat`.")
      .operation(
          "unarchiveRootObjectWithPlistOrJSON:",
          [](HRCoder& coder, const QVariant& tree) {
            return ObjectGraph{coder.unarchiveRootObjectWithPlistOrJSON(tree), true};
          },
          "Returns the value of a tree; nil if it cannot be read.");
}

/// Value by value, under keys.
Builder&& describeEncoding(Builder&& builder) {
  return std::move(builder)
      .initializer(
          "init", [] { return std::make_shared<HRCoder>(); },
          "Creates a coder with nothing to read or to write to.")
      .initializer("initForWritingWithMutableData:", &HRCoder::initForWritingWithMutableData,
                   "Creates a coder whose `finishEncoding` writes into the data.")
      .operation(
          "encodeRootObject:",
          [](HRCoder& coder, const ObjectGraph& graph) { coder.encodeRootObject(graph.root); },
          "Replaces what was encoded by the archive of the value.")
      .operation(
          "encodeObject:forKey:",
          [](HRCoder& coder, const ObjectGraph& graph, const QString& key) {
            coder.encodeObject(graph.root, key);
          },
          "Encodes a value; a list, a dictionary or an object that was encoded before becomes a "
          "reference to that.")
      .operation(
          "encodeConditionalObject:forKey:",
          [](HRCoder& coder, const ObjectGraph& graph, const QString& key) {
            coder.encodeConditionalObject(graph.root, key);
          },
          "Encodes a reference to an object that was encoded before; otherwise does nothing.")
      .operation(
          "encodedObject:forKey:",
          [](HRCoder& coder, const ObjectGraph& graph, const QString& key) {
            return coder.encodedObject(graph.root, key);
          },
          "Returns the tree of the value under the key without writing it.")
      .operation("encodeBool:forKey:", &HRCoder::encodeBool, "Encodes a boolean.")
      .operation("encodeInt:forKey:", &HRCoder::encodeInt, "Encodes a 32-bit integer.")
      .operation("encodeInt32:forKey:", &HRCoder::encodeInt32, "Encodes a 32-bit integer.")
      .operation("encodeInt64:forKey:", &HRCoder::encodeInt64, "Encodes a 64-bit integer.")
      .operation("encodeInteger:forKey:", &HRCoder::encodeInt64, "Encodes a 64-bit integer.")
      .operation("encodeFloat:forKey:", &HRCoder::encodeFloat, "Encodes a single-precision number.")
      .operation("encodeDouble:forKey:", &HRCoder::encodeDouble,
                 "Encodes a double-precision number.")
      .operation(
          "encodeBytes:length:forKey:",
          [](HRCoder& coder, const QVariant& bytes, qlonglong length, const QString& key) {
            coder.encodeBytes(
                bytesOf(bytes).first(std::clamp<qsizetype>(length, 0, bytesOf(bytes).size())), key);
          },
          "Encodes the first bytes, always in full.")
      .operation("finishEncoding", &HRCoder::finishEncoding,
                 "Writes to the data, if there is any, and starts over; false if that failed.");
}

Builder&& describeDecoding(Builder&& builder) {
  return std::move(builder)
      .initializer(
          "initForReadingWithData:",
          [](const QVariant& data) { return HRCoder::initForReadingWithData(bytesOf(data)); },
          "Creates a coder that reads by key from a dictionary in a property list or JSON; raises "
          "HRCoderException for any other data.")
      .operation("containsValueForKey:", &HRCoder::containsValueForKey,
                 "Returns whether there is a value under the key.")
      .operation(
          "decodeObjectForKey:",
          [](HRCoder& coder, const QString& key) { return ObjectGraph{coder.decodeObject(key)}; },
          "Returns the value under the key; nil if there is none.")
      .operation(
          "decodeObject:forKey:",
          [](HRCoder& coder, const QVariant& tree, const QString& key) {
            return ObjectGraph{coder.decodeObject(tree, key)};
          },
          "Returns the value of a tree, which is known under the key from then on.")
      .operation("decodeBoolForKey:", &HRCoder::decodeBool, "Returns a boolean; false for none.")
      .operation("decodeIntForKey:", &HRCoder::decodeInt, "Returns a 32-bit integer; 0 for none.")
      .operation("decodeInt32ForKey:", &HRCoder::decodeInt32,
                 "Returns a 64-bit integer cut to 32 bits; 0 for none.")
      .operation("decodeInt64ForKey:", &HRCoder::decodeInt64,
                 "Returns a 64-bit integer; 0 for none.")
      .operation("decodeIntegerForKey:", &HRCoder::decodeInt64,
                 "Returns a 64-bit integer; 0 for none.")
      .operation("decodeFloatForKey:", &HRCoder::decodeFloat,
                 "Returns a single-precision number; 0 for none.")
      .operation("decodeDoubleForKey:", &HRCoder::decodeDouble,
                 "Returns a double-precision number; 0 for none.")
      .operation("decodeBytesForKey:", &HRCoder::decodeBytes,
                 "Returns the bytes under the key, all of them; none if there are none.")
      .operation("finishDecoding", &HRCoder::finishDecoding, "Forgets what was read.");
}

}  // namespace

const ClassInfo& HRCoder::staticClassInfo() {
  static const ClassInfo kClass =
      describeDecoding(describeEncoding(describeArchiving(Builder("HRCoder"))))
          .operation("allowsKeyedCoding", &HRCoder::allowsKeyedCoding, "Returns true.")
          .property(
              "outputFormat", &HRCoder::outputFormat, &HRCoder::setOutputFormat,
              "The form to write: 0 is an XML property list, 1 JSON, 2 a binary property list.")
          .property(
              "stack", [](const HRCoder& coder) { return ObjectGraph{coder.stack()}; },
              "The dictionaries that are being written or read, the innermost last.")
          .property(
              "knownObjects", [](const HRCoder& coder) { return ObjectGraph{known(coder)}; },
              "The values so far, by key path.")
          .property("unresolvedAliases", unresolved,
                    "The references that are not resolved yet: from the key path of each to the "
                    "one that it names.")
          .property("keyPath", &HRCoder::keyPath, &HRCoder::setKeyPath,
                    "The key path of the value that is being written or read; nil at the root.")
          .property("data", &HRCoder::data, &HRCoder::setData,
                    "What `finishEncoding` writes into.");
  return kClass;
}

}  // namespace kelvar

#include "scripting/Boxed.h"

#include <QColor>
#include <QImage>

#include "platform/BezierPath.h"
#include "runtime/ClassInfo.h"
#include "scripting/NSImage.h"
#include "scripting/NSURL.h"

namespace kelvar {
namespace {

/// A value that scripts only hand on.
template <class T>
class Handle : public Boxed {
 public:
  explicit Handle(const QVariant& value) : value_(value) {}
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }
  QVariant value() const override { return value_; }

 private:
  const QVariant value_;
};

template <float (QColor::*part)() const>
double component(const Handle<QColor>& self) {
  return double((self.value().value<QColor>().*part)());
}

template <>
const ClassInfo& Handle<BezierPath>::theClass() {
  static const ClassInfo kClass = Description<Handle>("NSBezierPath");
  return kClass;
}
template <>
const ClassInfo& Handle<QImage>::theClass() {
  static const ClassInfo kClass = Description<Handle>("CGImage");
  return kClass;
}
template <>
const ClassInfo& Handle<QColor>::theClass() {
  static const ClassInfo kClass =
      Description<Handle>("NSColor")
          .classOperation("colorWithRed:green:blue:alpha:", &QColor::fromRgbF)
          .property("redComponent", component<&QColor::redF>)
          .property("greenComponent", component<&QColor::greenF>)
          .property("blueComponent", component<&QColor::blueF>)
          .property("alphaComponent", component<&QColor::alphaF>);
  return kClass;
}

template <class Class>
ObjectRef make(const QVariant& value) {
  return std::make_shared<Class>(value);
}

struct Row {
  QMetaType type;
  const ClassInfo& (*theClass)();
  ObjectRef (*box)(const QVariant& value);
};

const Row* rowFor(QMetaType type) {
  static const Row kRows[] = {
      {QMetaType::fromType<ImageRef>(), &NSImage::theClass, make<NSImage>},
      {QMetaType::fromType<QUrl>(), &NSURL::theClass, make<NSURL>},
      {QMetaType::fromType<BezierPath>(), &Handle<BezierPath>::theClass, make<Handle<BezierPath>>},
      {QMetaType::fromType<QImage>(), &Handle<QImage>::theClass, make<Handle<QImage>>},
      {QMetaType::fromType<QColor>(), &Handle<QColor>::theClass, make<Handle<QColor>>}};
  for (const Row& row : kRows) {
    if (row.type == type) return &row;
  }
  return nullptr;
}

}  // namespace

ObjectRef Boxed::box(const QVariant& value) {
  const Row* const row = rowFor(value.metaType());
  return row ? row->box(value) : nullptr;
}

const ClassInfo* Boxed::classFor(QMetaType type) {
  const Row* const row = rowFor(type);
  return row ? &row->theClass() : nullptr;
}

}  // namespace kelvar

#pragma once

#include "analytics/Properties.h"
#include "runtime/Object.h"

namespace kelvar {

class Event;
using EventRef = std::shared_ptr<Event>;

/// A user action: its name and properties. Set once, then read.
///
/// Compare events with `isEqual`, which does not define a hash.
class KELVAR_EXPORT Event : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  static EventRef eventWithName(const QString& name, const Properties& properties);

  QString name() const { return name_; }
  void setName(const QString& name) { name_ = name; }
  Properties properties() const { return properties_; }
  void setProperties(const Properties& properties) { properties_ = properties; }

  /// True for the same object, or if both have equal names and equal properties. An event without a
  /// name or without properties equals only itself.
  bool isEqual(const EventRef& other) const;

  QString description() const override;

 private:
  QString name_;
  Properties properties_;
};

}  // namespace kelvar

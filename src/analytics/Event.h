#pragma once

#include "analytics/Properties.h"
#include "runtime/Object.h"

namespace kelvar {

class Event;
using EventRef = std::shared_ptr<Event>;

/// Something that the user did: a name and what is told about it. Filled once, then read.
///
/// Events are compared by `isEqual`, which is no ground for a hash.
class KELVAR_EXPORT Event : public Object {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  static EventRef eventWithName(const QString& name, const Properties& properties);

  QString name() const { return name_; }
  void setName(const QString& name) { name_ = name; }
  Properties properties() const { return properties_; }
  void setProperties(const Properties& properties) { properties_ = properties; }

  /// The same event, or one with an equal name and equal properties. None equals nothing: an event
  /// that lacks either equals itself alone.
  bool isEqual(const EventRef& other) const;

  QString description() const override;

 private:
  QString name_;
  Properties properties_;
};

}  // namespace kelvar

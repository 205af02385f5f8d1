#pragma once

#include "analytics/Properties.h"
#include "runtime/Object.h"

namespace kelvar {

class TimedEvent;
using TimedEventRef = std::shared_ptr<TimedEvent>;

/// A finished user action that lasted for a while.
class KELVAR_EXPORT TimedEvent : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  static TimedEventRef timedEventWithName(const QString& name, const Properties& properties,
                                          double sessionLength);

  QString name() const { return name_; }
  void setName(const QString& name) { name_ = name; }
  Properties properties() const { return properties_; }
  void setProperties(const Properties& properties) { properties_ = properties; }
  /// Length in seconds.
  double sessionLength() const { return sessionLength_; }
  void setSessionLength(double seconds) { sessionLength_ = seconds; }

 private:
  QString name_;
  Properties properties_;
  double sessionLength_ = 0;
};

}  // namespace kelvar

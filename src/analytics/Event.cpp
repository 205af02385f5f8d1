#include "analytics/Event.h"

#include "platform/QtError.h"
#include "platform/plist/Json.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&Event::staticClassInfo);

const QString kNone = QStringLiteral("(null)");

QString written(const Properties& properties) {
  if (!properties) return kNone;
  const Result<QByteArray> text = Json::write(*properties);
  return text ? QString::fromUtf8(*text) : messageOf(text.error());
}

}  // namespace

const ClassInfo& Event::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Event>("Event")
          .initializer(
              "init", [] { return std::make_shared<Event>(); },
              "Creates an event without a name or properties.")
          .classOperation("eventWithName:properties:", &Event::eventWithName, "Creates an event.")
          .operation("isEqual:", &Event::isEqual,
                     "Returns whether this is the same event, or one with an equal name and equal "
                     "properties.")
          .property("name", &Event::name, &Event::setName, "The event's name.")
          .property(
              "properties", &Event::properties, &Event::setProperties,
              "What is recorded about the event; nil is not the same as an empty dictionary.");
  return kClass;
}

EventRef Event::eventWithName(const QString& name, const Properties& properties) {
  const auto event = std::make_shared<Event>();
  event->setName(name);
  event->setProperties(properties);
  return event;
}

bool Event::isEqual(const EventRef& other) const {
  if (other.get() == this) return true;
  return other && !other->name_.isNull() && other->properties_ && other->name_ == name_ &&
         other->properties_ == properties_;
}

QString Event::description() const {
  return QStringLiteral("<Event: %1, %2>")
      .arg(name_.isNull() ? kNone : name_, written(properties_));
}

}  // namespace kelvar

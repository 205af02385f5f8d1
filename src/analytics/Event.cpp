#include "analytics/Event.h"

#include "platform/Json.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&Event::theClass);

const QString kNone = QStringLiteral("(null)");

QString written(const Properties& properties) {
  if (!properties) return kNone;
  QString error;
  const QByteArray text = Json::write(*properties, Json::Layout::Compact, &error);
  return text.isEmpty() ? error : QString::fromUtf8(text);
}

}  // namespace

const ClassInfo& Event::theClass() {
  static const ClassInfo kClass =
      Description<Event>("Event")
          .initialiser("init", [] { return std::make_shared<Event>(); })
          .classOperation("eventWithName:properties:", &Event::eventWithName)
          .operation("isEqual:", &Event::isEqual)
          .property("name", &Event::name, &Event::setName)
          .property("properties", &Event::properties, &Event::setProperties);
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

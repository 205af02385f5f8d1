#include "analytics/Event.h"

#include <gtest/gtest.h>

#include "analytics/MutableTimedEvent.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const QString kA = QStringLiteral("a");
const QVariantMap kOne{{kA, 1}};

TEST(EventTest, ComparesContents) {
  const std::tuple<EventRef, EventRef, bool> cases[] = {
      {Event::eventWithName(kA, kOne), Event::eventWithName(kA, kOne), true},
      {Event::eventWithName(kA, kOne), Event::eventWithName(kA, QVariantMap()), false},
      {Event::eventWithName(kA, kOne), Event::eventWithName(QStringLiteral("b"), kOne), false},
      {Event::eventWithName({}, kOne), Event::eventWithName({}, kOne), false},
      {Event::eventWithName(kA, {}), Event::eventWithName(kA, {}), false},
      {Event::eventWithName(kA, kOne), nullptr, false}};
  for (const auto& [one, other, equal] : cases) {
    EXPECT_EQ(one->isEqual(other), equal) << one->description().toStdString();
    EXPECT_TRUE(one->isEqual(one));
  }
}

TEST(EventTest, DescribesItselfInOneLine) {
  EXPECT_EQ(Event::eventWithName(kA, kOne)->description(), QStringLiteral("<Event: a, {\"a\":1}>"));
  EXPECT_EQ(Event::eventWithName({}, {})->description(), QStringLiteral("<Event: (null), (null)>"));
  EXPECT_EQ(Event::eventWithName(QStringLiteral("%2"), kOne)->description(),
            QStringLiteral("<Event: %2, {\"a\":1}>"));
}

TEST(MutableTimedEventTest, AddsInFloats) {
  const std::tuple<QVariant, QVariant, float> cases[] = {{{}, 1, 1},
                                                         {2, 1, 3},
                                                         {true, 0.5, 1.5},
                                                         {16'777'216, 1, 16'777'216},
                                                         {QStringLiteral(" +12.5 apples"), 1, 13.5},
                                                         {QStringLiteral("-1e2"), 0, -100},
                                                         {QStringLiteral("apples"), 1, 1},
                                                         {QStringLiteral("inf"), 1, 1},
                                                         {QVariantList{5}, QStringLiteral("2"), 2}};
  for (const auto& [before, by, after] : cases) {
    QVariantMap properties;
    if (before.isValid()) properties[kA] = before;
    const auto event = MutableTimedEvent::timedEventWithName(kA, properties, 0);
    event->incrementProperty(kA, by);
    const QVariant sum = event->properties()->value(kA);
    EXPECT_EQ(sum.typeId(), QMetaType::Float);
    EXPECT_EQ(sum.toFloat(), after) << before.toString().toStdString();
  }
}

TEST(MutableTimedEventTest, MergesPropertiesIntoNewMap) {
  const auto event = MutableTimedEvent::timedEventWithName(kA, {}, 0);
  event->appendProperties({});
  EXPECT_EQ(event->properties(), QVariantMap());
  event->appendProperties(kOne);
  const Properties before = event->properties();
  event->appendProperties(QVariantMap{{kA, 2}, {QStringLiteral("b"), 3}});
  event->incrementProperty(kA);
  EXPECT_EQ(before, kOne);
  EXPECT_EQ(event->properties(), (QVariantMap{{kA, 3.0f}, {QStringLiteral("b"), 3}}));
}

TEST(EventTest, ClassesAreAccessibleByNameAndKey) {
  const ClassInfo* const info = ClassInfo::find(QStringLiteral("MutableTimedEvent"));
  ASSERT_TRUE(info);
  const auto made = info->callClass(QStringLiteral("timedEventWithName:properties:sessionLength:"),
                                    {kA, QVariant(), 2});
  ASSERT_TRUE(made);
  const auto event = made->value<ObjectRef>();
  EXPECT_EQ(event->classInfo().name(), QStringLiteral("MutableTimedEvent"));
  EXPECT_FALSE(event->valueForKey(QStringLiteral("properties")).isValid());
  EXPECT_TRUE(event->setValueForKey(kOne, QStringLiteral("properties")));
  EXPECT_FALSE(event->setValueForKey(7, QStringLiteral("properties")));
  EXPECT_TRUE(info->call(*event, QStringLiteral("incrementProperty:"), {kA}));
  EXPECT_EQ(event->valueForKeyPath(QStringLiteral("properties.a")), 2);
  EXPECT_EQ(event->valueForKey(QStringLiteral("sessionLength")), 2.0);
}

}  // namespace
}  // namespace kelvar

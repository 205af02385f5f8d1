#include "runtime/ClassInfo.h"

#include <gtest/gtest.h>

#include <QPointF>
#include <climits>
#include <cmath>

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

class Animal : public Object {
 public:
  static const ClassInfo& staticClassInfo() {
    static const ClassInfo kClass =
        ClassInfoBuilder<Animal>("Animal")
            .initializer(
                "init", [] { return std::make_shared<Animal>(); }, "Creates one.")
            .property("name", &Animal::name, &Animal::setName, "A property.")
            .operation("legs", &Animal::legs, "An operation.");
    return kClass;
  }
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  QString name() const { return name_; }
  void setName(const QString& name) { name_ = name; }
  virtual int legs() const { return 4; }

 private:
  QString name_ = u"animal"_s;
};

class Bird : public Animal {
 public:
  explicit Bird(uint64_t eggs = 0) : eggs_(eggs) {}
  static const ClassInfo& staticClassInfo() {
    static const ClassInfo kClass =
        ClassInfoBuilder<Bird, Animal>("Bird")
            .initializer(
                "initWithEggs:", [](uint64_t eggs) { return std::make_shared<Bird>(eggs); },
                "Creates one.")
            .property("eggs", &Bird::eggs, &Bird::setEggs, "A property.")
            .property("mate", &Bird::mate, &Bird::setMate, "A property.")
            .property(
                "isSinging", [](const Bird& bird) { return bird.eggs() == 0; }, "A property.")
            .operation("addEggs:from:", &Bird::addEggs, "An operation.")
            .classOperation(
                "sum:of:", [](double a, const QStringList& b) { return a + double(b.size()); },
                "An operation.");
    return kClass;
  }
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  uint64_t eggs() const { return eggs_; }
  void setEggs(uint64_t eggs) { eggs_ = eggs; }
  std::shared_ptr<Animal> mate() const { return mate_; }
  void setMate(const std::shared_ptr<Animal>& mate) { mate_ = mate; }
  int legs() const override { return 2; }
  void addEggs(uint64_t eggs, const std::shared_ptr<Bird>& from) {
    eggs_ += eggs + (from ? from->eggs_ : 0);
  }

 private:
  uint64_t eggs_;
  std::shared_ptr<Animal> mate_;
};

const ClassInfo::Registration kRegistered(&Bird::staticClassInfo);

TEST(ClassInfoTest, FindsAndCreatesClassesByName) {
  const ClassInfo* const bird = ClassInfo::find(u"Bird"_s);
  ASSERT_EQ(bird, &Bird::staticClassInfo());
  EXPECT_FALSE(ClassInfo::find(u"Animal"_s)) << "described, but not registered";
  EXPECT_TRUE(ClassInfo::find(u"NSObject"_s));
  {
    const ClassInfo::Registration forAMoment(&Animal::staticClassInfo);
    EXPECT_TRUE(ClassInfo::find(u"Animal"_s));
  }
  EXPECT_FALSE(ClassInfo::find(u"Animal"_s));
  const ObjectRef made = bird->create(u"initWithEggs:"_s, {3});
  ASSERT_TRUE(made);
  EXPECT_EQ(made->description(), u"<Bird>"_s);
  EXPECT_EQ(made->valueForKey(u"eggs"_s), QVariant(qulonglong(3)));
  EXPECT_FALSE(bird->create(u"init"_s)) << "makes an animal";
  EXPECT_FALSE(bird->create(u"initWithEggs:"_s));
  EXPECT_FALSE(bird->create(u"initWithEggs:"_s, {u"many"_s}));
  EXPECT_FALSE(bird->isDecodable());
}

TEST(ClassInfoTest, ReadsAndWritesProperties) {
  const auto bird = std::make_shared<Bird>();
  const auto mate = std::make_shared<Animal>();
  EXPECT_TRUE(bird->setValueForKey(u"finch"_s, u"name"_s)) << "of the base";
  EXPECT_TRUE(bird->setValueForKey(2.0, u"eggs"_s));
  EXPECT_TRUE(bird->setValueForKey(QVariant::fromValue<ObjectRef>(mate), u"mate"_s));
  EXPECT_EQ(bird->valueForKey(u"name"_s), QVariant(u"finch"_s));
  EXPECT_EQ(bird->valueForKeyPath(u"mate.name"_s), QVariant(u"animal"_s));
  EXPECT_EQ(bird->valueForKey(u"isSinging"_s), QVariant(false));

  EXPECT_FALSE(bird->setValueForKey(true, u"isSinging"_s)) << "only read";
  EXPECT_FALSE(bird->setValueForKey(true, u"unknown"_s));
  EXPECT_FALSE(bird->setValueForKey(7, u"name"_s));
  EXPECT_FALSE(bird->setValueForKey(QVariant::fromValue(std::make_shared<Object>()), u"mate"_s));
  EXPECT_FALSE(bird->valueForKey(u"unknown"_s).isValid());
  EXPECT_EQ(bird->mate(), mate);

  EXPECT_TRUE(bird->setValueForKey({}, u"mate"_s));
  EXPECT_TRUE(bird->setValueForKey({}, u"name"_s));
  EXPECT_FALSE(bird->mate());
  EXPECT_TRUE(bird->name().isNull());
  EXPECT_FALSE(bird->valueForKey(u"mate"_s).isValid());
  EXPECT_FALSE(bird->valueForKey(u"name"_s).isValid());
}

TEST(ClassInfoTest, CallsBySelector) {
  const auto bird = std::make_shared<Bird>(1);
  const QVariant other = QVariant::fromValue<ObjectRef>(std::make_shared<Bird>(10));
  const QVariant animal = QVariant::fromValue<ObjectRef>(std::make_shared<Animal>());
  const struct {
    QString selector;
    QVariantList arguments;
    std::optional<QVariant> result;
  } cases[] = {
      {u"legs"_s, {}, 2},
      {u"description"_s, {}, u"<Bird>"_s},
      {u"setName:"_s, {u"wren"_s}, QVariant()},
      {u"name"_s, {}, u"wren"_s},
      {u"addEggs:from:"_s, {5, other}, QVariant()},
      {u"addEggs:from:"_s, {1, QVariant()}, QVariant()},
      {u"eggs"_s, {}, qulonglong(17)},
      {u"valueForKey:"_s, {u"eggs"_s}, qulonglong(17)},
      {u"addEggs:from:"_s, {1, animal}, std::nullopt},
      {u"addEggs:from:"_s, {1}, std::nullopt},
      {u"addEggs:from:"_s, {1, other, other}, std::nullopt},
      {u"addEggs"_s, {1, other}, std::nullopt},
      {u"setIsSinging:"_s, {true}, std::nullopt},
      {u"sum:of:"_s, {1, QStringList()}, std::nullopt},
  };
  for (const auto& [selector, arguments, result] : cases) {
    const auto found = bird->classInfo().call(*bird, selector, arguments);
    EXPECT_EQ(found, result) << selector.toStdString();
  }
  const ClassInfo& info = Bird::staticClassInfo();
  EXPECT_EQ(info.callClass(u"sum:of:"_s, {1, QVariantList{u"a"_s, u"b"_s}}), QVariant(3.0));
  EXPECT_EQ(info.callClass(u"sum:of:"_s, {1, QVariantList{u"a"_s, 2}}), std::nullopt);
  EXPECT_EQ(info.callClass(u"legs"_s), std::nullopt);
  EXPECT_EQ(info.base(), &Animal::staticClassInfo());
}

TEST(ConversionTest, ConvertsBetweenNumberTypes) {
  const QVariant null = QVariant::fromValue(nullptr);
  EXPECT_EQ(fromVariant<int>(2.9), 2);
  EXPECT_EQ(fromVariant<int>(-2.9), -2);
  EXPECT_EQ(fromVariant<int>(1e10), INT32_MAX);
  EXPECT_EQ(fromVariant<int>(-1e10), INT32_MIN);
  EXPECT_EQ(fromVariant<int64_t>(1e300), INT64_MAX);
  EXPECT_EQ(fromVariant<int64_t>(-1e300), INT64_MIN);
  EXPECT_EQ(fromVariant<int64_t>(double(NAN)), 0);
  EXPECT_EQ(fromVariant<uint64_t>(-1), UINT64_MAX) << "three quarter turns, as a rotation";
  EXPECT_EQ(fromVariant<uint64_t>(-1.0), UINT64_MAX);
  EXPECT_EQ(fromVariant<uint64_t>(1e19), 10000000000000000000u);
  EXPECT_EQ(fromVariant<uint64_t>(1e300), UINT64_MAX);
  EXPECT_EQ(fromVariant<uint64_t>(~qulonglong(0)), UINT64_MAX);
  EXPECT_EQ(fromVariant<double>(true), 1.0);
  EXPECT_EQ(fromVariant<bool>(0.5), true);
  EXPECT_EQ(fromVariant<bool>(0), false);
  EXPECT_EQ(fromVariant<double>(null), 0.0);
  EXPECT_EQ(fromVariant<int>(QVariant()), 0);
  EXPECT_EQ(fromVariant<int>(u"5"_s), std::nullopt);
  EXPECT_EQ(fromVariant<QPointF>(QPointF(1, 2)), QPointF(1, 2));
  EXPECT_EQ(fromVariant<QPointF>(5), std::nullopt);
  EXPECT_EQ(toVariant(uint64_t(5)).typeId(), QMetaType::ULongLong);
  EXPECT_EQ(toVariant(int64_t(5)).typeId(), QMetaType::LongLong);
  EXPECT_EQ(toVariant(5).typeId(), QMetaType::Int);
  EXPECT_EQ(toVariant(true).typeId(), QMetaType::Bool);
}

}  // namespace
}  // namespace kelvar

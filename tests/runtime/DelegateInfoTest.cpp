#include "runtime/DelegateInfo.h"

#include <gtest/gtest.h>

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

class Bell;

struct BellDelegate {
  static const DelegateInfo& staticDelegateInfo() {
    static const DelegateInfo kDelegate =
        DelegateInfoBuilder<BellDelegate>("BellDelegate")
            .operation("bell:shouldRing:", &BellDelegate::bellShouldRing,
                       "Called before the bell rings.", "False keeps it silent.")
            .operation("bellDidRing:", &BellDelegate::bellDidRing,
                       "Called after the bell has rung.");
    return kDelegate;
  }
  DelegateFunction<bool(Bell&, int)> bellShouldRing;
  DelegateFunction<void(const Bell&)> bellDidRing;
};

class Bell : public Object {
 public:
  static const ClassInfo& staticClassInfo() {
    static const ClassInfo kClass =
        ClassInfoBuilder<Bell>("Bell")
            .property("delegate", &Bell::delegate, &Bell::setDelegate, "A property.")
            .operation("ring:", &Bell::ring, "An operation.");
    return kClass;
  }
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  std::weak_ptr<BellDelegate> delegate() const { return delegate_; }
  void setDelegate(const std::weak_ptr<BellDelegate>& delegate) { delegate_ = delegate; }
  void ring(int times) {
    const auto delegate = delegate_.lock();
    if (!delegate || !delegate->bellShouldRing || !delegate->bellShouldRing(*this, times)) return;
    if (delegate->bellDidRing) delegate->bellDidRing(*this);
  }

 private:
  std::weak_ptr<BellDelegate> delegate_;
};

TEST(DelegateInfoTest, ActsAsDelegateStruct) {
  const ClassInfo::Operation& set =
      *Bell::staticClassInfo().operation(ClassInfo::Kind::Operation, u"setDelegate:"_s);
  ASSERT_TRUE(set.parameters.at(0).staticDelegateInfo);
  const DelegateInfo& info = set.parameters.at(0).staticDelegateInfo();
  const auto bell = std::make_shared<Bell>();
  auto delegate = info.make();
  ASSERT_TRUE(set.call(bell.get(), {info.toVariant(delegate)}));
  EXPECT_EQ(Bell::staticClassInfo().property(u"delegate"_s)->get(*bell), info.toVariant(delegate));

  QVariantList told;
  const auto note = [&](const QVariant& answer) {
    return [&told, answer](const QVariantList& arguments) {
      told.append(arguments);
      return answer;
    };
  };
  const DelegateInfo::Operation& should = info.operations().at(0);
  const DelegateInfo::Operation& did = info.operations().at(1);
  bell->ring(1);
  EXPECT_EQ(told, QVariantList()) << "implements nothing";
  should.implement(delegate.get(), note(false));
  did.implement(delegate.get(), note({}));
  bell->ring(2);
  should.implement(delegate.get(), note(u"does not fit"_s));
  bell->ring(3);
  const QVariant self = QVariant::fromValue<ObjectRef>(bell);
  EXPECT_EQ(told, (QVariantList{self, 2, self, 3}));
  told.clear();
  should.implement(delegate.get(), note(1));
  bell->ring(4);
  EXPECT_EQ(told, (QVariantList{self, 4, self}));
  delegate.reset();
  EXPECT_FALSE(bell->delegate().lock()) << "delegates are weak";
}

TEST(ValueTypeTest, DescribesParametersAndResults) {
  const auto& ring = *Bell::staticClassInfo().operation(ClassInfo::Kind::Operation, u"ring:"_s);
  EXPECT_EQ(ring.result.type, QMetaType::fromType<void>());
  ASSERT_EQ(ring.parameters.size(), 1u);
  EXPECT_TRUE(ring.parameters[0].fits(2.0));
  EXPECT_FALSE(ring.parameters[0].fits(u"2"_s));
  const auto& should = BellDelegate::staticDelegateInfo().operations().at(0);
  EXPECT_EQ(&should.parameters.at(0).staticClassInfo(), &Bell::staticClassInfo());
  EXPECT_EQ(should.result.type, QMetaType::fromType<bool>());
  const auto bell = QVariant::fromValue<ObjectRef>(std::make_shared<Bell>());
  EXPECT_TRUE(should.parameters[0].fits(bell));
  EXPECT_FALSE(should.parameters[0].fits(QVariant::fromValue(std::make_shared<Object>())));
}

}  // namespace
}  // namespace kelvar

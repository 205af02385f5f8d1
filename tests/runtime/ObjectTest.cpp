#include "runtime/Object.h"

#include <gtest/gtest.h>

namespace kelvar {
namespace {

class Node : public Object {
 public:
  explicit Node(QVariantMap values) : values_(std::move(values)) {}
  QVariant valueForKey(const QString& key) const override { return values_.value(key); }

 private:
  QVariantMap values_;
};

QVariant node(const QVariantMap& values) {
  return QVariant::fromValue<ObjectRef>(std::make_shared<Node>(values));
}

TEST(ObjectTest, FollowsKeyPathsThroughObjectsMapsAndLists) {
  const QVariant one = node({{QStringLiteral("n"), 1}});
  const QVariantMap two{{QStringLiteral("n"), 2}};
  const QVariant root = node({{QStringLiteral("name"), QStringLiteral("root")},
                              {QStringLiteral("child"), one},
                              {QStringLiteral("map"), two},
                              {QStringLiteral("list"), QVariantList{one, two, node({}), 7}},
                              {QStringLiteral("none"), QVariant::fromValue(ObjectRef())}});
  const QVariant null = QVariant::fromValue(nullptr);
  const struct {
    QString path;
    QVariant expected;
  } cases[] = {
      {QStringLiteral("name"), QStringLiteral("root")},
      {QStringLiteral("child.n"), 1},
      {QStringLiteral("map.n"), 2},
      {QStringLiteral("list.n"), QVariantList{1, 2, null, null}},
      {QStringLiteral("list.n.more"), QVariantList{null, null, null, null}},
      {QStringLiteral("missing"), {}},
      {QStringLiteral("missing.n"), {}},
      {QStringLiteral("child.missing.n"), {}},
      {QStringLiteral("name.length"), {}},
      {QStringLiteral("none.n"), {}},
      {QString(), {}},
  };
  for (const auto& [path, expected] : cases) {
    EXPECT_EQ(valueForKeyPath(root, path), expected) << path.toStdString();
    EXPECT_EQ(root.value<ObjectRef>()->valueForKeyPath(path), expected) << path.toStdString();
  }
}

}  // namespace
}  // namespace kelvar

#include "archive/ArchiveTree.h"

#include <gtest/gtest.h>

#include "archive/Graph.h"
#include "platform/Values.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

TEST(ArchiveTreeTest, ConvertsAsCoderWouldWrite) {
  const auto data = std::make_shared<MutableData>("\1\2");
  const QVariantMap graph{{u"date"_s, QDateTime::fromMSecsSinceEpoch(-12345678, Qt::UTC)},
                          {u"bytes"_s, QByteArray("\0", 1)},
                          {u"null"_s, QVariant::fromValue(nullptr)},
                          {u"mutable"_s, QVariantList{boxed(data), boxed(data)}},
                          {u"string"_s, boxed(std::make_shared<MutableString>(u"s"_s))},
                          {u"numbers"_s, QVariantList{true, qlonglong(1), 1.0}},
                          {u"map"_s, QVariantMap{{u"null"_s, QVariant::fromValue(nullptr)}}}};
  const QVariant json = HRCoder::archivedJSONWithRootObject(graph);
  const QVariant plist = HRCoder::archivedPlistWithRootObject(graph);
  EXPECT_TRUE(identical(jsonArchiveTree(plist), json));
  EXPECT_TRUE(identical(propertyListArchiveTree(json), plist));
  EXPECT_TRUE(identical(jsonArchiveTree(json), json));
  EXPECT_TRUE(identical(propertyListArchiveTree(plist), plist));
}

TEST(ArchiveTreeTest, KeepsDictionariesThatOnlyLookLikeValues) {
  for (const QVariantMap& map :
       {QVariantMap{{u"$class"_s, u"NSDate"_s}},
        QVariantMap{{u"$class"_s, u"NSDate"_s}, {u"NS.time"_s, 1e300}},
        QVariantMap{{u"$class"_s, u"NSDate"_s}, {u"NS.time"_s, 1.0}, {u"more"_s, 1}},
        QVariantMap{{u"$class"_s, u"Other"_s}, {u"$data"_s, u"AQI="_s}},
        QVariantMap{{u"$class"_s, u"NSData"_s}, {u"$data"_s, u"AQI"_s}},
        QVariantMap{{u"$class"_s, u"NSData"_s}, {u"$data"_s, u"?"_s}}}) {
    EXPECT_TRUE(identical(propertyListArchiveTree(map), map));
  }
}

TEST(ArchiveTreeTest, ResolvesAliases) {
  QVariantMap tree{{u"list"_s, QVariantList{QVariantMap{{u"k"_s, 1}}, 5}},
                   {u"a"_s, QVariantMap{{u"x"_s, 2}, {u"b"_s, QVariantMap{{u"e"_s, 6}}}}},
                   {u"a.b"_s, QVariantMap{{u"c.d"_s, 3}, {u"e"_s, 7}}},
                   {u""_s, QVariantMap{{u""_s, 4}}}};
  const struct {
    QString path;
    QVariant found;
  } cases[] = {{u"list.0.k"_s, 1},       {u"list.1"_s, 5},   {u"list.2"_s, {}}, {u"list.k"_s, {}},
               {u"list.-1"_s, {}},       {u"list.01"_s, {}}, {u"a.x"_s, 2},     {u"a.b.c.d"_s, 3},
               {u"a.b.c"_s, {}},         {u"a.b.e"_s, 6},    {u"."_s, 4},       {u".."_s, {}},
               {u"list.0.k.more"_s, {}}, {u"lis"_s, {}},     {u"$root"_s, {}}};
  QVariantList aliases;
  for (const auto& row : cases) aliases.append(QVariantMap{{u"$alias"_s, row.path}});
  tree.insert(u"\U0001F600aliases"_s, aliases);
  const QHash<QString, QVariant> targets = archiveAliasTargets(tree);
  for (const auto& [path, found] : cases) {
    const QVariant expected = path == u"$root" ? QVariant(tree) : found;
    EXPECT_EQ(targets.value(path), expected) << path.toStdString();
    EXPECT_EQ(targets.contains(path), expected.isValid()) << path.toStdString();
  }
}

}  // namespace
}  // namespace kelvar

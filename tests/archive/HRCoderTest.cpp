#include "archive/HRCoder.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QPoint>
#include <QTemporaryDir>
#include <QUrl>
#include <climits>
#include <cmath>
#include <thread>

#include "archive/Graph.h"
#include "archive/HRCoderAliasPlaceholder.h"
#include "platform/LogCapture.h"
#include "platform/Values.h"
#include "platform/plist/Json.h"
#include "platform/plist/PropertyList.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

/// A decodable class with all types of keys.
class Part : public Object {
 public:
  static std::shared_ptr<Part> initWithCoder(Coder& coder);
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }
  void encodeWithCoder(Coder& coder) const override {
    coder.encodeObject(name_, u"name"_s);
    coder.encodeObject(toVariant(next_), u"next"_s);
    coder.encodeConditionalObject(toVariant(owner_), u"owner"_s);
    coder.encodeInt(count_, u"count"_s);
  }

  QString name() const { return name_; }
  void setName(const QString& name) { name_ = name; }
  ObjectRef next() const { return next_; }
  void setNext(const ObjectRef& next) { next_ = next; }
  ObjectRef owner() const { return owner_; }
  void setOwner(const ObjectRef& owner) { owner_ = owner; }

  int count_ = 0;

 private:
  QString name_;
  ObjectRef next_, owner_;
};

const ClassInfo& Part::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Part>("Part")
          .property("name", &Part::name, &Part::setName, "A property.")
          .property("next", &Part::next, &Part::setNext, "A property.")
          .property("owner", &Part::owner, &Part::setOwner, "A property.")
          .decodable();
  return kClass;
}

std::shared_ptr<Part> Part::initWithCoder(Coder& coder) {
  auto part = std::make_shared<Part>();
  part->name_ = coder.decodeObject(u"name"_s).toString();
  // Does not keep the placeholder, so that fixing up the alias finds nothing there and writes.
  part->next_ = as<Part>(coder.decodeObject(u"next"_s));
  part->owner_ = as<MutableDictionary>(coder.decodeObject(u"owner"_s));
  part->count_ = coder.decodeInt(u"count"_s);
  return part->name_ == u"unreadable" ? nullptr : part;
}

/// Archived as a part that another object writes, and replaced when it is read.
class Stand : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }
  static std::shared_ptr<Stand> initWithCoder(Coder&) { return std::make_shared<Stand>(); }
  QString classForCoder() const override { return silent ? u"Part"_s : u"Stand"_s; }
  ObjectRef replacementObjectForCoder(Coder&) override {
    if (silent) return nullptr;
    auto part = std::make_shared<Part>();
    part->setName(u"replacement"_s);
    return part;
  }
  ObjectRef awakeAfterUsingCoder(Coder& coder) override {
    auto part = std::make_shared<Part>();
    part->setName(coder.decodeObject(u"name"_s).toString() + u", awake"_s);
    return part;
  }
  bool silent = false;
};

const ClassInfo& Stand::staticClassInfo() {
  static const ClassInfo kClass = ClassInfoBuilder<Stand>("Stand").decodable();
  return kClass;
}

class Secret : public Object {
 public:
  static const ClassInfo& staticClassInfo() {
    static const ClassInfo kClass = ClassInfoBuilder<Secret>("Secret").initializer(
        "init", [] { return std::make_shared<Secret>(); }, "Creates one.");
    return kClass;
  }
  const ClassInfo& classInfo() const override { return staticClassInfo(); }
};

const ClassInfo::Registration kRegistered[] = {ClassInfo::Registration(&Part::staticClassInfo),
                                               ClassInfo::Registration(&Stand::staticClassInfo),
                                               ClassInfo::Registration(&Secret::staticClassInfo)};

QVariant json(const QByteArray& text) { return Json::read(text).value(); }

/// The JSON archive of a graph.
QByteArray archived(const QVariant& root) {
  return Json::write(HRCoder::archivedJSONWithRootObject(root)).value();
}

const QVariant kNull = QVariant::fromValue(nullptr);
const QVariantMap kNullObject{{u"$class"_s, u"NSNull"_s}};
const QDateTime kDate = QDateTime::fromMSecsSinceEpoch(978307200500, Qt::UTC);

QVariantMap object(const QString& className, QVariantMap entries) {
  entries.insert(u"$class"_s, className);
  return entries;
}

TEST(HRCoderTest, WritesEachValueTypeInEachFormat) {
  const auto string = std::make_shared<MutableString>(u"s"_s);
  const auto data = std::make_shared<Data>("\1\2");
  const auto mutableData = std::make_shared<MutableData>("\1\2");
  const QVariantMap map{{u"a"_s, true}, {u"none"_s, {}}, {u"string"_s, QString()}};
  const QVariantMap nothing;  // What was written when the root is none.
  const struct {
    QVariant value, plist, json;
  } cases[] = {
      {u"text"_s, u"text"_s, u"text"_s},
      {u""_s, u""_s, u""_s},
      {true, true, true},
      {1, 1, 1},
      {1.0, 1.0, 1.0},
      {0.5f, 0.5f, 0.5f},
      {~qulonglong(0), ~qulonglong(0), ~qulonglong(0)},
      {kDate, kDate, object(u"NSDate"_s, {{u"NS.time"_s, 0.5}})},
      {kNull, kNullObject, kNull},
      {QUrl(u"https://x.test/ö a"_s),
       object(u"NSURL"_s, {{u"NS.relative"_s, u"https://x.test/%C3%B6%20a"_s}}),
       object(u"NSURL"_s, {{u"NS.relative"_s, u"https://x.test/%C3%B6%20a"_s}})},
      {QByteArray("\1\2"), QByteArray("\1\2"), object(u"NSData"_s, {{u"$data"_s, u"AQI="_s}})},
      {boxed(data), QByteArray("\1\2"), object(u"NSData"_s, {{u"$data"_s, u"AQI="_s}})},
      {boxed(mutableData), object(u"NSMutableData"_s, {{u"NS.data"_s, QByteArray("\1\2")}}),
       object(u"NSMutableData"_s, {{u"$data"_s, u"AQI="_s}})},
      {boxed(string), object(u"NSMutableString"_s, {{u"NS.string"_s, u"s"_s}}),
       object(u"NSMutableString"_s, {{u"NS.string"_s, u"s"_s}})},
      {QVariantList{1, kNull}, QVariantList{1, kNullObject}, QVariantList{1, kNull}},
      {boxed(newList({1, kNull})), QVariantList{1, kNullObject}, QVariantList{1, kNull}},
      {QStringList{u"a"_s}, QVariantList{u"a"_s}, QVariantList{u"a"_s}},
      {map, QVariantMap{{u"a"_s, true}}, QVariantMap{{u"a"_s, true}}},
      {boxed(newMap(map)), QVariantMap{{u"a"_s, true}}, QVariantMap{{u"a"_s, true}}},
      {boxed(std::make_shared<Secret>()), object(u"Secret"_s, {}), object(u"Secret"_s, {})},
      {{}, nothing, nothing},
      {QString(), nothing, nothing},
      {QDateTime(), nothing, nothing},
      {QUrl(), nothing, nothing},
      {boxed(nullptr), nothing, nothing},
      {QPoint(1, 2), {}, {}},
      {QVariantList{QVariant()}, {}, {}},
  };
  for (const auto& [value, plist, inJson] : cases) {
    EXPECT_TRUE(identical(HRCoder::archivedPlistWithRootObject(value), plist)) << value.typeName();
    EXPECT_TRUE(identical(HRCoder::archivedJSONWithRootObject(value), inJson)) << value.typeName();
  }
}

TEST(HRCoderTest, RoundTrips) {
  auto part = std::make_shared<Part>();
  part->setName(u"p"_s);
  part->count_ = -3;
  const QVariantMap values{{u"text"_s, u"t"_s},
                           {u"true"_s, true},
                           {u"one"_s, qlonglong(1)},
                           {u"real"_s, 1.0},
                           {u"date"_s, kDate},
                           {u"null"_s, kNull},
                           {u"url"_s, QUrl(u"https://x.test/%20ö"_s)},
                           {u"bytes"_s, QByteArray("\0\xff", 2)},
                           {u"mutable"_s, boxed(std::make_shared<MutableData>("m"))},
                           {u"string"_s, boxed(std::make_shared<MutableString>(u"s"_s))},
                           {u"part"_s, boxed(part)},
                           {u"list"_s, QVariantList{QVariantList(), QVariantMap()}},
                           {u""_s, boxed(part)}};
  for (const int format : {HRCoder::kXml, HRCoder::kJson, HRCoder::kBinary}) {
    const auto data = std::make_shared<MutableData>();
    const auto coder = HRCoder::initForWritingWithMutableData(data);
    coder->setOutputFormat(format);
    coder->encodeRootObject(values);
    ASSERT_TRUE(coder->finishEncoding());
    EXPECT_FALSE(coder->data());
    const auto root = as<MutableDictionary>(HRCoder::unarchiveObjectWithData(data->bytes()));
    ASSERT_TRUE(root) << data->bytes().constData();
    ASSERT_EQ(root->values().keys(), values.keys());
    EXPECT_FALSE(root->values().firstKey().isNull());
    for (const auto& key : {u"text"_s, u"true"_s, u"one"_s, u"real"_s, u"null"_s, u"url"_s}) {
      EXPECT_TRUE(identical(root->valueForKey(key), values.value(key))) << key.toStdString();
    }
    const QDateTime date = root->valueForKey(u"date"_s).toDateTime();
    EXPECT_EQ(date, format == HRCoder::kXml ? kDate.addMSecs(-500) : kDate);
    EXPECT_EQ(as<Data>(root->valueForKey(u"bytes"_s))->bytes(), QByteArray("\0\xff", 2));
    EXPECT_FALSE(as<MutableData>(root->valueForKey(u"bytes"_s)));
    EXPECT_EQ(as<MutableData>(root->valueForKey(u"mutable"_s))->bytes(), QByteArray("m"));
    EXPECT_EQ(as<MutableString>(root->valueForKey(u"string"_s))->string(), u"s"_s);
    const auto read = as<Part>(root->valueForKey(u"part"_s));
    EXPECT_EQ(read->name(), u"p"_s);
    EXPECT_EQ(read->count_, -3);
    EXPECT_EQ(as<Part>(root->valueForKey(u""_s)), read) << "an alias to the empty key";
    EXPECT_TRUE(as<MutableArray>(as<MutableArray>(root->valueForKey(u"list"_s))->values()[0]));
    EXPECT_TRUE(as<MutableDictionary>(as<MutableArray>(root->valueForKey(u"list"_s))->values()[1]));
  }
}

TEST(HRCoderTest, WritesSharedObjectsOnce) {
  const auto map = newMap({{u"k"_s, 1}});
  const auto string = std::make_shared<MutableString>(u"s"_s);
  const auto data = std::make_shared<Data>("d");
  const QVariant two = boxed(map), text = u"same"_s;
  const struct {
    QVariant value;
    QByteArray tree;
  } cases[] = {
      {boxed(newList({two, two})), R"([{"k":1},{"$alias":"0"}])"},
      {QVariantMap{{u"items"_s, QVariantList{two, two}}},
       R"({"items":[{"k":1},{"$alias":"items.0"}]})"},
      {QVariantMap{{u"a"_s, QVariantMap{{u"b"_s, two}}}, {u"c"_s, two}},
       R"({"a":{"b":{"k":1}},"c":{"$alias":"a.b"}})"},
      {QVariantMap{{QString(), two}, {u"c"_s, two}}, R"({"":{"k":1},"c":{"$alias":""}})"},
      {QVariantList{text, text, 7, 7, kNull, kNull}, R"(["same","same",7,7,null,null])"},
      {QVariantList{u"e"_s, QString(u"e"_s)}, R"(["e","e"])"},
      {QVariantList{boxed(string), boxed(string)},
       R"([{"$class":"NSMutableString","NS.string":"s"},{"$alias":"0"}])"},
      {QVariantList{boxed(data), boxed(data)},
       R"([{"$class":"NSData","$data":"ZA=="},{"$alias":"0"}])"},
      {QVariantList{boxed(newMap()), boxed(newMap())}, "[{},{}]"},
  };
  for (const auto& [value, tree] : cases) {
    EXPECT_EQ(archived(value), tree);
    // Sharing survives reading and writing.
    EXPECT_EQ(archived(HRCoder::unarchiveObjectWithPlistOrJSON(json(tree))), tree);
  }
  const auto list = as<MutableArray>(HRCoder::unarchiveObjectWithPlistOrJSON(json(cases[0].tree)));
  EXPECT_EQ(as<Object>(list->values()[0]), as<Object>(list->values()[1]));
}

TEST(HRCoderTest, KeepsCycles) {
  const auto map = newMap();
  map->setValueForKey(boxed(map), u"self"_s);
  EXPECT_TRUE(identical(HRCoder::archivedJSONWithRootObject(boxed(map)),
                        json(R"({"self":{"$alias":"$root"}})")));
  takeApart(boxed(map));

  const QByteArray trees[] = {
      R"({"self":{"$alias":"$root"}})", R"([{"$alias":"$root"},{"up":{"$alias":"1"}}])",
      R"({"a":{"$alias":"b.0"},"b":[{"me":{"$alias":"b.0"}},{"$alias":"b"}]})",
      R"({"$class":"Part","count":1,"name":"one","next":{"$class":"Part","count":2,"name":"two","next":{"$alias":"$root"}}})",
      R"({"a":{"$class":"Part","count":0,"name":"n","owner":{"$alias":"$root"}}})"};
  const QByteArray rewritten = R"({"a":{"me":{"$alias":"a"}},"b":[{"$alias":"a"},{"$alias":"b"}]})";
  for (const QByteArray& tree : trees) {
    const QVariant root = HRCoder::unarchiveObjectWithPlistOrJSON(json(tree));
    EXPECT_EQ(archived(root), &tree == &trees[2] ? rewritten : tree);
    if (const auto part = as<Part>(root)) as<Part>(toVariant(part->next()))->setNext(nullptr);
    takeApart(root);
  }
}

TEST(HRCoderTest, ResolvesForwardAliases) {
  const QString placeholder = HRCoderAliasPlaceholder::placeholder()->description();
  EXPECT_EQ(placeholder, u"<HRCoderAliasPlaceholder>"_s);
  const struct {
    QByteArray tree;
    QVariant expected;
  } cases[] = {
      {R"({"a":{"$alias":"z"},"z":"text"})", json(R"({"a":"text","z":"text"})")},
      {R"({"a":"text","z":{"$alias":"a"}})", json(R"({"a":"text","z":"text"})")},
      {R"({"a":[{"$alias":"z.0.k"},2],"z":[{"k":[3]}]})",
       json(R"({"a":[[3],2],"z":[{"k":{"$alias":"a.0"}}]})")},
      {R"({"a":{"$alias":"missing"},"b":1})", json(R"({"b":1})")},
      {R"([{"$alias":"missing"},1])", json("[null,1]")},
      {R"({"a":{"$alias":"b"},"b":{"$alias":"a"}})", json("{}")},
      {R"({"a":{"$alias":"a"}})", json("{}")},
      {R"({"a":{"$alias":7},"b":{"$alias":null}})", json("{}")},
      {R"({"$alias":"a"})", json(R"({"$alias":"a"})")},
      {R"({"p":[{"$alias":"q"},{"$class":"Nobody"}],"q":1})", json(R"({"q":1})")},
      {R"({"p":{"$class":"Part","name":"unreadable","next":{"$alias":"q"}},"q":1})",
       json(R"({"q":1})")},
  };
  for (const auto& [tree, expected] : cases) {
    const QVariant root = HRCoder::unarchiveObjectWithPlistOrJSON(json(tree));
    EXPECT_TRUE(identical(HRCoder::archivedJSONWithRootObject(root), expected)) << tree.constData();
  }
}

TEST(HRCoderTest, CreatesOnlyDecodableClasses) {
  const struct {
    QByteArray tree;
    QVariant expected;  // As it is archived again.
  } cases[] = {
      {R"({"$class":"Nobody"})", {}},
      {R"({"$class":"Secret"})", {}},
      {R"({"$class":"KVShape"})", {}},
      {R"({"$class":"NSObject"})", {}},
      {R"({"$class":"HRCoderAliasPlaceholder"})", {}},
      {R"({"$class":7})", {}},
      {R"({"$class":null})", {}},
      {R"({"$class":"NSMutableArray"})", {}},
      {R"({"a":{"$class":"Secret"},"b":1})", json(R"({"b":1})")},
      {R"({"a":[1,{"$class":"Secret"}],"b":1})", json(R"({"b":1})")},
      {R"([{"$class":"Secret"}])", {}},
      {R"({"$class":"NSDate"})", {}},
      {R"({"$class":"NSDate","NS.time":1e300})", {}},
      {R"({"$class":"NSURL","NS.relative":":"})", {}},
      {R"({"$class":"NSNull"})", kNull},
      {R"({"$class":"NSMutableString","NS.string":5})", {}},
      {R"({"$data":"AQI="})", json(R"({"$class":"NSData","$data":"AQI="})")},
      {R"({"$class":"NSMutableData","$data":""})",
       json(R"({"$class":"NSMutableData","$data":""})")},
      {R"({"$class":"NSData","$data":"AQI"})", {}},
      {R"({"$class":"NSData","$data":"AQ I="})", {}},
      {R"({"$class":"NSData","$data":7})", {}},
      {R"({"$class":"Part","$data":"AQI="})", {}},
  };
  for (const auto& [tree, expected] : cases) {
    const QVariant root = HRCoder::unarchiveObjectWithPlistOrJSON(json(tree));
    EXPECT_EQ(root.isValid(), expected.isValid()) << tree.constData();
    if (!root.isValid()) continue;
    EXPECT_TRUE(identical(HRCoder::archivedJSONWithRootObject(root), expected)) << tree.constData();
  }
}

TEST(HRCoderTest, SubstitutesObjects) {
  const auto stand = std::make_shared<Stand>();
  const QVariant tree = HRCoder::archivedJSONWithRootObject(boxed(stand));
  EXPECT_TRUE(
      identical(tree, object(u"Stand"_s, {{u"name"_s, u"replacement"_s}, {u"count"_s, 0}})));
  EXPECT_EQ(as<Part>(HRCoder::unarchiveObjectWithPlistOrJSON(tree))->name(),
            u"replacement, awake"_s);
  stand->silent = true;
  EXPECT_TRUE(identical(HRCoder::archivedJSONWithRootObject(boxed(stand)), object(u"Part"_s, {})));
}

TEST(HRCoderTest, WritesConditionalObjectsOnlyIfAlreadyPresent) {
  const auto owner = newMap();
  auto part = std::make_shared<Part>();
  part->setName(u"n"_s);
  part->setOwner(owner);
  EXPECT_FALSE(HRCoder::archivedJSONWithRootObject(boxed(part)).toMap().contains(u"owner"_s));
  owner->setValueForKey(boxed(part), u"part"_s);
  const QVariantMap tree = HRCoder::archivedJSONWithRootObject(boxed(owner)).toMap();
  EXPECT_EQ(tree.value(u"part"_s).toMap().value(u"owner"_s),
            QVariant(json(R"({"$alias":"$root"})")));
  HRCoder coder;
  coder.encodeObject(u"text"_s, u"a"_s);
  coder.encodeConditionalObject(u"text"_s, u"b"_s);
  EXPECT_EQ(coder.stack(), QVariantList{QVariant(QVariantMap{{u"a"_s, u"text"_s}})});
  takeApart(boxed(owner));
}

TEST(HRCoderTest, WritesAndReadsScalarsByKey) {
  const QByteArray bytes("\0\1\xff", 3);
  for (const int format : {HRCoder::kXml, HRCoder::kJson, HRCoder::kBinary}) {
    const auto data = std::make_shared<MutableData>("before");
    const auto writer = HRCoder::initForWritingWithMutableData(data);
    EXPECT_TRUE(writer->allowsKeyedCoding());
    writer->setOutputFormat(format);
    writer->encodeBool(true, u"bool"_s);
    writer->encodeInt(INT_MIN, u"int"_s);
    writer->encodeInt32(INT_MAX, u"int32"_s);
    writer->encodeInt64(LLONG_MIN, u"int64"_s);
    writer->encodeFloat(0.1f, u"float"_s);
    writer->encodeDouble(0.1, u"double"_s);
    writer->encodeBytes(bytes, u"bytes"_s);
    writer->encodeBytes(bytes, u"again"_s);
    writer->encodeObject({}, u"none"_s);
    const QVariantMap top = writer->stack().last().toMap();
    EXPECT_TRUE(identical(top.value(u"bool"_s), true));
    EXPECT_TRUE(identical(top.value(u"int"_s), INT_MIN));
    EXPECT_TRUE(identical(top.value(u"int64"_s), qlonglong(LLONG_MIN)));
    EXPECT_TRUE(identical(top.value(u"float"_s), 0.1f));
    ASSERT_TRUE(writer->finishEncoding());
    EXPECT_EQ(writer->stack(), QVariantList{QVariant(QVariantMap())});

    const auto reader = HRCoder::initForReadingWithData(data->bytes());
    EXPECT_EQ(reader->outputFormat(), format);
    EXPECT_TRUE(reader->decodeBool(u"bool"_s));
    EXPECT_EQ(reader->decodeInt(u"int"_s), INT_MIN);
    EXPECT_EQ(reader->decodeInt32(u"int32"_s), INT_MAX);
    EXPECT_EQ(reader->decodeInt64(u"int64"_s), LLONG_MIN);
    EXPECT_EQ(reader->decodeFloat(u"float"_s), 0.1f);
    EXPECT_EQ(reader->decodeDouble(u"double"_s), 0.1);
    EXPECT_EQ(reader->decodeBytes(u"bytes"_s), bytes);
    EXPECT_EQ(reader->decodeBytes(u"again"_s), bytes);
    EXPECT_TRUE(reader->containsValueForKey(u"int"_s));
    EXPECT_FALSE(reader->containsValueForKey(u"none"_s));
    EXPECT_EQ(reader->decodeInt64(u"none"_s), 0);
    EXPECT_FALSE(reader->decodeBool(u"none"_s));
    EXPECT_EQ(reader->decodeDouble(u"none"_s), 0);
    EXPECT_EQ(reader->decodeBytes(u"none"_s), QByteArray());
    EXPECT_FALSE(reader->decodeObject(u"none"_s).isValid());
  }
}

TEST(HRCoderTest, ConvertsScalarsAsNeeded) {
  const struct {
    QVariant value;
    bool asBool;
    int32_t asInt, asInt32;
    int64_t asInt64;
    double asDouble;
  } cases[] = {
      {true, true, 1, 1, 1, 1},
      {qlonglong(0x100000002), true, 2, 2, 0x100000002, 4294967298.0},
      {-1.9, true, -1, -1, -1, -1.9},
      {1e300, true, INT_MAX, -1, LLONG_MAX, 1e300},
      {double(NAN), true, 0, 0, 0, NAN},
      {u" -12x"_s, true, -12, -12, -12, -12},
      {u"+2.5e1"_s, true, 2, 2, 2, 25},
      {u"YES"_s, true, 0, 0, 0, 0},
      {u"no"_s, false, 0, 0, 0, 0},
      {u"00"_s, false, 0, 0, 0, 0},
      {u"99999999999999999999"_s, true, INT_MAX, -1, LLONG_MAX, 1e20},
      {kNull, false, 0, 0, 0, 0},
      {QVariantList{1}, false, 0, 0, 0, 0},
  };
  for (const auto& [value, asBool, asInt, asInt32, asInt64, asDouble] : cases) {
    HRCoder coder;
    coder.setStack({QVariantMap{{u"k"_s, value}}});
    const std::string what = value.toString().toStdString();
    EXPECT_EQ(coder.decodeBool(u"k"_s), asBool) << what;
    EXPECT_EQ(coder.decodeInt(u"k"_s), asInt) << what;
    EXPECT_EQ(coder.decodeInt32(u"k"_s), asInt32) << what;
    EXPECT_EQ(coder.decodeInt64(u"k"_s), asInt64) << what;
    EXPECT_TRUE(identical(coder.decodeDouble(u"k"_s), asDouble)) << what;
  }
}

TEST(HRCoderTest, RejectsOtherFormats) {
  const auto data = std::make_shared<MutableData>("before");
  for (const int format : {3, -1}) {
    const auto coder = HRCoder::initForWritingWithMutableData(data);
    coder->setOutputFormat(format);
    coder->encodeObject(kDate, u"date"_s);
    EXPECT_EQ(coder->stack().last().toMap().value(u"date"_s), QVariant(kDate));
    EXPECT_TRUE(coder->finishEncoding());
    EXPECT_EQ(data->bytes(), QByteArray("before"));
    EXPECT_FALSE(coder->data());
  }
}

TEST(HRCoderTest, FailedWriteLeavesTargetAlone) {
  const auto data = std::make_shared<MutableData>("before");
  const QVariant values[] = {u"\u0001"_s, QVariantList{QVariant()}};
  for (const QVariant& value : values) {
    const auto coder = HRCoder::initForWritingWithMutableData(data);
    coder->encodeRootObject(value);
    EXPECT_FALSE(coder->finishEncoding());
    EXPECT_EQ(data->bytes(), QByteArray("before"));
    EXPECT_TRUE(HRCoder::archivedDataWithRootObject(value).isNull());
  }
  const auto coder = HRCoder::initForWritingWithMutableData(data);
  coder->setOutputFormat(HRCoder::kJson);
  coder->encodeDouble(INFINITY, u"k"_s);
  EXPECT_FALSE(coder->finishEncoding());
  EXPECT_EQ(data->bytes(), QByteArray("before"));
}

TEST(HRCoderTest, ThrowsForUnreadableKeys) {
  const std::string unreadable =
      "initForReadingWithData: method was unable to parse the supplied data.";
  const std::string first =
      "initForReadingWithData: method requires that the root object in the plist data is an "
      "NSDictionary. Decoding an ";
  const std::string last =
      " is not supported with this method. Try using unarchiveObjectWithData: instead.";
  const struct {
    QByteArray data;
    std::string reason;
  } cases[] = {
      {"", unreadable},
      {"{\"a\":", unreadable},
      {"<plist><true></plist>", unreadable},
      {"[1]", first + "NSMutableArray" + last},
      {"word", first + "NSString" + last},
      {"<00>", first + "NSData" + last},
      {PropertyList::write(kDate, PropertyList::Format::Xml).value(), first + "NSDate" + last},
      {PropertyList::write(true, PropertyList::Format::Binary).value(), first + "NSNumber" + last},
  };
  for (const auto& [data, reason] : cases) {
    try {
      HRCoder::initForReadingWithData(data);
      ADD_FAILURE() << data.constData();
    } catch (const ArchiveException& exception) {
      EXPECT_STREQ(exception.name(), "HRCoderException");
      EXPECT_EQ(exception.what(), reason);
    }
  }
  EXPECT_FALSE(HRCoder::initForReadingWithData({})->containsValueForKey(u"a"_s));
  EXPECT_EQ(HRCoder::initForReadingWithData("{ n = 5; }")->decodeInt(u"n"_s), 5);
  EXPECT_FALSE(HRCoder::unarchiveObjectWithData("").isValid());
  EXPECT_FALSE(HRCoder::unarchiveObjectWithData({}).isValid());
  EXPECT_FALSE(HRCoder::unarchiveObjectWithData("{\"a\":").isValid());
}

TEST(HRCoderTest, WritesFilesAtomically) {
  const QTemporaryDir dir;
  const QString path = dir.filePath(u"archive.plist"_s);
  EXPECT_TRUE(HRCoder::archiveRootObject(QVariantMap{{u"a"_s, 1}}, path));
  EXPECT_FALSE(HRCoder::archiveRootObject(u"\u0001"_s, path));
  const auto map = as<MutableDictionary>(HRCoder::unarchiveObjectWithFile(path));
  EXPECT_EQ(map->values(), (QVariantMap{{u"a"_s, 1}}));
  EXPECT_FALSE(HRCoder::archiveRootObject(1, dir.filePath(u"missing/archive.plist"_s)));
  EXPECT_FALSE(HRCoder::unarchiveObjectWithFile(dir.filePath(u"missing"_s)).isValid());
  EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{u"archive.plist"_s});
}

TEST(HRCoderTest, LimitsDepthAndLengthOfPaths) {
  EXPECT_TRUE(HRCoder::unarchiveObjectWithPlistOrJSON(nested(HRCoder::kMaxDepth)).isValid());
  EXPECT_FALSE(HRCoder::unarchiveObjectWithPlistOrJSON(nested(HRCoder::kMaxDepth + 1)).isValid());
  EXPECT_TRUE(HRCoder::archivedJSONWithRootObject(nested(HRCoder::kMaxDepth)).isValid());
  EXPECT_FALSE(HRCoder::archivedJSONWithRootObject(nested(HRCoder::kMaxDepth + 1)).isValid());
  QVariantList many;
  for (int i = 0; i < 1000; ++i) many.append(true);
  const QVariantMap wide{{QString(HRCoder::kMaxPathText / 500, u'k'), many}};
  EXPECT_FALSE(HRCoder::unarchiveObjectWithPlistOrJSON(wide).isValid());
  EXPECT_FALSE(HRCoder::archivedJSONWithRootObject(wide).isValid());

  // Long chains of aliases are released without a deep stack.
  QVariantList chain{QVariantMap()};
  for (int i = 1; i < 200000; ++i) {
    const QVariantMap alias{{u"$alias"_s, QString::number(i - 1)}};
    chain.append(QVariantMap{{u"next"_s, alias}});
  }
  QVariant root = HRCoder::unarchiveObjectWithPlistOrJSON(chain);
  ASSERT_TRUE(root.isValid());
  const QVariant lastOne = as<MutableArray>(root)->values().last();
  root = QVariant();
  EXPECT_FALSE(HRCoder::archivedJSONWithRootObject(lastOne).isValid()) << "too deep a tree";
}

TEST(HRCoderTest, DescribesItself) {
  HRCoder coder;
  const auto map = newMap({{u"list"_s, QVariantList{1}}});
  coder.setKeyPath(u"outer"_s);
  EXPECT_EQ(coder.encodedObject(boxed(map), u"map"_s), QVariant(map->values()));
  EXPECT_EQ(coder.keyPath(), u"outer"_s);
  QStringList paths = coder.knownObjects().keys();
  paths.sort();
  EXPECT_EQ(paths.join(u' '), u"outer.map outer.map.list outer.map.list.0"_s);
  EXPECT_EQ(coder.encodedObject(boxed(map), u"again"_s),
            QVariant(json(R"({"$alias":"outer.map"})")));
  coder.setKnownObjects({{u"elsewhere"_s, boxed(map)}});
  EXPECT_EQ(coder.encodedObject(boxed(map), u"again"_s),
            QVariant(json(R"({"$alias":"elsewhere"})")));
  EXPECT_FALSE(coder.encodedObject(1, QString()).isValid()) << "no key";

  coder.setKeyPath(QString());
  EXPECT_EQ(as<HRCoderAliasPlaceholder>(coder.decodeObject(json(R"({"$alias":"x"})"), u"k"_s)),
            HRCoderAliasPlaceholder::placeholder());
  EXPECT_EQ(coder.unresolvedAliases(), (QMap<QString, QString>{{u"k"_s, u"x"_s}}));
  coder.finishDecoding();
  EXPECT_TRUE(coder.knownObjects().isEmpty() && coder.unresolvedAliases().isEmpty());
  EXPECT_EQ(HRCoder::classNameKey(), u"$class"_s);
}

}  // namespace
}  // namespace kelvar

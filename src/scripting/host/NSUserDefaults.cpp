#include "scripting/host/NSUserDefaults.h"

#include <QHash>
#include <QUrl>

#include "platform/QtError.h"
#include "runtime/ClassInfo.h"
#include "runtime/checkStorable.h"
#include "runtime/raise.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Self = NSUserDefaults;

const ClassInfo::Registration kRegistered(&NSUserDefaults::staticClassInfo);

/// A slash does not occur in the names of suites, so that no two keys are the same in the store.
constexpr QStringView kSuitePrefix = u"suite:";

/// By the prefix of the keys.
QHash<QString, QVariantMap>& registered() {
  static QHash<QString, QVariantMap> kRegistered;
  return kRegistered;
}

void requireKey(const QString& key) {
  if (key.isNull()) raise(u"a key of the user's defaults must be a string, not nil"_s);
}

/// A number, or text that says one.
double numberOf(const QVariant& value) {
  return value.typeId() == QMetaType::QString ? value.toString().trimmed().toDouble()
         : isNumber(value)                    ? value.toDouble()
                                              : 0;
}

bool boolForKey(const Self& self, const QString& key) {
  const QVariant value = self.objectForKey(key);
  if (value.typeId() != QMetaType::QString) return numberOf(value) != 0;
  const QString text = value.toString().toLower();
  return text == u"yes" || text == u"true" || numberOf(value) != 0;
}

qlonglong integerForKey(const Self& self, const QString& key) {
  return integerFromReal(numberOf(self.objectForKey(key)));
}
double doubleForKey(const Self& self, const QString& key) {
  return numberOf(self.objectForKey(key));
}

QString stringForKey(const Self& self, const QString& key) {
  const QVariant value = self.objectForKey(key);
  if (value.typeId() == QMetaType::Bool) return value.toBool() ? u"1"_s : u"0"_s;
  return value.typeId() == QMetaType::QString || isNumber(value) ? value.toString() : QString();
}

/// The value if it is of this type, or nil.
template <class T>
QVariant valueForKey(const Self& self, const QString& key) {
  const QVariant value = self.objectForKey(key);
  return value.metaType() == QMetaType::fromType<T>() ? value : QVariant();
}

void setBool(Self& self, bool value, const QString& key) { self.setObject(value, key); }
void setInteger(Self& self, qlonglong value, const QString& key) { self.setObject(value, key); }
void setDouble(Self& self, double value, const QString& key) { self.setObject(value, key); }

/// Nothing is removed before it is known that everything can be stored.
void setDomain(Self&, const QVariantMap& values, const QString& name) {
  const auto suite = Self::suite(name);
  if (!suite) raise(u"a domain needs a name"_s);
  for (auto each = values.begin(); each != values.end(); ++each) {
    if (!each.key().isValidUtf16()) raise(u"a key of a domain is not valid Unicode"_s);
    if (!isNothing(each.value())) orRaise(checkStorable(each.value(), each.key()));
  }
  for (auto each = values.begin(); each != values.end(); ++each) {
    suite->setObject(each.value(), each.key());
  }
  for (const QString& key : suite->storedValues().keys()) {
    if (!values.contains(key)) suite->removeObjectForKey(key);
  }
}

ClassInfoBuilder<Self> withReaders(ClassInfoBuilder<Self> builder) {
  return std::move(builder)
      .operation("objectForKey:", &Self::objectForKey, "Returns the value, or nil.")
      .operation("valueForKey:", &Self::objectForKey, "Returns the value, or nil.")
      .operation("stringForKey:", stringForKey, "Returns a text or a number as text, or nil.")
      .operation("boolForKey:", boolForKey,
                 "Returns whether the value is true, a number other than 0, or text that says so.")
      .operation("integerForKey:", integerForKey, "Returns the whole number, or 0.")
      .operation("doubleForKey:", doubleForKey, "Returns the number, or 0.")
      .operation("floatForKey:", doubleForKey, "Returns the number, or 0.")
      .operation(
          "URLForKey:",
          [](const Self& self, const QString& key) { return QUrl(stringForKey(self, key)); },
          "Returns the URL that was stored, or nil.")
      .operation("arrayForKey:", valueForKey<QVariantList>, "Returns the list, or nil.")
      .operation("stringArrayForKey:", valueForKey<QVariantList>, "Returns the list, or nil.")
      .operation("dictionaryForKey:", valueForKey<QVariantMap>, "Returns the dictionary, or nil.")
      .operation("dataForKey:", valueForKey<QByteArray>, "Returns the bytes, or nil.")
      .operation("dictionaryRepresentation", &Self::dictionaryRepresentation,
                 "Returns all keys with their values, including registered ones.");
}

}  // namespace

const ClassInfo& NSUserDefaults::staticClassInfo() {
  static const ClassInfo kClass =
      withReaders(
          ClassInfoBuilder<Self>("NSUserDefaults")
              .initializer("init", &Self::standard, "Returns the settings of Kelvar.")
              .initializer("initWithSuiteName:", &Self::suite,
                           "Returns settings with keys of their own; nil for an empty name.")
              .classOperation("standardUserDefaults", &Self::standard,
                              "Returns the settings of Kelvar."))
          .operation("setObject:forKey:", &Self::setObject,
                     "Stores a property-list value; nil removes what was stored.")
          .operation(
              "setValue:forKey:",
              [](Self& self, const QVariant& value, const QString& key) {
                self.setObject(value, key);
                return true;
              },
              "Stores a property-list value; nil removes what was stored. Returns true.")
          .operation("setBool:forKey:", setBool, "Stores a boolean.")
          .operation("setInteger:forKey:", setInteger, "Stores a whole number.")
          .operation("setDouble:forKey:", setDouble, "Stores a number.")
          .operation("setFloat:forKey:", setDouble, "Stores a number.")
          .operation(
              "setURL:forKey:",
              [](Self& self, const QUrl& url, const QString& key) {
                self.setObject(url.isEmpty() ? QVariant() : url.toString(QUrl::FullyEncoded), key);
              },
              "Stores a URL as text; nil removes what was stored.")
          .operation(
              "persistentDomainForName:",
              [](const Self&, const QString& name) -> QVariant {
                const auto suite = Self::suite(name);
                const QVariantMap all = suite ? suite->storedValues() : QVariantMap();
                return all.isEmpty() ? QVariant() : all;
              },
              "Returns what is stored under the name of a suite, or nil.")
          .operation("setPersistentDomain:forName:", setDomain,
                     "Replaces what is stored under the name of a suite.")
          .operation(
              "removePersistentDomainForName:",
              [](Self& self, const QString& name) { setDomain(self, {}, name); },
              "Removes what is stored under the name of a suite.")
          .operation("removeObjectForKey:", &Self::removeObjectForKey, "Removes what was stored.")
          .operation("registerDefaults:", &Self::registerDefaults,
                     "Gives values for keys without a stored one, until the program ends.")
          .operation(
              "synchronize", [](Self&) { return true; },
              "Returns true, as everything is stored at once.");
  return kClass;
}

std::shared_ptr<NSUserDefaults> NSUserDefaults::standard() {
  return std::shared_ptr<NSUserDefaults>(new NSUserDefaults(u""_s));
}

std::shared_ptr<NSUserDefaults> NSUserDefaults::suite(const QString& name) {
  if (name.isEmpty()) return nullptr;
  QString escaped = name;
  escaped.replace(u'%', u"%25"_s).replace(u'/', u"%2F"_s);
  return std::shared_ptr<NSUserDefaults>(
      new NSUserDefaults(kSuitePrefix.toString() + escaped + u'/'));
}

QString NSUserDefaults::stored(const QString& key) const {
  requireKey(key);
  return prefix_ + key;
}

void NSUserDefaults::setObject(const QVariant& value, const QString& key) {
  if (isNothing(value)) return removeObjectForKey(key);
  const Result<void> written = UserDefaults::standard().store().write(value, stored(key));
  if (!written) {
    raise(u"the value for \"%1\" cannot be stored: %2"_s.arg(key, messageOf(written.error())));
  }
}

QVariant NSUserDefaults::objectForKey(const QString& key) const {
  const QVariant value = orRaise(UserDefaults::standard().store().read(stored(key)));
  return value.isValid() ? value : registered().value(prefix_).value(key);
}

void NSUserDefaults::removeObjectForKey(const QString& key) {
  orRaise(UserDefaults::standard().store().remove(stored(key)));
}

void NSUserDefaults::registerDefaults(const QVariantMap& defaults) {
  registered()[prefix_].insert(defaults);
}

QVariantMap NSUserDefaults::dictionaryRepresentation() const {
  QVariantMap all = registered().value(prefix_);
  all.insert(storedValues());
  return all;
}

QVariantMap NSUserDefaults::storedValues() const {
  QVariantMap all;
  const UserDefaults defaults = UserDefaults::standard();
  const SettingsStore& store = defaults.store();
  for (const QString& key : orRaise(store.keys())) {
    const bool isOwn = prefix_.isEmpty() ? !key.startsWith(kSuitePrefix) : key.startsWith(prefix_);
    if (isOwn) all.insert(key.mid(prefix_.size()), orRaise(store.read(key)));
  }
  return all;
}

}  // namespace kelvar

#include "scripting/foundation/SystemFunctions.h"

#include <pwd.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QProcessEnvironment>
#include <QStringDecoder>
#include <QSysInfo>
#include <QUuid>
#include <algorithm>
#include <ctime>
#include <stdexcept>

#include "platform/Bundle.h"
#include "platform/QtError.h"
#include "platform/plist/PropertyList.h"
#include "scripting/SelectorName.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

QStringConverter::Encoding encodingNamed(const QString& name) {
  static const QHash<QString, QStringConverter::Encoding> kEncodings{
      {u"UTF-8"_s, QStringConverter::Utf8},       {u"ISO-8859-1"_s, QStringConverter::Latin1},
      {u"ASCII"_s, QStringConverter::Latin1},     {u"UTF-16"_s, QStringConverter::Utf16},
      {u"UTF-16BE"_s, QStringConverter::Utf16BE}, {u"UTF-16LE"_s, QStringConverter::Utf16LE}};
  return kEncodings.value(name, QStringConverter::Utf8);
}

bool isAscii(QChar c) { return c.unicode() < 0x80; }

/// Invalid if the encoding does not have one of the characters and `isLossy` is false.
QVariant encodeText(const QString& text, const QString& encoding, bool isLossy) {
  const bool isUtf16 = encoding == u"UTF-16";
  QStringEncoder encoder(encodingNamed(encoding), isUtf16 ? QStringConverter::Flag::WriteBom
                                                          : QStringConverter::Flag::Default);
  QByteArray bytes = encoder.encode(text);
  const bool isOutside = encoding == u"ASCII" && !std::all_of(text.begin(), text.end(), isAscii);
  if ((encoder.hasError() || isOutside) && !isLossy) return {};
  if (isOutside) {
    std::replace_if(
        bytes.begin(), bytes.end(), [](char c) { return c < 0; }, '?');
  }
  return bytes.isNull() ? QByteArray("") : bytes;
}

QVariant decodeText(const QByteArray& bytes, const QString& encoding) {
  if (encoding == u"ASCII" && std::any_of(bytes.begin(), bytes.end(), [](char c) { return c < 0; }))
    return {};
  QStringDecoder decoder(encodingNamed(encoding));
  const QString text = decoder.decode(bytes);
  if (decoder.hasError()) return {};
  return text.isNull() ? u""_s : text;
}

/// Invalid for characters outside the alphabet, unless they are to be ignored.
QVariant fromBase64(const QString& text, bool ignoresOthers) {
  const auto options = ignoresOthers ? QByteArray::IgnoreBase64DecodingErrors
                                     : QByteArray::AbortOnBase64DecodingErrors;
  const auto decoded = QByteArray::fromBase64Encoding(text.toUtf8(), options);
  if (!decoded) return {};
  return decoded.decoded.isNull() ? QByteArray("") : decoded.decoded;
}

QByteArray propertyListData(const QVariant& value, bool isBinary) {
  const auto bytes = PropertyList::write(
      value, isBinary ? PropertyList::Format::Binary : PropertyList::Format::Xml);
  if (!bytes) throw std::runtime_error(bytes.error().message);
  return *bytes;
}

QVariant propertyList(const QByteArray& bytes) {
  const auto value = PropertyList::read(bytes);
  if (!value) throw std::runtime_error(value.error().message);
  return *value;
}

QVariantMap environment() {
  const QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
  QVariantMap found;
  for (const QString& name : variables.keys()) found.insert(name, variables.value(name));
  return found;
}

QVariantMap system() {
  const passwd* const user = getpwuid(getuid());
  const QString name = user ? QString::fromLocal8Bit(user->pw_name) : u"nobody"_s;
  const QString fullName =
      user ? QString::fromLocal8Bit(user->pw_gecos).section(u',', 0, 0) : QString();
  return {{u"userName"_s, name},
          {u"fullUserName"_s, fullName.isEmpty() ? name : fullName},
          {u"hostName"_s, QSysInfo::machineHostName()},
          {u"systemVersion"_s, QSysInfo::prettyProductName()},
          {u"processName"_s, QCoreApplication::applicationName()},
          {u"processId"_s, QCoreApplication::applicationPid()},
          {u"processors"_s, qint64(sysconf(_SC_NPROCESSORS_ONLN))},
          {u"memory"_s, qint64(sysconf(_SC_PHYS_PAGES)) * sysconf(_SC_PAGESIZE)},
          {u"folder"_s, QDir::currentPath()},
          {u"programFolder"_s, QCoreApplication::applicationDirPath()}};
}

/// A signal, such as that of Ctrl-C, cuts it short.
void sleep(double seconds) {
  constexpr double kLongest = 1e9;
  const double bounded = std::min(seconds, kLongest);
  const auto whole = time_t(bounded);
  const timespec duration{whole, long((bounded - double(whole)) * 1e9)};
  nanosleep(&duration, nullptr);
}

}  // namespace

const ClassInfo& SystemFunctions::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<SystemFunctions>("")
          .classOperation("encodeText", encodeText, "The text as bytes, or nothing.")
          .classOperation("decodeText", decodeText, "The bytes as text, or nothing.")
          .classOperation("fromBase64", fromBase64, "The bytes, or nothing.")
          .classOperation("propertyListData", propertyListData, "The value as a property list.")
          .classOperation("propertyList", propertyList, "The value of a property list.")
          .classOperation("homeDirectory", QDir::homePath, "The user's home folder.")
          .classOperation("temporaryDirectory", QDir::tempPath, "The folder of temporary files.")
          .classOperation("environment", environment, "The environment's variables.")
          .classOperation("hostInformation", Bundle::hostInformation,
                          "What is known of the host application.")
          .classOperation("system", system, "The user, the machine and the process.")
          .classOperation(
              "newIdentifier", [] { return QUuid::createUuid().toString(QUuid::WithoutBraces); },
              "A random identifier.")
          .classOperation("sleep", sleep, "Waits for some seconds.")
          .classOperation("nearest", nearestName, "The name that is most like another.");
  return kClass;
}

}  // namespace kelvar

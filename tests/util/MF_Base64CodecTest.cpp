#include "util/MF_Base64Codec.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstdlib>

#include "platform/LogCapture.h"

namespace kelvar {
namespace {

using Codec = MF_Base64Codec;

/// A bit-by-bit Base64 implementation.
QString spelledOut(const QByteArray& data) {
  static const QByteArray kAlphabet =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  QByteArray bits, text;
  for (const char byte : data) bits += QByteArray::number(uint8_t(byte), 2).rightJustified(8, '0');
  while (bits.size() % 6 != 0) bits += '0';
  for (qsizetype i = 0; i < bits.size(); i += 6)
    text += kAlphabet[bits.mid(i, 6).toInt(nullptr, 2)];
  while (text.size() % 4 != 0) text += '=';
  return QString::fromLatin1(text);
}

TEST(MF_Base64CodecTest, RoundTripsEveryByteAndTail) {
  QByteArray data;
  for (int i = 0; i < 256; ++i) {
    const QString text = Codec::base64StringFromData(data);
    ASSERT_EQ(text, spelledOut(data)) << i;
    ASSERT_FALSE(text.isNull());
    const QString url = base64UrlEncodedString(data);
    EXPECT_FALSE(url.contains(u'+') || url.contains(u'/') || url.contains(u'=')) << i;
    for (const QByteArray& back :
         {Codec::dataFromBase64String(text), dataWithBase64UrlEncodedString(url)}) {
      ASSERT_EQ(back, data) << i;
      ASSERT_FALSE(back.isNull());
    }
    data.append(char(i * 37));
  }
}

TEST(MF_Base64CodecTest, DecodingIsLenient) {
  const std::tuple<const char16_t*, QByteArray> cases[] = {{u"Zm9v\nYmFy", "foobar"},
                                                           {u"Zg", "f"},
                                                           {u"Zm8", "fo"},
                                                           {u"Z", ""},
                                                           {u"Zm9vY", "foo"},
                                                           {u"====", ""},
                                                           {u"=Z=g", "f"},
                                                           {u"Zg==Zg==", "f\x06`"},
                                                           {u" \tZ\r\nm9*v\x7f", "foo"},
                                                           {u"-Zm_9v", "foo"},
                                                           {u"Zm9vé", ""},
                                                           {u"é", ""},
                                                           {u"Zm9v\xd83d\xde00YmFy", ""}};
  for (const auto& [text, data] : cases) {
    const QByteArray decoded = Codec::dataFromBase64String(QString::fromUtf16(text));
    EXPECT_EQ(decoded, data) << QString::fromUtf16(text).toStdString();
    EXPECT_FALSE(decoded.isNull());
  }
  EXPECT_EQ(Codec::dataFromBase64String(QString(QChar(0)) + QStringLiteral("Zg")), "f");
}

TEST(MF_Base64CodecTest, UrlVariantDerivesPaddingFromLength) {
  const std::pair<const char*, const char*> cases[] = {
      {"-_8", "+/8="}, {"-_", "+/=="}, {"-_8=", "+/8="}, {"-_8-_", "+/8+/"}, {"-", "+"}, {"", ""}};
  for (const auto& [url, standard] : cases) {
    EXPECT_EQ(Codec::base64StringFromBase64UrlEncodedString(QLatin1String(url)),
              QLatin1String(standard));
  }
  EXPECT_EQ(Codec::base64UrlEncodedStringFromBase64String(QStringLiteral("+/8=")),
            QStringLiteral("-_8"));
  EXPECT_EQ(Codec::base64UrlEncodedStringFromBase64String(QStringLiteral("=+=/")),
            QStringLiteral("-_"));
}

TEST(MF_Base64CodecTest, StringsAreUtf8) {
  for (const QString& string : {QStringLiteral("plain"), QStringLiteral("ünï ✓ 😀"), QString(u'\0'),
                                QStringLiteral("\ufeffmarked"), QStringLiteral("")}) {
    EXPECT_EQ(base64String(string), base64String(string.toUtf8()));
    EXPECT_EQ(stringFromBase64String(base64String(string)), string) << string.toStdString();
    EXPECT_EQ(stringFromBase64UrlEncodedString(base64UrlEncodedString(string)), string);
    EXPECT_FALSE(stringFromBase64String(base64String(string)).isNull());
  }
  for (const QByteArray& bytes : {QByteArray("\xff"), QByteArray("a\xc3"), QByteArray("\xc0\x80"),
                                  QByteArray("\xed\xa0\x80")}) {
    EXPECT_TRUE(stringFromBase64String(base64String(bytes)).isNull()) << bytes.toHex().constData();
  }
}

/// Runs in a separate process with limited memory.
[[noreturn]] void failForLackOfMemory() {
  const QString text(1 << 26, u'A');
  const QByteArray data(1 << 26, 'A');
  const LogCapture log;
  const rlimit none{0, 0};
  setrlimit(RLIMIT_AS, &none);
  const bool failed =
      Codec::base64StringFromData(data).isNull() && Codec::dataFromBase64String(text).isNull();
  const QStringList expected{
      QStringLiteral("WARNING: error occured while tring to encode base 32 data: std::bad_alloc"),
      QStringLiteral("WARNING: error occured while decoding base 32 string: std::bad_alloc")};
  std::_Exit(failed && log.lines() == expected ? 0 : 1);
}

TEST(MF_Base64CodecTest, OutOfMemoryIsLoggedAndReturnsNull) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer ends a program that asks for too much";
#endif
  EXPECT_EXIT(failForLackOfMemory(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace kelvar

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QRectF>
#include <QRegularExpression>
#include <QSet>
#include <cstdio>

#include "geometry/KVRect.h"

namespace kelvar {
namespace {

/// The classes, functions and constants that headers in the source tree mark as exported.
QSet<QString> promisedNames() {
  static const QRegularExpression kMarked[] = {
      QRegularExpression(QStringLiteral(R"((?:class|struct)\s+KELVAR_EXPORT\s+(\w+))")),
      QRegularExpression(QStringLiteral(R"(KELVAR_EXPORT\s+[^;{(]*?(\w+)\s*[(\[;])"))};
  QSet<QString> names;
  QDirIterator headers(QStringLiteral(KELVAR_SOURCE_DIR), {QStringLiteral("*.h")}, QDir::Files,
                       QDirIterator::Subdirectories);
  while (headers.hasNext()) {
    QFile file(headers.next());
    if (!file.open(QIODevice::ReadOnly)) continue;
    const QString text = QString::fromUtf8(file.readAll());
    for (const QRegularExpression& marked : kMarked) {
      for (const auto& match : marked.globalMatch(text)) names.insert(match.captured(1));
    }
  }
  return names;
}

/// The dynamic symbols that the library defines, demangled, prefixed with the letter from `nm`.
QStringList exportedSymbols() {
  FILE* const pipe = popen("nm -DC --defined-only --format=posix '" KELVAR_LIBRARY "'", "r");
  if (!pipe) return {};
  QByteArray text;
  for (int c = 0; (c = std::fgetc(pipe)) != EOF;) text.append(char(c));
  return pclose(pipe) == 0 ? QString::fromUtf8(text).split(u'\n', Qt::SkipEmptyParts)
                           : QStringList();
}

TEST(LibraryTest, ExportsPlainCNames) {
  void* const library = dlopen(KELVAR_LIBRARY, RTLD_NOW | RTLD_LOCAL);
  ASSERT_TRUE(library) << dlerror();
  const auto number = static_cast<const double*>(dlsym(library, "KelvarVersionNumber"));
  const auto string = static_cast<const char*>(dlsym(library, "KelvarVersionString"));
  const auto make =
      reinterpret_cast<KVRectRef (*)(double, double, double, double)>(dlsym(library, "KVRectMake"));
  const auto fromRect = reinterpret_cast<KVRectRef (*)(QRectF)>(dlsym(library, "KVRectFromCGRect"));
  const auto fit =
      reinterpret_cast<QRectF (*)(QSizeF, QRectF)>(dlsym(library, "CGRectAspectFittingSize"));
  ASSERT_TRUE(number && string && make && fromRect && fit);
  EXPECT_EQ(*number, 1.0);
  EXPECT_STREQ(string, "@(#)PROGRAM:Kelvar  PROJECT:Kelvar-1\n");
  const struct {
    const char* name;
    const char* text;
  } keys[] = {{"HRCoderClassNameKey", "$class"},
              {"HRCoderRootObjectKey", "$root"},
              {"HRCoderObjectAliasKey", "$alias"},
              {"HRCoderBase64DataKey", "$data"},
              {"HRCoderException", "HRCoderException"},
              {"TrackerManagerEventSessionEnded", "Session Ended"}};
  for (const auto& [name, text] : keys) {
    const auto key = static_cast<const char*>(dlsym(library, name));
    ASSERT_TRUE(key) << name;
    EXPECT_STREQ(key, text);
  }
  EXPECT_EQ(make(1.5, 2, 3, 4)->description(), QStringLiteral("{1.5, 2, 3, 4}"));
  EXPECT_EQ(fromRect({1, 2, 3, 4})->description(), QStringLiteral("{1, 2, 3, 4}"));
  EXPECT_EQ(fit({200, 100}, {50, 50, 100, 100}), QRectF(0, 25, 100, 50));
}

TEST(LibraryTest, ExportsOnlyWhatHeadersDeclare) {
  const QSet<QString> promised = promisedNames();
  ASSERT_TRUE(promised.contains(QStringLiteral("KVShape"))) << "a class";
  ASSERT_TRUE(promised.contains(QStringLiteral("stringFromPoint"))) << "a function";
  ASSERT_TRUE(promised.contains(QStringLiteral("KelvarVersionString"))) << "a constant";
  const QStringList symbols = exportedSymbols();
  ASSERT_GT(symbols.size(), promised.size());
  // "kelvar::warp::name..." anywhere, e.g. in "vtable for kelvar::KVRect".
  static const QRegularExpression kOurs(QStringLiteral(R"(kelvar::(?:warp::)?(~?\w+|\(anon))"));
  static const QRegularExpression kLine(QStringLiteral("^(.*) ([A-Zuvw])(?: [0-9a-f]+)*$"));
  for (const QString& symbol : symbols) {
    const auto line = kLine.match(symbol);
    const QString name = line.captured(1);
    if (name.startsWith(u"__odr_asan.")) continue;  // The address sanitizer's own.
    const bool merged = QStringLiteral("WVu").contains(line.captured(2));
    const auto ours = kOurs.match(name);
    // Template instances from other libraries are emitted wherever they are used, and merged.
    if (merged && !(ours.hasMatch() && !name.first(ours.capturedStart()).contains(u'<'))) continue;
    const QString word = ours.hasMatch() ? ours.captured(1) : name.section(u'(', 0, 0);
    EXPECT_TRUE(promised.contains(word)) << symbol.toStdString();
  }
}

}  // namespace
}  // namespace kelvar

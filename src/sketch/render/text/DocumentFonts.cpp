#include "sketch/render/text/DocumentFonts.h"

#include <QDir>
#include <QFontDatabase>
#include <QGuiApplication>

#include "platform/QtError.h"
#include "sketch/document/DocumentFiles.h"
#include "sketch/document/SketchDocument.h"
#include "sketch/render/text/FontMatcher.h"

namespace kelvar::render {
namespace {

constexpr qsizetype kMaxFontBytes = qsizetype{64} << 20;
constexpr int kMaxFonts = 100;

QStringList& addedFiles() {
  static QStringList files;
  return files;
}

}  // namespace

Result<void> DocumentFonts::addFolder(const QString& folder) {
  const QDir dir(folder);
  const QStringList names =
      dir.entryList({QStringLiteral("*.ttf"), QStringLiteral("*.otf"), QStringLiteral("*.ttc")},
                    QDir::Files, QDir::Name);
  if (names.isEmpty()) {
    return failure(Error::Kind::NotFound,
                   QStringLiteral("there are no fonts (.ttf, .otf, .ttc) in %1").arg(folder));
  }
  for (const QString& name : names) addedFiles().append(dir.absoluteFilePath(name));
  return {};
}

DocumentFonts::DocumentFonts(const SketchDocument& document) {
  if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return;
  for (const QString& file : addedFiles()) take(QFontDatabase::addApplicationFont(file));
  for (const SketchJson& reference : getArray(document.files().document(), "fontReferences")) {
    const QString file = getString(get(reference, "fontData"), "_ref");
    if (file.isEmpty() || fonts_.size() >= kMaxFonts ||
        QFontDatabase::hasFamily(getString(reference, "fontFamilyName"))) {
      continue;
    }
    const QByteArray bytes = document.file(file);
    if (!bytes.isEmpty() && bytes.size() <= kMaxFontBytes) {
      take(QFontDatabase::addApplicationFontFromData(bytes));
    }
  }
  if (!fonts_.isEmpty()) forgetFontMatches();
}

DocumentFonts::~DocumentFonts() {
  if (fonts_.isEmpty()) return;
  for (const int font : fonts_) QFontDatabase::removeApplicationFont(font);
  forgetFontMatches();
}

void DocumentFonts::take(int font) {
  if (font >= 0) fonts_.append(font);
}

}  // namespace kelvar::render

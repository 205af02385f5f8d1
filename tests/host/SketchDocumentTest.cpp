#include "host/SketchDocument.h"

#include <gtest/gtest.h>

#include <QDir>

#include "host/SketchJson.h"

namespace kelvar {
namespace {

/// Documents that Sketch itself saved lie beside the project for those who have them.
QStringList documentsBesideTheProject() {
  const QDir folder(
      qEnvironmentVariable("KELVAR_SKETCH_DOCUMENTS",
                           QStringLiteral(KELVAR_SOURCE_DIR "/../../shared/sketch-documents")));
  QStringList paths;
  for (const QString& name : folder.entryList({QStringLiteral("*.sketch")})) {
    paths.append(folder.filePath(name));
  }
  return paths;
}

TEST(SketchDocument, KeepsWhatSketchSaved) {
  const QStringList paths = documentsBesideTheProject();
  if (paths.isEmpty()) GTEST_SKIP() << "no documents beside the project";
  for (const QString& path : paths) {
    QString error;
    const auto document = SketchDocument::open(path, &error);
    ASSERT_TRUE(document) << qPrintable(error);
    for (const SketchLayerRef& page : document->pages()) page->edit();
    const auto again = SketchDocument::read(document->bytes(&error), path, &error);
    ASSERT_TRUE(again) << qPrintable(error);
    EXPECT_EQ(again->fileNames(), document->fileNames());
    for (const QString& name : document->fileNames()) {
      const QByteArray before = document->file(name), after = again->file(name);
      if (name.startsWith(u"pages/")) {
        EXPECT_EQ(SketchJson::parse(before.toStdString()), SketchJson::parse(after.toStdString()));
      } else {
        EXPECT_EQ(before, after) << qPrintable(name);
      }
    }
  }
}

}  // namespace
}  // namespace kelvar

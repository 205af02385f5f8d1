#include "sketch/document/SketchDocument.h"

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <zip.h>

#include <QBuffer>
#include <QCryptographicHash>
#include <QDir>
#include <QTemporaryDir>

#include "mockup/SketchParts.h"
#include "platform/LogCapture.h"
#include "platform/QtError.h"

namespace {

/// Whether the program is killed when it has written a file and is about to have it flushed.
bool diesBeforeFlushing = false;

}  // namespace

// In the place of the system's own.
extern "C" int fdatasync(int file) {
  if (diesBeforeFlushing) ::kill(::getpid(), SIGKILL);
  return int(::syscall(SYS_fdatasync, file));
}

namespace kelvar {
namespace {

using parts::layer;
using parts::named;
using parts::opened;
using parts::packed;

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

TEST(SketchDocumentTest, PreservesSavedDocuments) {
  const QStringList paths = documentsBesideTheProject();
  if (paths.isEmpty()) GTEST_SKIP() << "no documents beside the project";
  for (const QString& path : paths) {
    const auto read = SketchDocument::open(path);
    ASSERT_TRUE(read) << read.error().message;
    const SketchDocumentRef& document = *read;
    for (const bool isEdited : {false, true}) {
      for (const SketchLayerRef& page : document->pages()) {
        if (isEdited) page->edit();
      }
      const auto again = opened(*document->bytes());
      EXPECT_EQ(again->fileNames(), document->fileNames());
      for (const QString& name : document->fileNames()) {
        const QByteArray before = document->file(name), after = again->file(name);
        if (isEdited && name.startsWith(u"pages/")) {
          EXPECT_EQ(SketchJson::parse(before.toStdString()),
                    SketchJson::parse(after.toStdString()));
        } else {
          EXPECT_EQ(before, after) << qPrintable(name);
        }
      }
    }
  }
}

const char* const kPage =
    R"({"_class":"page","zebra":[1,1.0,-2.50,1e3,18446744073709551615,0.1,"\u00e4\/\"",null,{}],)"
    R"("layers":[{"name":"one","do_objectID":"1","futureMember":{"b":1,"a":2},"frame":{"x":1}}],)"
    R"("apple":true})";

TEST(SketchDocumentTest, WritesOnlyChanges) {
  auto files = parts::files({});
  files[QStringLiteral("pages/one.json")] = kPage;
  files[QStringLiteral("workspace/of the future.json")] = "{ \"spaced\" : 1.0 }";
  files[QStringLiteral("images/a.png")] = QByteArray("\x89PNG\0\xff not really", 17);
  const auto document = opened(packed(files));
  const QByteArray unchanged = *document->bytes();
  for (const auto& [name, bytes] : files) EXPECT_EQ(opened(unchanged)->file(name), bytes);
  EXPECT_EQ(*opened(unchanged)->bytes(), unchanged) << "equal documents are equal files";

  named(document, "one")->setName(QStringLiteral("zwei \u00e4 \"quoted\""));
  files[QStringLiteral("pages/one.json")] =
      "{\"_class\":\"page\",\"zebra\":[1,1.0,-2.5,1000.0,18446744073709551615,0.1,\"\u00e4/\\\"\","
      "null,{}],\"layers\":[{\"name\":\"zwei \u00e4 \\\"quoted\\\"\",\"do_objectID\":\"1\","
      "\"futureMember\":{\"b\":1,\"a\":2},\"frame\":{\"x\":1}}],\"apple\":true}";
  const auto changed = opened(*document->bytes());
  for (const auto& [name, bytes] : files) EXPECT_EQ(changed->file(name), bytes) << qPrintable(name);
}

TEST(SketchDocumentTest, ResolvesReferences) {
  auto files = parts::files(
      {parts::group("artboard", "Same", {0, 0, 9, 9}, {layer("oval", "Same", {0, 0, 9, 9})}),
       parts::group("symbolMaster", "Master", {0, 0, 9, 9}, {}, {{"symbolID", "local"}})});
  SketchJson json = SketchJson::parse(files[QStringLiteral("document.json")].toStdString());
  json["currentPageIndex"] = 7;
  json["layerStyles"]["objects"] = {{{"do_objectID", "style"}, {"value", {{"opacity", 1}}}}};
  json["foreignTextStyles"] = {
      {{"localSharedStyle", {{"do_objectID", "text style"}, {"value", {{"opacity", 2}}}}}}};
  json["foreignSymbols"] = {{{"symbolMaster", parts::group("symbolMaster", "Foreign", {0, 0, 1, 1},
                                                           {}, {{"symbolID", "foreign"}})}},
                            {{"symbolMaster", {{"symbolID", "broken"}, {"layers", {1}}}}},
                            5};
  files[QStringLiteral("document.json")] = writeSketchJson(json);
  const auto document = opened(packed(files));
  EXPECT_EQ(document->appVersion(), u"72.4");
  EXPECT_EQ(document->build(), u"110199");
  EXPECT_EQ(document->currentPage()->name(), u"Page");
  EXPECT_EQ(document->artboards().size(), 2);
  EXPECT_EQ(document->layersNamed(QStringLiteral("Same")).size(), 2);
  EXPECT_EQ(document->layersNamed(QStringLiteral("Master-id")).value(0)->name(), u"Master");
  EXPECT_EQ(document->symbolMaster(QStringLiteral("local"))->name(), u"Master");
  EXPECT_EQ(document->symbolMaster(QStringLiteral("foreign"))->name(), u"Foreign");
  EXPECT_FALSE(document->symbolMaster(QStringLiteral("broken")));
  EXPECT_EQ(document->files().sharedStyle(QStringLiteral("style"))["opacity"], 1);
  EXPECT_EQ(document->files().sharedStyle(QStringLiteral("text style"))["opacity"], 2);
  EXPECT_TRUE(document->files().sharedStyle(QStringLiteral("missing")).is_null());
}

QByteArray png(QRgb color) {
  QImage pixels(2, 2, QImage::Format_RGB32);
  pixels.fill(color);
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  pixels.save(&buffer, "PNG");
  return buffer.data();
}

TEST(SketchDocumentTest, ReadsImagesByReferenceAndStoresNewOnesByHash) {
  auto files = parts::files({});
  files[QStringLiteral("images/red.png")] = png(0xffff0000);
  files[QStringLiteral("images/broken.png")] = png(0xffff0000).first(40);
  const auto document = opened(packed(files));
  const std::string inlined = png(0xff00ff00).toBase64().toStdString();
  const struct {
    SketchJson reference;
    QRgb pixel;
  } cases[] = {{{{"_ref", "images/red.png"}}, 0xffff0000},
               {{{"_ref", "images/red"}}, 0xffff0000},
               {{{"_ref", "images/gone.png"}}, 0},
               {{{"_ref", "images/broken.png"}}, 0},
               {{{"_ref", "x"}, {"data", {{"_data", inlined}}}}, 0xff00ff00},
               {{{"_ref", 5}}, 0},
               {5, 0}};
  for (const auto& [reference, pixel] : cases) {
    const ImageRef image = document->image(readImageReference(reference));
    EXPECT_EQ(image ? image->pixels().pixel(0, 0) : 0, pixel) << reference;
  }
  const QByteArray blue = png(0xff0000ff);
  const QString name = document->addImage(blue);
  EXPECT_EQ(name, QStringLiteral("images/%1.png")
                      .arg(QString::fromLatin1(
                          QCryptographicHash::hash(blue, QCryptographicHash::Sha1).toHex())));
  EXPECT_EQ(opened(*document->bytes())->file(name), blue);
}

/// A document with one more file, whose entry `change` may tamper with.
template <class Change>
QByteArray tampered(const char* name, const QByteArray& content, Change change) {
  zip_error_t error;
  zip_error_init(&error);
  zip_source_t* source = zip_source_buffer_create(nullptr, 0, 0, &error);
  zip_t* archive = zip_open_from_source(source, ZIP_CREATE | ZIP_TRUNCATE, &error);
  zip_source_keep(source);
  const auto add = [&](const char* path, const QByteArray& bytes) {
    zip_source_t* file =
        zip_source_buffer(archive, bytes.constData(), zip_uint64_t(bytes.size()), 0);
    return zip_uint64_t(zip_file_add(archive, path, file, ZIP_FL_ENC_UTF_8));
  };
  const auto files = parts::files({});
  for (const auto& [path, bytes] : files) add(path.toUtf8().constData(), bytes);
  change(archive, add(name, content));
  EXPECT_EQ(zip_close(archive), 0);
  zip_stat_t stat;
  zip_source_stat(source, &stat);
  QByteArray bytes(qsizetype(stat.size), 0);
  zip_source_open(source);
  zip_source_read(source, bytes.data(), stat.size);
  zip_source_close(source);
  zip_source_free(source);
  return bytes;
}

QByteArray withFile(const char* name) {
  return tampered(name, "x", [](zip_t*, zip_uint64_t) {});
}

QByteArray encrypted() {
  return tampered("images/secret.png", "secret", [](zip_t* archive, zip_uint64_t index) {
    zip_file_set_encryption(archive, index, ZIP_EM_AES_256, "password");
  });
}

/// Says that the file "bomb" unpacks to `size` bytes, in both places where that stands.
QByteArray bomb(quint32 size) {
  QByteArray bytes = tampered("bomb", QByteArray(100000, 'x'), [](zip_t*, zip_uint64_t) {});
  const QByteArray before("\xa0\x86\x01\x00", 4);
  QByteArray after;
  for (int i = 0; i < 4; ++i) after.append(char(size >> 8 * i));
  EXPECT_EQ(bytes.count(before), 2);
  return bytes.replace(before, after);
}

QByteArray withPage(const QByteArray& json) {
  auto files = parts::files({});
  files[QStringLiteral("pages/one.json")] = json;
  return packed(files);
}

QByteArray withDocument(const QByteArray& json) {
  auto files = parts::files({});
  files[QStringLiteral("document.json")] = json;
  return packed(files);
}

TEST(SketchDocumentTest, RejectsNonDocumentsWithOneMessage) {
  const QByteArray good = packed(parts::files({layer("oval", "a", {0, 0, 1, 1})}));
  auto pageless = parts::files({});
  pageless.erase(QStringLiteral("pages/one.json"));
  const QByteArray deep = QByteArray(100000, '[') + QByteArray(100000, ']');
  const struct {
    const char* what;
    QByteArray bytes;
    const char* sentence;
  } cases[] = {
      {"empty", "", "the file is empty"},
      {"not a ZIP", "{\"pages\": []}", "it is not a ZIP archive"},
      {"cut short", good.first(good.size() / 2), "it is not a ZIP archive"},
      {"cut in the table", good.first(good.size() - 30), "it is not a ZIP archive"},
      {"another ZIP", packed({{QStringLiteral("a.txt"), "a"}}), "not a document from Sketch 43"},
      {"encrypted", encrypted(), "it is encrypted"},
      {"climbs out", withFile("images/../../evil.png"), "leads out of the archive, \"images/../"},
      {"absolute", withFile("/etc/evil"), "leads out of the archive"},
      {"backslashes", withFile("..\\evil"), "leads out of the archive"},
      {"a bomb", bomb(0x7fffffff), "bomb would unpack to more than 512 MiB"},
      {"no pages", withDocument("{}"), "it has no pages"},
      {"a missing page", packed(pageless), "its page pages/one.json is missing"},
      {"pages that are none", withDocument(R"({"pages":[1,{}]})"), "its page .json is missing"},
      {"a document that is a list", withDocument("[]"), "document.json holds no object"},
      {"a broken page", withPage("{\"layers\": [}"), "pages/one.json: it is not JSON from byte 13"},
      {"NaN", withPage("{\"frame\":{\"x\":NaN}}"), "it is not JSON from byte"},
      {"a number beyond doubles", withPage("{\"a\":1e999}"), "it is not JSON from byte"},
      {"deep", withPage(deep), "it is nested more than 512 deep"},
      {"deep layers",
       withPage(QByteArray("{\"layers\":[").repeated(100000) + QByteArray("]}").repeated(100000)),
       "it is nested more than 512 deep"},
      {"a layer that is a number",
       withPage(R"({"name":"P","layers":[{"layers":[{},3],"name":"G"}]})"),
       "layer 2 in \"G\" is not an object"},
      {"too many values", withPage("[" + QByteArray("0,").repeated(1 << 23) + "0]"),
       "too many values"},
  };
  for (const auto& [what, bytes, sentence] : cases) {
    const auto document = SketchDocument::read(bytes, QStringLiteral("doc.sketch"));
    ASSERT_FALSE(document) << what;
    const QString error = messageOf(document.error());
    EXPECT_TRUE(error.startsWith(u"cannot read doc.sketch: ")) << qPrintable(error);
    EXPECT_TRUE(error.contains(QString::fromUtf8(sentence))) << what << ": " << qPrintable(error);
    EXPECT_FALSE(error.contains(u'\n')) << what;
  }
}

TEST(SketchDocumentTest, ReadsNoMoreThanDeclaredSize) {
  const auto document = opened(bomb(1000));
  LogCapture log;
  EXPECT_TRUE(document->file(QStringLiteral("bomb")).isNull());
}

TEST(SketchDocumentTest, IsReplacedAtomically) {
  QTemporaryDir dir;
  const auto document = parts::document({layer("oval", "a", {0, 0, 1, 1})});
  const auto refused = document->save(dir.filePath(QStringLiteral("no/such/folder.sketch")));
  ASSERT_FALSE(refused);
  EXPECT_TRUE(messageOf(refused.error()).contains(u"folder.sketch")) << refused.error().message;
  const QString path = dir.filePath(QStringLiteral("doc.sketch"));
  ASSERT_TRUE(document->save(path));
  EXPECT_TRUE(SketchDocument::open(path));
  EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);

  const auto file = [&] {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  };
  const QByteArray before = file();
  named(document, "a")->setName(QStringLiteral("b"));
  EXPECT_EXIT(
      {
        diesBeforeFlushing = true;
        document->save(path);
      },
      testing::KilledBySignal(SIGKILL), "");
  EXPECT_EQ(file(), before);
  ASSERT_TRUE(document->save(path));
  EXPECT_NE(file(), before);
}

}  // namespace
}  // namespace kelvar

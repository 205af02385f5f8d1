#include <gtest/gtest.h>

#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <thread>

#include "mockup/LayerSettings.h"
#include "platform/files/FileLock.h"
#include "platform/image/ImageFile.h"
#include "sketch/document/Layer.h"
#include "sketch/document/SketchDocument.h"

namespace kelvar {
namespace {

/// Each test runs the built program through the shell, in its own folder with the example document.
class DocumentTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(dir_.isValid());
    ASSERT_EQ(run(KELVAR_EXAMPLE_DOCUMENT " doc.sketch"), 0);
    QImage red(40, 80, QImage::Format_RGB32);
    red.fill(Qt::red);
    ASSERT_TRUE(red.save(path("red.png")));
  }

  QString path(const char* name) const { return dir_.filePath(QString::fromUtf8(name)); }

  int run(const std::string& command) {
    const std::string line = "cd '" + dir_.path().toStdString() + "' && PATH='" +
                             QFileInfo(QStringLiteral(KELVAR_PROGRAM)).path().toStdString() +
                             "':$PATH && (" + command + ") >out 2>err </dev/null";
    return QProcess::execute(QStringLiteral("bash"),
                             {QStringLiteral("-c"), QString::fromStdString(line)});
  }

  QByteArray bytes(const char* name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  SketchDocumentRef document(const char* name) const {
    const auto document = SketchDocument::open(path(name));
    EXPECT_TRUE(document) << document.error().message;
    return document.value_or(nullptr);
  }

  static SketchLayerRef glass(const SketchDocumentRef& document) {
    return document->layersNamed(QStringLiteral("Glass")).value(0);
  }

  QImage image(const char* name) const {
    const auto image = ImageFile::read(path(name), {});
    if (image) return (*image)->pixels();
    ADD_FAILURE() << image.error().message;
    return {};
  }

  QTemporaryDir dir_;
};

QRgb middleOfTheGlass(const QImage& mockup) {
  return mockup.pixel(mockup.width() * 600 / 1200, mockup.height() * 440 / 900);
}

TEST_F(DocumentTest, ListsLayers) {
  ASSERT_EQ(run("kelvar layers doc.sketch"), 0) << bytes("err").constData();
  const QByteArray lines = bytes("out");
  EXPECT_TRUE(lines.contains("  Screen  artboard 375 x 812")) << lines.constData();
  for (const QByteArray& line : lines.split('\n')) {
    EXPECT_EQ(line.contains("[can be a design]"), line.contains("  artboard ")) << line.constData();
    if (line.contains("  text ") || line.contains("  oval ") || line.contains("  Card  ")) {
      EXPECT_FALSE(line.contains("[takes a design]")) << line.constData();
    }
  }
  EXPECT_EQ(lines.count("Glass  shapePath 395 x 732"), 1) << lines.constData();
  ASSERT_EQ(run("kelvar layers doc.sketch --json"), 0);
  const QJsonObject page = QJsonDocument::fromJson(bytes("out"))
                               .object()[QStringLiteral("pages")]
                               .toArray()[0]
                               .toObject();
  const QJsonArray boards = page[QStringLiteral("layers")].toArray();
  ASSERT_EQ(boards.size(), 2);
  const QJsonObject last =
      boards[1].toObject()[QStringLiteral("layers")].toArray().last().toObject();
  EXPECT_EQ(last[QStringLiteral("name")], QStringLiteral("Glass"));
  EXPECT_EQ(last[QStringLiteral("takesDesign")], true);
  EXPECT_EQ(boards[0].toObject()[QStringLiteral("isDesign")], true);
}

TEST_F(DocumentTest, MapsImageAndArtboard) {
  ASSERT_EQ(run("kelvar map red.png --document doc.sketch --layer Glass -o red.sketch && "
                "kelvar render red.sketch --artboard Mockup -o red-mockup.png"),
            0)
      << bytes("err").constData();
  EXPECT_EQ(middleOfTheGlass(image("red-mockup.png")), 0xffff0000);
  EXPECT_TRUE(LayerSettings::of(*glass(document("red.sketch")))->artboard.isNull());

  ASSERT_EQ(run("kelvar map red.png --document doc.sketch --layer Glass -o direct.png"), 0);
  EXPECT_EQ(image("direct.png"), image("red-mockup.png"));

  ASSERT_EQ(run("kelvar map artboard:Screen --document red.sketch --layer Glass --rotation 2 "
                "--scale 2 --json -o screen.sketch"),
            0)
      << bytes("err").constData();
  const auto report = QJsonDocument::fromJson(bytes("out")).object();
  const auto doc = document("screen.sketch");
  const auto settings = LayerSettings::of(*glass(doc));
  ASSERT_TRUE(settings);
  EXPECT_EQ(settings->artboard, doc->artboards()[0]->objectID());
  EXPECT_EQ(settings->options.rotation, 2u);
  EXPECT_EQ(settings->options.quality, 2);
  EXPECT_EQ(report[QStringLiteral("layers")].toArray()[0].toObject()[QStringLiteral("image")],
            settings->image);
  EXPECT_EQ(doc->fileNames().filter(QStringLiteral("images/")), QStringList{settings->image});
  EXPECT_FALSE(doc->file(QStringLiteral("previews/preview.png")).isEmpty());
}

TEST_F(DocumentTest, RefreshesMappings) {
  ASSERT_EQ(run("kelvar map artboard:Screen --document doc.sketch --layer Glass -o a.sketch"), 0);
  const auto doc = document("a.sketch");
  doc->layersNamed(QStringLiteral("Sun"))[0]->edit().change()["isVisible"] = false;
  ASSERT_TRUE(doc->save(path("a.sketch")));
  const QByteArray before = bytes("a.sketch");

  EXPECT_EQ(run("kelvar refresh a.sketch"), 2);
  EXPECT_EQ(bytes("a.sketch"), before);
  ASSERT_EQ(run("kelvar refresh a.sketch -o b.sketch && kelvar refresh b.sketch -o c.sketch"), 0)
      << bytes("err").constData();
  EXPECT_EQ(bytes("a.sketch"), before);
  EXPECT_NE(LayerSettings::of(*glass(document("b.sketch")))->image,
            LayerSettings::of(*glass(document("a.sketch")))->image);
  EXPECT_EQ(document("b.sketch")->fileNames().filter(QStringLiteral("images/")).size(), 1);
  EXPECT_EQ(bytes("c.sketch"), bytes("b.sketch")) << "nothing changed in between";
  ASSERT_EQ(run("kelvar refresh a.sketch --in-place"), 0);
  EXPECT_EQ(bytes("a.sketch"), bytes("b.sketch"));
}

TEST_F(DocumentTest, KeepsConcurrentChanges) {
  auto lock = FileLock::take(path("doc.sketch"), std::chrono::seconds(0));
  ASSERT_TRUE(lock);
  std::thread both([this] {
    const std::string map = "kelvar map red.png --document doc.sketch -o ./doc.sketch --layer ";
    EXPECT_EQ(run(map + "Glass & first=$!; " + map + "Sky && wait $first"), 0)
        << bytes("err").constData();
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(300));  // Both may have begun by now.
  lock->reset();
  both.join();
  const auto doc = document("doc.sketch");
  EXPECT_TRUE(LayerSettings::of(*glass(doc)));
  EXPECT_TRUE(LayerSettings::of(*doc->layersNamed(QStringLiteral("Sky"))[0]));
}

TEST_F(DocumentTest, FileNamesAreBytes) {
  ASSERT_EQ(run("mkdir $'\\xff' && mv doc.sketch $'\\xff/d\\xe9.sketch' && "
                "mv red.png $'\\xff/r\\xe8.png' && cd $'\\xff' && "
                "echo 'log(context.document.path())' >$'s\\xe9.js' && "
                "echo '{\"kelvar\": \"arrangement\", \"version\": 1, \"designs\": [], \"shapes\": "
                "[], \"photo\": {\"bytes\": \"cugucG5n\"}}' >$'a\\xe9.json' && "
                "kelvar map $'r\\xe8.png' --document $'d\\xe9.sketch' --layer Glass "
                "-o $'d\\xe9.sketch' && "
                "kelvar refresh $'d\\xe9.sketch' -o $'d\\xe8.sketch' && "
                "kelvar layers $'d\\xe8.sketch' && "
                "kelvar render $'d\\xe8.sketch' --artboard Mockup -o $'\\xe9.png' && "
                "kelvar map $'r\\xe8.png' --points '0,0 9,0 9,9 0,9' --onto $'\\xe9.png' "
                "-o $'\\xe8.jpg' && "
                "kelvar map --arrangement $'a\\xe9.json' -o $'\\xea.png' && "
                "kelvar run $'s\\xe9.js' --document $'d\\xe9.sketch' && "
                "echo '{\"a\":1}' >$'\\xe9.json' && "
                "kelvar archive convert $'\\xe9.json' -o $'\\xe8.plist' && "
                "kelvar archive show $'\\xe8.plist' && LC_ALL=C ls >../names"),
            0)
      << bytes("err").constData();
  EXPECT_EQ(bytes("names"), QByteArray("a\xe9.json\nd\xe8.sketch\nd\xe9.sketch\nr\xe8.png\n"
                                       "s\xe9.js\n\xe8.jpg\n\xe8.plist\n\xe9.json\n\xe9.png\n"
                                       "\xea.png\n"));
  EXPECT_EQ(run("kelvar layers $'no\\xe9.sketch'"), 1);
  EXPECT_EQ(bytes("err"), "kelvar: cannot read no\\xe9.sketch: there is no such file\n");
}

TEST_F(DocumentTest, WorksWithoutThreads) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can become a user who has no other process";
  ASSERT_EQ(run("chmod 777 . && chmod 666 *"), 0);
  const std::string user = "setpriv --reuid=54321 --regid=54321 --clear-groups ";
  if (run(user + "kelvar --version") != 0) GTEST_SKIP() << "the build is not for others' eyes";
  const std::string alone = "timeout 100 " + user + "prlimit --nproc=1 kelvar ";
  const std::string commands[] = {
      "map red.png --points '0,0 900,0 900,900 0,900' -o alone.png",
      "map artboard:Screen --document doc.sketch --layer Glass -o alone.sketch",
      "render doc.sketch --artboard Mockup --scale 2 -o alone.png",
      "refresh alone.sketch -o again.sketch",
  };
  for (const std::string& command : commands) {
    EXPECT_EQ(run(alone + command), 0) << command << ": " << bytes("err").constData();
  }
  EXPECT_EQ(run("export KELVAR_API_SERVER=http://127.0.0.1:9 HOME=$PWD; " + alone + "messages"), 1);
  EXPECT_TRUE(bytes("err").startsWith("kelvar: no messages were fetched: "))
      << bytes("err").constData();
}

TEST_F(DocumentTest, ReportsErrors) {
  ASSERT_EQ(run("echo none > none.sketch; mkdir folder.sketch"), 0);
  const std::string map = "kelvar map artboard:Screen --document doc.sketch ";
  const struct {
    std::string command;
    int status;
    const char* part;
  } cases[] = {
      {"kelvar layers", 2, "required"},
      {"kelvar layers missing.sketch", 1, "missing.sketch"},
      {"kelvar layers none.sketch", 1, "it is not a ZIP archive"},
      {"kelvar layers folder.sketch", 1, "folder.sketch"},
      {map + "-o out.sketch", 2, "--layer"},
      {map + "--layer Glass", 2, "required"},
      {map + "--layer Glass -o out.gif", 2, "ends in sketch, png"},
      {map + "--layer Glass --points 0,0 -o out.sketch", 2, "--points"},
      {map + "--layer Glass --scale -1 -o out.sketch", 2, "--scale takes"},
      {map + "--layer Glass --scale 1000 -o out.sketch", 1, "pixels"},
      {map + "--layer Nobody -o out.sketch", 1, "no layer \"Nobody\""},
      {map + "--layer Card -o out.sketch", 1, "fits several layers"},
      {map + "--layer Body -o out.sketch", 1, "corners, and a design needs four"},
      {map + "--layer Sky -o out.sketch", 1, "\"Screen\" shows \"Screen\""},
      {map + "--layer Glass -o none/out.sketch", 1, "none/out.sketch"},
      {"kelvar map artboard:Nobody --document doc.sketch --layer Glass -o out.sketch", 1,
       "no artboard \"Nobody\", only \"Screen\" and \"Mockup\""},
      {"kelvar render doc.sketch --artboard Nobody -o out.png", 1,
       "no artboard \"Nobody\", only \"Screen\" and \"Mockup\""},
      {"kelvar map missing.png --document doc.sketch --layer Glass -o out.sketch", 1,
       "missing.png"},
      {"kelvar map - --document doc.sketch --layer Glass --layer Sky -o out.sketch", 2,
       "standard input"},
      {"kelvar map red.png --layer Glass -o out.png", 2, "--document"},
      {"kelvar refresh none.sketch --in-place", 1, "none.sketch"},
      {"kelvar refresh doc.sketch -o out.png", 2, "ends in sketch"},
      {"kelvar refresh doc.sketch -o -", 2, "ends in sketch"},
      {"ulimit -f 2; kelvar refresh doc.sketch --in-place", 1, "doc.sketch"},
      {"ulimit -f 2; " + map + "--layer Glass -o out.sketch", 1, "out.sketch"},
      {"ulimit -f 2; " + map + "--layer Glass -o doc.sketch", 1, "doc.sketch"},
      {"kelvar render doc.sketch --layer \"$(printf 'a\\nb\\033[1m')\" -o out.png", 1, "no layer"},
      {"kelvar refresh doc.sketch -o out.sketch --in-place", 2, "either -o OUT or --in-place"},
      {"kelvar render doc.sketch --threads 33 -o out.png", 2, "--threads"},
      {"kelvar refresh doc.sketch --threads -1 --in-place", 2, "--threads"},
      {"kelvar render doc.sketch --timeout 0 -o out.png", 2, "seconds from 0.1 to 86400"},
      {"kelvar refresh doc.sketch --timeout nan --in-place", 2, "seconds from 0.1 to 86400"},
      {map + "--layer Glass --timeout 1m -o out.sketch", 2, "not \"1m\""},
  };
  const QByteArray before = bytes("doc.sketch");
  for (const auto& [command, status, part] : cases) {
    EXPECT_EQ(run(command), status) << command << ": " << bytes("err").constData();
    const QByteArray sentence = bytes("err");
    EXPECT_TRUE(sentence.startsWith("kelvar: ")) << command << ": " << sentence.constData();
    EXPECT_EQ(sentence.count('\n'), 1) << command << ": " << sentence.constData();
    EXPECT_TRUE(sentence.contains(part)) << command << ": " << sentence.constData();
    EXPECT_FALSE(QFile::exists(path("out.sketch"))) << command;
  }
  EXPECT_EQ(bytes("doc.sketch"), before);
  EXPECT_EQ(bytes("none.sketch"), "none\n");
}

/// Shadows that would take minutes to draw.
void slowDown(const SketchDocumentRef& document) {
  SketchJson shadow{{"_class", "shadow"}, {"isEnabled", true}, {"blurRadius", 60}};
  shadow["color"] = {{"_class", "color"}, {"alpha", 0.5}};
  const SketchLayerRef sun = document->layersNamed(QStringLiteral("Sun"))[0];
  sun->edit().change()["style"]["shadows"] = std::vector<SketchJson>(50'000, shadow);
}

TEST_F(DocumentTest, EndsAtTimeoutAndCtrlC) {
  ASSERT_EQ(run("kelvar map artboard:Screen --document doc.sketch --layer Glass -o slow.sketch"),
            0);
  const auto slow = document("slow.sketch");
  slowDown(slow);
  ASSERT_TRUE(slow->save(path("slow.sketch")));
  ASSERT_EQ(run("echo old > out.png; cp doc.sketch out.sketch"), 0);
  const QByteArray before = bytes("slow.sketch"), out = bytes("out.sketch");
  const struct {
    const char* command;
    int status;
  } cases[] = {
      {"kelvar render slow.sketch --artboard Screen --timeout 0.5 -o out.png", 1},
      {"kelvar render slow.sketch --artboard Screen --timeout 0.5 -o -", 1},
      {"kelvar refresh slow.sketch --timeout 0.5 --in-place", 1},
      {"kelvar map artboard:Screen --document slow.sketch --layer Glass --timeout 0.5 -o "
       "out.sketch",
       1},
      {"mkfifo pipe; kelvar map - --points '0,0 9,0 9,9 0,9' --timeout 0.5 -o out.png 0<>pipe", 1},
      {"timeout --preserve-status -s INT 0.5 kelvar render slow.sketch -o out.png", 130},
      {"timeout --preserve-status -s INT 0.5 kelvar refresh slow.sketch --in-place", 130},
  };
  for (const auto& [command, status] : cases) {
    EXPECT_EQ(run(command), status) << command << ": " << bytes("err").constData();
    EXPECT_EQ(bytes("err").startsWith("kelvar: not finished after 0.5 s"), status == 1)
        << command << ": " << bytes("err").constData();
    EXPECT_EQ(bytes("out"), "") << command;
  }
  EXPECT_EQ(bytes("slow.sketch"), before);
  EXPECT_EQ(bytes("out.sketch"), out);
  EXPECT_EQ(bytes("out.png"), "old\n");
  EXPECT_EQ(QDir(dir_.path()).entryList(QDir::Files).size(), 7) << "nothing was left beside them";
}

}  // namespace
}  // namespace kelvar

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QTemporaryDir>
#include <cstdlib>

#include "geometry/Points.h"
#include "mockup/Mapping.h"
#include "platform/image/ImageFile.h"

namespace kelvar {
namespace {

struct Outcome {
  int status = -1;
  QByteArray out;
  QByteArray err;
};

uint32_t crc32(const QByteArray& bytes) {
  uint32_t crc = ~0u;
  for (const char byte : bytes) {
    crc ^= uint8_t(byte);
    for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ (crc & 1 ? 0xedb88320u : 0u);
  }
  return ~crc;
}

QByteArray bigEndian(uint32_t value) {
  const char bytes[] = {char(value >> 24), char(value >> 16), char(value >> 8), char(value)};
  return QByteArray(bytes, 4);
}

QByteArray chunk(const QByteArray& typeAndData) {
  return bigEndian(uint32_t(typeAndData.size() - 4)) + typeAndData + bigEndian(crc32(typeAndData));
}

/// A small file that declares an image of 60000 by 60000 pixels.
QByteArray hugePng() {
  return QByteArray("\x89PNG\r\n\x1a\n", 8) +
         chunk("IHDR" + bigEndian(60000) + bigEndian(60000) + QByteArray("\x08\x06\0\0\0", 5)) +
         chunk("IDAT" + qCompress(QByteArray(1000, 0)).sliced(4)) + chunk("IEND");
}

/// Each test runs the built program through the shell, in its own folder with images.
class MapTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(dir_.isValid());
    QImage design(60, 40, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < 40; ++y) {
      for (int x = 0; x < 60; ++x) {
        design.setPixel(x, y, x < 30 ? qRgb(255, x, y * 3) : qRgb(0, x * 4, y * 6));
      }
    }
    for (const char* name : {"design.png", "design.jpg", "design.webp"}) {
      ASSERT_TRUE(design.save(path(name), nullptr, 95)) << name;
    }
    design.scaled(90, 70).save(path("photo.png"));
    QImage noise(200, 200, QImage::Format_RGB32);
    for (int i = 0; i < 200 * 200; ++i) noise.setPixel(i % 200, i / 200, uint(i) * 2654435761u);
    noise.save(path("noise.png"));
    noise.save(path("noise.jpg"));
    write("design.svg",
          "<svg xmlns='http://www.w3.org/2000/svg' width='20' height='10'>"
          "<rect width='10' height='10' fill='#f00'/>"
          "<rect x='10' width='10' height='10' fill='#00f'/>"
          "<text x='1' y='9' font-size='2'>Text</text></svg>");
    write("short.png", bytes("noise.png").first(bytes("noise.png").size() / 2));
    write("short.jpg", bytes("noise.jpg").first(bytes("noise.jpg").size() / 2));
    write("empty.png", "");
    write("text.png", "This is not an image.\n");
    write("huge.png", hugePng());
    QDir(dir_.path()).mkdir(QStringLiteral("folder.png"));
    QFile::link(QStringLiteral("nowhere"), path("link.png"));
  }

  QString path(const char* name) const { return dir_.filePath(QString::fromLatin1(name)); }

  QByteArray bytes(const char* name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  void write(const char* name, const QByteArray& data) const {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(data), data.size());
  }

  /// Runs `line` in the shell, where "kelvar" is the built program.
  Outcome run(const std::string& line) const {
    const std::string script = "cd '" + dir_.path().toStdString() + "' && kelvar() { '" +
                               KELVAR_PROGRAM "' \"$@\"; }; { " + line + "; } >.out 2>.err";
    const int status = std::system(script.c_str());
    Outcome result{WIFEXITED(status) ? WEXITSTATUS(status) : -1, bytes(".out"), bytes(".err")};
    QFile::remove(path(".out"));
    QFile::remove(path(".err"));
    return result;
  }

  /// All files and their contents.
  QMap<QString, QByteArray> contents() const {
    QMap<QString, QByteArray> files;
    for (const QString& name :
         QDir(dir_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)) {
      files.insert(name, bytes(name.toLatin1()));
    }
    return files;
  }

  QTemporaryDir dir_;
};

constexpr const char* kRectangle = "--points '0,0 120,0 120,80 0,80'";

TEST_F(MapTest, SvgRendererEndsWithProgram) {
  write("slow.svg",
        "<svg xmlns='http://www.w3.org/2000/svg' width='4000' height='4000'>" +
            QByteArray("<rect width='4000' height='4000' opacity='.5'/>").repeated(9999) +
            "</svg>");
  // Any remaining renderer would run for ten seconds. An ended process has no executable any more.
  const Outcome result =
      run("(exec '" KELVAR_PROGRAM
          "' map slow.svg --points '0,0 3000,0 3000,3000 0,3000' -o out.png) & p=$!; until "
          "c=$(cat /proc/$p/task/$p/children) && [ -n \"$c\" ]; do sleep 0.01; done; sleep 0.5; "
          "readlink /proc/${c%% *}/exe || exit 2; kill -9 $p; for i in $(seq 50); do "
          "readlink /proc/${c%% *}/exe || exit 0; sleep 0.1; done; exit 1");
  EXPECT_EQ(result.status, 0) << result.out.toStdString() << result.err.toStdString();
}

TEST_F(MapTest, BadInputGivesOneMessageAndNoOutput) {
  const struct {
    const char* line;
    int status;
    const char* sentence;  // A part of it.
  } cases[] = {
      {"kelvar", 2, "command"},
      {"kelvar warp", 2, "warp"},
      {"kelvar map", 2, "required"},
      {"kelvar map design.png -o out.png", 2, "--points"},
      {"kelvar map design.png $P", 2, "--output"},
      {"kelvar map design.png $P -o out.png --wrong", 2, "--wrong"},
      {"kelvar map design.png $P -o out.png --sampling cubic", 2, "cubic"},
      {"kelvar map design.png $P -o out.png --rotation -1", 2, "--rotation"},
      {"kelvar map design.png $P -o out.png --rotation 1.5", 2, "--rotation"},
      {"kelvar map design.png $P -o out.png --rotation 18446744073709551616", 2, "--rotation"},
      {"kelvar map design.png $P -o out.png --rotation 90", 2, "for 90 degrees, use 1"},
      {"kelvar map design.png $P -o out.png --rotation 450", 2, "for 450 degrees, use 1"},
      {"kelvar map design.png $P -o out.png --rotation 7", 2, "for 7 quarter turns, use 3"},
      {"kelvar map design.png $P -o out.png --threads -1", 2, "--threads"},
      {"kelvar map - --onto - $P -o out.png <design.png", 2, "both"},
      {"kelvar map design.png $P --json -o -", 2, "standard output"},

      {"kelvar map missing.png $P -o out.png", 1, "missing.png"},
      {"kelvar map folder.png $P -o out.png", 1, "folder.png"},
      {"kelvar map link.png $P -o out.png", 1, "link to nowhere, which"},
      {"kelvar map empty.png $P -o out.png", 1, "empty.png"},
      {"kelvar map text.png $P -o out.png", 1, "text.png"},
      {"kelvar map short.png $P -o out.png", 1, "short.png"},
      {"kelvar map short.jpg $P -o out.png", 1, "short.jpg"},
      {"kelvar map huge.png $P -o out.png", 1, "huge.png"},
      {"kelvar map - $P -o out.png </dev/null", 1, "standard input"},
      {"kelvar map design.png $P --onto missing.png -o out.png", 1, "missing.png"},

      {"kelvar map design.png --points '' -o out.png", 2, "not 0 points"},
      {"kelvar map design.png --points '0,0 9,0 9,9' -o out.png", 2, "not 3 points"},
      {"kelvar map design.png --points '0,0 9,0 9,9 5,9 0,9' -o out.png", 2, "not 5 points"},
      {"kelvar map design.png --points '0,0 9,0 9,x 0,9' -o out.png", 2, "\"9,x\""},
      {"kelvar map design.png --points '0,0 9,0 9,9q 0,9' -o out.png", 2, "\"9,9q\""},
      {"kelvar map design.png --points '0,0 9,0 9 0,9' -o out.png", 2, "\"9\""},
      {"kelvar map design.png --points '0,0 9,0 9,9,9 0,9' -o out.png", 2, "\"9,9,9\""},
      {"kelvar map design.png --points '0,0 9,0 9, 0,9' -o out.png", 2, "\"9,\""},
      {"kelvar map design.png --points '0,0 inf,0 9,9 0,9' -o out.png", 2, "\"inf,0\""},
      {"kelvar map design.png --points '0,0 9,nan 9,9 0,9' -o out.png", 2, "\"9,nan\""},
      {"kelvar map design.png --points '0,0 1e999,0 9,9 0,9' -o out.png", 2, "\"1e999,0\""},
      {"kelvar map design.png --points '0,0 0,0 9,9 0,9' -o out.png", 2, "same point"},
      {"kelvar map design.png --points '5,5 9,0 5,5 0,9' -o out.png", 2, "same point"},
      {"kelvar map design.png --points '0,0 5,0 9,0 0,9' -o out.png", 2, "one line"},
      {"kelvar map design.png --points '0,0 3,3 6,6 9,9' -o out.png", 2, "one line"},
      {"kelvar map design.png --points '0,0 9,9 9,0 0,9' -o out.png", 2, "cross"},
      {"kelvar map design.png --points '0,0 9,0 2,2 0,9' -o out.png", 2, "concave"},
      {"kelvar map design.png --points '0,0 0,9 2,2 9,0' -o out.png", 2, "concave"},
      {"kelvar map design.png --points '0,0 1e308,0 1e308,1e308 0,1e308' -o out.png", 2, "apart"},
      {"kelvar map design.png --points '0,0 32769,0 32769,9 0,9' -o out.png", 2, "32768"},
      {"kelvar map design.png --points '0,0 2e4,0 2e4,2e4 0,2e4' -o out.png", 2, "1024 MiB"},
      {"kelvar map design.png $P --scale 900 -o out.png", 2, "32768"},

      {"kelvar map design.png $P --scale -1 -o out.png", 2, "--scale"},
      {"kelvar map design.png $P --scale 1e9 -o out.png", 2, "--scale"},
      {"kelvar map design.png $P --scale 1e-9 -o out.png", 2, "--scale"},
      {"kelvar map design.png $P --scale inf -o out.png", 2, "--scale"},
      {"kelvar map design.png $P --scale nan -o out.png", 2, "--scale"},
      {"kelvar map design.png $P --scale two -o out.png", 2, "--scale"},
      {"kelvar map design.png $P --onto photo.png --scale 1e9 -o out.png", 2, "--scale"},

      {"kelvar map design.png $P -o nowhere/out.png", 1, "nowhere"},
      {"kelvar map design.png $P -o /proc/out.png", 1, "/proc"},
      {"kelvar map design.png $P -o folder.png", 1, "folder.png"},
      {"kelvar map design.png $P -o out.bmp", 2, "out.bmp"},
      {"kelvar map design.png $P -o ''", 2, "png, jpg"},
      {"kelvar map design.png $P --onto '' -o out.png", 1, "the path is empty"},
      {"kelvar map design.png --points '900,0 999,0 999,90 900,90' --onto photo.png -o out.png", 2,
       "outside the photo"},
      {"ulimit -f 8; kelvar map noise.png $P -o out.png", 1, "out.png: File too large"},
      {"ulimit -f 8; kelvar map noise.png $P -o out.jpg", 1, "out.jpg: File too large"},
      {"ulimit -f 8; kelvar map noise.png $P -o noise.png", 1, "noise.png"},
      {"kelvar map noise.png $P -o - >/dev/full", 1, "standard output: No space left on device"},
      {"kelvar --help >/dev/full", 1, "No space left on device"},
  };
  const QMap<QString, QByteArray> before = contents();
  for (const auto& [line, status, sentence] : cases) {
    const Outcome result = run(std::string("P=\"--points=0,0 120,0 120,80 0,80\"; IFS=; ") + line);
    EXPECT_EQ(result.status, status) << line << "\n" << result.err.constData();
    EXPECT_TRUE(result.err.startsWith("kelvar: ")) << line << "\n" << result.err.constData();
    EXPECT_EQ(result.err.indexOf('\n'), result.err.size() - 1) << line << "\n"
                                                               << result.err.constData();
    EXPECT_TRUE(result.err.contains(sentence)) << line << "\n" << result.err.constData();
    EXPECT_EQ(result.out, QByteArray()) << line;
    EXPECT_TRUE(contents() == before) << line;
    QFile::remove(path("out.png"));
  }
}

TEST_F(MapTest, ReadsAndWritesEveryFormat) {
  for (const std::string from : {"design.png", "design.jpg", "design.webp", "design.svg"}) {
    for (const std::string to : {"out.png", "out.jpg", "out.jpeg", "out.webp", "OUT.PNG"}) {
      const Outcome result =
          run("kelvar map " + from + " " + kRectangle + " --sampling bilinear -o " + to);
      EXPECT_EQ(result.status, 0) << from << " " << to << "\n" << result.err.constData();
      EXPECT_EQ(result.out + result.err, QByteArray());
      const QImage image(path(to.c_str()));
      ASSERT_EQ(image.size(), QSize(120, 80)) << from << " " << to;
      EXPECT_GT(qRed(image.pixel(20, 40)), 230) << from << " " << to;
      EXPECT_LT(qRed(image.pixel(100, 40)), 25) << from << " " << to;
      QFile::remove(path(to.c_str()));
    }
  }
}

TEST_F(MapTest, MatchesLibrary) {
  const char* corners = "12,3 90,10.5 85,61 -4,77";
  const ImageRef design = ImageFile::read(path("design.png"), {}).value_or(nullptr);
  const ImageRef photo = ImageFile::read(path("photo.png"), {}).value_or(nullptr);
  ASSERT_TRUE(design && photo);
  const struct {
    const char* options;
    MappingOptions expected;
  } cases[] = {
      {"--sampling bilinear", {.sampling = warp::Sampling::Bilinear}},
      {"", {}},
      {"--scale 0", {}},
      {"--scale 1.5", {.quality = 1.5}},
      {"--flip", {.flipped = true}},
      {"--rotation 1", {.rotation = 1}},
      {"--rotation 3 --flip --threads 1", {.rotation = 3, .flipped = true}},
  };
  for (const auto& [options, expected] : cases) {
    const Mapping mapping{.corners = quad(corners), .options = expected};
    const std::string line =
        "kelvar map design.png --points '" + std::string(corners) + "' " + options + " -o out.png";
    ASSERT_EQ(run(line).status, 0) << options;
    // Written by the library, so that both sides lose what the format cannot store.
    const auto same = [&](const ImageRef& image) {
      return ImageFile::write(*image, path("library.png")) &&
             QImage(path("out.png")) == QImage(path("library.png"));
    };
    EXPECT_TRUE(same(mapping.createOutput(design).value())) << options;
    ASSERT_EQ(run(line + " --onto photo.png").status, 0) << options;
    EXPECT_TRUE(same(mapping.compositeOnto(design, photo).value())) << options;
  }
}

TEST_F(MapTest, DrawsArrangement) {
  write("a.json", R"({"kelvar": "arrangement", "version": 1, "photo": "photo.png",
      "designs": [{"id": "d", "file": "design.svg"}], "shapes": [{"id": "1", "design": "d",
      "corners": [[12, 3], [80, 10.5], [85, 61], [4, 67]], "quality": 2, "rotation": 1,
      "flipped": true}]})");
  const std::string one =
      "kelvar map design.svg --points '12,3 80,10.5 85,61 4,67' --scale 2 "
      "--rotation 1 --flip --onto photo.png -o one.png";
  ASSERT_EQ(run(one).status, 0);
  const Outcome all = run("kelvar map --arrangement a.json --threads 1 -o all.png");
  ASSERT_EQ(all.status, 0) << all.err.constData();
  EXPECT_EQ(bytes("all.png"), bytes("one.png"));
}

TEST_F(MapTest, RejectsBadArrangements) {
  const QByteArray head = R"({"kelvar": "arrangement", "version": 1, "photo": "photo.png",
      "designs": [{"id": "d", "file": "design.png"}, {"id": "g", "file": "gone.png"}], )";
  write("line.json", head + R"("shapes": [{"id": "1", "name": "Left", "design": "d",
      "corners": [[0, 0], [5, 5], [9, 9], [0, 9]]}]})");
  write("gone.json", head + R"("shapes": [{"id": "1", "design": "g",
      "corners": [[0, 0], [9, 0], [9, 9], [0, 9]]}]})");
  write("next.json", R"({"kelvar": "arrangement", "version": 7})");
  write("photo.json", R"({"kelvar": "arrangement", "version": 1, "photo": "none.png"})");
  const struct {
    const char* line;
    int status;
    const char* sentence;
  } cases[] = {
      {"kelvar map --arrangement line.json -o out.png", 1, "\"Left\" cannot be shown: three"},
      {"kelvar map --arrangement gone.json -o out.png", 1, "gone.png"},
      {"kelvar map --arrangement next.json -o out.png", 1, "version is 7"},
      {"kelvar map --arrangement photo.json -o out.png", 1, "none.png"},
      {"kelvar map --arrangement nowhere.json -o out.png", 1, "nowhere.json"},
      {"kelvar map --arrangement line.json", 2, "--output"},
      {"kelvar map --arrangement line.json -o out.bmp", 2, "out.bmp"},
      {"kelvar map --arrangement line.json --flip -o out.png", 2, "--flip"},
      {"kelvar map design.png --arrangement line.json -o out.png", 2, "DESIGN"},
      {"kelvar map --arrangement", 2, "--arrangement"},
  };
  for (const auto& [line, status, sentence] : cases) {
    const Outcome result = run(line);
    EXPECT_EQ(result.status, status) << line << "\n" << result.err.constData();
    EXPECT_TRUE(result.err.contains(sentence)) << line << "\n" << result.err.constData();
    EXPECT_EQ(result.err.count('\n'), 1) << line << "\n" << result.err.constData();
    EXPECT_FALSE(QFile::exists(path("out.png"))) << line;
  }
}

TEST_F(MapTest, RendersVectorAtSizeOfQuad) {
  for (const char* options : {"", "--scale 2"}) {
    const Outcome result =
        run(std::string("kelvar map design.svg --points '0,0 200,0 200,100 0,100' -o out.png ") +
            options);
    ASSERT_EQ(result.status, 0) << result.err.constData();
    const QImage image(path("out.png"));
    const int middle = image.width() / 2;
    EXPECT_EQ(image.pixel(middle - 1, 40), 0xffff0000) << "as sharp as the output's pixels";
    EXPECT_EQ(image.pixel(middle, 40), 0xff0000ff);
  }
}

TEST_F(MapTest, PipesAndReplaces) {
  const std::string map = std::string(kRectangle) + " --sampling bilinear ";
  ASSERT_EQ(run("kelvar map design.png " + map + "-o out.png").status, 0);
  ASSERT_EQ(run("kelvar map - " + map + "-o - <design.png >piped.png").status, 0);
  EXPECT_EQ(QImage(path("piped.png")), QImage(path("out.png")));
  ASSERT_EQ(run("cat design.svg | kelvar map - " + map + "-o vector.png").status, 0);
  ASSERT_EQ(run("kelvar map - " + map + "-o - <design.svg >piped-vector.png").status, 0);
  ASSERT_EQ(run("kelvar map design.svg " + map + "-o out-vector.png").status, 0);
  EXPECT_EQ(QImage(path("vector.png")), QImage(path("out-vector.png")));
  EXPECT_EQ(QImage(path("piped-vector.png")), QImage(path("out-vector.png")));
  ASSERT_EQ(run("cat design.png | kelvar map /dev/stdin " + map + "-o piped-path.png").status, 0);
  EXPECT_EQ(QImage(path("piped-path.png")), QImage(path("out.png")));
  ASSERT_EQ(run("kelvar map design.png " + map + "--onto - -o out.png <photo.png").status, 0);
  EXPECT_EQ(QImage(path("out.png")).size(), QSize(90, 70));
  ASSERT_EQ(run("kelvar map design.png " + map + "-o design.png").status, 0);
  EXPECT_EQ(QImage(path("design.png")), QImage(path("piped.png")));
}

TEST_F(MapTest, ReportsAsJson) {
  const struct {
    const char* options;
    const char* json;
  } cases[] = {
      {"--points '-3,5 5,5 5,9 -3,9' --scale 2",
       R"({"corners":[[0,0],[16,0],[16,8],[0,8]],"size":[16,8]})"},
      {"--points '-3,5 -3,9 5,9 5,5' --flip --onto photo.png",
       R"({"corners":[[5,5],[-3,5],[-3,9],[5,9]],"size":[90,70]})"},
  };
  for (const auto& [options, json] : cases) {
    const Outcome result = run(std::string("kelvar map design.png --json -o out.png ") + options);
    ASSERT_EQ(result.status, 0) << result.err.constData();
    QJsonObject object = QJsonDocument::fromJson(result.out).object();
    const QJsonObject times = object.take(QStringLiteral("milliseconds")).toObject();
    EXPECT_EQ(times.keys().join(u' '), QStringLiteral("read warp write"));
    for (const QJsonValue time : times) EXPECT_GT(time.toDouble(), 0);
    EXPECT_EQ(QJsonDocument(object).toJson(QJsonDocument::Compact), QByteArray(json));
  }
  const Outcome full =
      run(std::string("kelvar map design.png --json -o out.png ") + kRectangle + " >/dev/full");
  EXPECT_EQ(full.status, 1);
  EXPECT_TRUE(full.err.startsWith("kelvar: ")) << full.err.constData();
}

TEST_F(MapTest, PrintsHelpAndLog) {
  const Outcome help = run("kelvar map --help");
  EXPECT_EQ(help.status, 0);
  EXPECT_TRUE(help.out.contains("--points") && help.out.contains("Examples:"));
  EXPECT_EQ(help.err, QByteArray());
  EXPECT_EQ(run("kelvar --version").out.first(9), QByteArray("kelvar 1."));
  const std::string map = std::string("map design.png ") + kRectangle + " -o talk.png";
  EXPECT_EQ(run("kelvar " + map).err, QByteArray());
  EXPECT_TRUE(run("kelvar --verbose " + map).err.contains("Wrote talk.png"));
}

}  // namespace
}  // namespace kelvar

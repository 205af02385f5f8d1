#include "host/Arrangement.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <limits>

namespace kelvar {
namespace {

class ArrangementFile : public testing::Test {
 protected:
  QString path(const char* name) const { return dir_.filePath(QString::fromLatin1(name)); }

  void write(const char* name, const QByteArray& bytes) const {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
  }

  QByteArray bytes(const char* name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  QTemporaryDir dir_;
};

Arrangement sample(const QString& folder) {
  Arrangement arrangement;
  arrangement.photo = folder + QStringLiteral("/photos/desk.jpg");
  const QString design = arrangement.addDesign(folder + QStringLiteral("/app.v2.png"));
  Arrangement::Shape shape;
  shape.id = QStringLiteral("1");
  shape.name = QStringLiteral("Écran “1”");
  shape.corners = {QPointF(0.1, -3), {1e-7, 2}, {999999.5, 4}, {5, 1.0 / 3}};
  shape.design = design;
  shape.quality = 3;
  shape.rotation = 2;
  shape.flipped = true;
  shape.included = false;
  Arrangement::Shape plain;
  plain.id = QStringLiteral("x");
  plain.name = QStringLiteral("y");
  arrangement.shapes = {shape, plain};
  return arrangement;
}

TEST_F(ArrangementFile, ReadsWhatItWrote) {
  Arrangement arrangement = sample(dir_.path());
  arrangement.designs.append({QStringLiteral("bytes"), QStringLiteral("caf") + QChar(0xdce9),
                              path("caf") + QChar(0xdce9) + QStringLiteral(".png")});
  QString error;
  ASSERT_TRUE(arrangement.write(path("a.json"), &error)) << error.toStdString();
  const auto again = Arrangement::read(path("a.json"), &error);
  ASSERT_TRUE(again) << error.toStdString();
  EXPECT_EQ(*again, arrangement);
  EXPECT_EQ(again->designs.first().name, QStringLiteral("app.v2"));
}

TEST_F(ArrangementFile, MovesWithItsFolder) {
  QString error;
  ASSERT_TRUE(sample(dir_.path()).write(path("a.json"), &error));
  QDir(dir_.path()).mkdir(QStringLiteral("moved"));
  ASSERT_TRUE(QFile::rename(path("a.json"), path("moved/a.json")));
  const auto moved = Arrangement::read(path("moved/a.json"), &error);
  ASSERT_TRUE(moved) << error.toStdString();
  EXPECT_EQ(moved->photo, path("moved/photos/desk.jpg"));
  EXPECT_EQ(moved->designs.first().file, path("moved/app.v2.png"));
}

TEST_F(ArrangementFile, TakesWhatPeopleWrite) {
  write("a.json", R"({"kelvar": "arrangement", "version": 1, "photo": "/tmp/../p.png",
      "shapes": [{"id": "s", "corners": [[0,0], [9,0], [9.5,9], [0,9]]}]})");
  QString error;
  const auto read = Arrangement::read(path("a.json"), &error);
  ASSERT_TRUE(read) << error.toStdString();
  EXPECT_EQ(read->photo, QStringLiteral("/p.png"));
  const Arrangement::Shape& shape = read->shapes.first();
  EXPECT_EQ(shape.corners[2], QPointF(9.5, 9));
  EXPECT_TRUE(shape.included);
  EXPECT_EQ(shape.quality, 0);
}

TEST_F(ArrangementFile, RefusesWhatIsBroken) {
  const QByteArray shape = R"("id": "s", "corners": [[0,0],[9,0],[9,9],[0,9]])";
  const struct {
    QByteArray members;  // After the photo.
    const char* sentence;
  } cases[] = {
      {R"("shapes": {})", "\"shapes\" of the whole is no list"},
      {R"("shapes": [7])", "shape 1 is no object"},
      {R"("shapes": [{"id": "s"}])", "no list of four points"},
      {R"("shapes": [{"corners": [[0,0],[9,0],[9,9],[0,9]]}])", "shape 1 has no \"id\""},
      {R"("shapes": [{"id": "s", "corners": [[0,0],[9,0],[9,9]]}])", "four points"},
      {R"("shapes": [{"id": "s", "corners": [[0,0],[9,0],[9,9],[0,"9"]]}])", "points [x, y]"},
      {R"("shapes": [{"id": "s", "corners": [[0,0],[9,0],[9,9],[0,1e9]]}])", "a million pixels"},
      {R"("shapes": [{"id": "s", "corners": [[0,0],[9,0],[9,9],5]}])", "points [x, y]"},
      {"\"shapes\": [{" + shape + "}, {" + shape + "}]", "\"id\" of shape 2 is taken"},
      {"\"shapes\": [{" + shape + ", \"quality\": 5}]", "from 1 to 4"},
      {"\"shapes\": [{" + shape + ", \"quality\": 2.0}]", "from 1 to 4"},
      {"\"shapes\": [{" + shape + ", \"rotation\": -1}]", "from 0 to 3"},
      {"\"shapes\": [{" + shape + ", \"flipped\": 1}]", "neither true nor false"},
      {"\"shapes\": [{" + shape + ", \"colour\": 1}]", "unknown member \"colour\""},
      {"\"shapes\": [{" + shape + ", \"design\": \"d\"}]", "none of the designs"},
      {R"("designs": [{"id": "d", "file": ""}])", "\"file\" of design 1 is no text"},
      {R"("designs": [{"id": "d", "file": "a"}, {"id": "d", "file": "b"}])", "design 2 is taken"},
      {R"("layers": [])", "unknown member \"layers\""},
  };
  const QByteArray head = R"({"kelvar": "arrangement", "version": 1, "photo": "p.png", )";
  QString error;
  for (const auto& [members, sentence] : cases) {
    write("a.json", head + members + "}");
    EXPECT_FALSE(Arrangement::read(path("a.json"), &error)) << members.constData();
    EXPECT_TRUE(error.contains(QString::fromUtf8(sentence))) << error.toStdString();
    EXPECT_TRUE(error.contains(path("a.json"))) << error.toStdString();
  }
  const struct {
    const char* file;
    const char* sentence;
  } whole[] = {
      {"", "a.json"},
      {"[]", "is no object"},
      {"{\"kelvar\": \"arr", "a.json"},
      {R"({"photo": "p.png"})", "it is no arrangement"},
      {R"({"kelvar": "arrangement", "photo": "p.png"})", "version 0"},
      {R"({"kelvar": "arrangement", "version": 2, "photo": "p.png"})", "of version 2"},
      {R"({"kelvar": "arrangement", "version": 1})", "no \"photo\""},
  };
  for (const auto& [file, sentence] : whole) {
    write("a.json", file);
    EXPECT_FALSE(Arrangement::read(path("a.json"), &error)) << file;
    EXPECT_TRUE(error.contains(QString::fromUtf8(sentence))) << file << ": " << error.toStdString();
  }
  EXPECT_FALSE(Arrangement::read(path("missing.json"), &error));
}

TEST_F(ArrangementFile, IsReplacedWholeOrNotAtAll) {
  write("a.json", "before");
  QDir(dir_.path()).mkdir(QStringLiteral("folder.json"));
  Arrangement arrangement = sample(dir_.path());
  QString error;
  EXPECT_FALSE(arrangement.write(path("folder.json"), &error));
  EXPECT_FALSE(arrangement.write(path("nowhere/a.json"), &error));
  arrangement.shapes.first().corners[0] = {std::numeric_limits<double>::quiet_NaN(), 0};
  EXPECT_FALSE(arrangement.write(path("a.json"), &error));
  EXPECT_FALSE(error.isEmpty());
  EXPECT_EQ(bytes("a.json"), QByteArray("before"));
}

}  // namespace
}  // namespace kelvar

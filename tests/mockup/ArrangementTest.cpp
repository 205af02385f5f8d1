#include "mockup/Arrangement.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <limits>

namespace kelvar {
namespace {

class ArrangementTest : public testing::Test {
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
  shape.options = {.quality = 4, .rotation = 2, .flipped = true, .includedInArtboards = false};
  Arrangement::Shape plain;
  plain.id = QStringLiteral("x");
  plain.name = QStringLiteral("y");
  arrangement.shapes = {shape, plain};
  return arrangement;
}

TEST_F(ArrangementTest, RoundTrips) {
  Arrangement arrangement = sample(dir_.path());
  arrangement.designs.append({QStringLiteral("bytes"), QStringLiteral("caf") + QChar(0xdce9),
                              path("caf") + QChar(0xdce9) + QStringLiteral(".png")});
  const Result<void> written = arrangement.write(path("a.json"));
  ASSERT_TRUE(written) << written.error().message;
  const Result<Arrangement> again = Arrangement::read(path("a.json"));
  ASSERT_TRUE(again) << again.error().message;
  EXPECT_EQ(*again, arrangement);
  EXPECT_EQ(again->designs.first().name, QStringLiteral("app.v2"));
}

TEST_F(ArrangementTest, SurvivesMoveOfItsFolder) {
  ASSERT_TRUE(sample(dir_.path()).write(path("a.json")));
  QDir(dir_.path()).mkdir(QStringLiteral("moved"));
  ASSERT_TRUE(QFile::rename(path("a.json"), path("moved/a.json")));
  const Result<Arrangement> moved = Arrangement::read(path("moved/a.json"));
  ASSERT_TRUE(moved) << moved.error().message;
  EXPECT_EQ(moved->photo, path("moved/photos/desk.jpg"));
  EXPECT_EQ(moved->designs.first().file, path("moved/app.v2.png"));
}

TEST_F(ArrangementTest, AcceptsHandWrittenFiles) {
  write("a.json", R"({"kelvar": "arrangement", "version": 1, "photo": "/tmp/../p.png",
      "shapes": [{"id": "s", "corners": [[0,0], [9,0], [9.5,9], [0,9]]}]})");
  const Result<Arrangement> read = Arrangement::read(path("a.json"));
  ASSERT_TRUE(read) << read.error().message;
  EXPECT_EQ(read->photo, QStringLiteral("/p.png"));
  const Arrangement::Shape& shape = read->shapes.first();
  EXPECT_EQ(shape.corners[2], QPointF(9.5, 9));
  EXPECT_EQ(shape.options, MappingOptions());
}

TEST_F(ArrangementTest, RejectsBrokenFiles) {
  const QByteArray shape = R"("id": "s", "corners": [[0,0],[9,0],[9,9],[0,9]])";
  const struct {
    QByteArray members;  // After the photo.
    const char* reason;
  } cases[] = {
      {R"("shapes": {})", "\"shapes\" of the file must be an array"},
      {R"("shapes": [7])", "shape 1 must be an object"},
      {R"("shapes": [{"id": "s"}])", "must be an array of four points"},
      {R"("shapes": [{"corners": [[0,0],[9,0],[9,9],[0,9]]}])", "shape 1 has no \"id\""},
      {R"("shapes": [{"id": "s", "corners": [[0,0],[9,0],[9,9]]}])", "four points"},
      {R"("shapes": [{"id": "s", "corners": [[0,0],[9,0],[9,9],[0,"9"]]}])", "points [x, y]"},
      {R"("shapes": [{"id": "s", "corners": [[0,0],[9,0],[9,9],[0,1e9]]}])", "a million pixels"},
      {R"("shapes": [{"id": "s", "corners": [[0,0],[9,0],[9,9],5]}])", "points [x, y]"},
      {"\"shapes\": [{" + shape + "}, {" + shape + "}]", "\"id\" of shape 2 is already in use"},
      {"\"shapes\": [{" + shape + ", \"quality\": 5}]", "from 1 to 4"},
      {"\"shapes\": [{" + shape + ", \"quality\": 2.0}]", "from 1 to 4"},
      {"\"shapes\": [{" + shape + ", \"rotation\": -1}]", "from 0 to 3"},
      {"\"shapes\": [{" + shape + ", \"flipped\": 1}]", "must be true or false"},
      {"\"shapes\": [{" + shape + ", \"colour\": 1}]", "unknown member \"colour\""},
      {"\"shapes\": [{" + shape + ", \"design\": \"d\"}]", "must be the \"id\" of a design"},
      {R"("designs": [{"id": "d", "file": ""}])",
       "\"file\" of design 1 must be a non-empty string"},
      {R"("designs": [{"id": "d", "file": "a"}, {"id": "d", "file": "b"}])",
       "design 2 is already in use"},
      {R"("layers": [])", "unknown member \"layers\""},
  };
  const QByteArray head = R"({"kelvar": "arrangement", "version": 1, "photo": "p.png", )";
  const auto expectRejected = [&](const QByteArray& file, const std::string& reason) {
    write("a.json", file);
    const Result<Arrangement> read = Arrangement::read(path("a.json"));
    ASSERT_FALSE(read) << file.constData();
    const std::string& message = read.error().message;
    EXPECT_NE(message.find(reason), std::string::npos) << reason << ": " << message;
    EXPECT_NE(message.find(path("a.json").toStdString()), std::string::npos) << message;
  };
  for (const auto& [members, reason] : cases) expectRejected(head + members + "}", reason);
  const struct {
    const char* file;
    const char* reason;
  } whole[] = {
      {"", "a.json"},
      {"[]", "the file must be an object"},
      {"{\"kelvar\": \"arr", "a.json"},
      {R"({"photo": "p.png"})", "it is not an arrangement"},
      {R"({"kelvar": "arrangement", "photo": "p.png"})", "its version is 0"},
      {R"({"kelvar": "arrangement", "version": 2, "photo": "p.png"})", "its version is 2"},
      {R"({"kelvar": "arrangement", "version": 1})", "no \"photo\""},
  };
  for (const auto& [file, reason] : whole) expectRejected(file, reason);
  EXPECT_FALSE(Arrangement::read(path("missing.json")));
}

TEST_F(ArrangementTest, IsReplacedAtomically) {
  write("a.json", "before");
  QDir(dir_.path()).mkdir(QStringLiteral("folder.json"));
  Arrangement arrangement = sample(dir_.path());
  EXPECT_FALSE(arrangement.write(path("folder.json")));
  EXPECT_FALSE(arrangement.write(path("nowhere/a.json")));
  arrangement.shapes.first().corners[0] = {std::numeric_limits<double>::quiet_NaN(), 0};
  const Result<void> written = arrangement.write(path("a.json"));
  ASSERT_FALSE(written);
  EXPECT_FALSE(written.error().message.empty());
  EXPECT_EQ(bytes("a.json"), QByteArray("before"));
}

}  // namespace
}  // namespace kelvar

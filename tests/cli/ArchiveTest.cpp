#include <gtest/gtest.h>
#include <sys/wait.h>

#include <QFile>
#include <QTemporaryDir>
#include <cstdlib>

#include "platform/Values.h"
#include "platform/plist/Json.h"
#include "platform/plist/PropertyList.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

struct Result {
  int status = -1;
  QByteArray out;
  QByteArray err;
};

/// Each test runs the built program through the shell, in its own folder.
class ArchiveTest : public testing::Test {
 protected:
  QByteArray bytes(const char* name) const {
    QFile file(dir_.filePath(QString::fromLatin1(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  void write(const char* name, const QByteArray& data) const {
    QFile file(dir_.filePath(QString::fromLatin1(name)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(data), data.size());
  }

  Result run(const std::string& line) const {
    const std::string script = "cd '" + dir_.path().toStdString() + "' && kelvar() { '" +
                               KELVAR_PROGRAM "' \"$@\"; }; { " + line + "; } >.out 2>.err";
    const int status = std::system(script.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, bytes(".out"), bytes(".err")};
  }

  QTemporaryDir dir_;
};

const QByteArray kArchive = R"({
  "$class": "Checker",
  "bytes": {"$class": "NSData", "$data": "AAECAwQFBgcICQoLDA0ODxAR"},
  "empty": [],
  "here": {"$alias": "parts.0"},
  "last check": {"$class": "NSDate", "NS.time": 0.5},
  "lost": {"$alias": "no\u001bwhere"},
  "none": null,
  "parts": [{"$class": "Part", "n": 1, "x": 1.0, "yes": true}, {"$alias": "parts.0"}],
  "root": {"$alias": "$root"},
  "text": "a\nb\u001b[31m\u009bé😀",
  "values": {"k": {"$alias": "text"}}
})";

TEST_F(ArchiveTest, ShowsOutline) {
  write("a.json", kArchive);
  const Result result = run("kelvar archive show a.json");
  EXPECT_EQ(result.status, 0) << result.err.constData();
  const QByteArray expected = R"(Checker
bytes: 18 bytes <000102030405060708090a0b0c0d0e0f...>
empty: list of 0
here: = parts.0 (Part)
"last check": 2001-01-01T00:00:00.500Z
lost: = "no\u001bwhere" (not in the archive)
none: null
parts: list of 2
  0: Part
    n: 1
    x: 1.0
    yes: true
  1: = parts.0 (Part)
root: = $root (Checker)
text: "a\nb\u001b[31m\u009bé😀"
values: dictionary of 1
  k: = text (a value)
)";
  EXPECT_EQ(result.out, expected) << result.out.constData();
  ASSERT_EQ(run("kelvar archive convert a.json -o a.bplist").status, 0);
  EXPECT_EQ(run("kelvar archive show - <a.bplist").out, expected);
}

TEST_F(ArchiveTest, ConvertsBothWays) {
  write("a.json", kArchive);
  write("old.txt", "{ words = (one, \"two\"); }");
  ASSERT_EQ(run("kelvar archive convert a.json -o a.bplist").status, 0);
  ASSERT_EQ(run("kelvar archive convert a.bplist -o b.json").status, 0);
  EXPECT_TRUE(identical(Json::read(bytes("b.json")).value(), Json::read(kArchive).value()));
  auto format = PropertyList::Format::Xml;
  const QVariantMap plist = PropertyList::read(bytes("a.bplist"), &format)->toMap();
  EXPECT_EQ(format, PropertyList::Format::Binary);
  EXPECT_EQ(plist.value(u"bytes"_s).typeId(), QMetaType::QByteArray);
  EXPECT_EQ(plist.value(u"last check"_s).typeId(), QMetaType::QDateTime);

  ASSERT_EQ(run("kelvar archive convert - --to xml -o - <old.txt >old.plist").status, 0);
  EXPECT_TRUE(bytes("old.plist").startsWith("<?xml"));
  ASSERT_EQ(run("kelvar archive convert old.plist -o OLD.JSON").status, 0);
  EXPECT_EQ(bytes("OLD.JSON"),
            QByteArray("{\n  \"words\": [\n    \"one\",\n    \"two\"\n  ]\n}\n"));
}

TEST_F(ArchiveTest, BadInputGivesOneMessageAndNoOutput) {
  write("good.json", "{\"a\":1}");
  write("bad.json", "{\"a\":");
  write("control.json", "[\"\\u0001\"]");
  write("deep.json", QByteArray(100000, '['));
  write("deep.txt", QByteArray(100000, '('));
  write("deep.plist", "<plist>" + QByteArray("<array>").repeated(100000));
  write("out.json", "kept");
  const struct {
    const char* line;
    int status;
    const char* sentence;  // A part of it.
  } cases[] = {
      {"kelvar archive", 2, "subcommand"},
      {"kelvar archive show", 2, "IN"},
      {"kelvar archive convert good.json", 2, "--output"},
      {"kelvar archive convert good.json -o out", 2, "--to"},
      {"kelvar archive convert good.json -o -", 2, "--to"},
      {"kelvar archive convert good.json -o out.json --to yaml", 2, "yaml"},
      {"kelvar archive show missing.json", 1, "missing.json"},
      {"kelvar archive show .", 1, "cannot read ."},
      {"kelvar archive convert bad.json -o out.json", 1, "byte 6"},
      {"kelvar archive show - </dev/null", 1, "standard input"},
      {"kelvar archive show deep.json", 1, "512 deep"},
      {"kelvar archive show deep.txt", 1, "512 deep"},
      {"kelvar archive show deep.plist", 1, "512 deep"},
      {"kelvar archive convert control.json -o out.json --to xml", 1, "U+0001"},
      {"kelvar archive convert good.json -o missing/out.json", 1, "missing/out.json"},
      {"kelvar archive show good.json >/dev/full", 1, "standard output"},
  };
  for (const auto& [line, status, sentence] : cases) {
    const Result result = run(line);
    EXPECT_EQ(result.status, status) << line << "\n" << result.err.constData();
    EXPECT_TRUE(result.err.startsWith("kelvar: ")) << line << "\n" << result.err.constData();
    EXPECT_EQ(result.err.count('\n'), 1) << line << "\n" << result.err.constData();
    EXPECT_TRUE(result.err.contains(sentence)) << line << "\n" << result.err.constData();
    EXPECT_EQ(result.out, QByteArray()) << line;
    EXPECT_EQ(bytes("out.json"), QByteArray("kept")) << line;
  }
}

TEST_F(ArchiveTest, WritesIntoPipeInPlace) {
  write("good.json", "{\"a\":1}");
  const Result result =
      run("mkfifo pipe && exec 3<>pipe && kelvar archive convert good.json -o pipe --to json && "
          "test -p pipe && head -c 13 <&3");
  EXPECT_EQ(result.status, 0) << result.err.constData();
  EXPECT_EQ(result.out, QByteArray("{\n  \"a\": 1\n}\n"));
}

TEST_F(ArchiveTest, PrintsHelp) {
  for (const char* line : {"kelvar archive --help", "kelvar archive convert --help"}) {
    const Result help = run(line);
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.out.contains("Examples:")) << help.out.constData();
  }
}

}  // namespace
}  // namespace kelvar

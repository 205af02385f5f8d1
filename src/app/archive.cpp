#include "app/archive.h"

#include <CLI/CLI.hpp>
#include <QDateTime>
#include <algorithm>
#include <memory>
#include <utility>

#include "app/Failure.h"
#include "app/Output.h"
#include "archive/ArchiveTree.h"
#include "archive/HRCoder.h"
#include "platform/FileName.h"
#include "platform/Json.h"
#include "platform/PropertyList.h"
#include "platform/WholeFile.h"

namespace kelvar::app {
namespace {

constexpr const char* kExamples = R"(
An archive is a property list (XML, binary or the old text form) or JSON. Its objects need not be
known: they are shown and converted as they stand.

Examples:
  What is in it:
    kelvar archive show checker.plist
  As JSON, to be edited, and back:
    kelvar archive convert checker.plist -o checker.json
    kelvar archive convert checker.json -o checker.plist
  In a pipe:
    kelvar archive convert - --to xml -o - < archive.bplist

Exit status: 0 done, 1 failed, 2 misuse.)";

/// The command line, as given.
struct Arguments {
  std::string input;
  std::string output;
  std::string format;
};

[[noreturn]] void misuse(const QString& sentence) { throw Failure(Failure::kMisuse, sentence); }
[[noreturn]] void fail(const QString& sentence) { throw Failure(Failure::kFailed, sentence); }

QVariant readTree(const std::string& path) {
  QByteArray bytes;
  QString error;
  const QString name = fileNameFromBytes(path);
  if (!(path == "-" ? WholeFile::readStandardInput(PropertyList::kMaxBytes, &bytes, &error)
                    : WholeFile::read(name, PropertyList::kMaxBytes, &bytes, &error))) {
    fail(error);
  }
  QString jsonError;
  QVariant tree = PropertyList::read(bytes, nullptr, &error);
  if (!tree.isValid()) tree = Json::read(bytes, &jsonError);
  if (tree.isValid()) return tree;
  fail(QStringLiteral("cannot read %1: it is neither a property list (%2) nor JSON (%3)")
           .arg(path == "-" ? QStringLiteral("standard input") : name, error, jsonError));
}

/// By the ending of the file's name unless it is said.
std::string formatOf(const Arguments& arguments) {
  if (!arguments.format.empty()) return arguments.format;
  const struct {
    const char* ending;
    const char* format;
  } endings[] = {{".json", "json"}, {".plist", "xml"}, {".xml", "xml"}, {".bplist", "binary"}};
  const QString output = fileNameFromBytes(arguments.output);
  for (const auto& [ending, format] : endings) {
    if (output.endsWith(QLatin1String(ending), Qt::CaseInsensitive)) return format;
  }
  misuse(QStringLiteral("say with --to json, xml or binary what %1 shall be, or let it end in "
                        ".json, .plist or .bplist")
             .arg(output == u'-' ? QStringLiteral("standard output") : output));
}

void convert(const Arguments& arguments) {
  const std::string format = formatOf(arguments);
  const QVariant tree = readTree(arguments.input);
  QString error;
  QByteArray bytes;
  if (format == "json") {
    bytes = Json::write(jsonArchiveTree(tree), Json::Layout::Indented, &error);
    if (!bytes.isEmpty()) bytes += '\n';
  } else {
    bytes = PropertyList::write(
        propertyListArchiveTree(tree),
        format == "xml" ? PropertyList::Format::Xml : PropertyList::Format::Binary, &error);
  }
  const QString output = fileNameFromBytes(arguments.output);
  if (bytes.isEmpty()) fail(QStringLiteral("cannot write %1: %2").arg(output, error));
  if (output == u'-') return writeOut(bytes);
  if (!WholeFile::write(output, bytes, &error)) fail(error);
}

/// The tree, a value a line, as people read it.
class Outline {
 public:
  explicit Outline(const QVariant& root) : targets_(archiveAliasTargets(root)) {
    add(QString(), root, 0);
    writeOut(lines_.toUtf8());
  }

 private:
  /// In pieces: where much is nested, the blanks before it are more than can be held.
  static constexpr qsizetype kPiece = qsizetype{1} << 20;

  void add(const QString& label, const QVariant& value, int depth) {
    if (lines_.size() > kPiece) writeOut(std::exchange(lines_, {}).toUtf8());
    lines_ += QString(2 * qMax(depth - 1, 0), u' ');
    if (depth > 0) lines_ += label + QStringLiteral(": ");
    lines_ += summary(value) + u'\n';
    if (isArchiveAlias(value)) return;
    if (value.typeId() == QMetaType::QVariantMap) {
      const QVariantMap map = value.toMap();
      for (auto i = map.begin(); i != map.end(); ++i) {
        if (i.key() != HRCoder::classNameKey()) add(quotedKey(i.key()), i.value(), depth + 1);
      }
    } else if (value.typeId() == QMetaType::QVariantList) {
      const QVariantList list = value.toList();
      for (qsizetype i = 0; i < list.size(); ++i) add(QString::number(i), list[i], depth + 1);
    }
  }

  QString summary(const QVariant& value) const {
    switch (value.typeId()) {
      case QMetaType::QString:
        return quoted(value.toString());
      case QMetaType::QByteArray:
        return bytesSummary(value.toByteArray());
      case QMetaType::QDateTime:
        return value.toDateTime().toString(Qt::ISODateWithMs);
      case QMetaType::QVariantMap:
        return isArchiveAlias(value) ? aliasSummary(value.toMap().first().toString())
                                     : nameOf(value);
      case QMetaType::QVariantList:
        return nameOf(value);
      default: {
        QString error;
        const QByteArray json = Json::write(value, Json::Layout::Compact, &error);
        return json.isEmpty() ? value.toString() : QString::fromLatin1(json);
      }
    }
  }

  QString aliasSummary(const QString& path) const {
    const auto target = targets_.constFind(path);
    const QString what =
        target == targets_.constEnd() ? QStringLiteral("not in the archive") : nameOf(*target);
    return QStringLiteral("= %1 (%2)").arg(quotedKey(path), what);
  }

  static QString nameOf(const QVariant& value) {
    if (value.typeId() == QMetaType::QVariantList) {
      return QStringLiteral("list of %1").arg(value.toList().size());
    }
    if (value.typeId() != QMetaType::QVariantMap) return QStringLiteral("a value");
    const QVariantMap map = value.toMap();
    if (!map.contains(HRCoder::classNameKey())) {
      return QStringLiteral("dictionary of %1").arg(map.size());
    }
    const QString name = map.value(HRCoder::classNameKey()).toString();
    return name == u"NSNull" ? QStringLiteral("null") : quotedKey(name);
  }

  static QString bytesSummary(const QByteArray& bytes) {
    constexpr qsizetype kShown = 16;
    return QStringLiteral("%1 bytes <%2%3>")
        .arg(bytes.size())
        .arg(QString::fromLatin1(bytes.first(qMin(bytes.size(), kShown)).toHex()),
             bytes.size() > kShown ? QStringLiteral("...") : QString());
  }

  /// What a terminal might obey is escaped.
  static QString quoted(const QString& text) {
    QString error;
    const QString json = QString::fromUtf8(Json::write(text, Json::Layout::Compact, &error));
    QString safe;
    for (const QChar c : json) {
      if (c.isPrint() || c.isSurrogate()) {
        safe += c;
      } else {
        safe += QStringLiteral("\\u%1").arg(uint(c.unicode()), 4, 16, QLatin1Char('0'));
      }
    }
    return safe;
  }

  static QString quotedKey(const QString& key) {
    const bool isPlain = !key.isEmpty() && std::all_of(key.begin(), key.end(), [](QChar c) {
      return c.isLetterOrNumber() || c == u'.' || c == u'_' || c == u'$' || c == u'-';
    });
    return isPlain ? key : quoted(key);
  }

  const QHash<QString, QVariant> targets_;
  QString lines_;
};

void show(const Arguments& arguments) {
  const QVariant tree = propertyListArchiveTree(readTree(arguments.input));
  Outline{tree};
}

}  // namespace

std::function<void()> addArchive(CLI::App& program) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* const archive =
      program.add_subcommand("archive", "Look into archives and convert them");
  archive->footer(kExamples);
  archive->fallthrough();
  archive->require_subcommand(1);
  CLI::App* const converting =
      archive->add_subcommand("convert", "Write an archive in another format");
  CLI::App* const showing = archive->add_subcommand("show", "Print an archive as an outline");
  for (CLI::App* const command : {converting, showing}) {
    command->fallthrough();
    command->footer(kExamples);
    command->add_option("IN", arguments->input, "The archive; - is standard input")->required();
  }
  converting->add_option("-o,--output", arguments->output, "Where it goes; - is standard output")
      ->required()
      ->type_name("OUT");
  converting
      ->add_option("--to", arguments->format,
                   "Its format; without it, by the ending of OUT: .json, .plist or .bplist")
      ->check(CLI::IsMember({"json", "xml", "binary"}));
  return [arguments, converting] { converting->parsed() ? convert(*arguments) : show(*arguments); };
}

}  // namespace kelvar::app

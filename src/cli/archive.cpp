#include "cli/archive.h"

#include <CLI/CLI.hpp>
#include <QDateTime>
#include <algorithm>
#include <memory>
#include <utility>

#include "archive/ArchiveTree.h"
#include "archive/HRCoder.h"
#include "cli/CommandError.h"
#include "cli/Output.h"
#include "platform/QtError.h"
#include "platform/files/File.h"
#include "platform/files/FileName.h"
#include "platform/plist/Json.h"
#include "platform/plist/PropertyList.h"

namespace kelvar::cli {
namespace {

constexpr const char* kExamples = R"(
An archive is a property list (XML, binary or OpenStep format) or JSON. Objects of unknown classes
are also shown and converted.

Examples:
  Show an archive's contents:
    kelvar archive show checker.plist
  Convert an archive to JSON for editing, and back:
    kelvar archive convert checker.plist -o checker.json
    kelvar archive convert checker.json -o checker.plist
  In a pipe:
    kelvar archive convert - --to xml -o - < archive.bplist

Exit status: 0 success, 1 failure, 2 usage error.)";

/// The command line, as given.
struct Arguments {
  std::string input;
  std::string output;
  std::string format;
};

QVariant readTree(const std::string& path) {
  const QString name = fileNameFromBytes(path);
  const QByteArray bytes = orThrow(path == "-" ? File::readStandardInput(PropertyList::kMaxBytes)
                                               : File::readAll(name, PropertyList::kMaxBytes));
  const Result<QVariant> list = PropertyList::read(bytes);
  if (list) return *list;
  const Result<QVariant> json = Json::read(bytes);
  if (json) return *json;
  fail(QStringLiteral("cannot read %1: it is neither a property list (%2) nor JSON (%3)")
           .arg(path == "-" ? QStringLiteral("standard input") : name, messageOf(list.error()),
                messageOf(json.error())));
}

/// By the file's extension, unless --to is given.
std::string formatOf(const Arguments& arguments) {
  if (!arguments.format.empty()) return arguments.format;
  const struct {
    const char* extension;
    const char* format;
  } extensions[] = {{".json", "json"}, {".plist", "xml"}, {".xml", "xml"}, {".bplist", "binary"}};
  const QString output = fileNameFromBytes(arguments.output);
  for (const auto& [extension, format] : extensions) {
    if (output.endsWith(QLatin1String(extension), Qt::CaseInsensitive)) return format;
  }
  misuse(QStringLiteral("the format of %1 is unknown: give --to json, xml or binary, or a name "
                        "that ends in .json, .plist or .bplist")
             .arg(output == u'-' ? QStringLiteral("standard output") : output));
}

Result<QByteArray> encoded(const QVariant& tree, const std::string& format) {
  if (format == "json") {
    return Json::write(jsonArchiveTree(tree), Json::Layout::Indented)
        .map([](const QByteArray& json) { return json + '\n'; });
  }
  return PropertyList::write(propertyListArchiveTree(tree), format == "xml"
                                                                ? PropertyList::Format::Xml
                                                                : PropertyList::Format::Binary);
}

void convert(const Arguments& arguments) {
  const std::string format = formatOf(arguments);
  const QVariant tree = readTree(arguments.input);
  const Result<QByteArray> bytes = encoded(tree, format);
  const QString output = fileNameFromBytes(arguments.output);
  if (!bytes) fail(QStringLiteral("cannot write %1: %2").arg(output, messageOf(bytes.error())));
  if (output == u'-') return writeOut(*bytes);
  orThrow(File::writeAtomically(output, *bytes));
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
        const Result<QByteArray> json = Json::write(value);
        return json ? QString::fromLatin1(*json) : value.toString();
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
    const QString json = QString::fromUtf8(Json::write(text).value_or(QByteArray()));
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
  CLI::App* const archive = program.add_subcommand("archive", "Show and convert archives");
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
  converting->add_option("-o,--output", arguments->output, "Output file; - is standard output")
      ->required()
      ->type_name("OUT");
  converting
      ->add_option("--to", arguments->format,
                   "Output format; by default, from the extension of OUT: .json, .plist or .bplist")
      ->check(CLI::IsMember({"json", "xml", "binary"}));
  return [arguments, converting] { converting->parsed() ? convert(*arguments) : show(*arguments); };
}

}  // namespace kelvar::cli

#include "cli/run/ScriptPermissions.h"

#include <CLI/CLI.hpp>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

#include "analytics/AnalyticsSettings.h"
#include "cli/CommandError.h"
#include "core/ApiServer.h"
#include "platform/files/FileName.h"

namespace kelvar::cli {
namespace {

using namespace Qt::StringLiterals;
using Kind = Permissions::Kind;

constexpr Kind kAllKinds[] = {Kind::Read, Kind::Write, Kind::Run, Kind::Open, Kind::Network};

/// One value of an option: kinds, or one kind with a place.
struct Entry {
  QList<Kind> kinds;
  QString place;
};

QList<Kind> kindsNamed(const QString& option, const QString& name) {
  if (name == u"all") return {std::begin(kAllKinds), std::end(kAllKinds)};
  if (const auto kind = Permissions::kindNamed(name)) return {*kind};
  misuse(u"%1 takes read, write, run, open, network or all, not \"%2\""_s.arg(option, name));
}

Entry entryFrom(const QString& option, const std::string& value) {
  const QString text = fileNameFromBytes(value);
  const qsizetype equals = text.indexOf(u'=');
  Entry entry;
  for (const QString& name : text.first(equals < 0 ? text.size() : equals).split(u',')) {
    entry.kinds += kindsNamed(option, name);
  }
  if (equals < 0) return entry;
  entry.place = text.sliced(equals + 1);
  if (entry.kinds.size() == 1) return entry;
  misuse(u"%1 takes one kind before \"=\", as in write=FOLDER, not \"%2\""_s.arg(option, text));
}

QList<Entry> entriesFrom(const QString& option, const std::vector<std::string>& values) {
  QList<Entry> entries;
  for (const std::string& each : values) entries.append(entryFrom(option, each));
  return entries;
}

/// The kinds of the entries without a place.
QSet<Kind> wholeKinds(const QList<Entry>& entries) {
  QSet<Kind> kinds;
  for (const Entry& each : entries) {
    if (each.place.isNull()) kinds.unite({each.kinds.begin(), each.kinds.end()});
  }
  return kinds;
}

/// What a plug-in may do by default, for the kinds that no option opens or closes.
void limitPlugin(Permissions* permissions, const ScriptPermissions::Run& run,
                 const QSet<Kind>& decided) {
  const auto limit = [&](Kind kind, const QStringList& places) {
    if (decided.contains(kind)) return;
    permissions->close(kind);
    for (const QString& place : places) {
      if (!place.isEmpty()) orThrow(permissions->allow(kind, place));
    }
  };
  limit(Kind::Run, {});
  limit(Kind::Network,
        {addressOnApiServer({}).host(), AnalyticsSettings::trackingAddress({}).host(),
         AnalyticsSettings::locationAddress().host()});
  const QString beside = run.document.isNull() ? QString() : QFileInfo(run.document).path();
  limit(Kind::Write, {QDir::currentPath(), QDir::tempPath(), beside});
}

/// Files that the user has named for this run.
void allowOwnFiles(Permissions* permissions, const ScriptPermissions::Run& run) {
  const auto allow = [&](Kind kind, const QString& path) {
    if (!path.isNull()) orThrow(permissions->allow(kind, path));
  };
  allow(Kind::Read, run.isPlugin ? run.target : QFileInfo(run.target).path());
  allow(Kind::Read, run.document);
  allow(Kind::Read, run.output);
  allow(Kind::Write, run.output);
}

}  // namespace

void ScriptPermissions::addOptions(CLI::App& program) {
  const auto add = [&](const char* name, std::vector<std::string>* values, const char* sentence) {
    program.add_option(name, *values, sentence)->type_name("KIND[=PLACE]")->allow_extra_args(false);
  };
  add("--allow", &allowed_, "Allow the script this: read, write, run, open, network or all");
  add("--deny", &denied_, "Forbid it; may be repeated, as --allow may");
}

Permissions ScriptPermissions::permissions(const Run& run) const {
  const QList<Entry> allowed = entriesFrom(u"--allow"_s, allowed_);
  const QList<Entry> denied = entriesFrom(u"--deny"_s, denied_);
  const QSet<Kind> opened = wholeKinds(allowed), closed = wholeKinds(denied);
  Permissions permissions;
  for (const Kind kind : closed) {
    // "--deny all --allow write" leaves writing.
    if (!opened.contains(kind)) permissions.close(kind);
  }
  if (run.isPlugin) limitPlugin(&permissions, run, opened + closed);
  allowOwnFiles(&permissions, run);
  for (const Entry& each : allowed) {
    if (!each.place.isNull()) orThrow(permissions.allow(each.kinds.first(), each.place));
  }
  for (const Entry& each : denied) {
    if (!each.place.isNull()) orThrow(permissions.deny(each.kinds.first(), each.place));
  }
  return permissions;
}

}  // namespace kelvar::cli

#include "platform/Permissions.h"

#include <QDir>
#include <QStandardPaths>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "platform/Log.h"
#include "platform/QtError.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Kind = Permissions::Kind;

struct Row {
  Kind kind;
  QLatin1StringView name;
  /// For the message: "writing out.png is not allowed".
  QLatin1StringView doing;
};

constexpr Row kRows[] = {{Kind::Read, "read"_L1, "reading"_L1},
                         {Kind::Write, "write"_L1, "writing"_L1},
                         {Kind::Run, "run"_L1, "running"_L1},
                         {Kind::Open, "open"_L1, "opening"_L1},
                         {Kind::Network, "network"_L1, "a request to"_L1}};

const Row& rowOf(Kind kind) {
  return *std::find_if(std::begin(kRows), std::end(kRows),
                       [kind](const Row& row) { return row.kind == kind; });
}

bool isAddress(Kind kind) { return kind == Kind::Open || kind == Kind::Network; }

/// Absolute, without symbolic links as far as the file exists.
QString canonicalName(const QString& path) {
  std::error_code error;
  const auto canonical = std::filesystem::weakly_canonical(filePath(absoluteFileName(path)), error);
  // A circle of links leads nowhere.
  return error ? absoluteFileName(path) : fileNameFromBytes(canonical.native());
}

bool isAt(const QString& path, const QString& place) {
  return path == place || path.startsWith(place.endsWith(u'/') ? place : place + u'/');
}

bool isHidden(const QString& path, const QString& place) {
  return QStringView(path).sliced(place.size()).contains(u"/."_s);
}

bool isAddressAt(const QUrl& url, const QString& place) {
  return url.host().compare(place, Qt::CaseInsensitive) == 0 ||
         url.scheme().compare(place, Qt::CaseInsensitive) == 0;
}

/// Whether `deny` or `allow` of one of the places applies to the target.
bool isAmong(const QStringList& places, Kind kind, const QString& target, bool withHidden) {
  return std::any_of(places.begin(), places.end(), [&](const QString& place) {
    if (isAddress(kind)) return isAddressAt(QUrl(target), place);
    return isAt(target, place) && (withHidden || !isHidden(target, place));
  });
}

Result<QString> placeFor(Kind kind, const QString& place) {
  if (place.isEmpty()) {
    return failure(Error::Kind::InvalidArgument, rowOf(kind).name + u"= names nothing"_s);
  }
  if (isAddress(kind)) return place;
  if (kind != Kind::Run || place.contains(u'/')) return canonicalName(place);
  const QString program = QStandardPaths::findExecutable(place);
  if (!program.isEmpty()) return canonicalName(program);
  return failure(Error::Kind::InvalidArgument,
                 u"there is no program \"%1\" on the PATH"_s.arg(place));
}

Result<void> addTo(QStringList* places, Kind kind, const QString& place) {
  const Result<QString> found = placeFor(kind, place);
  if (!found) return tl::unexpected(found.error());
  places->append(*found);
  return {};
}

/// The place whose permission would be enough.
QString placeOf(Kind kind, const QString& target) {
  if (!isAddress(kind)) return canonicalName(target);
  const QUrl url(target);
  return url.host().isEmpty() ? url.scheme() : url.host();
}

QString refusalOf(Kind kind, const QString& target, bool isDenied) {
  const QString refused = u"%1 %2 is not allowed"_s.arg(
      rowOf(kind).doing, target.isEmpty() ? u"\"\""_s : readableFileName(target));
  return isDenied ? u"%1 because of --deny %2=…"_s.arg(refused, rowOf(kind).name)
                  : u"%1; --allow %2=%3 allows it"_s.arg(refused, rowOf(kind).name,
                                                         readableFileName(placeOf(kind, target)));
}

Permissions& installed() {
  static Permissions permissions;
  return permissions;
}

/// Every call from a script opens a scope, so access must be cheap.
[[gnu::tls_model("initial-exec")]] constinit thread_local RefusalScope* innermost = nullptr;

}  // namespace

QString Permissions::nameOf(Kind kind) { return rowOf(kind).name; }

std::optional<Permissions::Kind> Permissions::kindNamed(const QString& name) {
  for (const Row& row : kRows) {
    if (row.name == name) return row.kind;
  }
  return std::nullopt;
}

Result<void> Permissions::allow(Kind kind, const QString& place) {
  return addTo(&rules_[kind].allowed, kind, place);
}

Result<void> Permissions::deny(Kind kind, const QString& place) {
  return addTo(&rules_[kind].denied, kind, place);
}

bool Permissions::allows(Kind kind, const QString& target) const {
  const auto rule = rules_.constFind(kind);
  if (rule == rules_.cend()) return true;
  const QString name = isAddress(kind) ? target : canonicalName(target);
  return !isAmong(rule->denied, kind, name, true) &&
         (rule->isOpen || isAmong(rule->allowed, kind, name, false));
}

bool Permissions::isDenied(Kind kind, const QString& target) const {
  const QString name = isAddress(kind) ? target : canonicalName(target);
  return isAmong(rules_.value(kind).denied, kind, name, true);
}

void Permissions::install(const Permissions& permissions) { installed() = permissions; }

bool Permissions::isAllowed(Kind kind, const QString& target) {
  return installed().allows(kind, target);
}

Result<void> Permissions::check(Kind kind, const QString& target) {
  if (isAllowed(kind, target)) return {};
  const QString message = refusalOf(kind, target, installed().isDenied(kind, target));
  if (!innermost) {
    warnUser(message);
  } else if (!innermost->refusal_) {
    innermost->refusal_ = message;
  }
  return failure(Error::Kind::Unsupported, message);
}

RefusalScope::RefusalScope() : outer_(std::exchange(innermost, this)) {}
RefusalScope::~RefusalScope() { innermost = outer_; }

}  // namespace kelvar

#include "cli/analytics.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "analytics/AnalyticsSettings.h"
#include "analytics/LastPayload.h"
#include "analytics/SegmentIOTracker.h"
#include "cli/CommandError.h"
#include "cli/Output.h"
#include "cli/jsonText.h"
#include "platform/plist/Json.h"
#include "platform/store/UserDefaults.h"
#include "platform/store/UserEmail.h"

namespace kelvar::cli {
namespace {

constexpr const char* kExplanation = R"(
KELVAR_ANALYTICS_SERVER sets the server for events, KELVAR_LOCATION_SERVER the service that locates
this machine. By default, neither is set, and nothing is sent. With DO_NOT_TRACK=1, neither is used,
even if set. docs/privacy.md lists everything that is ever sent.

Examples:
  kelvar analytics
  kelvar analytics reset

Exit status: 0 success, 1 failure, 2 usage error.)";

const QString kUuidKey = QStringLiteral("io.kelvarlabs.kelvar.tracker.uuid");

/// Where the trackers keep who the user is, the shared one without a name too. The address itself
/// is a setting of the user's.
const QString kIdentityKeys[] = {kUuidKey, QStringLiteral(".uuid"),
                                 QStringLiteral("io.kelvarlabs.kelvar.tracker.email"),
                                 QStringLiteral("io.kelvarlabs.tracker.email"),
                                 QStringLiteral("io.kelvarlabs.kelvar.identifiedUser")};

/// The command line, as given.
struct Arguments {
  bool json = false;
  CLI::App* reset = nullptr;
};

QString shown(const QUrl& address) {
  return address.toDisplayString(QUrl::RemoveUserInfo | QUrl::RemoveQuery);
}

QString identity() { return orThrow(UserDefaults::standard().store().read(kUuidKey)).toString(); }

/// What was sent last, or how the next event would look.
struct Payload {
  bool wasSent;
  QString path;
  QVariant body;
};

Payload payload(const QString& uuid) {
  const QString path = LastPayload::path();
  if (!path.isNull()) return {true, path, Json::read(LastPayload::body()).value_or(QVariant())};
  const URLRequest request = SegmentIOTracker::trackingRequestWithEvent(
      QStringLiteral("Started"), QDateTime::currentDateTime(), {}, userEmail(),
      uuid.isEmpty() ? QString() : uuid, {}, QVariantMap());
  return {false, QStringLiteral("/v1/track"), SegmentIOTracker::bodyForRequest(request)};
}

/// In plain words, why nothing is sent or what is sent where.
QString describeSwitch(const QUrl& events, const QUrl& location) {
  if (AnalyticsSettings::isDoNotTrack()) {
    return QStringLiteral("Analytics are off: DO_NOT_TRACK is set. No event is sent.");
  }
  if (events.isEmpty()) {
    return QStringLiteral("Analytics are off: no server is configured. No event is sent.");
  }
  if (!AnalyticsSettings::isOn()) {
    return QStringLiteral("Analytics are off: %1 is not an HTTPS URL. No event is sent.")
        .arg(shown(events));
  }
  const QString place =
      location.isEmpty()
          ? QStringLiteral(
                "No location service is configured: only the first events of a run are sent.")
          : QStringLiteral("This machine's location is requested from %1 once per run.")
                .arg(shown(location));
  return QStringLiteral("Analytics are on: events are sent to %1.\n%2").arg(shown(events), place);
}

QString describe(const QUrl& events, const QUrl& location, const QString& uuid) {
  const QString email = userEmail();
  return describeSwitch(events, location) +
         (uuid.isEmpty() ? QStringLiteral("\nThis installation has no identifier yet.")
                         : QStringLiteral("\nThis installation's identifier is %1.")
                               .arg(sanitizeForTerminal(uuid))) +
         (email.isNull()
              ? QStringLiteral("\nNo email address is known.")
              : QStringLiteral("\nYour email address is %1.").arg(sanitizeForTerminal(email)));
}

QVariant orNull(const QString& text) {
  return text.isEmpty() ? QVariant::fromValue(nullptr) : QVariant(text);
}

void show(bool json) {
  const QUrl events = AnalyticsSettings::trackingAddress(QStringLiteral("/v1/track"));
  const QUrl location = AnalyticsSettings::locationAddress();
  const QString uuid = identity();
  const Payload payload = cli::payload(uuid);
  if (json) {
    const QVariantMap report{{QStringLiteral("isOn"), AnalyticsSettings::isOn()},
                             {QStringLiteral("doNotTrack"), AnalyticsSettings::isDoNotTrack()},
                             {QStringLiteral("server"), orNull(shown(events))},
                             {QStringLiteral("locationService"), orNull(shown(location))},
                             {QStringLiteral("uuid"), orNull(uuid)},
                             {QStringLiteral("email"), orNull(userEmail())},
                             {QStringLiteral("wasSent"), payload.wasSent},
                             {QStringLiteral("path"), payload.path},
                             {QStringLiteral("payload"), payload.body}};
    return print(jsonText(report));
  }
  const QString title =
      payload.wasSent ? QStringLiteral("\nSent last, to %1:").arg(sanitizeForTerminal(payload.path))
                      : QStringLiteral("\nNothing has been sent yet. An event would be:");
  print((describe(events, location, uuid) + u'\n' + title).toUtf8());
  print(jsonText(payload.body, Json::Layout::Indented));
}

void reset() {
  orThrow(LastPayload::forget());
  for (const QString& key : kIdentityKeys) orThrow(UserDefaults::standard().store().remove(key));
  print("The identifier is forgotten. The next start creates a new one.");
  if (userEmail().isNull()) return;
  print(
      "Your email address is still in the settings, and would be tied to it. This removes it:\n"
      "  kelvar settings remove io.kelvarlabs.kelvar.email");
}

}  // namespace

std::function<void()> addAnalytics(CLI::App& program) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* analytics =
      program.add_subcommand("analytics", "Show what usage data is sent, and where");
  analytics->footer(kExplanation);
  analytics->fallthrough();
  analytics->add_flag("--json", arguments->json, "Print the same information as JSON");
  arguments->reset = analytics->add_subcommand("reset", "Forget this installation's identifier");
  arguments->reset->footer("\nExample:\n  kelvar analytics reset");
  return [arguments] { arguments->reset->parsed() ? reset() : show(arguments->json); };
}

}  // namespace kelvar::cli

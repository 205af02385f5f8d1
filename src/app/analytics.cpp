#include "app/analytics.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "analytics/AnalyticsSettings.h"
#include "analytics/LastPayload.h"
#include "analytics/SegmentIOTracker.h"
#include "app/Failure.h"
#include "app/Output.h"
#include "platform/Json.h"
#include "platform/UserDefaults.h"
#include "platform/UserEmail.h"

namespace kelvar::app {
namespace {

constexpr const char* kExplanation = R"(
Events are sent to the server that KELVAR_ANALYTICS_SERVER names, and the service that
KELVAR_LOCATION_SERVER names is asked where this machine is. There are none by default, and then
nothing is sent. With DO_NOT_TRACK=1 neither is used, whatever is set. docs/privacy.md lists all that
is ever sent.

Examples:
  kelvar analytics
  kelvar analytics reset

Exit status: 0 done, 1 failed, 2 misuse.)";

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

[[noreturn]] void fail(const QString& sentence) { throw Failure(Failure::kFailed, sentence); }

QString shown(const QUrl& address) {
  return address.toDisplayString(QUrl::RemoveUserInfo | QUrl::RemoveQuery);
}

QString identity() {
  QString error;
  const QVariant uuid = UserDefaults::standard().objectForKey(kUuidKey, &error);
  if (!error.isEmpty()) fail(error);
  return uuid.toString();
}

/// What was sent last, or how the next event would look.
struct Payload {
  bool wasSent;
  QString path;
  QVariant body;
};

Payload payload(const QString& uuid) {
  QString error;
  const QString path = LastPayload::path();
  if (!path.isNull()) return {true, path, Json::read(LastPayload::body(), &error)};
  const URLRequest request = SegmentIOTracker::trackingRequestWithEvent(
      QStringLiteral("Started"), QDateTime::currentDateTime(), {}, userEmail(),
      uuid.isEmpty() ? QString() : uuid, {}, QVariantMap());
  return {false, QStringLiteral("/v1/track"), SegmentIOTracker::bodyForRequest(request)};
}

QByteArray written(const QVariant& value, Json::Layout layout) {
  QString error;
  const QByteArray text = Json::write(value, layout, &error);
  if (text.isEmpty()) fail(error);
  return text;
}

/// In plain words, why nothing is sent or what is sent where.
QString switchSentence(const QUrl& events, const QUrl& location) {
  if (AnalyticsSettings::isDoNotTrack()) {
    return QStringLiteral("Analytics are off: DO_NOT_TRACK is set. No event is sent.");
  }
  if (events.isEmpty()) {
    return QStringLiteral("Analytics are off: no server is configured. No event is sent.");
  }
  if (!AnalyticsSettings::isOn()) {
    return QStringLiteral("Analytics are off: %1 is no HTTPS address. No event is sent.")
        .arg(shown(events));
  }
  const QString place =
      location.isEmpty()
          ? QStringLiteral(
                "No location service is configured: only the first events of a run are sent.")
          : QStringLiteral("%1 is asked once in a run where this machine is.").arg(shown(location));
  return QStringLiteral("Analytics are on: events are sent to %1.\n%2").arg(shown(events), place);
}

QString sentences(const QUrl& events, const QUrl& location, const QString& uuid) {
  const QString email = userEmail();
  return switchSentence(events, location) +
         (uuid.isEmpty()
              ? QStringLiteral("\nThis installation has no identity yet.")
              : QStringLiteral("\nThis installation's identity is %1.").arg(printable(uuid))) +
         (email.isNull() ? QStringLiteral("\nNo e-mail address is known.")
                         : QStringLiteral("\nYour e-mail address is %1.").arg(printable(email)));
}

QVariant orNull(const QString& text) {
  return text.isEmpty() ? QVariant::fromValue(nullptr) : QVariant(text);
}

void show(bool json) {
  const QUrl events = AnalyticsSettings::trackingAddress(QStringLiteral("/v1/track"));
  const QUrl location = AnalyticsSettings::locationAddress();
  const QString uuid = identity();
  const Payload payload = app::payload(uuid);
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
    return print(written(report, Json::Layout::Compact));
  }
  const QString title = payload.wasSent
                            ? QStringLiteral("\nSent last, to %1:").arg(printable(payload.path))
                            : QStringLiteral("\nNothing was sent yet. An event would be:");
  print((sentences(events, location, uuid) + u'\n' + title).toUtf8());
  print(written(payload.body, Json::Layout::Indented));
}

void reset() {
  QString error;
  bool done = LastPayload::forget(&error);
  for (const QString& key : kIdentityKeys) {
    done = done && UserDefaults::standard().removeObjectForKey(key, &error);
  }
  if (!done) fail(error);
  print("The identity is forgotten. The next start makes a new one.");
  if (userEmail().isNull()) return;
  print(
      "Your e-mail address is still in the settings, and would be tied to it. This removes it:\n"
      "  kelvar settings remove io.kelvarlabs.kelvar.email");
}

}  // namespace

std::function<void()> addAnalytics(CLI::App& program) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* analytics =
      program.add_subcommand("analytics", "Say what is told to whom about the use of Kelvar");
  analytics->footer(kExplanation);
  analytics->fallthrough();
  analytics->add_flag("--json", arguments->json, "Print what is known as JSON");
  arguments->reset = analytics->add_subcommand("reset", "Forget who this installation is");
  arguments->reset->footer("\nExample:\n  kelvar analytics reset");
  return [arguments] { arguments->reset->parsed() ? reset() : show(arguments->json); };
}

}  // namespace kelvar::app

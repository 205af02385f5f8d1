#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <chrono>
#include <functional>
#include <optional>

#include "pixels/Result.h"
#include "platform/Export.h"
#include "platform/PendingTasks.h"
#include "platform/Permissions.h"
#include "platform/network/URLRequest.h"

namespace kelvar {

/// The outcome of a data task.
struct URLResponse {
  /// May be empty; null if there was none. May be incomplete after a transport error.
  QByteArray body;
  /// The HTTP status; 0 if there was none. No status is treated as an error here.
  int status = 0;
  /// Why the transport failed, if it did.
  std::optional<Error> error;
};

/// Fetches URLs in the background.
///
/// URLs must be HTTPS with a certificate that the system trusts, or plain HTTP on this machine. A
/// user name and a password in a URL are sent as HTTP basic authentication (RFC 7617). A
/// redirection is followed if its URL meets the same conditions, has the same scheme and is allowed
/// by `Permissions`; the request's headers do not go to another server. Everything else is a
/// transport error, and so are a body over 8 MiB and a server that takes too long. A
/// truncated body is a transport error if its length was declared; for a chunked body, Qt does not
/// always report this, so readers of the body must detect it.
///
/// The implementation is in a separate library, loaded by the first call of `shared`, because
/// loading Qt Network takes longer than mapping a small image.
class KELVAR_EXPORT URLSession {
 public:
  /// Whether a redirection to this URL is allowed.
  using MayFollow = Result<void> (*)(const QUrl& target);
  using Completion = std::function<void(const URLResponse&)>;

  /// 8 MiB.
  static constexpr qsizetype kMaxBody = qsizetype{8} << 20;

  /// The session of this process. It ends with the QCoreApplication, which must exist; tasks still
  /// in progress are then dropped. Null, with a log line, when its library is missing or the system
  /// cannot start more threads. Safe from any thread.
  static URLSession* shared();

  /// Call on the main thread before the program exits. Runs the event loop for at most `limit`, so
  /// that reports in progress, and those that follow from them, can complete in parallel. Any that
  /// are left are dropped with the session.
  static void finishReports(std::chrono::milliseconds limit = std::chrono::seconds(2));

  virtual ~URLSession() = default;

  /// Starts the request and returns at once. `completion` runs exactly once on the session's own
  /// thread, unless the session ends before.
  ///
  /// A request is sent once, on a new connection, since a reused one may be closing. It is not
  /// retried if the connection breaks. POSTs wait for one another, so that they arrive in the order
  /// in which they were started; they do not follow redirections. No cookies are kept.
  ///
  /// What `Permissions` does not allow is a transport error; a report is then dropped in silence.
  void dataTask(const URLRequest& request, Completion completion) {
    if (!isPermitted(request)) {
      // No address, so the session reports that it cannot be reached.
      return startTask({.isReport = request.isReport}, std::move(completion));
    }
    const auto kind = request.isReport ? PendingTasks::Kind::Report : PendingTasks::Kind::Awaited;
    startTask(request, [completion = std::move(completion), pending = PendingTasks::acquire(kind)](
                           const URLResponse& answer) { completion(answer); });
  }
  /// A GET.
  void dataTask(const QUrl& address, Completion completion) {
    dataTask(URLRequest{.address = address}, std::move(completion));
  }

  /// Limits the duration of requests started from now on, from sending to the last byte of the
  /// answer, including redirections. 30 seconds by default.
  virtual void setTimeout(std::chrono::milliseconds timeout) = 0;

 protected:
  static bool isPermitted(const URLRequest& request) {
    const QString address = request.address.toString(QUrl::RemoveUserInfo);
    return request.isReport ? Permissions::isAllowed(Permissions::Kind::Network, address)
                            : Permissions::check(Permissions::Kind::Network, address).has_value();
  }
  virtual void startTask(const URLRequest& request, Completion completion) = 0;
  /// From now on, POSTs do not wait for one another, and requests that reports wait for end early
  /// enough for the reports to be sent within `limit`.
  virtual void hurry(std::chrono::milliseconds limit) = 0;
};

}  // namespace kelvar

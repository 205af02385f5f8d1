#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <chrono>
#include <functional>

#include "platform/PendingWork.h"
#include "platform/URLRequest.h"

namespace kelvar {

/// What came of a data task.
struct URLAnswer {
  /// The body, perhaps empty, or null when none came. After a transport error it may be a part.
  QByteArray body;
  /// The HTTP status, 0 when none came. No status is an error here.
  int status = 0;
  /// What went wrong on the way, in one sentence; null when nothing did.
  QString error;
};

/// Fetches addresses in the background.
///
/// Addresses are HTTPS with a certificate that the system trusts, or plain HTTP on this very
/// machine. A name and a password in them are sent as the credential of RFC 7617. A redirection is
/// followed to an address of that kind with the same scheme. Everything else is a transport error,
/// and so are a body over 8 MiB and a server that takes too long. A body that stops half-way is one
/// when its length was announced; of a chunked one Qt does not always tell, so that its reader has
/// to notice.
///
/// The code behind it is a library of its own that is loaded by the first call of `shared`: Qt
/// Network takes longer to load than a small picture takes to be mapped.
class URLSession {
 public:
  using Completion = std::function<void(const URLAnswer&)>;

  /// 8 MiB.
  static constexpr qsizetype kMaxBody = qsizetype{8} << 20;

  /// The session of this process. It ends with the QCoreApplication, which has to exist: tasks
  /// still under way are dropped. Null, with a log line, when its library is missing
  /// or the system has no threads to give. Safe from any
  /// thread.
  static URLSession* shared();

  /// What a program calls before it ends. Reports under way, and those that come of them, get at
  /// most so long, side by side, while the main thread's event loop runs here. What is left then is
  /// dropped with the session. On the main thread.
  static void finishReports(std::chrono::milliseconds most = std::chrono::seconds(2));

  virtual ~URLSession() = default;

  /// Starts the request and returns at once. `completion` runs exactly once on the session's own
  /// thread, unless the session ends before.
  ///
  /// A request is sent once, on a connection of its own, since one that was used before may be
  /// closing: when it breaks the request is not tried again. POSTs wait for one another, so that
  /// they arrive in the order in which they were started, and to them a redirection is an answer.
  /// No cookies are kept.
  void dataTask(const URLRequest& request, Completion completion) {
    const auto kind = request.isReport ? PendingWork::Kind::Report : PendingWork::Kind::Awaited;
    startTask(request, [completion = std::move(completion), pending = PendingWork::begin(kind)](
                           const URLAnswer& answer) { completion(answer); });
  }
  /// A GET.
  void dataTask(const QUrl& address, Completion completion) {
    dataTask(URLRequest{.address = address}, std::move(completion));
  }

  /// How long a request may take from the moment at which it is its turn, redirections and the last
  /// byte of the answer included, in tasks started from now on; 30 seconds at first.
  virtual void setTimeout(std::chrono::milliseconds timeout) = 0;

 protected:
  virtual void startTask(const URLRequest& request, Completion completion) = 0;
  /// From now on POSTs do not wait for one another, and what reports wait for ends in time for them
  /// to be sent within `most`.
  virtual void hurry(std::chrono::milliseconds most) = 0;
};

}  // namespace kelvar

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
/// machine. A redirection is followed to an address of that kind with the same scheme. Everything
/// else is a transport error, and so are a body over 8 MiB and a server that is silent for too
/// long. A body that stops half-way is one when its length was announced; of a chunked one Qt does
/// not always tell, so that its reader has to notice.
///
/// The code behind it is a library of its own that is loaded by the first call of `shared`: Qt
/// Network takes longer to load than a small picture takes to be mapped.
class URLSession {
 public:
  using Completion = std::function<void(const URLAnswer&)>;

  /// 8 MiB.
  static constexpr qsizetype kMaxBody = qsizetype{8} << 20;

  /// The session of this process. It ends with the QCoreApplication, which has to exist: tasks
  /// still under way are dropped. Null, with a log line, when its library is missing. Safe from any
  /// thread.
  static URLSession* shared();

  virtual ~URLSession() = default;

  /// Starts the request and returns at once. `completion` runs exactly once on the session's own
  /// thread, unless the session ends before.
  ///
  /// A request is sent once: when the connection breaks it is not tried again. POSTs wait for one
  /// another, so that they arrive in the order in which they were started, and to them a
  /// redirection is an answer. No cookies are kept.
  void dataTask(const URLRequest& request, Completion completion) {
    startTask(request, [completion = std::move(completion), pending = PendingWork::begin()](
                           const URLAnswer& answer) { completion(answer); });
  }
  /// A GET.
  void dataTask(const QUrl& address, Completion completion) {
    dataTask(URLRequest{.address = address}, std::move(completion));
  }

  /// How long a server may be silent in tasks started from now on; 60 seconds at first.
  virtual void setTimeout(std::chrono::milliseconds timeout) = 0;

 protected:
  virtual void startTask(const URLRequest& request, Completion completion) = 0;
};

}  // namespace kelvar

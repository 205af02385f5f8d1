#include "platform/network/NetworkTask.h"

#include <QNetworkRequest>
#include <QPointer>
#include <QSslError>
#include <algorithm>

#include "platform/network/Gunzip.h"
#include "platform/network/isAllowedAddress.h"

namespace kelvar {
namespace {

constexpr int kMaxRedirections = 20;

int statusOf(const QNetworkReply& reply) {
  return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

/// Bytes that can be read once.
class OneWayBuffer : public QIODevice {
 public:
  OneWayBuffer(QByteArray bytes, QObject* parent) : QIODevice(parent), bytes_(std::move(bytes)) {
    open(QIODevice::ReadOnly);
  }
  void setReply(const QNetworkReply* reply) { reply_ = reply; }

  bool isSequential() const override { return true; }
  /// Qt rewinds before it delivers one of these answers, though it does not follow them here.
  bool seek(qint64) override {
    const int status = reply_ ? statusOf(*reply_) : 0;
    return status == 307 || status == 308;
  }
  qint64 bytesAvailable() const override {
    return bytes_.size() - at_ + QIODevice::bytesAvailable();
  }

 protected:
  qint64 readData(char* to, qint64 most) override {
    const qint64 count = std::min(most, bytes_.size() - at_);
    if (count == 0 && most > 0) return -1;
    std::copy_n(bytes_.data() + at_, count, to);
    at_ += count;
    return count;
  }
  qint64 writeData(const char*, qint64) override { return -1; }

 private:
  const QByteArray bytes_;
  qint64 at_ = 0;
  QPointer<const QNetworkReply> reply_;
};

bool isPost(const URLRequest& request) { return request.method == "POST"; }

bool isSameServer(const QUrl& a, const QUrl& b) {
  return a.host() == b.host() && a.port() == b.port();
}

/// Without the parts that may be secret.
QString shown(const QUrl& address) {
  return address.toDisplayString(QUrl::RemoveUserInfo | QUrl::RemoveQuery);
}

/// Qt's error for a closed connection on which it would have sent the request again.
constexpr auto kClosed = QNetworkReply::ContentReSendError;

/// Whether the body of an answer ends where the connection does.
bool endsWithConnection(const QNetworkReply& reply) {
  return !reply.hasRawHeader("Content-Length") && !reply.hasRawHeader("Transfer-Encoding");
}

/// An HTTP status that Qt counts as an error is an answer like any other.
bool isTransportError(const QNetworkReply& reply, int status) {
  const QNetworkReply::NetworkError error = reply.error();
  if (error == QNetworkReply::NoError) return false;
  if (error == kClosed) return status == 0 || !endsWithConnection(reply);
  const bool isAnswer =
      error >= QNetworkReply::ContentAccessDenied && error != QNetworkReply::ProtocolFailure;
  return status < 400 || !isAnswer;
}

}  // namespace

NetworkTask::NetworkTask(QObject* parent, URLRequest request, URLSession::MayFollow mayFollow,
                         URLSession::Completion completion)
    : QObject(parent),
      mayFollow_(mayFollow),
      completion_(std::move(completion)),
      request_(std::move(request)),
      deadline_(this) {
  deadline_.setSingleShot(true);
}

void NetworkTask::start(std::chrono::milliseconds timeout) {
  if (!isAllowedAddress(request_.address)) {
    return completeWith(Error::Kind::InvalidArgument,
                        QStringLiteral("%1 is not an HTTPS URL").arg(shown(request_.address)));
  }
  connect(&deadline_, &QTimer::timeout, this,
          [this] { fail(QStringLiteral("the server did not answer in time")); });
  deadline_.start(timeout);
  send();
}

void NetworkTask::hurry(const QDeadlineTimer& end) {
  if (!request_.isReport || isPost(request_)) return;
  const auto left = int(end.remainingTime());
  if (deadline_.remainingTime() > left) deadline_.start(left);
}

void NetworkTask::send() {
  QUrl address = request_.address;
  address.setUserInfo(QString());
  QNetworkRequest request(address);
  request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Kelvar"));
  // Qt alone would send the name and the password only when asked, repeating the request.
  if (!request_.address.userInfo().isEmpty()) {
    const QString credential = request_.address.userName(QUrl::FullyDecoded) + u':' +
                               request_.address.password(QUrl::FullyDecoded);
    request.setRawHeader("Authorization", "Basic " + credential.toUtf8().toBase64());
  }
  for (const auto& [name, value] : request_.headers) request.setRawHeader(name, value);
  // Useless for a single request on a connection.
  request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  // Qt 6.4 fails when it follows redirections itself and asks us about each.
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                       QNetworkRequest::ManualRedirectPolicy);
  // A cookie would let the server recognize two requests as one machine's.
  for (const auto control :
       {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute}) {
    request.setAttribute(control, QNetworkRequest::Manual);
  }
  reply_ = sendOnce(request);
  connect(reply_, &QNetworkReply::sslErrors, this, [this](const QList<QSslError>& errors) {
    fail(QStringLiteral("the server is not to be trusted: %1").arg(errors[0].errorString()));
  });
  connect(reply_, &QNetworkReply::readyRead, this, &NetworkTask::read);
  connect(reply_, &QNetworkReply::finished, this, &NetworkTask::finish);
}

/// Sends the body, even an empty one, from a device that cannot be rewound: otherwise Qt repeats
/// the request endlessly when the server closes the connection without an answer.
QNetworkReply* NetworkTask::sendOnce(QNetworkRequest request) {
  request.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
  request.setHeader(QNetworkRequest::ContentLengthHeader, request_.body.size());
  auto* const body = new OneWayBuffer(request_.body, this);
  QNetworkReply* const reply = manager_->sendCustomRequest(request, request_.method, body);
  body->setReply(reply);
  return reply;
}

void NetworkTask::follow(const QUrl& redirection) {
  const QUrl target = request_.address.resolved(redirection);
  if (!isAllowedAddress(target) || target.scheme() != request_.address.scheme()) {
    return completeWith(Error::Kind::Unsupported,
                        QStringLiteral("the redirection to %1 is not followed").arg(shown(target)));
  }
  if (const Result<void> may = mayFollow_(target); !may) {
    answer_.error = may.error();
    return complete();
  }
  if (++redirections_ > kMaxRedirections) {
    return completeWith(
        Error::Kind::Io,
        QStringLiteral("there are more than %1 redirections").arg(kMaxRedirections));
  }
  answer_ = {};
  reply_->deleteLater();
  // They may hold secrets for the first server.
  if (!isSameServer(request_.address, target)) request_.headers.clear();
  request_.address = target;
  send();
}

void NetworkTask::read() {
  const qint64 most = URLSession::kMaxBody + 1 - answer_.body.size();
  answer_.body += reply_->read(std::min(most, reply_->bytesAvailable()));
  if (answer_.body.size() <= URLSession::kMaxBody) return;
  answer_.body.clear();
  fail(QStringLiteral("the answer is longer than 8 MiB"));
}

/// Ends in `finish`.
void NetworkTask::fail(const QString& message) {
  if (answer_.error) return;
  answer_.error = Error{Error::Kind::Io, message.toStdString()};
  reply_->abort();
}

void NetworkTask::completeWith(Error::Kind kind, const QString& message) {
  answer_.error = Error{kind, message.toStdString()};
  complete();
}

void NetworkTask::finish() {
  answer_.status = statusOf(*reply_);
  if (!answer_.error) read();
  if (!answer_.error && isTransportError(*reply_, answer_.status)) {
    return completeWith(Error::Kind::Io, reply_->error() == kClosed
                                             ? QStringLiteral("Connection closed")
                                             : reply_->errorString());
  }
  if (answer_.error) return complete();
  const QUrl redirection = reply_->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
  if (!redirection.isEmpty() && !isPost(request_)) return follow(redirection);
  if (answer_.body.isNull()) answer_.body = QByteArray("");
  if (unpack()) return complete();
  completeWith(Error::Kind::Damaged, QStringLiteral("the answer cannot be unpacked"));
}

/// Qt decompresses only what it has requested itself. False when the body is damaged or too long.
bool NetworkTask::unpack() {
  const bool isOurs =
      std::any_of(request_.headers.begin(), request_.headers.end(),
                  [](const auto& header) { return header.first == "Accept-Encoding"; });
  if (!isOurs || answer_.body.isEmpty()) return true;
  if (reply_->rawHeader("Content-Encoding") != "gzip") return true;
  answer_.body = gunzipped(answer_.body, URLSession::kMaxBody);
  return !answer_.body.isNull();
}

void NetworkTask::complete() {
  deadline_.stop();
  completion_(answer_);
  deleteLater();
}

}  // namespace kelvar

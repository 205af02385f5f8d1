#include "platform/network/NetworkTask.h"

#include <QHostAddress>
#include <QNetworkRequest>
#include <QSslError>

namespace kelvar {
namespace {

constexpr int kMaxRedirections = 20;

bool isThisMachine(const QString& host) {
  return host == QStringLiteral("localhost") || QHostAddress(host).isLoopback();
}

bool isAllowed(const QUrl& address) {
  if (address.scheme() == QStringLiteral("https")) return !address.host().isEmpty();
  return address.scheme() == QStringLiteral("http") && isThisMachine(address.host());
}

/// An HTTP status that Qt counts as an error is an answer like any other.
bool isTransportError(const QNetworkReply& reply, int status) {
  const QNetworkReply::NetworkError error = reply.error();
  if (error == QNetworkReply::NoError) return false;
  const bool isAnswer =
      error >= QNetworkReply::ContentAccessDenied && error != QNetworkReply::ProtocolFailure;
  return status < 400 || !isAnswer;
}

}  // namespace

NetworkTask::NetworkTask(QNetworkAccessManager* manager, URLSession::Completion completion)
    : QObject(manager), manager_(manager), completion_(std::move(completion)), silence_(this) {
  silence_.setSingleShot(true);
}

void NetworkTask::start(const QUrl& address, std::chrono::milliseconds timeout) {
  if (!isAllowed(address)) {
    answer_.error = QStringLiteral("%1 is no HTTPS address").arg(address.toString());
    return complete();
  }
  connect(&silence_, &QTimer::timeout, this,
          [this] { fail(QStringLiteral("the server did not answer in time")); });
  silence_.start(timeout);
  get(address);
}

void NetworkTask::get(const QUrl& address) {
  address_ = address;
  QNetworkRequest request(address);
  request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Kelvar"));
  // Qt 6.4 loses its way where it asks us about each redirection and follows them itself.
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                       QNetworkRequest::ManualRedirectPolicy);
  reply_ = manager_->get(request);
  reply_->setParent(this);
  connect(reply_, &QNetworkReply::sslErrors, this, [this](const QList<QSslError>& errors) {
    fail(QStringLiteral("the server is not to be trusted: %1").arg(errors[0].errorString()));
  });
  connect(reply_, &QNetworkReply::metaDataChanged, this, [this] { silence_.start(); });
  connect(reply_, &QNetworkReply::readyRead, this, &NetworkTask::read);
  connect(reply_, &QNetworkReply::finished, this, &NetworkTask::finish);
}

void NetworkTask::follow(const QUrl& redirection) {
  const QUrl target = address_.resolved(redirection);
  if (!isAllowed(target) || target.scheme() != address_.scheme()) {
    answer_.error = QStringLiteral("the redirection to %1 is not followed").arg(target.toString());
    return complete();
  }
  if (++redirections_ > kMaxRedirections) {
    answer_.error = QStringLiteral("there are more than %1 redirections").arg(kMaxRedirections);
    return complete();
  }
  answer_ = {};
  reply_->deleteLater();
  silence_.start();
  get(target);
}

void NetworkTask::read() {
  silence_.start();
  answer_.body += reply_->read(URLSession::kMaxBody + 1 - answer_.body.size());
  if (answer_.body.size() <= URLSession::kMaxBody) return;
  answer_.body.clear();
  fail(QStringLiteral("the answer is longer than 8 MiB"));
}

/// Ends in `finish`.
void NetworkTask::fail(const QString& error) {
  if (!answer_.error.isNull()) return;
  answer_.error = error;
  reply_->abort();
}

void NetworkTask::finish() {
  answer_.status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  if (answer_.error.isNull()) read();
  if (answer_.error.isNull() && isTransportError(*reply_, answer_.status)) {
    answer_.error = reply_->errorString();
  }
  if (!answer_.error.isNull()) return complete();
  const QUrl redirection = reply_->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
  if (!redirection.isEmpty()) return follow(redirection);
  if (answer_.body.isNull()) answer_.body = QByteArray("");
  complete();
}

void NetworkTask::complete() {
  silence_.stop();
  completion_(answer_);
  deleteLater();
}

}  // namespace kelvar

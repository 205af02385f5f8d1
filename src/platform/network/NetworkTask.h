#pragma once

#include <QDeadlineTimer>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

#include "platform/network/URLSession.h"

namespace kelvar {

/// One request in progress. Deletes itself after completion.
class NetworkTask : public QObject {
 public:
  NetworkTask(QObject* parent, URLRequest request, URLSession::MayFollow mayFollow,
              URLSession::Completion completion);

  /// Starts the request, which fails if it does not complete in time.
  void start(std::chrono::milliseconds timeout);
  /// If reports wait for this request, it must complete by `end`.
  void hurry(const QDeadlineTimer& end);

 private:
  void send();
  QNetworkReply* sendOnce(QNetworkRequest request);
  void follow(const QUrl& redirection);
  void read();
  void finish();
  bool unpack();
  void fail(const QString& message);
  void completeWith(Error::Kind kind, const QString& message);
  void complete();

  /// Not shared: Qt has no other way to get a connection that no other request has used.
  QNetworkAccessManager* const manager_ = new QNetworkAccessManager(this);
  const URLSession::MayFollow mayFollow_;
  const URLSession::Completion completion_;
  QNetworkReply* reply_ = nullptr;
  /// Its URL changes with redirections.
  URLRequest request_;
  int redirections_ = 0;
  QTimer deadline_;
  URLResponse answer_;
};

}  // namespace kelvar

#pragma once

#include <QDeadlineTimer>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

#include "platform/URLSession.h"

namespace kelvar {

/// One request under way. Goes away by itself once it has completed.
class NetworkTask : public QObject {
 public:
  NetworkTask(QObject* parent, URLRequest request, URLSession::Completion completion);

  /// Fails when it has not completed in time.
  void start(std::chrono::milliseconds timeout);
  /// What a report waits for is to have completed by then.
  void hurry(const QDeadlineTimer& end);

 private:
  void send();
  QNetworkReply* sendOnce(QNetworkRequest request);
  void follow(const QUrl& redirection);
  void read();
  void finish();
  bool unpack();
  void fail(const QString& error);
  void complete();

  /// Of its own, since Qt has no other way to a connection that no other request has used.
  QNetworkAccessManager* const manager_ = new QNetworkAccessManager(this);
  const URLSession::Completion completion_;
  QNetworkReply* reply_ = nullptr;
  /// Its address changes with redirections.
  URLRequest request_;
  int redirections_ = 0;
  QTimer deadline_;
  URLAnswer answer_;
};

}  // namespace kelvar

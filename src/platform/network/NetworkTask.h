#pragma once

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

#include "platform/URLSession.h"

namespace kelvar {

/// One request under way. Belongs to its manager and goes away by itself once it has completed.
class NetworkTask : public QObject {
 public:
  NetworkTask(QNetworkAccessManager* manager, URLRequest request,
              URLSession::Completion completion);

  void start(std::chrono::milliseconds timeout);

 private:
  void send();
  QNetworkReply* sendOnce(QNetworkRequest request);
  void follow(const QUrl& redirection);
  void read();
  void finish();
  bool unpack();
  void fail(const QString& error);
  void complete();

  QNetworkAccessManager* const manager_;
  const URLSession::Completion completion_;
  QNetworkReply* reply_ = nullptr;
  /// Its address changes with redirections.
  URLRequest request_;
  int redirections_ = 0;
  /// Runs out when the server has been silent for too long.
  QTimer silence_;
  URLAnswer answer_;
};

}  // namespace kelvar

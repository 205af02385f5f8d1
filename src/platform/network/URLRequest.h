#pragma once

#include <QByteArray>
#include <QList>
#include <QUrl>
#include <utility>

namespace kelvar {

/// A request to a server. The headers are sent in order.
struct URLRequest {
  /// GET or POST.
  QByteArray method = "GET";
  QUrl address = {};
  QList<std::pair<QByteArray, QByteArray>> headers = {};
  QByteArray body = {};
  /// Whether the request is a usage report, or a usage report waits for it. See
  /// `PendingTasks::Kind::Report`.
  bool isReport = false;
};

}  // namespace kelvar

#pragma once

#include <QByteArray>
#include <QList>
#include <QUrl>
#include <utility>

namespace kelvar {

/// What is asked of a server. The headers are sent in their order.
struct URLRequest {
  /// GET or POST.
  QByteArray method = "GET";
  QUrl address = {};
  QList<std::pair<QByteArray, QByteArray>> headers = {};
  QByteArray body = {};
  /// Whether it tells about the use of the program, or is what such a report waits for. See
  /// `PendingWork::Kind::Report`.
  bool isReport = false;
};

}  // namespace kelvar

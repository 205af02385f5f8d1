#pragma once

#include <QMimeData>
#include <QStringList>
#include <QUrl>

namespace kelvar::cli {

/// The local files being dropped.
inline QStringList droppedFiles(const QMimeData* data) {
  QStringList files;
  for (const QUrl& url : data->urls()) {
    if (url.isLocalFile()) files.append(url.toLocalFile());
  }
  return files;
}

}  // namespace kelvar::cli

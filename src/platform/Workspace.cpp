#include "platform/Workspace.h"

#include <QDesktopServices>
#include <QUrlQuery>

#include "platform/Log.h"

namespace kelvar {
namespace {

/// Some mail programs take the name of a file from here.
bool attachesFiles(const QUrl& mail) {
  for (const auto& [name, value] : QUrlQuery(mail).queryItems(QUrl::FullyDecoded)) {
    if (name.startsWith(u"attach", Qt::CaseInsensitive)) return true;
  }
  return false;
}

bool isAllowed(const QUrl& url) {
  if (!url.isValid()) return false;
  if (url.scheme() == u"http" || url.scheme() == u"https") return !url.host().isEmpty();
  return url.scheme() == u"mailto" && !attachesFiles(url);
}

}  // namespace

bool Workspace::openURL(const QUrl& url) {
  if (isAllowed(url)) return QDesktopServices::openUrl(url);
  logLine(u"Workspace: %@ is not opened", {url.toString()});
  return false;
}

}  // namespace kelvar

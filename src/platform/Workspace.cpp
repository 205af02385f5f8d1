#include "platform/Workspace.h"

#include <QDesktopServices>
#include <QUrlQuery>

#include "platform/Log.h"
#include "platform/Permissions.h"

namespace kelvar {
namespace {

/// Some mail programs read the name of a file to attach from these.
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
  if (isAllowed(url)) {
    return Permissions::check(Permissions::Kind::Open, url.toString()) &&
           QDesktopServices::openUrl(url);
  }
  logLine(u"Workspace: %@ is not opened", {url.toString()});
  return false;
}

}  // namespace kelvar

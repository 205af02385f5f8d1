#include "scripting/host/NSWorkspace.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

#include "platform/Permissions.h"
#include "platform/Workspace.h"
#include "platform/files/FileName.h"
#include "runtime/ClassInfo.h"
#include "runtime/raise.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Self = NSWorkspace;

const ClassInfo::Registration kRegistered(&NSWorkspace::staticClassInfo);

/// Files are not opened, as the program for them may run what is in them.
bool openURL(Self&, const QUrl& url) {
  if (url.isEmpty()) raise(u"openURL: takes an NSURL, not nil"_s);
  return Workspace::openURL(url);
}

/// The folder itself, or the one that contains the file.
bool showFolder(const QString& path) {
  const QFileInfo file(absoluteFileName(path));
  if (!file.exists()) return false;
  const QString folder = file.isDir() ? file.absoluteFilePath() : file.absolutePath();
  const QUrl url = QUrl::fromLocalFile(folder);
  orRaise(Permissions::check(Permissions::Kind::Open, url.toString()));
  return QDesktopServices::openUrl(url);
}

bool selectFile(Self&, const QString& path, const QVariant&) { return showFolder(path); }

void activateFileViewer(Self&, const QVariantList& urls) {
  for (const QVariant& url : urls) {
    if (!url.toUrl().isLocalFile()) raise(u"activateFileViewerSelectingURLs: takes files"_s);
    showFolder(url.toUrl().toLocalFile());
  }
}

}  // namespace

const ClassInfo& NSWorkspace::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("NSWorkspace")
          .classOperation(
              "sharedWorkspace",
              [] {
                static const auto kShared = std::make_shared<Self>();
                return kShared;
              },
              "Returns the user's desktop.")
          .operation("openURL:", openURL,
                     "Opens an http, https or mailto URL with the user's program for it, and "
                     "returns whether there was one; others are refused.")
          .operation(
              "openFile:",
              [](Self&, const QString& path) {
                return QFileInfo(absoluteFileName(path)).isDir() && showFolder(path);
              },
              "Shows a folder to the user, and returns whether that could be done; files are "
              "refused.")
          .operation("selectFile:inFileViewerRootedAtPath:", selectFile,
                     "Shows the folder of a file to the user, and returns whether that could be "
                     "done.")
          .operation("activateFileViewerSelectingURLs:", activateFileViewer,
                     "Shows the folders of files to the user.");
  return kClass;
}

}  // namespace kelvar

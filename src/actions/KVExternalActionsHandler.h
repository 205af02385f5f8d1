#pragma once

#include <QUrl>

#include "runtime/Object.h"

namespace kelvar {

/// The four buttons that link to the vendor's web site. Each is logged, tracked with the shared
/// tracker, and opens a page whose URL describes the user's setup.
///
/// The site comes from KELVAR_WEB_SITE, or else from KVWebSite in Info.plist: a URL such as
/// "https://www.example.com", or a bare host name, which means plain HTTP. None is set by default:
/// then nothing opens. Use on the main thread.
class KELVAR_EXPORT KVExternalActionsHandler : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// Whether a site is set.
  static bool hasSite();

  /// The page's URL. The setup replaces any query: plug-in, system, host application and the user's
  /// email address, with "(null)" for unknown values. Empty if `path` is an absolute URL that is
  /// invalid.
  QUrl urlWithPath(const QString& path) const;

  /// The sender, a button, is ignored.
  void homepageButtonDidPress(const QVariant& sender);
  void feedbackForumButtonDidPress(const QVariant& sender);
  void supportButtonDidPress(const QVariant& sender);
  void visitStoreButtonDidPress(const QVariant& sender);

 private:
  void press(const char* operation, const char* event, const char* page) const;
};

}  // namespace kelvar

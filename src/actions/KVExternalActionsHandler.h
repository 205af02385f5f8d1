#pragma once

#include <QUrl>

#include "runtime/Object.h"

namespace kelvar {

/// What the four buttons with links to the vendor's web site do: each is logged, counted with the
/// shared tracker, and opens a page whose address tells the site what setup asks.
///
/// The site is what KELVAR_WEB_SITE names, otherwise KVWebSite in Info.plist: an address such as
/// "https://www.example.com", or a bare host, which is spoken to in plain HTTP. There is none by
/// default: then nothing opens. On the main thread.
class KELVAR_EXPORT KVExternalActionsHandler : public Object {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  /// Whether there is a site whose pages can open.
  static bool hasSite();

  /// The page's address with the setup in place of any query that it had: plug-in, system, host and
  /// the user's e-mail address, "(null)" for what is not known. Empty when `path`, a whole address,
  /// is none.
  QUrl urlWithPath(const QString& path) const;

  /// The sender, a button, is not looked at.
  void homepageButtonDidPress(const QVariant& sender);
  void feedbackForumButtonDidPress(const QVariant& sender);
  void supportButtonDidPress(const QVariant& sender);
  void visitStoreButtonDidPress(const QVariant& sender);

 private:
  void press(const char* operation, const char* event, const char* page) const;
};

}  // namespace kelvar

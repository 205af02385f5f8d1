#include "scripting/NSURL.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&NSURL::theClass);

/// None for what is no address.
QVariant URLWithString(const QString& string) {
  const QUrl url(string, QUrl::StrictMode);
  return url.isValid() ? QVariant(url) : QVariant();
}

}  // namespace

const ClassInfo& NSURL::theClass() {
  static const ClassInfo kClass =
      Description<NSURL>("NSURL")
          .classOperation("URLWithString:", URLWithString)
          .classOperation("fileURLWithPath:",
                          [](const QString& path) { return QUrl::fromLocalFile(path); })
          .property("absoluteString", &NSURL::description)
          .property("scheme", [](const NSURL& self) { return self.url_.scheme(); })
          .property("host", [](const NSURL& self) { return self.url_.host(); })
          .property("path", [](const NSURL& self) { return self.url_.path(); })
          .property("lastPathComponent", [](const NSURL& self) { return self.url_.fileName(); });
  return kClass;
}

}  // namespace kelvar

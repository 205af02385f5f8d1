#include "scripting/NSURLRequest.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

QVariantMap headersOf(const URLRequest& request) {
  QVariantMap headers;
  for (const auto& [name, value] : request.headers) {
    headers.insert(QString::fromLatin1(name), QString::fromLatin1(value));
  }
  return headers;
}

/// Names of headers have no case.
QString header(const URLRequest& request, const QString& wanted) {
  for (const auto& [name, value] : request.headers) {
    if (name.compare(wanted.toLatin1(), Qt::CaseInsensitive) == 0)
      return QString::fromLatin1(value);
  }
  return {};
}

}  // namespace

const ClassInfo& NSURLRequest::staticClassInfo() {
  using Self = NSURLRequest;
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("NSURLRequest")
          .property(
              "URL", [](const Self& self) { return self.request_.address; }, "Where it is sent to.")
          .property(
              "HTTPMethod",
              [](const Self& self) { return QString::fromLatin1(self.request_.method); },
              "The method, \"GET\" or \"POST\".")
          .property(
              "HTTPBody", [](const Self& self) { return self.request_.body; }, "The bytes sent.")
          .property(
              "allHTTPHeaderFields", [](const Self& self) { return headersOf(self.request_); },
              "The headers by name.")
          .operation(
              "valueForHTTPHeaderField:",
              [](const Self& self, const QString& name) { return header(self.request_, name); },
              "Returns the header's value; nil if there is none.");
  return kClass;
}

}  // namespace kelvar

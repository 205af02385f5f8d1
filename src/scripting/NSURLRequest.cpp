#include "scripting/NSURLRequest.h"

#include <QRegularExpression>
#include <algorithm>

#include "runtime/ClassInfo.h"
#include "runtime/raise.h"

namespace kelvar {
namespace {

QVariantMap headersOf(const URLRequest& request) {
  QVariantMap headers;
  for (const auto& [name, value] : request.headers) {
    headers.insert(QString::fromLatin1(name), QString::fromUtf8(value));
  }
  return headers;
}

template <class T>
std::shared_ptr<T> withURL(const QUrl& url) {
  return std::make_shared<T>(QVariant::fromValue(URLRequest{.address = url}));
}
template <class T>
std::shared_ptr<T> withURLAndTime(const QUrl& url, int, double) {
  return withURL<T>(url);
}

template <class T, class Base>
ClassInfoBuilder<T, Base> made(ClassInfoBuilder<T, Base> builder) {
  return std::move(builder)
      .initializer("initWithURL:", withURL<T>, "Creates a GET request.")
      .classOperation("requestWithURL:", withURL<T>, "Creates a GET request.")
      .classOperation("requestWithURL:cachePolicy:timeoutInterval:", withURLAndTime<T>,
                      "Creates a GET request. Nothing is cached, and the time is limited to 30 "
                      "seconds in any case.");
}

/// Names of headers have no case.
QString header(const URLRequest& request, const QString& wanted) {
  for (const auto& [name, value] : request.headers) {
    if (name.compare(wanted.toLatin1(), Qt::CaseInsensitive) == 0) return QString::fromUtf8(value);
  }
  return {};
}

/// Raises for what would end a header, and with it begin another one.
void requireHeader(const QString& value, const QString& name) {
  static const QRegularExpression kToken(QStringLiteral(R"(\A[!#$%&'*+.^_`|~0-9A-Za-z-]+\z)"));
  if (!kToken.match(name).hasMatch()) {
    raise(QStringLiteral("\"%1\" cannot be the name of a header").arg(name));
  }
  const bool hasControl = std::any_of(
      value.begin(), value.end(), [](QChar c) { return (c < u' ' && c != u'\t') || c == u'\x7f'; });
  if (hasControl) {
    raise(QStringLiteral("the value of the header %1 has a control character").arg(name));
  }
}

}  // namespace

const ClassInfo& NSURLRequest::staticClassInfo() {
  using Self = NSURLRequest;
  static const ClassInfo kClass =
      made(ClassInfoBuilder<Self>("NSURLRequest"))
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

const ClassInfo& NSMutableURLRequest::staticClassInfo() {
  using Self = NSMutableURLRequest;
  static const ClassInfo kClass =
      made(ClassInfoBuilder<Self, NSURLRequest>("NSMutableURLRequest"))
          .initializer(
              "init", [] { return withURL<Self>({}); }, "Creates a GET request to nowhere yet.")
          .operation(
              "setURL:", [](Self& self, const QUrl& url) { self.request_.address = url; },
              "Sets where it is sent to.")
          .operation("setHTTPMethod:", &Self::setMethod, "Sets the method, GET or POST.")
          .operation(
              "setHTTPBody:", [](Self& self, const QByteArray& body) { self.request_.body = body; },
              "Sets the bytes to send.")
          .operation("setValue:forHTTPHeaderField:", &Self::setHeader,
                     "Sets a header; nil removes it.")
          .operation("addValue:forHTTPHeaderField:", &Self::addHeader,
                     "Adds a value to a header, after a comma if it has one.")
          .operation("setAllHTTPHeaderFields:", &Self::setHeaders, "Replaces the headers.");
  return kClass;
}

void NSMutableURLRequest::setMethod(const QString& method) {
  const QString upper = method.toUpper();
  if (upper != u"GET" && upper != u"POST") {
    raise(QStringLiteral("the method %1 is not supported, only GET and POST").arg(method));
  }
  request_.method = upper.toLatin1();
}

void NSMutableURLRequest::setHeader(const QString& value, const QString& name) {
  requireHeader(value, name);
  const QByteArray key = name.toLatin1();
  request_.headers.removeIf(
      [&](const auto& header) { return header.first.compare(key, Qt::CaseInsensitive) == 0; });
  if (!value.isNull()) request_.headers.append({key, value.toUtf8()});
}

void NSMutableURLRequest::addHeader(const QString& value, const QString& name) {
  if (value.isNull()) return;
  const QString before = header(request_, name);
  setHeader(before.isEmpty() ? value : before + QStringLiteral(", ") + value, name);
}

void NSMutableURLRequest::setHeaders(const QVariantMap& headers) {
  for (auto each = headers.begin(); each != headers.end(); ++each) {
    requireHeader(each.value().toString(), each.key());
  }
  request_.headers.clear();
  for (auto each = headers.begin(); each != headers.end(); ++each) {
    setHeader(each.value().toString(), each.key());
  }
}

}  // namespace kelvar

#pragma once

#include "platform/network/URLRequest.h"
#include "scripting/Boxed.h"

namespace kelvar {

/// A request to a server as scripts see it.
class NSURLRequest : public Boxed {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// `request` holds a `URLRequest`.
  explicit NSURLRequest(const QVariant& request) : request_(request.value<URLRequest>()) {}

  QVariant value() const override { return QVariant::fromValue(request_); }

 private:
  URLRequest request_;

  friend class NSMutableURLRequest;
};

/// A request that a script puts together.
class NSMutableURLRequest : public NSURLRequest {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  using NSURLRequest::NSURLRequest;

  /// Raises for anything but GET and POST.
  void setMethod(const QString& method);
  /// Nil removes the header. Raises for a name or a value that no header can have.
  void setHeader(const QString& value, const QString& name);
  /// Keeps what the header has, with a comma in between.
  void addHeader(const QString& value, const QString& name);
  void setHeaders(const QVariantMap& headers);
};

}  // namespace kelvar

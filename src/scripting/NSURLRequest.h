#pragma once

#include "platform/network/URLRequest.h"
#include "scripting/Boxed.h"

namespace kelvar {

/// A request to a server as scripts see it, to look at.
class NSURLRequest : public Boxed {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// `request` holds a `URLRequest`.
  explicit NSURLRequest(const QVariant& request) : request_(request.value<URLRequest>()) {}

  QVariant value() const override { return QVariant::fromValue(request_); }

 private:
  const URLRequest request_;
};

}  // namespace kelvar

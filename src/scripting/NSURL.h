#pragma once

#include <QUrl>

#include "scripting/Boxed.h"

namespace kelvar {

/// A URL as scripts see it.
class NSURL : public Boxed {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// `url` holds a `QUrl`.
  explicit NSURL(const QVariant& url) : url_(url.toUrl()) {}

  const QUrl& url() const { return url_; }
  QVariant value() const override { return url_; }
  QString description() const override { return url_.toString(QUrl::FullyEncoded); }

 private:
  const QUrl url_;
};

}  // namespace kelvar

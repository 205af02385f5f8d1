#pragma once

#include <QUrl>

#include "scripting/Boxed.h"

namespace kelvar {

/// An address, for scripts.
class NSURL : public Boxed {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  /// `url` is a `QUrl`.
  explicit NSURL(const QVariant& url) : url_(url.toUrl()) {}

  QVariant value() const override { return url_; }
  QString description() const override { return url_.toString(QUrl::FullyEncoded); }

 private:
  const QUrl url_;
};

}  // namespace kelvar

#pragma once

#include <QDateTime>
#include <QUrl>
#include <QVariantMap>

namespace kelvar {

/// The dictionaries for values that a format cannot represent. They name the class that reads them:
/// "NSDate" with the seconds since the start of 2001 under "NS.time", "NSURL" with the URL under
/// "NS.relative", and "NSNull".
QVariantMap encodedDate(const QDateTime& date);
QVariantMap encodedUrl(const QUrl& url);
QVariantMap encodedNull();

}  // namespace kelvar

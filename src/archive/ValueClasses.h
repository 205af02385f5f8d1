#pragma once

#include <QDateTime>
#include <QUrl>
#include <QVariantMap>

namespace kelvar {

/// What stands in a tree for values that the format has no place for. They are read back as the
/// values, by the classes that these name: "NSDate" with the seconds since the start of 2001 under
/// "NS.time", "NSURL" with the address under "NS.relative", "NSNull".
QVariantMap encodedDate(const QDateTime& date);
QVariantMap encodedUrl(const QUrl& url);
QVariantMap encodedNull();

}  // namespace kelvar

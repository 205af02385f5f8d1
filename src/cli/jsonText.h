#pragma once

#include <QVariant>

#include "platform/plist/Json.h"

namespace kelvar::cli {

/// A value in JSON. Throws a `CommandError` for one that JSON cannot hold.
QByteArray jsonText(const QVariant& value, Json::Layout layout = Json::Layout::Compact);

}  // namespace kelvar::cli

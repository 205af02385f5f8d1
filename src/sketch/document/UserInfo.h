#pragma once

#include <QVariantMap>

#include "sketch/document/SketchJson.h"

namespace kelvar {

/// The dictionaries that plug-ins keep in the "userInfo" of a layer or a document, one for each
/// plug-in's identifier.

/// Empty if there is none.
QVariantMap userInfoOf(const SketchJson& owner, const QString& identifier);
/// An empty map removes the dictionary, and "userInfo" with its last one.
void setUserInfo(SketchJson* owner, const QString& identifier, const QVariantMap& values);

}  // namespace kelvar

#pragma once

#include <QStringList>
#include <QVariantMap>

#include "scripting/plugin/PluginBundle.h"

namespace kelvar::cli {

/// What a run is about, and the contexts that its scripts get.
struct RunContext {
  /// Null for a plain script.
  PluginBundleRef plugin;
  /// Null without --document.
  SketchDocumentRef document;
  QVariantList selection;
  QStringList arguments;

  /// For a plain script or, if it is not null, a plug-in's command.
  QVariantMap of(const QString& script, const PluginCommandRef& command) const;
  /// For a handler of an action.
  QVariantMap of(const PluginCommandRef& listener, const QString& action) const;
};

}  // namespace kelvar::cli

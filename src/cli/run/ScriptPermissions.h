#pragma once

#include <CLI/App.hpp>
#include <QStringList>
#include <string>
#include <vector>

#include "platform/Permissions.h"

namespace kelvar::cli {

/// What the script may do, from --allow and --deny.
///
/// A script file may do what the user may do, like any program that the user starts. A plug-in,
/// which others have written, starts no programs, sends requests to the configured servers alone,
/// and writes beside the document, in the working directory and in the folder for temporary files.
class ScriptPermissions {
 public:
  /// What the run is about; its own files are always allowed.
  struct Run {
    bool isPlugin = false;
    /// The script, or the plug-in's folder.
    QString target;
    /// Null without one.
    QString document;
    /// Where the options save the document; null without them.
    QString output;
  };

  void addOptions(CLI::App& program);

  /// Throws a `CommandError` for an option that makes no sense.
  Permissions permissions(const Run& run) const;

 private:
  std::vector<std::string> allowed_, denied_;
};

}  // namespace kelvar::cli

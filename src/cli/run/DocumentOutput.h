#pragma once

#include <CLI/App.hpp>
#include <string>

#include "sketch/document/SketchDocument.h"

namespace kelvar::cli {

/// What becomes of the document when the script is done.
///
/// The script may have saved it itself, as the commands of Kelvar's own plug-in do. With -o, its
/// `save` writes that file, so that the document stays as it is.
class DocumentOutput {
 public:
  /// Adds --save and -o. `document` is the option that names the document.
  void addOptions(CLI::App& program, CLI::Option* document);

  /// Opens the document. Throws a `CommandError` if that fails or -o names no document.
  SketchDocumentRef open(const std::string& path);

  /// The file that the options name; a null string without any.
  QString path() const;

  /// Saves as the options ask, or else reports changes that were not saved. A script that failed
  /// saves nothing. Throws a `CommandError` if saving fails.
  void finish(bool hasSucceeded);

 private:
  bool isMissing() const;
  void redrawPreview();

  SketchDocumentRef document_;
  /// Where the document was opened.
  QString opened_;
  std::string output_;
  bool inPlace_ = false;
};

}  // namespace kelvar::cli

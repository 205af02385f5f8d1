#pragma once

#include <QList>

#include "pixels/Result.h"

namespace kelvar {
class SketchDocument;
}

namespace kelvar::render {

/// Makes available, for its own lifetime, the fonts of the folders that were added, and those that
/// the document embeds, as documents of 2025 do, unless their family is installed. Does nothing
/// without an application with fonts.
class DocumentFonts {
 public:
  explicit DocumentFonts(const SketchDocument& document);
  ~DocumentFonts();
  DocumentFonts(const DocumentFonts&) = delete;
  DocumentFonts& operator=(const DocumentFonts&) = delete;

  /// Adds a folder, for all drawings from now on. Fails if it has no .ttf, .otf or .ttc files. Call
  /// it before drawing on other threads.
  static Result<void> addFolder(const QString& folder);

 private:
  void take(int font);

  QList<int> fonts_;
};

}  // namespace kelvar::render

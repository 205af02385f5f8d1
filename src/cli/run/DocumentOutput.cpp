#include "cli/run/DocumentOutput.h"

#include <CLI/CLI.hpp>

#include "cli/CommandError.h"
#include "cli/DocumentCommand.h"
#include "cli/Output.h"
#include "mockup/DocumentMapping.h"
#include "platform/files/FileName.h"

namespace kelvar::cli {

using namespace Qt::StringLiterals;

void DocumentOutput::addOptions(CLI::App& program, CLI::Option* document) {
  CLI::Option* const save =
      program.add_flag("--save", inPlace_, "Save the document if the script changed it")
          ->needs(document);
  program.add_option("-o,--output", output_, "Save it to this file instead, changed or not")
      ->type_name("OUT")
      ->needs(document)
      ->excludes(save);
}

SketchDocumentRef DocumentOutput::open(const std::string& path) {
  if (!output_.empty() && !SketchDocument::hasSupportedExtension(fileNameFromBytes(output_))) {
    misuse(u"-o takes a file that ends in sketch, not \"%1\""_s.arg(fileNameFromBytes(output_)));
  }
  document_ = openDocument(path, inPlace_ ? path : output_);
  opened_ = document_->path();
  if (!output_.empty()) document_->setSavePath(this->path());
  return document_;
}

QString DocumentOutput::path() const {
  if (inPlace_) return opened_;
  return output_.empty() ? QString() : absoluteFileName(fileNameFromBytes(output_));
}

/// Whether the file to write lacks what the document has now.
bool DocumentOutput::isMissing() const {
  if (document_->hasUnsavedChanges()) return true;
  return absoluteFileName(document_->path()) != absoluteFileName(path());
}

void DocumentOutput::redrawPreview() {
  DocumentMapping mapping(document_);
  mapping.redrawPreview();
  document_->addWarnings(mapping.warnings());
}

void DocumentOutput::finish(bool hasSucceeded) {
  if (!document_) return;
  if (hasSucceeded && !path().isNull()) {
    if (!isMissing()) return;
    if (document_->hasUnsavedChanges()) redrawPreview();
    orThrow(document_->save(path()));
  } else if (document_->hasUnsavedChanges()) {
    const QString why = hasSucceeded ? u"; use --save or -o OUT"_s : u": the script failed"_s;
    printError(u"%1 was changed but not saved"_s.arg(sanitizeForTerminal(opened_)) + why);
  }
}

}  // namespace kelvar::cli

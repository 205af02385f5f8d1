#pragma once

#include <QString>
#include <functional>

#include "mockup/Arrangement.h"

class QMessageBox;
class QWidget;

namespace kelvar::cli {

/// The window's questions. Each opens without blocking and calls back if the answer requires an
/// action. `parent` outlives the question.

/// Calls `replace` at once if there is no such file, else if the user agrees to replace it.
void confirmReplace(QWidget* parent, const QString& file, const Arrangement& arrangement,
                    const std::function<void()>& replace);

/// Asks what to do with unsaved changes.
void promptUnsaved(QWidget* parent, bool isDocument, const std::function<void()>& save,
                   const std::function<void()>& discard);

/// Asks which version of a document to keep that has changed both here and on disk. Closing the
/// question decides nothing.
QMessageBox* promptDiskConflict(QWidget* parent, const QString& file,
                                const std::function<void()>& reload,
                                const std::function<void()>& keep);

}  // namespace kelvar::cli

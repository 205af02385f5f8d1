#pragma once

#include <QStringList>
#include <functional>

class QWidget;

namespace kelvar::cli {

class MockupSession;

/// The window's file dialogs. Each opens without blocking and calls `then` with the chosen files,
/// or not at all if it is canceled. `parent` outlives the dialog.
using FileChosen = std::function<void(const QString& file)>;

void chooseFileToOpen(QWidget* parent, const FileChosen& then);
void chooseDesigns(QWidget* parent, const std::function<void(const QStringList& files)>& then);
/// Suggests the name of the open file, with the extension under which it is saved.
void chooseFileToSave(QWidget* parent, const MockupSession& session, const FileChosen& then);
/// Does not ask before a file is replaced.
void chooseFileToExport(QWidget* parent, const MockupSession& session, const FileChosen& then);

}  // namespace kelvar::cli

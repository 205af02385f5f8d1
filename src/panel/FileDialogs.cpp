#include "panel/FileDialogs.h"

#include <QFileDialog>
#include <QFileInfo>

#include "panel/MockupSession.h"

namespace kelvar::cli {
namespace {

constexpr QLatin1StringView kImages("*.png *.jpg *.jpeg *.webp *.svg");

QFileDialog* makeDialog(QWidget* parent, const QString& title, const QString& filter) {
  auto* const dialog = new QFileDialog(parent, title, {}, filter);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  return dialog;
}

}  // namespace

void chooseFileToOpen(QWidget* parent, const FileChosen& then) {
  auto* const dialog =
      makeDialog(parent, QStringLiteral("Open a Photo or a Document"),
                 QStringLiteral("Photos, documents and arrangements (%1 *.sketch *.json);;"
                                "All files (*)")
                     .arg(kImages));
  dialog->setFileMode(QFileDialog::ExistingFile);
  QObject::connect(dialog, &QFileDialog::fileSelected, parent, then);
  dialog->open();
}

void chooseDesigns(QWidget* parent, const std::function<void(const QStringList& files)>& then) {
  auto* const dialog = makeDialog(parent, QStringLiteral("Add Designs"),
                                  QStringLiteral("Images (%1);;All files (*)").arg(kImages));
  dialog->setFileMode(QFileDialog::ExistingFiles);
  QObject::connect(dialog, &QFileDialog::filesSelected, parent, then);
  dialog->open();
}

void chooseFileToSave(QWidget* parent, const MockupSession& session, const FileChosen& then) {
  const bool isDocument = session.isDocument();
  auto* const dialog = isDocument ? makeDialog(parent, QStringLiteral("Save the Document"),
                                               QStringLiteral("Sketch documents (*.sketch)"))
                                  : makeDialog(parent, QStringLiteral("Save the Arrangement"),
                                               QStringLiteral("Arrangements (*.json)"));
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  const QString suffix = isDocument ? QStringLiteral("sketch") : QStringLiteral("json");
  dialog->setDefaultSuffix(suffix);
  const QFileInfo from(isDocument ? session.file() : session.model().arrangement().photo);
  dialog->setDirectory(from.absolutePath());
  dialog->selectFile(from.completeBaseName() + u'.' + suffix);
  QObject::connect(dialog, &QFileDialog::fileSelected, parent, then);
  dialog->open();
}

void chooseFileToExport(QWidget* parent, const MockupSession& session, const FileChosen& then) {
  auto* const dialog =
      makeDialog(parent, QStringLiteral("Export"),
                 QStringLiteral("PNG (*.png);;JPEG (*.jpg *.jpeg);;WebP (*.webp)"));
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setOption(QFileDialog::DontConfirmOverwrite);
  const auto useExtensionOf = [dialog](const QString& filter) {
    dialog->setDefaultSuffix(filter.section(u'.', 1).section(u' ', 0, 0).remove(u')'));
  };
  useExtensionOf(dialog->selectedNameFilter());
  QObject::connect(dialog, &QFileDialog::filterSelected, dialog, useExtensionOf);
  const QFileInfo from(session.shownFile());
  dialog->setDirectory(from.absolutePath());
  dialog->selectFile(from.completeBaseName() + QStringLiteral("-mockup.png"));
  QObject::connect(dialog, &QFileDialog::fileSelected, parent, then);
  dialog->open();
}

}  // namespace kelvar::cli

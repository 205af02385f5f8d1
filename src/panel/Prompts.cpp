#include "panel/Prompts.h"

#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>

#include "platform/files/FileName.h"

namespace kelvar::cli {
namespace {

QMessageBox* makeBox(QWidget* parent, QMessageBox::Icon icon, const QString& text,
                     QMessageBox::StandardButtons buttons) {
  auto* const box = new QMessageBox(icon, QStringLiteral("Kelvar"), text, buttons, parent);
  box->setAttribute(Qt::WA_DeleteOnClose);
  return box;
}

QString nameOf(const QString& file) { return QFileInfo(file).fileName(); }

}  // namespace

void confirmReplace(QWidget* parent, const QString& file, const Arrangement& arrangement,
                    const std::function<void()>& replace) {
  if (!QFileInfo::exists(file)) return replace();
  const auto isReplaced = [&](const auto& design) { return isSameFile(file, design.file); };
  QString fact = QStringLiteral("%1 already exists.");
  QString loss = QStringLiteral("Its contents will be lost.");
  if (isSameFile(file, arrangement.photo)) {
    fact = QStringLiteral("%1 is the photo of this mockup.");
    loss = QStringLiteral("The original photo will be lost, and this mockup needs it.");
  } else if (std::any_of(arrangement.designs.begin(), arrangement.designs.end(), isReplaced)) {
    fact = QStringLiteral("%1 is a design of this mockup.");
    loss = QStringLiteral("The original design will be lost, and this mockup needs it.");
  }
  auto* const box =
      makeBox(parent, QMessageBox::Warning,
              fact.arg(nameOf(file)) + QStringLiteral(" Replace it with the exported image?"),
              QMessageBox::Cancel);
  box->setInformativeText(loss);
  const auto* const yes = box->addButton(QStringLiteral("Replace"), QMessageBox::DestructiveRole);
  box->setDefaultButton(QMessageBox::Cancel);
  QObject::connect(box, &QMessageBox::buttonClicked, parent,
                   [yes, replace](const QAbstractButton* button) {
                     if (button == yes) replace();
                   });
  box->open();
}

void promptUnsaved(QWidget* parent, bool isDocument, const std::function<void()>& save,
                   const std::function<void()>& discard) {
  auto* const box =
      makeBox(parent, QMessageBox::Question,
              QStringLiteral("Save the changes to this %1?")
                  .arg(isDocument ? QStringLiteral("document") : QStringLiteral("arrangement")),
              QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
  box->setDefaultButton(QMessageBox::Save);
  QObject::connect(box, &QMessageBox::finished, parent, [save, discard](int button) {
    if (button == QMessageBox::Discard) discard();
    if (button == QMessageBox::Save) save();
  });
  box->open();
}

QMessageBox* promptDiskConflict(QWidget* parent, const QString& file,
                                const std::function<void()>& reload,
                                const std::function<void()>& keep) {
  auto* const box = makeBox(
      parent, QMessageBox::Warning,
      QStringLiteral("%1 has changed on disk, and you have changes here.").arg(nameOf(file)),
      QMessageBox::NoButton);
  box->setInformativeText(
      QStringLiteral("Reload it to discard your changes. Keep yours, and the next Save replaces "
                     "the file on disk."));
  const auto* const reloads =
      box->addButton(QStringLiteral("Reload"), QMessageBox::DestructiveRole);
  QPushButton* const keeps = box->addButton(QStringLiteral("Keep Mine"), QMessageBox::AcceptRole);
  box->setEscapeButton(box->addButton(QStringLiteral("Decide Later"), QMessageBox::RejectRole));
  box->setDefaultButton(keeps);
  QObject::connect(box, &QMessageBox::buttonClicked, parent, [=](const QAbstractButton* button) {
    if (button == reloads) reload();
    if (button == keeps) keep();
  });
  box->open();
  return box;
}

}  // namespace kelvar::cli

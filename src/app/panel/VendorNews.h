#pragma once

#include <QObject>

#include "actions/KVExternalActionsHandler.h"
#include "core/KVVersionChecker.h"
#include "core/Kelvar.h"
#include "ui/KVViewController.h"

class QWidget;

namespace kelvar::app {

class PanelColumn;

/// What the vendor has to say in the panel: the banner with the first unread message, the line
/// about a new version with its button, and the four links.
class VendorNews : public QObject {
 public:
  /// Adds its views to the column.
  explicit VendorNews(PanelColumn* column);

  /// Shows what is stored, and asks the servers for more. Without servers nothing is sent.
  void start();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void makeBanner();
  void makeVersionLine();
  QWidget* makeLinks();
  void showFirstUnread();
  void showVersion(const KVVersionChecker& checker);

  PanelColumn* column_;
  /// The first in the process starts the count of what is used.
  KelvarRef kelvar_;
  KVVersionCheckerRef checker_;
  std::shared_ptr<KVVersionCheckerDelegate> checkerDelegate_;
  std::shared_ptr<KVExternalActionsHandler> links_;
  KVViewControllerRef banner_;
  std::shared_ptr<KVViewControllerDelegate> bannerDelegate_;
  KVViewControllerRef versionLine_;
};

}  // namespace kelvar::app

#pragma once

#include <QObject>

#include "actions/KVExternalActionsHandler.h"
#include "core/KVVersionChecker.h"
#include "core/Kelvar.h"
#include "ui/KVViewController.h"

class QWidget;

namespace kelvar::cli {

class InspectorPanel;

/// The vendor's part of the panel: the banner with the first unread message, the line about a new
/// version with its button, and the four links.
class NotificationArea : public QObject {
 public:
  /// Adds its views to the panel.
  explicit NotificationArea(InspectorPanel* panel);

  /// Shows the stored messages and version, and requests new ones from the server. Without a
  /// server, nothing is sent.
  void start();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void makeBanner();
  void makeVersionLine();
  QWidget* makeLinks();
  void showFirstUnread();
  void showVersion(const KVVersionChecker& checker);

  InspectorPanel* panel_;
  /// The first `Kelvar` object in the process starts analytics.
  KelvarRef kelvar_;
  KVVersionCheckerRef checker_;
  std::shared_ptr<KVVersionCheckerDelegate> checkerDelegate_;
  std::shared_ptr<KVExternalActionsHandler> links_;
  KVViewControllerRef banner_;
  std::shared_ptr<KVViewControllerDelegate> bannerDelegate_;
  KVViewControllerRef versionLine_;
};

}  // namespace kelvar::cli

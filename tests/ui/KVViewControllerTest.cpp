#include "ui/KVViewController.h"

#include <gtest/gtest.h>

#include <thread>

#include "Panel.h"
#include "platform/Browser.h"
#include "platform/LogCapture.h"
#include "runtime/DelegateInfo.h"
#include "ui/KVResizeViewController.h"

namespace kelvar {
namespace {

using Delegate = KVViewControllerDelegate;

class Counted : public KVAction {
 public:
  bool exec() override { return ++runs > 100; }
  int runs = 0;
};

class KVViewControllerTest : public testing::Test {
 protected:
  void load(const char* nib) {
    controller_ = KVViewController::initWithNibName(text(nib));
    ASSERT_TRUE(controller_ && controller_->view()) << nib;
    controller_->setDelegate(delegate_);
    panel_.add(controller_->view());
    panel_.show();
  }

  /// A delegate with every operation, which records the calls.
  std::shared_ptr<Delegate> listening() {
    auto delegate = std::make_shared<Delegate>();
    const auto told = [this](const char* what) {
      return [this, what](KVViewController& sender) {
        EXPECT_EQ(&sender, controller_.get());
        heard_.append(text(what));
      };
    };
    const auto toldNumber = [this](const char* what) {
      return [this, what](KVViewController& sender, const QVariant& number) {
        EXPECT_EQ(&sender, controller_.get());
        heard_.append(text(what).arg(number.toLongLong()));
      };
    };
    delegate->controllerDidToggleIncludeInArtboards = toldNumber("include %1");
    delegate->controllerDidPressRefreshLayer = told("refresh");
    delegate->controllerDidPressFlipLayer = told("flip");
    delegate->controllerDidPressRotateLayer = told("rotate");
    delegate->controllerDidSelectImageQuality = toldNumber("quality %1");
    delegate->controllerDidPressActionButton = told("action");
    delegate->controllerNeedToUpdateLayout = told("layout");
    delegate->controllerDidPressSoftBannerActionButton = toldNumber("banner %1");
    delegate->controllerDidPressReadMessageButton = toldNumber("read %1");
    return delegate;
  }

  template <class W = QWidget>
  W& part(const char* name) {
    return *controller_->view()->findChild<W*>(text(name));
  }

  /// Uses a control as a user would, and returns what the delegate heard.
  QStringList use(const char* name, bool byKeys) {
    heard_.clear();
    auto& control = part<>(name);
    if (auto* const popUp = qobject_cast<PopUpButton*>(&control)) {
      byKeys ? chooseByKeys(*popUp, 2) : choose(*popUp, 2);
    } else if (byKeys) {
      QTest::keyClick(&control, Qt::Key_Space);
    } else {
      QTest::mouseClick(&control, Qt::LeftButton, {}, {8, control.height() / 2});
    }
    return heard_;
  }

  QStringList heard_;
  std::shared_ptr<Delegate> delegate_ = listening();
  Panel panel_;
  KVViewControllerRef controller_;
};

/// Each control of the forms, what it reports, and how to remove that operation from a delegate.
const struct {
  const char* nib;
  const char* control;
  const char* told;
  void (*silence)(Delegate&);
} kControls[] = {
    {"KVViewController", "imageQualityPopupButton", "quality 2",
     [](Delegate& d) { d.controllerDidSelectImageQuality = {}; }},
    {"KVViewController", "layerRotateButton", "rotate",
     [](Delegate& d) { d.controllerDidPressRotateLayer = {}; }},
    {"KVViewController", "layerFlipButton", "flip",
     [](Delegate& d) { d.controllerDidPressFlipLayer = {}; }},
    {"KVViewController", "layerRefreshButton", "refresh",
     [](Delegate& d) { d.controllerDidPressRefreshLayer = {}; }},
    {"KVViewController", "includeInArtboardButton", "include 1",
     [](Delegate& d) { d.controllerDidToggleIncludeInArtboards = {}; }},
    {"KVMessageLine", "actionButton", "action",
     [](Delegate& d) { d.controllerDidPressActionButton = {}; }},
    {"KVSoftMessage", "softActionButton", "banner 7",
     [](Delegate& d) { d.controllerDidPressSoftBannerActionButton = {}; }},
    {"KVSoftMessage", "softCloseButton", "read 7",
     [](Delegate& d) { d.controllerDidPressReadMessageButton = {}; }},
};

class KVViewControllerControlTest : public KVViewControllerTest,
                                    public testing::WithParamInterface<bool> {};

TEST_P(KVViewControllerControlTest, CallsOnlyItsOperation) {
  Browser browser({"https"});
  for (const auto& [nib, control, told, silence] : kControls) {
    std::vector<const char*> nibs = {nib};
    if (text(nib) == u"KVViewController") nibs.push_back("KVResizeViewController");
    for (const char* each : nibs) {
      load(each);
      controller_->setMessageId(7);
      controller_->setActionURL(QUrl(text("https://vendor.example/")));
      controller_->view()->show();
      EXPECT_EQ(use(control, GetParam()), QStringList(text(told))) << each << " " << control;

      silence(*delegate_);
      controller_->reloadData();
      controller_->view()->show();
      EXPECT_EQ(use(control, GetParam()), QStringList()) << each << " " << control;

      delegate_ = listening();
      controller_->setDelegate({});
      use(control, GetParam());
      controller_->setDelegate(std::make_shared<Delegate>());
      EXPECT_EQ(use(control, GetParam()), QStringList()) << "the delegate was destroyed";
    }
  }
}

INSTANTIATE_TEST_SUITE_P(MouseAndKeys, KVViewControllerControlTest, testing::Bool());

TEST_F(KVViewControllerTest, ControlsDoNotChangeProperties) {
  load("KVViewController");
  controller_->setImageQuality(1);
  controller_->setIncludeInArtboards(0);
  controller_->reloadData();
  use("imageQualityPopupButton", false);
  use("includeInArtboardButton", false);
  EXPECT_EQ(controller_->imageQuality(), QVariant(1));
  EXPECT_EQ(controller_->includeInArtboards(), QVariant(0));
  controller_->reloadData();
  EXPECT_EQ(controller_->imageQualityPopupButton()->title(), u"2x");
  EXPECT_FALSE(controller_->includeInArtboardButton()->isChecked());
}

TEST_F(KVViewControllerTest, ReportsSameQualityAgain) {
  load("KVViewController");
  controller_->setImageQuality(2);
  controller_->reloadData();
  EXPECT_EQ(use("imageQualityPopupButton", false), QStringList(text("quality 2")));
}

TEST_F(KVViewControllerTest, ShowsMixedQuality) {
  load("KVViewController");
  PopUpButton& quality = *controller_->imageQualityPopupButton();
  const struct {
    QVariant number;
    const char* title;
    int index;
    bool allowsMixed;
  } steps[] = {{QVariant(), "1x", 0, false}, {3, "4x", 3, false}, {-1, "Multiple", -1, true},
               {2, "3x", 2, true},           {9, "", -1, true},   {text("1"), "2x", 1, true},
               {-2, "", -1, true},           {1.0, "2x", 1, true}};
  for (const auto& [number, title, index, allowsMixed] : steps) {
    controller_->setImageQuality(number);
    controller_->reloadData();
    EXPECT_EQ(quality.title(), text(title));
    EXPECT_EQ(quality.indexOfSelectedItem(), index) << title;
    EXPECT_EQ(quality.allowsMixedState(), allowsMixed) << title;
  }
  controller_->setImageQuality(-1);
  controller_->reloadData();
  EXPECT_EQ(use("imageQualityPopupButton", false), QStringList(text("quality 2")));
}

TEST_F(KVViewControllerTest, ShowsMixedInclude) {
  load("KVViewController");
  const QCheckBox& box = *controller_->includeInArtboardButton();
  const struct {
    QVariant number;
    Qt::CheckState state;
    bool allowsMixed;
  } steps[] = {{QVariant(), Qt::Unchecked, false},
               {-1, Qt::PartiallyChecked, true},
               {1, Qt::Checked, false},
               {-1, Qt::PartiallyChecked, true},
               {0, Qt::Unchecked, false}};
  for (const auto& [number, state, allowsMixed] : steps) {
    controller_->setIncludeInArtboards(number);
    controller_->reloadData();
    EXPECT_EQ(box.checkState(), state);
    EXPECT_EQ(box.isTristate(), allowsMixed);
  }
  controller_->setIncludeInArtboards(-1);
  controller_->reloadData();
  QStringList states;
  for (int i = 0; i < 3; ++i) states += use("includeInArtboardButton", false);
  EXPECT_EQ(states, QStringList({text("include 1"), text("include 0"), text("include -1")}));
}

TEST_F(KVViewControllerTest, NullTextsLeaveViewsAsTheyAre) {
  load("KVMessageLine");
  controller_->setMessage(text("<b>bold</b>"));
  controller_->setActionTitle(text("Update"));
  controller_->reloadData();
  controller_->setMessage(QString());
  controller_->setActionTitle(QString());
  controller_->reloadData();
  EXPECT_EQ(controller_->messageLabel()->text(), u"<b>bold</b>");
  EXPECT_EQ(controller_->messageLabel()->textFormat(), Qt::PlainText);
  EXPECT_EQ(controller_->actionButton()->text(), u"Update");
  controller_->setMessage(text(""));
  controller_->reloadData();
  EXPECT_EQ(controller_->messageLabel()->text(), u"");
}

TEST_F(KVViewControllerTest, CopiesAndClearsPreview) {
  load("KVViewController");
  QImage pixels(40, 30, QImage::Format_ARGB32_Premultiplied);
  pixels.fill(Qt::red);
  const auto image = std::make_shared<Image>(pixels);
  controller_->setPreviewImage(image);
  image->setSize({1, 1});
  controller_->reloadData();
  ImageView& view = *controller_->imageView();
  EXPECT_EQ(view.image()->size(), QSizeF(40, 30));
  EXPECT_EQ(painted(view, 1).pixelColor(view.rect().center()), QColor(Qt::red));
  controller_->setPreviewImage(nullptr);
  controller_->reloadData();
  EXPECT_EQ(painted(view, 1).pixelColor(view.rect().center()).alpha(), 0);
}

TEST_F(KVViewControllerTest, DisablesAsynchronously) {
  load("KVViewController");
  const char* const layerControls[] = {"imageQualityPopupButton", "layerFlipButton",
                                       "layerRotateButton"};
  const auto enabled = [&] {
    int count = 0;
    for (const char* name : layerControls) count += part<>(name).isEnabled() ? 1 : 0;
    return count;
  };
  std::thread([this] { controller_->disableLayerButton(); }).join();
  EXPECT_EQ(enabled(), 3) << "before the main queue runs";
  controller_->reloadData();
  EXPECT_EQ(enabled(), 3);
  QCoreApplication::processEvents();
  EXPECT_EQ(enabled(), 0);
  for (const char* name : layerControls) EXPECT_EQ(use(name, false), QStringList()) << name;
  EXPECT_EQ(use("layerRefreshButton", false), QStringList(text("refresh")));
  EXPECT_EQ(use("includeInArtboardButton", false), QStringList(text("include 1")));
  controller_->enableLayerButton();
  EXPECT_EQ(enabled(), 3);
  controller_->disableLayerButton();
  QCoreApplication::processEvents();
  controller_->reloadData();
  EXPECT_EQ(enabled(), 3);
}

TEST_F(KVViewControllerTest, ActionButtonRunsActionOrOpensUrl) {
  Browser browser({"https"});
  load("KVMessageLine");
  const auto action = std::make_shared<Counted>();
  const QUrl url(text("https://vendor.example/new"));
  const struct {
    KVActionRef action;
    QUrl url;
    int runs;
    QStringList told;
  } cases[] = {{action, url, 1, {}}, {nullptr, url, 0, {text("action")}}, {nullptr, {}, 0, {}}};
  for (const auto& each : cases) {
    action->runs = 0;
    browser.opened.clear();
    controller_->setAction(each.action);
    controller_->setActionURL(each.url);
    EXPECT_EQ(use("actionButton", false), each.told);
    EXPECT_EQ(action->runs, each.runs);
    EXPECT_EQ(browser.opened.size(), each.told.size());
  }
  controller_->setActionURL(url);
  delegate_->controllerDidPressActionButton = [&](KVViewController&) {
    heard_.append(text("opened %1").arg(browser.opened.size()));
  };
  const LogCapture log;
  EXPECT_EQ(use("actionButton", false), QStringList(text("opened 1")));
  EXPECT_EQ(log.lines().value(0),
            u"KVViewController: activateButtonDidPress: "
            "<KVViewControllerDelegate>");
}

TEST_F(KVViewControllerTest, DelegateMayReleaseController) {
  load("KVViewController");
  const std::weak_ptr<KVViewController> watched = controller_;
  delegate_->controllerDidPressFlipLayer = [this](KVViewController&) {
    controller_.reset();
    delegate_.reset();
  };
  QPointer<QWidget> view = controller_->view();
  QTest::mouseClick(&part<>("layerFlipButton"), Qt::LeftButton);
  EXPECT_TRUE(watched.expired());
  // The view belongs to the panel; its controller is gone.
  ASSERT_TRUE(view);
  QTest::mouseClick(view->findChild<QWidget*>(text("layerRotateButton")), Qt::LeftButton);
  EXPECT_TRUE(heard_.isEmpty());
}

TEST(KVViewControllerLifetimeTest, ViewWithoutParentIsDeletedWithLastReference) {
  auto controller = KVViewController::initWithNibName();
  QPointer<QWidget> view = controller->view();
  ViewRef held = controller->viewObject();
  controller.reset();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(view);
  held.reset();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(view);
}

TEST(KVViewControllerLifetimeTest, ToleratesMissingView) {
  const auto controller = KVViewController::initWithNibName();
  EXPECT_FALSE(controller->isViewLoaded());
  EXPECT_FALSE(controller->persister());
  controller->reloadData();
  controller->activateButtonDidPress(nullptr);
  controller->includeInArtboardButtonDidChange(nullptr);
  controller->setMessageRead();
  controller->setImageQuality(3);
  controller->view();
  EXPECT_TRUE(controller->persister());
  EXPECT_EQ(controller->imageQualityPopupButton()->title(), u"4x");
  EXPECT_FALSE(KVViewController::initWithNibName(text("NoSuchForm")));
}

TEST_F(KVViewControllerTest, IsExportedWithItsDelegate) {
  for (const char* name : {"KVViewController", "KVResizeViewController"}) {
    const ClassInfo* const info = ClassInfo::find(text(name));
    ASSERT_TRUE(info);
    const ObjectRef object = info->create(text("initWithNibName:bundle:"), {{}, {}});
    ASSERT_TRUE(object);
    EXPECT_EQ(&object->classInfo(), info);
    info->call(*object, text("view"));

    const DelegateInfo& told = Delegate::staticDelegateInfo();
    const std::shared_ptr<void> delegate = told.make();
    QStringList heard;
    for (const DelegateInfo::Operation& operation : told.operations()) {
      operation.implement(delegate.get(), [&, selector = operation.selector](auto& arguments) {
        EXPECT_EQ(arguments[0].template value<ObjectRef>(), object);
        EXPECT_EQ(arguments.size(), selector.count(u':'));
        heard.append(selector);
        return QVariant();
      });
    }
    EXPECT_TRUE(info->call(*object, text("setDelegate:"), {told.toVariant(delegate)}));
    EXPECT_TRUE(object->setValueForKey(-1, text("includeInArtboards")));
    EXPECT_TRUE(info->call(*object, text("reloadData")));
    const auto box = object->valueForKey(text("includeInArtboardButton")).value<ObjectRef>();
    for (const char* action :
         {"includeInArtboardButtonDidChange:", "refreshButtonDidPress:", "flipButtonDidPress:",
          "rotateButtonDidPress:", "imageQualityPopupButtonDidChange:"}) {
      EXPECT_TRUE(info->call(*object, text(action), {QVariant::fromValue(box)})) << action;
    }
    EXPECT_EQ(heard, QStringList({text("controller:didToggleIncludeInArtboards:"),
                                  text("controllerDidPressRefreshLayer:"),
                                  text("controllerDidPressFlipLayer:"),
                                  text("controllerDidPressRotateLayer:"),
                                  text("controller:didSelectImageQuality:")}));
  }
}

TEST(KVViewControllerStoreTest, IsSettingsStore) {
  Panel panel;
  const auto controller = KVViewController::initWithNibName();
  controller->setObject(4, text("com.example.a"));
  EXPECT_EQ(KVPersister().objectForKey(text("com.example.a")), QVariant(4));
  controller->removeObjectForKey(text("com.example.a"));
  EXPECT_FALSE(controller->objectForKey(text("com.example.a")).isValid());
}

}  // namespace
}  // namespace kelvar

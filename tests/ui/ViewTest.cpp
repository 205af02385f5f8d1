#include "ui/View.h"

#include <gtest/gtest.h>

#include <QPointer>
#include <limits>
#include <stdexcept>

#include "Panel.h"
#include "ui/KVPopupCell.h"
#include "ui/NSScrollView.h"
#include "ui/NSWindow.h"

namespace kelvar {
namespace {

ViewRef makeView(const QRectF& frame) { return View::adopt(new QWidget, frame); }

TEST(ViewTest, CountsFramesFromBottomLeft) {
  const ViewRef outer = makeView({0, 0, 100, 60});
  const ViewRef inner = makeView({10, 5, 30, 20});
  EXPECT_EQ(inner->frame(), QRectF(10, 5, 30, 20)) << "without a superview";
  outer->addSubview(inner);
  EXPECT_EQ(inner->frame(), QRectF(10, 5, 30, 20));
  EXPECT_EQ(inner->widget()->geometry(), QRect(10, 35, 30, 20));
  inner->setFrameSize({30, 40});
  EXPECT_EQ(inner->widget()->geometry(), QRect(10, 15, 30, 40)) << "grows upward";
  inner->setFrameOrigin({0, 0});
  EXPECT_EQ(inner->widget()->geometry(), QRect(0, 20, 30, 40));
  inner->setFrame({0.5, 0.25, 10.25, 10});
  EXPECT_EQ(inner->frame(), QRectF(0.5, 0.25, 10.25, 10)) << "keeps fractions";
  EXPECT_EQ(inner->bounds(), QRectF(0, 0, 10.25, 10));
  inner->setFrame({1, 2, -3, -4});
  EXPECT_EQ(inner->frame(), QRectF(1, 2, 0, 0));
  inner->widget()->setGeometry(2, 3, 4, 5);
  EXPECT_EQ(inner->frame(), QRectF(2, 52, 4, 5)) << "moved by somebody else";
  for (const double length : {std::nan(""), std::numeric_limits<double>::infinity()}) {
    EXPECT_THROW(inner->setFrame({0, 0, length, 1}), std::invalid_argument);
  }
  inner->setFrame({0, 0, 1e300, 1});
  EXPECT_GT(inner->widget()->width(), 10000);
}

TEST(ViewTest, ResizesSubviewsByTheirMasks) {
  const struct {
    int mask;
    QRectF frame;
  } cases[] = {{0, {10, 10, 20, 20}},
               {View::kWidth, {10, 10, 80, 20}},
               {View::kMinXMargin, {70, 10, 20, 20}},
               {View::kMinXMargin | View::kMaxXMargin, {40, 10, 20, 20}},
               {View::kMinYMargin, {10, 40, 20, 20}},
               {View::kMaxYMargin, {10, 10, 20, 20}},
               {View::kHeight | View::kWidth, {10, 10, 80, 50}}};
  for (const auto& [mask, frame] : cases) {
    for (const bool byWidget : {false, true}) {
      const ViewRef outer = makeView({0, 0, 40, 40});
      const ViewRef inner = makeView({10, 10, 20, 20});
      inner->setAutoresizingMask(mask);
      outer->addSubview(inner);
      if (byWidget) {
        outer->widget()->show();
        outer->widget()->resize(100, 70);
        QCoreApplication::processEvents();
      } else {
        outer->setFrame({0, 0, 100, 70});
      }
      EXPECT_EQ(inner->frame(), frame) << mask << (byWidget ? " by the widget" : "");
    }
  }
}

TEST(ViewTest, KeepsSubviewsAndTheirControllers) {
  const ViewRef outer = makeView({0, 0, 100, 100});
  QPointer<QWidget> widget;
  std::weak_ptr<KVPopupCell> kept;
  {
    const KVPopupCellRef cell = KVPopupCell::initWithNibName();
    kept = cell;
    widget = cell->view();
    outer->addSubview(cell->viewObject());
  }
  EXPECT_FALSE(kept.expired());
  ASSERT_EQ(outer->subviews().size(), 1);
  EXPECT_EQ(outer->subviews()[0]->superview(), outer);
  EXPECT_FALSE(outer->subviews()[0]->isHidden());
  outer->subviews()[0]->removeFromSuperview();
  QCoreApplication::sendPostedEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(kept.expired());
  EXPECT_FALSE(widget);
  EXPECT_TRUE(outer->subviews().isEmpty());
}

TEST(ViewTest, MovesBetweenSuperviews) {
  const ViewRef first = makeView({0, 0, 100, 100}), second = makeView({0, 0, 50, 50});
  const ViewRef view = makeView({1, 2, 3, 4}), other = makeView({0, 0, 1, 1});
  view->setTag(7);
  first->addSubview(view);
  first->addSubview(other);
  first->addSubview(view);
  EXPECT_EQ(first->subviews(), (QList<ViewRef>{other, view})) << "to the front";
  second->addSubview(view);
  EXPECT_EQ(view->frame(), QRectF(1, 2, 3, 4));
  EXPECT_EQ(view->superview(), second);
  EXPECT_EQ(second->viewWithTag(7), view);
  EXPECT_EQ(first->viewWithTag(7), nullptr);
  EXPECT_TRUE(view->isDescendantOf(second));
  EXPECT_FALSE(view->isDescendantOf(first));
  EXPECT_THROW(view->addSubview(second), std::invalid_argument);
  EXPECT_THROW(view->addSubview(view), std::invalid_argument);
  EXPECT_THROW(view->addSubview(nullptr), std::invalid_argument);
  view->setHidden(true);
  first->addSubview(view);
  EXPECT_TRUE(view->isHidden());
}

TEST(ViewTest, OutlivesItsWidget) {
  const ViewRef view = makeView({1, 2, 3, 4});
  delete view->widget();
  EXPECT_EQ(view->frame(), QRectF());
  view->setFrame({1, 1, 1, 1});
  view->setHidden(false);
  view->removeFromSuperview();
  EXPECT_TRUE(view->isHidden());
  EXPECT_EQ(view->superview(), nullptr);
  EXPECT_EQ(view->window(), nullptr);
  EXPECT_THROW(makeView({})->addSubview(view), std::invalid_argument);
}

TEST(ViewTest, ScrollsDocument) {
  const auto scroll = NSScrollView::initWithFrame({0, 0, 100, 50});
  const ViewRef first = makeView({0, 0, 80, 200}), second = makeView({0, 0, 10, 10});
  scroll->setDocumentView(first);
  EXPECT_EQ(scroll->subviews(), QList<ViewRef>{first});
  EXPECT_EQ(first->superview(), scroll);
  EXPECT_EQ(first->frame(), QRectF(0, 0, 80, 200));
  EXPECT_EQ(first->widget()->y(), 0) << "its top is shown";
  const auto window = NSWindow::make<NSWindow>({0, 0, 100, 50}, NSWindow::kTitled);
  window->setContentView(scroll);
  window->show();
  scroll->scrollRectToVisible({0, 0, 1, 1});
  EXPECT_EQ(first->widget()->y(), -150);
  scroll->setDocumentView(second);
  EXPECT_EQ(first->superview(), nullptr);
  EXPECT_EQ(second->superview(), scroll);
  scroll->setDocumentView(nullptr);
  EXPECT_EQ(scroll->documentView(), nullptr);
  window->hide();
}

TEST(NSWindowTest, IsKeptWhileItIsVisible) {
  std::weak_ptr<NSWindow> kept;
  QPointer<QWidget> widget;
  {
    const auto window = NSWindow::make<NSWindow>({0, 0, 120, 80}, NSWindow::kTitled);
    kept = window;
    widget = window->contentView()->widget();
    window->setTitle(text("Corners"));
    window->show();
  }
  ASSERT_FALSE(kept.expired());
  EXPECT_EQ(widget->windowTitle(), text("Corners"));
  EXPECT_EQ(NSWindow::of(widget), kept.lock());
  widget->close();
  QCoreApplication::sendPostedEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(kept.expired());
  EXPECT_FALSE(widget);
}

TEST(NSWindowTest, GivesContentItsSize) {
  const auto window = NSWindow::make<NSPanel>({50, 50, 120, 80}, NSWindow::kTitled);
  window->setTitle(text("Corners"));
  const ViewRef view = makeView({3, 3, 3, 3}), before = window->contentView();
  EXPECT_EQ(view->window(), nullptr);
  window->show();
  window->setContentView(view);
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(view->bounds(), QRectF(0, 0, 120, 80));
  EXPECT_EQ(view->window(), window);
  EXPECT_FALSE(before->widget()->isVisible());
  EXPECT_EQ(window->title(), text("Corners"));
  window->setContentSize({60, 40});
  EXPECT_EQ(view->widget()->size(), QSize(60, 40));
  const ViewRef outer = makeView({0, 0, 200, 200});
  outer->addSubview(view);
  EXPECT_NE(window->contentView(), view) << "a window always has a content view";
  EXPECT_EQ(view->superview(), outer);
  window->hide();
  EXPECT_FALSE(window->isVisible());
}

}  // namespace
}  // namespace kelvar

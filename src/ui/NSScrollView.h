#pragma once

#include <QScrollArea>

#include "ui/View.h"

namespace kelvar {

/// The widget of a scroll view.
class ScrollArea : public QScrollArea {
  Q_OBJECT

 public:
  ScrollArea() {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  }
};

/// A view that shows a part of another one, its document view, and scrolls it.
///
/// Shows its top left at first. Scroll bars, if there are any, appear where the document view is
/// larger.
class KELVAR_EXPORT NSScrollView : public View {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  using View::View;
  static std::shared_ptr<NSScrollView> initWithFrame(const QRectF& frame);

  QList<ViewRef> subviews() const override;
  /// Null for none.
  ViewRef documentView() const;
  /// Takes the view out of where it was.
  void setDocumentView(const ViewRef& view);
  bool hasVerticalScroller() const;
  void setHasVerticalScroller(bool has);
  bool hasHorizontalScroller() const;
  void setHasHorizontalScroller(bool has);
  /// The size that the scroll bars leave for the document view, in points.
  QSizeF contentSize() const;
  /// Scrolls as little as shows the rectangle, which is in the document view's coordinates.
  void scrollRectToVisible(const QRectF& rect);

 private:
  QScrollArea* area() const;
};

}  // namespace kelvar

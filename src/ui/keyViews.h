#pragma once

#include <QWidget>

namespace kelvar {

/// Remembers which widget gets the focus after another one. It holds for the windows that are shown
/// from then on. Null for Qt's own order.
void setNextKeyWidget(QWidget* widget, QWidget* next);

/// Applies that within a window, whose widgets may only now be all in it.
void chainKeyWidgets(QWidget* window);

}  // namespace kelvar

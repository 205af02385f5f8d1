#pragma once

#include "ui/View.h"

namespace kelvar {

/// A new view of the class that stands for the class of the widget or its nearest base.
ViewRef makeView(QWidget* widget);

}  // namespace kelvar

#pragma once

#include <QList>

namespace kelvar {

class ClassInfo;

/// The classes that scripts know from the host application, apart from its values: documents,
/// layers, dialogs, the user's defaults and the desktop.
QList<const ClassInfo*> hostClasses();

}  // namespace kelvar

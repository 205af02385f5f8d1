#include "scripting/host/HostClasses.h"

#include "core/NSFontManager.h"
#include "mockup/MSContentDrawView.h"
#include "mockup/MSDocument.h"
#include "runtime/ClassInfo.h"
#include "scripting/host/NSUserDefaults.h"
#include "scripting/host/NSWorkspace.h"
#include "sketch/classes/SketchClasses.h"

namespace kelvar {

QList<const ClassInfo*> hostClasses() {
  return QList<const ClassInfo*>{&documentClass(), &MSContentDrawView::staticClassInfo(),
                                 &NSUserDefaults::staticClassInfo(),
                                 &NSWorkspace::staticClassInfo(),
                                 &NSFontManager::staticClassInfo()} +
         sketchClasses();
}

}  // namespace kelvar

#include "platform/KelvarVersion.h"

const double KelvarVersionNumber = 1.0;
const unsigned char KelvarVersionString[] = "@(#)PROGRAM:Kelvar  PROJECT:Kelvar-1\n";

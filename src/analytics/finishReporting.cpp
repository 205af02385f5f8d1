#include "analytics/finishReporting.h"

#include "analytics/LastPayload.h"
#include "platform/URLSession.h"

namespace kelvar {

void finishReporting() {
  URLSession::finishReports();
  LastPayload::write();
}

}  // namespace kelvar

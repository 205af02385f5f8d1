#include "analytics/finishReporting.h"

#include "analytics/LastPayload.h"
#include "platform/network/URLSession.h"

namespace kelvar {

void finishReporting() {
  URLSession::finishReports();
  LastPayload::write();
}

}  // namespace kelvar

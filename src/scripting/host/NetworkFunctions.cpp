#include "scripting/host/NetworkFunctions.h"

#include <future>

#include "platform/QtError.h"
#include "platform/network/URLSession.h"
#include "runtime/ClassInfo.h"
#include "runtime/raise.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

/// Sends a request and waits for the answer, at most as long as the session does: `status` and
/// `body`, or the `message` of a failure.
QVariantMap send(const QVariant& value) {
  if (value.metaType() != QMetaType::fromType<URLRequest>()) raise(u"a request is expected"_s);
  URLSession* const session = URLSession::shared();
  if (!session) return {{u"message"_s, u"the network is not available"_s}};
  // Shared with the session's thread, which may drop the task when the program ends.
  const auto answer = std::make_shared<std::promise<URLResponse>>();
  std::future<URLResponse> received = answer->get_future();
  session->dataTask(value.value<URLRequest>(),
                    [answer](const URLResponse& response) { answer->set_value(response); });
  const URLResponse response = received.get();
  if (response.error) return {{u"message"_s, messageOf(*response.error)}};
  return {{u"status"_s, response.status}, {u"body"_s, response.body}};
}

}  // namespace

const ClassInfo& NetworkFunctions::staticClassInfo() {
  static const ClassInfo kClass = ClassInfoBuilder<NetworkFunctions>("NetworkFunctions")
                                      .classOperation("sendRequest", send, "Sends a request.");
  return kClass;
}

}  // namespace kelvar

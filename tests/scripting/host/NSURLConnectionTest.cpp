#include <gtest/gtest.h>

#include "platform/LoopbackServer.h"
#include "scripting/ScriptOutput.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

TEST(NSURLConnectionTest, SendsRequests) {
  const LoopbackServer server({"HTTP/1.1 200 OK\r\nContent-Length: 8\r\n\r\n{\"a\": 5}",
                               "HTTP/1.1 404 Not Found\r\nContent-Length: 2\r\n\r\nno",
                               LoopbackServer::kHangUp});
  const QVariantMap globals{{u"address"_s, server.url(u"/x"_s).toString()}};
  EXPECT_EQ(ScriptOutput().of(uR"js(
const request = NSMutableURLRequest.requestWithURL(NSURL.URLWithString(address));
request.setHTTPMethod("POST");
request.setHTTPBody("q".dataUsingEncoding(NSUTF8StringEncoding));
const response = MOPointer.alloc().init(), error = MOPointer.alloc().init();
const data = [NSURLConnection sendSynchronousRequest:request returningResponse:response error:error];
print(NSJSONSerialization.JSONObjectWithData_options_error(data, 0, nil).a,
      response.value().statusCode(), response.value().URL().path(), error.value());
const task = NSURLSession.sharedSession().dataTaskWithURL_completionHandler(
    NSURL.URLWithString(address), (data, response, error) => {
      print("then", NSString.alloc().initWithData_encoding(data, 4), response.statusCode(), error);
      const failed = MOPointer.new();
      print(NSURLConnection.sendSynchronousRequest_returningResponse_error(
                NSURLRequest.requestWithURL(NSURL.URLWithString(address)), response, failed),
            failed.value().domain(), failed.value().localizedDescription().length > 0);
    });
task.resume();
print("first");)js"_s,
                              globals),
            "5 200 /x null\nfirst\nthen no 404 null\nnull NSURLErrorDomain true\n");
  EXPECT_EQ(server.requests().value(0).left(5), "POST ");
}

}  // namespace
}  // namespace kelvar

#include "platform/network/URLSession.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QSslConfiguration>
#include <QTcpServer>
#include <QThread>
#include <future>
#include <optional>
#include <thread>

#include "platform/LogCapture.h"
#include "platform/LoopbackServer.h"
#include "platform/MainQueue.h"
#include "platform/QtError.h"

namespace kelvar {
namespace {

using Server = LoopbackServer;

/// Waits for the threads that were started since to be gone. Qt waits only until they have done
/// their work; what OpenSSL keeps for a thread is freed later, and would look like a leak in a test
/// that ends in between.
class ThreadsEnd {
 public:
  ~ThreadsEnd() {
    while (count() > before_) QThread::usleep(100);
  }

 private:
  static qsizetype count() {
    return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs).size();
  }

  const qsizetype before_ = count();
};

class URLSessionTest : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* proxy : {"http_proxy", "https_proxy", "all_proxy"}) qunsetenv(proxy);
    ASSERT_TRUE(URLSession::shared());
  }

  /// What comes of fetching `address`, and on which thread.
  static URLResponse fetch(const QUrl& address, std::thread::id* thread = nullptr) {
    return send({.address = address}, thread);
  }
  static URLResponse post(const QUrl& address) {
    return send({.method = "POST", .address = address, .body = "{\"a\": 1}"});
  }
  static URLResponse send(const URLRequest& request, std::thread::id* thread = nullptr) {
    std::promise<URLResponse> answer;
    URLSession::shared()->dataTask(request, [&](const URLResponse& came) {
      if (thread) *thread = std::this_thread::get_id();
      answer.set_value(came);
    });
    return answer.get_future().get();
  }

  int count_ = 1;
  char name_[5] = "test";
  char* arguments_[2] = {name_, nullptr};
  const ThreadsEnd threadsEnd_;
  QCoreApplication application_{count_, arguments_};
};

TEST_F(URLSessionTest, ReturnsServerResponse) {
  const QByteArray longest(URLSession::kMaxBody, 'x');
  const std::tuple<QByteArray, int, QByteArray> cases[] = {
      {Server::http("{}"), 200, "{}"},
      {Server::http(""), 200, ""},
      {Server::http("{\"a\":1}", "500 Internal Server Error"), 500, "{\"a\":1}"},
      {Server::http("gone", "404 Not Found"), 404, "gone"},
      {Server::http("no", "401 Unauthorized"), 401, "no"},
      {"HTTP/1.1 200 OK\r\nConnection: close\r\n\r\nto the end", 200, "to the end"},
      {Server::http(longest), 200, longest}};
  for (const auto& [bytes, status, body] : cases) {
    const Server server({bytes});
    const URLResponse answer = fetch(server.url(QStringLiteral("/a?b=c%20d")));
    EXPECT_FALSE(answer.error) << messageOf(answer.error).toStdString();
    EXPECT_EQ(answer.status, status);
    EXPECT_TRUE(answer.body == body && !answer.body.isNull()) << status;
    EXPECT_EQ(server.requests(), QList<QByteArray>{"GET /a?b=c%20d HTTP/1.1"});
  }
}

TEST_F(URLSessionTest, IncompleteResponseIsError) {
  const std::pair<QByteArray, const char*> cases[] = {
      {Server::http("{\"a\": 1}").chopped(3), "closed"},
      {"HTTP/1.1 200 OK\r\nContent-", "closed"},
      {Server::http(QByteArray(URLSession::kMaxBody + 1, 'x')), "8 MiB"},
      {"HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + QByteArray(URLSession::kMaxBody + 1, 'x'),
       "8 MiB"}};
  for (const auto& [bytes, error] : cases) {
    const Server server({bytes});
    const URLResponse answer = fetch(server.url(QStringLiteral("/")));
    EXPECT_TRUE(messageOf(answer.error).contains(QLatin1String(error)))
        << bytes.left(60).constData() << " gave " << messageOf(answer.error).toStdString();
  }
  QTcpServer closed;
  ASSERT_TRUE(closed.listen(QHostAddress::LocalHost));
  const QString address = QStringLiteral("http://127.0.0.1:%1/").arg(closed.serverPort());
  closed.close();
  const URLResponse answer = fetch(QUrl(address));
  EXPECT_EQ(messageOf(answer.error), QStringLiteral("Connection refused"));
  EXPECT_TRUE(answer.body.isNull());
}

TEST_F(URLSessionTest, SlowServersTimeOut) {
  const std::tuple<const char*, QList<QByteArray>, bool> cases[] = {
      {"silent", {QByteArray()}, false},
      {"trickling", {Server::kTrickle}, true},
      {"silent behind a redirection", {Server::redirection("/there"), QByteArray()}, false}};
  URLSession::shared()->setTimeout(std::chrono::milliseconds(200));
  for (const auto& [what, answers, hasBody] : cases) {
    for (const bool isPost : {false, true}) {
      if (isPost && answers.size() > 1) continue;
      const Server server(answers);
      const QUrl address = server.url(QStringLiteral("/"));
      const URLResponse answer = isPost ? post(address) : fetch(address);
      EXPECT_EQ(messageOf(answer.error), QStringLiteral("the server did not answer in time"))
          << what;
      EXPECT_EQ(!answer.body.isNull(), hasBody) << what;
    }
  }
}

TEST_F(URLSessionTest, FollowsRedirectsWithinTheSameSchemeOnly) {
  const std::tuple<QList<QByteArray>, const char*, int> cases[] = {
      {{Server::redirection("/there"), Server::http("here")}, "", 2},
      {{Server::redirection("http://localhost:%PORT%/"), Server::http("here")}, "", 2},
      {{Server::redirection("/there", "307 Temporary Redirect"), Server::http("here")}, "", 2},
      {{Server::redirection("/there", "308 Permanent Redirect"), Server::http("here")}, "", 2},
      {{Server::redirection("http://server.example/")}, "not followed", 1},
      {{Server::redirection("https://127.0.0.1:%PORT%/")}, "not followed", 1},
      {{Server::redirection("file:///etc/passwd")}, "not followed", 1},
      {{Server::redirection("/again")}, "more than 20", 21}};
  for (const auto& [answers, error, requests] : cases) {
    const Server server(answers);
    const URLResponse answer = fetch(server.url(QStringLiteral("/")));
    EXPECT_EQ(server.requests().size(), requests) << answers[0].constData();
    if (answers.size() == 2) {
      EXPECT_EQ(answer.body, "here") << messageOf(answer.error).toStdString();
    } else {
      EXPECT_TRUE(answer.error) << answers[0].constData();
      EXPECT_TRUE(messageOf(answer.error).contains(QLatin1String(error)))
          << messageOf(answer.error).toStdString();
    }
  }
}

TEST_F(URLSessionTest, DoesNotFollowRedirectsOfPosts) {
  for (const QByteArray status :
       {"302 Found", "303 See Other", "307 Temporary Redirect", "308 Permanent Redirect"}) {
    const Server server({Server::redirection("/there", status), Server::http("here")});
    const URLResponse answer = post(server.url(QStringLiteral("/")));
    EXPECT_FALSE(answer.error) << messageOf(answer.error).toStdString();
    EXPECT_EQ(answer.status, status.first(3).toInt());
    EXPECT_EQ(answer.body, "{}") << status.constData();
    EXPECT_EQ(server.requests().size(), 1) << status.constData();
  }
}

/// A server may close, at any time and without a word, a connection that waits for a next request.
TEST_F(URLSessionTest, SurvivesSilentlyClosedConnections) {
  const Server server({"HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}"});
  constexpr int kPosts = 200;
  for (int i = 0; i < kPosts; ++i) {
    const URLResponse answer = post(server.url(QStringLiteral("/")));
    ASSERT_FALSE(answer.error) << i << ": " << messageOf(answer.error).toStdString();
  }
  EXPECT_EQ(server.requests().size(), kPosts);
}

TEST_F(URLSessionTest, SendsCredentialsOnlyToTheirServer) {
  const Server other({Server::http("here")});
  const Server server(
      {Server::http("no", "401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"a\""),
       Server::redirection(other.url(QStringLiteral("/")).toEncoded())});
  QUrl address = server.url(QStringLiteral("/"));
  address.setUserInfo(QStringLiteral("me:p%40ss"));
  EXPECT_EQ(fetch(address).status, 401);
  EXPECT_EQ(fetch(address).body, "here");
  for (const QByteArray& request : server.wholeRequests()) {
    EXPECT_TRUE(request.contains("\r\nAuthorization: Basic bWU6cEBzcw==\r\n"))
        << request.constData();
  }
  EXPECT_EQ(server.requests().size(), 2);
  EXPECT_FALSE(other.wholeRequests().value(0).contains("Authorization"));
}

TEST_F(URLSessionTest, RedirectsAreLimitedByPermissions) {
  Permissions onlyOne;
  onlyOne.close(Permissions::Kind::Network);
  ASSERT_TRUE(onlyOne.allow(Permissions::Kind::Network, QStringLiteral("127.0.0.1")));
  Permissions::install(onlyOne);
  const Server server({Server::redirection("http://localhost:%PORT%/"), Server::http("here")});
  const URLResponse answer = fetch(server.url(QStringLiteral("/")));
  const Server same({Server::redirection("/there"), Server::http("here")});
  EXPECT_EQ(fetch(same.url(QStringLiteral("/"))).body, "here");
  Permissions::install({});
  EXPECT_TRUE(messageOf(answer.error).contains(QStringLiteral("--allow network=")))
      << messageOf(answer.error).toStdString();
  EXPECT_EQ(server.requests().size(), 1);
}

TEST_F(URLSessionTest, SendsHeadersOnlyToTheirServer) {
  const Server other({Server::http("here")});
  const std::tuple<QByteArray, bool> cases[] = {
      {"/there", true},
      {"http://localhost:%PORT%/", false},
      {other.url(QStringLiteral("/")).toEncoded(), false}};
  for (const auto& [target, isSame] : cases) {
    const Server server({Server::redirection(target), Server::http("here")});
    const URLResponse answer =
        send({.address = server.url(QStringLiteral("/")), .headers = {{"X-Token", "secret"}}});
    EXPECT_EQ(answer.body, "here") << messageOf(answer.error).toStdString();
    const QList<QByteArray> requests = server.wholeRequests() + other.wholeRequests();
    EXPECT_TRUE(requests[0].contains("X-Token")) << target.constData();
    EXPECT_EQ(requests.value(1).contains("X-Token"), isSame) << target.constData();
  }
}

TEST_F(URLSessionTest, RejectsPlainHttp) {
  for (const char* address : {"http://192.0.2.1/", "ftp://127.0.0.1/", "file:///etc/passwd",
                              "http://127.0.0.1.example/", "https:///", "", "nonsense"}) {
    const URLResponse answer = fetch(QUrl(QLatin1String(address)));
    EXPECT_TRUE(messageOf(answer.error).contains(QStringLiteral("not an HTTPS URL"))) << address;
    EXPECT_TRUE(answer.body.isNull());
  }
}

TEST_F(URLSessionTest, RejectsUntrustedCertificates) {
  const Server stranger({Server::http("secret")}, Server::Scheme::Https);
  const URLResponse refused = fetch(stranger.url(QStringLiteral("/")));
  EXPECT_TRUE(messageOf(refused.error).contains(QStringLiteral("not to be trusted")))
      << messageOf(refused.error).toStdString();
  EXPECT_TRUE(refused.body.isNull());
  EXPECT_EQ(stranger.requests(), QList<QByteArray>());

  const QSslConfiguration before = QSslConfiguration::defaultConfiguration();
  QSslConfiguration trusting = before;
  trusting.addCaCertificate(Server::certificate());
  QSslConfiguration::setDefaultConfiguration(trusting);
  const Server friendly({Server::redirection("https://127.0.0.1:%PORT%/"), Server::http("body")},
                        Server::Scheme::Https);
  const URLResponse answer = fetch(friendly.url(QStringLiteral("/")));
  EXPECT_EQ(answer.body, "body") << messageOf(answer.error).toStdString();

  const Server plain({Server::http("in the clear")});
  const Server down({Server::redirection(plain.url(QStringLiteral("/")).toEncoded())},
                    Server::Scheme::Https);
  const URLResponse stopped = fetch(down.url(QStringLiteral("/")));
  EXPECT_TRUE(messageOf(stopped.error).contains(QStringLiteral("not followed")))
      << messageOf(stopped.error).toStdString();
  EXPECT_EQ(plain.requests(), QList<QByteArray>());
  QSslConfiguration::setDefaultConfiguration(before);
}

TEST_F(URLSessionTest, DoesNotRetryAfterHangUp) {
  for (const auto scheme : {Server::Scheme::Http, Server::Scheme::Https}) {
    const QSslConfiguration before = QSslConfiguration::defaultConfiguration();
    QSslConfiguration trusting = before;
    trusting.addCaCertificate(Server::certificate());
    QSslConfiguration::setDefaultConfiguration(trusting);
    for (const bool wasAnswered : {false, true}) {
      const QByteArray alive = Server::http("{}", "200 OK", "keep-alive");
      const Server server({wasAnswered ? alive : QByteArray(Server::kHangUp), Server::kHangUp},
                          scheme);
      if (wasAnswered) {
        EXPECT_EQ(fetch(server.url(QStringLiteral("/"))).body, "{}");
      }
      EXPECT_TRUE(fetch(server.url(QStringLiteral("/"))).error);
      EXPECT_EQ(server.requests().size(), wasAnswered ? 2 : 1);
    }
    QSslConfiguration::setDefaultConfiguration(before);
  }
}

TEST_F(URLSessionTest, StoresNoCookies) {
  const Server server(
      {"HTTP/1.1 200 OK\r\nSet-Cookie: id=7\r\nContent-Length: 0\r\n"
       "Connection: close\r\n\r\n"});
  fetch(server.url(QStringLiteral("/")));
  fetch(server.url(QStringLiteral("/")));
  ASSERT_EQ(server.requests().size(), 2);
  EXPECT_FALSE(server.wholeRequests()[1].toLower().contains("cookie"))
      << server.wholeRequests()[1].toStdString();
}

TEST_F(URLSessionTest, CompletesOnItsOwnThread) {
  const Server server({Server::http("{}")});
  std::thread::id first, second, third;
  fetch(server.url(QStringLiteral("/")), &first);
  fetch(server.url(QStringLiteral("/")), &second);
  fetch(QUrl(), &third);
  EXPECT_NE(first, std::this_thread::get_id());
  EXPECT_EQ(first, second);
  EXPECT_EQ(first, third);
}

TEST_F(URLSessionTest, DispatchesToMainThreadInOrder) {
  std::vector<int> order;
  std::jthread([&] {
    for (int i = 0; i < 3; ++i) MainQueue::async([&order, i] { order.push_back(i); });
    MainQueue::async([main = std::this_thread::get_id()] {
      EXPECT_NE(std::this_thread::get_id(), main);
      QCoreApplication::quit();
    });
  }).join();
  EXPECT_TRUE(order.empty());
  QCoreApplication::exec();
  EXPECT_EQ(order, (std::vector<int>{0, 1, 2}));
}

/// At most what they are given, side by side, and with a line in the log.
TEST(URLSessionShutdownTest, WaitsBrieflyForPendingReports) {
  int count = 1;
  char name[] = "test";
  char* arguments[] = {name, nullptr};
  constexpr int kReports = 5;
  const LogCapture log;
  std::optional<Server> silent;
  {
    const QCoreApplication application(count, arguments);
    silent.emplace(QList<QByteArray>{QByteArray()});
    const URLRequest report{
        .method = "POST", .address = silent->url(QStringLiteral("/")), .isReport = true};
    for (int i = 0; i < kReports; ++i) {
      URLSession::shared()->dataTask(report, [](const URLResponse&) { FAIL() << "nothing came"; });
    }
    EXPECT_EQ(PendingTasks::count(), 0) << "no program waits for them";
    URLSession::finishReports();
    EXPECT_EQ(silent->requests().size(), kReports);
  }
  EXPECT_EQ(PendingTasks::count(PendingTasks::Kind::Report), 0);
  EXPECT_EQ(
      log.lines(),
      QStringList(QStringLiteral("URLSession: the program ends, 5 unsent reports are dropped")));
}

TEST(URLSessionShutdownTest, CancelsRunningRequests) {
  int count = 1;
  char name[] = "test";
  char* arguments[] = {name, nullptr};
  const auto token = std::make_shared<int>(1);
  std::optional<Server> silent;
  {
    const QCoreApplication application(count, arguments);
    silent.emplace(QList<QByteArray>{QByteArray()});
    URLSession::shared()->dataTask(silent->url(QStringLiteral("/")), [token](const URLResponse&) {
      ADD_FAILURE() << "completed after the end";
    });
    while (silent->requests().isEmpty()) std::this_thread::yield();
  }
  EXPECT_EQ(token.use_count(), 1);
}

}  // namespace
}  // namespace kelvar

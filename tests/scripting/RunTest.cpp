#include "scripting/RunTest.h"

#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include "platform/LoopbackServer.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

/// The code block of docs/scripting.md from this line on.
QString documented(const QString& start) {
  QFile page(QStringLiteral(KELVAR_DOCS_DIR "/scripting.md"));
  EXPECT_TRUE(page.open(QIODevice::ReadOnly));
  const QString text = QString::fromUtf8(page.readAll());
  const qsizetype from = text.indexOf(start);
  EXPECT_GT(from, 0) << start.toStdString();
  return text.mid(from, text.indexOf(u"```"_s, from) - from);
}

#if !defined(__SANITIZE_ADDRESS__)  // Needs more address space itself.
TEST_F(RunTest, ReportsMissingAddressSpace) {
  write(u"a.js"_s, "log(1)\n");
  program_.start(u"prlimit"_s,
                 {u"--as=3000000000"_s, QStringLiteral(KELVAR_PROGRAM), u"run"_s, u"a.js"_s});
  EXPECT_EQ(finish(),
            "1: kelvar: scripts require 6 GiB of address space, which is not available (see "
            "ulimit -v)\n");
}
#endif

TEST_F(RunTest, ReportsMissingDisplay) {
  write(u"a.js"_s, "log(1)\n");
  QProcessEnvironment environment = program_.processEnvironment();
  environment.remove(u"QT_QPA_PLATFORM"_s);
  environment.remove(u"WAYLAND_DISPLAY"_s);
  environment.insert(u"DISPLAY"_s, u":7777"_s);
  program_.setProcessEnvironment(environment);
  EXPECT_EQ(run(u"a.js"_s), "1: kelvar: no display can be reached: DISPLAY is \":7777\"\n");
  environment.remove(u"DISPLAY"_s);
  program_.setProcessEnvironment(environment);
  EXPECT_EQ(run(u"a.js"_s), "1\n") << "a script without a window needs none";
}

TEST_F(RunTest, ReportsWhereScriptsFail) {
  write(u"a.js"_s,
        "log(context.arguments.join('+'), context.document === nil, context.scriptPath.endsWith("
        "'a.js'))\nfunction onRun(c) {\n  setTimeout(() => log('later', c === context), 1) }");
  EXPECT_EQ(run(u"a.js -- x --y"_s), "x+--y true true\nlater false\n");
  write(u"b.js"_s, "log(1)\n\n  [KVRect new].widht()\n");
  EXPECT_EQ(run(u"b.js"_s),
            "1\n1: kelvar: Error: an object of class KVRect has no selector widht; the nearest is "
            "width\nb.js:3\n    [KVRect new].widht()\n");
}

TEST_F(RunTest, ReportsMistakesInOneLine) {
  write(u"a.js"_s, "");
  write(u"echo.js"_s, "log(context.arguments)");
  write(u"bad/Contents/Sketch/manifest.json"_s, "{");
  write(u"none/Contents/Sketch/manifest.json"_s, "{\"commands\": []}");
  write(u"p/Contents/Sketch/manifest.json"_s,
        "{\"commands\": [{\"identifier\": \"x\", \"script\": \"x.js\", \"handler\": \"go\"},"
        "{\"identifier\": \"y\", \"script\": \"x.js\"},"
        "{\"identifier\": \"run\", \"script\": \"x.js\", \"handlers\": {\"run\": \"other\"}},"
        "{\"identifier\": \"all\", \"script\": \"x.js\", \"handlers\": \"other\"}]}");
  write(u"ill/Contents/Sketch/manifest.json"_s,
        "{\"commands\": [{\"identifier\": \"e\\u001b[2J\", \"script\": \"x.js\", "
        "\"name\": \"n\\u009b]0;\"}, {\"identifier\": \"f\", \"script\": \"x.js\"}]}");
  write(u"nameless/Contents/Sketch/manifest.json"_s,
        "{\"commands\": [{\"name\": \"Do\", \"script\": \"x.js\"}]}");
  write(u"p/Contents/Sketch/x.js"_s,
        "function onRun(c) { log(c.command.identifier()) }\nfunction other() { log('other') }");
  const std::pair<const char*, const char*> cases[] = {
      {"nowhere.js", "1: kelvar: "},
      {"a.js --command x", "2: kelvar: --command takes a plug-in"},
      {"a.js --list", "2: kelvar: --list takes a plug-in, which is a folder"},
      {"a.js --select x", "2: kelvar: --select needs a --document"},
      {"a.js --document nowhere.sketch", "1: kelvar: "},
      {"a.js --frobnicate", "2: kelvar: "},
      {"a.js --timeout 0", "2: kelvar: --timeout: must be a number of seconds above 0"},
      {"ill --list", "e\xef\xbf\xbd[2J\tn\xef\xbf\xbd]0;\n"},
      {"ill --command x", "2: kelvar: the plug-in has no command x, only e\xef\xbf\xbd[2J, f"},
      {"a.js x", "2: kelvar: The following argument was not expected: x"},
      {"echo.js -- --list x", "--list,x"},
      {"bad --list",
       "1: kelvar: bad/Contents/Sketch/manifest.json is not a valid plug-in manifest: "},
      {"none --list",
       "1: kelvar: none/Contents/Sketch/manifest.json is not a valid plug-in manifest: it "
       "has no \"commands\""},
      {"p", "2: kelvar: --command is missing; the plug-in has x, y, run, all"},
      {"p --command z", "2: kelvar: the plug-in has no command z, only x, y, run, all"},
      {"p --command run", "other\n"},
      {"p --command all", "other\n"},
      {"nameless",
       "1: kelvar: nameless/Contents/Sketch/manifest.json is not a valid plug-in manifest: the "
       "command \"Do\" has no \"identifier\""},
      {"p --command x", "1: kelvar: p/Contents/Sketch/x.js has no function go for the command x"},
      {"p --command y", "y\n"},
      {"p --list --json",
       "[{\"handler\":\"go\",\"identifier\":\"x\",\"name\":\"\",\"script\":\"p/Contents/Sketch/"
       "x.js\"}"},
  };
  for (const auto& [line, answer] : cases) {
    EXPECT_EQ(run(QString::fromUtf8(line)).find(answer), 0u) << line << ": " << answer;
  }
}

TEST_F(RunTest, StopsEndlessScripts) {
  write(u"loop.js"_s, "log('on'); for (;;);");
  EXPECT_EQ(
      run(u"loop.js --timeout 0.3"_s),
      "on\n1: kelvar: the script did not end within 0.3 s\nloop.js:1\n    log('on'); for (;;);\n");
  // The engine cannot be interrupted during a call of ours.
  write(u"sleep.js"_s, "CMD.new().exec_('sleep 4')");
  EXPECT_EQ(run(u"sleep.js --timeout 0.1"_s),
            "1: kelvar: the script did not end within 0.1 s\nsleep.js:1\n");
  start(u"loop.js"_s);
  ASSERT_TRUE(program_.waitForReadyRead(-1));
  ASSERT_EQ(kill(pid_t(program_.processId()), SIGINT), 0);
  EXPECT_EQ(finish(),
            "on\n1: kelvar: the script was interrupted\nloop.js:1\n    log('on'); for (;;);\n");
}

TEST_F(RunTest, DoesNotWaitForSilentServer) {
  // The system accepts connections, but nothing answers.
  const int server = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* const given = reinterpret_cast<sockaddr*>(&address);
  ASSERT_EQ(bind(server, given, size), 0);
  ASSERT_EQ(listen(server, 64), 0);
  ASSERT_EQ(getsockname(server, given, &size), 0);
  const QString url = u"http://127.0.0.1:%1"_s.arg(ntohs(address.sin_port));

  write(u"five.js"_s,
        "const k = Kelvar.new(); for (let i = 0; i < 5; ++i) k.trackForEvent_properties_('e', {})");
  QProcessEnvironment environment = program_.processEnvironment();
  environment.remove(u"DO_NOT_TRACK"_s);
  environment.insert(u"KELVAR_ANALYTICS_SERVER"_s, url);
  for (const QString& locations : {QString(), url}) {
    environment.insert(u"KELVAR_LOCATION_SERVER"_s, locations);
    program_.setProcessEnvironment(environment);
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(run(u"five.js"_s), "");
    EXPECT_LT(timer.elapsed(), 25'000);  // A single request may take longer.
  }
  close(server);
}

/// Whether the process runs; zombies do not.
bool isRunning(qint64 process) {
  QFile status(u"/proc/%1/stat"_s.arg(process));
  if (!status.open(QIODevice::ReadOnly)) return false;
  const QByteArray line = status.readAll();
  return line.mid(line.lastIndexOf(')') + 2, 1) != "Z";
}

/// Whether the process ends by itself, as one does that was killed, if not at once.
bool endsSoon(qint64 process) {
  QElapsedTimer timer;
  timer.start();
  while (isRunning(process)) {
    if (timer.hasExpired(10'000)) return false;
    QThread::msleep(10);
  }
  return true;
}

TEST_F(RunTest, StopsProgramsOfStoppedScript) {
  const std::pair<const char*, const char*> cases[] = {
      {"waits for it", "echo $$ >a; sleep 300 & echo $! >b; wait"},
      {"waits for one that will not",
       "trap '' TERM; echo $$ >a; sleep 300 & echo $! >b; wait; wait"},
      {"leaves one behind", "sleep 300 >/dev/null 2>&1 & echo $! >a; echo $! >b"}};
  write(u"a.js"_s,
        "const c = CMD.new(); c.cd = context.scriptPath.replace('/a.js', '');\n"
        "c.exec_('sh child.sh'); for (;;);");
  for (const auto& [what, child] : cases) {
    write(u"child.sh"_s, child);
    EXPECT_EQ(run(u"a.js --timeout 1"_s).find("1: kelvar: the script did not end within 1 s\n"),
              0u);
    for (const QString& name : {u"a"_s, u"b"_s}) {
      QFile file(dir_.filePath(name));
      ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << what;
      const qint64 process = file.readAll().trimmed().toLongLong();
      ASSERT_GT(process, 0) << what;
      EXPECT_TRUE(endsSoon(process)) << what << ", " << name.toStdString();
      file.remove();
    }
  }
}

TEST_F(RunTest, ReportsUnwritableSettingsOnce) {
  write(u"settings/file"_s, "");
  write(u"a.js"_s,
        "const p = KVPersister.new(); for (const k of ['a', 'b', 'c']) p.setObject_forKey_(1, k);\n"
        "log(p.objectForKey_('a'))");
  start(u"a.js"_s);
  EXPECT_EQ(finish(), "null\n");
  const QByteArray said = program_.readAllStandardError();
  EXPECT_TRUE(said.startsWith("kelvar: the settings in ") && said.contains("/settings cannot be "))
      << said.constData();
  EXPECT_EQ(said.count('\n'), 1) << said.constData();
}

TEST_F(RunTest, SurvivesAnyServerReply) {
  write(u"version.js"_s, documented(u"// version.js"_s).toUtf8());
  const QString plugin = QStringLiteral(KELVAR_PLUGIN) + u" --command check-version"_s;
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"<html>", "the server's reply is invalid\n",
       "1: kelvar: Error: the server's reply is invalid: null\n"},
      {R"({"error": "go away"})", "the server's reply is invalid\n",
       "1: kelvar: Error: the server's reply is invalid: \"go away\"\n"},
      {R"({"error": {"message": "Who are you?"}})", "Who are you?\n",
       "1: kelvar: Error: Who are you?\n"},
      {R"({"success": true, "records": [{"fields": {"Expired": true}}]})", "asked\n",
       "This version has expired.\n"}};
  for (const auto& [answer, sample, ours] : cases) {
    const LoopbackServer server({LoopbackServer::http(answer)});
    QProcessEnvironment environment = program_.processEnvironment();
    environment.insert(u"KELVAR_API_SERVER"_s, server.url({}).toString());
    for (const QString& proxy : {u"http_proxy"_s, u"https_proxy"_s, u"all_proxy"_s}) {
      environment.remove(proxy);
    }
    program_.setProcessEnvironment(environment);
    EXPECT_EQ(run(u"version.js"_s), sample) << answer;
    EXPECT_EQ(run(plugin).find(ours), 0u) << answer;
  }
}

TEST_F(RunTest, PlugInChecksVersionAndShowsMessages) {
  const QString plugin = QStringLiteral(KELVAR_PLUGIN);
  EXPECT_EQ(run(plugin + u" --list"_s),
            "map\tMap Artboard…\nrefresh\tRefresh All\nrotate\tRotate\nflip\tFlip\n"
            "panel\tOpen Panel\ncheck-version\tCheck Version\nmessages\tShow Messages\n");
  EXPECT_EQ(run(plugin + u" --command check-version"_s).find("1: kelvar: Error: "), 0u);
  QProcess settings;
  settings.setProcessEnvironment(program_.processEnvironment());
  settings.start(
      QStringLiteral(KELVAR_PROGRAM),
      {u"settings"_s, u"set"_s, u"io.kelvarlabs.kelvar.servermessage"_s, u"--type"_s, u"json"_s,
       u"[{\"id\":1,\"message\":\"Hello\",\"action\":\"\",\"read\":false},"
       "{\"id\":2,\"message\":\"Old\",\"action\":\"\",\"read\":true}]"_s});
  ASSERT_TRUE(settings.waitForFinished(-1));
  EXPECT_EQ(run(plugin + u" --command messages"_s), "Hello\n");
}

/// The documents must be the same byte for byte.
TEST_F(RunTest, PlugInMapsLikeMapCommand) {
  QProcess example;
  example.start(QStringLiteral(KELVAR_EXAMPLE_DOCUMENT), {dir_.filePath(u"a.sketch"_s)});
  ASSERT_TRUE(example.waitForFinished(-1));
  ASSERT_EQ(example.exitCode(), 0) << example.readAllStandardError().toStdString();
  ASSERT_TRUE(QFile::copy(dir_.filePath(u"a.sketch"_s), dir_.filePath(u"b.sketch"_s)));
  const auto plugIn = [&](const QString& command, const QString& rest) {
    return run(QStringLiteral(KELVAR_PLUGIN) + u" --document b.sketch --select Glass --command "_s +
               command + rest);
  };
  const auto map = [&](const QString& from, const QStringList& options) {
    QProcess program;
    program.setWorkingDirectory(dir_.path());
    program.start(QStringLiteral(KELVAR_PROGRAM),
                  QStringList{u"map"_s, u"artboard:Screen"_s, u"--document"_s, from, u"--layer"_s,
                              u"Glass"_s, u"-o"_s, u"c.sketch"_s} +
                      options);
    EXPECT_TRUE(program.waitForFinished(-1));
    EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();
  };
  const auto areTheSame = [&] {
    QFile b(dir_.filePath(u"b.sketch"_s)), c(dir_.filePath(u"c.sketch"_s));
    return b.open(QIODevice::ReadOnly) && c.open(QIODevice::ReadOnly) && b.readAll() == c.readAll();
  };
  EXPECT_EQ(plugIn(u"map"_s, u" -- Screen"_s), "Screen → Glass\n");
  map(u"a.sketch"_s, {});
  EXPECT_TRUE(areTheSame());
  EXPECT_EQ(plugIn(u"rotate"_s, {}), "");
  map(u"c.sketch"_s, {u"--rotation"_s, u"1"_s});
  EXPECT_TRUE(areTheSame());
  EXPECT_EQ(plugIn(u"flip"_s, {}), "");
  map(u"c.sketch"_s, {u"--rotation"_s, u"1"_s, u"--flip"_s});
  EXPECT_TRUE(areTheSame());
  EXPECT_EQ(plugIn(u"refresh"_s, {}), "Glass\n");
}

TEST_F(RunTest, RunsDocumentedExamples) {
  for (const QString& name : {u"hello.js"_s, u"version.js"_s}) {
    write(name, documented(u"// "_s + name).toUtf8());
  }
  EXPECT_EQ(run(u"hello.js"_s), "Hello {5, 0, 7, 0}\n");
  EXPECT_EQ(run(u"version.js"_s), "no connection\n");
  const QString folder = u"Corners.sketchplugin/Contents/Sketch/"_s;
  write(folder + u"manifest.json"_s, documented(u"{\n  \"identifier\""_s).toUtf8());
  write(folder + u"corners.js"_s, documented(u"// corners.js"_s).toUtf8());
  EXPECT_EQ(run(u"--list Corners.sketchplugin"_s), "show\tShow Corners\n");
  QProcess example;
  example.start(QStringLiteral(KELVAR_EXAMPLE_DOCUMENT), {dir_.filePath(u"app.sketch"_s)});
  ASSERT_TRUE(example.waitForFinished(-1));
  EXPECT_EQ(run(u"Corners.sketchplugin --document app.sketch --select Glass"_s),
            "Glass 4 corners: {0, 31} {282, 0} {395, 665} {64, 732}\n");
}

TEST_F(RunTest, DocumentedScriptMapsLikeMapCommand) {
  write(u"lay.js"_s, documented(u"// lay.js"_s).toUtf8());
  QProcess other;
  other.setWorkingDirectory(dir_.path());
  other.start(QStringLiteral(KELVAR_EXAMPLE_DOCUMENT), {u"a.sketch"_s});
  ASSERT_TRUE(other.waitForFinished(-1));
  EXPECT_EQ(run(u"lay.js --document a.sketch --select Glass -- Screen"_s), "");
  other.start(QStringLiteral(KELVAR_PROGRAM),
              {u"map"_s, u"artboard:Screen"_s, u"--document"_s, u"a.sketch"_s, u"--layer"_s,
               u"Glass"_s, u"-o"_s, u"c.sketch"_s});
  ASSERT_TRUE(other.waitForFinished(-1));
  QFile mine(dir_.filePath(u"mockup.sketch"_s)), theirs(dir_.filePath(u"c.sketch"_s));
  ASSERT_TRUE(mine.open(QIODevice::ReadOnly) && theirs.open(QIODevice::ReadOnly));
  EXPECT_TRUE(mine.readAll() == theirs.readAll());
}

}  // namespace
}  // namespace kelvar

#include <poll.h>
#include <pty.h>
#include <unistd.h>

#include <csignal>

#include "scripting/RunTest.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

/// Runs scripts that show something and ask.
class RunDialogTest : public RunTest {
 protected:
  RunDialogTest() {
    write(u"yes.js"_s,
          "var a = [NSAlert new]; a.messageText = 'Sure\\nreally?'; a.addButtonWithTitle('Yes');\n"
          "a.addButtonWithTitle('Maybe'); print(a.runModal())");
    write(u"cancel.js"_s,
          "var a = [NSAlert new]; a.messageText = 'Sure?'; a.addButtonWithTitle('OK');\n"
          "a.addButtonWithTitle('Cancel'); print(a.runModal())");
    write(u"name.js"_s,
          "var w = [COSAlertWindow new]; w.addTextLabelWithValue('Name');\n"
          "w.addTextFieldWithValue('x'); w.addAccessoryView([NSSecureTextField new]);\n"
          "w.runModal(); print(w.viewAtIndex(1).stringValue(), w.viewAtIndex(2).stringValue())");
    write(u"show.js"_s, "NSApp.displayDialog_withTitle_('two\\nlines \\x1b[2J', 'Title')");
  }
};

TEST_F(RunDialogTest, AnswersWithOptions) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"yes.js --answer Maybe", "1001\n", ""},
      {"yes.js --answer maybe", "1001\n", ""},
      {"yes.js --answer Maybe --answer more", "1001\n",
       "kelvar: nothing was asked that the last 1 of --answer would answer\n"},
      {"yes.js --answer No", "",
       "kelvar: Error: --answer \"No\" does not answer \"Sure really?\", which takes Yes, Maybe\n"},
      {"yes.js", "",
       "kelvar: Error: nobody can be asked \"Sure really?\"; answer it with --answer\n"},
      {"cancel.js", "1001\n", "kelvar: nobody was asked \"Sure?\"; the answer is \"Cancel\"\n"},
      {"name.js --answer Ann --answer pw", "Ann pw\n", ""},
      {"show.js", "", "kelvar: message: Title two lines \xef\xbf\xbd[2J\n"},
  };
  for (const auto& [line, printed, error] : cases) {
    start(QString::fromUtf8(line));
    ASSERT_TRUE(program_.waitForFinished(-1));
    EXPECT_EQ(program_.readAllStandardOutput().toStdString(), printed) << line;
    const std::string said = program_.readAllStandardError().toStdString();
    EXPECT_EQ(said.find(error), 0u) << line << ": " << said;
    EXPECT_EQ(said.empty(), std::string_view(error).empty()) << said;
  }
}

/// A terminal, at which a program reads its input and writes its errors.
class Terminal {
 public:
  Terminal() { EXPECT_EQ(openpty(&user_, &program_, nullptr, nullptr, nullptr), 0); }
  ~Terminal() {
    close(user_);
    if (program_ >= 0) close(program_);
  }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  void attach(QProcess* process) const {
    process->setChildProcessModifier([this] {
      setsid();
      dup2(program_, STDIN_FILENO);
      dup2(program_, STDERR_FILENO);
    });
  }
  void type(const std::string& keys) const {
    EXPECT_EQ(write(user_, keys.data(), keys.size()), ssize_t(keys.size()));
  }
  /// What is shown up to and including `end`.
  std::string readTo(const std::string& end) const {
    std::string shown;
    char letter = 0;
    pollfd output{user_, POLLIN, 0};
    while (!shown.ends_with(end) && poll(&output, 1, 20000) == 1 && read(user_, &letter, 1) == 1) {
      shown += letter;
    }
    return shown;
  }

 private:
  int user_ = -1, program_ = -1;
};

TEST_F(RunDialogTest, AsksOnTerminal) {
  const struct {
    const char* script;
    /// What is typed after each prompt.
    std::vector<std::pair<const char*, const char*>> dialog;
    const char* printed;
    int status;
  } cases[] = {
      {"yes.js", {{"Sure\r\nreally?\r\nYes / Maybe [Yes]: ", "maybe\n"}}, "1001\n", 0},
      {"yes.js", {{"Yes / Maybe [Yes]: ", "\n"}}, "1000\n", 0},
      {"yes.js",
       {{"[Yes]: ", "no\n"},
        {"type one of the answers.\r\nSure\r\nreally?\r\nYes / Maybe [Yes]: ", "Yes\n"}},
       "1000\n",
       0},
      {"yes.js", {{"[Yes]: ", "\x04"}}, "", 1},
      {"cancel.js", {{"[OK]: ", "\x04"}}, "1001\n", 0},
      {"name.js", {{"Name\r\nAnswer [x]: ", "Ann\n"}, {"Name\r\nAnswer: ", "pw\n"}}, "Ann pw\n", 0},
  };
  for (const auto& each : cases) {
    const Terminal terminal;
    terminal.attach(&program_);
    start(QString::fromUtf8(each.script));
    for (const auto& [prompt, keys] : each.dialog) {
      const std::string shown = terminal.readTo(prompt);
      EXPECT_TRUE(shown.ends_with(prompt)) << shown;
      EXPECT_EQ(shown.find("pw"), std::string::npos) << "secrets are not shown";
      terminal.type(keys);
    }
    ASSERT_TRUE(program_.waitForFinished(30000)) << each.script;
    EXPECT_EQ(program_.readAllStandardOutput().toStdString(), each.printed) << each.script;
    EXPECT_EQ(program_.exitCode(), each.status) << each.script;
  }
}

TEST_F(RunDialogTest, StopsAskingWhenInterrupted) {
  write(u"stubborn.js"_s,
        "for (;;) { try { NSRunAlertPanel('Sure?', '', 'Yes', 'Maybe', nil) } catch (e) {} }");
  for (const QString& script : {u"yes.js"_s, u"stubborn.js"_s}) {
    const Terminal terminal;
    terminal.attach(&program_);
    start(script);
    terminal.readTo("[Yes]: ");
    ASSERT_EQ(kill(pid_t(program_.processId()), SIGINT), 0);
    ASSERT_TRUE(program_.waitForFinished(30000));
    EXPECT_EQ(program_.exitCode(), 1);
  }
}

}  // namespace
}  // namespace kelvar

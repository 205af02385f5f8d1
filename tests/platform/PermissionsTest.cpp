#include "platform/Permissions.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Kind = Permissions::Kind;

TEST(PermissionsTest, AllowsPlacesWithinClosedKinds) {
  const QTemporaryDir dir;
  const auto at = [&](const char* name) { return dir.filePath(QString::fromLatin1(name)); };
  QDir().mkpath(at("open/inner"));
  QDir().mkpath(at("secret"));
  QFile::link(at("secret"), at("open/link"));
  Permissions permissions;
  EXPECT_TRUE(permissions.allows(Kind::Write, at("secret/a")));
  permissions.close(Kind::Write);
  permissions.close(Kind::Open);
  permissions.close(Kind::Run);
  ASSERT_TRUE(permissions.allow(Kind::Write, at("open")));
  ASSERT_TRUE(permissions.deny(Kind::Write, at("open/inner")));
  ASSERT_TRUE(permissions.allow(Kind::Open, u"Example.com"_s));
  ASSERT_TRUE(permissions.allow(Kind::Open, u"mailto"_s));
  ASSERT_TRUE(permissions.allow(Kind::Run, u"sh"_s));
  const std::tuple<Kind, QString, bool> cases[] = {
      {Kind::Write, at("open/a"), true},
      {Kind::Write, at("open"), true},
      {Kind::Write, at("open/new/b"), true},
      {Kind::Write, at("open/../secret/a"), false},
      {Kind::Write, at("open/link/a"), false},
      {Kind::Write, at("open/inner/a"), false},
      {Kind::Write, at("open/.a"), false},
      {Kind::Write, at("open/.d/a"), false},
      {Kind::Write, at("openness"), false},
      {Kind::Write, QString(), false},
      {Kind::Read, at("secret/a"), true},
      {Kind::Open, u"https://example.com/x"_s, true},
      {Kind::Open, u"https://example.com.evil.org/"_s, false},
      {Kind::Open, u"https://example.com@evil.org/"_s, false},
      {Kind::Open, u"mailto:a@b.c"_s, true},
      {Kind::Run, u"/bin/sh"_s, true},
      {Kind::Run, at("open/sh"), false},
  };
  for (const auto& [kind, target, isAllowed] : cases) {
    EXPECT_EQ(permissions.allows(kind, target), isAllowed) << target.toStdString();
  }
}

TEST(PermissionsTest, RefusesPlacesThatAreNone) {
  Permissions permissions;
  EXPECT_EQ(permissions.allow(Kind::Run, u"no-such-program"_s).error().message,
            "there is no program \"no-such-program\" on the PATH");
  EXPECT_EQ(permissions.deny(Kind::Write, u""_s).error().message, "write= names nothing");
}

TEST(RefusalScopeTest, KeepsFirstRefusalOfItsCall) {
  Permissions closed;
  closed.close(Kind::Open);
  Permissions::install(closed);
  const RefusalScope outer;
  {
    const RefusalScope inner;
    EXPECT_FALSE(Permissions::check(Kind::Open, u"https://a.org/"_s));
    EXPECT_FALSE(Permissions::check(Kind::Open, u"https://b.org/"_s));
    EXPECT_EQ(inner.refusal(),
              u"opening https://a.org/ is not allowed; --allow open=a.org allows it"_s);
  }
  EXPECT_FALSE(outer.refusal());
  EXPECT_FALSE(Permissions::isAllowed(Kind::Open, u"https://a.org/"_s));
  EXPECT_FALSE(outer.refusal()) << "only check refuses";
  Permissions::install({});
}

}  // namespace
}  // namespace kelvar

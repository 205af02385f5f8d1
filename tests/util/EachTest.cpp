#include "util/Each.h"

#include <gtest/gtest.h>

#include <QString>
#include <QStringList>

namespace kelvar {
namespace {

struct Receiver {
  virtual ~Receiver() = default;
  QStringList heard;
};

struct Named {
  virtual ~Named() = default;
  virtual int rename(QString name) = 0;
};

struct Listener : Receiver, Named {
  int rename(QString name) override {
    heard.append(std::move(name));
    return 1;
  }
  void change(QStringList& list) const { list.append(heard); }
};

struct Renamed : Listener {};

using Receivers = QList<std::shared_ptr<Receiver>>;

TEST(EachTest, ReachesImplementersInOrder) {
  const Receivers receivers{std::make_shared<Receiver>(), std::make_shared<Listener>(), nullptr,
                            std::make_shared<Renamed>()};
  const QString name = QStringLiteral("a name");
  each(receivers)(&Named::rename, name);
  EXPECT_EQ(name, QStringLiteral("a name"));
  EXPECT_EQ(receivers[0]->heard, QStringList());
  EXPECT_EQ(receivers[1]->heard, QStringList(name));
  EXPECT_EQ(receivers[3]->heard, QStringList(name)) << "the argument was moved away";

  receivers[3]->heard = {QStringLiteral("last")};
  QStringList order;
  each(receivers)(&Listener::change, std::ref(order));
  EXPECT_EQ(order, QStringList({name, QStringLiteral("last")}));
}

TEST(EachTest, ThrowsIfNoElementImplements) {
  for (const Receivers& receivers :
       {Receivers(), Receivers{nullptr, std::make_shared<Receiver>()}}) {
    Each proxy = each(receivers);
    EXPECT_FALSE(proxy.respondsTo(&Named::rename));
    EXPECT_TRUE(proxy.respondsTo(&Each<Receiver>::array));
    EXPECT_THROW(proxy(&Named::rename, QString()), UnrecognizedOperation);
    EXPECT_NO_THROW(proxy.forward(&Named::rename, QString()));
    proxy.setArray({std::make_shared<Listener>()});
    EXPECT_TRUE(proxy.respondsTo(&Named::rename));
    EXPECT_NO_THROW(proxy(&Named::rename, QString()));
  }
}

TEST(EachTest, ListMayChangeDuringBroadcast) {
  struct Leaver : Receiver {
    void leave(Receivers& receivers) { receivers.clear(); }
  };
  Receivers receivers{std::make_shared<Leaver>(), std::make_shared<Leaver>()};
  each(receivers)(&Leaver::leave, std::ref(receivers));
  EXPECT_TRUE(receivers.isEmpty());
}

}  // namespace
}  // namespace kelvar

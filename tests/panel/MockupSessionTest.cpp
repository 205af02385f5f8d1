#include "panel/MockupSession.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>

#include "mockup/Images.h"
#include "panel/visibleChild.h"

namespace kelvar::cli {
namespace {

class MockupSessionTest : public testing::Test {
 protected:
  void SetUp() override {
    noise(400, 300).save(path("photo.png"));
    noise(60, 90, 5).save(path("app.png"));
    session_.onFailed = [this](const QString& message) { error_ = message; };
    session_.onOpened = [this](const MockupSession::Frame& frame) { frame_ = frame; };
    session_.onDrawn = [this](const MockupSession::Frame& frame) { frame_ = frame; };
    session_.onDiskConflict = [this] { ++conflicts_; };
  }

  QString path(const char* name) const { return dir_.filePath(QString::fromLatin1(name)); }

  QByteArray bytes(const char* name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  void write(const char* name, const QByteArray& bytes) const {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
  }

  bool wait(const std::function<bool()>& until) { return QTest::qWaitFor(until, kMaxWait); }
  bool settled() const { return session_.hasMockup() && !session_.isBusy(); }
  bool errorContains(const char* text) { return error_.contains(QLatin1String(text)); }

  void open(const char* name) {
    session_.open(path(name));
    ASSERT_TRUE(wait([&] { return settled(); })) << error_.toStdString();
  }

  /// The photo with a shape that has a design.
  void openMapped() {
    open("photo.png");
    model().addShape({QPointF(40, 50), {180, 70}, {170, 240}, {30, 220}});
    session_.addDesigns({path("app.png")}, model().selection().first());
    ASSERT_TRUE(wait([&] { return !shape().design.isEmpty() && settled(); }));
  }

  PanelModel& model() { return session_.model(); }
  const Arrangement::Shape& shape() { return model().arrangement().shapes.first(); }
  QImage image() const { return frame_.image->part({100, 150, 9, 9}, {9, 9}); }

  QTemporaryDir dir_;
  QString error_;
  MockupSession::Frame frame_;
  int conflicts_ = 0;
  MockupSession session_;
};

TEST_F(MockupSessionTest, OpensWaitingDesignsWithoutChange) {
  QStringList thumbnails;
  session_.onThumbnail = [&](const QString& design, const QImage& thumbnail) {
    thumbnails.append(design);
    EXPECT_EQ(thumbnail.size(), QSize(40, 60));
  };
  session_.setThumbnailSide(60);
  session_.addDesigns({path("app.png")});
  EXPECT_TRUE(model().arrangement().designs.isEmpty()) << "nothing is open";
  open("photo.png");
  ASSERT_TRUE(wait([&] { return !thumbnails.isEmpty(); }));
  EXPECT_EQ(model().arrangement().designs.first().id, thumbnails.first());
  EXPECT_FALSE(session_.isModified());
  EXPECT_FALSE(model().canUndo());
  EXPECT_FALSE(session_.isDocument());
  EXPECT_EQ(session_.shownFile(), path("photo.png"));
}

TEST_F(MockupSessionTest, SavesUnderNewName) {
  openMapped();
  ASSERT_TRUE(session_.isModified());
  int done = 0;
  session_.save(path("photo.png"), [&] { ++done; });
  EXPECT_TRUE(errorContains("must end in .json"));
  session_.save(path("missing/a.json"), [&] { ++done; });
  EXPECT_TRUE(session_.isWriting());
  ASSERT_TRUE(wait([&] { return !session_.isWriting(); }));
  EXPECT_EQ(done, 0) << "neither was saved";
  EXPECT_TRUE(session_.file().isEmpty());
  session_.save(path("a.json"), [&] { ++done; });
  ASSERT_TRUE(wait([&] { return done == 1; })) << error_.toStdString();
  EXPECT_FALSE(session_.isModified());
  EXPECT_EQ(session_.file(), path("a.json"));
  model().rotate();
  EXPECT_TRUE(session_.isModified());
  session_.discardChanges();
  EXPECT_FALSE(session_.isModified());
}

TEST_F(MockupSessionTest, KeepsWhatIsOpenAfterFailure) {
  openMapped();
  const Arrangement before = model().arrangement();
  write("text.png", "not an image");
  write("next.json", R"({"kelvar": "arrangement", "version": 9, "photo": "photo.png"})");
  QDir(dir_.path()).mkdir(QStringLiteral("folder.png"));
  const struct {
    std::function<void()> run;
    const char* reason;
  } cases[] = {
      {[&] { session_.open(path("text.png")); }, "text.png"},
      {[&] { session_.open(path("missing.jpg")); }, "missing.jpg"},
      {[&] { session_.open(path("missing.sketch")); }, "missing.sketch"},
      {[&] { session_.open(path("next.json")); }, "version is 9"},
      {[&] { session_.addDesigns({path("text.png")}); }, "text.png"},
      {[&] { session_.save(path("nowhere/a.json")); }, "nowhere"},
      {[&] { session_.exportTo(path("folder.png")); }, "folder.png"},
      {[&] { session_.exportTo(path("out.bmp")); }, "out.bmp"},
  };
  for (const auto& [run, reason] : cases) {
    error_.clear();
    run();
    EXPECT_TRUE(wait([&] { return errorContains(reason); }))
        << reason << ": " << qPrintable(error_);
    EXPECT_EQ(model().arrangement(), before) << reason;
    EXPECT_TRUE(session_.hasMockup());
  }
}

TEST_F(MockupSessionTest, LeavesFilesIntactOnFullDisk) {
  openMapped();
  session_.save(path("a.json"));
  ASSERT_TRUE(wait([&] { return !session_.isModified(); }));
  const QByteArray before = bytes("a.json");
  model().rotate();
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit{};
  ::getrlimit(RLIMIT_FSIZE, &limit);
  const rlimit small{64, limit.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  session_.save(path("a.json"));
  const bool saveFailed = wait([&] { return error_.contains(path("a.json")); });
  session_.exportTo(path("out.png"));
  const bool exportFailed = wait([&] { return error_.contains(path("out.png")); });
  ::setrlimit(RLIMIT_FSIZE, &limit);
  EXPECT_TRUE(saveFailed && exportFailed) << error_.toStdString();
  EXPECT_EQ(bytes("a.json"), before);
  EXPECT_FALSE(QFile::exists(path("out.png")));
  EXPECT_TRUE(session_.isModified());
  session_.save(path("a.json"));
  EXPECT_TRUE(wait([&] { return !session_.isModified(); }));
}

TEST_F(MockupSessionTest, FollowsDesignFilesOnDisk) {
  openMapped();
  const QImage before = image();
  noise(70, 90, 77).save(path("app.png"));
  EXPECT_TRUE(wait([&] { return image() != before; }));
  const QImage changed = image();
  ASSERT_TRUE(QFile::remove(path("app.png")));
  ASSERT_TRUE(wait([&] { return !frame_.shapeProblems.isEmpty(); }));
  EXPECT_TRUE(frame_.shapeProblems.first().contains(path("app.png")));
  EXPECT_EQ(image(), changed) << "as it was last read";
  session_.exportTo(path("out.png"));
  EXPECT_TRUE(wait([&] { return errorContains("cannot be shown"); }));
  EXPECT_FALSE(QFile::exists(path("out.png")));
  noise(60, 90, 5).save(path("app.png"));
  EXPECT_TRUE(wait([&] { return image() == before && frame_.shapeProblems.isEmpty(); }));
}

/// A session over the example document, whose mockup has one shape, "Glass".
class MockupSessionDocumentTest : public MockupSessionTest {
 protected:
  void SetUp() override {
    MockupSessionTest::SetUp();
    ASSERT_EQ(QProcess::execute(QStringLiteral(KELVAR_EXAMPLE_DOCUMENT), {path("doc.sketch")}), 0);
    writeFlipped("flipped.sketch");
    open("doc.sketch");
    model().select({glass().id});
  }

  /// The document with a flipped design on the glass.
  void writeFlipped(const char* name) {
    const auto mockup = DocumentMockup::open(path("doc.sketch"), {});
    ASSERT_TRUE(mockup) << mockup.error().message;
    Arrangement arrangement = (*mockup)->arrangement();
    const QString screen = QStringLiteral("Screen");
    for (Arrangement::Shape& shape : arrangement.shapes) {
      if (shape.name != u"Glass") continue;
      shape.options.flipped = true;
      for (const auto& design : arrangement.designs) {
        if (design.name == screen) shape.design = design.id;
      }
    }
    ASSERT_TRUE((*mockup)->save(arrangement, path(name)));
  }

  Arrangement::Shape glass() {
    for (const Arrangement::Shape& shape : model().arrangement().shapes) {
      if (shape.name == u"Glass") return shape;
    }
    return {};
  }

  void replaceDocument(const char* with) { write("doc.sketch", bytes(with)); }

  void mapScreen() {
    model().setDesign(glass().id, model().arrangement().designs.first().id);
    ASSERT_TRUE(wait([&] { return settled(); }));
    ASSERT_TRUE(session_.isModified());
  }
};

TEST_F(MockupSessionDocumentTest, ReloadsUnmodifiedDocument) {
  EXPECT_TRUE(session_.isDocument());
  EXPECT_EQ(session_.file(), path("doc.sketch"));
  EXPECT_EQ(session_.artboards().size(), 2);
  replaceDocument("flipped.sketch");
  EXPECT_TRUE(wait([&] { return glass().options.flipped && settled(); })) << error_.toStdString();
  EXPECT_EQ(model().selection(), QStringList(glass().id));
  EXPECT_EQ(conflicts_, 0);
}

TEST_F(MockupSessionDocumentTest, ReportsConflictUntilAnswered) {
  mapScreen();
  replaceDocument("flipped.sketch");
  ASSERT_TRUE(wait([&] { return conflicts_ == 1; }));
  EXPECT_FALSE(glass().options.flipped);
  session_.save(path("doc.sketch"));
  ASSERT_TRUE(wait([&] { return conflicts_ == 2; }));
  EXPECT_EQ(bytes("doc.sketch"), bytes("flipped.sketch")) << "not replaced";
  session_.keepChanges();
  session_.save(path("doc.sketch"));
  ASSERT_TRUE(wait([&] { return !session_.isModified(); })) << error_.toStdString();
  EXPECT_NE(bytes("doc.sketch"), bytes("flipped.sketch"));

  model().rotate();
  replaceDocument("flipped.sketch");
  ASSERT_TRUE(wait([&] { return conflicts_ == 3; }));
  session_.reload();
  EXPECT_TRUE(wait([&] { return glass().options.flipped && settled(); })) << error_.toStdString();
  EXPECT_FALSE(session_.isModified());
}

TEST_F(MockupSessionDocumentTest, ChangeDuringReloadIsConflict) {
  for (const bool isQueued : {false, true}) {
    conflicts_ = 0;
    QObject context;
    bool isChanged = false;
    session_.onStatus = [&](const QString& message) {
      if (isChanged || !message.startsWith(QStringLiteral("Opening"))) return;
      isChanged = true;
      const auto type = isQueued ? Qt::QueuedConnection : Qt::DirectConnection;
      QMetaObject::invokeMethod(
          &context, [this] { model().rotate(); }, type);
    };
    const int rotation = glass().options.rotation;
    replaceDocument("flipped.sketch");
    EXPECT_TRUE(wait([&] { return conflicts_ == 1 && settled(); })) << error_.toStdString();
    session_.onStatus = nullptr;
    EXPECT_FALSE(glass().options.flipped);
    EXPECT_EQ(glass().options.rotation, rotation + 1);
    session_.keepChanges();
    session_.save(path("doc.sketch"));
    ASSERT_TRUE(wait([&] { return !session_.isModified(); })) << error_.toStdString();
  }
}

TEST_F(MockupSessionDocumentTest, KeepsChangesWhenReloadFails) {
  mapScreen();
  const Arrangement mine = model().arrangement();
  replaceDocument("photo.png");
  ASSERT_TRUE(wait([&] { return conflicts_ == 1; }));
  session_.reload();
  EXPECT_TRUE(wait([&] { return errorContains("ZIP"); }));
  EXPECT_EQ(model().arrangement(), mine);
  ASSERT_TRUE(QFile::remove(path("doc.sketch")));
  session_.save(path("doc.sketch"));
  ASSERT_TRUE(wait([&] { return !session_.isModified(); })) << error_.toStdString();
  EXPECT_TRUE(DocumentMockup::open(path("doc.sketch"), {}));
}

}  // namespace
}  // namespace kelvar::cli

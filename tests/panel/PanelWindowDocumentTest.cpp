#include <gtest/gtest.h>

#include <QProcess>

#include "mockup/LayerSettings.h"
#include "panel/ArtboardSelector.h"
#include "panel/PanelWindowTest.h"
#include "platform/Bundle.h"
#include "platform/QtError.h"

namespace kelvar::cli {
namespace {

/// The window over the example document, whose mockup has one shape, "Glass".
class PanelWindowDocumentTest : public PanelWindowTest {
 protected:
  void SetUp() override {
    PanelWindowTest::SetUp();
    ASSERT_EQ(QProcess::execute(QStringLiteral(KELVAR_EXAMPLE_DOCUMENT), {path("doc.sketch")}), 0);
  }

  void openDocument() {
    session().open(path("doc.sketch"));
    ASSERT_TRUE(wait([&] { return settled(); })) << error().toStdString();
  }

  /// In the middle of the glass; the window has two pixels per point.
  void clickGlass() { click(at(1200, 880)); }

  Arrangement::Shape glass() const {
    for (const Arrangement::Shape& shape : model().arrangement().shapes) {
      if (shape.name == u"Glass") return shape;
    }
    return {};
  }

  int map(const QStringList& options, const char* output) {
    const QStringList arguments{QStringLiteral("map"),        QStringLiteral("artboard:Screen"),
                                QStringLiteral("--document"), path("doc.sketch"),
                                QStringLiteral("--layer"),    QStringLiteral("Glass"),
                                QStringLiteral("-o"),         path(output)};
    return QProcess::execute(QStringLiteral(KELVAR_PROGRAM), arguments + options);
  }

  void replaceDocument(const char* by) {
    QFile file(path("doc.sketch"));
    const QByteArray other = bytes(by);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(other) == other.size());
  }

  /// Changes the document here: maps the screen onto the glass.
  void chooseScreen() {
    clickGlass();
    choose(control<PopUpButton>("popupButton"), 0);
    ASSERT_TRUE(wait([&] { return settled(); }));
    ASSERT_TRUE(model().isModified());
  }

  /// The settings stored on the glass; empty if there are none.
  QString remembered(const char* name) const {
    const auto document = SketchDocument::open(path(name));
    if (!document) return messageOf(document.error());
    const auto settings = LayerSettings::of(*(*document)->layersNamed(QStringLiteral("Glass"))[0]);
    if (!settings) return {};
    return QStringLiteral("%1 %2").arg(settings->options.rotation).arg(settings->options.flipped);
  }
};

TEST_F(PanelWindowDocumentTest, MapsArtboardAsCommandLineDoes) {
  const QByteArray before = bytes("doc.sketch");
  throughDialog("Open", path("doc.sketch"));
  ASSERT_TRUE(wait([&] { return settled(); })) << error().toStdString();
  EXPECT_EQ(Bundle::hostInformation().value(QStringLiteral("CFBundleShortVersionString")),
            QStringLiteral("97.1"));
  clickGlass();
  ASSERT_EQ(model().selection(), QStringList(glass().id));
  EXPECT_EQ(glass().name, QStringLiteral("Glass"));
  choose(control<PopUpButton>("popupButton"), 0);
  press("layerRotateButton");
  ASSERT_TRUE(wait([&] { return settled(); }));
  throughDialog("Export", path("out.png"));
  ASSERT_TRUE(wait([&] { return QFile::exists(path("out.png")); })) << error().toStdString();
  throughDialog("Save As", path("saved.sketch"));
  ASSERT_TRUE(wait([&] { return !model().isModified(); })) << error().toStdString();

  EXPECT_EQ(remembered("saved.sketch"), QStringLiteral("1 0"));
  const QStringList rotated{QStringLiteral("--rotation"), QStringLiteral("1")};
  ASSERT_EQ(map(rotated, "mapped.sketch"), 0);
  EXPECT_EQ(bytes("saved.sketch"), bytes("mapped.sketch"));
  ASSERT_EQ(map(rotated, "mapped.png"), 0);
  EXPECT_EQ(bytes("out.png"), bytes("mapped.png"));
  EXPECT_EQ(bytes("doc.sketch"), before);

  key(Qt::Key_Z, Qt::ControlModifier);
  window_.findChild<QAction*>(QStringLiteral("Save"))->trigger();
  ASSERT_TRUE(wait([&] { return !model().isModified(); })) << error().toStdString();
  ASSERT_EQ(map({}, "plain.sketch"), 0);
  EXPECT_EQ(bytes("saved.sketch"), bytes("plain.sketch")) << "after undo";
  EXPECT_EQ(bytes("doc.sketch"), before);
}

TEST_F(PanelWindowDocumentTest, ShowsOtherArtboards) {
  openDocument();
  auto* const chooser = window_.findChild<QComboBox*>(QStringLiteral("artboardSelector"));
  ASSERT_TRUE(wait([&] { return chooser->isVisible(); }));
  EXPECT_EQ(chooser->currentText(), QStringLiteral("Mockup"));
  ASSERT_EQ(chooser->count(), 2);
  chooseScreen();
  const auto imageSize = [&] { return static_cast<CanvasView*>(view_)->image().size(); };
  const QSize mockup = imageSize();

  window_.findChild<QAction*>(QStringLiteral("Previous Artboard"))->trigger();
  ASSERT_TRUE(wait([&] { return settled(); })) << error().toStdString();
  EXPECT_EQ(chooser->currentText(), QStringLiteral("Screen"));
  EXPECT_EQ(imageSize(), QSize(750, 1624));
  EXPECT_TRUE(model().selection().isEmpty());
  click(at(20, 20));
  EXPECT_NE(model().selection(), QStringList(glass().id));
  throughDialog("Export", path("screen.png"));
  ASSERT_TRUE(wait([&] { return QFile::exists(path("screen.png")); })) << error().toStdString();
  EXPECT_EQ(QImage(path("screen.png")).size(), QSize(375, 812));

  window_.findChild<QAction*>(QStringLiteral("Undo"))->trigger();
  ASSERT_TRUE(wait([&] { return settled(); }));
  EXPECT_EQ(chooser->currentText(), QStringLiteral("Mockup")) << "of the change";
  EXPECT_EQ(imageSize(), mockup);
  EXPECT_FALSE(model().isModified());

  session().open(path("photo.png"));
  ASSERT_TRUE(
      wait([&] { return settled() && model().arrangement().photo.endsWith(u"photo.png"); }));
  EXPECT_TRUE(wait([&] { return !chooser->isVisible(); }));
}

TEST_F(PanelWindowDocumentTest, CannotMoveShapes) {
  openDocument();
  clickGlass();
  const Arrangement before = model().arrangement();
  const QPointF corner = glass().corners[0];
  drag(at(corner.x(), corner.y()), at(corner.x(), corner.y()) + QPoint(30, 30));
  drag(at(1200, 880), at(1200, 880) + QPoint(20, 20));
  for (const Qt::Key pressed : {Qt::Key_N, Qt::Key_C, Qt::Key_Right, Qt::Key_Delete}) key(pressed);
  EXPECT_EQ(model().arrangement(), before);
  EXPECT_FALSE(static_cast<CanvasView*>(view_)->isDrawing());
}

TEST_F(PanelWindowDocumentTest, AsksWhichVersionToKeep) {
  ASSERT_EQ(map({QStringLiteral("--flip")}, "flipped.sketch"), 0);
  openDocument();
  chooseScreen();
  replaceDocument("flipped.sketch");
  answer(QStringLiteral("Decide Later"));
  EXPECT_FALSE(glass().options.flipped);
  session().save(path("doc.sketch"));
  answer(QStringLiteral("Keep Mine"));
  EXPECT_EQ(bytes("doc.sketch"), bytes("flipped.sketch")) << "not replaced";
  session().save(path("doc.sketch"));
  ASSERT_TRUE(wait([&] { return !model().isModified(); })) << error().toStdString();
  EXPECT_EQ(remembered("doc.sketch"), QStringLiteral("0 0"));

  press("layerRotateButton");
  replaceDocument("flipped.sketch");
  answer(QStringLiteral("Reload"));
  EXPECT_TRUE(wait([&] { return glass().options.flipped && settled(); })) << error().toStdString();
  EXPECT_FALSE(model().isModified());
}

TEST_F(PanelWindowDocumentTest, ReportsInvalidArguments) {
  const QString doc = path("doc.sketch");
  const struct {
    QStringList arguments;
    int status;
    const char* sentence;
  } cases[] = {
      {{path("missing.sketch")}, 1, "missing.sketch"},
      {{doc, QStringLiteral("--layer"), QStringLiteral("Nobody")}, 1, "no layer \"Nobody\""},
      {{doc, QStringLiteral("--artboard"), QStringLiteral("Nobody")}, 1, "no artboard \"Nobody\""},
      {{path("photo.png"), QStringLiteral("--layer"), QStringLiteral("Glass")}, 2, "--layer"},
  };
  for (const auto& [arguments, status, sentence] : cases) {
    QProcess process;
    process.start(QStringLiteral(KELVAR_PROGRAM), QStringList(QStringLiteral("panel")) + arguments);
    EXPECT_TRUE(process.waitForFinished(kMaxWait)) << sentence;
    const QByteArray errors = process.readAllStandardError();
    EXPECT_EQ(process.exitCode(), status) << errors.constData();
    EXPECT_TRUE(errors.contains(sentence)) << errors.constData();
    EXPECT_EQ(errors.count('\n'), 1) << errors.constData();
  }
}

}  // namespace
}  // namespace kelvar::cli

#include "panel/PanelWindow.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QMimeData>
#include <QProcess>
#include <QScrollArea>
#include <QSplitter>
#include <QToolBar>
#include <QUrl>

#include "panel/InspectorPanel.h"
#include "panel/NotificationArea.h"
#include "panel/PanelWindowTest.h"

namespace kelvar::cli {
namespace {

const std::array<QPoint, 4> kLeft{QPoint(40, 50), {180, 70}, {170, 240}, {30, 220}};
const std::array<QPoint, 4> kRight{QPoint(220, 60), {370, 40}, {380, 250}, {230, 200}};

TEST_F(PanelWindowTest, MatchesOutputOfCommandLine) {
  throughDialog("Open", path("photo.png"));
  ASSERT_TRUE(wait([&] { return settled(); })) << error().toStdString();
  throughDialog("Add Designs", path("app.png"));
  ASSERT_TRUE(wait([&] { return model().arrangement().designs.size() == 1; }));
  drawShape(kLeft);
  ASSERT_EQ(model().selection().size(), 1);
  choose(control<PopUpButton>("popupButton"), 0);
  ASSERT_TRUE(wait([&] { return settled(); }));
  press("layerRotateButton");
  ASSERT_TRUE(
      wait([&] { return settled() && control<QAbstractButton>("layerFlipButton")->isEnabled(); }));
  press("layerFlipButton");
  choose(control<PopUpButton>("imageQualityPopupButton"), 1);
  for (const char* name : {"out.png", "out.jpg", "out.webp"}) {
    throughDialog("Export", path(name));
    ASSERT_TRUE(wait([&] { return QFile::exists(path(name)); })) << error().toStdString();
  }
  throughDialog("Save As", path("saved.json"));
  ASSERT_TRUE(wait([&] { return !model().isModified(); })) << error().toStdString();

  const Arrangement::Shape shape = model().arrangement().shapes.first();
  EXPECT_EQ(shape.design, model().arrangement().designs.first().id);
  EXPECT_EQ(shape.options.rotation, 1);
  EXPECT_TRUE(shape.options.flipped);
  EXPECT_EQ(shape.options.quality, 2);
  QStringList points;
  for (size_t i = 0; i < 4; ++i) {
    EXPECT_NEAR(shape.corners[i].x(), kLeft[i].x(), 1) << i;
    EXPECT_NEAR(shape.corners[i].y(), kLeft[i].y(), 1) << i;
    points << QStringLiteral("%1,%2").arg(shape.corners[i].x()).arg(shape.corners[i].y());
  }
  const auto map = [&](QStringList arguments) {
    return QProcess::execute(QStringLiteral(KELVAR_PROGRAM),
                             QStringList(QStringLiteral("map")) + arguments);
  };
  const auto text = [](const char* t) { return QString::fromLatin1(t); };
  ASSERT_EQ(map({path("app.png"), text("--onto"), path("photo.png"), text("--points"),
                 points.join(u' '), text("--rotation"), text("1"), text("--flip"), text("--scale"),
                 text("2"), text("-o"), path("points.png")}),
            0);
  EXPECT_EQ(bytes("out.png"), bytes("points.png"));
  for (const char* ending : {"png", "jpg", "webp"}) {
    const std::string mapped = std::string("mapped.") + ending, out = std::string("out.") + ending;
    ASSERT_EQ(map({text("--arrangement"), path("saved.json"), text("-o"), path(mapped.c_str())}),
              0);
    EXPECT_EQ(bytes(mapped.c_str()), bytes(out.c_str())) << ending;
  }
  PanelWindow again;
  again.session().open(path("saved.json"));
  ASSERT_TRUE(wait([&] { return again.session().hasMockup(); }));
  EXPECT_EQ(again.session().model().arrangement(), model().arrangement());
}

TEST_F(PanelWindowTest, SelectsMovesAndUndoes) {
  open();
  drawShape(kLeft);
  drawShape(kRight);
  const Arrangement drawn = model().arrangement();
  ASSERT_EQ(drawn.shapes.size(), 2);
  const QString left = drawn.shapes[0].id, right = drawn.shapes[1].id;
  click(at(100, 150));
  EXPECT_EQ(model().selection(), QStringList(left));
  click(at(300, 130), Qt::ShiftModifier);
  EXPECT_EQ(model().selection(), QStringList({left, right}));
  click(at(100, 150), Qt::ShiftModifier);
  EXPECT_EQ(model().selection(), QStringList(right));
  click(at(200, 280));
  EXPECT_TRUE(model().selection().isEmpty());

  click(at(300, 130));
  const QPoint corner = at(220, 60);
  drag(corner, corner + QPoint(-30, 12));
  const double zoom = static_cast<CanvasView*>(view_)->viewport().zoom();
  const QPointF moved = model().arrangement().shapes[1].corners[0] - drawn.shapes[1].corners[0];
  EXPECT_NEAR(moved.x(), -30 / zoom, 1);
  EXPECT_NEAR(moved.y(), 12 / zoom, 1);
  EXPECT_EQ(model().arrangement().shapes[1].corners[1], drawn.shapes[1].corners[1]);
  drag(at(100, 150), at(110, 140));
  for (size_t i = 0; i < 4; ++i) {
    const QPointF by = model().arrangement().shapes[0].corners[i] - drawn.shapes[0].corners[i];
    EXPECT_NEAR(by.x(), 10, 1) << i;
    EXPECT_NEAR(by.y(), -10, 1) << i;
  }
  key(Qt::Key_Z, Qt::ControlModifier);
  key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(model().arrangement(), drawn);
  key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_NE(model().arrangement(), drawn);
  key(Qt::Key_Delete);
  EXPECT_EQ(model().arrangement().shapes.size(), 1);
}

TEST_F(PanelWindowTest, WorksWithoutMouse) {
  open();
  view_->setFocus();
  QTest::keyClick(view_, Qt::Key_Return);
  ASSERT_EQ(model().arrangement().shapes.size(), 1) << "a shape in the center";
  const std::array<QPointF, 4> before = model().arrangement().shapes[0].corners;
  QTest::keyClick(view_, Qt::Key_Right, Qt::ShiftModifier);
  QTest::keyClick(view_, Qt::Key_C);
  QTest::keyClick(view_, Qt::Key_C);
  QTest::keyClick(view_, Qt::Key_Up);
  const std::array<QPointF, 4> after = model().arrangement().shapes[0].corners;
  EXPECT_EQ(after[0], before[0] + QPointF(10, 0));
  EXPECT_EQ(after[1], before[1] + QPointF(10, -1));
  ASSERT_TRUE(wait([&] { return settled(); }));
  QTest::qWait(0);
  // Through every control, and back to the first.
  QStringList reached;
  for (int i = 0; i < 60; ++i) {
    QTest::keyClick(window_.focusWidget(), Qt::Key_Tab);
    QWidget* const focus = window_.focusWidget();
    if (focus == view_) break;
    EXPECT_FALSE(focus->accessibleName().isEmpty() && focus->property("text").toString().isEmpty())
        << focus->metaObject()->className() << " " << focus->objectName().toStdString();
    reached << focus->objectName();
  }
  for (const char* name : {"popupButton", "imageQualityPopupButton", "layerRotateButton",
                           "layerFlipButton", "layerRefreshButton", "includeInArtboardButton"}) {
    EXPECT_TRUE(reached.contains(QLatin1String(name))) << name;
  }
  auto* const rotate = control<QAbstractButton>("layerRotateButton");
  rotate->setFocus();
  QTest::keyClick(rotate, Qt::Key_Space);
  EXPECT_EQ(model().arrangement().shapes[0].options.rotation, 1);
  ASSERT_TRUE(wait([&] { return settled() && rotate->isEnabled(); }));
  EXPECT_TRUE(wait([&] { return window_.focusWidget() == rotate; }))
      << "which had it before it was disabled";
}

TEST_F(PanelWindowTest, ShowsMixedSettings) {
  open();
  drawShape(kLeft);
  drawShape(kRight);
  ASSERT_TRUE(wait([&] { return settled(); }));
  QTest::qWait(0);
  choose(control<PopUpButton>("imageQualityPopupButton"), 2);
  QTest::mouseClick(control<QCheckBox>("includeInArtboardButton"), Qt::LeftButton);
  EXPECT_FALSE(model().arrangement().shapes[1].options.includedInArtboards);
  key(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(control<PopUpButton>("imageQualityPopupButton")->title(), QStringLiteral("Multiple"));
  auto* const include = control<QCheckBox>("includeInArtboardButton");
  EXPECT_EQ(include->checkState(), Qt::PartiallyChecked);
  ASSERT_TRUE(
      wait([&] { return settled() && control<QAbstractButton>("layerFlipButton")->isEnabled(); }));
  QTest::mouseClick(include, Qt::LeftButton);
  EXPECT_EQ(include->checkState(), Qt::Checked);
  choose(control<PopUpButton>("imageQualityPopupButton"), 1);
  for (const Arrangement::Shape& shape : model().arrangement().shapes) {
    EXPECT_TRUE(shape.options.includedInArtboards);
    EXPECT_EQ(shape.options.quality, 2);
  }
  EXPECT_EQ(control<PopUpButton>("imageQualityPopupButton")->title(), QStringLiteral("2x"));
}

/// The parts of the inspector that extend beyond its right edge, or are smaller than they need.
QStringList clippedParts(const InspectorPanel& panel) {
  QStringList clipped;
  const auto* const scroll = panel.findChild<QScrollArea*>();
  for (const QWidget* const part : panel.findChildren<QWidget*>()) {
    if (!part->isVisible()) continue;
    const bool scrolls = scroll->viewport()->isAncestorOf(part);
    const int room = scrolls ? scroll->viewport()->width() : panel.width();
    const QSize least = part->minimumSizeHint();
    const int right = part->mapTo(&panel, QPoint(part->width(), 0)).x();
    if (right <= room && part->width() >= least.width() && part->height() >= least.height()) {
      continue;
    }
    clipped << QStringLiteral("%1 %2").arg(QLatin1String(part->metaObject()->className()),
                                           part->objectName());
  }
  return clipped;
}

TEST_F(PanelWindowTest, ClipsNothingInInspector) {
  qputenv("KELVAR_DEFAULTS", path("settings.sqlite").toUtf8());
  const NotificationArea links(&window_.inspector());
  open();
  drawShape(kLeft);
  const QFont usual = QApplication::font();
  for (const int points : {usual.pointSize(), 17}) {
    QFont font = usual;
    font.setPointSize(points);
    QApplication::setFont(font);
    // Fonts and sizes arrive one event after the other.
    const auto fits = [&] {
      return window_.inspector().font().pointSize() == points &&
             window_.width() >= window_.minimumSizeHint().width() &&
             clippedParts(window_.inspector()).isEmpty();
    };
    for (const int width : {0, 380, 560, 570, 900}) {
      window_.resize(width == 0 ? 0 : 1300, 300);
      window_.findChild<QSplitter*>()->setSizes({100, width});
      QCoreApplication::processEvents();
      EXPECT_TRUE(wait(fits)) << points << " points, inspector of " << window_.inspector().width()
                              << ": "
                              << clippedParts(window_.inspector()).join(u", ").toStdString();
    }
    EXPECT_GT(window_.inspector().width(), 800) << "wide";
    window_.resize(0, 0);
    QCoreApplication::processEvents();
    EXPECT_TRUE(wait(fits));
    EXPECT_LT(window_.width(), 1024);
  }
  const int width = window_.width();
  session().addDesigns({path("missing/") + QString(200, u'x') + QStringLiteral(".png")});
  ASSERT_TRUE(wait([&] { return !error().isEmpty(); }));
  QTest::qWait(20);
  EXPECT_EQ(window_.width(), width) << "the long path is wrapped";
  QApplication::setFont(usual);
  qunsetenv("KELVAR_DEFAULTS");
}

TEST_F(PanelWindowTest, DisablesControlsWhileDrawing) {
  open();
  drawShape(kLeft);
  choose(control<PopUpButton>("popupButton"), 0);
  ASSERT_TRUE(wait([&] { return settled(); }));
  QTest::qWait(0);
  press("layerRotateButton");
  ASSERT_TRUE(session().isBusy());
  ASSERT_TRUE(wait(
      [&] { return !control<QAbstractButton>("layerRotateButton")->isEnabled() || settled(); }));
  EXPECT_TRUE(control<QAbstractButton>("layerRefreshButton")->isEnabled());
  ASSERT_TRUE(wait(
      [&] { return settled() && control<QAbstractButton>("layerRotateButton")->isEnabled(); }));
  EXPECT_TRUE(control<PopUpButton>("imageQualityPopupButton")->isEnabled());
}

TEST_F(PanelWindowTest, KeepsInvalidShapes) {
  open();
  drawShape(kLeft);
  choose(control<PopUpButton>("popupButton"), 0);
  drag(at(40, 50), at(175, 235));
  ASSERT_TRUE(wait([&] { return settled() && control<QLabel>("problem"); }));
  session().save(path("wrong.json"));
  ASSERT_TRUE(wait([&] { return QFile::exists(path("wrong.json")); }));
  auto* const bar = window_.findChild<QToolBar*>();
  QAction* const undo = window_.findChild<QAction*>(QStringLiteral("Undo"));
  QTest::mouseClick(bar->widgetForAction(undo), Qt::LeftButton);
  EXPECT_TRUE(wait([&] { return settled() && !control<QLabel>("problem"); }));
  session().open(path("wrong.json"));
  ASSERT_TRUE(wait([&] { return model().arrangement().shapes.value(0).corners[0].x() > 150; }));
}

TEST_F(PanelWindowTest, AcceptsDroppedImages) {
  open();
  drawShape(kLeft);
  noise(50, 50, 3).save(path("new.png"));
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(path("new.png"))});
  const auto drop = [&](QWidget* widget, const QPoint& point) {
    QDragEnterEvent enter(point, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent event(point, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
  };
  drop(control<PopUpButton>("popupButton")->parentWidget(), {5, 5});
  ASSERT_TRUE(wait([&] { return !model().arrangement().shapes[0].design.isEmpty(); }));
  EXPECT_EQ(model().arrangement().design(model().arrangement().shapes[0].design)->file,
            path("new.png"));
  key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(model().arrangement().designs.size(), 2)
      << "adding and choosing the design is one step";
  drop(view_, at(100, 150));
  EXPECT_TRUE(wait([&] { return !model().arrangement().shapes[0].design.isEmpty(); }));
}

TEST_F(PanelWindowTest, AsksBeforeExportReplacesFile) {
  open();
  noise(9, 9).save(path("old.png"));
  ASSERT_TRUE(QFile::link(path("photo.png"), path("link.png")));
  const struct {
    const char* file;
    const char* question;
  } cases[] = {{"photo.png", "photo.png is the photo of this mockup"},
               {"link.png", "link.png is the photo of this mockup"},
               {"app.png", "app.png is a design of this mockup"},
               {"old.png", "old.png already exists"}};
  for (const auto& [file, question] : cases) {
    const QByteArray before = bytes(file);
    throughDialog("Export", path(file));
    QMessageBox* box = nullptr;
    ASSERT_TRUE(wait([&] { return (box = window_.findChild<QMessageBox*>()) != nullptr; }));
    EXPECT_TRUE(box->text().contains(QLatin1String(question))) << box->text().toStdString();
    EXPECT_TRUE(box->text().contains(QStringLiteral("exported image")));
    answer(QStringLiteral("Cancel"));
    EXPECT_EQ(bytes(file), before) << file;
  }
  throughDialog("Export", path("old.png"));
  answer(QStringLiteral("Replace"));
  EXPECT_TRUE(wait([&] { return QImage(path("old.png")).size() == QSize(400, 300); }));
  throughDialog("Export", path("new.png"));
  EXPECT_TRUE(wait([&] { return QFile::exists(path("new.png")); })) << "nothing is replaced";
}

TEST_F(PanelWindowTest, AsksBeforeChangesAreLost) {
  open();
  EXPECT_FALSE(window_.isWindowModified()) << "designs are part of what is opened";
  EXPECT_FALSE(model().canUndo());
  drawShape(kLeft);
  window_.close();
  answer(QStringLiteral("Cancel"));
  EXPECT_TRUE(window_.isVisible());
  window_.close();
  answer(QStringLiteral("Discard"));
  EXPECT_FALSE(window_.isVisible());
}

TEST_F(PanelWindowTest, ClosesAfterWriting) {
  open();
  session().exportTo(path("out.png"));
  window_.close();
  EXPECT_TRUE(window_.isVisible());
  EXPECT_TRUE(wait([&] { return !window_.isVisible(); }));
  EXPECT_FALSE(QImage(path("out.png")).isNull());

  window_.show();
  session().exportTo(path("missing/out.png"));
  window_.close();
  ASSERT_TRUE(wait([&] { return !error().isEmpty(); }));
  EXPECT_TRUE(window_.isVisible()) << "so that the error can be read";
  session().exportTo(path("out.png"));
  window_.close();
  window_.close();
  EXPECT_FALSE(window_.isVisible()) << "the second time, writing is canceled";
  EXPECT_TRUE(session().stop(kMaxWait));
}

TEST_F(PanelWindowTest, StartsFromProgram) {
  const auto run = [&](const QStringList& arguments, const QMap<QString, QString>& screen = {}) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY"}) environment.remove(QLatin1String(name));
    if (!screen.isEmpty()) environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    for (auto each = screen.begin(); each != screen.end(); ++each) {
      environment.insert(each.key(), each.value());
    }
    environment.insert(QStringLiteral("KELVAR_DEFAULTS"), path("settings.sqlite"));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(KELVAR_PROGRAM), QStringList(QStringLiteral("panel")) + arguments);
    process.waitForFinished(kMaxWait);
    return std::tuple(process.exitCode(), process.readAllStandardOutput(),
                      process.readAllStandardError());
  };
  const auto [helped, help, nothing] = run({QStringLiteral("--help")});
  EXPECT_EQ(helped, 0);
  EXPECT_TRUE(help.contains("--design") && help.contains("Examples:")) << help.constData();
  const auto [misused, none, usage] = run({QStringLiteral("--wrong")});
  EXPECT_EQ(misused, 2);
  EXPECT_TRUE(usage.contains("--wrong")) << usage.constData();
  const auto [failed, empty, sentence] = run({path("missing\033[1m.jpg")});
  EXPECT_EQ(failed, 1);
  EXPECT_TRUE(sentence.contains("missing\xef\xbf\xbd[1m.jpg")) << sentence.constData();
  EXPECT_EQ(sentence.count('\n'), 1) << sentence.constData();

  const struct {
    const char* name;
    const char* value;
    const char* sentence;
  } screens[] = {{"XDG_SESSION_TYPE", "tty", "neither DISPLAY nor WAYLAND_DISPLAY is set"},
                 {"DISPLAY", ":7777", "DISPLAY is \":7777\""},
                 {"QT_QPA_PLATFORM", "none", "QT_QPA_PLATFORM is \"none\""}};
  for (const auto& [name, value, why] : screens) {
    const auto [status, output, words] = run({}, {{QLatin1String(name), QLatin1String(value)}});
    EXPECT_EQ(status, 1) << why;
    EXPECT_TRUE(words.contains("no display") && words.contains(why)) << words.constData();
    EXPECT_EQ(words.count('\n'), 1) << words.constData();
  }
}

}  // namespace
}  // namespace kelvar::cli

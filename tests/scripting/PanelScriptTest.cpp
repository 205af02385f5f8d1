#include <gtest/gtest.h>

#include <QApplication>
#include <QBackingStore>
#include <QCheckBox>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QProcess>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QWidget>
#include <algorithm>
#include <set>

#include "core/KVPersister.h"
#include "core/ServerMessages.h"
#include "mockup/SketchParts.h"
#include "platform/Browser.h"
#include "platform/PendingTasks.h"
#include "platform/Permissions.h"
#include "runtime/Conversion.h"
#include "scripting/plugin/PluginBundle.h"
#include "scripting/runtime/ScriptRuntime.h"
#include "ui/ImageView.h"
#include "ui/PopUpButton.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

const char* const kLongName =
    "A layer with a name that is far longer than any panel is wide, whatever the font";

SketchJson artboard(const std::string& name, const QRectF& frame,
                    const std::vector<SketchJson>& layers, const SketchJson& color) {
  return parts::group("artboard", name, frame, layers,
                      {{"hasBackgroundColor", true},
                       {"includeBackgroundColorInExport", true},
                       {"backgroundColor", color}});
}

/// The panel of our plug-in for layers of a document with three designs.
///
/// Screenshots are compared with what is known of the parts, not with a stored image, so that fonts
/// and styles may differ. KELVAR_SCREENSHOTS names a folder in which they are kept.
class PanelScriptTest : public testing::Test {
 protected:
  void SetUp() override {
    qputenv("KELVAR_DEFAULTS", dir_.filePath(u"settings"_s).toLocal8Bit());
    qputenv("DO_NOT_TRACK", "1");
    path_ = dir_.filePath(u"app.sketch"_s);
    const auto at = [](const char* name, double x) {
      return parts::layer("rectangle", name, {x, 10, 80, 60},
                          parts::filled(parts::color(0.5, 0.5, 0.5)));
    };
    const auto document = parts::document(
        {artboard("Home", {0, 0, 100, 80}, {}, parts::color(1, 0, 0)),
         artboard("Profile", {200, 0, 100, 80}, {}, parts::color(0, 0, 1)),
         artboard("An artboard with a name that is much longer than its menu is wide",
                  {400, 0, 100, 80}, {}, parts::color(0, 1, 0)),
         at("Phone", 1000), at("Tablet", 1200), at(kLongName, 1400)});
    ASSERT_TRUE(document->save(path_));
  }
  void TearDown() override {
    QApplication::closeAllWindows();
    QCoreApplication::processEvents();
  }

  void open(const QStringList& layers) {
    const auto document = SketchDocument::open(path_);
    const auto plugin = PluginBundle::open(QStringLiteral(KELVAR_PLUGIN));
    ASSERT_TRUE(document && plugin);
    QVariantList selection;
    for (const QString& name : layers) {
      for (const auto& layer : (*document)->layersNamed(name)) selection.append(toVariant(layer));
    }
    runtime_.evaluateFile(QStringLiteral(KELVAR_PLUGIN "/Contents/Sketch/panel.js"));
    runtime_.call(u"openPanel"_s, {QVariantMap{{u"document"_s, toVariant(*document)},
                                               {u"plugin"_s, toVariant(*plugin)},
                                               {u"selection"_s, selection}}});
    settle();
  }
  void settle() {
    const auto isPending = [] { return PendingTasks::count() > 0; };
    for (int i = 0; i < 10 || isPending(); ++i) {
      QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    if (!runtime_.failure()) return;
    ADD_FAILURE() << runtime_.failure()->message.toStdString() << " "
                  << runtime_.failure()->file.toStdString() << ":" << runtime_.failure()->line;
  }

  /// The window with a title; an open menu has none.
  static QWidget* panel() {
    const QWidgetList all = QApplication::topLevelWidgets();
    const auto found = std::find_if(all.begin(), all.end(), [](QWidget* each) {
      return each->isVisible() && !each->windowTitle().isEmpty();
    });
    return found == all.end() ? nullptr : *found;
  }
  /// The visible parts with that name, from top to bottom.
  static QList<QWidget*> partsNamed(const QString& name) {
    QList<QWidget*> found;
    for (QWidget* const each : panel()->findChildren<QWidget*>(name)) {
      if (each->isVisible()) found.append(each);
    }
    std::sort(found.begin(), found.end(),
              [](QWidget* a, QWidget* b) { return rectOf(*a).top() < rectOf(*b).top(); });
    return found;
  }
  /// In the panel.
  static QRect rectOf(const QWidget& widget) {
    return {widget.mapTo(panel(), QPoint(0, 0)), widget.size()};
  }
  template <class W>
  static W& in(QWidget& part, const char* name) {
    return *part.findChild<W*>(QString::fromLatin1(name));
  }
  PopUpButton& chooser(int cell) {
    return in<PopUpButton>(*partsNamed(u"KVPopupCell"_s)[cell], "popupButton");
  }
  QString status() {
    return in<QLabel>(*partsNamed(u"KVMessageLine"_s).last(), "messageLabel").text();
  }

  /// The panel as it is on screen, kept under the test's name and a number.
  QImage screenshot() {
    // Not rendered again: what is on screen is what the window system was given.
    QPaintDevice* const device = panel()->backingStore()->paintDevice();
    QImage image = device->devType() == QInternal::Image ? static_cast<QImage*>(device)->copy()
                                                         : panel()->grab().toImage();
    const QString folder = qEnvironmentVariable("KELVAR_SCREENSHOTS");
    if (!folder.isEmpty()) {
      const char* const test = testing::UnitTest::GetInstance()->current_test_info()->name();
      image.save(u"%1/%2-%3.png"_s.arg(folder, QString::fromLatin1(test)).arg(++screenshots_));
    }
    // Pixels are counted, not points.
    EXPECT_EQ(image.size(), panel()->size() * panel()->devicePixelRatio());
    image.setDevicePixelRatio(1);
    return image;
  }
  static QRect pixelsOf(const QRect& points) {
    const double scale = panel()->devicePixelRatio();
    return QRectF(QPointF(points.topLeft()) * scale, QSizeF(points.size()) * scale).toRect();
  }
  /// How many points of the rectangle have about that color.
  static double areaOf(const QImage& image, const QRect& rect, const QColor& color) {
    const double scale = panel()->devicePixelRatio();
    return countOf(image, pixelsOf(rect), color) / (scale * scale);
  }
  static int countOf(const QImage& image, const QRect& pixels, const QColor& color) {
    int count = 0;
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
      for (int x = pixels.left(); x <= pixels.right(); ++x) {
        const QColor pixel = image.pixelColor(x, y);
        count += std::abs(pixel.red() - color.red()) + std::abs(pixel.green() - color.green()) +
                     std::abs(pixel.blue() - color.blue()) <
                 24;
      }
    }
    return count;
  }
  /// Whether nothing is painted there: no text, no edge, no image.
  static bool isBlank(const QImage& image, const QRect& rect) {
    const QRect pixels = pixelsOf(rect);
    return countOf(image, pixels, image.pixelColor(pixels.topLeft())) ==
           pixels.width() * pixels.height();
  }

  /// The parts are below each other in the panel's full width, without gaps, and paint something.
  void expectColumn(const QStringList& names) {
    QList<QWidget*> column;
    for (const QString& name : std::set<QString>(names.begin(), names.end()))
      column += partsNamed(name);
    std::sort(column.begin(), column.end(),
              [](QWidget* a, QWidget* b) { return rectOf(*a).top() < rectOf(*b).top(); });
    QStringList found;
    int y = 0;
    const QImage image = screenshot();
    for (QWidget* const each : column) {
      found.append(each->objectName());
      const QRect rect = rectOf(*each);
      EXPECT_EQ(rect.topLeft(), QPoint(0, y)) << each->objectName().toStdString();
      EXPECT_EQ(rect.width(), panel()->width()) << each->objectName().toStdString();
      EXPECT_FALSE(isBlank(image, rect)) << each->objectName().toStdString();
      y = rect.bottom() + 1;
      for (const QWidget* const inner : each->findChildren<QWidget*>()) {
        if (!inner->isVisible() || inner->isWindow()) continue;
        EXPECT_TRUE(rect.contains(rectOf(*inner))) << inner->objectName().toStdString();
      }
    }
    EXPECT_EQ(found.join(u' ').toStdString(), names.join(u' ').toStdString());
    EXPECT_EQ(y, panel()->height());
  }

  QTemporaryDir dir_;
  QString path_;
  int screenshots_ = 0;
  Browser browser_{"http", "https", "mailto"};
  ScriptRuntime runtime_{[](const QString&) {}};
};

TEST_F(PanelScriptTest, ShowsChosenArtboard) {
  open({u"Phone"_s});
  expectColumn({u"KVPopupCell"_s, u"KVViewController"_s, u"KVMessageLine"_s});
  QWidget& cell = *partsNamed(u"KVPopupCell"_s)[0];
  QWidget& row = *partsNamed(u"KVViewController"_s)[0];
  EXPECT_EQ(in<QLabel>(cell, "titleField").text(), u"Phone"_s);
  EXPECT_EQ(chooser(0).title(), QString());
  EXPECT_EQ(chooser(0).menu()->items().size(), 5);
  const QColor red(255, 0, 0), blue(0, 0, 255);
  const auto expectShown = [&](const QColor& color) {
    const QImage image = screenshot();
    const QRect thumbnail = rectOf(in<ImageView>(cell, "imageView"));
    const QRect preview = rectOf(in<ImageView>(row, "imageView"));
    EXPECT_GT(areaOf(image, thumbnail, color), thumbnail.width() * thumbnail.height() / 2);
    EXPECT_GT(areaOf(image, preview, color), preview.width() * preview.height() / 2);
    EXPECT_GT(areaOf(image, rectOf(chooser(0)), color), 100) << "beside the title";
  };
  const QImage before = screenshot();
  EXPECT_EQ(countOf(before, before.rect(), red) + countOf(before, before.rect(), blue), 0);
  chooser(0).chooseItem(0);
  settle();
  EXPECT_EQ(chooser(0).title(), u"Home"_s);
  EXPECT_EQ(status(), u"Changes are saved in app.sketch."_s);
  expectShown(red);
  chooser(0).chooseItem(1);
  settle();
  expectShown(blue);
  chooser(0).chooseItem(4);
  settle();
  EXPECT_EQ(chooser(0).title(), u"Profile"_s) << "after Refresh";
  expectShown(blue);
  const auto saved = SketchDocument::open(path_);
  EXPECT_TRUE((*saved)->layersNamed(u"Phone"_s)[0]->valueForKeyPath(u"style.fills"_s).isValid());
}

TEST_F(PanelScriptTest, ShowsMixedSettings) {
  open({u"Phone"_s, u"Tablet"_s, QString::fromLatin1(kLongName)});
  expectColumn({u"KVPopupCell"_s, u"KVPopupCell"_s, u"KVPopupCell"_s, u"KVViewController"_s,
                u"KVMessageLine"_s});
  QWidget& row = *partsNamed(u"KVViewController"_s)[0];
  auto& quality = in<PopUpButton>(row, "imageQualityPopupButton");
  auto& included = in<QCheckBox>(row, "includeInArtboardButton");
  included.click();
  settle();
  EXPECT_EQ(status(), u"Choose an artboard first."_s);
  chooser(0).chooseItem(0);
  settle();
  quality.chooseItem(2);
  settle();
  EXPECT_EQ(quality.title(), u"3x"_s);
  for (const int cell : {1, 2}) {
    chooser(cell).chooseItem(cell);
    settle();
  }
  EXPECT_EQ(quality.title(), u"Multiple"_s);
  EXPECT_EQ(included.checkState(), Qt::Checked);
  screenshot();
  included.click();
  settle();
  EXPECT_EQ(included.checkState(), Qt::Unchecked);
  expectColumn({u"KVPopupCell"_s, u"KVPopupCell"_s, u"KVPopupCell"_s, u"KVViewController"_s,
                u"KVMessageLine"_s});
}

TEST_F(PanelScriptTest, ShowsMessagesInTurn) {
  const auto message = [](int id, const QString& text, const QString& action) {
    return QVariantMap{
        {u"id"_s, id}, {u"message"_s, text}, {u"action"_s, action}, {u"read"_s, false}};
  };
  const QString key = QString::fromLatin1(ServerMessages::kKey);
  const QString text = u"A long message about what is new in this version. "_s.repeated(5);
  KVPersister().setObject(
      QVariantList{message(1, text, u"https://example.com/news"_s), message(2, u"Short."_s, u""_s)},
      key);
  open({u"Phone"_s, u"Tablet"_s});
  const QStringList column{u"KVSoftMessage"_s, u"KVPopupCell"_s, u"KVPopupCell"_s,
                           u"KVViewController"_s, u"KVMessageLine"_s};
  expectColumn(column);
  QWidget& banner = *partsNamed(column[0])[0];
  const int height = banner.height();
  in<QAbstractButton>(banner, "softActionButton").click();
  settle();
  EXPECT_EQ(browser_.opened.size(), 1);
  expectColumn(column);
  EXPECT_LT(banner.height(), height);
  EXPECT_FALSE(in<QWidget>(banner, "softActionButton").isVisible());
  in<QAbstractButton>(banner, "softCloseButton").click();
  settle();
  expectColumn(column.mid(1));
  for (const QVariant& each : KVPersister().objectForKey(key).toList()) {
    EXPECT_TRUE(each.toMap()[u"read"_s].toBool());
  }
}

TEST_F(PanelScriptTest, SaysHowToAllowPrograms) {
  // Programs are also looked for in the current directory.
  const QString before = QDir::currentPath();
  ASSERT_TRUE(QDir::setCurrent(dir_.path()));
  QFile opener(u"xdg-open"_s);
  ASSERT_TRUE(opener.open(QIODevice::WriteOnly) &&
              opener.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
  opener.close();
  Permissions closed;
  closed.close(Permissions::Kind::Run);
  Permissions::install(closed);
  open({u"Phone"_s});
  QWidget& line = *partsNamed(u"KVMessageLine"_s).last();
  in<QAbstractButton>(line, "actionButton").click();
  settle();
  Permissions::install({});
  QDir::setCurrent(before);
  EXPECT_TRUE(status().contains(u"--allow run"_s)) << status().toStdString();
  EXPECT_FALSE(in<QWidget>(line, "actionButton").isVisible());
}

/// The density is that of the process.
TEST_F(PanelScriptTest, IsSharpOnDenseScreens) {
  if (qEnvironmentVariable("QT_SCALE_FACTOR") != u"2"_s) {
    QProcess dense;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_SCALE_FACTOR"_s, u"2"_s);
    dense.setProcessEnvironment(environment);
    dense.start(QCoreApplication::applicationFilePath(),
                {u"--gtest_filter=PanelScriptTest.IsSharp*:PanelScriptTest.ShowsChosen*"_s});
    ASSERT_TRUE(dense.waitForFinished(-1));
    EXPECT_EQ(dense.exitCode(), 0) << dense.readAllStandardOutput().toStdString();
    return;
  }
  open({u"Phone"_s, QString::fromLatin1(kLongName)});
  chooser(0).chooseItem(2);
  settle();
  const QImage image = screenshot();
  ASSERT_EQ(image.size(), panel()->size() * 2);
  // In an image that was magnified, the four pixels of a point are the same.
  int fine = 0;
  for (int y = 0; y < image.height(); y += 2) {
    for (int x = 0; x < image.width(); x += 2) {
      fine += countOf(image, {x, y, 2, 2}, image.pixelColor(x, y)) < 4;
    }
  }
  EXPECT_GT(fine, 500);
}

TEST_F(PanelScriptTest, ScrollsManyLayers) {
  QStringList layers;
  for (int i = 0; i < 10; ++i) layers += {u"Phone"_s, u"Tablet"_s, QString::fromLatin1(kLongName)};
  open(layers);
  const QList<QWidget*> cells = partsNamed(u"KVPopupCell"_s);
  EXPECT_EQ(cells.size(), 24);
  EXPECT_LT(panel()->height(), 800);
  for (const QWidget* const cell : cells)
    EXPECT_EQ(cell->width(), cells[0]->parentWidget()->width());
  EXPECT_EQ(rectOf(*cells[0]).top(), 0) << "starts at the first";
  EXPECT_GT(rectOf(*partsNamed(u"KVViewController"_s)[0]).top(), 300);
  const QList<QScrollBar*> bars = panel()->findChildren<QScrollBar*>();
  EXPECT_EQ(std::count_if(bars.begin(), bars.end(), [](auto* bar) { return bar->isVisible(); }), 1);
  screenshot();
}

}  // namespace
}  // namespace kelvar

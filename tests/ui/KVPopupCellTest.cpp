#include "ui/KVPopupCell.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <stdexcept>

#include "Panel.h"
#include "platform/LogCapture.h"
#include "runtime/DelegateInfo.h"

namespace kelvar {
namespace {

ImageRef image(const QColor& color) {
  QImage pixels(60, 60, QImage::Format_ARGB32_Premultiplied);
  pixels.fill(color);
  return std::make_shared<Image>(pixels);
}

QVariantMap item(const char* title, const char* identifier = nullptr, ImageRef image = nullptr) {
  QVariantMap map{{text("title"), text(title)}};
  if (identifier) map[text("identifier")] = text(identifier);
  if (image) map[text("image")] = QVariant::fromValue(image);
  return map;
}

const QVariantMap kSeparator{{text("type"), text("separator")}, {text("title"), text("no")}};

class KVPopupCellTest : public testing::Test {
 protected:
  void SetUp() override {
    delegate_->popupCellSelectedDidChange = [this](KVPopupCell& cell) {
      EXPECT_EQ(&cell, cell_.get());
      heard_.append(cell.selectedIdentifier().isNull() ? text("none") : cell.selectedIdentifier());
    };
    cell_->setDelegate(delegate_);
    cell_->setPopupMenu(menu_);
    panel_.add(cell_->view());
    cell_->reloadData();
    panel_.show();
  }

  PopUpButton& button() { return *cell_->popupButton(); }
  /// The titles of the marked items.
  QStringList marked() {
    QStringList titles;
    for (const MenuItemRef& each : cell_->popupMenu()->items()) {
      if (each->state() == 1) titles.append(each->title());
    }
    return titles;
  }

  QStringList heard_;
  KVMenuRef menu_ = KVMenu::menuWithItems({item("Home", "home", image(Qt::red)), kSeparator,
                                           item("Settings", "set", image(Qt::blue)), item("None")});
  std::shared_ptr<KVPopupCellDelegate> delegate_ = std::make_shared<KVPopupCellDelegate>();
  Panel panel_;
  KVPopupCellRef cell_ = KVPopupCell::initWithNibName();
};

TEST(KVMenuTest, KeepsMapsOfItems) {
  const LogCapture log;
  QVariantMap more = item("Home", "home", image(Qt::red));
  more[text("anything")] = 7;
  const QVariantMap wrong{{text("title"), text("Wrong")}, {text("image"), 3}};
  const auto menu = KVMenu::menuWithItems({more, kSeparator, wrong});
  ASSERT_EQ(menu->items().size(), 3);
  EXPECT_EQ(menu->items()[0]->representedObject(), QVariant(more));
  EXPECT_EQ(menu->items()[0]->image()->pixelWidth(), 60);
  EXPECT_TRUE(menu->items()[1]->isSeparatorItem());
  EXPECT_TRUE(menu->items()[1]->title().isEmpty());
  EXPECT_FALSE(menu->items()[1]->representedObject().isValid());
  EXPECT_EQ(menu->items()[2]->representedObject(), QVariant(wrong));
  EXPECT_FALSE(menu->items()[2]->image());
  EXPECT_EQ(log.lines(), QStringList(text("image: Wrong (null) 3")));
}

TEST(KVMenuTest, RejectsItemWithoutTitle) {
  EXPECT_THROW(KVMenu::menuWithItems({QVariantMap{{text("identifier"), text("a")}}}),
               std::invalid_argument);
  EXPECT_EQ(KVMenu::menuWithItems({})->items().size(), 0);
}

TEST_F(KVPopupCellTest, ShowsProperties) {
  cell_->setName(text("<i>Phone</i>"));
  cell_->setImage(image(Qt::green));
  cell_->reloadData();
  EXPECT_EQ(cell_->titleField()->text(), u"<i>Phone</i>");
  EXPECT_EQ(cell_->titleField()->textFormat(), Qt::PlainText);
  EXPECT_TRUE(cell_->imageView()->image());
  cell_->setName(QString());
  cell_->setImage(nullptr);
  cell_->reloadData();
  EXPECT_EQ(cell_->titleField()->text(), u"");
  EXPECT_FALSE(cell_->imageView()->image());
}

TEST_F(KVPopupCellTest, FaceAndMarkFollowIdentifier) {
  const struct {
    QString identifier;
    const char* face;
    QStringList marked;
    int index;
  } steps[] = {{text("set"), "Settings", {text("Settings")}, 2},
               {text("home"), "Home", {text("Home")}, 0},
               {text("unknown"), "", {}, -1},
               {text("set"), "Settings", {text("Settings")}, 2},
               {QString(), "", {}, -1},
               {text(""), "", {}, -1}};
  for (const auto& step : steps) {
    cell_->setSelectedIdentifier(step.identifier);
    cell_->reloadData();
    EXPECT_EQ(button().title(), text(step.face));
    EXPECT_EQ(marked(), step.marked);
    EXPECT_EQ(button().indexOfSelectedItem(), step.index);
    EXPECT_EQ(button().faceItem(), cell_->selectedItem());
    EXPECT_EQ(cell_->representedObject().toMap().value(text("title")).toString(), text(step.face));
  }
  // The face has the item's image.
  const auto has = [&](const QColor& color) {
    const QImage face = painted(button(), 1);
    for (int x = 0; x < face.width(); ++x) {
      if (face.pixelColor(x, face.height() / 2) == color) return true;
    }
    return false;
  };
  EXPECT_FALSE(has(Qt::blue));
  cell_->setSelectedIdentifier(text("set"));
  cell_->reloadData();
  EXPECT_TRUE(has(Qt::blue));
}

/// The ratio of the brighter to the darker color, 1 to 21.
double contrast(const QColor& a, const QColor& b) {
  const auto luminance = [](const QColor& color) {
    const auto linear = [](double c) { return std::pow(c, 2.2); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF()) + 0.05;
  };
  return std::max(luminance(a), luminance(b)) / std::min(luminance(a), luminance(b));
}

TEST_F(KVPopupCellTest, MenuShowsMarkImagesAndSeparator) {
  cell_->setSelectedIdentifier(text("set"));
  cell_->reloadData();
  const QPalette light = QApplication::palette();
  QPalette dark(QColor(50, 50, 50), QColor(40, 40, 40));
  dark.setColor(QPalette::Disabled, QPalette::Text, QColor(110, 110, 110));
  for (const QPalette& palette : {light, dark}) {
    QApplication::setPalette(palette);
    button().showPopup();
    QWidget* const list = button().view()->viewport();
    const QImage menu = list->grab().toImage();
    const auto row = [&](int i) {
      return button().view()->visualRect(button().model()->index(i, 0)).intersected(menu.rect());
    };
    const auto count = [&](const QRect& part, const std::function<bool(const QColor&)>& is) {
      int found = 0;
      for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) found += is(menu.pixelColor(x, y));
      }
      return found;
    };
    for (const int i : {0, 2, 3}) {
      QRect marks = row(i).adjusted(2, 2, -2, -2);
      marks.setWidth(20);
      const QColor ground = menu.pixelColor(marks.topLeft());
      const int marked =
          count(marks, [&](const QColor& color) { return contrast(color, ground) > 3; });
      EXPECT_EQ(marked > 10, i == 2) << i << " has " << marked;
      EXPECT_EQ(count(row(i), [](const auto& c) { return c == Qt::red; }) > 100, i == 0) << i;
      EXPECT_EQ(count(row(i), [](const auto& c) { return c == Qt::blue; }) > 100, i == 2) << i;
    }
    const QColor ground = menu.pixelColor(row(1).topLeft());
    const int drawn =
        count(row(1), [&](const QColor& color) { return contrast(color, ground) > 1.8; });
    EXPECT_GT(drawn, row(1).width() / 2);
    EXPECT_LE(drawn, row(1).width() * 2) << "a line";
    button().hidePopup();
  }
  QApplication::setPalette(light);
}

TEST_F(KVPopupCellTest, SelectsFirstOfDuplicates) {
  cell_->setPopupMenu(KVMenu::menuWithItems({item("A", "x"), item("B", "y"), item("C", "y")}));
  cell_->setSelectedIdentifier(text("y"));
  cell_->reloadData();
  EXPECT_EQ(button().title(), u"B");
  choose(button(), 2);
  EXPECT_EQ(heard_, QStringList(text("y")));
  EXPECT_EQ(button().title(), u"B");
  EXPECT_EQ(marked(), QStringList(text("B")));
}

TEST_F(KVPopupCellTest, ReportsChoiceByMouseAndKeys) {
  choose(button(), 2);
  EXPECT_EQ(button().title(), u"Settings");
  choose(button(), 2);
  chooseByKeys(button(), 1);
  EXPECT_EQ(heard_, QStringList({text("set"), text("set"), text("none")}));
  EXPECT_EQ(button().title(), u"") << "an item without an identifier empties the face";
  EXPECT_TRUE(marked().isEmpty());
  QTest::keyClick(&button(), Qt::Key_H);
  QTest::keyClick(button().view(), Qt::Key_Return);
  EXPECT_EQ(heard_.last(), u"home") << "typing opens the menu and searches it";
  choose(button(), 1);
  EXPECT_EQ(heard_.size(), 4) << "a separator cannot be chosen";
}

TEST_F(KVPopupCellTest, ChoosesOnlyInMenu) {
  cell_->setSelectedIdentifier(text("home"));
  cell_->reloadData();
  QWheelEvent wheel({5, 5}, {5, 5}, {0, -120}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&button(), &wheel);
  EXPECT_FALSE(wheel.isAccepted());
  QTest::keyClick(&button(), Qt::Key_Down);
  QTest::keyClick(button().view(), Qt::Key_Escape);
  EXPECT_EQ(cell_->selectedIdentifier(), u"home");
  EXPECT_EQ(button().title(), u"Home");
  EXPECT_TRUE(heard_.isEmpty());
}

TEST_F(KVPopupCellTest, DelegateOperationIsOptional) {
  delegate_->popupCellSelectedDidChange = {};
  choose(button(), 2);
  EXPECT_EQ(cell_->selectedIdentifier(), u"set");
  delegate_.reset();
  choose(button(), 0);
  EXPECT_EQ(cell_->selectedIdentifier(), u"home");
}

TEST_F(KVPopupCellTest, OnlyOwnPopUpReloadsIt) {
  const KVPopupCellRef other = KVPopupCell::initWithNibName();
  other->setPopupMenu(menu_);
  panel_.add(other->view());
  other->setSelectedIdentifier(text("home"));
  other->reloadData();
  PopUpButton foreign;
  foreign.addItem(text("Foreign"));

  QStringList mine;
  button().setAction([&](PopUpButton&) { mine.append(text("kept")); });
  cell_->setName(text("not yet shown"));
  other->popupButton()->showPopup();
  other->popupButton()->hidePopup();
  foreign.showPopup();
  foreign.hidePopup();
  EXPECT_NE(cell_->titleField()->text(), u"not yet shown");
  cell_->itemDidSelect(View::of(&foreign));
  EXPECT_TRUE(heard_.isEmpty());

  Q_EMIT button().activated(0);
  EXPECT_EQ(mine.size(), 1) << "the previous action";
  choose(button(), 2);
  EXPECT_EQ(mine.size(), 1);
  EXPECT_EQ(heard_, QStringList(text("set")));
  EXPECT_EQ(cell_->titleField()->text(), u"not yet shown");

  // Both show the same menu: each marks its own item when it opens.
  other->popupButton()->showPopup();
  EXPECT_EQ(marked(), QStringList(text("Home")));
  other->popupButton()->hidePopup();
  button().showPopup();
  EXPECT_EQ(marked(), QStringList(text("Settings")));
  EXPECT_TRUE(button().isMarked(2));
  button().hidePopup();
}

TEST_F(KVPopupCellTest, DestroyedCellIsNotCalled) {
  button().showPopup();
  button().hidePopup();
  QPointer<PopUpButton> left = &button();
  cell_.reset();
  ASSERT_TRUE(left);
  choose(*left, 2);
  EXPECT_TRUE(heard_.isEmpty());
}

TEST_F(KVPopupCellTest, FaceIsEmptyWithoutMenu) {
  cell_->setPopupMenu(nullptr);
  cell_->setSelectedIdentifier(text("home"));
  cell_->reloadData();
  EXPECT_EQ(button().count(), 0);
  EXPECT_EQ(button().title(), u"");
  QTest::mouseClick(&button(), Qt::LeftButton);
  EXPECT_FALSE(cell_->selectedItem());
}

TEST_F(KVPopupCellTest, IsExportedWithItsDelegate) {
  const ClassInfo* const info = ClassInfo::find(text("KVPopupCell"));
  ASSERT_TRUE(info);
  const ObjectRef object = info->create(text("init"));
  ASSERT_TRUE(object);
  info->call(*object, text("view"));
  const QVariant items = QVariantList{item("A", "a"), item("B", "b")};
  const QVariant made =
      *ClassInfo::find(text("KVMenu"))->callClass(text("menuWithItems:"), QVariantList(1, items));
  const DelegateInfo& told = KVPopupCellDelegate::staticDelegateInfo();
  const std::shared_ptr<void> delegate = told.make();
  int calls = 0;
  told.operations()[0].implement(delegate.get(),
                                 [&](const QVariantList&) { return QVariant(++calls); });
  EXPECT_TRUE(info->call(*object, text("setDelegate:"), {told.toVariant(delegate)}));
  EXPECT_TRUE(object->setValueForKey(made, text("popupMenu")));
  EXPECT_TRUE(object->setValueForKey(text("b"), text("selectedIdentifier")));
  EXPECT_TRUE(info->call(*object, text("reloadData")));
  EXPECT_EQ(object->valueForKeyPath(text("popupMenu.itemArray.state")),
            QVariant(QVariantList({0, 1})));
  const QVariant item = *info->call(*object, text("selectedItem"));
  EXPECT_EQ(item.value<ObjectRef>()->valueForKey(text("title")), QVariant(text("B")));
  const QVariant popUp = object->valueForKey(text("popupButton"));
  EXPECT_TRUE(info->call(*object, text("itemDidSelect:"), {popUp}));
  EXPECT_EQ(calls, 1);
  EXPECT_FALSE(object->setValueForKey(text("no view"), text("popupButton")));
}

}  // namespace
}  // namespace kelvar

// Hands for the startup menu.
#include "tests/forms/menu_test.h"

#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <cstdlib>

#include "base/paths.h"
#include "files/settings_file.h"
#include "forms/language.h"

namespace qlm {
namespace {

// One for all tests of a process.
class Toolkit : public testing::Environment {
 public:
  void SetUp() override {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    setenv("SDL_AUDIODRIVER", "dummy", 1);
    for (const char* const name : {"LANG", "LANGUAGE", "LC_ALL", "LC_MESSAGES"}) unsetenv(name);
    application_ = std::make_unique<QApplication>(words_, arguments_);
    ChooseFaces();
  }
  void TearDown() override { application_.reset(); }

 private:
  int words_ = 1;
  char name_[5] = "test";
  char* arguments_[2] = {name_, nullptr};
  std::unique_ptr<QApplication> application_;
};

[[maybe_unused]] const testing::Environment* const toolkit = testing::AddGlobalTestEnvironment(new Toolkit);

}  // namespace

MenuTest::MenuTest() {
  LoadSettings();
  MakeFolders(DataPath(u"jukelist"));
}

MenuTest::~MenuTest() { Close(); }

void MenuTest::Open() {
  ShowChosenLanguage();
  menu = std::make_unique<MenuWindow>();
  menu->show();
  EXPECT_TRUE(QTest::qWaitForWindowActive(menu.get()));
}

void MenuTest::Close() { menu.reset(); }

std::vector<std::string> MenuTest::Items(const std::string& name) const {
  const QComboBox& box = Choice(name);
  std::vector<std::string> items;
  for (int i = 0; i < box.count(); ++i) items.push_back(box.itemText(i).toStdString());
  return items;
}

std::vector<std::string> MenuTest::Listed() const {
  std::vector<std::string> folders;
  for (int row = 0; row < List().count(); ++row) {
    const QListWidgetItem& item = *List().item(row);
    std::string folder = item.checkState() == Qt::Checked ? "" : "#";
    folders.push_back(folder.append(item.text().toStdString()));
  }
  return folders;
}

void MenuTest::Toggle(const std::string& name) const { QTest::keyClick(&Tick(name), Qt::Key_Space); }

void MenuTest::Choose(const std::string& name, int item) const {
  QComboBox& box = Choice(name);
  // One key for the first, and one down for each item below.
  QTest::keyClick(&box, Qt::Key_Home);
  for (int i = 0; i < item; ++i) QTest::keyClick(&box, Qt::Key_Down);
}

void MenuTest::Type(const std::string& name, const std::string& text) const {
  QLineEdit& field = Field(name);
  field.selectAll();
  QTest::keyClick(&field, Qt::Key_Delete);
  QTest::keyClicks(&field, QString::fromStdString(text));
}

void MenuTest::Press(const std::string& name) const { QTest::mouseClick(&Button(name), Qt::LeftButton); }

MenuTest::Box MenuTest::BoxDuring(const std::function<void()>& happening, const std::string& answer) {
  Box seen;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, [&] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    seen = {box->windowTitle().toStdString(), box->text().toStdString()};
    for (QAbstractButton* const button : box->buttons()) {
      if (button->text().toStdString() == answer) return button->click();
    }
    ADD_FAILURE() << "the box has no button " << answer;
    box->reject();
  });
  look.start(1);
  happening();
  return seen;
}

}  // namespace qlm

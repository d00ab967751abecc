// The ground of the key configuration's tests: the open dialog, and a hand that works in it.
#pragma once

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QTest>
#include <QWindow>
#include <functional>
#include <string>
#include <utility>

#include "base/paths.h"
#include "files/key_table.h"
#include "forms/key_config.h"
#include "forms/key_picture.h"
#include "tests/forms/until.h"
#include "tests/support/game_test.h"

namespace qlm {

// The open dialog, as a person sees and works it.
class Form {
 public:
  explicit Form(QDialog& dialog) : dialog_(dialog) {}

  QDialog& Dialog() const { return dialog_; }
  template <typename Control>
  Control& Find(const char* name) const {
    auto* const control = dialog_.findChild<Control*>(name);
    EXPECT_NE(control, nullptr) << name;
    return *control;
  }
  QListWidget& List() const { return Find<QListWidget>("lstKeyList"); }
  KeyPicture& Lanes() const { return Find<KeyPicture>("picKeyDown"); }
  KeyPicture& Menus() const { return Find<KeyPicture>("picSpecialKeys"); }

  void Click(const char* button) const { QTest::mouseClick(&Find<QWidget>(button), Qt::LeftButton); }
  void ClickShape(int32_t function) const {
    KeyPicture& picture = function < 11 ? Menus() : Lanes();
    QTest::mouseClick(&picture, Qt::LeftButton, {}, picture.shapKey(function).center().toPoint());
  }
  void ClickRow(int row) const {
    QListWidget& list = List();
    list.scrollToItem(list.item(row));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(row)).center());
  }

  // A key by the kernel's code, as the window system tells it.
  void Key(int code, bool down, Qt::Key name = Qt::Key_unknown, bool repeat = false) const {
    QKeyEvent event(down ? QEvent::KeyPress : QEvent::KeyRelease, name, Qt::NoModifier,
                    static_cast<quint32>(code) + 8, 0, 0, QString(), repeat);
    event.setTimestamp(++moment_);
    QCoreApplication::sendEvent(dialog_.windowHandle(), &event);
  }
  // What X makes of a held key where the toolkit does not see through it.
  void RepeatUnseen(int code) const {
    Key(code, false);
    --moment_;
    Key(code, true);
  }
  void Press(int code, Qt::Key name = Qt::Key_unknown) const {
    Key(code, true, name);
    Key(code, false, name);
  }

  // The selected row's first word.
  std::string Selected() const {
    const QListWidgetItem* const item = List().currentItem();
    return item == nullptr ? std::string() : item->text().section('\t', 0, 0).toStdString();
  }
  // The row of a function, from its tab on.
  std::string InputsOf(const std::string& item) const {
    for (int row = 0; row < List().count(); ++row) {
      const QString text = List().item(row)->text();
      if (text.section('\t', 0, 0).toStdString() == item) return text.section('\t', 1).toStdString();
    }
    return "no row " + item;
  }
  std::string Rows() const {
    QStringList rows;
    for (int row = 0; row < List().count(); ++row) rows += List().item(row)->text();
    return rows.join('\n').toStdString();
  }
  std::string HeldLine() const { return Find<QLabel>("lblHeld").text().toStdString(); }

  // For as long as it takes to poll the controllers several times.
  static void Poll() { QTest::qWait(100); }

 private:
  QDialog& dialog_;
  mutable quint64 moment_ = 0;  // of the last key event
};

class KeyConfigTest : public GameTest {
 protected:
  static void SetUpTestSuite() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int words = 1;
    static char name[] = "key_config_test";
    static char* arguments[] = {name, nullptr};
    application = new QApplication(words, arguments);
  }
  static void TearDownTestSuite() { delete std::exchange(application, nullptr); }

  KeyConfigTest() { SetDefaultKeyMap(); }

  // Opens the dialog and lets a hand work in it; what is still open then is closed like a window.
  static void Open(const std::function<void(const Form&)>& hand) {
    bool opened = false;
    const auto work = [&] {
      auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      opened = true;
      EXPECT_TRUE(Until([&] { return dialog->isActiveWindow(); }));
      hand(Form(*dialog));
      if (dialog->isVisible()) dialog->close();
    };
    QMetaObject::invokeMethod(application, work, Qt::QueuedConnection);
    OpenKeyConfig(nullptr);
    EXPECT_TRUE(opened);
  }

  std::string FileBytes() const { return ReadBytes(DataPath(u"qlm_keycnf.dat")); }

  static inline QApplication* application = nullptr;
};

}  // namespace qlm

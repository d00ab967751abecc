// The folders of charts: the list, what goes into it and out of it, the search file, and the search.
#include "forms/search_panel.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QMimeData>
#include <QProgressBar>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <filesystem>

#include "base/hooks.h"
#include "base/paths.h"
#include "platform/files.h"
#include "platform/text.h"
#include "state/lists.h"
#include "tests/forms/menu_test.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;

class SearchPanelTest : public MenuTest {
 protected:
  void Open() {
    MenuTest::Open();
    Panels().setCurrentIndex(3);
    List().setFocus();
  }
  std::string Folder(const std::string& name) const {
    fs::create_directories(SystemFolder() + "/" + name);
    return SystemFolder() + "/" + name;
  }
  void WriteSearchFile(TextView text) const { WriteText(u"_qlmfiles\\qlm_searchdir.txt", text); }
  std::string SearchFile() const { return ReadBytes(DataPath(u"qlm_searchdir.txt")); }
  // As the search file holds a path of the system.
  static std::string Line(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return path + "\r\n";
  }
  void Chart(const std::string& folder, const std::string& name = "a.bms") const {
    fs::create_directories(SystemFolder() + "/" + folder);
    WriteData(platform::DecodeUtf8(folder + "\\" + name), "\r\n#TITLE a\r\n");
  }

  // Drops these on the list, as a file manager does.
  void Drop(const std::vector<std::string>& paths) const {
    QMimeData data;
    QList<QUrl> urls;
    for (const std::string& path : paths) {
      // Bytes that are no UTF-8 come as they are, in percent signs.
      urls.push_back(QUrl::fromEncoded("file://" + QByteArray::fromStdString(path).toPercentEncoding("/")));
    }
    data.setUrls(urls);
    QDragEnterEvent enters(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(List().viewport(), &enters);
    EXPECT_TRUE(enters.isAccepted());
    QDropEvent drops(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(List().viewport(), &drops);
  }
  // Presses "add" and enters a path in the dialog that comes; an empty one leaves it by Esc.
  void AddByDialog(const std::string& path) const {
    QTimer soon;
    soon.setSingleShot(true);
    QObject::connect(&soon, &QTimer::timeout, [&] {
      auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      EXPECT_EQ(dialog->windowTitle().toStdString(), "検索パスの追加");
      if (path.empty()) {
        dialog->reject();
        return;
      }
      dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(QString::fromStdString(path));
      static_cast<QDialog*>(dialog)->accept();
    });
    soon.start(0);
    Press("cmdAdd0");
  }
  void Select(int row) const { List().setCurrentRow(row); }
  void ToggleRow(int row) const {
    Select(row);
    QTest::keyClick(&List(), Qt::Key_Space);
  }
};

TEST_F(SearchPanelTest, MissingSearchFileLeavesTheListEmpty) {
  Open();
  EXPECT_EQ(Listed(), Strings{});
}

TEST_F(SearchPanelTest, LinesAreFoldersSwitchedOffOnesAndComments) {
  WriteSearchFile(u"\\bms\\one\r\n\r\n/ mine\r\n#\\bms\\two\r\n//other\r\n<CURRENTDIR>\\songs\r\n");
  Open();
  EXPECT_EQ(Listed(), (Strings{"/bms/one", "#/bms/two", "<CURRENTDIR>/songs"}));
}

TEST_F(SearchPanelTest, TextBehindAZeroByteDoesNotCount) {
  WriteData(u"_qlmfiles\\qlm_searchdir.txt", std::string_view("\\a\r\n\\b\0c\r\n\\d\r\n", 14));
  Open();
  EXPECT_EQ(Listed(), (Strings{"/a", "/b"}));
}

TEST_F(SearchPanelTest, PersonsFormOfAFolderIsNoComment) {
  const std::string folder = Folder("charts");
  WriteData(u"_qlmfiles\\qlm_searchdir.txt", folder + "\r\n/no/folder\r\n");
  Open();
  EXPECT_EQ(Listed(), Strings{folder});
  BoxDuring([&] { Press("cmdSStart"); }, "OK");
  EXPECT_EQ(SearchFile(), "/no/folder\r\n" + Line(folder));
}

TEST_F(SearchPanelTest, CommentsMoveToTheTopAndUntickedFoldersComeBackUnticked) {
  Chart("one");
  WriteSearchFile(u"<CURRENTDIR>\\one\r\n/ mine\r\n\\two\r\n#\\three\r\n");
  Open();
  ToggleRow(1);
  ToggleRow(2);
  Press("cmdSStart");
  EXPECT_EQ(SearchFile(), "/ mine\r\n<CURRENTDIR>\\one\r\n#\\two\r\n\\three\r\n");
  Close();
  Open();
  EXPECT_EQ(Listed(), (Strings{"<CURRENTDIR>/one", "#/two", "/three"}));
}

TEST_F(SearchPanelTest, TicksAreNotSavedBeforeTheSearch) {
  WriteSearchFile(u"\\one\r\n");
  Open();
  ToggleRow(0);
  Close();
  EXPECT_EQ(SearchFile(), "\\one\r\n");
}

TEST_F(SearchPanelTest, DroppedFolderStandsOnceWhateverItsCase) {
  const std::string upper = Folder("Charts");
  const std::string lower = Folder("charts");
  Open();
  Drop({upper});
  EXPECT_EQ(Listed(), Strings{upper});
  Drop({upper, lower, upper + "/"});
  EXPECT_EQ(Listed(), Strings{upper});
}

TEST_F(SearchPanelTest, DroppedFolderThatStandsUntickedStaysUnticked) {
  const std::string folder = Folder("songs");
  WriteSearchFile(u"#<CURRENTDIR>\\SONGS\\\r\n");
  Open();
  Drop({folder});
  EXPECT_EQ(Listed(), Strings{"#<CURRENTDIR>/SONGS/"});
}

TEST_F(SearchPanelTest, DroppedFilesAreLeftOut) {
  Chart("one");
  Open();
  Drop({SystemFolder() + "/one/a.bms", SystemFolder() + "/nothing", SystemFolder() + "/one"});
  EXPECT_EQ(Listed(), Strings{SystemFolder() + "/one"});
}

TEST_F(SearchPanelTest, DroppedFolderOfRawCodePageIsReadAsSuch) {
  const std::string folder = Folder("\x95\x5C");
  Open();
  Drop({folder});
  EXPECT_EQ(Listed(), Strings{SystemFolder() + "/表"});
}

TEST_F(SearchPanelTest, FolderThatTheFileCannotHoldIsRefusedByItsLetters) {
  const std::string folder = Folder("a\U0001F3B5é#羽é");
  Open();
  const Box box = BoxDuring([&] { Drop({folder}); }, "OK");
  EXPECT_EQ(box.title, "検索パスの追加");
  EXPECT_EQ(box.text,
            folder + "\nこのフォルダは追加できません。リストに保存できない文字があります: \U0001F3B5é#");
  EXPECT_EQ(Listed(), Strings{});
}

TEST_F(SearchPanelTest, DialogAddsATickedFolderOnce) {
  const std::string folder = Folder("charts");
  Open();
  AddByDialog(folder);
  EXPECT_EQ(Listed(), Strings{folder});
  AddByDialog(folder);
  AddByDialog("");
  EXPECT_EQ(Listed(), Strings{folder});
}

TEST_F(SearchPanelTest, RemovingAsksAndDeletesTheJukebox) {
  Chart("one");
  WriteSearchFile(u"<CURRENTDIR>\\one\\\r\n\\deep\\two\r\n");
  const Text one = WriteData(u"_qlmfiles\\jukelist\\one.qbl", "");
  const Text two = WriteData(u"_qlmfiles\\jukelist\\two.qbl", "");
  const Text wideTwo = WriteData(u"_qlmfiles\\jukelist\\two.qwl", "");
  Open();
  Select(1);
  Box box = BoxDuring([&] { Press("cmdAdd1"); }, "いいえ(&N)");
  EXPECT_EQ(box.title, "削除");
  EXPECT_EQ(box.text, "twoを削除してもよろしいですか?");
  EXPECT_EQ(Listed().size(), 2U);
  EXPECT_TRUE(FileExists(two));
  BoxDuring([&] { Press("cmdAdd1"); }, "はい(&Y)");
  EXPECT_EQ(Listed(), Strings{"<CURRENTDIR>/one/"});
  EXPECT_FALSE(FileExists(two));
  EXPECT_FALSE(FileExists(wideTwo));
  EXPECT_TRUE(FileExists(one));
  // Only the list has changed.
  EXPECT_EQ(SearchFile(), "<CURRENTDIR>\\one\\\r\n\\deep\\two\r\n");
  Select(0);
  QTest::keyClick(&Tick("chkNoConfirm"), Qt::Key_Space);
  List().setFocus();
  box = BoxDuring([&] { QTest::keyClick(&List(), Qt::Key_Delete); }, "");
  EXPECT_EQ(box.title, "");
  EXPECT_EQ(Listed(), Strings{});
  EXPECT_FALSE(FileExists(one));
}

TEST_F(SearchPanelTest, RemovingWithNothingSelectedDoesNothing) {
  Open();
  EXPECT_EQ(BoxDuring([&] { Press("cmdAdd1"); }, "").title, "");
}

TEST_F(SearchPanelTest, SearchMakesTheJukeboxesAndTellsItsProgressInTheCaption) {
  Chart("one");
  Chart("two", "b.bme");
  WriteSearchFile(u"<CURRENTDIR>\\one\r\n#<CURRENTDIR>\\two\r\n");
  Open();
  static Strings captions;
  captions.clear();
  QObject::connect(menu.get(), &QWidget::windowTitleChanged,
                   [](const QString& title) { captions.push_back(title.toStdString()); });
  // A search so slow that each caption can be read.
  static void (*shows)(TextView);
  shows = hooks.setCaption;
  hooks.setCaption = [](TextView caption) {
    QTest::qSleep(51);
    shows(caption);
  };
  Press("cmdSStart");
  EXPECT_TRUE(FileExists(DataPath(u"jukelist\\one.qbl")));
  EXPECT_FALSE(FileExists(DataPath(u"jukelist\\two.qbl")));
  const auto has = [](const std::string& caption) {
    return std::find(captions.begin(), captions.end(), caption) != captions.end();
  };
  EXPECT_TRUE(has("Seaching 1... " + Utf8(AppPath) + "\\one\\"));
  EXPECT_TRUE(has("Adding...1 files of 1files / 00:00:00"));
  EXPECT_EQ(menu->windowTitle().toStdString(), "Scan complete.");
  EXPECT_TRUE(Logged(u"[MakeBMSListFile] depth limit:True"));
}

TEST_F(SearchPanelTest, DepthIsLimitedUnlessTheBoxIsTicked) {
  Chart("one/two/three");
  WriteSearchFile(u"<CURRENTDIR>\\one\r\n");
  Open();
  const Box box = BoxDuring([&] { Press("cmdSStart"); }, "OK");
  EXPECT_EQ(box.title, "No BMSs");
  QTest::keyClick(&Tick("chkNoLimit"), Qt::Key_Space);
  Press("cmdSStart");
  EXPECT_TRUE(FileExists(DataPath(u"jukelist\\one.qbl")));
  QTest::keyClick(&Tick("chkNoLimit"), Qt::Key_Space);
  platform::DeleteFile(DataPath(u"jukelist\\one.qbl"));
  BoxDuring([&] { Press("cmdSStart"); }, "OK");
  EXPECT_FALSE(FileExists(DataPath(u"jukelist\\one.qbl")));
}

TEST_F(SearchPanelTest, SearchWithNoFolderTickedEndsInTheBoxAndLeavesOlderJukeboxes) {
  const Text old = WriteData(u"_qlmfiles\\jukelist\\old.qbl", "");
  WriteSearchFile(u"#<CURRENTDIR>\\one\r\n");
  Open();
  const Box box = BoxDuring([&] { Press("cmdSStart"); }, "OK");
  EXPECT_EQ(box.title, "No BMSs");
  EXPECT_EQ(box.text,
            "BMSファイルが見つかりません。「BMS再検索」で検索フォルダを追加してBMS検索をしてください。");
  EXPECT_TRUE(FileExists(old));
}

TEST_F(SearchPanelTest, ControlsRestDuringTheSearchAndItCanBeStopped) {
  Chart("one");
  Chart("two");
  WriteSearchFile(u"<CURRENTDIR>\\one\r\n<CURRENTDIR>\\two\r\n");
  Open();
  EXPECT_FALSE(Button("cmdStop").isVisible());
  // A person at the second folder.
  static SearchPanelTest* test;
  test = this;
  static void (*shows)(TextView);
  shows = hooks.setCaption;
  hooks.setCaption = [](TextView caption) {
    shows(caption);
    if (!caption.starts_with(u"Seaching 1") || !caption.ends_with(u"two\\")) return;
    for (const char* const name : {"cmdNorm", "cmdSStart", "cmdAdd0", "cmdConnect", "cmdLanguage"}) {
      EXPECT_FALSE(test->Button(name).isEnabled()) << name;
    }
    EXPECT_FALSE(test->Field("txtUserName").isEnabled());
    EXPECT_TRUE(test->Get<QProgressBar>("prgScan").isVisible());
    test->Press("cmdStop");
  };
  Press("cmdSStart");
  EXPECT_TRUE(FileExists(DataPath(u"jukelist\\one.qbl")));
  EXPECT_FALSE(FileExists(DataPath(u"jukelist\\two.qbl")));
  EXPECT_EQ(menu->windowTitle().toStdString(), "Scan stopped.");
  EXPECT_TRUE(Button("cmdNorm").isEnabled());
  EXPECT_TRUE(Button("cmdSStart").isEnabled());
  EXPECT_FALSE(Button("cmdStop").isVisible());
  EXPECT_FALSE(Get<QProgressBar>("prgScan").isVisible());
}

TEST_F(SearchPanelTest, SearchFileThatCannotBeWrittenIsToldAndNothingIsSearched) {
  Chart("one");
  fs::create_directories(SystemFolder() + "/_qlmfiles/qlm_searchdir.txt/in the way");
  Open();
  Drop({Folder("one")});
  const Box box = BoxDuring([&] { Press("cmdSStart"); }, "OK");
  EXPECT_EQ(box.title, "quillmarch");
  EXPECT_TRUE(box.text.starts_with("qlm_searchdir.txt cannot be written.")) << box.text;
  EXPECT_FALSE(FileExists(DataPath(u"jukelist\\one.qbl")));
}

}  // namespace
}  // namespace qlm

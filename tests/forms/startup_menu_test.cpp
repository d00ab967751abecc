// The menu as a whole: starting, closing, panels, the network, the languages, and what an eye or a screen
// reader needs.
#include "forms/startup_menu.h"

#include <sys/wait.h>
#include <unistd.h>

#include <QAccessible>
#include <QApplication>
#include <QGlyphRun>
#include <QGroupBox>
#include <QTabBar>
#include <QTest>
#include <QTextLayout>
#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <set>

#include "base/hooks.h"
#include "base/paths.h"
#include "forms/language.h"
#include "net/session.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/session.h"
#include "state/lists.h"
#include "state/network.h"
#include "state/settings.h"
#include "tests/forms/menu_test.h"
#include "tests/forms/until.h"

namespace qlm {
namespace {

using Strings = std::vector<std::string>;

// --- start and end ---

TEST_F(MenuTest, StartWithAJukeboxClosesTheMenuAndSearchesNothing) {
  WriteData(u"_qlmfiles\\jukelist\\some.qbl", "");
  Open();
  Press("cmdNorm");
  EXPECT_FALSE(menu->isVisible());
  EXPECT_TRUE(menu->StartsGame());
  EXPECT_TRUE(Logged(u"0 juke(s) has detected."));
  EXPECT_FALSE(Logged(u"# BMS-list(s) aren't found. Make now."));
}

TEST_F(MenuTest, StartWithNoFolderAddedSearchesTheStockSongs) {
  WriteText(u"songs\\march\\a.bms", u"\r\n#TITLE march\r\n");
  Open();
  QTest::keyClick(menu.get(), Qt::Key_Return);
  EXPECT_TRUE(Logged(u"# BMS-list(s) aren't found. Make now."));
  EXPECT_TRUE(FileExists(DataPath(u"jukelist\\songs.qbl")));
  EXPECT_TRUE(menu->StartsGame());
  EXPECT_FALSE(FileExists(DataPath(u"qlm_searchdir.txt")));
}

TEST_F(MenuTest, StartThatFindsNoChartStaysInTheMenu) {
  Open();
  const Box box = BoxDuring([&] { Press("cmdNorm"); }, "OK");
  EXPECT_EQ(box.title, "No BMSs");
  EXPECT_TRUE(menu->isVisible());
  EXPECT_FALSE(menu->StartsGame());
  EXPECT_TRUE(Button("cmdNorm").isEnabled());
}

TEST_F(MenuTest, ClosingEndsWithoutAStart) {
  WriteData(u"_qlmfiles\\jukelist\\some.qbl", "");
  Open();
  QTest::keyClick(menu.get(), Qt::Key_Escape);
  EXPECT_TRUE(menu->isVisible()) << "Esc by mistake would end the program";
  menu->close();
  EXPECT_FALSE(menu->StartsGame());
}

TEST_F(MenuTest, RequestToEndClosesTheMenu) {
  Open();
  hooks.closeRequested();
  EXPECT_FALSE(menu->isVisible());
  EXPECT_FALSE(menu->StartsGame());
}

TEST_F(MenuTest, ClosingDuringASearchStopsItAndStartsNothing) {
  WriteText(u"songs\\a\\a.bms", u"\r\n#TITLE a\r\n");
  WriteText(u"songs\\b\\b.bms", u"\r\n#TITLE b\r\n");
  WriteData(u"_qlmfiles\\qlm_searchdir.txt", "<CURRENTDIR>\\songs\\a\r\n<CURRENTDIR>\\songs\\b\r\n");
  Open();
  hooks.folderSearched = [](TextView line) {
    if (line.ends_with(u"songs\\b\\")) hooks.closeRequested();
  };
  Press("cmdNorm");
  EXPECT_FALSE(menu->isVisible());
  EXPECT_TRUE(FileExists(DataPath(u"jukelist\\a.qbl")));
  EXPECT_FALSE(FileExists(DataPath(u"jukelist\\b.qbl")));
  EXPECT_FALSE(menu->StartsGame());
}

TEST_F(MenuTest, GameHasItsHooksAndBoxesBackBehindTheMenu) {
  static int captions;
  captions = 0;
  hooks.setCaption = [](TextView) { ++captions; };
  hooks.closeRequested = nullptr;
  Open();
  hooks.setCaption(u"seen in the menu");
  EXPECT_EQ(captions, 0);
  EXPECT_EQ(menu->windowTitle().toStdString(), "seen in the menu");
  Close();
  hooks.setCaption(u"seen in the game");
  EXPECT_EQ(captions, 1);
  EXPECT_EQ(hooks.closeRequested, nullptr);
  EXPECT_EQ(hooks.loadPump, nullptr);
  testing::internal::CaptureStderr();
  platform::MessageBox(platform::BoxIcon::kWarning, u"title", u"text");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "title: text\n");
}

TEST_F(MenuTest, NameIsKeptAtTheStart) {
  WriteData(u"_qlmfiles\\jukelist\\some.qbl", "");
  Open();
  Field("txtUserName").setText(QStringLiteral("pasted by a machine"));
  Press("cmdNorm");
  EXPECT_EQ(MyName, u"pasted by a machine");
}

// --- panels ---

TEST_F(MenuTest, CtrlTabLeadsThroughThePanelsAndAroundTheEnd) {
  Open();
  const auto caption = [&] { return Panels().tabText(Panels().currentIndex()).toStdString(); };
  EXPECT_EQ(caption(), "メイン");
  for (const char* const expected : {"その他", "スキン", "BMS検索", "音", "メイン"}) {
    QTest::keyClick(menu.get(), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(caption(), expected);
  }
  for (const char* const expected : {"音", "BMS検索", "スキン", "その他", "メイン"}) {
    QTest::keyClick(menu.get(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(caption(), expected);
  }
  QTest::keyClick(menu.get(), Qt::Key_Right, Qt::ControlModifier);
  EXPECT_EQ(caption(), "メイン");
  // From within a field too.
  Field("txtUserName").setFocus();
  QTest::keyClick(&Field("txtUserName"), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(caption(), "その他");
  EXPECT_TRUE(Tick("chkWindowed").isVisible());
  EXPECT_FALSE(Field("txtUserName").isVisible());
}

TEST_F(MenuTest, EveryControlIsReachedByTheKeyTab) {
  Open();
  std::set<QString> reached;
  for (int panel = 0; panel < Panels().count(); ++panel) {
    Panels().setCurrentIndex(panel);
    QApplication::processEvents();  // the sound device opens behind the look of its panel
    for (int i = 0; i < 40; ++i) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      reached.insert(QApplication::focusWidget()->objectName());
    }
  }
  int controls = 0;
  for (const QWidget* const each : menu->findChildren<QWidget*>()) {
    const QString& name = each->objectName();
    const bool control = name.startsWith("chk") || name.startsWith("cmb") || name.startsWith("txt") ||
                         name.startsWith("lst") || (name.startsWith("cmd") && name != "cmdStop");
    if (!control) continue;
    ++controls;
    EXPECT_TRUE(reached.contains(name)) << name.toStdString();
  }
  // 18 ticks, 13 choices, 4 fields, the list, and 11 buttons with that of the language.
  EXPECT_EQ(controls, 47);
}

TEST_F(MenuTest, EveryControlHasANameForAScreenReader) {
  Open();
  for (QWidget* const each : menu->findChildren<QWidget*>()) {
    if (each->focusPolicy() == Qt::NoFocus || each->objectName().startsWith("qt_") ||
        each->objectName().isEmpty()) {
      continue;
    }
    QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(each);
    ASSERT_NE(reader, nullptr);
    EXPECT_FALSE(reader->text(QAccessible::Name).isEmpty()) << each->objectName().toStdString();
  }
}

// --- languages ---

bool IsJapanese(const QString& text) {
  return std::any_of(text.begin(), text.end(),
                     [](QChar c) { return c.unicode() >= 0x3000 && c.unicode() < 0xFF00; });
}

// All that the menu says, by the control that says it.
std::vector<std::pair<std::string, QString>> Said(const MenuWindow& menu) {
  std::vector<std::pair<std::string, QString>> said;
  for (const QWidget* const each : menu.findChildren<QWidget*>()) {
    const std::string name = each->objectName().toStdString();
    // In its own language, and the toolkit's own.
    if (name == "cmdLanguage" || name.starts_with("Scroll")) continue;
    said.emplace_back(name, each->toolTip());
    said.emplace_back(name, each->accessibleName());
    if (const auto* const label = qobject_cast<const QLabel*>(each)) said.emplace_back(name, label->text());
    if (const auto* const button = qobject_cast<const QAbstractButton*>(each))
      said.emplace_back(name, button->text());
    if (const auto* const group = qobject_cast<const QGroupBox*>(each))
      said.emplace_back(name, group->title());
    if (const auto* const field = qobject_cast<const QLineEdit*>(each))
      said.emplace_back(name, field->placeholderText());
    if (const auto* const tabs = qobject_cast<const QTabBar*>(each)) {
      for (int i = 0; i < tabs->count(); ++i) said.emplace_back("tab", tabs->tabText(i));
    }
    if (const auto* const box = qobject_cast<const QComboBox*>(each)) {
      for (int i = 0; i < box->count(); ++i) said.emplace_back(name, box->itemText(i));
    }
  }
  std::erase_if(said, [](const auto& each) { return each.second.isEmpty(); });
  return said;
}

TEST_F(MenuTest, EverythingIsSaidInEnglishAndInJapaneseAgain) {
  Open();
  const auto japanese = Said(*menu);
  EXPECT_GE(japanese.size(), 100U);
  EXPECT_EQ(Button("cmdLanguage").text().toStdString(), "English");
  Press("cmdLanguage");
  QApplication::processEvents();
  EXPECT_EQ(MenuLanguage, u"en");
  EXPECT_EQ(Button("cmdLanguage").text().toStdString(), "日本語");
  EXPECT_EQ(Button("cmdNorm").text().toStdString(), "&Start");
  const auto english = Said(*menu);
  ASSERT_EQ(english.size(), japanese.size());
  for (const auto& [name, text] : english)
    EXPECT_FALSE(IsJapanese(text)) << name << ": " << text.toStdString();
  Press("cmdLanguage");
  QApplication::processEvents();
  EXPECT_EQ(MenuLanguage, u"ja");
  EXPECT_EQ(Said(*menu), japanese);
}

TEST_F(MenuTest, LanguageIsRememberedAndElseTheSystems) {
  const auto startWord = [&] {
    Open();
    std::string word = Button("cmdNorm").text().toStdString();
    Close();
    return word;
  };
  struct Case {
    const char* system;
    TextView chosen;
    const char* word;
  };
  for (const Case& each : {Case{"", u"", "起動"}, Case{"C", u"", "起動"}, Case{"C.UTF-8", u"", "起動"},
                           Case{"POSIX", u"", "起動"}, Case{"ja_JP.UTF-8", u"", "起動"},
                           Case{"en_US.UTF-8", u"", "&Start"}, Case{"de_DE.UTF-8", u"", "&Start"},
                           Case{"ja_JP.UTF-8", u"en", "&Start"}, Case{"en_US.UTF-8", u"ja", "起動"}}) {
    setenv("LANG", each.system, 1);
    MenuLanguage = each.chosen;
    EXPECT_EQ(startWord(), each.word) << "system " << each.system << ", chosen " << Utf8(each.chosen);
    EXPECT_EQ(MenuLanguage, each.chosen) << "nothing is remembered before it is chosen";
  }
  unsetenv("LANG");
}

TEST_F(MenuTest, BoxesSpeakTheLanguageOfTheMenu) {
  MenuLanguage = u"en";
  Open();
  const Box box = BoxDuring([&] { Press("cmdNorm"); }, "OK");
  EXPECT_EQ(box.title, "No BMSs");
  EXPECT_TRUE(box.text.starts_with("No chart was found.")) << box.text;
}

// --- looks ---

TEST_F(MenuTest, FitsAScreenOf1920By1080AtTwiceItsSizeInBothLanguages) {
  for (const TextView language : {u"ja", u"en"}) {
    MenuLanguage = language;
    Open();
    // With the frame of the system around.
    EXPECT_LE(menu->sizeHint().width(), 1920 / 2 - 16) << Utf8(language);
    EXPECT_LE(menu->sizeHint().height(), 1080 / 2 - 40) << Utf8(language);
    Close();
  }
}

TEST_F(MenuTest, EveryLetterOfBothLanguagesHasAGlyph) {
  for (const TextView language : {u"ja", u"en"}) {
    MenuLanguage = language;
    Open();
    for (const auto& [name, text] : Said(*menu)) {
      QTextLayout layout(QString(text).remove('\r').replace('\n', ' '), QApplication::font());
      layout.beginLayout();
      layout.createLine();
      layout.endLayout();
      for (const QGlyphRun& run : layout.glyphRuns()) {
        // The glyph of letters that no face has.
        EXPECT_FALSE(run.glyphIndexes().contains(0U)) << name << ": " << text.toStdString();
      }
    }
    Close();
  }
}

// --- network ---

class MenuNetworkTest : public MenuTest {
 public:
  MenuNetworkTest() {
    platform::UseRealClock();  // the network is polled by its timer
    NetPort = 0;               // any free one
    WriteData(u"_qlmfiles\\jukelist\\some.qbl", "");
  }
  ~MenuNetworkTest() override {
    Close();
    LeaveBattle();
    if (host_ > 0) {
      kill(host_, SIGKILL);
      waitpid(host_, nullptr, 0);
    }
  }

  // Opens a battle in a process of its own; gives its address.
  std::string HostElsewhere() {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe(ends.data()), 0);
    host_ = fork();
    if (host_ == 0) {
      MyName = u"the host";
      HostBattle();
      const uint16_t port = platform::SessionPort();
      EXPECT_EQ(write(ends[1], &port, sizeof port), static_cast<ssize_t>(sizeof port));
      StartBattle();
      while (true) {
        NetPoll();
        platform::SleepFor(5);
      }
    }
    uint16_t port = 0;
    EXPECT_EQ(read(ends[0], &port, sizeof port), static_cast<ssize_t>(sizeof port));
    for (const int end : ends) close(end);
    return "127.0.0.1:" + std::to_string(port);
  }
  std::string Said() const { return Get<QLabel>("lblNetwork").text().toStdString(); }

 private:
  pid_t host_ = -1;
};

TEST_F(MenuNetworkTest, ServerOpensASessionAndStartsTheGame) {
  Open();
  Type("txtUserName", "Quill");
  Press("cmdServer");
  EXPECT_TRUE(menu->StartsGame());
  EXPECT_FALSE(Button("cmdServer").isEnabled());
  EXPECT_FALSE(Button("cmdConnect").isEnabled());
  EXPECT_TRUE(network.NetActive);
  EXPECT_TRUE(network.NetHost);
  ASSERT_EQ(platform::SessionPlayers().size(), 1U);
  EXPECT_EQ(platform::SessionPlayers()[0].name, u"Quill");
}

TEST_F(MenuNetworkTest, ServerThatCannotOpenStaysInTheMenuAndASingleStartTellsSo) {
  const std::string address = HostElsewhere();
  NetPort = std::stoi(address.substr(address.find(':') + 1));
  Open();
  Press("cmdServer");
  EXPECT_TRUE(menu->isVisible());
  EXPECT_TRUE(Button("cmdServer").isEnabled());
  EXPECT_EQ(Said(), "サーバーを起動できません。");
  EXPECT_FALSE(network.NetActive);
  const Box box = BoxDuring([&] { Press("cmdNorm"); }, "OK");
  EXPECT_EQ(box.text, "No connections aviliable. standalone mode.");
  EXPECT_TRUE(menu->StartsGame());
}

TEST_F(MenuNetworkTest, ConnectThatFindsNothingSaysSoBesideTheButtonAndShowsNoBox) {
  Open();
  Type("txtAddress", "127.0.0.1:9");  // nobody listens there
  const Box box = BoxDuring([&] { Press("cmdConnect"); }, "");
  EXPECT_EQ(box.title, "");
  EXPECT_EQ(Said(), "サーバーが見つかりません。");
  EXPECT_TRUE(Button("cmdConnect").isEnabled());
  EXPECT_FALSE(network.NetActive);
  Press("cmdLanguage");
  QApplication::processEvents();
  EXPECT_EQ(Said(), "No host was found.");
  const Box alone = BoxDuring([&] { Press("cmdNorm"); }, "OK");
  EXPECT_EQ(alone.text, "No connections aviliable. standalone mode.");
  EXPECT_FALSE(network.NetActive);
  EXPECT_FALSE(network.NetHost);
  EXPECT_TRUE(menu->StartsGame());
}

TEST_F(MenuNetworkTest, StartWithoutTheNetworkShowsNoBox) {
  Open();
  EXPECT_EQ(BoxDuring([&] { Press("cmdNorm"); }, "").title, "");
  EXPECT_TRUE(menu->StartsGame());
}

TEST_F(MenuNetworkTest, GameOfAClientStartsWhenTheHostSaysSo) {
  const std::string address = HostElsewhere();
  Open();
  Type("txtAddress", address);
  Press("cmdConnect");
  EXPECT_TRUE(network.NetActive);
  EXPECT_FALSE(network.NetHost);
  EXPECT_FALSE(Button("cmdServer").isEnabled());
  EXPECT_FALSE(Button("cmdConnect").isEnabled());
  EXPECT_TRUE(Until([&] { return menu->StartsGame(); }));
  EXPECT_FALSE(menu->isVisible());
  EXPECT_EQ(network.NetUserCount, 2);
}

TEST_F(MenuNetworkTest, DialogBeforeTheMenuDoesNotHoldUpTheOthers) {
  const std::string address = HostElsewhere();
  Open();
  Type("txtAddress", address);
  Press("cmdConnect");
  // Returns when the dialog is closed.
  Press("cmdKeyCfg");
  EXPECT_TRUE(menu->StartsGame());
  EXPECT_FALSE(menu->isVisible());
}

}  // namespace
}  // namespace qlm

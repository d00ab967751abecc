// The startup menu: its panels, the buttons that do something, and its end.
#include "forms/menu_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QProgressBar>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include "base/log.h"
#include "forms/audio_panel.h"
#include "forms/banner.h"
#include "forms/boxes.h"
#include "forms/key_config.h"
#include "forms/language.h"
#include "forms/panels.h"
#include "forms/search_panel.h"
#include "graphics/present.h"
#include "graphics/skin_list.h"
#include "library/lists.h"
#include "library/scan.h"
#include "net/session.h"
#include "platform/session.h"
#include "platform/text.h"
#include "platform/window.h"
#include "state/lists.h"
#include "state/network.h"
#include "state/settings.h"

namespace qlm {
namespace {

constexpr int kPumpInterval = 50;  // ms

// The one that is up.
MenuWindow* menu = nullptr;

// Scrolls where the screen is too small for the panel.
class Page : public QScrollArea {
 public:
  explicit Page(QWidget* panel) {
    setWidget(panel);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    // Nothing to do for the keyboard: a control that gets the focus scrolls into view.
    setFocusPolicy(Qt::NoFocus);
    // The ground is the tab's own.
    viewport()->setAutoFillBackground(false);
    panel->setAutoFillBackground(false);
  }
  QSize sizeHint() const override { return widget()->sizeHint(); }
};

// What stands before the menu would hold up the others of a battle.
void CloseDialogs() {
  QWidget* dialog = QApplication::activeModalWidget();
  while (dialog != nullptr && dialog->close()) dialog = QApplication::activeModalWidget();
}

}  // namespace

MenuWindow::MenuWindow() {
  menu = this;
  setWindowFlags(Qt::Window);
  setWindowTitle(QStringLiteral("quillmarch startup menu"));
  UpdateSkinList();
  auto* const around = new QVBoxLayout(this);
  around->setContentsMargins(0, 0, 0, 0);
  around->setSpacing(0);
  around->addWidget(new Banner);
  content_ = MakeContent();
  around->addWidget(content_, 1);
  around->addWidget(MakeFoot());
  ConnectControls();
  ConnectHooks();
  auto* const pump = new QTimer(this);
  connect(pump, &QTimer::timeout, [this] { Pump(); });
  pump->start(kPumpInterval);
  // Room for the frame that the system puts around.
  constexpr QSize kFrame(16, 48);
  resize(sizeHint().boundedTo(screen()->availableSize() - kFrame));
  // Known to the window only now.
  start_->setDefault(true);
  start_->setFocus();
}

MenuWindow::~MenuWindow() {
  hooks.setCaption = gameHooks_.setCaption;
  hooks.folderSearched = gameHooks_.folderSearched;
  hooks.loadPump = gameHooks_.loadPump;
  hooks.closeRequested = gameHooks_.closeRequested;
  platform::ShowBoxesWith(nullptr);
  menu = nullptr;
}

QWidget* MenuWindow::MakeContent() {
  auto* const content = new QWidget;
  auto* const around = new QVBoxLayout(content);
  around->setContentsMargins(9, 9, 9, 0);
  tabs_ = new QTabWidget;
  MakePanels(tabs_);
  auto* const language = new QPushButton;
  language->setObjectName(QStringLiteral("cmdLanguage"));
  language->setFlat(true);
  language->setAutoDefault(false);
  // In its own language, for who cannot read the other.
  controls_.Say(
      [=] { language->setText(ShowsEnglish() ? QStringLiteral("日本語") : QStringLiteral("English")); });
  connect(language, &QPushButton::clicked, SwitchLanguage);
  tabs_->setCornerWidget(language);
  around->addWidget(tabs_);
  return content;
}

void MenuWindow::MakePanels(QTabWidget* tabs) {
  const auto add = [&](QWidget* panel, const char* caption) {
    const int index = tabs->addTab(new Page(panel), QString());
    controls_.Say([=] { tabs->setTabText(index, Words(caption)); });
  };
  // The options stand in the order in which Ctrl and Tab lead through them.
  add(MakeMainPanel(controls_), "メイン");
  add(MakeOtherPanel(controls_), "その他");
  add(MakeSkinPanel(controls_), "スキン");
  search_ = new SearchPanel(controls_);
  add(search_, "BMS検索");
  add(new AudioPanel(controls_), "音");
}

QWidget* MenuWindow::MakeFoot() {
  auto* const foot = new QWidget;
  auto* const row = new QHBoxLayout(foot);
  note_ = controls_.Note(
      "基本的に、設定は項目にマウスカーソルを持っていくと出る「ツールチップ」を参考にしてください。");
  row->addWidget(note_, 1);
  progress_ = new QProgressBar;
  progress_->setObjectName(QStringLiteral("prgScan"));
  controls_.Say([this] { progress_->setAccessibleName(Words("検索の進み具合")); });
  progress_->hide();
  row->addWidget(progress_, 1);
  stop_ = controls_.Button("cmdStop", "検索中止");
  stop_->setAutoDefault(false);
  stop_->hide();
  row->addWidget(stop_);
  start_ = controls_.Button("cmdNorm", "起動");
  start_->setMinimumWidth(140);
  row->addWidget(start_);
  return foot;
}

void MenuWindow::ConnectControls() {
  connect(start_, &QPushButton::clicked, [this] { Start(); });
  connect(stop_, &QPushButton::clicked, [] { library.scanStopped = true; });
  connect(findChild<QPushButton*>(QStringLiteral("cmdSStart")), &QPushButton::clicked,
          [this] { SearchAndSave(); });
  connect(findChild<QPushButton*>(QStringLiteral("cmdKeyCfg")), &QPushButton::clicked,
          [this] { OpenKeyConfig(this); });
  connect(findChild<QPushButton*>(QStringLiteral("cmdServer")), &QPushButton::clicked,
          [this] { HostAndStart(); });
  connect(findChild<QPushButton*>(QStringLiteral("cmdConnect")), &QPushButton::clicked,
          [this] { Connect(); });
  controls_.Say([this] { ShowNetwork(); });
  auto* const directBlt = findChild<QCheckBox*>(QStringLiteral("chkDirectBlt"));
  connect(findChild<QCheckBox*>(QStringLiteral("chkWindowed")), &QCheckBox::toggled, directBlt,
          &QCheckBox::setChecked);
  const auto step = [this](const QKeySequence& keys, int by) {
    connect(new QShortcut(keys, this), &QShortcut::activated, [this, by] { StepPanel(by); });
  };
  step(QKeySequence(Qt::CTRL | Qt::Key_Tab), 1);
  step(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab), -1);
  step(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab), -1);
}

void MenuWindow::ConnectHooks() {
  gameHooks_ = hooks;
  hooks.setCaption = [](TextView caption) { menu->ShowScanned(caption); };
  hooks.folderSearched = [](TextView /*line*/) { menu->progress_->setRange(0, 0); };
  hooks.loadPump = [] {
    menu->Pump();
    QApplication::processEvents();
  };
  hooks.closeRequested = QApplication::closeAllWindows;
  platform::ShowBoxesWith(ShowBox);
}

void MenuWindow::StepPanel(int by) {
  tabs_->setCurrentIndex((tabs_->currentIndex() + by + tabs_->count()) % tabs_->count());
}

void MenuWindow::Pump() {
  if (library.scanRunning) {
    // Nothing else may touch the lists now.
    platform::PumpWindowEvents({.closeRequested = QApplication::closeAllWindows});
    return;
  }
  DoEvents();
  if (!awaitsHost_ || closed_) return;
  ShowNetwork();
  if (network.awaitsInit) return;
  awaitsHost_ = false;
  CloseDialogs();
  Start();
}

void MenuWindow::SayOfNetwork(const char* words) {
  saidOfNetwork_ = words;
  ShowNetwork();
}

void MenuWindow::ShowNetwork() {
  QStringList said;
  if (saidOfNetwork_ != nullptr) said << Words(saidOfNetwork_);
  if (awaitsHost_) {
    for (const platform::SessionPlayer& player : platform::SessionPlayers()) said << ToQt(player.name);
  }
  // Names are the others' own: nothing in them is markup, and long ones are cut by the window's edge.
  findChild<QLabel*>(QStringLiteral("lblNetwork"))->setText(said.join(QStringLiteral("  ")));
}

void MenuWindow::DisableNetworkButtons() {
  for (const auto* const name : {"cmdServer", "cmdConnect"}) {
    findChild<QPushButton*>(QString::fromUtf8(name))->setEnabled(false);
  }
}

void MenuWindow::HostAndStart() {
  networkAsked_ = true;
  if (!HostBattle()) {
    QApplication::beep();
    SayOfNetwork("サーバーを起動できません。");
    return;
  }
  DisableNetworkButtons();
  Start();
}

void MenuWindow::Connect() {
  networkAsked_ = true;
  SayOfNetwork("サーバーを探しています…");
  // So that it is seen while the network is asked.
  QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  awaitsHost_ = JoinBattle(platform::EncodeUtf8(NetAddress));
  SayOfNetwork(awaitsHost_ ? "接続しました。開始を待っています。" : "サーバーが見つかりません。");
  if (awaitsHost_) DisableNetworkButtons();
}

void MenuWindow::StartSession() {
  if (!networkAsked_ || StartBattle()) return;
  network.NetActive = network.NetHost = false;
  // Quirk: the word is spelled so.
  ShowBox(platform::BoxIcon::kInformation, u"quillmarch", u"No connections aviliable. standalone mode.");
}

void MenuWindow::ShowScanned(TextView caption) {
  if (library.scanRunning && captionShown_.isValid() && !captionShown_.hasExpired(kPumpInterval)) return;
  captionShown_.start();
  setWindowTitle(ToQt(caption));
  progress_->setRange(0, std::max(library.foundCount, 1));
  progress_->setValue(lastSong + 1);
}

bool MenuWindow::Search() {
  QWidget* const focused = focusWidget();
  const auto searching = [this](bool now) {
    content_->setEnabled(!now);
    start_->setEnabled(!now);
    note_->setVisible(!now);
    progress_->setVisible(now);
    stop_->setVisible(now);
  };
  searching(true);
  stop_->setFocus();
  const bool found = MakeBMSListFile(false);
  searching(false);
  if (focused != nullptr) focused->setFocus();
  return found;
}

void MenuWindow::SearchAndSave() {
  if (!search_->Save()) return;
  library.scanNoLimit = search_->NoLimit();
  if (Search() && search_->NothingTicked()) ReportNoCharts();
}

void MenuWindow::Start() {
  MyName = FromQt(findChild<QLineEdit*>(QStringLiteral("txtUserName"))->text());
  UpdateJukeList();
  if (lastSong < 0) {
    DebugLog(u"# BMS-list(s) aren't found. Make now.");
    if (!Search() || closed_) return;
  }
  StartSession();
  startsGame_ = true;
  close();
}

void MenuWindow::closeEvent(QCloseEvent* event) {
  closed_ = true;
  library.scanStopped = library.scanRunning;
  event->accept();
}

void MenuWindow::keyPressEvent(QKeyEvent* event) {
  // Esc would end the program.
  if (event->key() != Qt::Key_Escape) QDialog::keyPressEvent(event);
}

void MenuWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::LanguageChange) controls_.SayAll();
  QDialog::changeEvent(event);
}

}  // namespace qlm

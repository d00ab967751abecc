// The dialog frmKeyCnf: its controls, and the keys and controllers that reach it.
#include "forms/key_config.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QSet>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "base/hooks.h"
#include "files/key_table.h"
#include "forms/controls.h"
#include "forms/key_functions.h"
#include "forms/key_picture.h"
#include "input/input.h"
#include "platform/joysticks.h"
#include "platform/window_keys.h"
#include "state/keys.h"
#include "state/settings.h"

namespace qlm {
namespace {

constexpr int kPollInterval = 10;        // ms
constexpr int32_t kControllersUsed = 2;  // the others are only counted
constexpr int32_t kAboveTheKernels = 8;  // by which window systems number keys higher than the kernel does

class KeyConfig : public QDialog {
  Q_DECLARE_TR_FUNCTIONS(KeyConfig)

 public:
  explicit KeyConfig(QWidget* parent);
  ~KeyConfig() override;

  // Whether it had the keyboard until its end.
  bool Active() const { return active_; }

 private:
  void MakeControls();
  // As large as the font asks for, and as the screen has room.
  qreal PictureScale() const;
  QWidget* MakeSpecialFrame();
  QLayout* MakeFoot();
  QPushButton* MakeButton(const char* name, const QString& caption, void (KeyConfig::*action)());

  bool eventFilter(QObject* object, QEvent* event) override;
  void TakeKeyEvent(const QKeyEvent& event);
  void KeyCapture(int32_t code);
  void Timer1();

  void SelectFunction(int32_t function);
  void RefreshList();
  void ShowHeld();
  void ShowControllers();

  void cmdOK();
  void cmdDefault();
  void cmdClear();

  KeyWork work_;
  bool active_ = false;                      // at the last tick
  std::pair<int32_t, quint64> lastRelease_;  // its key and its moment, in ms
  KeyPicture* picKeyDown_ = nullptr;
  KeyPicture* specialKeys_ = nullptr;
  QListWidget* lstKeyList_ = nullptr;
  QLabel* lblHeld_ = nullptr;
  QLabel* lblCount_ = nullptr;
  QLabel* lblSticks_ = nullptr;
  void (*const keyDownBefore_)(int32_t) = hooks.keyDown;
  void (*const keyUpBefore_)(int32_t) = hooks.keyUp;
};

// The hooks are plain routines.
KeyConfig* frmKeyCnf = nullptr;

// As a player calls it.
QString NameOf(int32_t function) {
  const auto tr = [](const char* text) { return QCoreApplication::translate("KeyConfig", text); };
  if (!IsFunction(function)) return tr("機能なし");
  QString name = ToQt(FunctionItem(function));
  if (function == 7) return name + QStringLiteral(u" (↓)");
  if (function < kFirstLaneFunction) return name;
  const int32_t lane = function % 10;
  if (lane == 6 || lane == 7) {
    return name + tr(" (%1P スクラッチ %2)").arg(function / 10).arg(lane == 6 ? "right" : "left");
  }
  return name + tr(" (%1P 鍵盤 %2)").arg(function / 10).arg(lane > 7 ? lane - 2 : lane);
}

KeyConfig::KeyConfig(QWidget* parent) : QDialog(parent) {
  LoadKeyTable();
  work_.workTable = KeyMap;
  MakeControls();
  RefreshList();
  // All rows show, where the screen has room for them.
  const int rows = lstKeyList_->sizeHintForRow(0) * lstKeyList_->count() + 2 * lstKeyList_->frameWidth();
  lstKeyList_->setMinimumHeight(
      std::min(rows, screen()->availableSize().height() - 12 * fontMetrics().height()));

  // What is held while the dialog opens was not pressed for it.
  hooks.keyDown = hooks.keyUp = nullptr;
  ReadJoysticks();
  frmKeyCnf = this;
  hooks.keyDown = [](int32_t key) { frmKeyCnf->KeyCapture(key); };
  hooks.keyUp = [](int32_t /*key*/) { frmKeyCnf->ShowHeld(); };
  ShowHeld();
  ShowControllers();

  auto* const timer = new QTimer(this);
  connect(timer, &QTimer::timeout, this, &KeyConfig::Timer1);
  timer->start(kPollInterval);
}

KeyConfig::~KeyConfig() {
  hooks.keyDown = hooks.keyUp = nullptr;
  ReleaseInputs();
  hooks.keyDown = keyDownBefore_;
  hooks.keyUp = keyUpBefore_;
  frmKeyCnf = nullptr;
}

void KeyConfig::MakeControls() {
  setWindowTitle(QStringLiteral("KeyConfig"));
  picKeyDown_ = KeyPicture::MakeControllers(this, PictureScale());
  picKeyDown_->setObjectName("picKeyDown");
  picKeyDown_->setFocusPolicy(Qt::StrongFocus);
  picKeyDown_->installEventFilter(this);
  picKeyDown_->clicked = [this](int32_t function) { SelectFunction(function); };

  lstKeyList_ = new QListWidget(this);
  lstKeyList_->setObjectName("lstKeyList");
  lstKeyList_->setFocusPolicy(Qt::NoFocus);
  lstKeyList_->setAccessibleName(tr("機能と入力の一覧"));
  lstKeyList_->setTextElideMode(Qt::ElideNone);
  lstKeyList_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  lstKeyList_->setMinimumWidth(fontMetrics().averageCharWidth() * 34);
  connect(lstKeyList_, &QListWidget::currentItemChanged, this, [this](const QListWidgetItem* item) {
    if (item != nullptr) SelectFunction(item->text().left(2).toInt());
  });

  lblHeld_ = new QLabel(this);
  lblHeld_->setObjectName("lblHeld");
  lblHeld_->setTextFormat(Qt::PlainText);
  lblHeld_->setWordWrap(true);
  lblHeld_->setMinimumHeight(fontMetrics().lineSpacing() * 2);
  lblHeld_->setAlignment(Qt::AlignLeft | Qt::AlignTop);

  auto* const left = new QVBoxLayout;
  left->addWidget(picKeyDown_);
  left->addWidget(MakeSpecialFrame());
  left->addStretch();
  auto* const middle = new QHBoxLayout;
  middle->addLayout(left);
  middle->addWidget(lstKeyList_, 1);

  auto* const all = new QVBoxLayout(this);
  all->addWidget(new QLabel(
      tr("設定したいボタンをクリックして、そのキーを押してください。1,2でも移動可能です。"), this));
  all->addLayout(middle);
  all->addWidget(lblHeld_);
  all->addLayout(MakeFoot());
  picKeyDown_->setFocus();
}

qreal KeyConfig::PictureScale() const {
  constexpr qreal kLeast = 0.4;
  constexpr QSizeF kPictures(600, 320);  // at scale 1
  constexpr QSizeF kLinesBeside(24, 16);
  const qreal line = fontMetrics().height();
  const QSizeF room = screen()->availableSize();
  return std::max(kLeast, std::min({std::max(line / 18, 1.0),
                                    (room.width() - kLinesBeside.width() * line) / kPictures.width(),
                                    (room.height() - kLinesBeside.height() * line) / kPictures.height()}));
}

QWidget* KeyConfig::MakeSpecialFrame() {
  auto* const frame = new QGroupBox(tr("特殊キー"), this);
  frame->setObjectName("Frame1");
  specialKeys_ = KeyPicture::MakeSpecialKeys(frame, PictureScale());
  specialKeys_->setObjectName("picSpecialKeys");
  specialKeys_->setAccessibleName(frame->title());
  specialKeys_->clicked = picKeyDown_->clicked;
  auto* const note = new QLabel(
      tr("コントローラー用。キーボード時は不要です。\nESCをSTART、★をSELECTに割り当てると吉。"), frame);
  note->setWordWrap(true);
  auto* const row = new QHBoxLayout(frame);
  row->addWidget(specialKeys_);
  row->addWidget(note, 1);
  return frame;
}

QLayout* KeyConfig::MakeFoot() {
  auto* const chkXY = new QCheckBox(tr("XY軸移動を検知"), this);
  chkXY->setObjectName("chkXY");
  chkXY->setFocusPolicy(Qt::NoFocus);
  chkXY->setToolTip(tr("方向入力を検知します。結構敏感に反応する設定にしてます。"));
  chkXY->setChecked(JoyXYEnable);
  connect(chkXY, &QCheckBox::toggled, this, [](bool on) { JoyXYEnable = on; });
  lblCount_ = new QLabel(this);
  lblCount_->setObjectName("lblCount");
  lblSticks_ = new QLabel(this);
  lblSticks_->setObjectName("lblSticks");
  auto* const controllers = new QHBoxLayout;
  controllers->addWidget(chkXY);
  controllers->addSpacing(16);
  controllers->addWidget(lblCount_);
  controllers->addSpacing(16);
  controllers->addWidget(lblSticks_, 1);

  auto* const buttons = new QHBoxLayout;
  buttons->addWidget(MakeButton("cmdDefault", tr("初期状態"), &KeyConfig::cmdDefault));
  buttons->addWidget(MakeButton("cmdClear", tr("クリア"), &KeyConfig::cmdClear));
  buttons->addStretch();
  buttons->addWidget(MakeButton("cmdOK", tr("設定完了"), &KeyConfig::cmdOK));
  buttons->addWidget(MakeButton("cmdCancel", tr("キャンセル"), &KeyConfig::reject));

  auto* const foot = new QVBoxLayout;
  foot->addLayout(controllers);
  foot->addSpacing(4);
  foot->addLayout(buttons);
  return foot;
}

// Keys are for picKeyDown alone, so that no button is pressed with Enter or Space.
QPushButton* KeyConfig::MakeButton(const char* name, const QString& caption, void (KeyConfig::*action)()) {
  auto* const button = new QPushButton(caption, this);
  button->setObjectName(name);
  button->setAutoDefault(false);
  button->setFocusPolicy(Qt::NoFocus);
  connect(button, &QPushButton::clicked, this, [this, action] { (this->*action)(); });
  return button;
}

// Every key of the keyboard is an input like any other here: none moves the focus, closes the dialog, or
// reaches a shortcut.
bool KeyConfig::eventFilter(QObject* object, QEvent* event) {
  switch (event->type()) {
    case QEvent::ShortcutOverride: event->accept(); return true;
    case QEvent::KeyPress:
    case QEvent::KeyRelease: break;
    default: return QDialog::eventFilter(object, event);
  }
  TakeKeyEvent(static_cast<const QKeyEvent&>(*event));
  event->accept();
  return true;
}

void KeyConfig::TakeKeyEvent(const QKeyEvent& event) {
  const auto code = static_cast<int32_t>(event.nativeScanCode()) - kAboveTheKernels;
  const int32_t key = platform::KeyNumberOfEvdev(code);
  if (key == 0 || event.isAutoRepeat()) return;
  if (event.type() == QEvent::KeyRelease) {
    DispatchKey(key, false);
    lastRelease_ = {key, event.timestamp()};
  } else if (lastRelease_ == std::pair(key, event.timestamp())) {
    // X tells each repeat as a release and a press of one moment, and the toolkit does not always see that.
    KeyHeld[key] = true;
    ShowHeld();
  } else {
    DispatchKey(key, true);
  }
}

void KeyConfig::KeyCapture(int32_t code) {
  picKeyDown_->setFocus();
  TakeInput(work_, code);
  RefreshList();
}

void KeyConfig::Timer1() {
  // The window system may take a while to make it the active one.
  const bool wasActive = std::exchange(active_, isActiveWindow());
  if (!active_) {
    if (wasActive) reject();
    return;
  }
  ReadJoysticks();
  ShowControllers();
}

void KeyConfig::SelectFunction(int32_t function) {
  work_.currentFn = function;
  const QSignalBlocker quiet(lstKeyList_);
  const auto listed = ListedFunctions();
  lstKeyList_->setCurrentRow(
      static_cast<int>(std::find(listed.begin(), listed.end(), function) - listed.begin()));
  picKeyDown_->MoveFrame(function);
  specialKeys_->MoveFrame(function);
  picKeyDown_->setAccessibleName(NameOf(function));
}

void KeyConfig::RefreshList() {
  const QSignalBlocker quiet(lstKeyList_);
  lstKeyList_->clear();
  for (const int16_t function : ListedFunctions())
    lstKeyList_->addItem(ToQt(FunctionRow(work_.workTable, function)));
  SelectFunction(work_.currentFn);
  ShowHeld();
}

// Which functions have an input, which of them is held, and the held keys by their numbers.
void KeyConfig::ShowHeld() {
  QSet<int32_t> given;
  QSet<int32_t> held;
  QStringList words;
  for (int32_t code = 1; code <= KeyTable::kLast; ++code) {
    const int32_t function = work_.workTable[code];
    given.insert(function);
    if (!KeyHeld[code]) continue;
    const bool steps = code == kKey1 || code == kKey2;
    if (!steps) held.insert(function);
    const QString effect = !steps ? NameOf(function) : code == kKey1 ? tr("前の機能へ") : tr("次の機能へ");
    words += tr("キー番号 %1 → %2").arg(code).arg(effect);
  }
  picKeyDown_->ShowStates(given, held);
  specialKeys_->ShowStates(given, held);
  lblHeld_->setText(words.isEmpty() ? tr("押しているキーの番号と機能がここに表示されます。")
                                    : words.join("   "));
}

void KeyConfig::ShowControllers() {
  lblCount_->setText(tr("コントローラはID1,2のみ有効です。認識数:") + QString::number(JoyCount));
  QString sticks;
  for (int32_t number = 0; number < kControllersUsed; ++number) {
    if (const auto state = platform::ReadJoystick(number)) {
      sticks += QStringLiteral("> [X:%1,Y:%2]  ").arg(state->x).arg(state->y);
    }
  }
  lblSticks_->setText(sticks);
}

void KeyConfig::cmdOK() {
  KeyMap = work_.workTable;
  SaveKeyTable();
  accept();
}

void KeyConfig::cmdDefault() {
  work_.workTable = DefaultKeyTable();
  RefreshList();
}

void KeyConfig::cmdClear() {
  work_.workTable.Clear();
  RefreshList();
}

}  // namespace

void OpenKeyConfig(QWidget* parent) {
  KeyConfig form(parent);
  form.exec();
  // Without a window manager nobody else gives the keyboard back.
  if (parent != nullptr && form.Active()) parent->activateWindow();
}

}  // namespace qlm

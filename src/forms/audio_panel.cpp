// Sound device, keys and taps.
#include "forms/audio_panel.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <numbers>
#include <span>
#include <utility>

#include "files/late_blocks.h"
#include "forms/controls.h"
#include "forms/language.h"
#include "platform/clock.h"
#include "sound/play.h"
#include "state/settings.h"

namespace qlm {
namespace {

constexpr int kShortestBlock = 64;
constexpr int kBlocks = 6;           // to choose from, each twice as long as the one before
constexpr int kWatchInterval = 200;  // ms
constexpr double kLoudest = 8000;    // of 32767: no one is to be startled
constexpr int32_t kRate = platform::kSoundRate;

QString Ms(double milliseconds) { return QString::number(milliseconds, 'f', 1) + QStringLiteral(" ms"); }

QString BlockWords(int frames) {
  return Words("%1 フレーム (%2)").arg(frames).arg(Ms(frames * 1000.0 / kRate));
}

// A tone of `frames` from `first` on that swells and dies away.
void AddTone(std::vector<int16_t>& samples, size_t first, size_t frames, double hertz) {
  for (size_t i = 0; i < frames && first + i < samples.size(); ++i) {
    const double part = static_cast<double>(i) / static_cast<double>(frames);
    const double swell = std::min({1.0, part * 50, (1 - part) * 4});
    const double angle = 2 * std::numbers::pi * hertz * static_cast<double>(i) / kRate;
    samples[first + i] = static_cast<int16_t>(std::lround(kLoudest * swell * std::sin(angle)));
  }
}

// Null when it cannot be made.
platform::SoundBufferPtr SoundOf(const std::vector<int16_t>& samples) {
  const platform::SoundFormat format{.tag = 1, .channels = 1, .samplesPerSec = kRate, .bitsPerSample = 16};
  const auto bytes = std::as_bytes(std::span(samples));
  platform::SoundBufferPtr sound =
      platform::CreateSoundBuffer({.flags = 0, .bytes = static_cast<uint32_t>(bytes.size())}, format).buffer;
  if (sound != nullptr) sound->Write(0, {reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
  return sound;
}

platform::SoundBufferPtr MakeTone() {
  constexpr double kA = 440;
  std::vector<int16_t> samples(kRate);
  AddTone(samples, 0, samples.size(), kA);
  return SoundOf(samples);
}

// They begin at once and are over in 20 ms, so that the ear knows their moment.
platform::SoundBufferPtr MakeClicks() {
  constexpr double kHigh = 1500;
  constexpr size_t kClickFrames = kRate / 50;
  constexpr size_t kGapFrames = kClickGap * kRate / 1'000'000;
  std::vector<int16_t> samples(kGapFrames * kClicks);
  for (size_t click = 0; click < kClicks; ++click) AddTone(samples, click * kGapFrames, kClickFrames, kHigh);
  return SoundOf(samples);
}

// Begins by a press like any button; while it counts, every key but Tab and Esc is a tap, at the moment when
// it goes down, and so is the mouse.
class TapButton : public QPushButton {
 public:
  std::function<bool()> counts;
  std::function<void()> tapped;
  std::function<void()> left;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (!counts()) return QPushButton::keyPressEvent(event);
    if (event->key() == Qt::Key_Escape) {
      left();
    } else if (!event->isAutoRepeat()) {
      tapped();
    }
  }
  void keyReleaseEvent(QKeyEvent* event) override {
    if (!counts()) QPushButton::keyReleaseEvent(event);
  }
  void mousePressEvent(QMouseEvent* event) override {
    counts() ? tapped() : QPushButton::mousePressEvent(event);
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    if (!counts()) QPushButton::mouseReleaseEvent(event);
  }
  void focusOutEvent(QFocusEvent* event) override {
    left();
    QPushButton::focusOutEvent(event);
  }
};

QLabel* Told(const char* name) {
  auto* const label = new QLabel;
  label->setObjectName(QString::fromUtf8(name));
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

}  // namespace

AudioPanel::AudioPanel(Controls& controls) : controls_(&controls) {}

AudioPanel::~AudioPanel() { Close(); }

void AudioPanel::Make() {
  Controls& controls = *std::exchange(controls_, nullptr);
  lateBefore_ = SavedLateBlocks();
  auto* const grid = new QGridLayout(this);
  grid->addWidget(MakeDeviceGroup(controls), 0, 0, 2, 1);
  grid->addWidget(MakeKeyGroup(controls), 0, 1);
  grid->addWidget(MakeTapGroup(controls), 1, 1);
  for (const int column : {0, 1}) grid->setColumnStretch(column, 1);
  grid->setRowStretch(2, 1);
  watch_ = new QTimer(this);
  connect(watch_, &QTimer::timeout, [this] { Watch(); });
  controls.Say([this] {
    ShowDevice();
    ShowTaps();
  });
}

QComboBox* AudioPanel::MakeBlockChoice(Controls& controls) {
  auto* const box = controls.Box(
      "cmbSoundBlock", {},
      "小さいほどキーの音が早く鳴りますが、遅い環境では音が途切れます。ゲームもこの値を使います。");
  for (int i = 0; i < kBlocks; ++i) box->addItem(QString());
  controls.Say([=] {
    for (int i = 0; i < kBlocks; ++i) box->setItemText(i, BlockWords(kShortestBlock << i));
  });
  box->setCurrentIndex(std::countr_zero(static_cast<unsigned>(SoundBlockToAsk() / kShortestBlock)));
  connect(box, &QComboBox::activated, [this](int item) {
    SoundBlock = kShortestBlock << item;
    Close();
    Open();
  });
  return box;
}

QWidget* AudioPanel::MakeDeviceGroup(Controls& controls) {
  QGroupBox* const group = controls.Group("音の装置");
  auto* const grid = new QGridLayout(group);
  grid->setColumnStretch(1, 1);
  const auto row = [&](QLabel* label, QWidget* field) {
    const int at = grid->rowCount();
    // Beside the first line of words; a choice is higher than its label.
    const bool words = qobject_cast<QLabel*>(field) != nullptr;
    grid->addWidget(label, at, 0, Qt::AlignLeft | (words ? Qt::AlignTop : Qt::AlignVCenter));
    grid->addWidget(field, at, 1);
  };
  QComboBox* const block = MakeBlockChoice(controls);
  row(controls.LabelFor(block, "頼むブロック:"), block);
  row(controls.Label("得たブロック:"), block_ = Told("lblSoundBlock"));
  row(controls.Label("装置:"), device_ = Told("lblSoundDevice"));
  row(controls.Label("装置の先読み:"), ahead_ = Told("lblSoundAhead"));
  row(controls.Label("遅れたブロック:"), late_ = Told("lblLateBlocks"));
  auto* const buttons = new QHBoxLayout;
  tone_ = controls.Button("cmdTone", "テスト音", "1秒間、ラの音(440Hz)を鳴らします。");
  measure_ =
      controls.Button("cmdMeasureSound", "先読みを測る",
                      "装置を一度空にして、どれだけ先の音まで受け取るかを測ります。他の音も一瞬途切れることが"
                      "あります。");
  for (QPushButton* const button : {tone_, measure_}) {
    button->setAutoDefault(false);
    buttons->addWidget(button);
  }
  connect(tone_, &QPushButton::clicked, [this] { PlayTone(); });
  connect(measure_, &QPushButton::clicked, [this] {
    ++drains_;
    platform::DrainSoundDevice();
  });
  grid->addLayout(buttons, grid->rowCount(), 0, 1, 2);
  grid->addWidget(
      controls.Note("キーを押すと、次のブロックの頭から音が出ます。その前に、装置が先読みした分が鳴り"
                    "終わります。システムがさらに溜める分は、ここでは分かりません。"),
      grid->rowCount(), 0, 1, 2);
  grid->setRowStretch(grid->rowCount(), 1);
  return group;
}

QWidget* AudioPanel::MakeKeyGroup(Controls& controls) {
  QGroupBox* const group = controls.Group("キー");
  auto* const rows = new QVBoxLayout(group);
  rows->addWidget(
      controls.Tick("chkKeysAtOnce", KeysAtOnce, "表示を待つ間もキーを受け付ける",
                    "できた画面が表示されるのを待つ間に押したキーの音が、次の画面ではなく、次のブロックで"
                    "鳴ります。判定は、その画面の位置で行います。"));
  return group;
}

QWidget* AudioPanel::MakeTapGroup(Controls& controls) {
  QGroupBox* const group = controls.Group("タップテスト");
  auto* const rows = new QVBoxLayout(group);
  rows->addWidget(
      controls.Note("20回のクリック音に合わせて、好きなキーを叩いてください。最初の4回は数えません。"
                    "Escでやめます。"));
  auto* const button = new TapButton;
  tap_ = button;
  button->setObjectName(QStringLiteral("cmdTap"));
  button->setAutoDefault(false);
  button->setMinimumHeight(button->sizeHint().height() * 3 / 2);
  button->counts = [this] { return clicks_ != nullptr; };
  button->tapped = [this] { Tap(); };
  button->left = [this] { StopTaps(); };
  connect(button, &QPushButton::clicked, [this] { StartTaps(); });
  rows->addWidget(button);
  rows->addWidget(tapResult_ = Told("lblTaps"));
  rows->addWidget(controls.Note(
      "+はキーが音より後。測れるのは、音を作ってから耳に届き、手が動き、キーがここに届くまでの全部です。音の"
      "遅れとキーの遅れと叩く人の癖(たいてい数十ms早い)は分けられません。"));
  rows->addStretch(1);
  return group;
}

// The device opens behind the event, so that the panel is seen before a sound server is asked.
void AudioPanel::showEvent(QShowEvent* event) {
  if (controls_ != nullptr) Make();
  if (!open_) watch_->start(0);
  QWidget::showEvent(event);
}

void AudioPanel::hideEvent(QHideEvent* event) {
  Close();
  QWidget::hideEvent(event);
}

void AudioPanel::Open() {
  open_ = true;
  info_ = platform::OpenSoundDevice(platform::SoundOutput::kDevice, SoundBlockToAsk());
  name_ = platform::SoundDeviceName();
  watch_->start(kWatchInterval);
  ShowDevice();
  ShowTaps();
}

void AudioPanel::Close() {
  if (watch_ != nullptr) watch_->stop();
  if (!open_) return;
  open_ = false;
  drains_ = 0;
  StopTaps();
  toneSound_.reset();
  platform::CloseSoundDevice();
  info_ = {};
}

void AudioPanel::PlayTone() {
  if (toneSound_ == nullptr) toneSound_ = MakeTone();
  if (toneSound_ == nullptr) return;
  toneSound_->SetCurrentPosition(0);
  toneSound_->Play(false);
}

void AudioPanel::Watch() {
  if (!open_) return Open();
  ShowDevice();
  if (clicks_ == nullptr) return;
  if (clicks_->Playing()) {
    ShowTaps();
  } else {
    FinishTaps();
  }
}

void AudioPanel::ShowDevice() {
  const bool asks = info_.blockFrames > 0;
  for (QPushButton* const button : {tone_, measure_, tap_}) button->setEnabled(asks);
  if (!asks) {
    const QString why = QString::fromStdString(info_.why);
    device_->setText(open_ ? Words("音を出せません。") + QLatin1Char(' ') + why : QString());
    for (QLabel* const label : {block_, ahead_}) label->setText(QStringLiteral("-"));
  } else {
    QStringList device = {QString::fromStdString(info_.driver)};
    if (!name_.empty()) device << QString::fromStdString(name_);
    if (!info_.heard) device << Words("音は聞こえません");
    device_->setText(device.join(QStringLiteral(", ")));
    block_->setText(BlockWords(info_.blockFrames));
    const double ahead = static_cast<double>(platform::SoundAheadMicroseconds()) / 1000;
    ahead_->setText(drains_ > 0 ? Ms(ahead) : Words("まだ測っていません"));
  }
  // The gaps of the measuring are no fault.
  const int late = std::max(platform::LateSoundBlocks() - drains_, 0);
  late_->setText(Words("いま %1、前回のプレイ %2").arg(late).arg(lateBefore_));
}

void AudioPanel::StartTaps() {
  clicks_ = MakeClicks();
  if (clicks_ == nullptr) return;
  taps_.clear();
  taps_.reserve(size_t{2} * kClicks);
  result_.reset();
  tapsTried_ = false;
  clicks_->SetCurrentPosition(0);
  clicks_->Play(false);
  ShowTaps();
}

void AudioPanel::Tap() {
  taps_.push_back(platform::Microseconds());
  ShowTaps();
}

void AudioPanel::StopTaps() {
  clicks_.reset();
  ShowTaps();
}

void AudioPanel::FinishTaps() {
  tapsTried_ = true;
  result_ = ResultOfTaps(taps_, clicks_->BegunAt());
  StopTaps();
}

void AudioPanel::ShowTaps() {
  if (tap_ == nullptr) return;
  tap_->setText(clicks_ == nullptr ? Words("始める")
                                   : Words("叩いてください (%1回)").arg(static_cast<int>(taps_.size())));
  if (result_) {
    const QString sign = result_->median < 0 ? QString() : QStringLiteral("+");
    tapResult_->setText(Words("中央値 %1、真ん中の半分の幅 %2、%3回")
                            .arg(sign + Ms(result_->median), Ms(result_->spread))
                            .arg(result_->taps));
  } else {
    tapResult_->setText(tapsTried_ ? Words("足りません。8回以上、音の近くで叩いてください。")
                                   : Words("まだ測っていません"));
  }
}

}  // namespace qlm
